import { useApp } from '../app.ts';
import { sortKeys, type SortKey } from '../jobs/filter.ts';
import { groups, type Group } from '../jobs/job.ts';
import { counted, formatNumber, t } from '../text/text.ts';
import { Icon } from '../ui/Icon.tsx';

function Chip({ group }: { group: Group }) {
  const { filter, jobs } = useApp();
  const isOn = filter.value.groups.includes(group);
  const toggle = (): void => {
    const chosen = groups.filter((name) => (name === group) !== filter.value.groups.includes(name));
    filter.value = { ...filter.value, groups: chosen };
  };
  return (
    <button type="button" class={`chip status-${group}`} aria-pressed={isOn} onClick={toggle}>
      <Icon name={group} />
      <span>{t(`group.${group}`)}</span>
      <b>{formatNumber(jobs.value.store.counts[group])}</b>
    </button>
  );
}

function SearchField() {
  const { filter } = useApp();
  return (
    <label class="search">
      <Icon name="search" />
      <span class="sr-only">{t('filter.search')}</span>
      <input
        id="search"
        type="search"
        placeholder={t('filter.search')}
        value={filter.value.text}
        autocomplete="off"
        spellcheck={false}
        onInput={(event) => (filter.value = { ...filter.value, text: event.currentTarget.value })}
      />
    </label>
  );
}

/** For narrow screens, which do not show the names of the columns. */
function SortField() {
  const { filter } = useApp();
  return (
    <label class="sort-field narrow-only">
      <span class="sr-only">{t('filter.sort')}</span>
      <select
        value={filter.value.sort}
        onChange={(event) => (filter.value = { ...filter.value, sort: event.currentTarget.value as SortKey })}
      >
        {sortKeys.map((key) => (
          <option key={key} value={key}>
            {t(`column.${key}`)}
          </option>
        ))}
      </select>
    </label>
  );
}

function Count() {
  const { listing, store } = useApp().jobs.value;
  const shown = listing.ids.length;
  const text = shown === store.size ? counted('table.all', shown) : t('table.some', formatNumber(shown), formatNumber(store.size));
  return <span class="count quiet">{text}</span>;
}

export function FilterBar() {
  return (
    <div class="filters" role="search" aria-label={t('filter.name')}>
      <div class="chips" role="group" aria-label={t('column.status')}>
        {groups.map((group) => (
          <Chip key={group} group={group} />
        ))}
      </div>
      <SearchField />
      <SortField />
      <Count />
    </div>
  );
}
