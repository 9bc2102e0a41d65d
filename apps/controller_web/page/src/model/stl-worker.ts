/** Reads an STL file beside the page, which stays responsive meanwhile. */
import { ModelError, type Reason } from './model-error.ts';
import { readStl, type Triangles } from './stl.ts';

export type StlAnswer = { triangles: Triangles } | { reason: Reason };

function answerTo(bytes: ArrayBuffer): StlAnswer {
  try {
    return { triangles: readStl(bytes) };
  } catch (error) {
    return { reason: error instanceof ModelError ? error.reason : 'damaged' };
  }
}

self.onmessage = ({ data }: MessageEvent<ArrayBuffer>) => {
  const answer = answerTo(data);
  const moved = 'triangles' in answer ? [answer.triangles.positions.buffer, answer.triangles.normals.buffer] : [];
  self.postMessage(answer, { transfer: moved });
};
