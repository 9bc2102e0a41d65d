import type { ParameterSet, ScenarioParameter } from '../api/types.ts';

function quoted(value: string): string {
  return /^[^\s"=]+$/.test(value) ? value : `"${value.replaceAll('"', '""')}"`;
}

/** The run argument of a job: the parameter set, then the values that differ from its defaults. */
export function runArgumentOf(set: ParameterSet, values: Readonly<Record<string, string>>): string {
  const changed = set.parameters.filter(({ name, defaultValue }) => values[name] !== undefined && values[name] !== defaultValue);
  return [quoted(set.id), ...changed.map(({ name }) => `${name}=${quoted(values[name] ?? '')}`)].join(' ');
}

const patterns: Record<string, RegExp> = {
  integer: /^[+-]?\d+$/,
  number: /^[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?$/,
  boolean: /^(true|false)$/,
};

/** Whether the scenario would accept the value. */
export function isValid(parameter: ScenarioParameter, value: string): boolean {
  if (parameter.allowedValues.length > 0) return parameter.allowedValues.includes(value);
  return patterns[parameter.type]?.test(value) ?? true;
}
