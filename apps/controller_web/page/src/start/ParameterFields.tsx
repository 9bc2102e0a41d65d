import type { ParameterSet, ScenarioParameter } from '../api/types.ts';
import { visible } from '../text/display.ts';
import { t } from '../text/text.ts';
import { isValid } from './run-argument.ts';

interface FieldProperties {
  parameter: ScenarioParameter;
  value: string;
  onChange: (value: string) => void;
}

function Choice({ parameter, value, onChange }: FieldProperties) {
  const values = parameter.allowedValues.length > 0 ? parameter.allowedValues : ['true', 'false'];
  return (
    <select value={value} onChange={(event) => onChange(event.currentTarget.value)}>
      {values.map((allowed) => (
        <option key={allowed} value={allowed}>
          {visible(allowed)}
        </option>
      ))}
    </select>
  );
}

const keyboards: Record<string, string> = { integer: 'numeric', number: 'decimal' };

function Text({ parameter, value, onChange }: FieldProperties) {
  const isWrong = !isValid(parameter, value);
  return (
    <>
      <input
        type="text"
        inputMode={keyboards[parameter.type] ?? 'text'}
        value={value}
        aria-invalid={isWrong}
        onInput={(event) => onChange(event.currentTarget.value)}
      />
      {isWrong && <small class="problem">{t(parameter.type === 'integer' ? 'start.wholeNumber' : 'start.number')}</small>}
    </>
  );
}

function Field(properties: FieldProperties) {
  const { parameter } = properties;
  const isChoice = parameter.allowedValues.length > 0 || parameter.type === 'boolean';
  return (
    <label class="field">
      <span>{visible(parameter.name)}</span>
      {isChoice ? <Choice {...properties} /> : <Text {...properties} />}
    </label>
  );
}

/** The parameters of a set, each with the control of its type. */
export function ParameterFields({ set, values, onChange }: { set: ParameterSet; values: Readonly<Record<string, string>>; onChange: (name: string, value: string) => void }) {
  return (
    <div class="parameters">
      {set.description && <p class="quiet">{visible(set.description)}</p>}
      {set.parameters.map((parameter) => (
        <Field
          key={`${set.id} ${parameter.name}`}
          parameter={parameter}
          value={values[parameter.name] ?? parameter.defaultValue}
          onChange={(value) => onChange(parameter.name, value)}
        />
      ))}
    </div>
  );
}
