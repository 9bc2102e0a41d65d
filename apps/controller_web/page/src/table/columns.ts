import type { SortKey } from '../jobs/filter.ts';
import type { TextKey } from '../text/text.ts';

export interface Column {
  name: 'number' | 'status' | 'scenario' | 'input' | 'progress' | 'started' | 'duration' | 'priority';
  text: TextKey;
  sort: SortKey;
  /** Whether the first click puts the largest value first. */
  descendingFirst: boolean;
}

export const columns: readonly Column[] = [
  { name: 'number', text: 'column.number', sort: 'number', descendingFirst: true },
  { name: 'status', text: 'column.status', sort: 'status', descendingFirst: false },
  { name: 'scenario', text: 'column.scenario', sort: 'scenario', descendingFirst: false },
  { name: 'input', text: 'column.input', sort: 'input', descendingFirst: false },
  { name: 'progress', text: 'column.progress', sort: 'progress', descendingFirst: true },
  { name: 'started', text: 'column.started', sort: 'started', descendingFirst: true },
  { name: 'duration', text: 'column.duration', sort: 'duration', descendingFirst: true },
  { name: 'priority', text: 'column.priority', sort: 'priority', descendingFirst: true },
];
