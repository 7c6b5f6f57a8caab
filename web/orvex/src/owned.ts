// Things of the library's that belong to objects of JavaScript.
import { OrvexError } from "./errors.js";
import type { Handle, Module } from "./module.js";

/** Frees what was forgotten, some time after it has become unreachable. */
const forgotten = new FinalizationRegistry<() => void>((release) => release());

/** Keeps a handle until it is disposed of, or forgotten. */
export class Owned {
  private current: Handle;
  private readonly release: () => void;

  constructor(module: Module, handle: Handle, deleter: string, private readonly what: string) {
    this.current = handle;
    this.release = () => void module.call(deleter, handle);
    forgotten.register(this, this.release, this);
  }

  get handle(): Handle {
    if (this.current === 0) throw new OrvexError(`this ${this.what} has been disposed of`);
    return this.current;
  }

  dispose(): void {
    if (this.current === 0) return;
    this.current = 0;
    forgotten.unregister(this);
    this.release();
  }
}
