import { describe, expect, it } from 'vitest';
import { comparisonOf, filterOf, matcherOf, noFilter, queryOf, type Filter } from './filter.ts';
import { jobOf } from './job.ts';
import { row } from './jobs-kit.ts';

describe('filter', () => {
  it('comes back from the address as it was written', () => {
    const filter: Filter = { groups: ['running', 'failed'], text: 'a & b=ü', sort: 'duration', descending: false };
    expect(filterOf(queryOf(filter))).toEqual(filter);
    expect(queryOf(noFilter)).toBe('');
  });

  it('ignores unknown words in the address', () => {
    expect(filterOf('?status=failed,<script>&sort=nothing')).toEqual({ ...noFilter, groups: ['failed'] });
  });

  it('finds all words in any order, whatever their case', () => {
    const matches = matcherOf({ ...noFilter, text: 'STL report  part_7' });
    expect(matches(jobOf(row(7)))).toBe(true);
    expect(matches(jobOf(row(8)))).toBe(false);
  });

  it('counts jobs that are being cancelled as running', () => {
    expect(matcherOf({ ...noFilter, groups: ['running'] })(jobOf(row(1, { status: 'Canceling' })))).toBe(true);
  });

  it('sorts equal jobs by number', () => {
    const jobs = [row(1), row(3), row(2)].map(jobOf);
    expect(jobs.sort(comparisonOf({ ...noFilter, sort: 'scenario', descending: false })).map((job) => job.number)).toEqual([1, 2, 3]);
  });
});
