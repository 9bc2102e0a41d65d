import type { JobRow } from '../api/types.ts';

/** A row for tests. */
export function row(number: number, fields: Partial<JobRow> = {}): JobRow {
  return { number, id: `id${number}`, status: 'Success', scenario: 'mesh_report', inputFiles: [`/parts/part_${number}.stl`], ...fields };
}
