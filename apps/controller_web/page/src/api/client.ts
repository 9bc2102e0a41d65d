/** Calls of /api/v1. All throw `ApiError`. */

import { base } from './base.ts';
import type { Refusal } from './types.ts';

export class ApiError extends Error {
  constructor(
    readonly status: number,
    readonly code: string,
    message: string,
    readonly refused: readonly Refusal[] = [],
  ) {
    super(message);
  }
}

const root = `${base}api/v1`;

/** A text that is not valid Unicode arrives as a list of code points. */
function revive(_name: string, value: unknown): unknown {
  const points = (value as { codePoints?: number[] } | null)?.codePoints;
  return Array.isArray(points) ? String.fromCodePoint(...points) : value;
}

/** The reviver is slow, so long lists are parsed without it where nothing needs it. */
export function parse<Document>(text: string): Document {
  return JSON.parse(text, text.includes('"codePoints"') ? revive : undefined) as Document;
}

async function errorOf(response: Response): Promise<ApiError> {
  type ErrorBody = { error?: { code?: string; message?: string; refused?: Refusal[] } } | null;
  const body = (await response.json().catch(() => null)) as ErrorBody;
  const error = body?.error;
  const message = error?.message ?? `${response.status} ${response.statusText}`;
  return new ApiError(response.status, error?.code ?? 'unexpected', message, error?.refused);
}

/** A call that reached no server has the status 0. */
export async function send(path: string, options: RequestInit = {}): Promise<Response> {
  const response = await fetch(root + path, { credentials: 'same-origin', ...options }).catch((error: unknown) => {
    if (options.signal?.aborted) throw error;
    throw new ApiError(0, 'unreachable', '');
  });
  if (!response.ok) throw await errorOf(response);
  return response;
}

export async function get<Answer>(path: string, signal?: AbortSignal): Promise<Answer> {
  const response = await send(path, signal ? { signal } : {});
  return parse<Answer>(await response.text());
}

async function change<Answer>(method: string, path: string, body: unknown): Promise<Answer> {
  const headers = { 'Content-Type': 'application/json' };
  const response = await send(path, { method, headers, body: JSON.stringify(body) });
  return parse<Answer>(await response.text());
}

export const post = <Answer>(path: string, body: unknown): Promise<Answer> => change('POST', path, body);
export const put = <Answer>(path: string, body: unknown): Promise<Answer> => change('PUT', path, body);

/** Stores a file with the server and returns its path there. */
export async function upload(file: File): Promise<string> {
  const headers = { 'Content-Type': 'application/octet-stream' };
  const path = `/uploads?name=${encodeURIComponent(file.name)}`;
  const response = await send(path, { method: 'POST', headers, body: file });
  return parse<{ path: string }>(await response.text()).path;
}

export const jobPath = (id: string): string => `/jobs/${encodeURIComponent(id)}`;

/** Bytes of a name that are not valid UTF-8 are surrogates from U+DC80 on; `encodeURIComponent` refuses them. */
function encodePart(part: string): string {
  return [...part]
    .map((character) => {
      const code = character.codePointAt(0) ?? 0;
      return code >= 0xdc80 && code <= 0xdcff ? `%${(code - 0xdc00).toString(16).toUpperCase()}` : encodeURIComponent(character);
    })
    .join('');
}

/** The path of one output file; each directory and name is escaped, the slashes between them are not. */
export function filePath(id: string, path: string): string {
  return `${jobPath(id)}/files/${path.split('/').map(encodePart).join('/')}`;
}

export const addressOf = (path: string): string => root + path;
