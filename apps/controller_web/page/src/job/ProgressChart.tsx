import type { ProgressPoint } from '../jobs/progress-history.ts';
import { durationText } from '../text/display.ts';
import { t } from '../text/text.ts';

const width = 400;
const height = 80;

/** The points of a line that goes level from one report to the next. `end` is 0 or the time to which the last one holds. */
function lineOf(points: readonly ProgressPoint[], start: number, span: number, end: number): string {
  const place = (point: ProgressPoint): [number, number] => [((point.time - start) / span) * width, height - (point.progress / 100) * height];
  const corners: string[] = [];
  let level = height;
  for (const point of points) {
    const [x, y] = place(point);
    corners.push(`${x.toFixed(1)},${level.toFixed(1)}`, `${x.toFixed(1)},${y.toFixed(1)}`);
    level = y;
  }
  if (end) corners.push(`${width},${level.toFixed(1)}`);
  return corners.join(' ');
}

/** Progress over time, as seen while the page was open. */
export function ProgressChart({ points, end }: { points: readonly ProgressPoint[]; end: number }) {
  const start = points[0]?.time ?? 0;
  const last = Math.max(end, points.at(-1)?.time ?? 0);
  const line = lineOf(points, start, Math.max(1, last - start), end);
  const latest = points.at(-1)?.progress ?? 0;
  return (
    <figure class="progress-chart">
      <svg viewBox={`0 -2 ${width} ${height + 4}`} preserveAspectRatio="none" role="img" aria-label={t('job.chart', latest, durationText(last - start))}>
        <path class="grid-line" d={`M0 0H${width}M0 ${height / 2}H${width}M0 ${height}H${width}`} />
        <polyline points={line} />
      </svg>
      <figcaption class="quiet">
        <span>0:00</span>
        <span>{durationText(last - start)}</span>
      </figcaption>
    </figure>
  );
}
