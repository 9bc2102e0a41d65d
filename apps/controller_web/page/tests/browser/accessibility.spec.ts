import AxeBuilder from '@axe-core/playwright';
import type { Page } from '@playwright/test';
import { expect, open, rowOf, test } from './kit/mock.ts';

async function expectAccessible(page: Page): Promise<void> {
  const { violations } = await new AxeBuilder({ page }).withTags(['wcag2a', 'wcag2aa', 'wcag21a', 'wcag21aa', 'wcag22aa', 'best-practice']).analyze();
  expect(violations.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html).slice(0, 3).join(' ')}`)).toEqual([]);
}

const tabs = ['Overview', 'Log', 'Files', 'Origin'];

for (const colorScheme of ['light', 'dark'] as const) {
  test.describe(`in ${colorScheme} colours axe finds nothing`, () => {
    test.use({ colorScheme });

    test('in the list with a selection', async ({ page, mock }) => {
      await open(page, mock);
      await rowOf(page, 50).locator('[data-select]').click();
      await expectAccessible(page);
    });

    for (const tab of tabs)
      test(`in the ${tab.toLowerCase()} of a job`, async ({ page, mock }) => {
        await open(page, mock, '?status=failed');
        await page.getByRole('row').nth(1).click();
        await page.getByRole('tab', { name: tab }).click();
        await expectAccessible(page);
      });

    test('in the form', async ({ page, mock }) => {
      await open(page, mock);
      await page.getByRole('link', { name: 'New job' }).click();
      await expect(page.getByLabel('size')).toBeVisible();
      await expectAccessible(page);
    });

    test('in a model with its tools', async ({ page, mock }) => {
      await open(page, mock, '?status=succeeded');
      await page.getByRole('row').nth(1).click();
      await page.getByRole('tab', { name: 'Files' }).click();
      await page.getByRole('button', { name: /^bracket\.stl/ }).click();
      await page.getByLabel('Section', { exact: true }).selectOption('z');
      await expectAccessible(page);
    });

    test('in the form with what is wrong, a question and messages', async ({ page, mock }) => {
      await open(page, mock);
      await rowOf(page, 60).click();
      await page.getByRole('button', { name: 'Hold', exact: true }).click();
      await page.getByRole('button', { name: 'Priority…' }).click();
      await expectAccessible(page);
      await page.keyboard.press('Escape');
      await page.getByRole('link', { name: 'New job' }).click();
      await page.getByLabel('size').fill('large');
      await expectAccessible(page);
    });

    test('on a telephone, in German', async ({ page, mock }) => {
      await page.addInitScript(() => localStorage.setItem('language', 'de'));
      await page.setViewportSize({ width: 360, height: 720 });
      await page.goto(mock.address);
      await expect(page.getByRole('row').nth(1)).toBeVisible();
      await expectAccessible(page);
      await page.getByRole('row').nth(9).click();
      await expect(page.getByRole('tab', { name: 'Überblick' })).toBeVisible();
      await expectAccessible(page);
    });

    test('without jobs', async ({ page, mock }) => {
      await open(page, mock);
      await page.getByRole('searchbox').fill('no such job');
      await expect(page.getByRole('heading', { name: 'No job matches' })).toBeVisible();
      await expectAccessible(page);
    });

    test('in the charts', async ({ page, mock }) => {
      await open(page, mock);
      await page.getByRole('link', { name: 'Statistics' }).click();
      await expect(page.locator('.chart canvas')).toHaveCount(2);
      await expectAccessible(page);
    });

    test('in a dialog, the menu and a banner', async ({ page, mock }) => {
      await open(page, mock);
      await mock.make('host', 'no');
      await page.locator('summary').click();
      await expectAccessible(page);
      await page.keyboard.press('Escape');
      await page.keyboard.press('?');
      await expectAccessible(page);
    });
  });
}
