import { useCallback, useLayoutEffect, useRef, useState } from 'preact/hooks';

const margin = 6;

export interface VirtualRows {
  element: { current: HTMLDivElement | null };
  /** The rows to draw: those in view and some around them. */
  first: number;
  end: number;
  onScroll: () => void;
  /** Scrolls as little as necessary. */
  show: (index: number) => void;
}

/** Which of `count` rows of equal height are in view of a scrolling element whose head covers `headHeight` of it. */
export function useVirtualRows(count: number, rowHeight: number, headHeight = 0): VirtualRows {
  const element = useRef<HTMLDivElement>(null);
  const [view, setView] = useState({ top: 0, height: 600 });
  const onScroll = useCallback(() => {
    const { scrollTop = 0, clientHeight = 0 } = element.current ?? {};
    setView((old) => (old.top === scrollTop && old.height === clientHeight ? old : { top: scrollTop, height: clientHeight }));
  }, []);
  useLayoutEffect(() => {
    const observer = new ResizeObserver(onScroll);
    if (element.current) observer.observe(element.current);
    return () => observer.disconnect();
  }, []);
  const show = (index: number): void => {
    const { current } = element;
    if (!current) return;
    const top = index * rowHeight;
    const lowest = top + rowHeight + headHeight - current.clientHeight;
    current.scrollTop = Math.max(lowest, Math.min(current.scrollTop, top));
    onScroll();
  };
  const first = Math.max(0, Math.min(count, Math.floor(view.top / rowHeight)) - margin);
  const end = Math.min(count, Math.ceil((view.top + view.height) / rowHeight) + margin);
  return { element, first, end: Math.max(first, end), onScroll, show };
}
