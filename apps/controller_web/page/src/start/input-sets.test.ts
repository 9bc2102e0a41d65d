import { expect, it } from 'vitest';
import { areComplete, inputSetsOf, isAccepted } from './input-sets.ts';

const files = ['a', 'b', 'c', 'd'].map((name) => ({ name, path: `/${name}` }));

it('makes a job of each file, or of as many as the scenario takes', () => {
  expect(inputSetsOf(files, 1)).toHaveLength(4);
  expect(inputSetsOf(files, 2)).toEqual([['/a', '/b'], ['/c', '/d']]);
});

it('is complete when no job lacks a file', () => {
  expect(areComplete(files, 2)).toBe(true);
  expect(areComplete(files, 3)).toBe(false);
  expect(areComplete([], 1)).toBe(false);
});

it('accepts files by extension, also with a version behind it', () => {
  expect(isAccepted('Part.STL', ['stl'])).toBe(true);
  expect(isAccepted('part.prt.3', ['prt'])).toBe(true);
  expect(isAccepted('part.stlx', ['stl'])).toBe(false);
  expect(isAccepted('x.c++', ['c++'])).toBe(true);
  expect(isAccepted('anything', [])).toBe(true);
});
