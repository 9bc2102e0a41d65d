/** What the shared worker and the tabs tell each other. */

/** `refused`: the server answers, but not to this browser; only the user can change that. */
export type Connection = 'connecting' | 'open' | 'lost' | 'refused';

export type FromWorker =
  | { type: 'connection'; state: Connection }
  | { type: 'joined'; state: Connection }
  | { type: 'event'; name: 'jobs' | 'host' | 'reset'; data: string };

export type ToWorker = { type: 'join' } | { type: 'leave' } | { type: 'retry' };
