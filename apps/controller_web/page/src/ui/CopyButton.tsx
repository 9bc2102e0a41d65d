import { useApp } from '../app.ts';
import { t } from '../text/text.ts';

export function CopyButton({ text }: { text: string }) {
  const { notices } = useApp();
  const copy = (): void =>
    void navigator.clipboard.writeText(text).then(
      () => notices.done(t('done.copied')),
      () => notices.error(t('error.copy')),
    );
  return (
    <button type="button" class="plain copy" onClick={copy}>
      {t('action.copy')}
    </button>
  );
}
