import { post } from '../api/client.ts';
import type { ActionReport } from '../api/types.ts';
import { isOver, type Job } from './job.ts';

export const actions = ['cancel', 'hold', 'release', 'priority', 'again', 'delete'] as const;
export type Action = (typeof actions)[number];

const conditions: Record<Action, (job: Job) => boolean> = {
  cancel: (job) => job.status === 'Queued' || job.status === 'Running',
  hold: (job) => job.status === 'Queued' && !job.hold,
  release: (job) => job.status === 'Queued' && job.hold,
  priority: (job) => job.status === 'Queued',
  again: isOver,
  delete: (job) => job.status !== 'Running' && job.status !== 'Canceling',
};

/** Whether the action means anything for a job in this state. */
export const applies = (action: Action, job: Job): boolean => conditions[action](job);

const changes: Partial<Record<Action, object>> = { hold: { hold: true }, release: { hold: false } };

function requestOf(action: Action, ids: readonly string[], priority: number): [path: string, body: object] {
  if (action === 'cancel' || action === 'again' || action === 'delete') return [`/jobs/${action}`, { ids }];
  return ['/jobs/edit', { ids, ...(changes[action] ?? { priority }) }];
}

const mostAtOnce = 1000;

/** Asks for the action on all jobs, so many in one request that the host can serve others between them. Throws as `post`
 * does; requests before the failed one have been carried out. `priority` is used by the action of this name only. */
export async function perform(action: Action, ids: readonly string[], priority = 0): Promise<ActionReport[]> {
  const reports: ActionReport[] = [];
  for (let first = 0; first < ids.length; first += mostAtOnce) {
    const [path, body] = requestOf(action, ids.slice(first, first + mostAtOnce), priority);
    reports.push(...(await post<{ jobs: ActionReport[] }>(path, body)).jobs);
  }
  return reports;
}
