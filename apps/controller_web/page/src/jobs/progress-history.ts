import { isOver, type Job } from './job.ts';
import type { JobStore } from './store.ts';

export interface ProgressPoint {
  time: number;
  progress: number;
}

const mostPoints = 500;
const mostJobs = 2000;

/** The progress of the jobs that run while the page is open. */
export class ProgressHistory {
  private readonly points = new Map<string, ProgressPoint[]>();

  constructor(store: JobStore, private readonly now: () => number = Date.now) {
    store.onChange((changes) => changes.forEach(({ before, after }) => this.note(before, after)));
  }

  /** In the order of time; empty for a job that has not run meanwhile. */
  of(id: string): readonly ProgressPoint[] {
    return this.points.get(id) ?? [];
  }

  private note(before: Job | undefined, after: Job | undefined): void {
    if (!after) this.points.delete(before?.id ?? '');
    else if (after.started && !(isOver(after) && !this.points.has(after.id))) this.add(after, before?.progress);
  }

  private add(job: Job, before: number | undefined): void {
    const points = this.points.get(job.id) ?? [{ time: job.started, progress: 0 }];
    const latest = points.at(-1)?.time ?? 0;
    if (job.progress !== before || isOver(job)) points.push({ time: Math.max(latest, job.ended || this.now()), progress: job.progress });
    if (points.length > mostPoints) points.splice(1, points.length, ...thinned(points));
    this.points.set(job.id, points);
    if (this.points.size > mostJobs) this.forgetOldest();
  }

  private forgetOldest(): void {
    for (const id of this.points.keys()) {
      this.points.delete(id);
      return;
    }
  }
}

/** Every second point: old changes need no more detail than the picture can show. */
function thinned(points: readonly ProgressPoint[]): ProgressPoint[] {
  return points.slice(1).filter((_point, index, rest) => index % 2 === 1 || index === rest.length - 1);
}
