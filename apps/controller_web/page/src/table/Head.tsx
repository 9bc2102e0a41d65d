import { useApp } from '../app.ts';
import type { Filter } from '../jobs/filter.ts';
import { everything, nothing } from '../jobs/selection.ts';
import { t } from '../text/text.ts';
import { Icon } from '../ui/Icon.tsx';
import { columns, type Column } from './columns.ts';

function sortedBy(filter: Filter, column: Column): Filter {
  const isSame = filter.sort === column.sort;
  return { ...filter, sort: column.sort, descending: isSame ? !filter.descending : column.descendingFirst };
}

function ColumnHead({ column, index }: { column: Column; index: number }) {
  const { filter } = useApp();
  const isSorted = filter.value.sort === column.sort;
  const order = filter.value.descending ? 'descending' : 'ascending';
  return (
    <span role="columnheader" class={`cell-${column.name}`} aria-colindex={index} aria-sort={isSorted ? order : 'none'}>
      <button type="button" onClick={() => (filter.value = sortedBy(filter.value, column))}>
        {t(column.text)}
        {isSorted && <Icon name={filter.value.descending ? 'down' : 'up'} />}
      </button>
    </span>
  );
}

function SelectAll() {
  const { selection, listing } = useApp();
  const isAny = selection.value.ids.size > 0;
  const toggle = (): void => {
    selection.value = isAny ? nothing(selection.value) : everything(selection.value, listing.ids);
  };
  return (
    <span role="columnheader" class="cell-select" aria-colindex={1}>
      <button type="button" aria-label={t(isAny ? 'table.selectNone' : 'table.selectAll')} onClick={toggle}>
        <span class={`box${isAny ? ' box-some' : ''}`} />
      </button>
    </span>
  );
}

/** The names of the columns; each sorts the list. */
export function Head() {
  return (
    <div role="row" class="row row-head" aria-rowindex={1}>
      <SelectAll />
      {columns.map((column, index) => (
        <ColumnHead key={column.name} column={column} index={index + 2} />
      ))}
    </div>
  );
}
