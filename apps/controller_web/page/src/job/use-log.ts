import { useEffect, useRef, useState } from 'preact/hooks';
import { ApiError, jobPath, send } from '../api/client.ts';
import { LogBuffer } from './log-buffer.ts';

export interface LogState {
  buffer: LogBuffer;
  /** Grows with each part that arrives. */
  revision: number;
  /** `none`: the job has no log yet. */
  state: 'loading' | 'following' | 'complete' | 'none' | 'failed';
  error?: unknown;
}

const restartAfter = 2000;

async function readAll(response: Response, onText: (text: string) => void): Promise<void> {
  const decoder = new TextDecoder();
  const reader = response.body?.getReader();
  for (let part = await reader?.read(); part && !part.done; part = await reader?.read()) onText(decoder.decode(part.value, { stream: true }));
}

/** Reads one log to its end; a job that runs is followed. */
async function readLog(id: string, signal: AbortSignal, report: (state: LogState) => void): Promise<LogState['state']> {
  const buffer = new LogBuffer();
  let revision = 0;
  const response = await send(`${jobPath(id)}/log?follow=1`, { signal });
  report({ buffer, revision, state: 'following' });
  let isDue = false;
  await readAll(response, (text) => {
    buffer.append(text);
    if (isDue) return;
    isDue = true;
    requestAnimationFrame(() => {
      isDue = false;
      if (!signal.aborted) report({ buffer, revision: ++revision, state: 'following' });
    });
  });
  report({ buffer, revision: ++revision, state: 'complete' });
  return 'complete';
}

function usePageIsVisible(): boolean {
  const [isVisible, setVisible] = useState(document.visibilityState === 'visible');
  useEffect(() => {
    const listener = (): void => setVisible(document.visibilityState === 'visible');
    document.addEventListener('visibilitychange', listener);
    return () => document.removeEventListener('visibilitychange', listener);
  }, []);
  return isVisible;
}

/** The log of a job. While the tab is hidden it is not followed, so that hidden tabs use up no connections. `started` and
 * `isOver` begin anew: another attempt has another log. */
export function useLog(id: string, started: number, isOver: boolean): LogState {
  const [log, setLog] = useState<LogState>({ buffer: new LogBuffer(), revision: 0, state: 'loading' });
  const [restarts, setRestarts] = useState(0);
  const isVisible = usePageIsVisible();
  const isDone = useRef(false);
  useEffect(() => {
    isDone.current = false;
  }, [id, started]);
  useEffect(() => {
    if (!isVisible || isDone.current) return undefined;
    const aborted = new AbortController();
    let timer: ReturnType<typeof setTimeout> | undefined;
    const onError = (error: unknown): void => {
      if (aborted.signal.aborted) return;
      const isMissing = error instanceof ApiError && error.status === 404;
      setLog((old) => ({ ...old, state: isMissing ? 'none' : 'failed', error }));
      if (!isMissing || !isOver) timer = setTimeout(() => setRestarts((count) => count + 1), restartAfter);
    };
    void readLog(id, aborted.signal, setLog).then(() => (isDone.current = isOver), onError);
    return () => (aborted.abort(), clearTimeout(timer));
  }, [id, started, isOver, isVisible, restarts]);
  return log;
}
