import { signal } from '@preact/signals';
import { ApiError, get, parse } from '../api/client.ts';
import type { JobRow, JobsEvent, QueueState } from '../api/types.ts';
import type { JobStore } from '../jobs/store.ts';
import { loadList } from './list-loader.ts';
import type { Connection, FromWorker } from './messages.ts';
import { subscribe, type Subscription } from './subscription.ts';

const retryAfter = 3000;

/** Keeps the store equal to the list of the server. While the list is fetched, changes wait: they are at least as new as
 * its pages. */
export class Session {
  readonly connection = signal<Connection>('connecting');
  readonly queue = signal<QueueState>({ paused: false });
  /** The jobs of the list that is being fetched for the first time; -1 when it is there. */
  readonly expected = signal(0);
  readonly loadError = signal<ApiError | undefined>(undefined);
  /** When the last message came; milliseconds since 1970. */
  readonly lastNews = signal(0);

  private waiting: JobsEvent[] | undefined;
  private loading = new AbortController();
  private retryTimer: ReturnType<typeof setTimeout> | undefined;
  private readonly subscription: Subscription;

  constructor(private readonly store: JobStore) {
    this.subscription = subscribe((message) => this.receive(message));
  }

  retry(): void {
    this.subscription.retry();
    void this.reload();
  }

  private receive(message: FromWorker): void {
    this.lastNews.value = Date.now();
    if (message.type === 'event') this.receiveEvent(message.name, message.data);
    else this.connection.value = message.state;
    if (message.type === 'joined' && message.state === 'open') void this.reload();
  }

  private receiveEvent(name: 'jobs' | 'host' | 'reset', data: string): void {
    if (name === 'reset') void this.reload();
    else if (name === 'host') this.receiveHost(parse<{ running: boolean }>(data));
    else this.receiveJobs(parse<JobsEvent>(data));
  }

  private receiveHost(host: { running: boolean }): void {
    this.queue.value = { ...this.queue.value, host };
    if (host.running && this.loadError.value) void this.reload();
  }

  private receiveJobs(event: JobsEvent): void {
    if (this.waiting) this.waiting.push(event);
    else this.apply(event);
  }

  private apply(event: JobsEvent): void {
    this.queue.value = event.queue;
    this.store.apply(event.changed, event.removed);
  }

  private async reload(): Promise<void> {
    this.loading.abort();
    clearTimeout(this.retryTimer);
    this.loading = new AbortController();
    const { signal: aborted } = this.loading;
    this.waiting ??= [];
    try {
      this.queue.value = await get<QueueState>('/queue', aborted);
      await this.loadJobs(aborted);
      this.loadError.value = undefined;
    } catch (error) {
      if (aborted.aborted) return;
      this.onLoadError(error);
    }
  }

  private async loadJobs(aborted: AbortSignal): Promise<void> {
    const ids = new Set<string>();
    await loadList(aborted, (rows, total) => this.takePage(rows, total, ids));
    const removedMeanwhile = this.waiting?.some((event) => event.removed.length > 0) ?? false;
    this.store.keepOnly(ids);
    this.finishLoading();
    // A removal moves the rows behind it: one may have moved from a later page into one that was fetched already.
    if (removedMeanwhile) await this.reload();
  }

  private takePage(rows: JobRow[], total: number, ids: Set<string>): void {
    if (this.expected.value >= 0) this.expected.value = total;
    rows.forEach((row) => ids.add(row.id));
    this.store.apply(rows);
  }

  private finishLoading(): void {
    this.expected.value = -1;
    this.applyWaiting();
  }

  private applyWaiting(): void {
    const events = this.waiting ?? [];
    this.waiting = undefined;
    events.forEach((event) => this.apply(event));
  }

  private onLoadError(error: unknown): void {
    this.loadError.value = error instanceof ApiError ? error : new ApiError(0, 'unexpected', String(error));
    this.applyWaiting();
    if (this.loadError.value.status === 401) this.connection.value = 'refused';
    else this.retryTimer = setTimeout(() => void this.reload(), retryAfter);
  }
}
