import { chromium, type Page } from '@playwright/test';
import { args, executablePath } from '../../chromium.mjs';
import { rowOf } from '../kit/mock.ts';
import { Notifications } from '../kit/notifications.ts';
import { expect, test } from '../kit/real.ts';

const live = (page: Page) => page.getByText('Live', { exact: true });

test('after the server has ended the page says what to do, and a link of the next one continues', async ({ page, installation }) => {
  installation.run('prints_markup.rb');
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  const { port } = installation;
  await installation.stopWeb();
  await expect(page.getByText(/The connection to the server is lost/)).toBeVisible();
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  installation.run('prints_markup.rb');
  await installation.startWeb([], port);
  await expect(page.getByText('Open the link that this command prints: cadjobs web')).toBeVisible();
  await page.goto(installation.link);
  await expect(live(page)).toBeVisible();
  await expect(rowOf(page, 2)).toContainText('Succeeded');
});

test('a name that a foreign site makes lead to this machine gets nothing (DNS rebinding)', async ({ page, installation }) => {
  await expect(live(page)).toBeVisible();
  const browser = await chromium.launch({ executablePath, args: [...args, '--host-resolver-rules=MAP rebound.example 127.0.0.1'] });
  try {
    const foreign = await browser.newPage();
    for (const path of ['/', '/api/v1/queue', new URL(installation.link).pathname + new URL(installation.link).search]) {
      const answer = await foreign.goto(`http://rebound.example:${installation.port}${path}`);
      expect(answer?.status(), path).toBe(421);
      expect(await foreign.context().cookies()).toEqual([]);
    }
  } finally {
    await browser.close();
  }
});

test('the licences of the libraries in the page are linked', async ({ page, installation, context }) => {
  await page.locator('summary').click();
  const [licences] = await Promise.all([context.waitForEvent('page'), page.getByRole('link', { name: 'Licences of the libraries in this page' }).click()]);
  await expect(licences.getByText(/preact \d/)).toBeVisible();
  expect(new URL(licences.url()).origin).toBe(installation.origin);
});

test('a job of the host that ends while the tab is hidden is notified', async ({ page, installation }) => {
  const notifications = await Notifications.of(page, 'granted');
  installation.run('waits.rb');
  await page.goto(installation.origin);
  await expect(rowOf(page, 1)).toContainText('Running');
  await page.locator('summary').click();
  await page.getByLabel('Notify me when jobs end').check();
  await notifications.hide(true);
  installation.letGo();
  await expect.poll(() => notifications.titles()).toEqual(['Job 1: Succeeded (part.stl)']);
});
