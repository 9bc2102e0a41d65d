import type { Page } from '@playwright/test';
import { expect, open, rowOf, test } from './kit/mock.ts';
import { Notifications } from './kit/notifications.ts';

const choice = (page: Page) => page.getByLabel('Notify me when jobs end');

/** Opens the menu and changes the choice. */
async function choose(page: Page, isWanted: boolean): Promise<void> {
  await page.locator('summary').click();
  await choice(page).setChecked(isWanted);
  await page.keyboard.press('Escape');
}

test('notifications are off, and the page does not ask, until the user wants them', async ({ page, mock }) => {
  const notifications = await Notifications.of(page, 'granted');
  await open(page, mock);
  await page.locator('summary').click();
  await expect(choice(page)).not.toBeChecked();
  await notifications.hide(true);
  await mock.make('end', 58);
  await expect(rowOf(page, 58)).toContainText('Succeeded');
  expect(await notifications.recorded()).toMatchObject({ asked: 0, shown: [] });
});

test('after permission a job that ends is notified by number, state and file, in a hidden tab only', async ({ page, mock }) => {
  const notifications = await Notifications.of(page, 'granted');
  await open(page, mock, '?status=running');
  const [first, second] = await page.locator('[role=gridcell].cell-number').allTextContents();
  await page.goto(mock.address);
  await choose(page, true);
  await mock.make('end', Number(first));
  await expect(rowOf(page, Number(first))).toContainText('Succeeded');
  expect(await notifications.titles()).toEqual([]);
  await notifications.hide(true);
  await mock.make('end', Number(second));
  await expect.poll(() => notifications.titles()).toHaveLength(1);
  expect((await notifications.titles())[0]).toMatch(new RegExp(`^Job ${second}: Succeeded \\(\\w+_${second}\\.stl\\)$`));
});

test('the choice is remembered, and can be taken back', async ({ page, mock }) => {
  const notifications = await Notifications.of(page, 'granted');
  await open(page, mock);
  await choose(page, true);
  await page.reload();
  await page.locator('summary').click();
  await expect(choice(page)).toBeChecked();
  expect((await notifications.recorded()).asked).toBe(0);
  await choice(page).uncheck();
  await page.reload();
  await page.locator('summary').click();
  await expect(choice(page)).not.toBeChecked();
});

test('says what to do where the browser does not allow notifications, and stays off', async ({ page, mock }) => {
  await Notifications.of(page, 'denied');
  await open(page, mock);
  await page.locator('summary').click();
  await choice(page).click();
  await expect(page.getByText('The browser does not allow notifications. Allow them in its settings')).toBeVisible();
  await expect(choice(page)).not.toBeChecked();
});

test('jobs that end together are one notification; cancelled ones are none', async ({ page, mock }) => {
  const notifications = await Notifications.of(page, 'granted');
  await open(page, mock);
  await choose(page, true);
  await notifications.hide(true);
  await mock.make('cancel', [60]);
  await mock.make('end', [56, 57, 58]);
  await expect.poll(() => notifications.titles()).toEqual(['3 jobs have ended']);
});
