import { useApp } from '../app.ts';
import { durationOf, fileNameOf, groupOf, type Job } from '../jobs/job.ts';
import { durationText, fullTimeText, timeText, visible } from '../text/display.ts';
import { t, type TextKey } from '../text/text.ts';

export function InputNames({ job }: { job: Job }) {
  const [first = '', ...others] = job.inputs;
  return (
    <span title={job.inputs.map(visible).join('\n')}>
      <bdi>{visible(fileNameOf(first))}</bdi>
      {others.length > 0 && <span class="quiet"> +{others.length}</span>}
    </span>
  );
}

/** The bar repeats the number beside it. */
export function Bar({ progress, kind }: { progress: number; kind: string }) {
  return (
    <span class={`bar bar-${kind}`} aria-hidden="true">
      <span style={{ transform: `scaleX(${Math.min(100, Math.max(0, progress)) / 100})` }} />
    </span>
  );
}

function waitText(job: Job): string {
  if (!job.waitReason) return '';
  return t(`wait.${job.waitReason}` as TextKey, visible(job.waitName));
}

export function Progress({ job }: { job: Job }) {
  const group = groupOf(job);
  if (group === 'queued') return <span class="quiet">{waitText(job)}</span>;
  const hasBar = group === 'running'; // The list has 100 % for all that have ended, however far they came.
  return (
    <>
      {hasBar && <Bar progress={job.progress} kind={group} />}
      {hasBar && <span class="percent">{job.progress} %</span>}
      <span class="message" title={visible(job.message)}>
        <bdi>{visible(job.message)}</bdi>
      </span>
    </>
  );
}

/** Reads the clock only while the job runs, so that ended jobs are not drawn every second. */
export function Duration({ job }: { job: Job }) {
  const app = useApp();
  return <>{durationText(durationOf(job, groupOf(job) === 'running' ? app.now.value : 0))}</>;
}

export function Started({ job }: { job: Job }) {
  const app = useApp();
  return <span title={fullTimeText(job.started)}>{timeText(job.started, app.now.peek())}</span>;
}
