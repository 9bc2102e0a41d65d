import { useEffect, useRef } from 'preact/hooks';
import { useApp } from '../app.ts';
import { chooseLanguage, language, languages, t, type Language } from '../text/text.ts';
import { Icon } from './Icon.tsx';
import { isNotifying, setNotifying } from './notifications.ts';
import { chooseShortcuts, chooseTheme, hasShortcuts, theme, themes, type Theme } from './preferences.ts';

const languageNames: Record<Language, string> = { en: 'English', de: 'Deutsch' };

function ThemeField() {
  return (
    <label class="field">
      <span>{t('menu.theme')}</span>
      <select value={theme.value} onChange={(event) => chooseTheme(event.currentTarget.value as Theme)}>
        {themes.map((name) => (
          <option key={name} value={name}>
            {t(`theme.${name}`)}
          </option>
        ))}
      </select>
    </label>
  );
}

function LanguageField() {
  return (
    <label class="field">
      <span>{t('menu.language')}</span>
      <select value={language.value} onChange={(event) => chooseLanguage(event.currentTarget.value as Language)}>
        {(Object.keys(languages) as Language[]).map((name) => (
          <option key={name} value={name}>
            {languageNames[name]}
          </option>
        ))}
      </select>
    </label>
  );
}

function NotificationField() {
  const { notices } = useApp();
  const onChange = async (box: HTMLInputElement): Promise<void> => {
    if (!(await setNotifying(box.checked))) notices.error(t('error.notifications'));
    box.checked = isNotifying.value; // The browser has changed the box before the user could be asked.
  };
  return (
    <label class="check-field">
      <input type="checkbox" checked={isNotifying.value} onChange={(event) => void onChange(event.currentTarget)} />
      <span>{t('menu.notify')}</span>
    </label>
  );
}

function ShortcutField() {
  return (
    <label class="check-field">
      <input type="checkbox" checked={hasShortcuts.value} onChange={(event) => chooseShortcuts(event.currentTarget.checked)} />
      <span>{t('menu.shortcuts')}</span>
    </label>
  );
}

/** Closes the menu when the user clicks or moves elsewhere, or presses Escape. */
function useClosing(element: { current: HTMLDetailsElement | null }): void {
  useEffect(() => {
    const close = (event: Event): void => {
      const menu = element.current;
      const isEscape = event instanceof KeyboardEvent && event.key === 'Escape';
      if (!menu?.open || (event instanceof KeyboardEvent && !isEscape)) return;
      if (isEscape) menu.querySelector('summary')?.focus();
      if (isEscape || !menu.contains(event.target as Node)) menu.open = false;
    };
    const kinds = ['pointerdown', 'focusin', 'keydown'];
    kinds.forEach((kind) => addEventListener(kind, close));
    return () => kinds.forEach((kind) => removeEventListener(kind, close));
  }, []);
}

export function Menu() {
  const app = useApp();
  const element = useRef<HTMLDetailsElement>(null);
  useClosing(element);
  return (
    <details class="menu" ref={element}>
      <summary class="button" aria-label={t('menu.title')}>
        <Icon name="settings" />
      </summary>
      <div class="menu-body">
        <ThemeField />
        <LanguageField />
        <NotificationField />
        <ShortcutField />
        <button type="button" onClick={() => (app.question.value = { kind: 'help' })}>
          <Icon name="help" />
          {t('help.title')}
        </button>
        <a class="licences" href="licences.txt" target="_blank" rel="noopener">
          {t('menu.licences')}
        </a>
      </div>
    </details>
  );
}
