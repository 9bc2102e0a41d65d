import { expect, it } from 'vitest';
import { fragmentOf, routeOf, type Route } from './route.ts';

it.each<Route>([{ view: 'queue' }, { view: 'start' }, { view: 'statistics' }, { view: 'job', id: '51f', tab: 'overview' }, { view: 'job', id: '51f', tab: 'log' }])(
  'comes back from its address: %j',
  (route) => expect(routeOf(fragmentOf(route))).toEqual(route),
);

it('shows the queue for an address that means nothing', () => {
  expect(routeOf('#/nothing/at/all')).toEqual({ view: 'queue' });
  expect(routeOf('')).toEqual({ view: 'queue' });
});
