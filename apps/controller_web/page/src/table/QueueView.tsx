import { t } from '../text/text.ts';
import { FilterBar } from './FilterBar.tsx';
import { JobTable } from './JobTable.tsx';
import { SelectionBar } from './SelectionBar.tsx';

export function QueueView() {
  return (
    <section class="queue" aria-label={t('view.queue')}>
      <FilterBar />
      <SelectionBar />
      <JobTable />
    </section>
  );
}
