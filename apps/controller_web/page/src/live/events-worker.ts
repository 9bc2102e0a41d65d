/** One event stream for all tabs: a browser opens at most six connections to a server, so one per tab would block the
 * seventh. */
import { EventStream } from './event-stream.ts';
import type { FromWorker, ToWorker } from './messages.ts';

const ports = new Set<MessagePort>();
const stream = new EventStream((message) => ports.forEach((port) => port.postMessage(message)));

function join(port: MessagePort): void {
  if (ports.size === 0) stream.open();
  ports.add(port);
  port.postMessage({ type: 'joined', state: stream.state } satisfies FromWorker);
}

function leave(port: MessagePort): void {
  ports.delete(port);
  if (ports.size === 0) stream.close();
}

function receive(port: MessagePort, message: ToWorker): void {
  if (message.type === 'join') join(port);
  else if (message.type === 'leave') leave(port);
  else stream.open();
}

self.addEventListener('connect', (event) => {
  const port = (event as MessageEvent).ports[0];
  if (!port) return;
  port.onmessage = (message: MessageEvent<ToWorker>) => receive(port, message.data);
});
