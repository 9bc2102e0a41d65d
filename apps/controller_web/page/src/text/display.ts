import { language } from './text.ts';

// Control characters, and those that change the direction of the text around them: a file name must not look like another.
const deceptive = /[\u0000-\u001f\u007f-\u009f\u200b-\u200f\u2028-\u202e\u2060-\u2069\ufeff]|[\ud800-\udbff](?![\udc00-\udfff])|(?<![\ud800-\udbff])[\udc00-\udfff]/g;

/** A text of a job for one line of the page: characters that could deceive the reader are shown by their codes. */
export function visible(text: string): string {
  return text.replace(deceptive, (character) => `\\u${character.charCodeAt(0).toString(16).padStart(4, '0')}`);
}

const two = (value: number): string => String(value).padStart(2, '0');

/** "4:05", "1:00:00"; empty for a negative time. */
export function durationText(milliseconds: number): string {
  if (milliseconds < 0) return '';
  const seconds = Math.floor(milliseconds / 1000);
  const minutes = Math.floor(seconds / 60);
  if (minutes < 60) return `${minutes}:${two(seconds % 60)}`;
  return `${Math.floor(minutes / 60)}:${two(minutes % 60)}:${two(seconds % 60)}`;
}

const formats = new Map<string, Intl.DateTimeFormat>();
function format(kind: keyof typeof options, time: number): string {
  const key = `${language.value} ${kind}`;
  let known = formats.get(key);
  if (!known) {
    known = new Intl.DateTimeFormat(language.value === 'de' ? 'de-DE' : 'en-GB', options[kind]);
    formats.set(key, known);
  }
  return known.format(time);
}

const options = {
  time: { hour: '2-digit', minute: '2-digit', second: '2-digit' },
  date: { day: 'numeric', month: 'short', hour: '2-digit', minute: '2-digit' },
  full: { dateStyle: 'medium', timeStyle: 'medium' },
  minute: { hour: '2-digit', minute: '2-digit' },
  day: { day: 'numeric', month: 'short' },
} as const satisfies Record<string, Intl.DateTimeFormatOptions>;

/** The time of day, and the date unless it was in the last 20 hours. Empty for 0. */
export function timeText(time: number, now: number): string {
  if (!time) return '';
  return format(now - time < 20 * 3_600_000 ? 'time' : 'date', time);
}

/** For the marks of an axis: the day, or the time of day. */
export const shortTimeText = (time: number, isDay: boolean): string => format(isDay ? 'day' : 'minute', time);

export const fullTimeText = (time: number): string => (time ? format('full', time) : '');

const units = ['B', 'kB', 'MB', 'GB', 'TB'];

/** "417 B", "1.5 MB". */
export function sizeText(bytes: number): string {
  let value = bytes;
  let unit = 0;
  for (; value >= 1000 && unit < units.length - 1; unit++) value /= 1000;
  const digits = unit === 0 || value >= 100 ? 0 : 1;
  return `${value.toLocaleString(language.value, { maximumFractionDigits: digits })} ${units[unit]}`;
}
