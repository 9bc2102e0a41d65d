import { readdirSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import type { Plugin } from 'vite';

const directoryOf = (moduleId: string): string | undefined => /^.*\/node_modules\/(?:@[^/]+\/)?[^/]+(?=\/)/.exec(moduleId.replaceAll('\\', '/'))?.[0];

function licenceOf(directory: string): string {
  const file = readdirSync(directory).find((name) => /^licen[cs]e/i.test(name));
  if (!file) throw new Error(`${directory} has no file with its licence.`);
  const { name, version } = JSON.parse(readFileSync(join(directory, 'package.json'), 'utf8')) as { name: string; version: string };
  return `${name} ${version}\n\n${readFileSync(join(directory, file), 'utf8').trim()}\n`;
}

/** Writes the licences of all libraries in the bundle into `licences.txt`, which the page links. */
export function licences(): Plugin {
  return {
    name: 'licences',
    generateBundle(_options, bundle) {
      const modules = Object.values(bundle).flatMap((file) => (file.type === 'chunk' ? file.moduleIds : []));
      const directories = new Set(modules.flatMap((id) => directoryOf(id) ?? []));
      const texts = [...directories].sort().map(licenceOf);
      if (texts.length === 0) this.error('The bundle has no libraries: their licences would be missing.');
      this.emitFile({ type: 'asset', fileName: 'licences.txt', source: texts.join(`\n${'-'.repeat(72)}\n\n`) });
    },
  };
}
