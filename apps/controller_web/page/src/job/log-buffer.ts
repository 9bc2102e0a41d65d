// Colours and movements of the cursor, which only a terminal understands.
const escapeSequences = /\u001b(?:\[[0-?]*[ -/]*[@-~]|\][^\u0007\u001b]*(?:\u0007|\u001b\\)?|[@-Z\\-_])/g;
const longestLine = 5000;

function cleaned(line: string): string {
  const text = line.replace(escapeSequences, '').replace(/\r+$/, '');
  const shown = text.slice(text.lastIndexOf('\r') + 1);
  return shown.length > longestLine ? `${shown.slice(0, longestLine)} …` : shown;
}

/** The lines of a log that arrives in parts. Keeps at most `mostCharacters`, dropping lines from the beginning. */
export class LogBuffer {
  private finished: string[] = [];
  private unfinished = '';
  private size = 0;
  private dropped = 0;

  constructor(private readonly mostCharacters = 8_000_000) {}

  get count(): number {
    return this.finished.length + (this.unfinished ? 1 : 0);
  }

  /** How many lines were dropped. */
  get droppedLines(): number {
    return this.dropped;
  }

  line(index: number): string {
    return index < this.finished.length ? (this.finished[index] ?? '') : cleaned(this.unfinished);
  }

  append(text: string): void {
    const lines = (this.unfinished + text).split('\n');
    this.unfinished = (lines.pop() ?? '').slice(-2 * longestLine);
    for (const line of lines) {
      const shown = cleaned(line);
      this.finished.push(shown);
      this.size += shown.length + 1;
    }
    if (this.size > this.mostCharacters) this.drop();
  }

  /** The lines that contain `text`, whatever the case of letters; at most 10,000. */
  find(text: string): number[] {
    const wanted = text.toLowerCase();
    const found: number[] = [];
    if (!wanted) return found;
    for (let index = 0; index < this.count && found.length < 10_000; index++) {
      if (this.line(index).toLowerCase().includes(wanted)) found.push(index);
    }
    return found;
  }

  private drop(): void {
    let count = 0;
    while (this.size > this.mostCharacters * 0.75 && count < this.finished.length) this.size -= (this.finished[count++]?.length ?? 0) + 1;
    this.finished.splice(0, count);
    this.dropped += count;
  }
}

/** The parts of a line: those at odd places are occurrences of `text`. */
export function splitAt(line: string, text: string): string[] {
  if (!text) return [line];
  const lower = line.toLowerCase();
  const wanted = text.toLowerCase();
  // Few characters change their length in lower case; such a line is shown without marks.
  if (lower.length !== line.length) return [line];
  const parts: string[] = [];
  let from = 0;
  for (let at = lower.indexOf(wanted); at >= 0; at = lower.indexOf(wanted, from)) {
    parts.push(line.slice(from, at), line.slice(at, at + wanted.length));
    from = at + wanted.length;
  }
  return [...parts, line.slice(from)];
}
