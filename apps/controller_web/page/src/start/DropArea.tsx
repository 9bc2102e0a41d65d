import { useRef, useState } from 'preact/hooks';
import { upload } from '../api/client.ts';
import { useApp } from '../app.ts';
import { visible } from '../text/display.ts';
import { counted, t } from '../text/text.ts';
import { errorText } from '../ui/errors.ts';
import { isAccepted, type ChosenFile } from './input-sets.ts';

interface Properties {
  extensions: readonly string[];
  onChoose: (file: ChosenFile) => void;
}

function useUploads({ extensions, onChoose }: Properties) {
  const { notices } = useApp();
  const [pending, setPending] = useState(0);
  const send = async (files: readonly File[]): Promise<void> => {
    const accepted = files.filter((file) => isAccepted(file.name, extensions));
    if (accepted.length < files.length) notices.error(t('start.wrongKind', extensions.map((name) => `.${name}`).join(', ')));
    setPending((count) => count + accepted.length);
    for (const file of accepted) {
      await upload(file).then(
        (path) => onChoose({ path, name: file.name }),
        (error: unknown) => notices.error(t('start.uploadFailed', visible(file.name), errorText(error))),
      );
      setPending((count) => count - 1);
    }
  };
  return { pending, send };
}

/** Takes files that are dropped or chosen, and stores them with the server. */
export function DropArea(properties: Properties) {
  const { pending, send } = useUploads(properties);
  const [isOver, setOver] = useState(false);
  const input = useRef<HTMLInputElement>(null);
  const onDrop = (event: DragEvent): void => {
    event.preventDefault();
    setOver(false);
    void send([...(event.dataTransfer?.files ?? [])]);
  };
  const onDragOver = (event: DragEvent): void => {
    event.preventDefault();
    setOver(true);
  };
  return (
    <div class={`drop${isOver ? ' drop-over' : ''}`} onDrop={onDrop} onDragOver={onDragOver} onDragLeave={() => setOver(false)}>
      <span>{pending > 0 ? counted('start.uploading', pending) : t('start.drop')}</span>
      <button type="button" onClick={() => input.current?.click()}>
        {t('start.choose')}
      </button>
      <input ref={input} type="file" multiple class="sr-only" tabIndex={-1} aria-label={t('start.choose')} onChange={(event) => (void send([...(event.currentTarget.files ?? [])]), (event.currentTarget.value = ''))} />
    </div>
  );
}
