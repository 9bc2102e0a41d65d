import { appendFileSync } from 'node:fs';
import { test as base } from '@playwright/test';
import { Forwarder } from '../kit/forwarder.ts';
import { Installation } from '../kit/installation.ts';
import { rowOf } from '../kit/mock.ts';
import { expect, serve, usualContents } from '../kit/real.ts';

interface Fixtures {
  /** Below which path of the network the page is. */
  path: string;
  network: Forwarder;
  installation: Installation;
}

/** A test whose page reaches the server through a connection that can be cut. */
const test = base.extend<Fixtures>({
  path: ['', { option: true }],
  network: async ({}, use) => {
    const network = await Forwarder.start();
    await use(network);
    network.stop();
  },
  installation: async ({ page, network, path }, use) => {
    const settings = { web: { inputDirectories: ['inputs'], publicAddress: network.address + path } };
    const installation = new Installation({ ...usualContents, settings });
    await serve(page, installation, use, String(network.target));
  },
});

test('a connection to the server that breaks comes back by itself, with what has happened meanwhile', async ({ page, network, installation }) => {
  installation.run('waits.rb');
  await expect(rowOf(page, 1)).toContainText('Running');
  network.cut();
  await expect(page.getByText(/The connection to the server is lost. This is the state of/)).toBeVisible();
  installation.letGo();
  installation.run('prints_markup.rb');
  await expect(rowOf(page, 1)).toContainText('Running');
  network.restore();
  await expect(page.getByText('Live', { exact: true })).toBeVisible();
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  await expect(rowOf(page, 2)).toContainText('Succeeded');
});

test('an action without a connection says what to do, and can be repeated', async ({ page, network, installation }) => {
  installation.run('waits.rb');
  await expect(rowOf(page, 1)).toContainText('Running');
  await rowOf(page, 1).click();
  network.cut();
  await page.getByRole('button', { name: 'Cancel', exact: true }).click();
  await expect(page.getByText('The server cannot be reached. Is it running? Start it with: cadjobs web')).toBeVisible();
  network.restore();
  await expect(page.getByText('Live', { exact: true })).toBeVisible();
  await page.getByRole('button', { name: 'Cancel', exact: true }).click();
  await expect(rowOf(page, 1)).toContainText('Cancelled');
});

test('a log goes on where it was after the connection broke', async ({ page, network, installation }) => {
  appendFileSync(installation.input('lines'), 'before\n');
  installation.run('prints.rb');
  await expect(rowOf(page, 1)).toContainText('Running');
  await rowOf(page, 1).click();
  await page.getByRole('tab', { name: 'Log' }).click();
  const log = page.getByRole('region', { name: 'Log' });
  await expect(log).toContainText('before');
  network.cut();
  appendFileSync(installation.input('lines'), 'meanwhile\n');
  await expect(page.getByText(/The connection to the server is lost/)).toBeVisible();
  network.restore();
  await expect(log).toContainText('meanwhile');
  await expect(log.getByText('before')).toHaveCount(1);
});

test.describe('below a path of a proxy', () => {
  test.use({ path: 'alice/' });
  test('the page signs in, follows jobs, and shows models, pictures and licences', async ({ page, context, installation }) => {
    await expect(page).toHaveURL(/\/alice\/$/);
    installation.run('copies.rb');
    await expect(rowOf(page, 1)).toContainText('Succeeded');
    await rowOf(page, 1).click();
    await page.getByRole('tab', { name: 'Files' }).click();
    await page.getByRole('button', { name: /^part\.stl/ }).click();
    await expect(page.getByText('Size 10 × 10 × 10')).toBeVisible();
    await page.reload();
    await expect(page.getByRole('heading', { name: /^1 · copies/ })).toBeVisible();
    await page.locator('summary').click();
    const [licences] = await Promise.all([context.waitForEvent('page'), page.getByRole('link', { name: 'Licences' }).click()]);
    await expect(licences.getByText(/preact \d/)).toBeVisible();
  });
});
