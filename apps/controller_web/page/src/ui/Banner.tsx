import { useApp } from '../app.ts';
import { fullTimeText } from '../text/display.ts';
import { t } from '../text/text.ts';
import { errorText } from './errors.ts';
import { Icon } from './Icon.tsx';

function useProblem(): string | undefined {
  const { session } = useApp();
  const state = session.connection.value;
  if (state === 'refused') return t('error.signedOut');
  if (state === 'lost') return t('banner.lost', fullTimeText(session.lastNews.value));
  if (session.loadError.value) return errorText(session.loadError.value);
  if (session.queue.value.host?.running === false) return t('banner.noHost');
  return undefined;
}

/** What keeps the list from being up to date, above everything else. */
export function Banner() {
  const { session } = useApp();
  const problem = useProblem();
  return (
    <div role="alert">
      {problem && (
        <div class="banner">
          <Icon name="warning" />
          <span>{problem}</span>
          <button type="button" onClick={() => session.retry()}>
            {t('action.retry')}
          </button>
        </div>
      )}
    </div>
  );
}
