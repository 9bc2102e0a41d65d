import { expect, it } from 'vitest';
import { baseOf } from './base.ts';

it('is the directory of the page', () => {
  expect(baseOf('/', false)).toBe('/');
  expect(baseOf('/alice/', false)).toBe('/alice/');
  expect(baseOf('/alice/index.html', false)).toBe('/alice/');
});

it('is above the files of a worker', () => {
  expect(baseOf('/assets/events-worker-1a.js', true)).toBe('/');
  expect(baseOf('/alice/assets/events-worker-1a.js', true)).toBe('/alice/');
  expect(baseOf('/assets/alice/assets/events-worker-1a.js', true)).toBe('/assets/alice/');
  expect(baseOf('/src/live/events-worker.ts', true)).toBe('/');
});
