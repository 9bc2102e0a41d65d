import { useEffect, useState } from 'preact/hooks';
import { get } from '../api/client.ts';

export interface Resource<Answer> {
  answer?: Answer;
  error?: unknown;
}

/** The answer to a GET request; an empty path asks for nothing. */
export function useResource<Answer>(path: string): Resource<Answer> {
  const [state, setState] = useState<Resource<Answer>>({});
  useEffect(() => {
    setState({});
    if (!path) return undefined;
    const aborted = new AbortController();
    get<Answer>(path, aborted.signal).then(
      (answer) => setState({ answer }),
      (error: unknown) => !aborted.signal.aborted && setState({ error }),
    );
    return () => aborted.abort();
  }, [path]);
  return state;
}
