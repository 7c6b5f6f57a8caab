// The package orvex: the library in WebAssembly.
import { Catalogue } from "./catalogue.js";
import { recordOf } from "./errors.js";
import { Module } from "./module.js";
import { OrvexObject } from "./orvex.js";
import type { LoadOptions, Orvex } from "./types.js";

export { OrvexError } from "./errors.js";
export type * from "./types.js";

/** Loads the module. Each call makes one with a memory of its own. */
export async function load(options: LoadOptions = {}): Promise<Orvex> {
  const module = await Module.load(recordOf(options, "options"));
  return new OrvexObject(module, new Catalogue(module));
}
