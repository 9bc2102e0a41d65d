import { describe, expect, it } from 'vitest';
import { noFilter } from './filter.ts';
import { row } from './jobs-kit.ts';
import { Listing } from './listing.ts';
import { JobStore } from './store.ts';

function setUp(count: number) {
  const store = new JobStore();
  const listing = new Listing(store);
  store.apply(Array.from({ length: count }, (_none, index) => row(index + 1)));
  return { store, listing };
}

describe('Listing', () => {
  it('shows the newest job first', () => {
    expect(setUp(3).listing.ids).toEqual(['id3', 'id2', 'id1']);
  });

  it('takes new jobs in, and leaves removed ones out', () => {
    const { store, listing } = setUp(2);
    expect(listing.ids).toHaveLength(2);
    store.apply([row(9)], ['id1']);
    expect(listing.ids).toEqual(['id9', 'id2']);
  });

  it('moves a job in and out as its state changes', () => {
    const { store, listing } = setUp(2);
    listing.filter = { ...noFilter, groups: ['running'] };
    expect(listing.ids).toEqual([]);
    store.apply([row(1, { status: 'Running' })]);
    expect(listing.ids).toEqual(['id1']);
    store.apply([row(1, { status: 'Failed' })]);
    expect(listing.ids).toEqual([]);
  });

  it('has a job once that left and came back between two readings', () => {
    const { store, listing } = setUp(2);
    expect(listing.ids).toHaveLength(2);
    store.apply([], ['id1']);
    store.apply([row(1)]);
    expect(listing.ids).toEqual(['id2', 'id1']);
  });

  it('follows changes of what it is sorted by', () => {
    const { store, listing } = setUp(3);
    listing.filter = { ...noFilter, sort: 'progress' };
    store.apply([row(2, { status: 'Running', progress: 50 })]);
    expect(listing.ids[0]).toBe('id2');
    store.apply([row(1, { status: 'Running', progress: 70 })]);
    expect(listing.ids.slice(0, 2)).toEqual(['id1', 'id2']);
  });

  it('is the same as a listing made anew, after any changes', () => {
    const { store, listing } = setUp(50);
    const filter = { ...noFilter, groups: ['running', 'failed'] as const, sort: 'priority' as const };
    listing.filter = filter;
    const statuses = ['Queued', 'Running', 'Success', 'Failed'];
    for (let step = 0; step < 500; step++) {
      const number = ((step * 31) % 60) + 1;
      if (step % 7 === 0) store.apply([], [`id${number}`]);
      else store.apply([row(number, { status: statuses[(step * 13) % 4]!, priority: (step * 17) % 5 })]);
      if (step % 3 === 0) expect(listing.ids).toHaveLength(new Set(listing.ids).size);
    }
    const anew = new Listing(store);
    anew.filter = filter;
    expect(listing.ids).toEqual(anew.ids);
  });
});
