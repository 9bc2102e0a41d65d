import type { ComponentChildren } from 'preact';
import { useLayoutEffect, useRef } from 'preact/hooks';
import { t } from '../text/text.ts';
import { Icon } from './Icon.tsx';

/** Closes the dialog around the element of an event. Only then does the browser give the focus back. */
export function closeDialog(event: Event): void {
  (event.currentTarget as HTMLElement).closest('dialog')?.close();
}

interface Properties {
  title: string;
  /** Called after the dialog was closed in any way. */
  onClose: () => void;
  children: ComponentChildren;
}

/** A modal dialog; the browser keeps the focus in it and gives it back afterwards. */
export function Dialog({ title, onClose, children }: Properties) {
  const element = useRef<HTMLDialogElement>(null);
  // Before the next event: a key that is pressed at once is meant for the dialog.
  useLayoutEffect(() => element.current?.showModal(), []);
  const onClick = (event: MouseEvent): void => {
    if (event.target === element.current) element.current?.close();
  };
  return (
    <dialog ref={element} class="dialog" aria-labelledby="dialog-title" onClose={onClose} onClick={onClick}>
      <div class="dialog-body">
        <header class="dialog-head">
          <h2 id="dialog-title">{title}</h2>
          <button type="button" class="plain" aria-label={t('action.close')} onClick={closeDialog}>
            <Icon name="close" />
          </button>
        </header>
        {children}
      </div>
    </dialog>
  );
}
