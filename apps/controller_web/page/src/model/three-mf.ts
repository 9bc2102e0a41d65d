/** What is checked of a 3MF file, a ZIP archive with descriptions in XML, before the library reads it. */
import { strFromU8, unzipSync, type Unzipped } from 'three/examples/jsm/libs/fflate.module.js';
import { limits, ModelError } from './model-error.ts';

type Parts = ReadonlyMap<string, readonly string[]>;

const partName = /^3D\/.*\.model$/i;
/** The beginning of an object or of a part of it, with its name. */
const element = /<(?:\w+:)?(object|component|item)\s[^<>]*?\b(?:object)?id\s*=\s*["']([^"']*)["']/g;

/** The descriptions of the model. Sizes are checked before anything is unpacked. */
function descriptions(bytes: Uint8Array): Unzipped {
  let size = 0;
  let files = 0;
  const isWithin = (file: { originalSize: number }): boolean => (size += file.originalSize) <= limits.unpackedBytes && ++files <= limits.objects;
  return unzipSync(bytes, {
    filter: (file) => {
      if (!isWithin(file)) throw new ModelError('tooLarge');
      return partName.test(file.name);
    },
  });
}

function unpacked(bytes: Uint8Array): string[] {
  try {
    return Object.values(descriptions(bytes)).map((content) => strFromU8(content));
  } catch (error) {
    if (error instanceof ModelError) throw error;
    throw new ModelError('notZip');
  }
}

/** Which objects each object is made of. */
function partsIn(text: string): Parts {
  const parts = new Map<string, string[]>();
  let current: string[] = [];
  parts.set('', []);
  for (const [, kind, id = ''] of text.matchAll(element)) {
    if (kind === 'component') current.push(id);
    else if (kind === 'item') parts.get('')?.push(id);
    else parts.set(id, (current = []));
  }
  return parts;
}

/** How many objects the model has when each is copied wherever it is used: few lines can make billions. */
function countOf(id: string, parts: Parts, counts: Map<string, number>): number {
  const known = counts.get(id);
  if (known !== undefined) return known;
  counts.set(id, Number.POSITIVE_INFINITY); // What contains itself has no end.
  const count = (parts.get(id) ?? []).reduce((sum, part) => sum + countOf(part, parts, counts), 1);
  counts.set(id, count);
  return count;
}

function checkObjects(text: string): void {
  const parts = partsIn(text);
  if (parts.size > limits.objects) throw new ModelError('tooLarge');
  const counts = new Map<string, number>();
  for (const id of parts.keys()) countOf(id, parts, counts);
  if ([...counts.values()].some((count) => count === Number.POSITIVE_INFINITY)) throw new ModelError('circular');
  if ([...counts.values()].some((count) => count > limits.objects)) throw new ModelError('tooLarge');
}

/** Throws a `ModelError` for a file that is damaged, or that would take more memory than a model may. */
export function checkThreeMf(bytes: ArrayBuffer): void {
  const texts = unpacked(new Uint8Array(bytes));
  if (texts.length === 0) throw new ModelError('noModelPart');
  for (const text of texts) {
    // The format has no declarations of types; only entities that grow without bound would need them.
    if (/<!DOCTYPE|<!ENTITY/i.test(text)) throw new ModelError('damaged');
    checkObjects(text);
  }
}
