import { useState } from 'preact/hooks';
import { post } from '../api/client.ts';
import type { CreatedJobs, JobsRequest, ParameterSet, Scenario } from '../api/types.ts';
import { useApp, type App } from '../app.ts';
import { counted } from '../text/text.ts';
import { errorText } from '../ui/errors.ts';
import { areComplete, inputSetsOf, type ChosenFile } from './input-sets.ts';
import { isValid, runArgumentOf } from './run-argument.ts';
import { useResource, type Resource } from './use-resource.ts';

export interface StartForm {
  scenarios: Resource<{ scenarios: Scenario[]; problems?: string[] }>;
  scenario: Scenario | undefined;
  setScenario: (id: string) => void;
  sets: readonly ParameterSet[];
  setsError: unknown;
  set: ParameterSet | undefined;
  chooseSet: (id: string) => void;
  values: Readonly<Record<string, string>>;
  setValue: (name: string, value: string) => void;
  files: readonly ChosenFile[];
  setFiles: (change: (files: readonly ChosenFile[]) => readonly ChosenFile[]) => void;
  folder: string;
  setFolder: (folder: string) => void;
  priority: string;
  setPriority: (priority: string) => void;
  isOnHold: boolean;
  setOnHold: (isOnHold: boolean) => void;
  /** How many files each job takes. */
  setSize: number;
  isReady: boolean;
  isSending: boolean;
  submit: () => Promise<void>;
}

function useScenario() {
  const scenarios = useResource<{ scenarios: Scenario[] }>('/scenarios');
  const [scenarioId, setScenarioId] = useState('');
  const known = scenarios.answer?.scenarios ?? [];
  const scenario = known.find(({ id }) => id === scenarioId) ?? known[0];
  const path = scenario ? `/scenarios/${encodeURIComponent(scenario.id)}/parameters` : '';
  const parameters = useResource<{ parameterSets: ParameterSet[] }>(path);
  return { scenarios, scenario, setScenarioId, sets: parameters.answer?.parameterSets ?? [], setsError: parameters.error };
}

async function send(app: App, request: JobsRequest): Promise<boolean> {
  try {
    const { jobs, refused } = await post<CreatedJobs>('/jobs', { EnqueueJobs: [request] });
    app.notices.done(counted('done.start', jobs.length));
    if (refused.length > 0) app.notices.error(refused.map(({ message }) => message).join(' '));
    return true;
  } catch (error) {
    app.notices.error(errorText(error));
    return false;
  }
}

function useOptions() {
  const [folder, setFolder] = useState(localStorage.getItem('outputFolder') ?? '');
  const [priority, setPriority] = useState('0');
  const [isOnHold, setOnHold] = useState(false);
  return { folder, setFolder, priority, setPriority, isOnHold, setOnHold };
}

/** What the user has chosen in the form, and the request that is made of it. */
export function useStartForm(): StartForm {
  const app = useApp();
  const { setScenarioId, ...chosen } = useScenario();
  const options = useOptions();
  const [setId, setSetId] = useState('');
  const [values, setValues] = useState<Readonly<Record<string, string>>>({});
  const [files, setFiles] = useState<readonly ChosenFile[]>([]);
  const [isSending, setSending] = useState(false);
  const set = chosen.sets.find(({ id }) => id === setId) ?? chosen.sets[0];
  const setSize = Math.max(1, chosen.scenario?.inputs?.length ?? 1);
  const areValid = set?.parameters.every((parameter) => isValid(parameter, values[parameter.name] ?? parameter.defaultValue)) ?? true;
  const isReady = chosen.scenario !== undefined && options.folder.trim() !== '' && areComplete(files, setSize) && areValid && !isSending;

  const requestOf = (scenario: Scenario): JobsRequest => ({
    scenario: { id: scenario.id },
    inputFileSets: inputSetsOf(files, setSize),
    outputDir: options.folder.trim(),
    runArgument: set ? runArgumentOf(set, values) : '',
    useTimeStampFolder: false,
    ...(Number(options.priority) ? { priority: Number(options.priority) } : {}),
    ...(options.isOnHold ? { hold: true } : {}),
  });

  const submit = async (): Promise<void> => {
    if (!chosen.scenario) return;
    setSending(true);
    localStorage.setItem('outputFolder', options.folder.trim());
    const isDone = await send(app, requestOf(chosen.scenario));
    setSending(false);
    if (isDone) app.go({ view: 'queue' });
  };

  const clearValues = (change: () => void): void => {
    setValues({});
    change();
  };
  return {
    ...chosen,
    ...options,
    set,
    values,
    files,
    setFiles,
    setSize,
    isReady,
    isSending,
    submit,
    setScenario: (id) => clearValues(() => setScenarioId(id)),
    chooseSet: (id) => clearValues(() => setSetId(id)),
    setValue: (name, value) => setValues((old) => ({ ...old, [name]: value })),
  };
}
