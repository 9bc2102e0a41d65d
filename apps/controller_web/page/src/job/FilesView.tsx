import { useEffect, useState } from 'preact/hooks';
import { addressOf, filePath, get, jobPath } from '../api/client.ts';
import type { OutputFile } from '../api/types.ts';
import { isOver, type Job } from '../jobs/job.ts';
import { sizeText, visible } from '../text/display.ts';
import { counted, t } from '../text/text.ts';
import { errorText } from '../ui/errors.ts';
import { Icon } from '../ui/Icon.tsx';
import { FilePreview } from './FilePreview.tsx';
import { kindOf, type FileKind } from './file-kinds.ts';

interface FilesAnswer {
  complete: boolean;
  files: OutputFile[];
}

interface State {
  answer?: FilesAnswer;
  error?: unknown;
}

function useFiles(job: Job): State {
  const [state, setState] = useState<State>({});
  useEffect(() => {
    const aborted = new AbortController();
    get<FilesAnswer>(`${jobPath(job.id)}/files`, aborted.signal).then(
      (answer) => setState({ answer }),
      (error: unknown) => !aborted.signal.aborted && setState({ error }),
    );
    return () => aborted.abort();
  }, [job.id, job.status, job.progress]);
  return state;
}

const order: readonly FileKind[] = ['picture', 'model', 'text', 'other'];

/** What is most worth a look comes first. */
function firstShown(files: readonly OutputFile[]): string {
  const byKind = (file: OutputFile): number => order.indexOf(kindOf(file.path));
  return files.reduce<OutputFile | undefined>((best, file) => (!best || byKind(file) < byKind(best) ? file : best), undefined)?.path ?? '';
}

function FileList({ job, files, shown, onShow }: { job: Job; files: readonly OutputFile[]; shown: string; onShow: (path: string) => void }) {
  return (
    <ul class="files" aria-label={t('job.files')}>
      {files.map((file) => (
        <li key={file.path}>
          <button type="button" class="file" aria-pressed={file.path === shown} onClick={() => onShow(file.path)}>
            <Icon name="file" />
            <bdi>{visible(file.path)}</bdi>
            <span class="quiet">{sizeText(file.size)}</span>
          </button>
          <a class="button plain" href={addressOf(filePath(job.id, file.path))} download="" aria-label={t('files.download', visible(file.path))}>
            <Icon name="download" />
          </a>
        </li>
      ))}
    </ul>
  );
}

function Note({ job, state }: { job: Job; state: State }) {
  if (state.error) return <p class="panel-note problem">{errorText(state.error)}</p>;
  if (!state.answer) return <p class="panel-note">{t('empty.loading')}</p>;
  return <p class="panel-note">{t(isOver(job) ? 'files.none' : 'files.notYet')}</p>;
}

/** The output files of a job, one of them shown. */
export function FilesView({ job }: { job: Job }) {
  const state = useFiles(job);
  const [chosen, setChosen] = useState('');
  const files = state.answer?.files ?? [];
  const path = files.some((file) => file.path === chosen) ? chosen : firstShown(files);
  const shown = files.find((file) => file.path === path);
  if (files.length === 0) return <Note job={job} state={state} />;
  return (
    <>
      <div class="files-bar">
        <b>{counted('files.count', files.length)}</b>
        <span class="quiet">{sizeText(files.reduce((sum, file) => sum + file.size, 0))}</span>
        <a class="button" href={addressOf(`${jobPath(job.id)}/files.zip`)} download={`job-${job.number}.zip`}>
          <Icon name="download" />
          {t('files.all')}
        </a>
      </div>
      {state.answer?.complete === false && <p class="panel-note">{t('files.incomplete')}</p>}
      <FileList job={job} files={files} shown={path} onShow={setChosen} />
      {shown && <FilePreview key={`${path} ${shown.modified}`} job={job} file={shown} />}
    </>
  );
}
