import { signal } from '@preact/signals';
import { de } from './de.ts';
import { en } from './en.ts';

export type TextKey = keyof typeof en;
type Counted = { [Key in TextKey]: Key extends `${infer Base}.one` ? Base : never }[TextKey];

export const languages = { en, de } as const;
export type Language = keyof typeof languages;

const isLanguage = (name: string | null): name is Language => name !== null && name in languages;

function initialLanguage(): Language {
  const stored = globalThis.localStorage?.getItem('language') ?? null;
  if (isLanguage(stored)) return stored;
  return globalThis.navigator?.language?.startsWith('de') ? 'de' : 'en';
}

export const language = signal<Language>(initialLanguage());

export function chooseLanguage(name: Language): void {
  language.value = name;
  localStorage.setItem('language', name);
}

/** The text of the chosen language, with `{0}`, `{1}` and so on replaced. */
export function t(key: TextKey, ...values: readonly (string | number)[]): string {
  return languages[language.value][key].replace(/\{(\d)\}/g, (_whole, index: string) => String(values[Number(index)] ?? ''));
}

export const formatNumber = (value: number): string => value.toLocaleString(language.value);

/** The text for so many things; `{0}` is the number. */
export function counted(base: Counted, number: number, ...values: readonly (string | number)[]): string {
  const form = number === 1 ? 'one' : 'other';
  return t(`${base}.${form}` as TextKey, formatNumber(number), ...values);
}
