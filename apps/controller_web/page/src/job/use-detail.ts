import { useEffect, useRef, useState } from 'preact/hooks';
import { get, jobPath } from '../api/client.ts';
import type { JobDetail } from '../api/types.ts';
import { useApp } from '../app.ts';
import type { Job } from '../jobs/job.ts';

const shortestInterval = 1000;

export interface Detail {
  detail: JobDetail | undefined;
  error: unknown;
}

/** Everything about a job, fetched again when the job changes, at most once a second. */
export function useDetail(id: string, job: Job | undefined): Detail {
  const [state, setState] = useState<Detail>({ detail: undefined, error: undefined });
  const lastTime = useRef(0);
  const { connection } = useApp().session;
  useEffect(() => {
    const aborted = new AbortController();
    const load = async (): Promise<void> => {
      lastTime.current = Date.now();
      const next = await get<{ job: JobDetail }>(jobPath(id), aborted.signal).then(
        ({ job: detail }) => ({ detail, error: undefined }),
        (error: unknown) => ({ detail: undefined, error }),
      );
      if (!aborted.signal.aborted) setState((old) => ({ detail: next.detail ?? old.detail, error: next.error }));
    };
    const timer = setTimeout(() => void load(), Math.max(0, lastTime.current + shortestInterval - Date.now()));
    return () => (clearTimeout(timer), aborted.abort());
  }, [id, job, connection.value === 'open']);
  return state;
}
