import { spawn, type ChildProcess } from 'node:child_process';
import { once } from 'node:events';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';
import { test as base, expect, type Page } from '@playwright/test';

const program = fileURLToPath(new URL('../../mock/server.mjs', import.meta.url));

/** A server of its own with made-up jobs, in which nothing happens unless the test says so. */
export class Mock {
  private constructor(
    private readonly process: ChildProcess,
    readonly address: string,
  ) {}

  static async start(jobs: number, changesPerSecond = 0): Promise<Mock> {
    const server = spawn(process.execPath, [program, '0', String(jobs), String(changesPerSecond)], { stdio: ['ignore', 'pipe', 'inherit'] });
    const [address] = (await once(createInterface(server.stdout), 'line')) as [string];
    return new Mock(server, address);
  }

  /** Makes something happen; see `controls` in the mock server. */
  async make(what: string, value: unknown = ''): Promise<unknown> {
    const text = typeof value === 'string' ? value : JSON.stringify(value);
    const answer = await fetch(`${this.address}mock/${what}?value=${encodeURIComponent(text)}`);
    return ((await answer.json()) as { result: unknown }).result;
  }

  async stop(): Promise<void> {
    this.process.kill();
    if (this.process.exitCode === null && this.process.signalCode === null) await once(this.process, 'exit');
  }
}

interface Fixtures {
  jobs: number;
  mock: Mock;
}

/** A test with a mock server of 60 jobs, unless `test.use({ jobs })` says otherwise. Fails if the page reports an error or
 * breaks its content security policy. */
export const test = base.extend<Fixtures>({
  jobs: [60, { option: true }],
  mock: async ({ jobs }, use) => {
    const mock = await Mock.start(jobs);
    await use(mock);
    await mock.stop();
  },
  page: async ({ page }, use) => {
    const errors: string[] = [];
    page.on('pageerror', (error) => errors.push(error.message));
    page.on('console', (message) => message.type() === 'error' && /Content Security Policy|Trusted/.test(message.text()) && errors.push(message.text()));
    await use(page);
    expect(errors).toEqual([]);
  },
});

export { expect };

/** Opens a view and waits until the jobs are there. */
export async function open(page: Page, mock: Mock, path = ''): Promise<void> {
  await page.goto(mock.address + path);
  await expect(page.getByRole('row').nth(1)).toBeVisible();
}

export const grid = (page: Page) => page.getByRole('grid', { name: 'Jobs' });

/** The row of the job with this number. */
export const rowOf = (page: Page, number: number) => page.getByRole('row').filter({ has: page.getByRole('gridcell', { name: String(number), exact: true }) });
