import { useEffect } from 'preact/hooks';
import { useApp, type App } from '../app.ts';
import { groups } from '../jobs/job.ts';
import { hasShortcuts } from './preferences.ts';

const isTyping = (target: EventTarget | null): boolean =>
  target instanceof HTMLElement && (target.isContentEditable || /^(INPUT|SELECT|TEXTAREA)$/.test(target.tagName));

function toggleGroup(app: App, index: number): void {
  const group = groups[index];
  const current = app.filter.value;
  if (!group) return;
  const chosen = groups.filter((name) => (name === group) !== current.groups.includes(name));
  app.filter.value = { ...current, groups: chosen };
}

function closeView(app: App): void {
  if (app.route.value.view !== 'queue') app.go({ view: 'queue' });
  else app.selection.value = { ...app.selection.value, ids: new Set() };
}

const onKey: Record<string, (app: App) => void> = {
  '?': (app) => (app.question.value = { kind: 'help' }),
  '/': () => document.getElementById('search')?.focus(),
  n: (app) => app.go({ view: 'start' }),
  Escape: closeView,
};

const isShortcut = (event: KeyboardEvent): boolean =>
  !event.defaultPrevented && !event.ctrlKey && !event.metaKey && !event.altKey && (hasShortcuts.value || event.key === 'Escape');

function run(app: App, event: KeyboardEvent): void {
  if (!isShortcut(event) || app.question.value || isTyping(event.target)) return;
  const action = /^[1-5]$/.test(event.key) ? () => toggleGroup(app, Number(event.key) - 1) : onKey[event.key];
  if (!action) return;
  event.preventDefault();
  action(app);
}

/** The keys that work everywhere except where the user types. */
export function useShortcuts(): void {
  const app = useApp();
  useEffect(() => {
    const listener = (event: KeyboardEvent): void => run(app, event);
    addEventListener('keydown', listener);
    return () => removeEventListener('keydown', listener);
  }, [app]);
}
