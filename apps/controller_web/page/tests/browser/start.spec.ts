import { expect, open, test } from './kit/mock.ts';

test('starts jobs for browsed and dropped files with the chosen parameters', async ({ page, mock }) => {
  await open(page, mock);
  await page.getByRole('link', { name: 'New job' }).click();
  await expect(page.getByRole('button', { name: 'Start' })).toBeDisabled();
  await page.getByLabel('size').fill('1200');
  await page.getByLabel('title').fill('Left bracket');
  await page.getByRole('button', { name: /^parts/ }).click();
  await page.getByRole('button', { name: /^bracket\.stl/ }).click();
  await page.locator('input[type=file]').setInputFiles({ name: 'own.stl', mimeType: 'model/stl', buffer: Buffer.from('solid') });
  await expect(page.getByRole('list', { name: 'Chosen files' })).toContainText('own.stl');
  await page.getByLabel('Output folder').fill('/home/ann/results');
  await page.getByRole('button', { name: 'Start 2 jobs' }).click();
  await expect(page.getByText('2 jobs are queued.')).toBeVisible();
  expect(await mock.make('lastCreated')).toEqual([
    {
      scenario: { id: '100' },
      inputFileSets: [['/home/ann/parts/bracket.stl'], ['/uploads/own.stl']],
      outputDir: '/home/ann/results',
      runArgument: 'standard size=1200 title="Left bracket"',
      useTimeStampFolder: false,
    },
  ]);
});

test('refuses values of the wrong type, and files of the wrong kind', async ({ page, mock }) => {
  await open(page, mock, '#/');
  await page.getByRole('link', { name: 'New job' }).click();
  await page.getByLabel('size').fill('large');
  await expect(page.getByText('A whole number is needed here.')).toBeVisible();
  await page.locator('input[type=file]').setInputFiles({ name: 'own.step', mimeType: 'model/step', buffer: Buffer.from('x') });
  await expect(page.getByText('Only files of these kinds are accepted: .stl')).toBeVisible();
});

test('gives each job as many files as the scenario takes', async ({ page, mock }) => {
  await open(page, mock);
  await page.getByRole('link', { name: 'New job' }).click();
  await page.locator('.start select').first().selectOption({ label: 'compare_meshes' });
  await page.getByLabel('Output folder').fill('/r');
  const file = (name: string) => ({ name, mimeType: 'model/stl', buffer: Buffer.from('solid') });
  await page.locator('input[type=file]').setInputFiles([file('a.stl')]);
  await expect(page.getByText('Each job needs 2 files')).toBeVisible();
  await page.locator('input[type=file]').setInputFiles([file('b.stl')]);
  await page.getByRole('button', { name: 'Start 1 job' }).click();
  await expect(page.getByText('The job is queued.')).toBeVisible();
  expect(await mock.make('lastCreated')).toMatchObject([{ inputFileSets: [['/uploads/a.stl', '/uploads/b.stl']] }]);
});

test('files that are dropped on the form are taken, and directories are left again', async ({ page, mock }) => {
  await open(page, mock);
  await page.getByRole('link', { name: 'New job' }).click();
  const files = await page.evaluateHandle(() => {
    const transfer = new DataTransfer();
    transfer.items.add(new File(['solid'], 'dropped.stl'));
    return transfer;
  });
  const area = page.getByText('Drop files here, or');
  await area.dispatchEvent('dragover', { dataTransfer: files });
  await area.dispatchEvent('drop', { dataTransfer: files });
  const chosen = page.getByRole('list', { name: 'Chosen files' });
  await expect(chosen).toContainText('dropped.stl');
  await page.getByRole('button', { name: /^parts/ }).click();
  await expect(page.getByRole('button', { name: /^flange\.step/ })).toBeDisabled();
  await page.getByRole('button', { name: 'Directory above' }).click();
  await expect(page.getByRole('button', { name: /^parts/ })).toBeVisible();
  await page.getByRole('button', { name: 'Remove dropped.stl' }).click();
  await expect(chosen).toHaveCount(0);
});
