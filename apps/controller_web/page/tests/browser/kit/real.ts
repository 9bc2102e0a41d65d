import { execFileSync, spawn, type ChildProcess } from 'node:child_process';
import { once } from 'node:events';
import { existsSync, mkdirSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';
import { test as base, expect } from '@playwright/test';

const programs = process.env['CONTROLLER_PROGRAMS'] ?? fileURLToPath(new URL('../../../../../../build/linux/bin', import.meta.url));

/** Texts that would do harm if they were markup. */
export const markup = '<img src=x onerror="document.title=1">';

const scenarios: Record<string, string> = {
  'prints_markup.rb': `require "controller_scenario"
ControllerScenario.run do |job|
  puts "<script>document.title = 1</script>"
  job.progress(50, ${JSON.stringify(markup)})
  job.write_output(${JSON.stringify(`${markup}.txt`)}, "text")
  job.message(${JSON.stringify(markup)})
end
`,
  // Ends when the file "go" is beside its input.
  'waits.rb': `require "controller_scenario"
ControllerScenario.run do |job|
  job.progress(10, "waiting")
  until File.exist?(File.join(File.dirname(job.inputs.first), "go"))
    job.stop_if_cancelled
    sleep 0.02
  end
end
`,
};

/** Host and server in a directory of their own. */
export class Installation {
  readonly directory = mkdtempSync(join(tmpdir(), 'page-'));
  link = '';
  private readonly environment: NodeJS.ProcessEnv;
  private host: ChildProcess | undefined;
  private web: ChildProcess | undefined;

  constructor() {
    for (const name of ['scenarios', 'inputs', 'run']) mkdirSync(join(this.directory, name), { mode: 0o700 });
    for (const [name, text] of Object.entries(scenarios)) writeFileSync(join(this.directory, 'scenarios', name), text);
    writeFileSync(join(this.directory, 'inputs', 'part.stl'), 'solid x\nendsolid x\n');
    const settings = {
      version: 1,
      workDirectory: 'work',
      jobListFile: 'job_list.json',
      logFile: 'controller.log',
      scenarioDirectories: [{ path: 'scenarios', label: '' }],
      web: { inputDirectories: ['inputs'] },
    };
    writeFileSync(join(this.directory, 'settings.json'), JSON.stringify(settings));
    this.environment = { ...process.env, CONTROLLER_SETTINGS_FILE: join(this.directory, 'settings.json'), XDG_RUNTIME_DIR: join(this.directory, 'run') };
  }

  /** Returns what the command has printed. */
  command(program: string, ...parameters: string[]): string {
    return execFileSync(join(programs, program), parameters, { env: this.environment, encoding: 'utf8', stdio: ['ignore', 'pipe', 'inherit'] });
  }

  startHost(): void {
    this.host = spawn(join(programs, 'controller_host'), [], { env: this.environment, stdio: 'ignore' });
  }

  async stopHost(): Promise<void> {
    this.host = await stopped(this.host);
  }

  async startWeb(...options: string[]): Promise<void> {
    this.web = spawn(join(programs, 'controller_web'), ['--no-browser', '--port', '0', ...options], { env: this.environment, stdio: ['ignore', 'pipe', 'inherit'] });
    for await (const line of createInterface({ input: this.web.stdout! })) {
      this.link = /http:\S+/.exec(line)?.[0] ?? '';
      if (this.link) return;
    }
    throw new Error('controller_web has printed no link.');
  }

  get origin(): string {
    return new URL(this.link).origin;
  }

  input(name = 'part.stl'): string {
    return join(this.directory, 'inputs', name);
  }

  /** Queues jobs with the command line; returns at once. */
  run(scenario: string, ...options: string[]): void {
    const request = { scenario: { id: scenario }, inputFileSets: [[this.input()]], outputDir: join(this.directory, 'output'), runArgument: '', useTimeStampFolder: false };
    const file = join(this.directory, 'jobs.json');
    writeFileSync(file, JSON.stringify({ EnqueueJobs: [request] }));
    this.command('cadjobs', ...options, 'add', file);
  }

  /** Lets the jobs of waits.rb end. */
  letGo(): void {
    writeFileSync(this.input('go'), '');
  }

  async stop(): Promise<void> {
    if (existsSync(this.input('part.stl'))) this.letGo();
    this.web = await stopped(this.web);
    this.host = await stopped(this.host);
    rmSync(this.directory, { recursive: true, force: true });
  }
}

async function stopped(program: ChildProcess | undefined): Promise<undefined> {
  if (!program || program.exitCode !== null || program.signalCode !== null) return;
  program.kill('SIGTERM');
  await once(program, 'exit');
}

/** A test with a host, a server, and a page that is signed in. */
export const test = base.extend<{ installation: Installation }>({
  installation: async ({ page }, use) => {
    const installation = new Installation();
    try {
      installation.startHost();
      await installation.startWeb();
      await page.goto(installation.link);
      await use(installation);
    } finally {
      await installation.stop();
    }
  },
});

export { expect };
