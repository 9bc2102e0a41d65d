import { groupOf, isOver, type Job } from '../jobs/job.ts';

export interface Series {
  /** The beginning of each interval; seconds since 1970. */
  times: number[];
  succeeded: number[];
  failed: number[];
  /** Waiting times of the jobs that started in the interval, in seconds; null where none did. */
  medianWait: (number | null)[];
  longWait: (number | null)[];
}

/** Of sorted numbers. */
function quantile(sorted: readonly number[], share: number): number | null {
  return sorted[Math.min(sorted.length - 1, Math.floor(sorted.length * share))] ?? null;
}

function emptySeries(count: number, first: number, step: number): Series {
  const zeros = (): number[] => new Array<number>(count).fill(0);
  const times = zeros().map((_zero, index) => (first + index * step) / 1000);
  return { times, succeeded: zeros(), failed: zeros(), medianWait: [], longWait: [] };
}

/** Counts and waiting times in `count` equal intervals that end with `now`. Units of `span` and `now`: milliseconds. */
export function seriesOf(jobs: Iterable<Job>, now: number, span: number, count: number): Series {
  const step = span / count;
  const first = now - span;
  const series = emptySeries(count, first, step);
  const waits = series.times.map((): number[] => []);
  const place = (time: number): number => Math.min(count - 1, Math.floor((time - first) / step));
  for (const job of jobs) {
    if (isOver(job) && job.ended >= first && job.ended <= now) countEnd(series, job, place(job.ended));
    if (job.started >= first && job.started <= now && job.queued) waits[place(job.started)]?.push((job.started - job.queued) / 1000);
  }
  waits.forEach((values) => values.sort((a, b) => a - b));
  series.medianWait = waits.map((values) => quantile(values, 0.5));
  series.longWait = waits.map((values) => quantile(values, 0.9));
  return series;
}

function countEnd(series: Series, job: Job, index: number): void {
  const group = groupOf(job);
  if (group === 'succeeded') series.succeeded[index] = (series.succeeded[index] ?? 0) + 1;
  if (group === 'failed') series.failed[index] = (series.failed[index] ?? 0) + 1;
}

export interface Summary {
  succeeded: number;
  failed: number;
  medianWait: number | null;
  medianRun: number | null;
}

const sortedTimes = (values: number[]): number[] => values.filter((value) => value >= 0).sort((a, b) => a - b);

/** Of the jobs that ended since `first`. */
export function summaryOf(jobs: Iterable<Job>, first: number): Summary {
  const ended = [...jobs].filter((job) => isOver(job) && job.ended >= first);
  const ran = ended.filter((job) => job.started > 0);
  return {
    succeeded: ended.filter((job) => groupOf(job) === 'succeeded').length,
    failed: ended.filter((job) => groupOf(job) === 'failed').length,
    medianWait: quantile(sortedTimes(ran.filter((job) => job.queued > 0).map((job) => job.started - job.queued)), 0.5),
    medianRun: quantile(sortedTimes(ran.map((job) => job.ended - job.started)), 0.5),
  };
}
