import { describe, expect, it } from 'vitest';
import { readStl } from './stl.ts';

const triangle = [0, 0, 0, 2, 0, 0, 0, 2, 0];

function binary(count: number, values: readonly number[], claimed = count): ArrayBuffer {
  const data = new DataView(new ArrayBuffer(84 + count * 50));
  data.setUint32(80, claimed, true);
  for (let index = 0; index < count; index++) values.forEach((value, place) => data.setFloat32(84 + index * 50 + 12 + place * 4, value, true));
  return data.buffer;
}

const text = (content: string): ArrayBuffer => new TextEncoder().encode(content).buffer as ArrayBuffer;

describe('readStl', () => {
  it('reads binary files and calculates normals', () => {
    const { positions, normals } = readStl(binary(2, triangle));
    expect(positions).toHaveLength(18);
    expect([...normals.slice(0, 3)]).toEqual([0, 0, 1]);
  });

  it('reads binary files with something behind the triangles', () => {
    const bytes = new Uint8Array([...new Uint8Array(binary(1, triangle)), 1, 2, 3]);
    expect(readStl(bytes.buffer).positions).toHaveLength(9);
  });

  it('reads text files', () => {
    const content = 'solid x\nfacet normal 0 0 0\nouter loop\nvertex 0 0 0\n vertex 1e0 0 0\nvertex 0 1 0\nendloop\nendfacet\n';
    expect([...readStl(text(content)).positions]).toEqual([0, 0, 0, 1, 0, 0, 0, 1, 0]);
  });

  it.each([
    ['nothing', new ArrayBuffer(0)],
    ['another format', text('# an OBJ file\nv 0 0 0\n')],
    ['a count that the file does not have', binary(1, triangle, 4_000_000_000)],
    ['a binary file whose end is missing', binary(3, triangle).slice(0, -10)],
    ['a corner that is missing', text('vertex 0 0 0\nvertex 1 1 1\n')],
    ['coordinates that are no numbers', binary(1, [Number.NaN, ...triangle.slice(1)])],
  ])('refuses %s', (_what, bytes) => {
    expect(() => readStl(bytes)).toThrow();
  });

  it('gives a triangle without area a normal that is a number', () => {
    expect([...readStl(binary(1, [0, 0, 0, 0, 0, 0, 0, 0, 0])).normals].every(Number.isFinite)).toBe(true);
  });
});
