import { execFileSync, spawn, type ChildProcess } from 'node:child_process';
import { once } from 'node:events';
import { mkdirSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { linux, type System } from './systems.ts';

export interface Contents {
  /** Texts of scenarios and bytes of input files, by name. */
  scenarios?: Readonly<Record<string, string>>;
  inputs?: Readonly<Record<string, string | Buffer>>;
  /** The job list that the host finds. */
  jobList?: string;
  /** What the settings have besides the places of files. */
  settings?: Readonly<Record<string, unknown>>;
}

/** Host and server in a directory of their own. */
export class Installation {
  readonly directory = mkdtempSync(join(tmpdir(), 'page-'));
  link = '';
  private readonly environment: NodeJS.ProcessEnv;
  private host: ChildProcess | undefined;
  private web: ChildProcess | undefined;

  constructor(
    contents: Contents,
    private readonly system: System = linux,
  ) {
    for (const name of ['scenarios', 'inputs', 'run']) mkdirSync(join(this.directory, name), { mode: 0o700 });
    for (const [name, text] of Object.entries(contents.scenarios ?? {})) writeFileSync(join(this.directory, 'scenarios', name), text);
    for (const [name, bytes] of Object.entries(contents.inputs ?? {})) writeFileSync(this.input(name), bytes);
    if (contents.jobList) writeFileSync(join(this.directory, 'job_list.json'), contents.jobList);
    const settings = {
      version: 1,
      workDirectory: 'work',
      jobListFile: 'job_list.json',
      logFile: 'controller.log',
      scenarioDirectories: [{ path: 'scenarios', label: '' }],
      web: { inputDirectories: ['inputs'] },
      ...contents.settings,
    };
    writeFileSync(join(this.directory, 'settings.json'), JSON.stringify(settings));
    this.environment = { ...process.env, CONTROLLER_SETTINGS_FILE: this.nameOf('settings.json'), XDG_RUNTIME_DIR: join(this.directory, 'run') };
  }

  /** A file of the installation, as its programs name it. */
  nameOf(path: string): string {
    return this.system.nameOf(join(this.directory, path));
  }

  /** Returns what the command has printed. */
  command(name: string, ...parameters: string[]): string {
    const [program, ...first] = this.system.command(name);
    return execFileSync(program, [...first, ...parameters], { env: this.environment, encoding: 'utf8', stdio: ['ignore', 'pipe', 'inherit'] });
  }

  startHost(): void {
    this.host = this.start('controller_host', [], 'ignore');
  }

  async stopHost(): Promise<void> {
    this.host = await this.stopped(this.host, 'cadjobs', 'host', 'stop');
  }

  /** At any free port unless one is named. */
  async startWeb(options: readonly string[] = [], port = '0'): Promise<void> {
    this.web = this.start('controller_web', ['--no-browser', '--port', port, ...options], 'pipe');
    for await (const line of createInterface({ input: this.web.stdout! })) {
      this.link = /http:\S+/.exec(line)?.[0] ?? '';
      if (this.link) return;
    }
    throw new Error('controller_web has printed no link.');
  }

  async stopWeb(): Promise<void> {
    this.web = await this.stopped(this.web, 'controller_web', '--stop');
  }

  get origin(): string {
    return new URL(this.link).origin;
  }

  get port(): string {
    return new URL(this.link).port;
  }

  input(name = 'part.stl'): string {
    return join(this.directory, 'inputs', name);
  }

  /** Queues a job with the command line; returns at once. */
  run(scenario: string, more: Readonly<Record<string, unknown>> = {}): void {
    const inputFileSets = [[this.nameOf('inputs/part.stl')]];
    const request = { scenario: { id: scenario }, inputFileSets, outputDir: this.nameOf('output'), runArgument: '', useTimeStampFolder: false, ...more };
    writeFileSync(join(this.directory, 'jobs.json'), JSON.stringify({ EnqueueJobs: [request] }));
    this.command('cadjobs', 'add', this.nameOf('jobs.json'));
  }

  /** Lets the jobs of waits.rb end. */
  letGo(): void {
    writeFileSync(this.input('go'), '');
  }

  async stop(): Promise<void> {
    this.letGo();
    await this.stopWeb();
    await this.stopHost();
    rmSync(this.directory, { recursive: true, force: true });
  }

  private start(name: string, parameters: readonly string[], output: 'ignore' | 'pipe'): ChildProcess {
    const [program, ...first] = this.system.command(name);
    return spawn(program, [...first, ...parameters], { env: this.environment, stdio: ['ignore', output, 'inherit'] });
  }

  private async stopped(process: ChildProcess | undefined, ...command: [string, ...string[]]): Promise<undefined> {
    if (!process || process.exitCode !== null || process.signalCode !== null) return;
    const end = once(process, 'exit');
    if (this.system.hasSignals) process.kill('SIGTERM');
    else this.command(...command);
    await end;
  }
}
