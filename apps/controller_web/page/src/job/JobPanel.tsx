import { useEffect, useRef } from 'preact/hooks';
import { ApiError } from '../api/client.ts';
import type { JobDetail } from '../api/types.ts';
import { useApp } from '../app.ts';
import { actions, applies } from '../jobs/actions.ts';
import { jobOf, type Job } from '../jobs/job.ts';
import { visible } from '../text/display.ts';
import { t } from '../text/text.ts';
import { errorText } from '../ui/errors.ts';
import { Icon } from '../ui/Icon.tsx';
import { jobTabs, type JobTab } from '../ui/route.ts';
import { StatusBadge } from '../ui/StatusBadge.tsx';
import { FilesView } from './FilesView.tsx';
import { LogView } from './LogView.tsx';
import { OriginView } from './OriginView.tsx';
import { Overview } from './Overview.tsx';
import { useDetail } from './use-detail.ts';

function Actions({ job }: { job: Job }) {
  const app = useApp();
  if (app.session.queue.value.readOnly) return null;
  return (
    <div class="panel-actions">
      {actions
        .filter((action) => applies(action, job))
        .map((action) => (
          <button key={action} type="button" class={action === 'delete' ? 'danger-text' : ''} onClick={() => app.request(action, [job.id])}>
            {t(`action.${action}`)}
          </button>
        ))}
    </div>
  );
}

const nextTab: Record<string, number> = { ArrowRight: 1, ArrowLeft: -1 };

function Tabs({ id, tab }: { id: string; tab: JobTab }) {
  const app = useApp();
  const onKeyDown = (event: KeyboardEvent): void => {
    const step = nextTab[event.key];
    const next = step && jobTabs[(jobTabs.indexOf(tab) + step + jobTabs.length) % jobTabs.length];
    if (!next) return;
    app.go({ view: 'job', id, tab: next });
    document.getElementById(`tab-${next}`)?.focus();
  };
  return (
    <div class="tabs" role="tablist" aria-label={t('job.parts')} onKeyDown={onKeyDown}>
      {jobTabs.map((name) => (
        <button
          key={name}
          id={`tab-${name}`}
          type="button"
          role="tab"
          aria-selected={name === tab}
          aria-controls="panel-content"
          tabIndex={name === tab ? 0 : -1}
          onClick={() => app.go({ view: 'job', id, tab: name })}
        >
          {t(`job.${name}`)}
        </button>
      ))}
    </div>
  );
}

function Content({ job, detail, tab }: { job: Job; detail: JobDetail | undefined; tab: JobTab }) {
  switch (tab) {
    case 'overview':
      return <Overview job={job} detail={detail} />;
    case 'log':
      return <LogView job={job} />;
    case 'files':
      return <FilesView job={job} />;
    case 'origin':
      return <OriginView job={job} provenance={detail?.provenance} isLoaded={detail !== undefined} />;
  }
}

function Head({ job, title }: { job: Job | undefined; title: string }) {
  const app = useApp();
  const heading = useRef<HTMLHeadingElement>(null);
  useEffect(() => {
    if (document.activeElement === document.body) heading.current?.focus();
  }, []);
  return (
    <header class="panel-head">
      <button type="button" class="plain" aria-label={t('action.backToList')} onClick={() => app.go({ view: 'queue' })}>
        <Icon name="close" />
      </button>
      <h2 ref={heading} tabIndex={-1}>
        {title}
      </h2>
      {job && <StatusBadge job={job} />}
      {job && <Actions job={job} />}
    </header>
  );
}

function Missing({ error }: { error: unknown }) {
  const isGone = error instanceof ApiError && error.status === 404;
  const text = error ? (isGone ? t('job.gone') : errorText(error)) : t('empty.loading');
  return <p class="panel-note">{text}</p>;
}

/** One job, beside the list or, on narrow screens, instead of it. */
export function JobPanel({ id, tab }: { id: string; tab: JobTab }) {
  const app = useApp();
  const listed = app.jobs.value.store.find(id);
  const { detail, error } = useDetail(id, listed);
  const job = listed ?? (detail && !error ? jobOf(detail) : undefined);
  const title = job ? t('job.title', job.number, visible(job.scenario)) : t('job.name');
  return (
    <section class="panel" aria-label={t('job.name')}>
      <Head job={job} title={title} />
      <Tabs id={id} tab={tab} />
      <div id="panel-content" class={`panel-content content-${tab}`} role="tabpanel" aria-labelledby={`tab-${tab}`} tabIndex={0}>
        {job ? <Content job={job} detail={detail} tab={tab} /> : <Missing error={error} />}
      </div>
    </section>
  );
}
