import { describe, expect, it } from 'vitest';
import { cubeGlb, cubeGltf, gltf } from '../../tests/models.ts';
import { checkGltf } from './gltf.ts';

const bytesOf = (content: string | Buffer): ArrayBuffer => new Uint8Array(Buffer.from(content)).buffer;

describe('checkGltf', () => {
  it.each([['text', cubeGltf()], ['binary', cubeGlb()]])('accepts the %s form', (_form, content) => {
    expect(() => checkGltf(bytesOf(content))).not.toThrow();
  });

  it.each([
    ['nothing', '', 'damaged'],
    ['null', 'null', 'version'],
    ['the end missing', cubeGltf().slice(0, -20), 'damaged'],
    ['a binary file of four bytes', 'glTF', 'cutOff'],
    ['the end of a binary file missing', cubeGlb().subarray(0, 400), 'cutOff'],
    ['a description longer than the file', Buffer.concat([cubeGlb().subarray(0, 12), Buffer.from('ffffff7f', 'hex'), cubeGlb().subarray(16)]), 'cutOff'],
    ['an old version', gltf({}, { asset: { version: '1.0' } }), 'version'],
    ['billions of corners', gltf({}, { accessors: [{ count: 4_000_000_000, componentType: 5126, type: 'VEC3' }] }), 'tooLarge'],
    ['millions of corners without bytes', gltf({}, { accessors: [{ count: 5_000_000, componentType: 5126, type: 'VEC3' }] }), 'tooLarge'],
    ['copies without bytes', gltf({}, { nodes: [{ mesh: 0, extensions: { EXT_mesh_gpu_instancing: { attributes: {} } } }] }), 'extension EXT_mesh_gpu'],
    ['a count below zero', gltf({}, { accessors: [{ count: -1 }] }), 'damaged'],
    ['an object in itself', gltf({}, { nodes: [{ children: [1] }, { children: [0] }] }), 'circular'],
    ['an object in two others', gltf({}, { nodes: [{ children: [2] }, { children: [2] }, {}] }), 'circular'],
    ['a compression', gltf({}, { extensionsRequired: ['KHR_draco_mesh_compression'] }), 'extension KHR_draco'],
  ])('refuses %s', (_what, content, reason) => {
    expect(() => checkGltf(bytesOf(content))).toThrow(reason);
  });
});
