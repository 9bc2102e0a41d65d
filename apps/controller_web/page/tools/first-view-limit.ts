import { gzipSync } from 'node:zlib';
import type { Plugin, Rolldown } from 'vite';

type Output = Rolldown.OutputChunk | Rolldown.OutputAsset;

function compressedSize(file: Output | undefined): number {
  if (!file) return 0;
  return gzipSync(file.type === 'chunk' ? file.code : file.source, { level: 9 }).length;
}

/** The files that the browser fetches before it shows anything: the entry, what it imports, and their styles. */
function filesOfFirstView(bundle: Record<string, Output>): Set<string> {
  const found = new Set<string>(['index.html']);
  const visit = (name: string): void => {
    const file = bundle[name];
    if (found.has(name) || file?.type !== 'chunk') return;
    found.add(name);
    file.imports.forEach(visit);
    file.viteMetadata?.importedCss.forEach((style) => found.add(style));
  };
  Object.values(bundle).filter((file) => file.type === 'chunk' && file.isEntry).forEach((file) => visit(file.fileName));
  return found;
}

/** Fails the build if the first view needs more than `limit` compressed bytes. */
export function firstViewLimit(limit: number): Plugin {
  return {
    name: 'first-view-limit',
    enforce: 'post',
    generateBundle(_options, bundle) {
      const files = [...filesOfFirstView(bundle)];
      const size = files.reduce((sum, name) => sum + compressedSize(bundle[name]), 0);
      if (size > limit) this.error(`The first view needs ${size} compressed bytes, more than ${limit}: ${files.join(', ')}`);
      this.info(`first view: ${size} of at most ${limit} compressed bytes`);
    },
  };
}
