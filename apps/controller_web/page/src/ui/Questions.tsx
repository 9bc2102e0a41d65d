import { useState } from 'preact/hooks';
import { useApp, type Question } from '../app.ts';
import type { Action } from '../jobs/actions.ts';
import { counted, t } from '../text/text.ts';
import { closeDialog, Dialog } from './Dialog.tsx';
import { Help } from './Help.tsx';

function Buttons({ word, danger = false }: { word: string; danger?: boolean }) {
  return (
    <footer class="dialog-foot">
      <button type="button" onClick={closeDialog}>
        {t('action.back')}
      </button>
      <button type="submit" class={danger ? 'danger' : 'primary'}>
        {word}
      </button>
    </footer>
  );
}

function Confirmation({ action, ids }: { action: Action; ids: readonly string[] }) {
  const app = useApp();
  const close = (): void => void (app.question.value = undefined);
  const onSubmit = (event: Event): void => {
    event.preventDefault();
    closeDialog(event);
    void app.act(action, ids);
  };
  return (
    <Dialog title={counted(`confirm.${action}`, ids.length)} onClose={close}>
      <form onSubmit={onSubmit}>
        {action === 'delete' && <p>{t('confirm.deleteConsequence')}</p>}
        {action === 'cancel' && <p>{t('confirm.cancelConsequence')}</p>}
        <Buttons word={t(`action.${action}`)} danger={action === 'delete' || action === 'cancel'} />
      </form>
    </Dialog>
  );
}

function PriorityQuestion({ ids }: { ids: readonly string[] }) {
  const app = useApp();
  const [priority, setPriority] = useState(String(app.store.find(ids[0] ?? '')?.priority ?? 0));
  const close = (): void => void (app.question.value = undefined);
  const onSubmit = (event: Event): void => {
    event.preventDefault();
    closeDialog(event);
    void app.act('priority', ids, Number(priority));
  };
  return (
    <Dialog title={counted('confirm.priority', ids.length)} onClose={close}>
      <form onSubmit={onSubmit}>
        <label class="field">
          <span>{t('field.priority')}</span>
          <input type="number" min={-1000} max={1000} step={1} required value={priority} onInput={(event) => setPriority(event.currentTarget.value)} />
          <small>{t('field.priorityHint')}</small>
        </label>
        <Buttons word={t('action.change')} />
      </form>
    </Dialog>
  );
}

function dialogOf(question: Question, close: () => void) {
  switch (question.kind) {
    case 'help':
      return <Help onClose={close} />;
    case 'confirm':
      return <Confirmation action={question.action} ids={question.ids} />;
    case 'priority':
      return <PriorityQuestion ids={question.ids} />;
  }
}

/** The open dialog, if there is one. */
export function Questions() {
  const app = useApp();
  const question = app.question.value;
  return question ? dialogOf(question, () => (app.question.value = undefined)) : null;
}
