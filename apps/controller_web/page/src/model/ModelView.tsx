import { useEffect, useRef, useState } from 'preact/hooks';
import type { OutputFile } from '../api/types.ts';
import { sizeText, visible } from '../text/display.ts';
import { language, t } from '../text/text.ts';
import { isDark } from '../ui/preferences.ts';
import { ModelError } from './model-error.ts';
import type { Axis, Viewer, ViewerColours } from './viewer.ts';

const largeFile = 60_000_000;
const axes: readonly Axis[] = ['x', 'y', 'z'];
const light: ViewerColours = { background: '#f3f5f8', edges: '#26344a', box: '#2257c5' };
const dark: ViewerColours = { background: '#10141a', edges: '#06080c', box: '#7fb0ff' };

interface Loaded {
  viewer?: Viewer;
  error?: Error;
}

async function open(canvas: HTMLCanvasElement, address: string, path: string, signal: AbortSignal): Promise<Viewer> {
  const [{ Viewer }, { loadModel }] = await Promise.all([import('./viewer.ts'), import('./load.ts')]);
  const model = await loadModel(address, path, signal);
  signal.throwIfAborted();
  return new Viewer(canvas, model);
}

/** The library for three dimensions is loaded here, when a model is first shown. */
function useViewer(canvas: { current: HTMLCanvasElement | null }, address: string, path: string): Loaded {
  const [loaded, setLoaded] = useState<Loaded>({});
  useEffect(() => {
    const aborted = new AbortController();
    let viewer: Viewer | undefined;
    if (canvas.current) {
      open(canvas.current, address, path, aborted.signal).then(
        (ready) => setLoaded({ viewer: (viewer = ready) }),
        (error: Error) => !aborted.signal.aborted && setLoaded({ error }),
      );
    }
    return () => (aborted.abort(), viewer?.dispose());
  }, [address]);
  return loaded;
}

function useSize(canvas: { current: HTMLCanvasElement | null }, viewer: Viewer | undefined): void {
  useEffect(() => {
    const place = canvas.current?.parentElement;
    if (!place || !viewer) return undefined;
    const observer = new ResizeObserver(() => viewer.resize(place.clientWidth, place.clientHeight));
    observer.observe(place);
    return () => observer.disconnect();
  }, [viewer]);
  useEffect(() => viewer?.setColours(isDark.value ? dark : light), [viewer, isDark.value]);
}

function Section({ viewer }: { viewer: Viewer }) {
  const [axis, setAxis] = useState<Axis | ''>('');
  const [share, setShare] = useState(50);
  useEffect(() => viewer.cut(axis || 'x', axis ? share / 100 : undefined), [viewer, axis, share]);
  return (
    <>
      <label for="model-section">{t('model.section')}</label>
      <select id="model-section" value={axis} onChange={(event) => setAxis(event.currentTarget.value as Axis | '')}>
        <option value="">{t('model.noSection')}</option>
        {axes.map((name) => (
          <option key={name} value={name}>
            {name.toUpperCase()}
          </option>
        ))}
      </select>
      {axis && (
        <input type="range" min={0} max={100} value={share} aria-label={t('model.sectionPlace')} onInput={(event) => setShare(Number(event.currentTarget.value))} />
      )}
    </>
  );
}

function Toggle({ text, onChange }: { text: string; onChange: (isOn: boolean) => void }) {
  const [isOn, setOn] = useState(false);
  const toggle = (): void => {
    setOn(!isOn);
    onChange(!isOn);
  };
  return (
    <button type="button" class="toggle" aria-pressed={isOn} onClick={toggle}>
      {text}
    </button>
  );
}

const views: readonly (readonly ['model.iso' | 'model.top' | 'model.front' | 'model.side', number, number, number])[] = [
  ['model.iso', 1, -1.25, 0.8],
  ['model.top', 0, -0.001, 1],
  ['model.front', 0, -1, 0],
  ['model.side', 1, 0, 0],
];

function Tools({ viewer }: { viewer: Viewer }) {
  return (
    <div class="model-tools" role="toolbar" aria-label={t('model.tools')}>
      {views.map(([text, x, y, z]) => (
        <button key={text} type="button" onClick={() => viewer.lookFrom(x, y, z)}>
          {t(text)}
        </button>
      ))}
      <Toggle text={t('model.edges')} onChange={(isOn) => viewer.showEdges(isOn)} />
      <Toggle text={t('model.box')} onChange={(isOn) => viewer.showBox(isOn)} />
      <Section viewer={viewer} />
    </div>
  );
}

const turns: Record<string, [number, number]> = { ArrowLeft: [-0.15, 0], ArrowRight: [0.15, 0], ArrowUp: [0, 0.15], ArrowDown: [0, -0.15] };

function onKey(event: KeyboardEvent, viewer: Viewer | undefined): void {
  const turn = turns[event.key];
  if (!turn || !viewer) return;
  event.preventDefault();
  viewer.turn(...turn);
}

const reasonOf = (error: Error): string => (error instanceof ModelError ? t(`reason.${error.reason}`, visible(error.detail)) : visible(error.message));

function dimensions(viewer: Viewer): string {
  const text = (value: number): string => value.toLocaleString(language.value, { maximumSignificantDigits: 5 });
  return `${text(viewer.size.x)} × ${text(viewer.size.y)} × ${text(viewer.size.z)}`;
}

function Model({ address, file }: { address: string; file: OutputFile }) {
  const canvas = useRef<HTMLCanvasElement>(null);
  const { viewer, error } = useViewer(canvas, address, file.path);
  useSize(canvas, viewer);
  if (error) return <p class="panel-note problem">{t('model.broken', visible(file.path), reasonOf(error))}</p>;
  return (
    <div class="model">
      {viewer && <Tools viewer={viewer} />}
      <div class="model-place" tabIndex={0} role="application" aria-label={t('model.name', visible(file.path))} onKeyDown={(event) => onKey(event, viewer)}>
        <canvas ref={canvas} />
      </div>
      <p class="quiet model-size">{viewer ? t('model.size', dimensions(viewer)) : t('empty.loading')}</p>
    </div>
  );
}

/** A model in three dimensions; a very large one is fetched only when the user wants it. */
export function ModelView({ address, file }: { address: string; file: OutputFile }) {
  const [isWanted, setWanted] = useState(file.size <= largeFile);
  if (isWanted) return <Model address={address} file={file} />;
  return (
    <p class="panel-note">
      <button type="button" onClick={() => setWanted(true)}>
        {t('model.load', sizeText(file.size))}
      </button>
    </p>
  );
}
