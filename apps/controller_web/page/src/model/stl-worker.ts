/** Reads an STL file beside the page, which stays responsive meanwhile. */
import { readStl, type Triangles } from './stl.ts';

export type StlAnswer = { triangles: Triangles } | { error: string };

function answerTo(bytes: ArrayBuffer): StlAnswer {
  try {
    return { triangles: readStl(bytes) };
  } catch (error) {
    return { error: (error as Error).message };
  }
}

self.onmessage = ({ data }: MessageEvent<ArrayBuffer>) => {
  const answer = answerTo(data);
  const moved = 'triangles' in answer ? [answer.triangles.positions.buffer, answer.triangles.normals.buffer] : [];
  self.postMessage(answer, { transfer: moved });
};
