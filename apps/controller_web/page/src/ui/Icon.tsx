/** Line drawings of 16 by 16 units. They repeat what a text beside them says, so they are hidden from screen readers. */
const shapes = {
  queued: 'M8 3.2a4.8 4.8 0 1 0 0 9.6 4.8 4.8 0 0 0 0-9.6M8 5.4V8l1.8 1.4',
  held: 'M6 4.5v7M10 4.5v7',
  running: 'M5.5 3.8 12 8l-6.5 4.2z',
  succeeded: 'm3.5 8.4 3 3 6-6.6',
  failed: 'm4.2 4.2 7.6 7.6M11.8 4.2l-7.6 7.6',
  cancelled: 'M8 3.2a4.8 4.8 0 1 0 0 9.6 4.8 4.8 0 0 0 0-9.6M4.8 4.8l6.4 6.4',
  search: 'M7 3a4 4 0 1 0 0 8 4 4 0 0 0 0-8m3 7 3.2 3.2',
  close: 'm4 4 8 8M12 4l-8 8',
  up: 'm4 10 4-4 4 4',
  down: 'm4 6 4 4 4-4',
  plus: 'M8 3.5v9M3.5 8h9',
  pause: 'M5.5 4v8M10.5 4v8',
  resume: 'M5.5 3.8 12 8l-6.5 4.2z',
  download: 'M8 3v7m-3-2.8L8 10l3-2.8M3.5 12.8h9',
  folder: 'M2.5 4.2h3.6l1.4 1.6h6v6.4h-11z',
  file: 'M4.5 2.5h4.8l2.7 2.7v8.3h-7.500zM9 2.700v2.800h2.800',
  back: 'M9.500 3.800 5.300 8l4.200 4.200',
  help: 'M6 6.200a2 2 0 1 1 2.700 1.900c-.5.2-.7.5-.7 1.100M8 11.400v.2',
  settings: 'M3 4.500h10M3 8h10M3 11.500h10',
  warning: 'M8 3 13.500 12.800h-11zM8 6.800v2.800M8 11.200v.1',
} as const;

export type IconName = keyof typeof shapes;

export function Icon({ name }: { name: IconName }) {
  return (
    <svg class="icon" viewBox="0 0 16 16" aria-hidden="true">
      <path d={shapes[name]} />
    </svg>
  );
}
