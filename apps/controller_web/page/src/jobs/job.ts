import { statusNames, type JobRow, type StatusName } from '../api/types.ts';

/** One row of the table. Objects are replaced, never changed, so that rows are redrawn only if they differ. Times: milliseconds
 * since 1970, 0 for none. */
export interface Job {
  readonly id: string;
  readonly number: number;
  readonly status: StatusName;
  readonly progress: number;
  readonly message: string;
  readonly scenario: string;
  readonly inputs: readonly string[];
  readonly queued: number;
  readonly started: number;
  readonly ended: number;
  readonly priority: number;
  readonly hold: boolean;
  readonly waitReason: string;
  readonly waitName: string;
  readonly attempt: number;
  readonly attempts: number;
}

export const groups = ['queued', 'running', 'succeeded', 'failed', 'cancelled'] as const;
/** What the filter offers: `running` includes jobs that are being cancelled, `cancelled` those that never ran. */
export type Group = (typeof groups)[number];

const groupOfStatus: Record<StatusName, Group> = {
  Queued: 'queued',
  Running: 'running',
  Canceling: 'running',
  Success: 'succeeded',
  Failed: 'failed',
  Dequeued: 'cancelled',
  Canceled: 'cancelled',
};

export const groupOf = (job: Job): Group => groupOfStatus[job.status];
export const isOver = (job: Job): boolean => groupOf(job) !== 'queued' && groupOf(job) !== 'running';

export function statusOf(name: string): StatusName {
  return statusNames.find((known) => known === name) ?? 'Queued';
}

export const timeOf = (text: string | undefined): number => (text ? Date.parse(text) || 0 : 0);

/** Texts that many rows have in common are kept once. */
const sharedTexts = new Map<string, string>();
function shared(text: string | undefined): string {
  if (!text) return '';
  const known = sharedTexts.get(text);
  if (known !== undefined) return known;
  if (sharedTexts.size < 10_000) sharedTexts.set(text, text);
  return text;
}

const noInputs: readonly string[] = [];

export function jobOf(row: JobRow): Job {
  return {
    id: row.id,
    number: row.number,
    status: statusOf(row.status),
    progress: row.progress ?? 0,
    message: shared(row.message),
    scenario: shared(row.scenario),
    inputs: row.inputFiles?.length ? row.inputFiles : noInputs,
    queued: timeOf(row.queuedTime),
    started: timeOf(row.startTime),
    ended: timeOf(row.endTime),
    priority: row.priority ?? 0,
    hold: row.hold ?? false,
    waitReason: shared(row.waitReason),
    waitName: shared(row.waitName),
    attempt: row.attempt ?? 0,
    attempts: row.attempts ?? 0,
  };
}

/** The running time in milliseconds; -1 if the job never started. */
export function durationOf(job: Job, now: number): number {
  if (!job.started) return -1;
  return Math.max(0, (isOver(job) ? job.ended || job.started : now) - job.started);
}

export const fileNameOf = (path: string): string => path.slice(Math.max(path.lastIndexOf('/'), path.lastIndexOf('\\')) + 1);
