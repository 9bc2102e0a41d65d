import { useEffect, useRef, useState } from 'preact/hooks';
import { addressOf, jobPath } from '../api/client.ts';
import { isOver, type Job } from '../jobs/job.ts';
import { visible } from '../text/display.ts';
import { formatNumber, t } from '../text/text.ts';
import { errorText } from '../ui/errors.ts';
import { Icon } from '../ui/Icon.tsx';
import { useVirtualRows, type VirtualRows } from '../ui/use-virtual-rows.ts';
import { splitAt, type LogBuffer } from './log-buffer.ts';
import { useLog, type LogState } from './use-log.ts';

const lineHeight = 18;

function Line({ text, search, isCurrent }: { text: string; search: string; isCurrent: boolean }) {
  const parts = splitAt(visible(text.replaceAll('\t', '    ')), search);
  return <>{parts.map((part, index) => (index % 2 === 1 ? <mark class={isCurrent ? 'current' : ''}>{part}</mark> : part))}</>;
}

interface LinesProperties {
  buffer: LogBuffer;
  rows: VirtualRows;
  search: string;
  current: number;
  onScroll: () => void;
}

function Lines({ buffer, rows, search, current, onScroll }: LinesProperties) {
  const drawn = [];
  for (let index = rows.first; index < rows.end; index++) {
    drawn.push(
      <div key={index} class={`line${index === current ? ' line-current' : ''}`} style={{ transform: `translateY(${index * lineHeight}px)` }}>
        <span class="line-number" aria-hidden="true">
          {index + 1 + buffer.droppedLines}
        </span>
        <Line text={buffer.line(index)} search={search} isCurrent={index === current} />
      </div>,
    );
  }
  return (
    <div class="log" ref={rows.element} role="region" aria-label={t('job.log')} tabIndex={0} onScroll={onScroll}>
      <div class="log-lines" style={{ height: `${buffer.count * lineHeight}px` }}>
        {drawn}
      </div>
    </div>
  );
}

interface Search {
  text: string;
  setText: (text: string) => void;
  found: readonly number[];
  /** Which of the found lines is the current one. */
  place: number;
  step: (by: number) => void;
}

function useSearch(log: LogState, show: (line: number) => void): Search {
  const [text, setText] = useState('');
  const [place, setPlace] = useState(0);
  const [found, setFound] = useState<readonly number[]>([]);
  useEffect(() => setFound(log.buffer.find(text)), [text, log.buffer, log.revision]);
  useEffect(() => setPlace(0), [text]);
  const step = (by: number): void => {
    const next = (place + by + found.length) % Math.max(1, found.length);
    setPlace(next);
    const line = found[next];
    if (line !== undefined) show(line);
  };
  return { text, setText, found, place, step };
}

function SearchBar({ search }: { search: Search }) {
  const onKeyDown = (event: KeyboardEvent): void => {
    if (event.key !== 'Enter') return;
    event.preventDefault();
    search.step(event.shiftKey ? -1 : 1);
  };
  const state = search.found.length > 0 ? `${search.place + 1} / ${formatNumber(search.found.length)}` : t('log.notFound');
  return (
    <div class="log-search">
      <label class="search">
        <Icon name="search" />
        <span class="sr-only">{t('log.search')}</span>
        <input type="search" placeholder={t('log.search')} value={search.text} onInput={(event) => search.setText(event.currentTarget.value)} onKeyDown={onKeyDown} />
      </label>
      <span role="status" class="quiet found">
        {search.text && state}
      </span>
      <button type="button" class="plain" aria-label={t('log.previous')} disabled={search.found.length === 0} onClick={() => search.step(-1)}>
        <Icon name="up" />
      </button>
      <button type="button" class="plain" aria-label={t('log.next')} disabled={search.found.length === 0} onClick={() => search.step(1)}>
        <Icon name="down" />
      </button>
    </div>
  );
}

function Problem({ log, job }: { log: LogState; job: Job }) {
  if (log.state === 'none') return <p class="panel-note">{t(isOver(job) ? 'log.none' : 'log.notYet')}</p>;
  if (log.state === 'failed') return <p class="panel-note problem">{errorText(log.error)}</p>;
  if (log.state === 'loading') return <p class="panel-note">{t('empty.loading')}</p>;
  if (log.buffer.droppedLines > 0) return <p class="panel-note">{t('log.dropped', formatNumber(log.buffer.droppedLines))}</p>;
  if (log.state === 'complete' && log.buffer.count === 0) return <p class="panel-note">{t('log.empty')}</p>;
  return null;
}

/** Keeps the end in view while `isFollowing`. */
function useFollowing(log: LogState, rows: VirtualRows) {
  const [isFollowing, setFollowing] = useState(true);
  const lastTop = useRef(0);
  useEffect(() => {
    if (isFollowing && log.buffer.count > 0) rows.show(log.buffer.count - 1);
  }, [isFollowing, log.revision, log.buffer]);
  const onScroll = (): void => {
    rows.onScroll();
    const { scrollTop = 0, clientHeight = 0, scrollHeight = 0 } = rows.element.current ?? {};
    if (scrollTop < lastTop.current) setFollowing(false);
    else if (scrollTop + clientHeight >= scrollHeight - 2) setFollowing(true);
    lastTop.current = scrollTop;
  };
  return { isFollowing, setFollowing, onScroll };
}

/** What the scenario has printed: searched, followed while the job runs, any length. */
export function LogView({ job }: { job: Job }) {
  const log = useLog(job.id, job.started, isOver(job));
  const rows = useVirtualRows(log.buffer.count, lineHeight);
  const following = useFollowing(log, rows);
  const jump = (line: number): void => {
    following.setFollowing(false);
    rows.show(line);
  };
  const search = useSearch(log, jump);
  const isFollowed = log.state === 'following' && !isOver(job);
  return (
    <>
      <div class="log-bar">
        <SearchBar search={search} />
        {isFollowed && (
          <button type="button" aria-pressed={following.isFollowing} class="toggle" onClick={() => following.setFollowing(!following.isFollowing)}>
            {t('log.follow')}
          </button>
        )}
        <button type="button" class="plain" onClick={() => jump(0)}>
          {t('log.start')}
        </button>
        <button type="button" class="plain" onClick={() => following.setFollowing(true)}>
          {t('log.end')}
        </button>
        <a class="button plain" href={addressOf(`${jobPath(job.id)}/log`)} download={`job-${job.number}.log`}>
          <Icon name="download" />
          <span class="sr-only">{t('action.download')}</span>
        </a>
      </div>
      <Problem log={log} job={job} />
      <Lines buffer={log.buffer} rows={rows} search={search.text} current={search.found[search.place] ?? -1} onScroll={following.onScroll} />
    </>
  );
}
