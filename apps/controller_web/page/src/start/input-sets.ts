/** One file that the user has chosen: its path with the server. */
export interface ChosenFile {
  path: string;
  name: string;
}

/** The input sets of the jobs: one job for each `size` files, in the order in which they were chosen. */
export function inputSetsOf(files: readonly ChosenFile[], size: number): string[][] {
  const sets: string[][] = [];
  for (let first = 0; first < files.length; first += size) sets.push(files.slice(first, first + size).map((file) => file.path));
  return sets;
}

/** Whether each job gets all its files. */
export const areComplete = (files: readonly ChosenFile[], size: number): boolean => files.length > 0 && files.length % size === 0;

/** Whether a scenario that accepts these extensions takes the file; an empty list accepts all. */
export function isAccepted(name: string, extensions: readonly string[]): boolean {
  const lower = name.toLowerCase();
  return extensions.length === 0 || extensions.some((extension) => new RegExp(`\\.${escaped(extension.toLowerCase())}(\\.\\d+)?$`).test(lower));
}

const escaped = (text: string): string => text.replace(/[^a-z0-9]/g, '\\$&');
