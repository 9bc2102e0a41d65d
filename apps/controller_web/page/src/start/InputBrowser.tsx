import { useState } from 'preact/hooks';
import type { InputEntry, Inputs } from '../api/types.ts';
import { sizeText, visible } from '../text/display.ts';
import { t } from '../text/text.ts';
import { errorText } from '../ui/errors.ts';
import { Icon } from '../ui/Icon.tsx';
import { isAccepted, type ChosenFile } from './input-sets.ts';
import { useResource } from './use-resource.ts';

interface Properties {
  extensions: readonly string[];
  onChoose: (file: ChosenFile) => void;
}

function Entry({ entry, isUsable, onClick }: { entry: InputEntry; isUsable: boolean; onClick: () => void }) {
  const isFile = entry.type === 'file';
  return (
    <li>
      <button type="button" class="file" disabled={isFile && !isUsable} onClick={onClick}>
        <Icon name={isFile ? 'file' : 'folder'} />
        <bdi>{visible(entry.name)}</bdi>
        <span class="quiet">{isFile ? sizeText(entry.size ?? 0) : ''}</span>
      </button>
    </li>
  );
}

function Entries({ inputs, extensions, onOpen, onChoose }: Properties & { inputs: Inputs; onOpen: (path: string) => void }) {
  if (inputs.entries.length === 0) return <p class="panel-note">{t(inputs.path ? 'start.emptyFolder' : 'start.noFolders')}</p>;
  return (
    <ul class="files browse-entries">
      {inputs.entries.map((entry) => (
        <Entry
          key={entry.path}
          entry={entry}
          isUsable={isAccepted(entry.name, extensions)}
          onClick={() => (entry.type === 'directory' ? onOpen(entry.path) : onChoose({ path: entry.path, name: entry.name }))}
        />
      ))}
    </ul>
  );
}

/** The files in the directories from which the settings allow inputs. */
export function InputBrowser({ extensions, onChoose }: Properties) {
  const [path, setPath] = useState('');
  const { answer, error } = useResource<Inputs>(`/inputs?path=${encodeURIComponent(path)}`);
  return (
    <div class="browse">
      <div class="browse-head">
        {path && (
          <button type="button" class="plain" aria-label={t('start.up')} onClick={() => setPath(answer?.parent ?? '')}>
            <Icon name="back" />
          </button>
        )}
        <bdi class="path">{path ? visible(path) : t('start.folders')}</bdi>
      </div>
      {error !== undefined && <p class="panel-note problem">{errorText(error)}</p>}
      {answer && <Entries inputs={answer} extensions={extensions} onOpen={setPath} onChoose={onChoose} />}
      {answer?.complete === false && <p class="panel-note">{t('start.incomplete')}</p>}
    </div>
  );
}
