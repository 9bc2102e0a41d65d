import { copyFileSync } from 'node:fs';
import { join } from 'node:path';
import type { Page } from '@playwright/test';
import { cubeStl } from '../../models.ts';
import { Installation } from '../kit/installation.ts';
import { rowOf } from '../kit/mock.ts';
import { expect, serve, start, test as base } from '../kit/real.ts';
import { windows, windowsPrograms } from '../kit/systems.ts';

/** The programs of the Windows build under Wine. Ruby cannot serve a host there, so the scenarios are programs. */
const test = base.extend<{ installation: Installation }>({
  installation: async ({ page }, use) => {
    const steps = windows.command('test_scenario').at(-1) ?? '';
    const installation = new Installation(
      {
        scenarios: { 'waits.steps': 'print waiting\nreport progress 40\nwait for request\n' },
        inputs: { 'part.stl': cubeStl() },
        settings: { interpreters: { '.steps': [windows.nameOf(steps)] } },
      },
      windows,
    );
    copyFileSync(join(windowsPrograms ?? '', 'stl_report.esa'), join(installation.directory, 'scenarios/stl_report.esa'));
    await serve(page, installation, use);
  },
});

test.describe.configure({ timeout: 120_000 });

async function showFiles(page: Page): Promise<void> {
  await page.getByRole('tab', { name: 'Files' }).click();
  await page.getByRole('button', { name: /^part_report\.json/ }).click();
  await expect(page.locator('pre')).toContainText('"triangles": 12');
  await page.getByRole('button', { name: /^part_picture\.png/ }).click();
  await expect.poll(() => page.getByRole('img', { name: 'part_picture.png' }).evaluate((image: HTMLImageElement) => image.naturalWidth)).toBe(800);
}

test('the Windows programs: a job from the form runs, one is cancelled, deleted, and a new host knows them', async ({ page, installation }) => {
  await start(page, installation, 'STL report');
  await expect(rowOf(page, 1)).toContainText('Succeeded', { timeout: 30_000 });
  await rowOf(page, 1).click();
  await expect(page.getByLabel('Messages')).toContainText('part.stl: 12 triangles, 10 x 10 x 10');
  await showFiles(page);

  installation.run('waits.steps');
  await expect(rowOf(page, 2)).toContainText('Running');
  await rowOf(page, 2).click();
  await page.getByRole('tab', { name: 'Log' }).click();
  await expect(page.getByRole('region', { name: 'Log' })).toContainText('waiting');
  await page.getByRole('button', { name: 'Cancel', exact: true }).click();
  await expect(rowOf(page, 2)).toContainText('Cancelled', { timeout: 30_000 });
  await page.getByRole('button', { name: 'Delete' }).click();
  await page.getByRole('dialog').getByRole('button', { name: 'Delete' }).click();
  await expect(rowOf(page, 2)).toHaveCount(0);

  await installation.stopHost();
  await expect(page.getByText('No host is running, so no job starts')).toBeVisible();
  installation.startHost();
  await expect(page.getByText('No host is running, so no job starts')).toHaveCount(0, { timeout: 30_000 });
  await expect(rowOf(page, 1)).toContainText('Succeeded');
});
