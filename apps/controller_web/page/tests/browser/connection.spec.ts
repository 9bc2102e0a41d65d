import { expect, open, rowOf, test } from './kit/mock.ts';

test('a broken connection comes back with what has happened meanwhile', async ({ page, mock }) => {
  await open(page, mock);
  await mock.make('add', { scenario: 'made_meanwhile' });
  await mock.make('drop');
  await expect(rowOf(page, 61)).toContainText('made_meanwhile');
  await expect(page.getByText('Live', { exact: true })).toBeVisible();
});

test('says that no host runs, until one does', async ({ page, mock }) => {
  await open(page, mock);
  await mock.make('host', 'no');
  await expect(page.getByText('No host is running, so no job starts')).toBeVisible();
  await mock.make('host', 'yes');
  await expect(page.getByText('No host is running, so no job starts')).toHaveCount(0);
});

test('says what to do when the session has ended', async ({ page, mock }) => {
  await open(page, mock);
  await mock.make('refuse', 'yes');
  await mock.make('drop');
  await expect(page.getByText('Open the link that this command prints: cadjobs web')).toBeVisible();
  await mock.make('refuse', 'no');
  await page.getByRole('button', { name: 'Try again' }).click();
  await expect(page.getByText('Live', { exact: true })).toBeVisible();
});

test('says that the server is gone, and goes on when it is back', async ({ page, context, mock }) => {
  await open(page, mock);
  await context.setOffline(true);
  await mock.make('drop');
  await expect(page.getByText(/The connection to the server is lost/)).toBeVisible();
  await context.setOffline(false);
  await page.getByRole('button', { name: 'Try again' }).click();
  await expect(page.getByText('Live', { exact: true })).toBeVisible();
});

test('eight tabs share one stream of events, and each shows changes', async ({ context, mock }) => {
  const tabs = [];
  for (let count = 0; count < 8; count++) {
    const tab = await context.newPage();
    await open(tab, mock);
    tabs.push(tab);
  }
  expect(await mock.make('streams')).toBe(1);
  await mock.make('add', { scenario: 'for_all' });
  for (const tab of tabs) await expect(rowOf(tab, 61)).toContainText('for_all');
});

test.describe('with 100,000 jobs', () => {
  test.use({ jobs: 100_000 });
  test('scrolls, filters and selects, with few rows in the document', async ({ page, mock }) => {
    await open(page, mock);
    await expect(page.getByText('100,000 jobs')).toBeVisible();
    expect(await page.getByRole('row').count()).toBeLessThan(60);
    await page.getByRole('grid').focus();
    await page.keyboard.press('End');
    await expect(rowOf(page, 1)).toBeInViewport();
    await page.getByRole('searchbox').fill('bracket_4242');
    await expect(page.getByText(/of 100,000 jobs/)).toBeVisible();
    await page.getByRole('searchbox').fill('');
    await page.getByRole('button', { name: 'Select all' }).click();
    await expect(page.getByText('100,000 selected')).toBeVisible();
  });
});
