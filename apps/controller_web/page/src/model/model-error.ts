/** Why a model cannot be shown; each has a text `reason.NAME` in every language. */
export type Reason =
  | 'cutOff'
  | 'damaged'
  | 'noTriangles'
  | 'notNumbers'
  | 'tooLarge'
  | 'notZip'
  | 'noModelPart'
  | 'circular'
  | 'version'
  | 'extension'
  | 'elsewhere';

/** A model that cannot be shown. `detail` names what the text of the reason has a place for. */
export class ModelError extends Error {
  constructor(
    readonly reason: Reason,
    readonly detail = '',
  ) {
    super(`${reason} ${detail}`);
  }
}

/** What one model may have, so that a small file cannot make the browser stop. */
export const limits = {
  triangles: 20_000_000,
  objects: 100_000,
  zeros: 1_000_000,
  unpackedBytes: 512_000_000,
} as const;
