/** The documents of /api/v1 as the page uses them; `openapi.json` of the server describes them in full. */

export const statusNames = ['Queued', 'Running', 'Success', 'Failed', 'Dequeued', 'Canceling', 'Canceled'] as const;
export type StatusName = (typeof statusNames)[number];

export interface JobRow {
  number: number;
  id: string;
  status: string;
  progress?: number;
  message?: string;
  scenario?: string;
  inputFiles?: string[];
  startTime?: string;
  endTime?: string;
  queuedTime?: string;
  priority?: number;
  hold?: boolean;
  waitReason?: string;
  waitName?: string;
  attempt?: number;
  attempts?: number;
}

export interface ProgressReport {
  progress: number;
  message: string;
}

export interface JobDetail extends JobRow {
  messages?: string[];
  outputFiles?: string[];
  outputFolder?: string;
  workFolder?: string;
  runArgument?: string;
  lastEnding?: string;
  after?: string[];
  afterEnd?: string[];
  notBefore?: string;
  needs?: Record<string, number>;
  retries?: number;
  timeLimit?: number;
  silenceLimit?: number;
  memoryLimitMiB?: number;
  cpuLimitPercent?: number;
  hasLog?: boolean;
  extraText?: string;
  scenarioId?: string;
  provenance?: Provenance;
  progressReports?: ProgressReport[];
  /** The earlier attempts whose logs were kept. */
  attemptLogs?: number[];
}

export interface FileRecord {
  path: string;
  size?: number;
  sha256?: string;
}

export interface Provenance {
  attempt?: number;
  machine?: string;
  user?: string;
  startTime?: string;
  endTime?: string;
  controllerVersion?: string;
  scenario?: FileRecord[];
  interpreter?: { path?: string; arguments?: string[] };
  inputs?: FileRecord[];
  outputs?: FileRecord[];
  usedFiles?: FileRecord[];
  tools?: { name: string; version: string }[];
  toolVersions?: Record<string, string>;
  notReusable?: string;
  resultsOf?: { jobId?: string; jobNumber?: number };
}

export interface OutputFile {
  path: string;
  size: number;
  modified?: string;
  type?: string;
}

export interface QueueState {
  paused: boolean;
  readOnly?: boolean;
  host?: { running: boolean };
}

export interface JobsAnswer {
  total: number;
  jobs: JobRow[];
}

export interface JobsEvent {
  changed: JobRow[];
  removed: string[];
  queue: QueueState;
}

export interface ActionReport {
  number: number;
  id: string;
  status: string;
  done: boolean;
  message: string;
}

export interface InputSpecification {
  cadName?: string;
  extensions?: string[];
}

export interface Scenario {
  id: string;
  name: string;
  path: string;
  inputs?: InputSpecification[];
}

export interface ScenarioParameter {
  name: string;
  type: string;
  defaultValue: string;
  allowedValues: string[];
}

export interface ParameterSet {
  id: string;
  displayName: string;
  description: string;
  parameters: ScenarioParameter[];
}

export interface InputEntry {
  name: string;
  path: string;
  type: 'file' | 'directory';
  size?: number;
}

export interface Inputs {
  path: string;
  parent?: string;
  entries: InputEntry[];
  complete: boolean;
}

export interface Refusal {
  request: number;
  inputSet?: number;
  message: string;
}

export interface CreatedJobs {
  jobs: { id: string; number: number }[];
  refused: Refusal[];
}

export interface JobsRequest {
  scenario: { id: string };
  inputFileSets: string[][];
  outputDir: string;
  runArgument: string;
  useTimeStampFolder: boolean;
  priority?: number;
  hold?: boolean;
}
