// The module of WebAssembly: loading it, its memory, its calls.
import { libraryError, OrvexError } from "./errors.js";
import type { LoadOptions, Paths, Points } from "./types.js";

/** A place in the module's memory. */
export type Pointer = number;
/** Something of the library's, by its address. */
export type Handle = number;

interface Exports {
  HEAPU8: Uint8Array;
  HEAPF64: Float64Array;
  HEAP32: Int32Array;
  UTF8ToString(text: Pointer): string;
  stringToUTF8(text: string, to: Pointer, room: number): void;
  lengthBytesUTF8(text: string): number;
  [name: `_${string}`]: (...numbers: number[]) => number;
}

type Factory = (options: object) => Promise<Exports>;

const addressSpace = 2 ** 32;  // bytes; sizes and addresses beyond it would wrap
const coordinate = Float64Array.BYTES_PER_ELEMENT;
export const pointBytes = 2 * coordinate;

const isNode = typeof process === "object" && typeof process.versions?.node === "string";

async function compile(wasm: LoadOptions["wasm"]): Promise<WebAssembly.Module> {
  if (wasm instanceof WebAssembly.Module) return wasm;
  if (wasm instanceof ArrayBuffer || ArrayBuffer.isView(wasm)) return WebAssembly.compile(wasm as BufferSource);
  if (wasm !== undefined && typeof wasm !== "string" && !(wasm instanceof URL)) {
    throw new OrvexError(`wasm must be an address, bytes or a module, not ${String(wasm)}`);
  }
  const beside = new URL("orvex.wasm", import.meta.url);
  const url = wasm === undefined ? beside : new URL(wasm, import.meta.url);
  if (url.protocol === "file:" && isNode) {
    const files = "node:fs/promises";  // out of the sight of bundlers for browsers
    const { readFile } = (await import(/* @vite-ignore */ files)) as typeof import("node:fs/promises");
    return WebAssembly.compile(await readFile(url));
  }
  const response = await fetch(url);
  if (!response.ok) throw new OrvexError(`${url} cannot be read: ${response.status} ${response.statusText}`);
  const isTyped = response.headers.get("content-type")?.startsWith("application/wasm");
  return isTyped ? WebAssembly.compileStreaming(response) : WebAssembly.compile(await response.arrayBuffer());
}

export class Module {
  private constructor(private readonly exports: Exports) {}

  static async load(options: LoadOptions): Promise<Module> {
    const [compiled, { default: factory }] = await Promise.all([
      compile(options.wasm),
      import("./orvex-module.js") as Promise<{ default: Factory }>,
    ]);
    return new Module(await new Promise<Exports>((resolve, reject) => {
      const unfit = (error: unknown): void => reject(new OrvexError(`this is not the module orvex.wasm: ${String(error)}`));
      const instantiateWasm = (imports: WebAssembly.Imports, done: (instance: WebAssembly.Instance) => void): object => {
        WebAssembly.instantiate(compiled, imports).then(done).catch(unfit);
        return {};
      };
      factory({ instantiateWasm }).then(resolve, unfit);
    }));
  }

  get bytes(): number {
    return this.exports.HEAPU8.length;
  }

  /** Calls a function that answers a number. */
  call(name: string, ...values: number[]): number {
    return this.exports[`_ow_${name}`]!(...values);
  }

  /** Calls a function that answers whether it failed. */
  run(name: string, ...values: number[]): void {
    if (this.call(name, ...values) !== 0) throw this.failure();
  }

  /** Calls a function that answers an address, 0 when it failed. */
  make(name: string, ...values: number[]): Handle {
    return this.call(name, ...values) || this.fail();
  }

  /** Calls a function that answers a text. */
  text(name: string, ...values: number[]): string {
    return this.exports.UTF8ToString(this.make(name, ...values) >>> 0);
  }

  fail(): never {
    throw this.failure();
  }

  private failure(): OrvexError {
    return libraryError(this.exports.UTF8ToString(this.call("error_text")), this.call("error_id"));
  }

  allocate(bytes: number): Pointer {
    const at = bytes < addressSpace ? this.exports._malloc!(Math.max(bytes, 1)) >>> 0 : 0;
    if (at === 0) throw new OrvexError("there is no memory left");
    return at;
  }

  free(at: Pointer): void {
    this.exports._free!(at);
  }

  /** Runs something with room that is free again afterwards. */
  withRoom<T>(bytes: number, use: (at: Pointer) => T): T {
    const at = this.allocate(bytes);
    try {
      return use(at);
    } finally {
      this.free(at);
    }
  }

  withText<T>(text: string, use: (at: Pointer) => T): T {
    const room = this.exports.lengthBytesUTF8(text) + 1;
    return this.withRoom(room, (at) => {
      this.exports.stringToUTF8(text, at, room);
      return use(at);
    });
  }

  withDoubles<T>(values: ArrayLike<number>, use: (at: Pointer) => T): T {
    return this.withRoom(values.length * coordinate, (at) => {
      this.doubles(at, values.length).set(values);
      return use(at);
    });
  }

  withIntegers<T>(values: ArrayLike<number>, use: (at: Pointer) => T): T {
    return this.withRoom(values.length * Int32Array.BYTES_PER_ELEMENT, (at) => {
      this.integers(at, values.length).set(values);
      return use(at);
    });
  }

  withBytes<T>(values: Uint8Array, use: (at: Pointer) => T): T {
    return this.withRoom(values.length, (at) => {
      this.exports.HEAPU8.set(values, at);
      return use(at);
    });
  }

  /** Views hold until the memory grows. */
  doubles(at: Pointer, count: number): Float64Array {
    const first = (at >>> 0) / coordinate;  // addresses come as signed numbers
    return this.exports.HEAPF64.subarray(first, first + count);
  }

  integers(at: Pointer, count: number): Int32Array {
    const first = (at >>> 0) / Int32Array.BYTES_PER_ELEMENT;
    return this.exports.HEAP32.subarray(first, first + count);
  }

  /** The shapes that the last call left behind, as views. */
  paths(): Paths {
    return {
      coords: this.doubles(this.call("result_points"), 2 * this.call("result_point_count")),
      starts: this.integers(this.call("result_starts"), this.call("result_start_count")),
    };
  }

  /**
   * Converts pairs in place where they lie in the module's memory, else by way of a copy, which is the result.
   * `convert` gets the address and the number of points.
   */
  convert(given: Float64Array | Points, convert: (at: Pointer, count: number) => void): Float64Array {
    const coords = given instanceof Float64Array ? given : (given as Points | null)?.array;
    if (!(coords instanceof Float64Array)) throw new OrvexError("coordinates are two numbers, a Float64Array or Points");
    if (coords.length % 2 !== 0) throw new OrvexError("coordinates come in pairs; the array has an odd length");
    const count = coords.length / 2;
    if (coords.buffer === this.exports.HEAPF64.buffer) {
      const at = coords.byteOffset;
      if (count > 0) convert(at, count);
      return coords.length === 2 * count ? coords : this.doubles(at, 2 * count);  // the memory may have grown
    }
    if (coords.buffer.byteLength === 0 && isDetached(coords)) {
      throw new OrvexError("the view is from before the memory grew; take the array of its Points anew");
    }
    if (count === 0) return new Float64Array(0);
    return this.withDoubles(coords, (at) => {
      convert(at, count);
      return this.doubles(at, coords.length).slice();
    });
  }

  point(x: number, y: number, convert: (at: Pointer, count: number) => void): [number, number] {
    return this.withDoubles([x, y], (at) => {
      convert(at, 1);
      const [u, v] = this.doubles(at, 2);
      return [u!, v!];
    });
  }
}

/** Whether an array has lost its memory; an empty array of its own has an offset of 0 and a buffer that can be read. */
function isDetached(array: Float64Array): boolean {
  try {
    new Uint8Array(array.buffer);
    return false;
  } catch {
    return true;
  }
}
