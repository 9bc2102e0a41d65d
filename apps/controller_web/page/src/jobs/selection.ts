/** The selected jobs, the active one, and the other end of a range that Shift extends. Immutable. */
export interface Selection {
  readonly ids: ReadonlySet<string>;
  readonly active: string;
  readonly anchor: string;
}

export const noSelection: Selection = { ids: new Set(), active: '', anchor: '' };

const only = (id: string): Selection => ({ ids: new Set([id]), active: id, anchor: id });

export function toggled(selection: Selection, id: string): Selection {
  const ids = new Set(selection.ids);
  if (!ids.delete(id)) ids.add(id);
  return { ids, active: id, anchor: id };
}

/** Selects from the anchor to `id`, as they are listed. Without an anchor in the list only `id`. */
export function extended(selection: Selection, id: string, order: readonly string[]): Selection {
  const from = order.indexOf(selection.anchor);
  const to = order.indexOf(id);
  if (from < 0 || to < 0) return only(id);
  const ids = new Set(order.slice(Math.min(from, to), Math.max(from, to) + 1));
  return { ids, active: id, anchor: selection.anchor };
}

export const activated = (selection: Selection, id: string): Selection => ({ ...selection, active: id, anchor: id });

export const everything = (selection: Selection, order: readonly string[]): Selection => ({ ...selection, ids: new Set(order) });

export const nothing = (selection: Selection): Selection => ({ ...selection, ids: new Set() });

/** Without the jobs that are gone. Returns the same object if there are none. */
export function pruned(selection: Selection, exists: (id: string) => boolean): Selection {
  const ids = [...selection.ids].filter(exists);
  const active = exists(selection.active) ? selection.active : '';
  if (ids.length === selection.ids.size && active === selection.active) return selection;
  return { ids: new Set(ids), active, anchor: active };
}
