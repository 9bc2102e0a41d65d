import { describe, expect, it } from 'vitest';
import { archiveBomb, cube3mf, cubeObject, manyCubes, threeMf } from '../../tests/models.ts';
import { checkThreeMf } from './three-mf.ts';

const bytesOf = (content: Buffer): ArrayBuffer => new Uint8Array(content).buffer;

describe('checkThreeMf', () => {
  it('accepts a cube, and an object that is made of some', () => {
    expect(() => checkThreeMf(bytesOf(cube3mf()))).not.toThrow();
    expect(() => checkThreeMf(bytesOf(manyCubes(2)))).not.toThrow();
  });

  it.each([
    ['nothing', Buffer.alloc(0), 'notZip'],
    ['a text', Buffer.from('solid x'.repeat(50)), 'notZip'],
    ['the end missing', cube3mf().subarray(0, 300), 'notZip'],
    ['an archive without a model', threeMf('', 1).subarray(-22), 'noModelPart'],
    ['an archive that unpacks to gigabytes', archiveBomb(4_000_000_000), 'tooLarge'],
    ['a few lines for billions of objects', manyCubes(10), 'tooLarge'],
    ['an object that contains itself', threeMf('<object id="1"><components><component objectid="1"/></components></object>', 1), 'circular'],
    ['declarations of entities', threeMf(`${cubeObject()}<!DOCTYPE x [<!ENTITY a "a">]>`, 1), 'damaged'],
  ])('refuses %s', (_what, content, reason) => {
    expect(() => checkThreeMf(bytesOf(content))).toThrow(reason);
  });
});
