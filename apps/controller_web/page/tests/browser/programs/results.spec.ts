import { readFileSync, writeFileSync } from 'node:fs';
import type { Download, Page } from '@playwright/test';
import { cubeStl } from '../../models.ts';
import { grid, rowOf } from '../kit/mock.ts';
import { expect, start, test } from '../kit/real.ts';
import { markup, scenarios } from '../kit/scenarios.ts';

const downloaded = async (page: Page, click: () => Promise<void>): Promise<Download> => {
  const [download] = await Promise.all([page.waitForEvent('download'), click()]);
  return download;
};

test('the log of a running job is followed until the user scrolls, and is searched, downloaded and left at its ends', async ({ page, installation }) => {
  const print = (from: number, to: number): void => {
    const lines = Array.from({ length: to - from + 1 }, (_none, index) => `line ${from + index}${(from + index) % 100 === 0 ? ' warning' : ''}\n`);
    writeFileSync(installation.input('lines'), lines.join(''), { flag: 'a' });
  };
  const log = page.getByRole('region', { name: 'Log' });
  const line = (number: number) => log.locator('.line', { has: page.locator('.line-number', { hasText: new RegExp(`^${number}$`) }) });
  print(1, 300);
  installation.run('prints.rb');
  await expect(rowOf(page, 1)).toContainText('Running');
  await rowOf(page, 1).click();
  await page.getByRole('tab', { name: 'Log' }).click();
  await expect(line(300)).toBeInViewport();
  print(301, 600);
  await expect(line(600)).toBeInViewport();
  const follow = page.getByRole('button', { name: 'Follow' });
  await expect(follow).toHaveAttribute('aria-pressed', 'true');
  await page.getByRole('button', { name: 'Start', exact: true }).click();
  await expect(line(1)).toBeInViewport();
  await expect(follow).toHaveAttribute('aria-pressed', 'false');
  print(601, 900);
  await page.getByPlaceholder('Search the log').fill('warning');
  await expect(page.getByText('1 / 9')).toBeVisible();
  await expect(line(1)).toBeInViewport();
  await page.getByRole('button', { name: 'Previous match' }).click();
  await expect(page.getByText('9 / 9')).toBeVisible();
  await expect(line(900)).toBeInViewport();
  await page.getByRole('button', { name: 'Next match' }).click();
  await expect(line(100)).toBeInViewport();
  await page.getByRole('button', { name: 'End', exact: true }).click();
  await expect(line(900)).toBeInViewport();
  installation.letGo();
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  const download = await downloaded(page, () => page.getByRole('link', { name: 'Download' }).click());
  expect(download.suggestedFilename()).toBe('job-1.log');
  expect(readFileSync(await download.path(), 'utf8')).toContain('line 900 warning\n');
});

const svg = '<svg xmlns="http://www.w3.org/2000/svg" width="40" height="20" onload="document.title=1"><script>document.title = 1</script><rect width="40" height="20"/></svg>';

test.describe('results of every kind', () => {
  const inputs = { 'part.stl': cubeStl(), 'front.svg': svg, 'page.html': '<script>document.title = 1</script>', 'large.txt': `${'0123456789abcde\n'.repeat(20_000)}`, 'nothing.txt': '', 'data.bin': Buffer.alloc(9), 'broken.png': 'no picture' };
  test.use({ contents: { scenarios, inputs } });

  test('an SVG is a picture without scripts, texts are texts, and the rest is downloaded', async ({ page, installation }) => {
    installation.run('copies.rb');
    await expect(rowOf(page, 1)).toContainText('Succeeded');
    await rowOf(page, 1).click();
    await page.getByRole('tab', { name: 'Files' }).click();
    const show = (name: string) => page.getByRole('button', { name: new RegExp(`^${name}`) }).click();
    await show('front.svg');
    await expect.poll(() => page.getByRole('img', { name: 'front.svg' }).evaluate((image: HTMLImageElement) => image.naturalWidth)).toBe(40);
    await show('page.html');
    await expect(page.locator('pre')).toHaveText('<script>document.title = 1</script>');
    await show('large.txt');
    await expect(page.getByText(/^Only the first 262(\.\d)? kB are shown\./)).toBeVisible();
    await show('nothing.txt');
    await expect(page.getByText('The file is empty.')).toBeVisible();
    await show('data.bin');
    await expect(page.getByText('Files of this kind are not shown here.')).toBeVisible();
    await show('broken.png');
    await expect(page.getByText('The picture broken.png cannot be shown.')).toBeVisible();
    const file = await downloaded(page, () => page.getByRole('link', { name: 'Download data.bin' }).click());
    expect(readFileSync(await file.path())).toHaveLength(9);
    const archive = await downloaded(page, () => page.getByRole('link', { name: 'All as ZIP' }).click());
    expect(archive.suggestedFilename()).toBe('job-1.zip');
    expect(readFileSync(await archive.path()).subarray(0, 2).toString()).toBe('PK');
    expect(await page.title()).not.toBe('1');
  });
});

test('a job is started with the parameters of its scenario', async ({ page, installation }) => {
  await page.getByRole('link', { name: 'New job' }).first().click();
  await page.getByLabel('Scenario').selectOption({ label: 'says_parameters' });
  await page.getByLabel('size').fill('1200');
  await page.getByLabel('style').selectOption('lines');
  await page.getByRole('link', { name: 'Back' }).click();
  await start(page, installation, 'says_parameters');
  await rowOf(page, 1).click();
  await expect(page.getByLabel('Messages')).toContainText('size is 800, style is shaded');
  await page.getByRole('button', { name: 'Close this job' }).click();
  await page.getByRole('link', { name: 'New job' }).first().click();
  await page.getByLabel('Scenario').selectOption({ label: 'says_parameters' });
  await page.getByLabel('size').fill('1200');
  await page.getByLabel('style').selectOption('lines');
  await page.locator('input[type=file]').setInputFiles(installation.input());
  await page.getByLabel('Output folder').fill(installation.nameOf('output'));
  await page.getByLabel('Wait until released').check();
  await page.getByRole('button', { name: 'Start 1 job' }).click();
  await expect(rowOf(page, 2)).toContainText('On hold');
  await grid(page).focus();
  await page.keyboard.press('Home');
  await page.keyboard.press('h');
  await expect(rowOf(page, 2)).toContainText('Succeeded');
  await page.keyboard.press('Enter');
  await expect(page.getByLabel('Messages')).toContainText('size is 1200, style is lines');
});

test('a job that fails twice says why in its row, and shows its attempts with their logs', async ({ page, context, installation }) => {
  installation.run('fails.rb', { retries: 1, retryDelay: 0 });
  await expect(rowOf(page, 1)).toContainText('Failed');
  await expect(rowOf(page, 1)).toContainText(`no volume in ${markup}`);
  await rowOf(page, 1).click();
  await expect(page.getByLabel('Messages')).toContainText(`no volume in ${markup}`);
  await expect(page.locator('.fact', { hasText: 'Attempt' }).first()).toContainText('2 of 2');
  const [log] = await Promise.all([context.waitForEvent('page'), page.getByRole('link', { name: 'Log of attempt 1' }).click()]);
  await expect(log.locator('body')).toContainText('<script>document.title = 1</script>');
  expect(await log.title()).not.toBe('1');
});

test('the origin of results is shown and copied', async ({ page, context, installation }) => {
  await context.grantPermissions(['clipboard-read', 'clipboard-write'], { origin: installation.origin });
  installation.run('prints_markup.rb');
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  await rowOf(page, 1).click();
  await page.getByRole('tab', { name: 'Origin' }).click();
  const inputs = page.getByRole('table', { name: 'Input files' });
  const shown = (await inputs.locator('code').textContent())?.replace('…', '') ?? '';
  expect(shown).toMatch(/^[0-9a-f]{12}$/);
  await inputs.getByRole('button', { name: 'Copy' }).click();
  await expect(page.getByText('Copied.')).toBeVisible();
  expect(await page.evaluate(() => navigator.clipboard.readText())).toMatch(new RegExp(`^${shown}[0-9a-f]{52}$`));
});
