/** A queue of made-up jobs that start, progress and end when `step` is called; the same for each run. */

const scenarios = ['mesh_report', 'compare_meshes', 'mesh_mass', 'part_report', 'convert_part'];
const parts = ['bracket', 'housing', 'helical_gear', 'bearing_block', 'flange', 'cover', 'shaft', 'lever'];
const timeText = (time) => new Date(time).toISOString().replace(/\.\d+Z$/, 'Z');

/** What the result of a job that failed says. */
export const reasonOf = (path) => `${path.slice(path.lastIndexOf('/') + 1)} is not an STL file: it looks like an OBJ file`;

function jobOf(number, status, now, count = number) {
  const age = (count - number) * 20_000;
  const job = { number, id: (0x51f00000 + number).toString(16), status, progress: 0, message: '', runArgument: '', startTime: '', endTime: '' };
  job.scenario = scenarios[number % scenarios.length];
  job.inputFiles = [`/home/ann/parts/${parts[number % parts.length]}_${number}.stl`];
  job.queuedTime = timeText(now - age - 90_000);
  if (status !== 'Queued' && status !== 'Dequeued') job.startTime = timeText(now - age - 30_000 - (number % 7) * 5000);
  if (!['Queued', 'Running'].includes(status)) job.endTime = timeText(now - age);
  if (status === 'Success') job.progress = 100;
  if (status === 'Failed') Object.assign(job, { progress: number % 100, message: reasonOf(job.inputFiles[0]) });
  return job;
}

const endOf = (job) => (job.number % 11 === 3 ? { status: 'Failed', message: reasonOf(job.inputFiles[0]) } : { status: 'Success', message: '' });

function initialStatus(index, count) {
  if (index > count - Math.max(3, count * 0.02)) return 'Queued';
  if (index > count - Math.max(6, count * 0.025)) return 'Running';
  if (index % 17 === 3) return 'Failed';
  return index % 29 === 5 ? 'Canceled' : 'Success';
}

export class MockQueue {
  paused = false;
  isRunning = true;
  readOnly = false;
  jobs = new Map();
  changed = new Set();
  removed = new Set();

  constructor(count, now = Date.now()) {
    for (let number = 1; number <= count; number++) this.put(jobOf(number, initialStatus(number, count), now, count));
    this.changed.clear();
  }

  put(job) {
    this.jobs.set(job.id, job);
    this.changed.add(job.id);
  }

  find(name) {
    return this.jobs.get(name) ?? [...this.jobs.values()].find((job) => String(job.number) === name);
  }

  counts() {
    const counts = { queued: 0, running: 0, succeeded: 0, failed: 0, cancelled: 0 };
    const names = { Queued: 'queued', Running: 'running', Canceling: 'running', Success: 'succeeded', Failed: 'failed' };
    for (const job of this.jobs.values()) counts[names[job.status] ?? 'cancelled']++;
    return counts;
  }

  state() {
    return { paused: this.paused, readOnly: this.readOnly, host: { running: this.isRunning }, counts: this.counts() };
  }

  /** Changes `count` running jobs and replaces those that have ended by waiting ones. */
  step(count) {
    const running = [...this.jobs.values()].filter((job) => job.status === 'Running');
    for (let index = 0; index < count && running.length > 0; index++) this.advance(running[(index * 7919) % running.length]);
    this.startWaiting(running.length);
  }

  advance(job) {
    if (job.status !== 'Running') return;
    const progress = Math.min(100, job.progress + 1 + (job.number % 5));
    const isOver = progress === 100;
    const ending = isOver ? { ...endOf(job), endTime: timeText(Date.now()) } : {};
    this.put({ ...job, progress, message: `Layer ${progress} of 100`, ...ending });
  }

  end(number) {
    this.put({ ...this.find(String(number)), status: 'Success', progress: 100, endTime: timeText(Date.now()) });
  }

  startWaiting(most) {
    let running = [...this.jobs.values()].filter((job) => job.status === 'Running').length;
    for (const job of this.jobs.values()) {
      if (this.paused || running >= most) return;
      if (job.status !== 'Queued' || job.hold) continue;
      this.put({ ...job, status: 'Running', startTime: timeText(Date.now()) });
      running++;
    }
  }

  add(fields) {
    const number = Math.max(0, ...[...this.jobs.values()].map((job) => job.number)) + 1;
    this.put({ ...jobOf(number, 'Queued', Date.now()), queuedTime: timeText(Date.now()), ...fields });
    return { id: (0x51f00000 + number).toString(16), number };
  }

  act(action, ids, body) {
    return ids.map((id) => {
      const job = this.find(id);
      if (!job) return { number: -1, id, status: 'Deleted', done: false, message: `There is no job ${id}.` };
      return this.actOn(action, job, body);
    });
  }

  actOn(action, job, body) {
    const report = (status, done, message = '') => ({ number: job.number, id: job.id, status, done, message });
    if (action === 'delete') {
      this.jobs.delete(job.id);
      this.removed.add(job.id);
      return report('Deleted', true);
    }
    if (action === 'again') return { ...report('Queued', true), ...this.add({ scenario: job.scenario, inputFiles: job.inputFiles }) };
    if (action === 'edit') {
      if (job.status !== 'Queued') return report(job.status, false, `Job ${job.number} does not wait any longer and was not changed.`);
      const { ids: _ids, ...fields } = body;
      this.put({ ...job, ...fields, waitReason: fields.hold ? 'hold' : undefined });
      return report('Queued', true);
    }
    const status = job.status === 'Running' ? 'Canceled' : 'Dequeued';
    this.put({ ...job, status, endTime: timeText(Date.now()) });
    return report(status, true);
  }

  /** The event about what has changed since the last one, or nothing. */
  takeEvent() {
    if (this.changed.size + this.removed.size === 0) return undefined;
    const changed = [...this.changed].flatMap((id) => this.jobs.get(id) ?? []);
    const event = { changed, removed: [...this.removed], queue: this.state() };
    this.changed.clear();
    this.removed.clear();
    return event;
  }
}
