/** What the page shows beside the list; the fragment of the address. */
export type Route =
  | { view: 'queue' }
  | { view: 'job'; id: string; tab: JobTab }
  | { view: 'start' }
  | { view: 'statistics' };

export const jobTabs = ['overview', 'log', 'files', 'origin'] as const;
export type JobTab = (typeof jobTabs)[number];

export function routeOf(fragment: string): Route {
  const [, view, id, tab] = fragment.split('/');
  if (view === 'jobs' && id) return { view: 'job', id, tab: jobTabs.find((name) => name === tab) ?? 'overview' };
  if (view === 'start' || view === 'statistics') return { view };
  return { view: 'queue' };
}

export function fragmentOf(route: Route): string {
  if (route.view === 'queue') return '#/';
  if (route.view !== 'job') return `#/${route.view}`;
  return `#/jobs/${route.id}${route.tab === 'overview' ? '' : `/${route.tab}`}`;
}
