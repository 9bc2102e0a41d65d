import { effect, signal } from '@preact/signals';

export const themes = ['system', 'light', 'dark'] as const;
export type Theme = (typeof themes)[number];

const storedTheme = themes.find((name) => name === localStorage.getItem('theme'));
export const theme = signal<Theme>(storedTheme ?? 'system');

const systemIsDark = matchMedia('(prefers-color-scheme: dark)');
export const isDark = signal(systemIsDark.matches);

function followTheme(): void {
  isDark.value = theme.value === 'dark' || (theme.value === 'system' && systemIsDark.matches);
  document.documentElement.dataset['theme'] = isDark.value ? 'dark' : 'light';
}

export function chooseTheme(name: Theme): void {
  theme.value = name;
  localStorage.setItem('theme', name);
}

/** Applies the theme now and whenever user or system change it. */
export function keepTheme(): void {
  effect(followTheme);
  systemIsDark.addEventListener('change', followTheme);
}

/** Whether single keys without Ctrl or Alt are shortcuts; who speaks to the computer may not want that. */
export const hasShortcuts = signal(localStorage.getItem('shortcuts') !== 'no');

export function chooseShortcuts(wanted: boolean): void {
  hasShortcuts.value = wanted;
  localStorage.setItem('shortcuts', wanted ? 'yes' : 'no');
}
