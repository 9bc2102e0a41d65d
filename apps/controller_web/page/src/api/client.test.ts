import { expect, it } from 'vitest';
import { filePath, parse } from './client.ts';

it('escapes each part of a path, also bytes that are not UTF-8', () => {
  expect(filePath('1a', 'views/a b?#%.png')).toBe('/jobs/1a/files/views/a%20b%3F%23%25.png');
  expect(filePath('1a', 'x\udcff.stl')).toBe('/jobs/1a/files/x%FF.stl');
});

it('reads texts that are not valid Unicode', () => {
  expect(parse('{"path":{"codePoints":[97,56448]}}')).toEqual({ path: 'a\udc80' });
});
