import { fileNameOf, groupOf, groups, type Group, type Job } from './job.ts';

export const sortKeys = ['number', 'status', 'scenario', 'input', 'progress', 'queued', 'started', 'duration', 'priority'] as const;
export type SortKey = (typeof sortKeys)[number];

export interface Filter {
  /** Empty: all. */
  groups: readonly Group[];
  text: string;
  sort: SortKey;
  descending: boolean;
}

export const noFilter: Filter = { groups: [], text: '', sort: 'number', descending: true };

function searchText(job: Job): string {
  return `${job.number} ${job.scenario} ${job.message} ${job.inputs.join(' ')}`.toLowerCase();
}

/** The test of one row. All words of the text must occur, in any order. */
export function matcherOf(filter: Filter): (job: Job) => boolean {
  const words = filter.text.toLowerCase().split(/\s+/).filter(Boolean);
  const wanted = new Set(filter.groups);
  return (job) => {
    if (wanted.size > 0 && !wanted.has(groupOf(job))) return false;
    if (words.length === 0) return true;
    const text = searchText(job);
    return words.every((word) => text.includes(word));
  };
}

type Key = number | string;

const keyReaders: Record<SortKey, (job: Job) => Key> = {
  number: (job) => job.number,
  status: (job) => groups.indexOf(groupOf(job)),
  scenario: (job) => job.scenario.toLowerCase(),
  input: (job) => fileNameOf(job.inputs[0] ?? '').toLowerCase(),
  progress: (job) => job.progress,
  queued: (job) => job.queued,
  started: (job) => job.started,
  duration: (job) => (job.ended && job.started ? job.ended - job.started : job.started ? Number.MAX_SAFE_INTEGER - job.started : -1),
  priority: (job) => job.priority,
};

export const keyOf = (sort: SortKey, job: Job): Key => keyReaders[sort](job);

/** The order of rows; those with equal keys follow their numbers. */
export function comparisonOf(filter: Filter): (a: Job, b: Job) => number {
  const read = keyReaders[filter.sort];
  const sign = filter.descending ? -1 : 1;
  return (a, b) => {
    const keyA = read(a);
    const keyB = read(b);
    if (keyA === keyB) return sign * (a.number - b.number);
    return keyA < keyB ? -sign : sign;
  };
}

/** Only what differs from `noFilter` is written. */
export function queryOf(filter: Filter): string {
  const query = new URLSearchParams();
  if (filter.groups.length > 0) query.set('status', filter.groups.join(','));
  if (filter.text) query.set('text', filter.text);
  if (filter.sort !== noFilter.sort) query.set('sort', filter.sort);
  if (!filter.descending) query.set('order', 'asc');
  return query.toString();
}

/** Unknown words are left out: the address may have been written by hand. */
export function filterOf(query: string): Filter {
  const read = new URLSearchParams(query);
  const words = (read.get('status') ?? '').split(',');
  return {
    groups: groups.filter((group) => words.includes(group)),
    text: read.get('text') ?? '',
    sort: sortKeys.find((key) => key === read.get('sort')) ?? noFilter.sort,
    descending: read.get('order') !== 'asc',
  };
}
