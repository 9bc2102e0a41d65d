import { test as base, expect, type Page } from '@playwright/test';
import { cubeStl } from '../../models.ts';
import { Installation, type Contents } from './installation.ts';
import { scenarios } from './scenarios.ts';

export { expect, type Installation };

export const usualContents: Contents = { scenarios, inputs: { 'part.stl': cubeStl() } };

interface Fixtures {
  contents: Contents;
  installation: Installation;
}

/** Starts host and server, signs the page in, and ends them after `use`. The server listens at `port`, or at any. */
export async function serve(page: Page, installation: Installation, use: (installation: Installation) => Promise<void>, port = '0'): Promise<void> {
  try {
    installation.startHost();
    await installation.startWeb([], port);
    await page.goto(installation.link);
    await use(installation);
  } finally {
    await installation.stop();
  }
}

/** A test with a host, a server, and a page that is signed in. */
export const test = base.extend<Fixtures>({
  contents: [usualContents, { option: true }],
  installation: ({ page, contents }, use) => serve(page, new Installation(contents), use),
});

/** Fills the form as a user would, and starts the job. */
export async function start(page: Page, installation: Installation, scenario: string): Promise<void> {
  await page.getByRole('link', { name: 'New job' }).first().click();
  await page.getByLabel('Scenario').selectOption({ label: scenario });
  await page.getByRole('button', { name: /inputs/ }).click();
  await page.getByRole('button', { name: /^part\.stl/ }).click();
  await page.getByLabel('Output folder').fill(installation.nameOf('output'));
  await page.getByRole('button', { name: 'Start 1 job' }).click();
}
