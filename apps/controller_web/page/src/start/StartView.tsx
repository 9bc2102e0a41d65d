import { visible } from '../text/display.ts';
import { counted, t } from '../text/text.ts';
import { errorText } from '../ui/errors.ts';
import { Icon } from '../ui/Icon.tsx';
import { fragmentOf } from '../ui/route.ts';
import { DropArea } from './DropArea.tsx';
import { InputBrowser } from './InputBrowser.tsx';
import { areComplete, type ChosenFile } from './input-sets.ts';
import { ParameterFields } from './ParameterFields.tsx';
import { useStartForm, type StartForm } from './use-start-form.ts';

function ScenarioFields({ form }: { form: StartForm }) {
  const { answer, error } = form.scenarios;
  if (error !== undefined) return <p class="problem">{errorText(error)}</p>;
  if (answer && answer.scenarios.length === 0) return <p class="problem">{t('start.noScenarios')}</p>;
  return (
    <>
      <label class="field">
        <span>{t('start.scenario')}</span>
        <select value={form.scenario?.id ?? ''} onChange={(event) => form.setScenario(event.currentTarget.value)}>
          {answer?.scenarios.map((scenario) => (
            <option key={scenario.id} value={scenario.id}>
              {visible(scenario.name)}
            </option>
          ))}
        </select>
      </label>
      {form.setsError !== undefined && <p class="problem">{errorText(form.setsError)}</p>}
      {form.sets.length > 0 && (
        <label class="field">
          <span>{t('start.parameterSet')}</span>
          <select value={form.set?.id ?? ''} onChange={(event) => form.chooseSet(event.currentTarget.value)}>
            {form.sets.map((set) => (
              <option key={set.id} value={set.id}>
                {visible(set.displayName || set.id)}
              </option>
            ))}
          </select>
        </label>
      )}
      {form.set && <ParameterFields set={form.set} values={form.values} onChange={form.setValue} />}
    </>
  );
}

function Chosen({ form }: { form: StartForm }) {
  if (form.files.length === 0) return null;
  const remove = (index: number): void => form.setFiles((files) => files.filter((_file, place) => place !== index));
  return (
    <ol class="chosen" aria-label={t('start.chosen')}>
      {form.files.map((file, index) => (
        <li key={`${index} ${file.path}`} class={form.setSize > 1 && index % form.setSize === 0 ? 'set-start' : ''}>
          <bdi title={visible(file.path)}>{visible(file.name)}</bdi>
          <button type="button" class="plain" aria-label={t('start.remove', visible(file.name))} onClick={() => remove(index)}>
            <Icon name="close" />
          </button>
        </li>
      ))}
    </ol>
  );
}

function InputFields({ form }: { form: StartForm }) {
  const nextInput = form.scenario?.inputs?.[form.files.length % form.setSize];
  const extensions = nextInput?.extensions ?? [];
  const choose = (file: ChosenFile): void => form.setFiles((files) => [...files, file]);
  return (
    <fieldset class="card">
      <legend>{t('fact.inputs')}</legend>
      {form.setSize > 1 && <p class="quiet">{t('start.filesPerJob', form.setSize)}</p>}
      {extensions.length > 0 && <p class="quiet">{t('start.kinds', extensions.map((name) => `.${name}`).join(', '))}</p>}
      <DropArea extensions={extensions} onChoose={choose} />
      <InputBrowser extensions={extensions} onChoose={choose} />
      <Chosen form={form} />
    </fieldset>
  );
}

function OptionFields({ form }: { form: StartForm }) {
  return (
    <fieldset class="card">
      <legend>{t('start.options')}</legend>
      <label class="field">
        <span>{t('start.folder')}</span>
        <input type="text" required spellcheck={false} value={form.folder} onInput={(event) => form.setFolder(event.currentTarget.value)} />
        <small>{t('start.folderHint')}</small>
      </label>
      <label class="field">
        <span>{t('field.priority')}</span>
        <input type="number" min={-1000} max={1000} step={1} value={form.priority} onInput={(event) => form.setPriority(event.currentTarget.value)} />
        <small>{t('field.priorityHint')}</small>
      </label>
      <label class="check-field">
        <input type="checkbox" checked={form.isOnHold} onChange={(event) => form.setOnHold(event.currentTarget.checked)} />
        <span>{t('start.onHold')}</span>
      </label>
    </fieldset>
  );
}

function missing(form: StartForm): string {
  if (form.files.length === 0) return t('start.needsFiles');
  if (!areComplete(form.files, form.setSize)) return t('start.needsAllFiles', form.setSize);
  if (!form.folder.trim()) return t('start.needsFolder');
  return '';
}

/** The form that puts jobs into the queue: a scenario, its parameters, and one or more sets of input files. */
export function StartView() {
  const form = useStartForm();
  const onSubmit = (event: Event): void => {
    event.preventDefault();
    if (form.isReady) void form.submit();
  };
  return (
    <form class="start" onSubmit={onSubmit}>
      <h2>{t('start.title')}</h2>
      <div class="start-columns">
        <fieldset class="card">
          <legend>{t('start.what')}</legend>
          <ScenarioFields form={form} />
        </fieldset>
        <InputFields form={form} />
        <OptionFields form={form} />
      </div>
      <footer class="start-foot">
        <span class="quiet" role="status">
          {missing(form)}
        </span>
        <a class="button" href={fragmentOf({ view: 'queue' })}>
          {t('action.back')}
        </a>
        <button type="submit" class="primary" disabled={!form.isReady}>
          {form.files.length < form.setSize ? t('start.submit') : counted('start.submit', Math.floor(form.files.length / form.setSize))}
        </button>
      </footer>
    </form>
  );
}
