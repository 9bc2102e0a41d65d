import { effect, signal } from '@preact/signals';
import { createContext } from 'preact';
import { useContext } from 'preact/hooks';
import { perform, type Action } from './jobs/actions.ts';
import { filterOf, queryOf, type Filter } from './jobs/filter.ts';
import { Listing } from './jobs/listing.ts';
import { ProgressHistory } from './jobs/progress-history.ts';
import { noSelection, pruned, type Selection } from './jobs/selection.ts';
import { JobStore } from './jobs/store.ts';
import { Session } from './live/session.ts';
import { counted, t } from './text/text.ts';
import { errorText } from './ui/errors.ts';
import { FrameSignal } from './ui/frame.ts';
import { Notices } from './ui/notices.ts';
import { fragmentOf, routeOf, type Route } from './ui/route.ts';

/** What a dialog asks; at most one is open. */
export type Question = { kind: 'help' } | { kind: 'confirm'; action: Action; ids: readonly string[] } | { kind: 'priority'; ids: readonly string[] };

/** The state of the page, and what the user can do with it. */
export class App {
  readonly store = new JobStore();
  readonly listing = new Listing(this.store);
  readonly progress = new ProgressHistory(this.store);
  readonly session = new Session(this.store);
  readonly notices = new Notices();
  readonly filter = signal<Filter>(filterOf(location.search));
  readonly selection = signal<Selection>(noSelection);
  readonly route = signal<Route>(routeOf(location.hash));
  readonly question = signal<Question | undefined>(undefined);
  /** The time now, once a second. */
  readonly now = signal(Date.now());
  private readonly frame = new FrameSignal({ store: this.store, listing: this.listing, progress: this.progress });
  /** Changes with the jobs, at most once per picture of the screen: what is drawn from jobs reads them here. */
  readonly jobs = this.frame.changed;

  constructor() {
    this.store.onChange(this.frame.touch);
    effect(() => this.onFilter());
    effect(() => this.onJobs());
    addEventListener('popstate', () => this.onAddress());
    addEventListener('hashchange', () => this.onAddress());
    setInterval(() => (this.now.value = Date.now()), 1000);
  }

  go(route: Route): void {
    if (fragmentOf(route) !== location.hash) history.pushState(null, '', location.pathname + location.search + fragmentOf(route));
    this.route.value = route;
  }

  /** Carries out an action and says what became of it. */
  async act(action: Action, ids: readonly string[], priority = 0): Promise<void> {
    try {
      const reports = await perform(action, ids, priority);
      const refused = reports.filter((report) => !report.done);
      const done = reports.length - refused.length;
      if (done > 0) this.notices.done(counted(`done.${action}`, done));
      if (refused.length > 0) this.notices.error(refused.slice(0, 3).map((report) => report.message).join(' '));
    } catch (error) {
      this.notices.error(errorText(error));
    }
  }

  /** Carries it out, or asks first where it cannot be taken back or concerns many. */
  request(action: Action, ids: readonly string[]): void {
    if (ids.length === 0) return;
    if (this.session.queue.value.readOnly) this.notices.error(t('error.readOnly'));
    else if (action === 'priority') this.question.value = { kind: 'priority', ids };
    else if (action === 'delete' || ids.length > 5) this.question.value = { kind: 'confirm', action, ids };
    else void this.act(action, ids);
  }

  private onFilter(): void {
    const filter = this.filter.value;
    this.listing.filter = filter;
    const query = queryOf(filter);
    history.replaceState(null, '', `${location.pathname}${query ? `?${query}` : ''}${location.hash}`);
    this.frame.touch();
  }

  private onJobs(): void {
    const { store } = this.jobs.value;
    const selection = pruned(this.selection.peek(), (id) => id === '' || store.find(id) !== undefined);
    if (this.session.expected.value < 0) this.selection.value = selection;
  }

  private onAddress(): void {
    this.route.value = routeOf(location.hash);
    this.filter.value = filterOf(location.search);
  }
}

export const AppContext = createContext<App | undefined>(undefined);

export function useApp(): App {
  const app = useContext(AppContext);
  if (!app) throw new Error('no App around this component');
  return app;
}
