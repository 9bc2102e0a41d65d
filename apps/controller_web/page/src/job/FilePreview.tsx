import { useEffect, useState } from 'preact/hooks';
import { addressOf, filePath, send } from '../api/client.ts';
import type { OutputFile } from '../api/types.ts';
import { fileNameOf, type Job } from '../jobs/job.ts';
import { ModelView } from '../model/ModelView.tsx';
import { sizeText, visible } from '../text/display.ts';
import { t } from '../text/text.ts';
import { errorText } from '../ui/errors.ts';
import { kindOf } from './file-kinds.ts';

const mostText = 256 * 1024;

/** The beginning of a text file. */
function useText(path: string): { text?: string; error?: unknown } {
  const [state, setState] = useState<{ text?: string; error?: unknown }>({});
  useEffect(() => {
    const aborted = new AbortController();
    const load = async (): Promise<void> => {
      const response = await send(path, { signal: aborted.signal, headers: { Range: `bytes=0-${mostText - 1}` } });
      setState({ text: await response.text() });
    };
    load().catch((error: unknown) => !aborted.signal.aborted && setState({ error }));
    return () => aborted.abort();
  }, [path]);
  return state;
}

function TextPreview({ path, file }: { path: string; file: OutputFile }) {
  const { text, error } = useText(path);
  if (error) return <p class="panel-note problem">{errorText(error)}</p>;
  if (text === undefined) return <p class="panel-note">{t('empty.loading')}</p>;
  return (
    <>
      <pre class="text-preview" tabIndex={0} aria-label={visible(file.path)}>
        {text.split('\n').map((line) => `${visible(line.replace(/\r$/, '').replaceAll('\t', '    '))}\n`)}
      </pre>
      {file.size > mostText && <p class="panel-note">{t('files.beginning', sizeText(mostText))}</p>}
    </>
  );
}

function Picture({ path, file }: { path: string; file: OutputFile }) {
  const [isBroken, setBroken] = useState(false);
  if (isBroken) return <p class="panel-note problem">{t('files.brokenPicture', visible(fileNameOf(file.path)))}</p>;
  return (
    <div class="picture">
      <img src={addressOf(path)} alt={visible(file.path)} onError={() => setBroken(true)} />
    </div>
  );
}

/** An empty file has no range of bytes that could be asked for. */
export function FilePreview({ job, file }: { job: Job; file: OutputFile }) {
  const path = filePath(job.id, file.path);
  if (file.size === 0) return <p class="panel-note">{t('files.empty')}</p>;
  switch (kindOf(file.path)) {
    case 'picture':
      return <Picture path={path} file={file} />;
    case 'model':
      return <ModelView address={addressOf(path)} file={file} />;
    case 'text':
      return <TextPreview path={path} file={file} />;
    case 'other':
      return <p class="panel-note">{t('files.noPreview')}</p>;
  }
}
