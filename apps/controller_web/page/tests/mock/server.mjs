/** The interface of the server over made-up jobs: for work on the page alone, and for measurements.
 * Usage: node tests/mock/server.mjs [PORT [JOBS [CHANGES_A_SECOND]]] */
import { createReadStream, existsSync, readFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { extname, join, normalize, parse } from 'node:path';
import { fileURLToPath } from 'node:url';
import { MockQueue, reasonOf } from './queue.mjs';

const page = fileURLToPath(new URL('../../dist', import.meta.url));
const inputs = fileURLToPath(new URL('../../../../../examples/inputs', import.meta.url));
const [port = '8720', count = '200', rate = '4'] = process.argv.slice(2);
const queue = new MockQueue(Number(count));
const streams = new Set();
const types = { '.html': 'text/html; charset=utf-8', '.js': 'text/javascript', '.css': 'text/css', '.svg': 'image/svg+xml', '.stl': 'model/stl', '.txt': 'text/plain; charset=utf-8' };
const policy =
  "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob:; connect-src 'self' blob:; worker-src 'self'; base-uri 'none'; " +
  "form-action 'none'; frame-ancestors 'none'; require-trusted-types-for 'script'; trusted-types default";

const picture = `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 320 160"><script>document.title = 1</script><path d="M20 130 90 40l70 60 60-80 80 110z" fill="#dbe6fa" stroke="#2257c5" stroke-width="3"/></svg>`;
const files = {
  'bracket.stl': () => readFileSync(join(inputs, 'bracket.stl')),
  'views/front.svg': () => picture,
  'report.json': () => '{\n  "triangles": 352,\n  "volume": 41322.7\n}\n',
};

function json(response, status, body) {
  response.writeHead(status, { 'Content-Type': 'application/json' }).end(JSON.stringify({ version: 1, ...body }));
}

async function bodyOf(request) {
  const parts = [];
  for await (const part of request) parts.push(part);
  return Buffer.concat(parts);
}

function openStream(response) {
  response.writeHead(200, { 'Content-Type': 'text/event-stream', 'Cache-Control': 'no-store' });
  response.write('retry: 500\nid: 1-1\nevent: reset\ndata: {}\n\n');
  streams.add(response);
  response.on('close', () => streams.delete(response));
}

function broadcast() {
  const event = queue.takeEvent();
  if (!event) return;
  const text = `event: jobs\ndata: ${JSON.stringify(event)}\n\n`;
  for (const stream of streams) stream.write(text);
}

function listed(query) {
  const offset = Number(query.get('offset') ?? 0);
  const rows = [...queue.jobs.values()];
  return { total: rows.length, counts: queue.counts(), event: '1-1', jobs: rows.slice(offset, offset + Number(query.get('limit') ?? 100)) };
}

function detailOf(job) {
  const isOver = job.endTime !== '';
  const messages = job.status === 'Failed' ? [reasonOf(job.inputFiles[0])] : isOver ? [`${parse(job.inputFiles[0]).base}: 352 triangles`, 'Volume 41.3 cm³'] : [];
  const hash = 'ab54a98ceb1f0ad2c0f2b1d7a1c9b5d3e4f60718293a4b5c6d7e8f9012345678';
  const provenance = { machine: 'cad-07', user: 'ann', controllerVersion: '1.4.0', scenario: [{ path: '/scenarios/mesh_report.rb', size: 4120, sha256: hash }], interpreter: { path: '/usr/bin/ruby', arguments: [] }, inputs: job.inputFiles.map((path) => ({ path, size: 17684, sha256: hash })), tools: [{ name: 'mesher', version: '2.1' }], toolVersions: {}, usedFiles: [], outputs: Object.keys(files).map((path) => ({ path, size: 100, sha256: hash })), startTime: job.startTime, endTime: job.endTime };
  return { ...job, messages, outputFiles: [], outputFolder: job.startTime && '/home/ann/reports/part', workFolder: `/home/ann/work/${job.id}`, progressReports: [], hasLog: true, ...(isOver ? { provenance } : {}) };
}

function sendLog(response, job) {
  const hostile = job.scenario.startsWith('<') ? ' <script>document.title = 1</script>' : '';
  response.writeHead(200, { 'Content-Type': 'text/plain; charset=utf-8' });
  for (let line = 1; line <= 3000; line++) response.write(`${line % 50 === 0 ? '\u001b[33mwarning\u001b[0m: thin wall' : 'reading facets'} near z = ${(line * 0.25).toFixed(2)} mm${hostile}\n`);
  response.end();
}

function sendFile(response, path) {
  const content = files[path];
  if (!content) return json(response, 404, { error: { code: 'not_found', message: `There is no file ${path}.` } });
  return response.writeHead(200, { 'Content-Type': types[extname(path)] ?? 'text/plain; charset=utf-8', 'X-Content-Type-Options': 'nosniff' }).end(content());
}

const scenarios = ['mesh_report', 'mesh_mass', 'compare_meshes'].map((name, index) => ({ id: String(100 + index), name, path: `/scenarios/${name}.rb`, inputs: Array.from({ length: index === 2 ? 2 : 1 }, () => ({ cadName: 'STL', extensions: ['stl'] })) }));
const parameterSets = [
  { id: 'standard', displayName: 'Standard picture', description: 'A picture for a report or a screen.', parameters: [{ name: 'size', type: 'integer', defaultValue: '800', allowedValues: [] }, { name: 'style', type: 'choice', defaultValue: 'shaded', allowedValues: ['shaded', 'lines'] }, { name: 'title', type: 'text', defaultValue: '', allowedValues: [] }, { name: 'dimensions', type: 'boolean', defaultValue: 'false', allowedValues: [] }] },
  { id: 'large', displayName: 'Large picture', description: 'For printing.', parameters: [{ name: 'size', type: 'integer', defaultValue: '2400', allowedValues: [] }] },
];

function entriesOf(path) {
  if (!path) return { path, entries: [{ name: 'parts', path: '/home/ann/parts', type: 'directory' }], complete: true };
  const names = ['bracket.stl', 'housing.stl', 'flange.step'];
  return { path, parent: '', entries: names.map((name) => ({ name, path: `${path}/${name}`, type: 'file', size: 17684 })), complete: true };
}

async function changeQueue(request, response, action) {
  const body = JSON.parse((await bodyOf(request)).toString());
  const jobs = queue.act(action, body.ids, body);
  broadcast();
  json(response, 200, { jobs });
}

async function createJobs(request, response) {
  const { EnqueueJobs } = JSON.parse((await bodyOf(request)).toString());
  lastCreated = EnqueueJobs;
  const jobs = EnqueueJobs.flatMap((wanted) => wanted.inputFileSets.map((inputFiles) => queue.add({ inputFiles, runArgument: wanted.runArgument, scenario: scenarios.find(({ id }) => id === wanted.scenario.id)?.name ?? '?' })));
  broadcast();
  json(response, 201, { jobs, refused: [] });
}

async function jobAnswer(request, response, [name, part, ...rest]) {
  const job = queue.find(decodeURIComponent(name ?? ''));
  if (!job) return json(response, 404, { error: { code: 'not_found', message: `There is no job ${name}.` } });
  if (!part) return json(response, 200, { job: detailOf(job) });
  if (part === 'log') return sendLog(response, job);
  if (part === 'files' && rest.length > 0) return sendFile(response, rest.map(decodeURIComponent).join('/'));
  return json(response, 200, { complete: true, files: job.startTime ? Object.entries(files).map(([path, content]) => ({ path, size: content().length, modified: job.endTime, type: 'text/plain' })) : [] });
}

async function api(request, response, url) {
  const [view, name, ...rest] = url.pathname.slice('/api/v1/'.length).split('/');
  if (view === 'events') return openStream(response);
  if (view === 'queue' && request.method === 'PUT') queue.paused = JSON.parse((await bodyOf(request)).toString()).paused;
  if (view === 'queue') return json(response, 200, queue.state());
  if (view === 'scenarios') return json(response, 200, name ? { parameterSets: rest[0] && name === '100' ? parameterSets : [] } : { scenarios, problems: [] });
  if (view === 'inputs') return json(response, 200, entriesOf(url.searchParams.get('path')));
  if (view === 'uploads') return json(response, 201, { path: `/uploads/${url.searchParams.get('name')}`, size: (await bodyOf(request)).length });
  if (view === 'jobs' && request.method === 'POST') return name ? changeQueue(request, response, name) : createJobs(request, response);
  if (view === 'jobs') return name ? jobAnswer(request, response, [name, ...rest]) : json(response, 200, listed(url.searchParams));
  return json(response, 404, { error: { code: 'not_found', message: 'There is no such path.' } });
}

function asset(response, path) {
  const file = join(page, normalize(path === '/' ? 'index.html' : path));
  if (!file.startsWith(page) || !existsSync(file)) return response.writeHead(404).end();
  response.writeHead(200, { 'Content-Type': types[extname(file)] ?? 'application/octet-stream', 'Content-Security-Policy': policy });
  return createReadStream(file).pipe(response);
}

/** What tests make happen; not part of the interface. */
const controls = {
  step: (value) => queue.step(Number(value)),
  end: (value) => [JSON.parse(value)].flat().forEach((number) => queue.end(number)),
  cancel: (value) => queue.act('cancel', JSON.parse(value).map(String)),
  host: (value) => {
    queue.isRunning = value === 'yes';
    for (const stream of streams) stream.write(`event: host\ndata: {"running":${queue.isRunning}}\n\n`);
  },
  drop: () => streams.forEach((stream) => stream.destroy()),
  refuse: (value) => (isRefusing = value === 'yes'),
  readOnly: (value) => (queue.readOnly = value === 'yes'),
  add: (value) => queue.add(JSON.parse(value)),
  streams: () => streams.size,
  lastCreated: () => lastCreated,
};
let isRefusing = false;
let lastCreated;

function control(response, url) {
  const result = controls[url.pathname.slice('/mock/'.length)](url.searchParams.get('value') ?? '');
  broadcast();
  json(response, 200, { result: result ?? null });
}

const server = createServer((request, response) => {
  const url = new URL(request.url, 'http://localhost');
  if (url.pathname.startsWith('/mock/')) control(response, url);
  else if (url.pathname.startsWith('/api/v1/') && isRefusing) json(response, 401, { error: { code: 'unauthorized', message: 'No session.' } });
  else if (url.pathname.startsWith('/api/v1/')) void api(request, response, url);
  else asset(response, url.pathname);
});
server.listen(Number(port), '127.0.0.1', () => console.log(`http://127.0.0.1:${server.address().port}/`));
if (Number(rate) > 0) setInterval(() => (queue.step(Number(rate) / 4), broadcast()), 250);
