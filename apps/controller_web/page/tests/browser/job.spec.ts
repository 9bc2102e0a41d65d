import { expect, open, rowOf, test } from './kit/mock.ts';

test('shows the reason of a failure', async ({ page, mock }) => {
  await open(page, mock, '?status=failed');
  await page.getByRole('row').nth(1).click();
  await expect(page.getByLabel('Messages')).toContainText('it looks like an OBJ file');
});

test('the log is searched, and the address names the view', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 50).click();
  await page.getByRole('tab', { name: 'Log' }).click();
  await expect(page).toHaveURL(/\/log$/);
  await expect(page.getByRole('region', { name: 'Log' })).toContainText('z = 750.00 mm');
  await page.getByPlaceholder('Search the log').fill('warning');
  await expect(page.getByText('1 / 60')).toBeVisible();
  await page.getByPlaceholder('Search the log').press('Enter');
  await expect(page.getByText('2 / 60')).toBeVisible();
  await expect(page.locator('mark.current')).toBeVisible();
});

test('pictures are shown, models turn, texts are read', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 50).click();
  await page.getByRole('tab', { name: 'Files' }).click();
  await expect.poll(() => page.getByRole('img', { name: 'views/front.svg' }).evaluate((image: HTMLImageElement) => image.naturalWidth)).toBeGreaterThan(0);
  await page.getByRole('button', { name: /^bracket\.stl/ }).click();
  await expect(page.getByText(/^Size \d/)).toBeVisible();
  for (const tool of ['Top', 'Edges', 'Measure']) await page.getByRole('button', { name: tool }).click();
  await page.getByLabel('Section', { exact: true }).selectOption('z');
  await expect(page.getByLabel('Place of the section')).toBeVisible();
  await page.getByRole('button', { name: /^report\.json/ }).click();
  await expect(page.locator('pre')).toContainText('"triangles": 352');
});

test('edges, the measured box, each view and a movement of the mouse change the picture of a model', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 50).click();
  await page.getByRole('tab', { name: 'Files' }).click();
  await page.getByRole('button', { name: /^bracket\.stl/ }).click();
  await expect(page.getByText(/^Size \d/)).toBeVisible();
  const canvas = page.locator('canvas');
  const picture = () => canvas.evaluate((element: HTMLCanvasElement) => element.toDataURL());
  const changes = async (act: () => Promise<unknown>): Promise<void> => {
    const before = await picture();
    await act();
    await expect.poll(picture).not.toBe(before);
  };
  for (const tool of ['Edges', 'Measure', 'Top', 'Front', 'Right', '3D']) await changes(() => page.getByRole('button', { name: tool, exact: true }).click());
  const { x, y, width, height } = (await canvas.boundingBox())!;
  await changes(async () => {
    await page.mouse.move(x + width / 2, y + height / 2);
    await page.mouse.down();
    await page.mouse.move(x + width / 4, y + height / 2);
    await page.mouse.up();
  });
  await changes(() => page.mouse.wheel(0, 300));
});

test('a section and a turn change the picture of a model', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 50).click();
  await page.getByRole('tab', { name: 'Files' }).click();
  await page.getByRole('button', { name: /^bracket\.stl/ }).click();
  await expect(page.getByText(/^Size \d/)).toBeVisible();
  const picture = () => page.locator('canvas').evaluate((canvas: HTMLCanvasElement) => canvas.toDataURL());
  const whole = await picture();
  await page.getByLabel('Section', { exact: true }).selectOption('x');
  await expect.poll(picture).not.toBe(whole);
  const cut = await picture();
  await page.getByRole('application').press('ArrowLeft');
  await expect.poll(picture).not.toBe(cut);
});

test('says from what the results were made', async ({ page, mock }) => {
  await open(page, mock);
  await rowOf(page, 50).click();
  await page.getByRole('tab', { name: 'Origin' }).click();
  await expect(page.getByRole('table', { name: 'Input files' })).toContainText('ab54a98ceb1f');
});

test('the progress of a running job is drawn over time', async ({ page, mock }) => {
  await open(page, mock, '?status=running');
  await page.getByRole('row').nth(1).click();
  const chart = page.getByRole('img', { name: /^Progress over time: \d+ % after/ });
  await expect
    .poll(async () => {
      await mock.make('step', 30);
      return chart.count();
    })
    .toBe(1);
});

test('says that a job is gone', async ({ page, mock }) => {
  await open(page, mock, '#/jobs/nothing');
  await expect(page.getByText('There is no such job')).toBeVisible();
});

test('names and logs of jobs are never markup', async ({ page, mock }) => {
  const hostile = '<img src=x onerror="document.title=1"><script>document.title=1</script>';
  await mock.make('add', { scenario: hostile, inputFiles: [`/parts/${hostile}\u202elts.exe`, '/b\u0000'], message: hostile, status: 'Running', startTime: '2026-03-05T07:00:00Z' });
  await open(page, mock);
  await expect(rowOf(page, 61)).toContainText('<img src=x');
  await expect(rowOf(page, 61)).toContainText('\\u202elts.exe');
  await rowOf(page, 61).click();
  await expect(page.getByLabel('Input files').or(page.locator('.facts'))).toContainText('<script>');
  await page.getByRole('tab', { name: 'Log' }).click();
  await expect(page.getByRole('region', { name: 'Log' })).toContainText('<script>document.title');
  expect(await page.locator('img, #page script').count()).toBe(0);
});

test('charts are drawn', async ({ page, mock }) => {
  await open(page, mock);
  await page.getByRole('link', { name: 'Statistics' }).click();
  await expect(page.locator('.chart canvas')).toHaveCount(2);
  await page.getByRole('button', { name: 'Hour' }).click();
  await expect(page.getByRole('button', { name: 'Hour' })).toHaveAttribute('aria-pressed', 'true');
});
