import { signal } from '@preact/signals';

export interface Notice {
  readonly key: number;
  readonly kind: 'done' | 'error';
  readonly text: string;
}

const shownFor = 6000;

/** Short messages about what was done. Errors stay until the user closes them. */
export class Notices {
  readonly list = signal<readonly Notice[]>([]);
  private lastKey = 0;

  done(text: string): void {
    const key = this.add('done', text);
    setTimeout(() => this.close(key), shownFor);
  }

  error(text: string): void {
    this.add('error', text);
  }

  close(key: number): void {
    this.list.value = this.list.value.filter((notice) => notice.key !== key);
  }

  private add(kind: Notice['kind'], text: string): number {
    const key = ++this.lastKey;
    const others = this.list.value.filter((notice) => notice.text !== text);
    this.list.value = [...others, { key, kind, text }].slice(-5);
    return key;
  }
}
