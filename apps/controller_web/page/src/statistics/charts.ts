import uPlot from 'uplot';
import 'uplot/dist/uPlot.min.css';
import { durationText } from '../text/display.ts';
import type { Series } from './series.ts';

export interface ChartTexts {
  time: string;
  succeeded: string;
  failed: string;
  median: string;
  long: string;
}

const height = 220;

/** Colours come from the style sheet, so that they follow the theme. */
function colour(name: string): string {
  return getComputedStyle(document.documentElement).getPropertyValue(name).trim();
}

function axes(values?: uPlot.Axis.Values): uPlot.Axis[] {
  const common = { stroke: colour('--quiet'), grid: { stroke: colour('--line'), width: 1 }, ticks: { stroke: colour('--line') }, font: '11px "DejaVu Sans", sans-serif' };
  return [common, { ...common, size: 56, ...(values ? { values } : {}) }];
}

function line(label: string, name: string, value?: (self: uPlot, value: number | null) => string): uPlot.Series {
  return { label, stroke: colour(name), width: 1.5, fill: `${colour(name)}22`, points: { show: false }, spanGaps: true, ...(value ? { value } : {}) };
}

const seconds = (_self: uPlot, value: number | null): string => (value === null ? '–' : durationText(value * 1000));

/** Draws how many jobs ended in each interval. The caller destroys the chart. */
export function throughputChart(place: HTMLElement, { times, succeeded, failed }: Series, texts: ChartTexts): uPlot {
  const steps = uPlot.paths.stepped?.({ align: 1 });
  const series = [line(texts.succeeded, '--succeeded'), line(texts.failed, '--failed')].map((one) => (steps ? { ...one, paths: steps } : one));
  return new uPlot({ width: place.clientWidth, height, series: [{ label: texts.time }, ...series], axes: axes(), scales: { y: { range: (_self, _low, high) => [0, Math.max(1, high)] } } }, [times, succeeded, failed], place);
}

/** Draws how long the jobs that started in each interval had waited. The caller destroys the chart. */
export function waitingChart(place: HTMLElement, { times, medianWait, longWait }: Series, texts: ChartTexts): uPlot {
  const series = [line(texts.median, '--accent', seconds), line(texts.long, '--cancelled', seconds)];
  const values = (_self: uPlot, marks: number[]): string[] => marks.map((mark) => durationText(mark * 1000));
  return new uPlot({ width: place.clientWidth, height, series: [{ label: texts.time }, ...series], axes: axes(values), scales: { y: { range: (_self, _low, high) => [0, Math.max(1, high)] } } }, [times, medianWait, longWait], place);
}
