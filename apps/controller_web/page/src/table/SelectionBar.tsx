import { useApp, type App } from '../app.ts';
import { actions, applies, type Action } from '../jobs/actions.ts';
import { nothing } from '../jobs/selection.ts';
import { counted, formatNumber, t } from '../text/text.ts';

function idsFor(app: App, action: Action): string[] {
  return [...app.selection.value.ids].filter((id) => {
    const job = app.jobs.value.store.find(id);
    return job !== undefined && applies(action, job);
  });
}

function ActionButton({ action }: { action: Action }) {
  const app = useApp();
  const ids = idsFor(app, action);
  if (ids.length === 0) return null;
  const isForAll = ids.length === app.selection.value.ids.size;
  return (
    <button type="button" class={action === 'delete' ? 'danger-text' : ''} onClick={() => app.request(action, ids)}>
      {t(`action.${action}`)}
      {!isForAll && <span class="quiet"> {formatNumber(ids.length)}</span>}
    </button>
  );
}

/** What can be done with the selected jobs; nothing while none is selected. */
export function SelectionBar() {
  const app = useApp();
  const { size } = app.selection.value.ids;
  if (size === 0) return null;
  return (
    <div class="selection" role="toolbar" aria-label={t('table.actions')}>
      <b>{counted('table.selected', size)}</b>
      {!app.session.queue.value.readOnly && actions.map((action) => <ActionButton key={action} action={action} />)}
      <button type="button" class="plain" onClick={() => (app.selection.value = nothing(app.selection.value))}>
        {t('table.selectNone')}
      </button>
    </div>
  );
}
