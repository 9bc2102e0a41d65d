import { signal, type ReadonlySignal } from '@preact/signals';

/** A signal that changes at most once per animation frame, however often `touch` is called. */
export class FrameSignal {
  private readonly count = signal(0);
  private isScheduled = false;

  get changed(): ReadonlySignal<number> {
    return this.count;
  }

  touch = (): void => {
    if (this.isScheduled) return;
    this.isScheduled = true;
    requestAnimationFrame(() => {
      this.isScheduled = false;
      this.count.value++;
    });
  };
}
