import { expect, grid, open, rowOf, test } from './kit/mock.ts';

test('cancels a waiting job and says so', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 60).click();
  await page.getByRole('button', { name: 'Cancel', exact: true }).click();
  await expect(page.getByText('The job is being cancelled.')).toBeVisible();
  await expect(rowOf(page, 60)).toContainText('Dequeued');
});

test('holds and releases with the keyboard', async ({ page, mock }) => {
  await open(page, mock);
  await grid(page).focus();
  await page.keyboard.press('Home');
  await page.keyboard.press('h');
  await expect(rowOf(page, 60)).toContainText('On hold');
  await page.keyboard.press('h');
  await expect(rowOf(page, 60)).toContainText('Queued');
});

test('changes the priority', async ({ page, mock }) => {
  await open(page, mock);
  await grid(page).focus();
  await page.keyboard.press('Home');
  await page.keyboard.press('p');
  await page.getByRole('dialog').getByRole('spinbutton').fill('7');
  await page.getByRole('button', { name: 'Change' }).click();
  await expect(rowOf(page, 60).locator('.cell-priority')).toHaveText('7');
});

test('runs an ended job again', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 50).click();
  await page.getByRole('button', { name: 'Run again' }).click();
  await expect(rowOf(page, 61)).toContainText('Queued');
});

test('deletes only after a question, and gives the focus back', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 50).locator('[data-select]').click();
  const button = page.getByRole('toolbar').getByRole('button', { name: 'Delete' });
  await button.click();
  await page.getByRole('dialog').getByRole('button', { name: 'Back' }).click();
  await expect(rowOf(page, 50)).toBeVisible();
  await expect(button).toBeFocused();
  await button.click();
  await page.getByRole('dialog').getByRole('button', { name: 'Delete' }).click();
  await expect(rowOf(page, 50)).toHaveCount(0);
});

test('asks before it concerns many jobs, and acts on those for which it means something', async ({ page, mock }) => {
  await open(page, mock);
  await grid(page).focus();
  await page.keyboard.press('Control+a');
  await page.getByRole('toolbar').getByRole('button', { name: /^Run again/ }).click();
  await expect(page.getByRole('dialog')).toContainText('Run 54 jobs again?');
});

test('pauses and resumes the queue', async ({ page, mock }) => {
  await open(page, mock);
  await page.getByRole('button', { name: 'Pause queue' }).click();
  await expect(page.getByRole('button', { name: 'Resume queue' })).toBeVisible();
});

test('shows why an action was refused', async ({ page, mock }) => {
  await open(page, mock);
  await page.route('**/api/v1/jobs/cancel', (route) => route.fulfill({ json: { version: 1, jobs: [{ number: 60, id: 'x', status: 'Success', done: false, message: 'Job 60 has ended.' }] } }));
  await rowOf(page, 60).click();
  await page.getByRole('button', { name: 'Cancel', exact: true }).click();
  await expect(page.getByText('Job 60 has ended.')).toBeVisible();
});

test('offers no changes where the server allows none', async ({ page, mock }) => {
  await mock.make('readOnly', 'yes');
  await open(page, mock);
  await rowOf(page, 60).click();
  await expect(page.getByText('Read-only')).toBeVisible();
  await expect(page.getByRole('button', { name: 'Cancel', exact: true })).toHaveCount(0);
  await expect(page.getByRole('link', { name: 'New job' })).toHaveCount(0);
});
