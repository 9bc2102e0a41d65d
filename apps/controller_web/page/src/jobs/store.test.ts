import { describe, expect, it } from 'vitest';
import { row } from './jobs-kit.ts';
import { JobStore } from './store.ts';

describe('JobStore', () => {
  it('counts each job once, in its present group', () => {
    const store = new JobStore();
    store.apply([row(1, { status: 'Queued' }), row(2, { status: 'Dequeued' })]);
    store.apply([row(1, { status: 'Running' })]);
    expect(store.counts).toEqual({ queued: 0, running: 1, succeeded: 0, failed: 0, cancelled: 1 });
  });

  it('removes deleted jobs, whichever way they are reported', () => {
    const store = new JobStore();
    store.apply([row(1), row(2), row(3)]);
    store.apply([row(1, { status: 'Deleted' })], ['id2', 'unknown']);
    expect([...store.all()].map((job) => job.number)).toEqual([3]);
    expect(store.counts.succeeded).toBe(1);
  });

  it('keeps only what a complete list has', () => {
    const store = new JobStore();
    store.apply([row(1), row(2)]);
    store.keepOnly(new Set(['id2']));
    expect(store.find('id1')).toBeUndefined();
    expect(store.size).toBe(1);
  });

  it('reports nothing when nothing has changed', () => {
    const store = new JobStore();
    let reports = 0;
    store.onChange(() => reports++);
    store.apply([], ['unknown']);
    expect(reports).toBe(0);
  });
});
