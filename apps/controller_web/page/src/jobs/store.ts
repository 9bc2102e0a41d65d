import type { JobRow } from '../api/types.ts';
import { groupOf, jobOf, type Group, type Job } from './job.ts';

export interface Change {
  before: Job | undefined;
  after: Job | undefined;
}

export type Counts = Record<Group, number>;

const noCounts = (): Counts => ({ queued: 0, running: 0, succeeded: 0, failed: 0, cancelled: 0 });

/** All jobs by id, and how many there are of each group. */
export class JobStore {
  private readonly jobs = new Map<string, Job>();
  private groupCounts = noCounts();
  private readonly listeners = new Set<(changes: readonly Change[]) => void>();

  get size(): number {
    return this.jobs.size;
  }

  get counts(): Readonly<Counts> {
    return this.groupCounts;
  }

  find(id: string): Job | undefined {
    return this.jobs.get(id);
  }

  all(): Iterable<Job> {
    return this.jobs.values();
  }

  /** Returns the function that ends the subscription. */
  onChange(listener: (changes: readonly Change[]) => void): () => void {
    this.listeners.add(listener);
    return () => this.listeners.delete(listener);
  }

  /** Adds and replaces rows and removes others, and reports it all at once. */
  apply(rows: readonly JobRow[], removed: readonly string[] = []): void {
    const gone = new Set(removed);
    const changes: Change[] = [];
    for (const row of rows) {
      if (row.status === 'Deleted') gone.add(row.id);
      else changes.push(this.put(jobOf(row)));
    }
    for (const id of gone) {
      const change = this.remove(id);
      if (change) changes.push(change);
    }
    this.report(changes);
  }

  /** Removes the jobs that are not among `ids`: what a complete list no longer has. */
  keepOnly(ids: ReadonlySet<string>): void {
    this.apply([], [...this.jobs.keys()].filter((id) => !ids.has(id)));
  }

  private put(after: Job): Change {
    const before = this.jobs.get(after.id);
    if (before) this.groupCounts[groupOf(before)]--;
    this.groupCounts[groupOf(after)]++;
    this.jobs.set(after.id, after);
    return { before, after };
  }

  private remove(id: string): Change | undefined {
    const before = this.jobs.get(id);
    if (!before) return undefined;
    this.groupCounts[groupOf(before)]--;
    this.jobs.delete(id);
    return { before, after: undefined };
  }

  private report(changes: readonly Change[]): void {
    if (changes.length === 0) return;
    for (const listener of this.listeners) listener(changes);
  }
}
