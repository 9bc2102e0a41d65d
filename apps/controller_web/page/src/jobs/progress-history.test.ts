import { expect, it } from 'vitest';
import { row } from './jobs-kit.ts';
import { ProgressHistory } from './progress-history.ts';
import { JobStore } from './store.ts';

it('keeps the progress of a running job, with a bound, in the order of time', () => {
  const store = new JobStore();
  let now = Date.parse('2026-03-05T07:00:10Z');
  const history = new ProgressHistory(store, () => (now += 100));
  for (let step = 0; step < 2000; step++) store.apply([row(1, { status: 'Running', startTime: '2026-03-05T07:00:00Z', progress: step % 101 })]);
  const points = history.of('id1');
  expect(points.length).toBeLessThanOrEqual(500);
  expect(points[0]?.progress).toBe(0);
  expect([...points].sort((a, b) => a.time - b.time)).toEqual(points);
});

it('has nothing about a job that had ended before', () => {
  const store = new JobStore();
  const history = new ProgressHistory(store);
  store.apply([row(1, { startTime: '2026-03-05T07:00:00Z', endTime: '2026-03-05T07:01:00Z' })]);
  expect(history.of('id1')).toEqual([]);
});
