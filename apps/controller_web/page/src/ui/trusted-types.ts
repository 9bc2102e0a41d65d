import { base } from '../api/base.ts';

interface TypesFactory {
  createPolicy(name: string, rules: { createHTML: Rule; createScriptURL: Rule }): unknown;
}
type Rule = (input: string, type: string, sink: string) => string | undefined;

function ownScript(address: string): string | undefined {
  const url = new URL(address, document.baseURI);
  return url.origin === location.origin && url.pathname.startsWith(base) && /^(assets|src|node_modules)\//.test(url.pathname.slice(base.length)) ? address : undefined;
}

/** Only the parser of documents gets texts: what it makes is inert, as the reader of 3MF models needs it. Nothing may be
 * set as HTML of the page. */
const parsedText: Rule = (text, _type, sink) => (sink === 'DOMParser parseFromString' ? text : undefined);

/** The policy that the server's content security policy names: workers only from the server's own files. */
export function allowOwnScripts(): void {
  const factory = (globalThis as { trustedTypes?: TypesFactory }).trustedTypes;
  factory?.createPolicy('default', { createHTML: parsedText, createScriptURL: ownScript });
}
