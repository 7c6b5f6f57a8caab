// Datums, changes from one to another, and grid files.
import { datumMethods, find } from "./catalogue.js";
import type { Catalogue } from "./catalogue.js";
import { OrvexError } from "./errors.js";
import type { Module } from "./module.js";
import { Owned } from "./owned.js";
import { exactFlag, figureOf } from "./record.js";
import type { Accuracy, Coordinates, Datum, DatumChoice, DatumDefinition, Shift } from "./types.js";

const gridNames = ["conus.las", "conus.los", "prvi.las", "prvi.los", "ntv2_0.gsb"];

export function datumOf(catalogue: Catalogue, choice: DatumChoice): Datum {
  if (typeof choice !== "object" || choice === null) return find(catalogue.datums, choice, "datum");
  if ("id" in choice) return choice;
  return { id: 0, name: "User Defined", method: choice.method, parameters: choice };
}

/** The step of a datum of the caller's own, as the module reads it; nothing of the catalogue's. */
function stepOf(catalogue: Catalogue, datum: Datum): number[] {
  const given: DatumDefinition | null = datum.id === 0 ? datum.parameters : null;
  if (!given) return [];
  const method = datumMethods.indexOf(given.method);
  if (method < 0) throw new OrvexError(`there is no method "${given.method}" for a datum of one's own`);
  const figure = figureOf(catalogue, given.ellipsoid ?? "WGS 84");
  const { meridian = 0, dx = 0, dy = 0, dz = 0, rx = 0, ry = 0, rz = 0, k = 0 } = given;
  const values = [method, figure.id, figure.radius, figure.flattening, meridian, dx, dy, dz, rx, ry, rz, k];
  if (!values.every(Number.isFinite)) throw new OrvexError("a parameter of the datum is not a finite number");
  return values;
}

export class ShiftObject implements Shift {
  readonly from: Datum;
  readonly to: Datum;
  private readonly owned: Owned;

  constructor(
    private readonly module: Module, catalogue: Catalogue, from: DatumChoice, to: DatumChoice, readonly accuracy: Accuracy,
  ) {
    this.from = datumOf(catalogue, from);
    this.to = datumOf(catalogue, to);
    const exact = exactFlag(accuracy);
    const handle = module.withDoubles(stepOf(catalogue, this.from), (step1) =>
      module.withDoubles(stepOf(catalogue, this.to), (step2) =>
        module.make("shift_create", this.from.id, this.to.id, step1, step2, exact)));
    this.owned = new Owned(module, handle, "shift_delete", "change of datum");
  }

  forward(lon: number, lat: number): [number, number];
  forward(coords: Coordinates): Float64Array;
  forward(given: number | Coordinates, lat?: number): [number, number] | Float64Array {
    const { handle } = this.owned;
    const run = (at: number, count: number): void => this.module.run("shift_convert", handle, at, count);
    return typeof given === "number" ? this.module.point(given, lat ?? NaN, run) : this.module.convert(given, run);
  }

  forward3(coords: Float64Array): Float64Array {
    if (!(coords instanceof Float64Array)) throw new OrvexError(`coordinates must be a Float64Array, not ${String(coords)}`);
    if (coords.length % 3 !== 0) throw new OrvexError("coordinates come in threes: longitude, latitude, height");
    const pairs = new Float64Array((coords.length / 3) * 2);
    for (let i = 0; i < pairs.length; i++) pairs[i] = coords[(i >> 1) * 3 + (i & 1)]!;
    const shifted = this.forward(pairs);
    const result = coords.slice();
    for (let i = 0; i < pairs.length; i++) result[(i >> 1) * 3 + (i & 1)] = shifted[i]!;
    return result;
  }

  dispose(): void {
    this.owned.dispose();
  }
}

/** Writes a grid file into the module's own file system, where the library finds it. */
export function addGrid(module: Module, name: string, bytes: Uint8Array | ArrayBuffer): void {
  if (!gridNames.includes(String(name).toLowerCase())) {
    throw new OrvexError(`"${name}" is not the name of a grid file that the library reads: ${gridNames.join(", ")}`);
  }
  if (!(bytes instanceof ArrayBuffer) && !ArrayBuffer.isView(bytes)) throw new OrvexError(`${name} comes without its bytes`);
  const view = bytes instanceof Uint8Array ? bytes : new Uint8Array(bytes);
  const published = name.toLowerCase() === "ntv2_0.gsb" ? "NTV2_0.GSB" : name.toLowerCase();
  module.withText(published, (text) => module.withBytes(view, (at) => module.run("grid", text, at, view.length)));
}
