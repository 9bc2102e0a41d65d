import { EventStream } from './event-stream.ts';
import type { FromWorker, ToWorker } from './messages.ts';

export interface Subscription {
  /** Connects at once instead of after the usual time. */
  retry(): void;
}

function ofWorker(receive: (message: FromWorker) => void): Subscription {
  const worker = new SharedWorker(new URL('./events-worker.ts', import.meta.url), { type: 'module', name: 'events' });
  const send = (message: ToWorker): void => worker.port.postMessage(message);
  worker.port.onmessage = (message: MessageEvent<FromWorker>) => receive(message.data);
  addEventListener('pagehide', () => send({ type: 'leave' }));
  addEventListener('pageshow', (event) => event.persisted && send({ type: 'join' }));
  send({ type: 'join' });
  return { retry: () => send({ type: 'retry' }) };
}

/** For browsers without shared workers (those of some telephones). */
function ofThisTab(receive: (message: FromWorker) => void): Subscription {
  const stream = new EventStream(receive);
  stream.open();
  return { retry: () => stream.open() };
}

/** Calls `receive` with each message of the event stream that all tabs share. */
export function subscribe(receive: (message: FromWorker) => void): Subscription {
  return typeof SharedWorker === 'undefined' ? ofThisTab(receive) : ofWorker(receive);
}
