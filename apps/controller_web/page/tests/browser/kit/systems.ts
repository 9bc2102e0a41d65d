import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../../../../../..', import.meta.url));

/** How the programs of a build are started, and how files are named for them. */
export interface System {
  /** The program and its first arguments. */
  command: (program: string) => readonly [string, ...string[]];
  nameOf: (path: string) => string;
  /** Whether a program ends when the process that was started for it gets SIGTERM. */
  hasSignals: boolean;
}

const linuxPrograms = process.env['CONTROLLER_PROGRAMS'] ?? join(root, 'build/linux/bin');

export const linux: System = {
  command: (program) => [join(linuxPrograms, program)],
  nameOf: (path) => path,
  hasSignals: true,
};

/** The folder of the Windows build, if it is to be tested. */
export const windowsPrograms = process.env['CONTROLLER_WINDOWS_PROGRAMS'];

export const windows: System = {
  command: (program) => [join(root, 'cmake/run-in-wine'), join(windowsPrograms ?? '', `${program}.exe`)],
  nameOf: (path) => `Z:${path.replaceAll('/', '\\')}`,
  hasSignals: false,
};
