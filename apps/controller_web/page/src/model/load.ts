import { BufferAttribute, BufferGeometry, DoubleSide, Mesh, MeshStandardMaterial, type Object3D } from 'three';
import { extensionOf } from '../job/file-kinds.ts';
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
  return new Mesh(geometry, new MeshStandardMaterial({ color: partColour, metalness: 0.1, roughness: 0.65, side: DoubleSide }));
}

async function loadStl(bytes: ArrayBuffer): Promise<Object3D> {
  const answer = await readInWorker(bytes);
  if ('error' in answer) throw new Error(answer.error);
  return meshOf(answer.triangles);
}

/** glTF has the y axis upwards, models of parts the z axis. */
async function loadGltf(bytes: ArrayBuffer, address: string): Promise<Object3D> {
  const { GLTFLoader } = await import('three/examples/jsm/loaders/GLTFLoader.js');
  const { scene } = await new GLTFLoader().parseAsync(bytes, address.slice(0, address.lastIndexOf('/') + 1));
  scene.rotation.x = Math.PI / 2;
  return scene;
}

async function load3mf(bytes: ArrayBuffer): Promise<Object3D> {
  const { ThreeMFLoader } = await import('three/examples/jsm/loaders/3MFLoader.js');
  return new ThreeMFLoader().parse(bytes);
}

/** Fetches and reads a model. Throws an `Error` that says why it cannot be shown. */
export async function loadModel(address: string, path: string, signal: AbortSignal): Promise<Object3D> {
  const response = await fetch(address, { signal });
  if (!response.ok) throw new Error(`${response.status} ${response.statusText}`);
  const bytes = await response.arrayBuffer();
  const extension = extensionOf(path);
  if (extension === 'stl') return loadStl(bytes);
  return extension === '3mf' ? load3mf(bytes) : loadGltf(bytes, address);
}
