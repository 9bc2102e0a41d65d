import { Box3, BufferAttribute, BufferGeometry, Mesh, MeshStandardMaterial, type Object3D } from 'three';
import { extensionOf } from '../job/file-kinds.ts';
import { checkGltf } from './gltf.ts';
import { limits, ModelError } from './model-error.ts';
import { OwnFiles } from './own-files.ts';
import type { StlAnswer } from './stl-worker.ts';
import type { Triangles } from './stl.ts';

const partColour = 0x9fb4cc;

function readInWorker(bytes: ArrayBuffer): Promise<StlAnswer> {
  const worker = new Worker(new URL('./stl-worker.ts', import.meta.url), { type: 'module' });
  return new Promise<StlAnswer>((resolve, reject) => {
    worker.onmessage = (event: MessageEvent<StlAnswer>) => resolve(event.data);
    worker.onerror = (event) => reject(new Error(event.message));
    worker.postMessage(bytes, [bytes]);
  }).finally(() => worker.terminate());
}

function meshOf({ positions, normals }: Triangles): Mesh {
  const geometry = new BufferGeometry();
  geometry.setAttribute('position', new BufferAttribute(positions, 3));
  geometry.setAttribute('normal', new BufferAttribute(normals, 3));
  return new Mesh(geometry, new MeshStandardMaterial({ color: partColour, metalness: 0.1, roughness: 0.65 }));
}

async function loadStl(bytes: ArrayBuffer): Promise<Object3D> {
  const answer = await readInWorker(bytes);
  if ('reason' in answer) throw new ModelError(answer.reason);
  return meshOf(answer.triangles);
}

/** glTF has the y axis upwards, models of parts the z axis. */
async function loadGltf(bytes: ArrayBuffer, address: string): Promise<Object3D> {
  checkGltf(bytes);
  const { GLTFLoader } = await import('three/examples/jsm/loaders/GLTFLoader.js');
  const folder = address.slice(0, address.lastIndexOf('/') + 1);
  const files = new OwnFiles(folder);
  const { scene } = await new GLTFLoader(files.manager).parseAsync(bytes, folder).finally(() => files.release());
  scene.rotation.x = Math.PI / 2;
  return scene;
}

async function load3mf(bytes: ArrayBuffer): Promise<Object3D> {
  const [{ checkThreeMf }, { ThreeMFLoader }] = await Promise.all([import('./three-mf.ts'), import('three/examples/jsm/loaders/3MFLoader.js')]);
  checkThreeMf(bytes);
  return new ThreeMFLoader().parse(bytes);
}

function read(bytes: ArrayBuffer, address: string, path: string): Promise<Object3D> {
  const extension = extensionOf(path);
  if (extension === 'stl') return loadStl(bytes);
  return extension === '3mf' ? load3mf(bytes) : loadGltf(bytes, address);
}

function cornersOf(object: Object3D): number {
  if (!(object instanceof Mesh)) return 0;
  const { index, attributes } = object.geometry as BufferGeometry;
  return index?.count ?? attributes['position']?.count ?? 0;
}

/** What is drawn: a shape counts each time that it is used. */
function checkCorners(model: Object3D): void {
  let corners = 0;
  model.traverse((object) => (corners += cornersOf(object)));
  if (corners > limits.triangles * 3) throw new ModelError('tooLarge');
}

function checkShape(model: Object3D): void {
  checkCorners(model);
  model.updateMatrixWorld(true);
  const box = new Box3().setFromObject(model);
  if (box.isEmpty()) throw new ModelError('noTriangles');
  if (![...box.min, ...box.max].every(Number.isFinite)) throw new ModelError('notNumbers');
}

/** Fetches and reads a model. Throws a `ModelError`, or an `Error` that says why it cannot be fetched. */
export async function loadModel(address: string, path: string, signal: AbortSignal): Promise<Object3D> {
  const response = await fetch(address, { signal });
  if (!response.ok) throw new Error(`${response.status} ${response.statusText}`);
  const bytes = await response.arrayBuffer();
  const model = await read(bytes, address, path).catch((error: unknown) => {
    // The libraries report damage in many ways.
    throw error instanceof ModelError ? error : new ModelError('damaged');
  });
  checkShape(model);
  return model;
}
