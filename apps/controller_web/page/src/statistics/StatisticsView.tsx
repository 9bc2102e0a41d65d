import { useEffect, useMemo, useRef, useState } from 'preact/hooks';
import { useApp } from '../app.ts';
import { durationText } from '../text/display.ts';
import { formatNumber, language, t } from '../text/text.ts';
import { isDark } from '../ui/preferences.ts';
import { seriesOf, summaryOf, type Series, type Summary } from './series.ts';

const hour = 3_600_000;
const spans = { hour: [hour, 60], day: [24 * hour, 96], week: [7 * 24 * hour, 84], month: [30 * 24 * hour, 90] } as const;
type Span = keyof typeof spans;
const refreshAfter = 5000;

type Charts = typeof import('./charts.ts');
type Draw = (charts: Charts, place: HTMLElement) => { destroy(): void };

/** Draws anew when data, width, theme or language change; the library is loaded here. */
function Chart({ name, draw, data }: { name: string; draw: Draw; data: Series }) {
  const place = useRef<HTMLDivElement>(null);
  const [width, setWidth] = useState(0);
  useEffect(() => {
    const observer = new ResizeObserver(([entry]) => setWidth(entry?.contentRect.width ?? 0));
    if (place.current) observer.observe(place.current);
    return () => observer.disconnect();
  }, []);
  useEffect(() => {
    let chart: { destroy(): void } | undefined;
    let isGone = false;
    void import('./charts.ts').then((charts) => {
      if (!isGone && place.current && width > 0) chart = draw(charts, place.current);
    });
    return () => ((isGone = true), chart?.destroy());
  }, [data, width, isDark.value, language.value]);
  return (
    <section class="card chart">
      <h3>{name}</h3>
      <div ref={place} class="chart-place" />
    </section>
  );
}

function Figure({ name, value, kind = '' }: { name: string; value: string; kind?: string }) {
  return (
    <div class={`figure ${kind}`}>
      <dt>{name}</dt>
      <dd>{value}</dd>
    </div>
  );
}

function Figures({ summary }: { summary: Summary }) {
  const { succeeded, failed, medianWait, medianRun } = summary;
  const rate = succeeded + failed > 0 ? `${Math.round((100 * succeeded) / (succeeded + failed))} %` : '–';
  return (
    <dl class="figures">
      <Figure name={t('group.succeeded')} value={formatNumber(succeeded)} kind="status-succeeded" />
      <Figure name={t('group.failed')} value={formatNumber(failed)} kind="status-failed" />
      <Figure name={t('statistics.rate')} value={rate} />
      <Figure name={t('statistics.medianWait')} value={medianWait === null ? '–' : durationText(medianWait)} />
      <Figure name={t('statistics.medianRun')} value={medianRun === null ? '–' : durationText(medianRun)} />
    </dl>
  );
}

function useData(span: Span): { series: Series; summary: Summary } {
  const app = useApp();
  const [time, setTime] = useState(Date.now());
  useEffect(() => {
    const timer = setInterval(() => setTime(Date.now()), refreshAfter);
    return () => clearInterval(timer);
  }, []);
  const isLoaded = app.session.expected.value < 0;
  const [length, count] = spans[span];
  return useMemo(
    () => ({ series: seriesOf(app.store.all(), time, length, count), summary: summaryOf(app.store.all(), time - length) }),
    [time, span, isLoaded],
  );
}

export function StatisticsView() {
  const [span, setSpan] = useState<Span>('day');
  const { series, summary } = useData(span);
  const texts = { time: t('statistics.time'), succeeded: t('group.succeeded'), failed: t('group.failed'), median: t('statistics.median'), long: t('statistics.long') };
  return (
    <section class="statistics" aria-label={t('view.statistics')}>
      <header>
        <h2>{t('view.statistics')}</h2>
        <div class="chips" role="group" aria-label={t('statistics.span')}>
          {(Object.keys(spans) as Span[]).map((name) => (
            <button key={name} type="button" class="chip" aria-pressed={name === span} onClick={() => setSpan(name)}>
              {t(`span.${name}`)}
            </button>
          ))}
        </div>
      </header>
      <Figures summary={summary} />
      <Chart name={t('statistics.throughput')} data={series} draw={(charts, place) => charts.throughputChart(place, series, texts)} />
      <Chart name={t('statistics.waiting')} data={series} draw={(charts, place) => charts.waitingChart(place, series, texts)} />
      <p class="quiet">{t('statistics.note')}</p>
    </section>
  );
}
