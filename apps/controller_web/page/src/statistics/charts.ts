import uPlot from 'uplot';
import 'uplot/dist/uPlot.min.css';
import { durationText, fullTimeText, shortTimeText } from '../text/display.ts';
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

// Seconds, minutes and hours; the library's own steps are decimal.
const timeSteps = [1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 14_400, 28_800, 86_400, 172_800, 604_800];
const dayAndMore = 30 * 3600;

const times = (chart: uPlot, marks: number[]): string[] => {
  const { min = 0, max = 0 } = chart.scales['x'] ?? {};
  return marks.map((mark) => shortTimeText(mark * 1000, (max ?? 0) - (min ?? 0) > dayAndMore));
};

function axes(values: Partial<uPlot.Axis> = {}): uPlot.Axis[] {
  const common = { stroke: colour('--quiet'), grid: { stroke: colour('--line'), width: 1 }, ticks: { stroke: colour('--line') }, font: '11px "DejaVu Sans", sans-serif' };
  return [{ ...common, values: times }, { ...common, size: 60, ...values }];
}

function line(label: string, name: string, more: Partial<uPlot.Series>): uPlot.Series {
  return { label, stroke: colour(name), width: 1.5, ...more };
}

const timeSeries = (label: string): uPlot.Series => ({ label, value: (_chart, value) => (value === null ? '–' : fullTimeText(value * 1000)) });

const fromZero: uPlot.Scale.Range = (_chart, _low, high) => [0, Math.max(1, high)];

function draw(place: HTMLElement, data: uPlot.AlignedData, series: uPlot.Series[], axesOfChart: uPlot.Axis[]): uPlot {
  return new uPlot({ width: place.clientWidth, height, series, axes: axesOfChart, scales: { y: { range: fromZero } } }, data, place);
}

const seconds = (_self: uPlot, value: number | null): string => (value === null ? '–' : durationText(value * 1000));

/** Draws how many jobs ended in each interval. The caller destroys the chart. */
export function throughputChart(place: HTMLElement, { times: x, succeeded, failed }: Series, texts: ChartTexts): uPlot {
  const paths = uPlot.paths.stepped?.({ align: 1 });
  const area = (name: string): Partial<uPlot.Series> => ({ fill: `${colour(name)}22`, points: { show: false }, ...(paths ? { paths } : {}) });
  const series = [line(texts.succeeded, '--succeeded', area('--succeeded')), line(texts.failed, '--failed', area('--failed'))];
  return draw(place, [x, succeeded, failed], [timeSeries(texts.time), ...series], axes());
}

/** Draws how long the jobs that started in each interval had waited. The caller destroys the chart. */
export function waitingChart(place: HTMLElement, { times: x, medianWait, longWait }: Series, texts: ChartTexts): uPlot {
  const points: Partial<uPlot.Series> = { value: seconds, points: { show: true, size: 5 } };
  const series = [line(texts.median, '--accent', points), line(texts.long, '--cancelled', points)];
  const values = (_chart: uPlot, marks: number[]): string[] => marks.map((mark) => durationText(mark * 1000));
  return draw(place, [x, medianWait, longWait], [timeSeries(texts.time), ...series], axes({ values, incrs: timeSteps }));
}
