import { limits, ModelError } from './model-error.ts';

/** Three corners of three coordinates for each triangle. */
export interface Triangles {
  positions: Float32Array;
  normals: Float32Array;
}

const headerSize = 84;
const triangleSize = 50;

const sizeFor = (data: DataView): number => headerSize + data.getUint32(80, true) * triangleSize;

/** Binary files may begin with "solid" too; but texts have no zero bytes. */
function isBinary(data: DataView): boolean {
  const beginning = new Uint8Array(data.buffer, 0, Math.min(data.byteLength, 512));
  return data.byteLength >= headerSize && (data.byteLength === sizeFor(data) || beginning.includes(0));
}

function readBinary(data: DataView): Float32Array {
  if (data.byteLength < sizeFor(data)) throw new ModelError('cutOff');
  const count = data.getUint32(80, true);
  const positions = new Float32Array(count * 9);
  for (let triangle = 0, at = 0; triangle < count; triangle++) {
    const start = headerSize + triangle * triangleSize + 12;
    for (let byte = 0; byte < 36; byte += 4) positions[at++] = data.getFloat32(start + byte, true);
  }
  return positions;
}

function readText(text: string): Float32Array {
  const numbers: number[] = [];
  for (const [, x, y, z] of text.matchAll(/^\s*vertex\s+(\S+)\s+(\S+)\s+(\S+)/gm)) numbers.push(Number(x), Number(y), Number(z));
  return new Float32Array(numbers);
}

function check(positions: Float32Array): void {
  if (positions.length === 0) throw new ModelError('noTriangles');
  if (positions.length % 9 !== 0) throw new ModelError('cutOff');
  if (positions.length / 9 > limits.triangles) throw new ModelError('tooLarge');
  if (!positions.every(Number.isFinite)) throw new ModelError('notNumbers');
}

type Vector = [number, number, number];

function normalOf(positions: Float32Array, at: number): Vector {
  const value = (index: number): number => positions[at + index] ?? 0;
  const u: Vector = [value(3) - value(0), value(4) - value(1), value(5) - value(2)];
  const v: Vector = [value(6) - value(0), value(7) - value(1), value(8) - value(2)];
  const normal: Vector = [u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]];
  const length = Math.hypot(...normal) || 1;
  return [normal[0] / length, normal[1] / length, normal[2] / length];
}

/** Normals are calculated: those of the file are often missing or wrong. */
function normalsOf(positions: Float32Array): Float32Array {
  const normals = new Float32Array(positions.length);
  for (let at = 0; at < positions.length; at += 9) {
    const normal = normalOf(positions, at);
    for (let corner = 0; corner < 9; corner += 3) normals.set(normal, at + corner);
  }
  return normals;
}

/** Reads an STL file of either form. Throws a `ModelError` that says what is wrong with it. */
export function readStl(bytes: ArrayBuffer): Triangles {
  const data = new DataView(bytes);
  const positions = isBinary(data) ? readBinary(data) : readText(new TextDecoder().decode(bytes));
  check(positions);
  return { positions, normals: normalsOf(positions) };
}
