import { writeFileSync } from 'node:fs';
import { createServer } from 'node:http';
import type { AddressInfo } from 'node:net';
import { once } from 'node:events';
import type { Page } from '@playwright/test';
import { archiveBomb, cube3mf, cubeGlb, cubeGltf, cubeObject, cubeStl, gltf, manyCubes, manyGltfCopies, threeMf } from '../../models.ts';
import { rowOf } from '../kit/mock.ts';
import { expect, test, type Installation } from '../kit/real.ts';
import { scenarios } from '../kit/scenarios.ts';

/** Runs a job whose results are its inputs, and shows them. */
async function showResults(page: Page, installation: Installation): Promise<void> {
  installation.run('copies.rb');
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  await rowOf(page, 1).click();
  await page.getByRole('tab', { name: 'Files' }).click();
}

const openFile = (page: Page, name: string) => page.getByRole('button', { name: new RegExp(`^${name.replaceAll('.', '\\.')}`) }).click();

/** How many colours a model has on the screen: the background alone is one. */
const colours = (page: Page): Promise<number> =>
  page.locator('canvas').evaluate((canvas: HTMLCanvasElement) => {
    const copy = new OffscreenCanvas(64, 64).getContext('2d')!;
    copy.drawImage(canvas, 0, 0, 64, 64);
    return new Set(new Uint32Array(copy.getImageData(0, 0, 64, 64).data.buffer)).size;
  });

const picture = (page: Page): Promise<string> => page.locator('canvas').evaluate((canvas: HTMLCanvasElement) => canvas.toDataURL());

/** Whether the middle of the picture shows something other than its corner. */
const isMiddleFilled = (page: Page): Promise<boolean> =>
  page.locator('canvas').evaluate((canvas: HTMLCanvasElement) => {
    const copy = new OffscreenCanvas(65, 65).getContext('2d')!;
    copy.drawImage(canvas, 0, 0, 65, 65);
    const pixels = new Uint32Array(copy.getImageData(0, 0, 65, 65).data.buffer);
    return pixels[32 * 65 + 32] !== pixels[0];
  });

const good = { 'part.stl': cubeStl(), 'cube.gltf': cubeGltf(), 'cube.glb': cubeGlb(), 'cube.3mf': cube3mf() };

test.describe('results of each format', () => {
  test.use({ contents: { scenarios, inputs: good } });
  test('models in STL, glTF, binary glTF and 3MF are shown, measured and cut', async ({ page, installation }) => {
    await showResults(page, installation);
    for (const name of Object.keys(good)) {
      await openFile(page, name);
      await expect(page.getByRole('application', { name: new RegExp(name) })).toBeVisible();
      await expect(page.getByText('Size 10 × 10 × 10')).toBeVisible();
      await expect.poll(() => colours(page)).toBeGreaterThan(3);
      for (const tool of ['Edges', 'Measure', 'Top']) await page.getByRole('button', { name: tool }).click();
      const whole = await picture(page);
      await page.getByLabel('Section', { exact: true }).selectOption('z');
      await expect.poll(() => picture(page)).not.toBe(whole);
      expect(await isMiddleFilled(page), 'the inside is seen').toBe(true);
    }
  });
});

const damaged: Record<string, [string | Buffer, RegExp]> = {
  'short.stl': [cubeStl().slice(0, 250), /cut off/],
  'other.stl': ['# an OBJ file\n', /no triangles/],
  'short.glb': [cubeGlb().subarray(0, 400), /cut off/],
  'short.gltf': [cubeGltf().slice(0, -30), /damaged/],
  'no bytes.glb': [cubeGlb(gltf({}, { bufferViews: [] })), /damaged/],
  'billions.gltf': [gltf({}, { accessors: [{ count: 4_000_000_000, componentType: 5126, type: 'VEC3' }] }), /larger than the page can show/],
  'copies.gltf': [manyGltfCopies(), /larger than the page can show/],
  'in itself.gltf': [gltf({}, { nodes: [{ children: [0] }] }), /contains itself/],
  'old.gltf': [gltf({}, { asset: { version: '1.0' } }), /only glTF 2/],
  'short.3mf': [cube3mf().subarray(0, 300), /no archive, or is cut off/],
  'empty.3mf': [threeMf('', 1), /no triangles|damaged/],
  'bomb.3mf': [archiveBomb(4_000_000_000), /larger than the page can show/],
  'billions.3mf': [manyCubes(10), /larger than the page can show/],
  'in itself.3mf': [threeMf('<object id="1"><components><component objectid="1"/></components></object>', 1), /contains itself/],
  'entities.3mf': [threeMf(`${cubeObject()}<!DOCTYPE a [<!ENTITY b "c">]>`, 1), /damaged/],
};

test.describe('damaged results', () => {
  const inputs = Object.fromEntries(Object.entries(damaged).map(([name, [bytes]]) => [name, bytes]));
  test.use({ contents: { scenarios, inputs: { 'part.stl': cubeStl(), ...inputs } } });
  test('damaged and hostile models get a message that says why, and the page goes on', async ({ page, installation }) => {
    await showResults(page, installation);
    for (const [name, [, reason]] of Object.entries(damaged)) {
      await openFile(page, name);
      await expect(page.getByText(`The model ${name} cannot be shown`)).toHaveText(reason);
    }
    await openFile(page, 'part.stl');
    await expect(page.getByText('Size 10 × 10 × 10')).toBeVisible();
  });
});

/** A model whose corners and picture are at `address`. */
const modelNaming = (address: string): string =>
  gltf(
    { uri: `${address}/corners.bin` },
    { images: [{ uri: `${address}/picture.png` }], textures: [{ source: 0 }], materials: [{ pbrMetallicRoughness: { baseColorTexture: { index: 0 } } }] },
  );

const modelWithPicture = (address: string): string => {
  const description = JSON.parse(modelNaming(address)) as { buffers: unknown; meshes: { primitives: { material?: number }[] }[] };
  description.buffers = (JSON.parse(cubeGltf()) as { buffers: unknown }).buffers;
  description.meshes[0]!.primitives[0]!.material = 0;
  return JSON.stringify(description);
};

test('a model that names files of other servers and folders makes the page fetch none of them', async ({ page, installation }) => {
  const asked: string[] = [];
  const foreign = createServer((request, response) => {
    asked.push(request.url ?? '');
    response.writeHead(200, { 'Access-Control-Allow-Origin': '*' }).end();
  });
  foreign.listen(0, '127.0.0.1');
  await once(foreign, 'listening');
  const other = `http://127.0.0.1:${(foreign.address() as AddressInfo).port}`;
  writeFileSync(installation.input('elsewhere.gltf'), modelNaming(other));
  writeFileSync(installation.input('above.gltf'), modelNaming('../../../../jobs'));
  writeFileSync(installation.input('pictured.gltf'), modelWithPicture(other));
  page.on('request', (request) => /corners\.bin|picture\.png/.test(request.url()) && asked.push(request.url()));
  await showResults(page, installation);
  for (const name of ['elsewhere.gltf', 'above.gltf']) {
    await openFile(page, name);
    await expect(page.getByText(`The model ${name} cannot be shown`)).toHaveText(/needs the file .*corners\.bin, which is not below its folder/);
  }
  await openFile(page, 'pictured.gltf');
  await expect(page.getByText('Size 10 × 10 × 10')).toBeVisible();
  expect(asked).toEqual([]);
  foreign.close();
});
