import { LoadingManager } from 'three';
import { ModelError } from './model-error.ts';

/** Whether an address that a model names, or the page made for it, is in the folder of the model. */
export function isBelow(address: string, folder: string, page: string): boolean {
  return new URL(address, page).href.startsWith(new URL(folder, page).href);
}

/** The content of a `data:` address. */
export function dataOf(address: string): Blob {
  const [, type = '', base64, content = ''] = /^data:([^;,]*)[^,]*?(;base64)?,(.*)$/is.exec(address) ?? [];
  const text = base64 ? atob(decodeURIComponent(content)) : decodeURIComponent(content);
  return new Blob([base64 ? Uint8Array.from(text, (character) => character.charCodeAt(0)) : text], { type });
}

/** Where the library may fetch from: what the file has in itself, and files beside it. */
export class OwnFiles {
  readonly manager = new LoadingManager();
  private readonly made: string[] = [];

  constructor(private readonly folder: string) {
    this.manager.setURLModifier((address) => this.permitted(address));
  }

  release(): void {
    this.made.forEach((address) => URL.revokeObjectURL(address));
  }

  private permitted(address: string): string {
    if (address.startsWith('blob:')) return address;
    if (address.startsWith('data:')) return this.madeFor(dataOf(address));
    if (isBelow(address, this.folder, document.baseURI)) return address;
    throw new ModelError('elsewhere', address);
  }

  /** The content security policy forbids data: addresses. */
  private madeFor(content: Blob): string {
    const address = URL.createObjectURL(content);
    this.made.push(address);
    return address;
  }
}
