import { useEffect, useState } from 'preact/hooks';
import { useApp, type App } from '../app.ts';
import { activated, extended, toggled } from '../jobs/selection.ts';
import { language, t } from '../text/text.ts';
import { useVirtualRows, type VirtualRows } from '../ui/use-virtual-rows.ts';
import { columns } from './columns.ts';
import { Empty } from './Empty.tsx';
import { Head } from './Head.tsx';
import { onTableKey } from './keys.ts';
import { Row, rowId } from './Row.tsx';

const wideRow = 32;
const narrowRow = 58;
const headHeight = 32;
/** Elements of rows that leave the view are used for those that enter it. */
const slots = 128;
const narrow = '(max-width: 640px)';

function useRowHeight(): number {
  const [isNarrow, setNarrow] = useState(matchMedia(narrow).matches);
  useEffect(() => {
    const query = matchMedia(narrow);
    const listener = (): void => setNarrow(query.matches);
    query.addEventListener('change', listener);
    return () => query.removeEventListener('change', listener);
  }, []);
  return isNarrow ? narrowRow : wideRow;
}

function onClick(app: App, event: MouseEvent): void {
  const target = event.target as HTMLElement;
  const id = target.closest<HTMLElement>('[data-id]')?.dataset['id'];
  if (id === undefined) return;
  if (event.shiftKey) app.selection.value = extended(app.selection.value, id, app.listing.ids);
  else if (event.ctrlKey || event.metaKey || target.closest('[data-select]')) app.selection.value = toggled(app.selection.value, id);
  else {
    app.selection.value = activated(app.selection.value, id);
    app.go({ view: 'job', id, tab: app.route.value.view === 'job' ? app.route.value.tab : 'overview' });
  }
}

/** Shift with a click would mark text. */
function onMouseDown(event: MouseEvent): void {
  if (event.shiftKey) event.preventDefault();
}

function Rows({ rows, rowHeight }: { rows: VirtualRows; rowHeight: number }) {
  const app = useApp();
  const { store, listing } = app.jobs.value;
  const { ids } = listing;
  const { ids: selected, active } = app.selection.value;
  const open = app.route.value.view === 'job' ? app.route.value.id : '';
  const drawn = [];
  for (let index = rows.first; index < rows.end; index++) {
    const job = store.find(ids[index] ?? '');
    if (!job) continue;
    const state = { isSelected: selected.has(job.id), isActive: job.id === active, isOpen: job.id === open };
    drawn.push(<Row key={index % slots} job={job} index={index} top={index * rowHeight} language={language.value} {...state} />);
  }
  return (
    <div role="rowgroup" class="rows" style={{ height: `${ids.length * rowHeight}px` }}>
      {drawn}
    </div>
  );
}

/** The active row is named to screen readers only while it is drawn. */
function activeRow(app: App, rows: VirtualRows): Record<string, string> {
  const { active } = app.selection.value;
  const index = active ? app.listing.ids.indexOf(active, rows.first) : -1;
  return index >= 0 && index < rows.end ? { 'aria-activedescendant': rowId(active) } : {};
}

/** All jobs of the filter in a grid of which only the rows in view exist. */
export function JobTable() {
  const app = useApp();
  const rowHeight = useRowHeight();
  const { listing } = app.jobs.value;
  const count = listing.ids.length;
  const rows = useVirtualRows(count, rowHeight, headHeight);
  const page = Math.max(1, Math.floor((rows.element.current?.clientHeight ?? 0) / rowHeight) - 2);
  if (count === 0) return <Empty />;
  return (
    <div
      ref={rows.element}
      class="table"
      role="grid"
      tabIndex={0}
      aria-label={t('table.name')}
      aria-rowcount={count + 1}
      aria-colcount={columns.length + 1}
      aria-multiselectable="true"
      {...activeRow(app, rows)}
      onScroll={rows.onScroll}
      onClick={(event) => onClick(app, event)}
      onMouseDown={onMouseDown}
      onKeyDown={(event) => onTableKey(app, event, page, rows.show)}
    >
      <div role="rowgroup" class="head-group">
        <Head />
      </div>
      <Rows rows={rows} rowHeight={rowHeight} />
    </div>
  );
}
