import { useEffect, useRef } from 'preact/hooks';
import { useApp } from '../app.ts';
import { JobPanel } from '../job/JobPanel.tsx';
import { StartView } from '../start/StartView.tsx';
import { StatisticsView } from '../statistics/StatisticsView.tsx';
import { QueueView } from '../table/QueueView.tsx';
import { language, t } from '../text/text.ts';
import { Banner } from './Banner.tsx';
import { Header } from './Header.tsx';
import { NoticeList } from './NoticeList.tsx';
import { Questions } from './Questions.tsx';
import { useShortcuts } from './shortcuts.ts';

/** The focus must not be lost with the view in which it was. */
function useFocusInList(view: string): void {
  const last = useRef(view);
  useEffect(() => {
    const isBack = view === 'queue' && last.current !== 'queue';
    last.current = view;
    if (isBack && document.activeElement === document.body) document.querySelector<HTMLElement>('[role="grid"]')?.focus({ preventScroll: true });
  }, [view]);
}

function Content() {
  const route = useApp().route.value;
  useFocusInList(route.view);
  if (route.view === 'start') return <StartView />;
  if (route.view === 'statistics') return <StatisticsView />;
  return (
    <div class={`split ${route.view === 'job' ? 'split-open' : ''}`}>
      <QueueView />
      {route.view === 'job' && <JobPanel key={route.id} id={route.id} tab={route.tab} />}
    </div>
  );
}

function useTitle(): void {
  const app = useApp();
  const { queued, running } = app.jobs.value.store.counts;
  const title = queued + running > 0 ? t('title.counts', running, queued) : t('title');
  useEffect(() => void (document.title = title), [title]);
  useEffect(() => void (document.documentElement.lang = language.value), [language.value]);
}

export function PageView() {
  useTitle();
  useShortcuts();
  return (
    <>
      <a class="skip" href="#main" onClick={(event) => (event.preventDefault(), document.getElementById('main')?.focus())}>
        {t('action.skip')}
      </a>
      <Header />
      <Banner />
      <main id="main" tabIndex={-1}>
        <Content />
      </main>
      <NoticeList />
      <Questions />
    </>
  );
}
