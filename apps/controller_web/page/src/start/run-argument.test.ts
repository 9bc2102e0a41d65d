import { expect, it } from 'vitest';
import type { ParameterSet } from '../api/types.ts';
import { isValid, runArgumentOf } from './run-argument.ts';

const parameter = (name: string, type: string, defaultValue: string, allowedValues: string[] = []) => ({ name, type, defaultValue, allowedValues });
const set: ParameterSet = { id: 'large', displayName: 'Large', description: '', parameters: [parameter('size', 'integer', '800'), parameter('title', 'text', '')] };

it('names the set alone while all values are the defaults', () => {
  expect(runArgumentOf(set, {})).toBe('large');
  expect(runArgumentOf(set, { size: '800', title: '' })).toBe('large');
});

it('quotes values with blanks and doubles quotes in them', () => {
  expect(runArgumentOf(set, { size: '1200', title: '3" pipe' })).toBe('large size=1200 title="3"" pipe"');
});

it('quotes an empty value that is not the default', () => {
  expect(runArgumentOf({ ...set, parameters: [parameter('title', 'text', 'x')] }, { title: '' })).toBe('large title=""');
});

it('accepts values as scenarios do', () => {
  expect(isValid(parameter('n', 'number', '0'), '-1.5e3')).toBe(true);
  expect(isValid(parameter('n', 'number', '0'), '.')).toBe(false);
  expect(isValid(parameter('n', 'integer', '0'), '1.5')).toBe(false);
  expect(isValid(parameter('n', 'integer', '400', ['400', '800']), '500')).toBe(false);
  expect(isValid(parameter('n', 'text', ''), 'anything')).toBe(true);
});
