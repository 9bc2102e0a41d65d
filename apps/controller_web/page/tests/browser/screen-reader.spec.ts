import { expect, grid, open, rowOf, test } from './kit/mock.ts';

test('the page has one heading, landmarks with names, and a grid that counts all jobs', async ({ page, mock }) => {
  await open(page, mock);
  await expect(page.getByRole('heading', { level: 1, name: 'Jobs' })).toHaveCount(1);
  await expect(page.getByRole('navigation', { name: 'Views' })).toBeVisible();
  await expect(page.getByRole('search', { name: 'Filter' })).toBeVisible();
  await expect(page.getByRole('main')).toBeVisible();
  await expect(grid(page)).toHaveAttribute('aria-rowcount', '61');
  await expect(grid(page)).toHaveAttribute('aria-multiselectable', 'true');
});

test('a row says number, state, scenario and file, and where it is in the list', async ({ page, mock }) => {
  await open(page, mock, '?status=failed');
  const row = page.getByRole('row').nth(1);
  await expect(row).toHaveAttribute('aria-rowindex', '2');
  await expect(row.getByRole('gridcell', { name: 'Failed' })).toBeVisible();
  await expect(row).toMatchAriaSnapshot(`
    - row:
      - gridcell
      - gridcell /\\d+/
      - gridcell "Failed"
      - gridcell /\\w+/
      - gridcell /\\w+\\.stl/
  `);
});

test('the active row and the selection are named while the keyboard moves', async ({ page, mock }) => {
  await open(page, mock);
  await grid(page).focus();
  await page.keyboard.press('Home');
  await page.keyboard.press('Shift+ArrowDown');
  const active = await grid(page).getAttribute('aria-activedescendant');
  await expect(page.locator(`[id="${active}"]`)).toContainText('59');
  await expect(page.locator(`[id="${active}"]`)).toHaveAttribute('aria-selected', 'true');
  await expect(page.getByRole('toolbar', { name: 'Actions for the selected jobs' })).toContainText('2 selected');
});

test('what was done is read aloud, and what is wrong at once', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 60).click();
  await page.getByRole('button', { name: 'Hold', exact: true }).click();
  await expect(page.getByRole('status').filter({ hasText: 'The job is on hold.' })).toHaveAttribute('aria-live', 'polite');
  await mock.make('host', 'no');
  await expect(page.getByRole('alert')).toContainText('No host is running');
});

test('a running job says how far it is, and a model what it is', async ({ page, mock }) => {
  await open(page, mock, '?status=running');
  await page.getByRole('row').nth(1).click();
  await expect(page.getByRole('progressbar', { name: 'Progress' })).toHaveAttribute('aria-valuenow', /^\d+$/);
  await page.goto(`${mock.address}?status=succeeded`);
  await page.getByRole('row').nth(1).click();
  await page.getByRole('tab', { name: 'Files' }).click();
  await page.getByRole('button', { name: /^bracket\.stl/ }).click();
  await expect(page.getByRole('application', { name: '3D view of bracket.stl; arrow keys turn it' })).toBeVisible();
  await expect(page.getByRole('toolbar', { name: 'View' }).getByRole('button', { name: 'Edges' })).toHaveAttribute('aria-pressed', 'false');
});

test('each field of the form has a name', async ({ page, mock }) => {
  await open(page, mock);
  await page.getByRole('link', { name: 'New job' }).click();
  await expect(page.getByLabel('size')).toBeVisible();
  for (const field of await page.locator('form input, form select').all()) {
    const name = await field.evaluate((element: HTMLInputElement) => element.getAttribute('aria-label') ?? element.labels?.[0]?.textContent ?? '');
    expect(name.trim()).not.toBe('');
  }
});
