/** The path below which the server is reached, with its last slash: "/", or a longer one behind a proxy. The page is there itself, the
 * script of a worker among the page's files. */
export function baseOf(pathname: string, isWorker: boolean): string {
  return isWorker ? pathname.replace(/(assets|src\/live)\/[^/]*$/, '') : pathname.slice(0, pathname.lastIndexOf('/') + 1);
}

export const base = baseOf(globalThis.location?.pathname ?? '/', globalThis.document === undefined);
