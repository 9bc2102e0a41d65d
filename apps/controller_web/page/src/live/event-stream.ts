import { base } from '../api/base.ts';
import type { Connection, FromWorker } from './messages.ts';

const address = `${base}api/v1/events`;
const retryAfter = 2000;
const eventNames = ['jobs', 'host', 'reset'] as const;

/** The event stream of the server, opened again whenever it ends. After a broken connection the browser itself connects
 * again and names the last event; after an answer that is not a stream (a server that is starting, a session that has
 * ended) it gives up, and this class tries again. */
export class EventStream {
  private source: EventSource | undefined;
  private retry: ReturnType<typeof setTimeout> | undefined;
  private connection: Connection = 'connecting';

  constructor(private readonly report: (message: FromWorker) => void) {}

  get state(): Connection {
    return this.connection;
  }

  open(): void {
    this.close();
    const source = new EventSource(address);
    this.source = source;
    source.onopen = () => this.become('open');
    source.onerror = () => this.onError(source);
    for (const name of eventNames) {
      source.addEventListener(name, (event) => this.report({ type: 'event', name, data: (event as MessageEvent<string>).data }));
    }
  }

  close(): void {
    clearTimeout(this.retry);
    this.source?.close();
    this.source = undefined;
  }

  private become(state: Connection): void {
    if (this.connection === state) return;
    this.connection = state;
    this.report({ type: 'connection', state });
  }

  private onError(source: EventSource): void {
    if (this.source !== source) return;
    if (source.readyState !== EventSource.CLOSED) this.become('lost');
    else void this.onEnd();
  }

  private async onEnd(): Promise<void> {
    this.close();
    const isRefused = await fetch(`${base}api/v1/queue`).then((answer) => answer.status === 401, () => false);
    this.become(isRefused ? 'refused' : 'lost');
    clearTimeout(this.retry);
    this.retry = setTimeout(() => this.open(), retryAfter);
  }
}
