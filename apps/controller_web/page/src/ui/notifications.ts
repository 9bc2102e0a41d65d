import { signal } from '@preact/signals';
import { fileNameOf, groupOf, isOver, type Job } from '../jobs/job.ts';
import type { Change, JobStore } from '../jobs/store.ts';
import { visible } from '../text/display.ts';
import { counted, t } from '../text/text.ts';

const isAllowed = (): boolean => typeof Notification !== 'undefined' && Notification.permission === 'granted';

export const isNotifying = signal(isAllowed() && localStorage.getItem('notify') === 'yes');

/** Asks the user for the permission if necessary. Returns false if there is none. */
export async function setNotifying(wanted: boolean): Promise<boolean> {
  if (wanted && typeof Notification !== 'undefined') await Notification.requestPermission();
  isNotifying.value = wanted && isAllowed();
  localStorage.setItem('notify', isNotifying.value ? 'yes' : 'no');
  return !wanted || isNotifying.value;
}

const hasJustEnded = ({ before, after }: Change): boolean =>
  before !== undefined && after !== undefined && !isOver(before) && isOver(after) && groupOf(after) !== 'cancelled';

function titleOf(jobs: readonly Job[]): string {
  const [job] = jobs;
  if (jobs.length > 1 || !job) return counted('notify.jobs', jobs.length);
  return t('notify.job', job.number, t(`status.${job.status}`), visible(fileNameOf(job.inputs[0] ?? '')));
}

/** All tabs say the same, and the browser shows what has the same tag once. */
export function notifyOfEnds(store: JobStore): void {
  store.onChange((changes) => {
    if (!isNotifying.value || document.visibilityState === 'visible') return;
    const ended = changes.filter(hasJustEnded).flatMap(({ after }) => after ?? []);
    const tag = ended.map((job) => job.id).join();
    if (ended.length > 0) new Notification(titleOf(ended), { tag, icon: 'favicon.svg' });
  });
}
