import { expect, it } from 'vitest';
import { dataOf, isBelow } from './own-files.ts';

const page = 'http://127.0.0.1:8720/#/jobs/1/files';
const folder = '/api/v1/jobs/1/files/views/';

it.each(['part.bin', 'more/part.bin'])('allows %s beside the model', (name) => {
  expect(isBelow(folder + name, folder, page)).toBe(true);
});

it.each(['../other.bin', '%2e%2e/other.bin', '..\\other.bin', '../../../../jobs?limit=1'])('refuses %s, which is not below the folder', (name) => {
  expect(isBelow(folder + name, folder, page)).toBe(false);
});

it.each(['http://example.org/api/v1/jobs/1/files/views/a', '//example.org/a', 'ftp://example.org/a', 'http://127.0.0.1:8721/api/v1/jobs/1/files/views/a'])(
  'refuses %s, which is another server',
  (address) => expect(isBelow(address, folder, page)).toBe(false),
);

it('reads the content of addresses that have it in themselves', async () => {
  expect(await dataOf('data:text/plain;charset=utf-8;base64,w7w=').text()).toBe('ü');
  expect(await dataOf('data:,a%20b').text()).toBe('a b');
  expect(dataOf('data:image/png;base64,').type).toBe('image/png');
});
