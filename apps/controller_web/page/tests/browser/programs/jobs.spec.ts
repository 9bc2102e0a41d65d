import { createServer } from 'node:http';
import type { AddressInfo } from 'node:net';
import { once } from 'node:events';
import type { Page } from '@playwright/test';
import { rowOf } from '../kit/mock.ts';
import { expect, start, test } from '../kit/real.ts';
import { markup } from '../kit/scenarios.ts';

test('a job from the form runs, and its markup stays text in list, messages, log and files', async ({ page, installation }) => {
  await expect(page.getByRole('heading', { name: 'No jobs yet' })).toBeVisible();
  await start(page, installation, 'prints_markup');
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  await rowOf(page, 1).click();
  await expect(page.getByLabel('Messages')).toContainText(markup);
  await page.getByRole('tab', { name: 'Log' }).click();
  await expect(page.getByRole('region', { name: 'Log' })).toContainText('<script>document.title = 1</script>');
  await page.getByRole('tab', { name: 'Files' }).click();
  await page.getByRole('button', { name: `${markup}.txt` }).click();
  await expect(page.locator('pre')).toHaveText('text');
  await page.getByRole('tab', { name: 'Origin' }).click();
  await expect(page.getByRole('table', { name: 'Input files' })).toContainText('part.stl');
  expect(await page.locator('#page img, #page script').count()).toBe(0);
  expect(await page.title()).not.toBe('1');
});

test('a dropped file becomes the input of a job, and one with a name that is markup is refused', async ({ page, installation }) => {
  const drop = (name: string) => page.locator('input[type=file]').setInputFiles({ name, mimeType: 'model/stl', buffer: Buffer.from('solid') });
  await page.getByRole('link', { name: 'New job' }).first().click();
  await page.getByLabel('Scenario').selectOption({ label: 'prints_markup' });
  await drop(`${markup}.stl`);
  await expect(page.getByText(`${markup}.stl was not stored`)).toBeVisible();
  await drop("own & part's \u202elts.exe");
  await page.getByLabel('Output folder').fill(`${installation.directory}/output`);
  await page.getByRole('button', { name: 'Start 1 job' }).click();
  await expect(rowOf(page, 1)).toContainText("own & part's \\u202elts.exe");
  await expect(rowOf(page, 1)).toContainText('Succeeded');
});

test('two tabs follow a job: holding, releasing, cancelling, running again and deleting', async ({ page, context, installation }) => {
  installation.run('waits.rb');
  installation.run('waits.rb');
  const other = await context.newPage();
  await other.goto(installation.origin);
  await expect(rowOf(page, 1)).toContainText('Running');
  await rowOf(page, 2).click();
  await page.getByRole('button', { name: 'Hold', exact: true }).click();
  await expect(rowOf(other, 2)).toContainText('On hold');
  await page.getByRole('button', { name: 'Priority…' }).click();
  await page.getByRole('spinbutton').fill('7');
  await page.getByRole('button', { name: 'Change' }).click();
  await expect(rowOf(other, 2).locator('.cell-priority')).toHaveText('7');
  await page.getByRole('button', { name: 'Release' }).click();
  await expect(rowOf(other, 2)).toContainText('Queued');
  await rowOf(page, 1).click();
  await page.getByRole('button', { name: 'Cancel', exact: true }).click();
  await expect(rowOf(other, 1)).toContainText('Cancelled');
  await page.getByRole('button', { name: 'Run again' }).click();
  await expect(rowOf(other, 3)).toBeVisible();
  await page.getByRole('button', { name: 'Delete' }).click();
  await page.getByRole('dialog').getByRole('button', { name: 'Delete' }).click();
  await expect(rowOf(other, 1)).toHaveCount(0);
  installation.letGo();
  await expect(rowOf(other, 2)).toContainText('Succeeded');
});

test('the queue is paused and resumed', async ({ page, installation }) => {
  installation.run('prints_markup.rb');
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  await page.getByRole('button', { name: 'Pause queue' }).click();
  await expect(page.getByRole('button', { name: 'Resume queue' })).toBeVisible();
  installation.run('prints_markup.rb');
  await expect(rowOf(page, 2)).toContainText('Queued');
  await page.getByRole('button', { name: 'Resume queue' }).click();
  await expect(rowOf(page, 2)).toContainText('Succeeded');
});

test('the page outlives its host', async ({ page, installation }) => {
  installation.run('prints_markup.rb');
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  await installation.stopHost();
  await expect(page.getByText('No host is running, so no job starts')).toBeVisible();
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  installation.startHost();
  installation.run('prints_markup.rb');
  await expect(rowOf(page, 2)).toContainText('Succeeded');
  await expect(page.getByText('No host is running, so no job starts')).toHaveCount(0);
});

test('without the link there is nothing to see', async ({ browser, installation }) => {
  const stranger = await browser.newPage();
  const answer = await stranger.goto(`${installation.origin}/api/v1/jobs`);
  expect(answer?.status()).toBe(401);
  await stranger.goto(installation.link);
  await expect(stranger.getByRole('link', { name: 'New job' })).toHaveCount(0);
  await stranger.close();
});

/** What a page of another origin can try with the user's cookies. Returns what it could read. */
async function attack(page: Page, origin: string): Promise<string[]> {
  return page.evaluate(async (target) => {
    const body = JSON.stringify({ ids: ['1'] });
    const readable: string[] = [];
    const attempts: [string, RequestInit][] = [
      ['jobs/cancel', { method: 'POST', mode: 'no-cors', body }],
      ['jobs/cancel', { method: 'POST', mode: 'no-cors', body: new Blob([body], { type: 'text/plain' }) }],
      ['jobs/cancel', { method: 'POST', headers: { 'Content-Type': 'application/json' }, body }],
      ['queue', { method: 'PUT', headers: { 'Content-Type': 'application/json' }, body: '{"paused":true}' }],
      ['jobs/1', { method: 'DELETE' }],
      ['jobs', {}],
    ];
    for (const [path, options] of attempts) {
      const text = await fetch(`${target}/api/v1/${path}`, { credentials: 'include', ...options }).then((answer) => answer.text(), () => '');
      if (text) readable.push(`${path}: ${text}`);
    }
    return readable;
  }, origin);
}

for (const host of ['127.0.0.1', 'localhost'])
  test(`a page of another origin (${host}) can neither read nor change anything`, async ({ page, context, installation }) => {
    installation.run('waits.rb');
    await expect(rowOf(page, 1)).toContainText('Running');
    const foreign = createServer((_request, response) => response.writeHead(200, { 'Content-Type': 'text/html' }).end('<title>other</title>'));
    foreign.listen(0, '127.0.0.1');
    await once(foreign, 'listening');
    const attacker = await context.newPage();
    await attacker.goto(`http://${host}:${(foreign.address() as AddressInfo).port}/`);
    expect(await attack(attacker, installation.origin)).toEqual([]);
    foreign.close();
    installation.letGo();
    await expect(rowOf(page, 1)).toContainText('Succeeded');
    await expect(page.getByRole('button', { name: 'Pause queue' })).toBeVisible();
  });

test('a page of another origin can neither show the page in a frame nor send it forms', async ({ page, context, installation }) => {
  const content = `<iframe src="${installation.origin}/"></iframe>
    <form method="post" enctype="text/plain" action="${installation.origin}/api/v1/queue"><input name='{"paused":true,"x":"' value='"}'><button>send</button></form>`;
  const foreign = createServer((_request, response) => response.writeHead(200, { 'Content-Type': 'text/html' }).end(content));
  foreign.listen(0, '127.0.0.1');
  await once(foreign, 'listening');
  const attacker = await context.newPage();
  await attacker.goto(`http://127.0.0.1:${(foreign.address() as AddressInfo).port}/`);
  await expect.poll(() => attacker.frames()[1]?.url()).toMatch(/^chrome-error:/);
  const [answer] = await Promise.all([attacker.waitForResponse(/\/api\/v1\/queue$/), attacker.getByRole('button', { name: 'send' }).click()]);
  expect(answer.status()).toBe(403);
  foreign.close();
  await page.reload();
  await expect(page.getByRole('button', { name: 'Pause queue' })).toBeVisible();
});

test('a read-only server shows the queue and offers no changes', async ({ page, installation }) => {
  installation.run('prints_markup.rb');
  await expect(rowOf(page, 1)).toContainText('Succeeded');
  await installation.stopWeb();
  await installation.startWeb(['--read-only']);
  await page.goto(installation.link);
  await rowOf(page, 1).click();
  await expect(page.getByText('Read-only')).toBeVisible();
  await expect(page.getByRole('button', { name: 'Delete' })).toHaveCount(0);
});
