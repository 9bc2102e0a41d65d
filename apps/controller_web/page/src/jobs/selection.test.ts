import { expect, it } from 'vitest';
import { activated, extended, noSelection, pruned, toggled } from './selection.ts';

const order = ['a', 'b', 'c', 'd'];

it('selects the range between the anchor and the place of the second click, in both directions', () => {
  const anchored = activated(noSelection, 'c');
  expect([...extended(anchored, 'd', order).ids]).toEqual(['c', 'd']);
  expect([...extended(extended(anchored, 'd', order), 'a', order).ids]).toEqual(['a', 'b', 'c']);
});

it('selects one job where the anchor is not listed', () => {
  expect([...extended(activated(noSelection, 'gone'), 'b', order).ids]).toEqual(['b']);
});

it('deselects what is selected', () => {
  expect(toggled(toggled(noSelection, 'a'), 'a').ids.size).toBe(0);
});

it('forgets jobs that are gone, and stays the same otherwise', () => {
  const selection = toggled(toggled(noSelection, 'a'), 'b');
  expect([...pruned(selection, (id) => id !== 'a').ids]).toEqual(['b']);
  expect(pruned(selection, () => true)).toBe(selection);
});
