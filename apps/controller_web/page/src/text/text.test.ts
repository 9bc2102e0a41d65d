import { expect, it } from 'vitest';
import { de } from './de.ts';
import { durationText, sizeText, visible } from './display.ts';
import { en } from './en.ts';
import { counted, t } from './text.ts';

const valuesIn = (text: string): string => [...text.matchAll(/\{\d\}/g)].join().split(',').sort().join();

it('has the same texts in both languages, with the same values', () => {
  expect(Object.keys(de).sort()).toEqual(Object.keys(en).sort());
  for (const key of Object.keys(en) as (keyof typeof en)[]) expect([key, valuesIn(de[key])]).toEqual([key, valuesIn(en[key])]);
});

it('chooses the form for one or more', () => {
  expect(counted('table.all', 1)).toBe('1 job');
  expect(counted('table.all', 1200)).toBe('1,200 jobs');
});

it('puts values in as they are', () => {
  expect(t('files.download', '{0} $& <b>')).toBe('Download {0} $& <b>');
});

it('shows characters that could deceive the reader by their codes', () => {
  expect(visible('gnp.\u202estl')).toBe('gnp.\\u202estl');
  expect(visible('a\u0000\nb\udc80')).toBe('a\\u0000\\u000ab\\udc80');
  expect(visible('Teil Ü 部品 😀')).toBe('Teil Ü 部品 😀');
});

it('writes durations and sizes for people', () => {
  expect([durationText(-1), durationText(65_999), durationText(3_600_000)]).toEqual(['', '1:05', '1:00:00']);
  expect([sizeText(417), sizeText(1536), sizeText(2_000_000_000)]).toEqual(['417 B', '1.5 kB', '2 GB']);
});
