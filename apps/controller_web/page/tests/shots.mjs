/** Pictures of five views in both colour schemes, of the built page with made-up jobs.
 * Usage: node tests/shots.mjs DIRECTORY */
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';
import { chromium } from '@playwright/test';
import { args, executablePath } from './chromium.mjs';

const directory = process.argv[2];
const server = spawn(process.execPath, [fileURLToPath(new URL('mock/server.mjs', import.meta.url)), '0', '240', '0'], { stdio: ['ignore', 'pipe', 'inherit'] });
const [address] = await once(createInterface(server.stdout), 'line');

async function openFiles(page) {
  await page.getByRole('row').nth(8).click();
  await page.getByRole('tab', { name: 'Files' }).click();
}

for (let step = 0; step < 12; step++) await fetch(`${address}mock/step?value=1`);

const views = {
  list: async (page) => page.getByRole('row').nth(12).locator('[data-select]').click(),
  job: async (page) => page.getByRole('row').filter({ hasText: 'Failed' }).first().click(),
  log: async (page) => {
    await page.getByRole('row').nth(8).click();
    await page.getByRole('tab', { name: 'Log' }).click();
    await page.getByPlaceholder('Search the log').fill('warning');
    await page.getByPlaceholder('Search the log').press('Enter');
  },
  model: async (page) => {
    await openFiles(page);
    await page.getByRole('button', { name: /^bracket\.stl/ }).click();
    await page.getByText(/^Size \d/).waitFor();
    await page.getByRole('button', { name: 'Edges' }).click();
  },
  form: async (page) => page.getByRole('link', { name: 'New job' }).click(),
};

const browser = await chromium.launch({ executablePath, args });
try {
  for (const colorScheme of ['light', 'dark']) {
    for (const [name, show] of Object.entries(views)) {
      const page = await browser.newPage({ viewport: { width: 1080, height: 600 }, colorScheme, locale: 'en-GB', timezoneId: 'UTC' });
      await page.goto(address);
      await page.getByRole('row').nth(1).waitFor();
      await show(page);
      await page.waitForLoadState('networkidle', { timeout: 1000 }).catch(() => undefined); // The event stream never ends.
      await page.screenshot({ path: `${directory}/web-${name}-${colorScheme}.png`, animations: 'disabled' });
      await page.close();
    }
  }
} finally {
  await browser.close();
  server.kill();
}
