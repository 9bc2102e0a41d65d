import { useApp } from '../app.ts';
import { t } from '../text/text.ts';
import { Icon } from './Icon.tsx';
import type { Notice } from './notices.ts';

function Entry({ notice, onClose }: { notice: Notice; onClose: () => void }) {
  return (
    <li class={`notice notice-${notice.kind}`}>
      <Icon name={notice.kind === 'done' ? 'succeeded' : 'warning'} />
      <span>{notice.text}</span>
      <button type="button" class="plain" aria-label={t('action.close')} onClick={onClose}>
        <Icon name="close" />
      </button>
    </li>
  );
}

/** The live region: screen readers read new messages aloud. */
export function NoticeList() {
  const { notices } = useApp();
  return (
    <div class="notices" role="status" aria-live="polite">
      <ul>
        {notices.list.value.map((notice) => (
          <Entry key={notice.key} notice={notice} onClose={() => notices.close(notice.key)} />
        ))}
      </ul>
    </div>
  );
}
