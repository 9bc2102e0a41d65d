import { describe, expect, it } from 'vitest';
import { LogBuffer, splitAt } from './log-buffer.ts';

const linesOf = (buffer: LogBuffer): string[] => Array.from({ length: buffer.count }, (_none, index) => buffer.line(index));

function bufferOf(...parts: string[]): LogBuffer {
  const buffer = new LogBuffer();
  parts.forEach((part) => buffer.append(part));
  return buffer;
}

describe('LogBuffer', () => {
  it('joins lines that arrive in parts', () => {
    expect(linesOf(bufferOf('on', 'e\r', '\ntwo\nthr', 'ee'))).toEqual(['one', 'two', 'three']);
  });

  it('leaves out what only a terminal understands, and keeps markup as text', () => {
    expect(linesOf(bufferOf('\u001b[31mred\u001b[0m <b>x</b>\n'))).toEqual(['red <b>x</b>']);
  });

  it('shows the last state of a line that was written over', () => {
    expect(linesOf(bufferOf('10 %\r20 %\r30 %\n'))).toEqual(['30 %']);
  });

  it('drops the beginning of a long log', () => {
    const buffer = new LogBuffer(1000);
    for (let line = 0; line < 1000; line++) buffer.append(`line ${line}\n`);
    expect(buffer.line(buffer.count - 1)).toBe('line 999');
    expect(buffer.droppedLines + buffer.count).toBe(1000);
    expect(buffer.count).toBeLessThan(150);
  });

  it('bounds a line that never ends', () => {
    const buffer = new LogBuffer();
    for (let part = 0; part < 100; part++) buffer.append('x'.repeat(10_000));
    expect(buffer.line(0).length).toBeLessThan(6000);
  });

  it('finds lines whatever the case of letters', () => {
    expect(bufferOf('Warning: thin\nok\nwarning\n').find('WARN')).toEqual([0, 2]);
    expect(bufferOf('a\n').find('')).toEqual([]);
  });
});

describe('splitAt', () => {
  it('puts the occurrences at odd places', () => {
    expect(splitAt('aXbxc', 'x')).toEqual(['a', 'X', 'b', 'x', 'c']);
    expect(splitAt('abc', '')).toEqual(['abc']);
    expect(splitAt('İxİ', 'x').join('')).toBe('İxİ');
  });
});
