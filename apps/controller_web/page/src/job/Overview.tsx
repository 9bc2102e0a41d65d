import type { ComponentChildren } from 'preact';
import { addressOf, jobPath } from '../api/client.ts';
import type { JobDetail } from '../api/types.ts';
import { useApp } from '../app.ts';
import { durationOf, groupOf, isOver, timeOf, type Job } from '../jobs/job.ts';
import { Bar } from '../table/cells.tsx';
import { durationText, fullTimeText, visible } from '../text/display.ts';
import { t } from '../text/text.ts';
import { CopyButton } from '../ui/CopyButton.tsx';
import { fragmentOf } from '../ui/route.ts';
import { ProgressChart } from './ProgressChart.tsx';

export function Fact({ name, children }: { name: string; children: ComponentChildren }) {
  if (children === undefined || children === null || children === '' || children === 0) return null;
  return (
    <div class="fact">
      <dt>{name}</dt>
      <dd>{children}</dd>
    </div>
  );
}

export function PathText({ path }: { path: string | undefined }) {
  if (!path) return null;
  return (
    <span class="path">
      <bdi>{visible(path)}</bdi>
      <CopyButton text={path} />
    </span>
  );
}

function Messages({ job, detail }: { job: Job; detail: JobDetail | undefined }) {
  const messages = detail?.messages?.length ? detail.messages : job.message ? [job.message] : [];
  if (messages.length === 0) return null;
  return (
    <ul class={`messages messages-${groupOf(job)}`} aria-label={t('job.messages')}>
      {messages.map((message, index) => (
        <li key={index}>
          <bdi>{message.split('\n').map(visible).join('\n')}</bdi>
        </li>
      ))}
    </ul>
  );
}

function RunningState({ job }: { job: Job }) {
  const app = useApp();
  const points = app.jobs.value.progress.of(job.id);
  return (
    <>
      {groupOf(job) === 'running' && (
        <div class="big-progress" role="progressbar" aria-valuenow={job.progress} aria-valuemin={0} aria-valuemax={100} aria-label={t('column.progress')}>
          <Bar progress={job.progress} kind="running" />
          <b>{job.progress} %</b>
        </div>
      )}
      {points.length > 2 && <ProgressChart points={points} end={isOver(job) ? 0 : app.now.value} />}
    </>
  );
}

function Times({ job, detail }: { job: Job; detail: JobDetail | undefined }) {
  const app = useApp();
  const waited = job.queued && (job.started || !isOver(job)) ? (job.started || app.now.value) - job.queued : -1;
  return (
    <>
      <Fact name={t('fact.queued')}>{fullTimeText(job.queued)}</Fact>
      <Fact name={t('fact.started')}>{fullTimeText(job.started)}</Fact>
      <Fact name={t('fact.ended')}>{fullTimeText(job.ended)}</Fact>
      <Fact name={t('fact.waited')}>{durationText(waited)}</Fact>
      <Fact name={t('fact.ran')}>{durationText(durationOf(job, app.now.value))}</Fact>
      <Fact name={t('fact.notBefore')}>{fullTimeText(timeOf(detail?.notBefore))}</Fact>
    </>
  );
}

function JobLinks({ ids }: { ids: readonly string[] | undefined }) {
  const app = useApp();
  return (
    <>
      {ids?.map((id) => (
        <a key={id} class="job-link" href={fragmentOf({ view: 'job', id, tab: 'overview' })}>
          {app.store.find(id)?.number ?? id}
        </a>
      ))}
    </>
  );
}

function AttemptLogs({ detail }: { detail: JobDetail }) {
  return (
    <>
      {detail.attemptLogs?.map((attempt) => (
        <a key={attempt} class="job-link" href={addressOf(`${jobPath(detail.id)}/log?attempt=${attempt}`)} target="_blank" rel="noopener">
          {t('fact.attemptLog', attempt)}
        </a>
      ))}
    </>
  );
}

function Rules({ detail }: { detail: JobDetail }) {
  const needs = Object.entries(detail.needs ?? {}).map(([name, amount]) => `${visible(name)} ${amount}`);
  return (
    <>
      <Fact name={t('fact.attempt')}>{detail.attempts ? t('fact.attemptOf', detail.attempt ?? 0, detail.attempts) : ''}</Fact>
      <Fact name={t('fact.attemptLogs')}>{detail.attemptLogs?.length ? <AttemptLogs detail={detail} /> : ''}</Fact>
      <Fact name={t('fact.lastEnding')}>{visible(detail.lastEnding ?? '')}</Fact>
      <Fact name={t('fact.after')}>{detail.after?.length ? <JobLinks ids={detail.after} /> : ''}</Fact>
      <Fact name={t('fact.afterEnd')}>{detail.afterEnd?.length ? <JobLinks ids={detail.afterEnd} /> : ''}</Fact>
      <Fact name={t('fact.needs')}>{needs.join(', ')}</Fact>
      <Fact name={t('fact.timeLimit')}>{detail.timeLimit ? durationText(detail.timeLimit * 1000) : ''}</Fact>
      <Fact name={t('fact.silenceLimit')}>{detail.silenceLimit ? durationText(detail.silenceLimit * 1000) : ''}</Fact>
      <Fact name={t('fact.memoryLimit')}>{detail.memoryLimitMiB ? `${detail.memoryLimitMiB} MiB` : ''}</Fact>
      <Fact name={t('fact.cpuLimit')}>{detail.cpuLimitPercent ? `${detail.cpuLimitPercent} %` : ''}</Fact>
    </>
  );
}

function Steps({ detail }: { detail: JobDetail | undefined }) {
  const steps = detail?.progressReports ?? [];
  if (steps.length < 2) return null;
  return (
    <details class="steps">
      <summary>{t('job.steps', steps.length)}</summary>
      <ol>
        {steps.map((step, index) => (
          <li key={index}>
            <b>{step.progress} %</b> <bdi>{visible(step.message)}</bdi>
          </li>
        ))}
      </ol>
    </details>
  );
}

export function Overview({ job, detail }: { job: Job; detail: JobDetail | undefined }) {
  return (
    <>
      <RunningState job={job} />
      <Messages job={job} detail={detail} />
      <dl class="facts">
        <Fact name={t('fact.inputs')}>
          {job.inputs.length > 0 && job.inputs.map((path) => <PathText key={path} path={path} />)}
        </Fact>
        <Fact name={t('fact.argument')}>{detail?.runArgument ? <code>{visible(detail.runArgument)}</code> : ''}</Fact>
        <Fact name={t('fact.output')}>{detail?.outputFolder ? <PathText path={detail.outputFolder} /> : ''}</Fact>
        <Times job={job} detail={detail} />
        <Fact name={t('column.priority')}>{job.priority}</Fact>
        {detail && <Rules detail={detail} />}
        <Fact name={t('fact.text')}>{visible(detail?.extraText ?? '')}</Fact>
        <Fact name={t('fact.work')}>{detail?.workFolder ? <PathText path={detail.workFolder} /> : ''}</Fact>
        <Fact name={t('fact.id')}>
          <code>{job.id}</code>
        </Fact>
      </dl>
      <Steps detail={detail} />
    </>
  );
}
