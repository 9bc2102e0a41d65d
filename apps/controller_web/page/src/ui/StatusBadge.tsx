import { groupOf, type Job } from '../jobs/job.ts';
import { t } from '../text/text.ts';
import { Icon, type IconName } from './Icon.tsx';

const iconOf = (job: Job): IconName => (job.status === 'Queued' && job.hold ? 'held' : groupOf(job));

/** The state of a job by shape, colour and word. */
export function StatusBadge({ job }: { job: Job }) {
  const word = job.status === 'Queued' && job.hold ? t('status.held') : t(`status.${job.status}`);
  return (
    <span class={`status status-${groupOf(job)}`}>
      <Icon name={iconOf(job)} />
      {word}
    </span>
  );
}
