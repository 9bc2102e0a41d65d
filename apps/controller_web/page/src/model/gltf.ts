/** What is checked of a glTF file before the library reads it. */
import { limits, ModelError } from './model-error.ts';

interface Gltf {
  asset?: { version?: string };
  accessors?: { count?: number; bufferView?: number }[];
  nodes?: { children?: number[]; extensions?: Record<string, unknown> }[];
  scenes?: { nodes?: number[] }[];
  extensionsRequired?: string[];
}

const binaryMark = 0x46546c67;
const jsonMark = 0x4e4f534a;
const headerSize = 12;
const chunkHeaderSize = 8;
const unsupported = ['KHR_draco_mesh_compression', 'EXT_meshopt_compression', 'KHR_meshopt_compression'];
/** Copies of a shape that take no bytes of the file. */
const copies = 'EXT_mesh_gpu_instancing';

function isBinary(data: DataView): boolean {
  return data.byteLength >= 4 && data.getUint32(0, true) === binaryMark;
}

/** The description in a binary file: its first chunk. */
function descriptionOf(data: DataView): Uint8Array {
  const start = headerSize + chunkHeaderSize;
  if (data.byteLength < start || data.getUint32(8, true) > data.byteLength) throw new ModelError('cutOff');
  const length = data.getUint32(headerSize, true);
  if (data.getUint32(headerSize + 4, true) !== jsonMark) throw new ModelError('damaged');
  if (start + length > data.byteLength) throw new ModelError('cutOff');
  return new Uint8Array(data.buffer, start, length);
}

function parsed(bytes: ArrayBuffer): Gltf {
  const data = new DataView(bytes);
  const text = new TextDecoder().decode(isBinary(data) ? descriptionOf(data) : bytes);
  try {
    return (JSON.parse(text) as Gltf | null) ?? {};
  } catch {
    throw new ModelError('damaged');
  }
}

function checkSize({ accessors = [], nodes = [] }: Gltf): void {
  const counts = accessors.map(({ count = 0 }) => count);
  if (!counts.every((count) => Number.isInteger(count) && count >= 0)) throw new ModelError('damaged');
  const corners = counts.reduce((sum, count) => sum + count, 0);
  // Without bytes in the file they are zeros, which morphing needs for few corners.
  const zeros = accessors.filter(({ bufferView }) => bufferView === undefined).reduce((sum, { count = 0 }) => sum + count, 0);
  if (corners > limits.triangles * 3 || zeros > limits.zeros || nodes.length > limits.objects) throw new ModelError('tooLarge');
}

function checkExtensions({ extensionsRequired = [], nodes = [] }: Gltf): void {
  const missing = extensionsRequired.find((name) => unsupported.includes(name)) ?? (nodes.some((node) => node.extensions?.[copies]) ? copies : '');
  if (missing) throw new ModelError('extension', missing);
}

/** The library waits for ever for an object that contains itself. Where each has one parent, none that is shown does. */
function checkTree({ nodes = [], scenes = [] }: Gltf): void {
  const children = nodes.flatMap((node) => node.children ?? []);
  if (new Set(children).size < children.length) throw new ModelError('circular');
  const inner = new Set(children);
  if (scenes.some((scene) => scene.nodes?.some((root) => inner.has(root)))) throw new ModelError('circular');
}

/** Throws a `ModelError` for a file that is damaged, or that would take more memory than a model may. */
export function checkGltf(bytes: ArrayBuffer): void {
  const description = parsed(bytes);
  if (!/^2\./.test(description.asset?.version ?? '')) throw new ModelError('version');
  checkExtensions(description);
  checkSize(description);
  checkTree(description);
}
