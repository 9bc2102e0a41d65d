export type FileKind = 'picture' | 'model' | 'text' | 'other';

const extensions: Record<Exclude<FileKind, 'other'>, readonly string[]> = {
  picture: ['png', 'jpg', 'jpeg', 'gif', 'webp', 'avif', 'bmp', 'svg'],
  model: ['stl', 'glb', 'gltf', '3mf'],
  text: ['txt', 'csv', 'tsv', 'json', 'md', 'log', 'xml', 'html', 'htm', 'ini', 'yaml', 'yml', 'obj', 'ply', 'off', 'step', 'stp', 'igs', 'iges', 'brep', 'inp', 'dat', 'py', 'rb', 'scad', 'geo', 'msh', 'frd'],
};

export const extensionOf = (path: string): string => /\.([^./\\]+)$/.exec(path)?.[1]?.toLowerCase() ?? '';

/** How the page shows a file. What it does not know is offered for download only. */
export function kindOf(path: string): FileKind {
  const extension = extensionOf(path);
  for (const [kind, known] of Object.entries(extensions)) if (known.includes(extension)) return kind as FileKind;
  return 'other';
}
