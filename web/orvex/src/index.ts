// The package orvex: the library in WebAssembly.
import type { LoadOptions, Orvex, ParameterKey } from "./types.js";

export type * from "./types.js";

/** What the library refuses. */
export class OrvexError extends Error {
  constructor(
    message: string,
    /** Number of the library's message, 20200 to 20281; null for what the package itself refuses. */
    readonly messageId: number | null = null,
    /** The parameter that it is about, where that is known. */
    readonly parameter: ParameterKey | null = null,
  ) {
    super(message);
    this.name = "OrvexError";
  }
}

export declare function load(options?: LoadOptions): Promise<Orvex>;
