import type { Page } from '@playwright/test';
import { expect, grid, open, rowOf, test, type Mock } from './kit/mock.ts';

/** Selects the first job of the list by keys. */
async function openWithOneSelected(page: Page, mock: Mock): Promise<void> {
  await open(page, mock);
  await grid(page).focus();
  await page.keyboard.press('Home');
  await page.keyboard.press(' ');
  await expect(page.getByText('1 selected')).toBeVisible();
}

test('digits filter by state, a slash searches, n opens the form, and Escape leads back', async ({ page, mock }) => {
  await open(page, mock);
  await page.keyboard.press('4');
  await expect(page.getByRole('button', { name: /^Failed/ })).toHaveAttribute('aria-pressed', 'true');
  await expect(page).toHaveURL(/status=failed/);
  await page.keyboard.press('4');
  await expect(page).not.toHaveURL(/status/);
  await page.keyboard.press('/');
  await expect(page.getByRole('searchbox')).toBeFocused();
  await page.keyboard.type('n1?');
  await expect(page.getByRole('searchbox')).toHaveValue('n1?');
  await page.getByRole('searchbox').fill('');
  await grid(page).focus();
  await page.keyboard.press('n');
  await expect(page.getByRole('heading', { name: 'New job' })).toBeVisible();
  await page.keyboard.press('Escape');
  await expect(grid(page)).toBeVisible();
});

test('keys select, cancel, run again and delete', async ({ page, mock }) => {
  await openWithOneSelected(page, mock);
  await page.keyboard.press('c');
  await expect(rowOf(page, 60)).toContainText('Dequeued');
  await page.keyboard.press('a');
  await expect(rowOf(page, 61)).toContainText('Queued');
  await page.keyboard.press('Delete');
  await expect(page.getByRole('dialog')).toContainText('Delete this job?');
  await page.keyboard.press('Escape');
  await expect(page.getByRole('dialog')).toHaveCount(0);
  await expect(rowOf(page, 60)).toBeVisible();
  await page.keyboard.press('Delete');
  await expect(page.getByRole('dialog')).toBeVisible();
  await page.keyboard.press('Tab');
  await page.keyboard.press('Tab');
  await page.keyboard.press('Enter');
  await expect(rowOf(page, 60)).toHaveCount(0);
});

test('a question has the keyboard before the next key is pressed', async ({ page, mock }) => {
  await openWithOneSelected(page, mock);
  const isAsked = await page.evaluate(async () => {
    document.activeElement?.dispatchEvent(new KeyboardEvent('keydown', { key: 'Delete', bubbles: true, cancelable: true }));
    // The page is rendered by a timer; no frame is drawn meanwhile.
    await new Promise((resolve) => setTimeout(resolve));
    return document.activeElement?.closest('dialog') !== null;
  });
  expect(isAsked).toBe(true);
});

test('Ctrl with A selects what is listed, and Escape nothing', async ({ page, mock }) => {
  await open(page, mock, '?status=failed');
  await grid(page).focus();
  await page.keyboard.press('Control+a');
  const listed = (await page.getByRole('row').count()) - 1;
  await expect(page.getByText(`${listed} selected`)).toBeVisible();
  await page.keyboard.press('Escape');
  await expect(page.getByText(/selected/)).toHaveCount(0);
});

test('a job is opened, read and closed with the keyboard, which is back in the list afterwards', async ({ page, mock }) => {
  await open(page, mock);
  await grid(page).focus();
  for (let count = 0; count < 8; count++) await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Enter');
  await page.getByRole('tab', { name: 'Overview' }).focus();
  for (const tab of ['Log', 'Files', 'Origin', 'Overview', 'Log']) {
    await page.keyboard.press('ArrowRight');
    await expect(page.getByRole('tab', { name: tab })).toBeFocused();
    await expect(page.getByRole('tab', { name: tab })).toHaveAttribute('aria-selected', 'true');
  }
  await expect(page.getByRole('tab', { name: 'Log' })).toHaveCount(1);
  await page.keyboard.press('Escape');
  await expect(page.getByRole('tab')).toHaveCount(0);
  await expect(grid(page)).toBeFocused();
});

test('columns are sorted with the keyboard, both ways, and say so', async ({ page, mock }) => {
  await open(page, mock);
  const head = page.getByRole('columnheader', { name: 'Scenario' });
  await expect(head).toHaveAttribute('aria-sort', 'none');
  await head.getByRole('button').focus();
  await page.keyboard.press('Enter');
  await expect(head).toHaveAttribute('aria-sort', 'ascending');
  await expect(page.getByRole('row').nth(1)).toContainText('compare_meshes');
  await page.keyboard.press(' ');
  await expect(head).toHaveAttribute('aria-sort', 'descending');
  await expect(page.getByRole('row').nth(1)).toContainText('part_report');
});

test('the first key leads past the head of the page', async ({ page, mock }) => {
  await open(page, mock);
  await page.keyboard.press('Tab');
  await expect(page.getByRole('link', { name: 'Skip to content' })).toBeFocused();
  await page.keyboard.press('Enter');
  await expect(page.getByRole('main')).toBeFocused();
});

test('the list of keys names every key that does something', async ({ page, mock }) => {
  await open(page, mock);
  await page.keyboard.press('?');
  const dialog = page.getByRole('dialog', { name: 'Keys' });
  for (const text of ['search', 'new job', 'filter by state', 'move in the list', 'extend the selection', 'select or deselect', 'open the job', 'cancel', 'hold or release', 'change the priority', 'run again', 'delete'])
    await expect(dialog.getByText(text, { exact: true })).toBeVisible();
});
