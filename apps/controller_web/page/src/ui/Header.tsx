import { put } from '../api/client.ts';
import type { QueueState } from '../api/types.ts';
import { useApp, type App } from '../app.ts';
import { t } from '../text/text.ts';
import { errorText } from './errors.ts';
import { Icon } from './Icon.tsx';
import { Menu } from './Menu.tsx';
import { fragmentOf, type Route } from './route.ts';

function Place({ route, text }: { route: Route; text: string }) {
  const { route: current } = useApp();
  const isHere = current.value.view === route.view || (route.view === 'queue' && current.value.view === 'job');
  return (
    <a href={fragmentOf(route)} {...(isHere ? { 'aria-current': 'page' as const } : {})}>
      {text}
    </a>
  );
}

async function setPaused(app: App, paused: boolean): Promise<void> {
  try {
    app.session.queue.value = await put<QueueState>('/queue', { paused });
    app.notices.done(t(paused ? 'done.paused' : 'done.resumed'));
  } catch (error) {
    app.notices.error(errorText(error));
  }
}

function PauseButton() {
  const app = useApp();
  const { paused } = app.session.queue.value;
  return (
    <button type="button" class={paused ? 'attention' : ''} onClick={() => void setPaused(app, !paused)}>
      <Icon name={paused ? 'resume' : 'pause'} />
      <span class="wide-only">{t(paused ? 'action.resume' : 'action.pause')}</span>
      <span class="narrow-only sr-only">{t(paused ? 'action.resume' : 'action.pause')}</span>
    </button>
  );
}

function Changes() {
  const app = useApp();
  if (app.session.queue.value.readOnly) return <span class="tag">{t('state.readOnly')}</span>;
  return (
    <>
      <PauseButton />
      <a class="button primary" href={fragmentOf({ view: 'start' })}>
        <Icon name="plus" />
        {t('action.new')}
      </a>
    </>
  );
}

const states = { connecting: 'state.connecting', open: 'state.live', lost: 'state.lost', refused: 'state.lost' } as const;

function ConnectionState() {
  const state = useApp().session.connection.value;
  return (
    <span class={`connection connection-${state}`}>
      <i aria-hidden="true" />
      {t(states[state])}
    </span>
  );
}

export function Header() {
  return (
    <header class="head">
      <h1>{t('title')}</h1>
      <nav aria-label={t('title.views')}>
        <Place route={{ view: 'queue' }} text={t('view.queue')} />
        <Place route={{ view: 'statistics' }} text={t('view.statistics')} />
      </nav>
      <ConnectionState />
      <div class="head-actions">
        <Changes />
        <Menu />
      </div>
    </header>
  );
}
