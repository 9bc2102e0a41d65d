import { comparisonOf, keyOf, matcherOf, noFilter, type Filter } from './filter.ts';
import type { Job } from './job.ts';
import type { Change, JobStore } from './store.ts';

/** The ids of the jobs that a filter shows, in its order. Brought up to date lazily: changes only note what has become
 * out of date, and reading `ids` does the work once for all of them. */
export class Listing {
  private order: string[] = [];
  private listed = new Set<string>();
  private current: Filter = noFilter;
  private matches = matcherOf(noFilter);
  private isComplete = false;
  private isSorted = true;
  private removals = false;

  constructor(private readonly store: JobStore) {
    store.onChange((changes) => changes.forEach((change) => this.note(change)));
  }

  get filter(): Filter {
    return this.current;
  }

  set filter(filter: Filter) {
    this.current = filter;
    this.matches = matcherOf(filter);
    this.isComplete = false;
  }

  get ids(): readonly string[] {
    if (!this.isComplete) this.collect();
    if (this.removals) this.order = this.order.filter((id) => this.listed.has(id));
    if (!this.isSorted) this.sort();
    this.isComplete = this.isSorted = true;
    this.removals = false;
    return this.order;
  }

  private collect(): void {
    this.order = [];
    for (const job of this.store.all()) if (this.matches(job)) this.order.push(job.id);
    this.listed = new Set(this.order);
    this.removals = this.isSorted = false;
  }

  /** The sort of the browser is fast for what is nearly in order, so a sort after few changes is cheap. */
  private sort(): void {
    const compare = comparisonOf(this.current);
    const jobs: Job[] = [];
    for (const id of this.order) {
      const job = this.store.find(id);
      if (job) jobs.push(job);
    }
    this.order = jobs.sort(compare).map((job) => job.id);
  }

  private note({ before, after }: Change): void {
    if (!this.isComplete) return;
    if (after && this.matches(after)) this.noteListed(before, after);
    else this.noteUnlisted((after ?? before)!.id);
  }

  private noteListed(before: Job | undefined, after: Job): void {
    if (!this.listed.has(after.id)) {
      this.flushRemovals();
      this.listed.add(after.id);
      this.order.push(after.id);
      this.isSorted = false;
    } else if (!before || keyOf(this.current.sort, before) !== keyOf(this.current.sort, after)) {
      this.isSorted = false;
    }
  }

  private noteUnlisted(id: string): void {
    if (this.listed.delete(id)) this.removals = true;
  }

  /** A job that leaves and comes back before the next reading must not be in the order twice. */
  private flushRemovals(): void {
    if (!this.removals) return;
    this.order = this.order.filter((id) => this.listed.has(id));
    this.removals = false;
  }
}
