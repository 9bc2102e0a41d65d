import { Component } from 'preact';
import type { Job } from '../jobs/job.ts';
import { visible } from '../text/display.ts';
import { t } from '../text/text.ts';
import { StatusBadge } from '../ui/StatusBadge.tsx';
import { Duration, InputNames, Progress, Started } from './cells.tsx';

interface Properties {
  job: Job;
  /** Its place in the list, from 0. */
  index: number;
  top: number;
  isSelected: boolean;
  isActive: boolean;
  isOpen: boolean;
  language: string;
}

export const rowId = (id: string): string => `job-${id}`;

/** Drawn again only when something in it differs; jobs are replaced when they change. */
export class Row extends Component<Properties> {
  override shouldComponentUpdate(next: Properties): boolean {
    return (Object.keys(next) as (keyof Properties)[]).some((name) => next[name] !== this.props[name]);
  }

  override render({ job, index, top, isSelected, isActive, isOpen }: Properties) {
    const state = `${isActive ? ' row-active' : ''}${isOpen ? ' row-open' : ''}`;
    return (
      <div
        id={rowId(job.id)}
        class={`row${state}`}
        role="row"
        aria-rowindex={index + 2}
        aria-selected={isSelected}
        data-id={job.id}
        style={{ transform: `translateY(${top}px)` }}
      >
        <Cells job={job} isSelected={isSelected} />
      </div>
    );
  }
}

function Cells({ job, isSelected }: { job: Job; isSelected: boolean }) {
  return (
    <>
      <span role="gridcell" class="cell-select" data-select title={t('table.select')}>
        <span class={`box${isSelected ? ' box-checked' : ''}`} />
      </span>
      <span role="gridcell" class="cell-number">
        {job.number}
      </span>
      <span role="gridcell" class="cell-status">
        <StatusBadge job={job} />
      </span>
      <span role="gridcell" class="cell-scenario" title={visible(job.scenario)}>
        <bdi>{visible(job.scenario)}</bdi>
      </span>
      <span role="gridcell" class="cell-input">
        <InputNames job={job} />
      </span>
      <span role="gridcell" class="cell-progress">
        <Progress job={job} />
      </span>
      <span role="gridcell" class="cell-started">
        <Started job={job} />
      </span>
      <span role="gridcell" class="cell-duration">
        <Duration job={job} />
      </span>
      <span role="gridcell" class="cell-priority">
        {job.priority || ''}
      </span>
    </>
  );
}
