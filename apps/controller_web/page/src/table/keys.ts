import type { App } from '../app.ts';
import { applies, type Action } from '../jobs/actions.ts';
import { activated, everything, extended, toggled } from '../jobs/selection.ts';

const actionOf: Record<string, Action> = { c: 'cancel', h: 'hold', p: 'priority', a: 'again', Delete: 'delete' };

/** The jobs that an action of the keyboard is for: the selected ones, otherwise the active one. */
function targets(app: App, action: Action): string[] {
  const { ids, active } = app.selection.value;
  return [...(ids.size > 0 ? ids : [active])].filter((id) => {
    const job = app.store.find(id);
    return job !== undefined && applies(action, job);
  });
}

function act(app: App, action: Action): void {
  const ids = targets(app, action);
  if (action === 'hold' && ids.length === 0) app.request('release', targets(app, 'release'));
  else app.request(action, ids);
}

const steps: Record<string, (page: number) => number> = {
  ArrowDown: () => 1,
  ArrowUp: () => -1,
  PageDown: (page) => page,
  PageUp: (page) => -page,
  Home: () => -Infinity,
  End: () => Infinity,
};

function move(app: App, step: number, isExtending: boolean): number {
  const order = app.listing.ids;
  const selection = app.selection.value;
  const from = order.indexOf(selection.active);
  const index = Math.min(order.length - 1, Math.max(0, from + step));
  const id = order[index];
  if (id === undefined) return 0;
  app.selection.value = isExtending ? extended(selection, id, order) : activated(selection, id);
  return index;
}

function command(app: App, key: string): boolean {
  const { active } = app.selection.value;
  const action = actionOf[key];
  if (action) act(app, action);
  else if (key === ' ' && active) app.selection.value = toggled(app.selection.value, active);
  else if (key === 'Enter' && active) app.go({ view: 'job', id: active, tab: 'overview' });
  else return false;
  return true;
}

function selectAll(app: App, event: KeyboardEvent): boolean {
  if (!(event.ctrlKey || event.metaKey) || event.key !== 'a') return false;
  app.selection.value = everything(app.selection.value, app.listing.ids);
  return true;
}

/** Handles a key in the table; `show` scrolls to the row that has become active. */
export function onTableKey(app: App, event: KeyboardEvent, page: number, show: (index: number) => void): void {
  if ((event.target as HTMLElement).tagName === 'BUTTON' && (event.key === ' ' || event.key === 'Enter')) return;
  const step = steps[event.key];
  if (step && !event.altKey) show(move(app, step(page), event.shiftKey));
  else if (!selectAll(app, event) && (event.ctrlKey || event.metaKey || event.altKey || !command(app, event.key))) return;
  event.preventDefault();
}
