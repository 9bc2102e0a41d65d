/** Files of a cube with edges of 10 mm, in each format that the page shows, and files that are not as they should be. */
import { strToU8, zipSync } from 'three/examples/jsm/libs/fflate.module.js';

const corners = [0, 1, 2, 3, 4, 5, 6, 7].map((number) => [number & 1, (number >> 1) & 1, number >> 2].map((place) => place * 10));
const faces = [[0, 2, 3, 1], [4, 5, 7, 6], [0, 1, 5, 4], [2, 6, 7, 3], [0, 4, 6, 2], [1, 3, 7, 5]] as const;
const triangles = faces.flatMap(([a, b, c, d]) => [[a, b, c], [a, c, d]]);

export const cubeStl = (): string =>
  `solid cube\n${triangles.map((triangle) => `facet normal 0 0 0\nouter loop\n${triangle.map((corner) => `vertex ${corners[corner]!.join(' ')}\n`).join('')}endloop\nendfacet\n`).join('')}endsolid cube\n`;

function cubeBytes(): Buffer {
  const indices = Buffer.from(Uint16Array.from(triangles.flat()).buffer);
  return Buffer.concat([indices, Buffer.from(Float32Array.from(corners.flat()).buffer)]);
}

/** The description of the cube; `buffer` says where its bytes are. */
export function gltf(buffer: { uri?: string }, changes: Record<string, unknown> = {}): string {
  const bytes = cubeBytes().length;
  const indexBytes = triangles.length * 6;
  return JSON.stringify({
    asset: { version: '2.0' },
    scene: 0,
    scenes: [{ nodes: [0] }],
    nodes: [{ mesh: 0 }],
    meshes: [{ primitives: [{ attributes: { POSITION: 1 }, indices: 0 }] }],
    accessors: [
      { bufferView: 0, componentType: 5123, count: triangles.length * 3, type: 'SCALAR' },
      { bufferView: 1, componentType: 5126, count: corners.length, type: 'VEC3', min: [0, 0, 0], max: [10, 10, 10] },
    ],
    bufferViews: [
      { buffer: 0, byteOffset: 0, byteLength: indexBytes },
      { buffer: 0, byteOffset: indexBytes, byteLength: bytes - indexBytes },
    ],
    buffers: [{ byteLength: bytes, ...buffer }],
    ...changes,
  });
}

export const cubeGltf = (): string => gltf({ uri: `data:application/octet-stream;base64,${cubeBytes().toString('base64')}` });

/** 90,000 copies of one shape with 1,200 triangles. */
export function manyGltfCopies(): string {
  const indices = Buffer.from(Uint16Array.from(Array.from({ length: 100 }, () => triangles.flat()).flat()).buffer);
  const places = cubeBytes().subarray(triangles.length * 6);
  const bytes = Buffer.concat([indices, places]);
  const copies = Array.from({ length: 90_000 }, () => ({ mesh: 0 }));
  const description = JSON.parse(gltf({})) as { accessors: { count: number }[] };
  description.accessors[0]!.count = indices.length / 2;
  return JSON.stringify({
    ...description,
    nodes: copies,
    scenes: [{ nodes: copies.map((_copy, index) => index) }],
    bufferViews: [{ buffer: 0, byteOffset: 0, byteLength: indices.length }, { buffer: 0, byteOffset: indices.length, byteLength: places.length }],
    buffers: [{ byteLength: bytes.length, uri: `data:application/octet-stream;base64,${bytes.toString('base64')}` }],
  });
}

function chunk(mark: string, content: Buffer, filler: string): Buffer {
  const padded = Buffer.concat([content, Buffer.alloc((4 - (content.length % 4)) % 4, filler)]);
  const head = Buffer.alloc(8);
  head.writeUInt32LE(padded.length);
  head.write(mark, 4, 'latin1');
  return Buffer.concat([head, padded]);
}

export function cubeGlb(description = gltf({})): Buffer {
  const content = Buffer.concat([chunk('JSON', Buffer.from(description), ' '), chunk('BIN\0', cubeBytes(), '\0')]);
  const head = Buffer.alloc(12);
  head.write('glTF', 'latin1');
  head.writeUInt32LE(2, 4);
  head.writeUInt32LE(12 + content.length, 8);
  return Buffer.concat([head, content]);
}

const mesh = (): string =>
  `<mesh><vertices>${corners.map(([x, y, z]) => `<vertex x="${x}" y="${y}" z="${z}"/>`).join('')}</vertices>` +
  `<triangles>${triangles.map(([a, b, c]) => `<triangle v1="${a}" v2="${b}" v3="${c}"/>`).join('')}</triangles></mesh>`;

export const cubeObject = (): string => `<object id="1" type="model">${mesh()}</object>`;

/** A package with these objects, the last of which is shown. */
export function threeMf(objects: string, shown: number, more: Record<string, Uint8Array> = {}): Buffer {
  const relations =
    '<?xml version="1.0"?><Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">' +
    '<Relationship Target="/3D/3dmodel.model" Id="rel0" Type="http://schemas.microsoft.com/3dmanufacturing/2013/01/3dmodel"/></Relationships>';
  const model =
    '<?xml version="1.0"?><model unit="millimeter" xmlns="http://schemas.microsoft.com/3dmanufacturing/core/2015/02">' +
    `<resources>${objects}</resources><build><item objectid="${shown}"/></build></model>`;
  return Buffer.from(zipSync({ '_rels/.rels': strToU8(relations), '3D/3dmodel.model': strToU8(model), ...more }));
}

export const cube3mf = (): Buffer => threeMf(cubeObject(), 1);

/** Some lines that stand for 10 to the power of `levels` cubes. */
export function manyCubes(levels: number): Buffer {
  const object = (level: number): string => `<object id="${level}"><components>${`<component objectid="${level - 1}"/>`.repeat(10)}</components></object>`;
  return threeMf(cubeObject() + Array.from({ length: levels }, (_none, index) => object(index + 2)).join(''), levels + 1);
}

/** A small archive that says it unpacks to `size` bytes. */
export function archiveBomb(size: number): Buffer {
  const archive = threeMf(cubeObject(), 1, { '3D/bomb.model': new Uint8Array(100_000) });
  const directory = archive.lastIndexOf(Buffer.from('PK\u0001\u0002', 'latin1'));
  archive.writeUInt32LE(size, directory + 24);
  return archive;
}
