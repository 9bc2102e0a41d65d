import { get } from '../api/client.ts';
import type { JobRow, JobsAnswer } from '../api/types.ts';

const pageSize = 10_000;
const fields =
  'number,id,status,progress,message,scenario,inputFiles,queuedTime,startTime,endTime,priority,hold,waitReason,waitName,attempt,attempts';

/** Fetches the whole list, page by page. Throws as `get` does, also after `signal`. */
export async function loadList(signal: AbortSignal, onPage: (rows: JobRow[], total: number) => void): Promise<void> {
  let offset = 0;
  for (;;) {
    const query = `sort=number&order=asc&offset=${offset}&limit=${pageSize}&fields=${fields}`;
    const page = await get<JobsAnswer>(`/jobs?${query}`, signal);
    onPage(page.jobs, page.total);
    offset += page.jobs.length;
    if (page.jobs.length === 0 || offset >= page.total) return;
  }
}
