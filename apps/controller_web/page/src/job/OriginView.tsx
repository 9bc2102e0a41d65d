import type { FileRecord, Provenance } from '../api/types.ts';
import { isOver, timeOf, type Job } from '../jobs/job.ts';
import { fullTimeText, sizeText, visible } from '../text/display.ts';
import { t } from '../text/text.ts';
import { CopyButton } from '../ui/CopyButton.tsx';
import { Fact } from './Overview.tsx';

function Hash({ value }: { value: string | undefined }) {
  if (!value) return <span class="quiet">{t('origin.notRead')}</span>;
  return (
    <span class="hash">
      <code title={value}>{value.slice(0, 12)}…</code>
      <CopyButton text={value} />
    </span>
  );
}

function Files({ name, files }: { name: string; files: readonly FileRecord[] | undefined }) {
  if (!files?.length) return null;
  return (
    <table class="records">
      <caption>{name}</caption>
      <thead>
        <tr>
          <th scope="col">{t('files.name')}</th>
          <th scope="col">{t('files.size')}</th>
          <th scope="col">SHA-256</th>
        </tr>
      </thead>
      <tbody>
        {files.map((file) => (
          <tr key={file.path}>
            <td>
              <bdi>{visible(file.path)}</bdi>
            </td>
            <td class="number">{sizeText(file.size ?? 0)}</td>
            <td>
              <Hash value={file.sha256} />
            </td>
          </tr>
        ))}
      </tbody>
    </table>
  );
}

function toolsOf({ tools, toolVersions }: Provenance): string {
  const reported = (tools ?? []).map(({ name, version }) => `${name} ${version}`);
  const configured = Object.entries(toolVersions ?? {}).map(([name, version]) => `${name} ${version}`);
  return visible([...reported, ...configured].join(', '));
}

function Facts({ origin }: { origin: Provenance }) {
  const { interpreter } = origin;
  return (
    <dl class="facts">
      <Fact name={t('origin.machine')}>{visible(origin.machine ?? '')}</Fact>
      <Fact name={t('origin.user')}>{visible(origin.user ?? '')}</Fact>
      <Fact name={t('fact.started')}>{fullTimeText(timeOf(origin.startTime))}</Fact>
      <Fact name={t('fact.ended')}>{fullTimeText(timeOf(origin.endTime))}</Fact>
      <Fact name={t('origin.controller')}>{visible(origin.controllerVersion ?? '')}</Fact>
      <Fact name={t('origin.interpreter')}>{visible([interpreter?.path, ...(interpreter?.arguments ?? [])].filter(Boolean).join(' '))}</Fact>
      <Fact name={t('origin.tools')}>{toolsOf(origin)}</Fact>
      <Fact name={t('origin.resultsOf')}>{origin.resultsOf?.jobNumber}</Fact>
      <Fact name={t('origin.notReusable')}>{visible(origin.notReusable ?? '')}</Fact>
    </dl>
  );
}

/** From what the results were made. */
export function OriginView({ job, provenance, isLoaded }: { job: Job; provenance: Provenance | undefined; isLoaded: boolean }) {
  if (!provenance) return <p class="panel-note">{t(!isLoaded ? 'empty.loading' : isOver(job) ? 'origin.none' : 'origin.notYet')}</p>;
  return (
    <>
      <Facts origin={provenance} />
      <Files name={t('origin.scenario')} files={provenance.scenario} />
      <Files name={t('fact.inputs')} files={provenance.inputs} />
      <Files name={t('origin.usedFiles')} files={provenance.usedFiles} />
      <Files name={t('origin.outputs')} files={provenance.outputs} />
    </>
  );
}
