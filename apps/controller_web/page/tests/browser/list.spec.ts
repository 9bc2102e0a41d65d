import { expect, grid, open, rowOf, test } from './kit/mock.ts';

test('shows the newest jobs with their states and counts', async ({ page, mock }) => {
  await open(page, mock);
  await expect(page.getByRole('row').nth(1)).toContainText('60');
  await expect(page.getByRole('button', { name: /^Queued/ })).toHaveText(/Queued3|Queued 3/);
  await expect(grid(page)).toHaveAttribute('aria-rowcount', '61');
});

test('a change reaches the row', async ({ page, mock }) => {
  await open(page, mock);
  await mock.make('step', 5);
  await expect(page.getByText('Layer').first()).toBeVisible();
});

test('chips, text and sort are in the address and come back from it', async ({ page, mock }) => {
  await open(page, mock);
  await page.getByRole('button', { name: /^Failed/ }).click();
  await page.getByRole('searchbox').fill('part_report');
  await page.getByRole('button', { name: 'Time', exact: true }).click();
  await expect(page).toHaveURL(/status=failed.*text=part_report.*sort=duration/);
  const rows = await page.getByRole('row').allTextContents();
  await page.reload();
  await expect(page.getByRole('row').nth(1)).toBeVisible();
  expect(await page.getByRole('row').allTextContents()).toEqual(rows);
});

test('says what to do when nothing matches', async ({ page, mock }) => {
  await open(page, mock);
  await page.getByRole('searchbox').fill('no such thing');
  await expect(page.getByRole('heading', { name: 'No job matches' })).toBeVisible();
  await page.getByRole('button', { name: 'Show all jobs' }).click();
  await expect(page.getByRole('row').nth(1)).toBeVisible();
});

test('keys move, extend and open', async ({ page, mock }) => {
  await open(page, mock);
  await grid(page).focus();
  for (const key of ['ArrowDown', 'ArrowDown', 'Shift+ArrowDown', 'Shift+ArrowDown']) await page.keyboard.press(key);
  await expect(page.getByText('3 selected')).toBeVisible();
  await page.keyboard.press('End');
  await expect(rowOf(page, 1)).toBeInViewport();
  await page.keyboard.press('Enter');
  await expect(page.getByRole('heading', { name: /^1 · / })).toBeVisible();
});

test('Shift with a click selects a range', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 58).locator('[data-select]').click();
  await rowOf(page, 50).click({ modifiers: ['Shift'] });
  await expect(page.getByText('9 selected')).toBeVisible();
});

test('Ctrl with a click adds and removes, and the head selects all or none', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 58).click({ modifiers: ['Control'] });
  await rowOf(page, 55).click({ modifiers: ['Control'] });
  await expect(page.getByText('2 selected')).toBeVisible();
  await rowOf(page, 58).click({ modifiers: ['Control'] });
  await expect(page.getByText('1 selected')).toBeVisible();
  await page.getByRole('toolbar').getByRole('button', { name: 'Select none' }).click();
  await page.getByRole('button', { name: 'Select all' }).click();
  await expect(page.getByText('60 selected')).toBeVisible();
  await page.getByRole('columnheader').getByRole('button', { name: 'Select none' }).click();
  await expect(page.getByText(/selected/)).toHaveCount(0);
});

test('the reason of a failure stands in the row, and is searched', async ({ page, mock }) => {
  await mock.make('add', { status: 'Failed', message: 'the part is not closed', startTime: '2026-03-05T07:00:00Z', endTime: '2026-03-05T07:00:09Z' });
  await open(page, mock);
  await page.getByRole('searchbox').fill('not closed');
  await expect(page.getByText('1 of 61 jobs')).toBeVisible();
  const reason = rowOf(page, 61).getByText('the part is not closed');
  await expect(reason).toBeVisible();
  await rowOf(page, 61).click();
  await expect(page.getByRole('tab', { name: 'Overview' })).toBeVisible();
  await expect(reason).toBeVisible();
});

test('back and forward lead through the views', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 50).click();
  await page.getByRole('tab', { name: 'Files' }).click();
  await page.getByRole('link', { name: 'Statistics' }).click();
  await page.goBack();
  await expect(page.getByRole('tab', { name: 'Files' })).toHaveAttribute('aria-selected', 'true');
  await page.goBack();
  await expect(page.getByRole('tab', { name: 'Overview' })).toHaveAttribute('aria-selected', 'true');
  await page.goBack();
  await expect(page.getByRole('tab')).toHaveCount(0);
  await page.goForward();
  await expect(page.getByRole('heading', { name: /^50 · / })).toBeVisible();
});

test('colours are as the system has them, until the user chooses, and then remembered', async ({ page, mock }) => {
  await page.emulateMedia({ colorScheme: 'dark' });
  await open(page, mock);
  const html = page.locator('html');
  await expect(html).toHaveAttribute('data-theme', 'dark');
  await page.locator('summary').click();
  await page.getByLabel('Colours').selectOption('light');
  await expect(html).toHaveAttribute('data-theme', 'light');
  await page.reload();
  await expect(html).toHaveAttribute('data-theme', 'light');
});

test('single keys are shortcuts until they are switched off', async ({ page, mock }) => {
  await open(page, mock);
  await page.keyboard.press('?');
  await expect(page.getByRole('dialog')).toContainText('extend the selection');
  await page.keyboard.press('Escape');
  await page.locator('summary').click();
  await page.getByLabel('Single keys are shortcuts').uncheck();
  await page.locator('h1').click();
  await page.keyboard.press('?');
  await expect(page.getByRole('dialog')).toHaveCount(0);
});

test('speaks German', async ({ page, mock }) => {
  await open(page, mock);
  await page.locator('summary').click();
  await page.getByLabel('Language').selectOption('de');
  await expect(page.getByRole('link', { name: 'Warteschlange' })).toBeVisible();
  await expect(page.locator('html')).toHaveAttribute('lang', 'de');
  await page.reload();
  await expect(page.getByRole('link', { name: 'Warteschlange' })).toBeVisible();
});

test.describe('in a German browser', () => {
  test.use({ locale: 'de-AT' });
  test('speaks German without being asked', async ({ page, mock }) => {
    await open(page, mock);
    await expect(page.getByRole('link', { name: 'Warteschlange' })).toBeVisible();
    await expect(page.locator('html')).toHaveAttribute('lang', 'de');
  });
});

test('is sorted on a telephone, where there are no heads of columns', async ({ page, mock }) => {
  await page.setViewportSize({ width: 360, height: 720 });
  await open(page, mock);
  await page.getByLabel('Sort by').selectOption('scenario');
  await expect(page).toHaveURL(/sort=scenario/);
  await expect(page.getByRole('row').nth(1)).toContainText('part_report');
});

test('is usable on a telephone', async ({ page, mock }) => {
  await page.setViewportSize({ width: 360, height: 720 });
  await open(page, mock);
  expect(await page.evaluate(() => document.documentElement.scrollWidth)).toBeLessThanOrEqual(360);
  await rowOf(page, 60).click();
  await expect(page.getByRole('tab', { name: 'Overview' })).toBeVisible();
  await expect(grid(page)).toBeHidden();
  await page.getByRole('button', { name: 'Close this job' }).click();
  await expect(grid(page)).toBeVisible();
});

test('says on a telephone why a job failed', async ({ page, mock }) => {
  await page.setViewportSize({ width: 360, height: 720 });
  await open(page, mock);
  await page.getByRole('button', { name: /^Failed/ }).click();
  const row = page.getByRole('row').nth(1);
  await expect(row.locator('.message')).toBeVisible();
  await expect(row.locator('.message')).toHaveText(/is not an STL file/);
  await expect(row.locator('.cell-input')).toBeVisible();
  expect(await page.evaluate(() => document.documentElement.scrollWidth)).toBeLessThanOrEqual(360);
});

test('a job that waits has no start', async ({ page, mock }) => {
  await open(page, mock);
  await page.getByRole('button', { name: /^Queued/ }).click();
  await expect(page.getByRole('row').nth(1).locator('.cell-started')).toHaveText('');
  await page.getByRole('button', { name: /^Queued/ }).click();
  await page.getByRole('button', { name: /^Failed/ }).click();
  await expect(page.getByRole('row').nth(1).locator('.cell-started')).not.toHaveText('');
});

test.describe('without jobs', () => {
  test.use({ jobs: 0 });
  test('says how to begin', async ({ page, mock }) => {
    await page.goto(mock.address);
    await expect(page.getByRole('heading', { name: 'No jobs yet' })).toBeVisible();
  });
});
