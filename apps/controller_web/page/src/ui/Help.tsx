import { t, type TextKey } from '../text/text.ts';
import { Dialog } from './Dialog.tsx';

const keys: readonly (readonly [string, TextKey])[] = [
  ['?', 'help.help'],
  ['/', 'help.search'],
  ['N', 'help.new'],
  ['1 – 5', 'help.filters'],
  ['↑ ↓', 'help.move'],
  ['Shift ↑ ↓', 'help.extend'],
  ['Space', 'help.select'],
  ['Ctrl A', 'help.all'],
  ['Enter', 'help.open'],
  ['Esc', 'help.close'],
  ['C', 'help.cancel'],
  ['H', 'help.hold'],
  ['P', 'help.priority'],
  ['A', 'help.again'],
  ['Del', 'help.delete'],
];

export function Help({ onClose }: { onClose: () => void }) {
  return (
    <Dialog title={t('help.title')} onClose={onClose}>
      <dl class="keys">
        {keys.map(([key, text]) => (
          <div key={key}>
            <dt>
              {key.split(' ').map((part) => (
                <kbd key={part}>{part}</kbd>
              ))}
            </dt>
            <dd>{t(text)}</dd>
          </div>
        ))}
      </dl>
      <p class="quiet">{t('help.note')}</p>
    </Dialog>
  );
}
