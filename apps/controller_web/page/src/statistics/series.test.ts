import { expect, it } from 'vitest';
import { jobOf } from '../jobs/job.ts';
import { row } from '../jobs/jobs-kit.ts';
import { seriesOf, summaryOf } from './series.ts';

const now = Date.parse('2026-03-05T08:00:00Z');
const jobs = [
  row(1, { queuedTime: '2026-03-05T07:10:00Z', startTime: '2026-03-05T07:10:10Z', endTime: '2026-03-05T07:11:00Z' }),
  row(2, { queuedTime: '2026-03-05T07:10:00Z', startTime: '2026-03-05T07:10:30Z', endTime: '2026-03-05T07:59:59Z', status: 'Failed' }),
  row(3, { queuedTime: '2026-03-04T07:10:00Z', startTime: '2026-03-04T07:10:30Z', endTime: '2026-03-04T07:20:00Z' }),
  row(4, { queuedTime: '2026-03-05T07:30:00Z', status: 'Queued' }),
].map(jobOf);

it('counts each end in its interval and nothing from before', () => {
  const series = seriesOf(jobs, now, 3_600_000, 6);
  expect(series.succeeded).toEqual([0, 1, 0, 0, 0, 0]);
  expect(series.failed).toEqual([0, 0, 0, 0, 0, 1]);
});

it('has waiting times where jobs started', () => {
  const series = seriesOf(jobs, now, 3_600_000, 6);
  expect(series.medianWait).toEqual([null, 30, null, null, null, null]);
  expect(series.longWait[1]).toBe(30);
});

it('sums up', () => {
  expect(summaryOf(jobs, now - 3_600_000)).toEqual({ succeeded: 1, failed: 1, medianWait: 30_000, medianRun: 2_969_000 });
  expect(summaryOf([], 0)).toEqual({ succeeded: 0, failed: 0, medianWait: null, medianRun: null });
});
