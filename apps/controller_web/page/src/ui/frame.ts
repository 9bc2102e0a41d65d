import { signal, type ReadonlySignal } from '@preact/signals';

/** A signal that changes at most once per animation frame, however often `touch` is called. Its value is each time a new
 * copy of the same object, which leads to data that change in place. */
export class FrameSignal<Data extends object> {
  private readonly current;
  private isScheduled = false;

  constructor(private readonly data: Data) {
    this.current = signal(data);
  }

  get changed(): ReadonlySignal<Data> {
    return this.current;
  }

  touch = (): void => {
    if (this.isScheduled) return;
    this.isScheduled = true;
    requestAnimationFrame(() => {
      this.isScheduled = false;
      this.current.value = { ...this.data };
    });
  };
}
