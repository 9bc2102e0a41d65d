import { useApp } from '../app.ts';
import { noFilter } from '../jobs/filter.ts';
import { formatNumber, t } from '../text/text.ts';
import { fragmentOf } from '../ui/route.ts';

function Loading({ expected }: { expected: number }) {
  return (
    <div class="empty">
      <p>{expected > 0 ? t('empty.loadingCount', formatNumber(expected)) : t('empty.loading')}</p>
    </div>
  );
}

/** What is shown instead of rows: nothing there yet, nothing that the filter shows, or not yet fetched. */
export function Empty() {
  const app = useApp();
  const expected = app.session.expected.value;
  if (expected >= 0 && !app.session.loadError.value) return <Loading expected={expected} />;
  if (app.jobs.value.store.size === 0)
    return (
      <div class="empty">
        <h2>{t('empty.noJobs')}</h2>
        <p>{t('empty.noJobsHint')}</p>
        {!app.session.queue.value.readOnly && (
          <a class="button primary" href={fragmentOf({ view: 'start' })}>
            {t('action.new')}
          </a>
        )}
      </div>
    );
  return (
    <div class="empty">
      <h2>{t('empty.noMatch')}</h2>
      <p>{t('empty.noMatchHint')}</p>
      <button type="button" onClick={() => (app.filter.value = noFilter)}>
        {t('action.showAll')}
      </button>
    </div>
  );
}
