// Georeferencing: one plane fitted to another by control points.
import type { Catalogue } from "./catalogue.js";
import { listOf, numbersOf, OrvexError } from "./errors.js";
import type { Module } from "./module.js";
import { Owned } from "./owned.js";
import type { Coordinates, Georef, GeorefControl, GeorefMethod, GeorefMethodInfo } from "./types.js";

export class GeorefObject implements Georef {
  readonly method: GeorefMethodInfo;
  readonly residuals: Float64Array;
  readonly error: number;
  readonly coefficients: readonly number[] | null;
  private readonly owned: Owned;

  constructor(private readonly module: Module, catalogue: Catalogue, controls: readonly GeorefControl[], key: GeorefMethod) {
    const method = catalogue.georefMethods.find((each) => each.key === key);
    if (!method) throw new OrvexError(`there is no method "${key}" of georeferencing`);
    const count = listOf(controls, "control points").length;
    if (count < method.controls) {
      throw new OrvexError(`${method.name} needs at least ${method.controls} control points, not ${count}`);
    }
    this.method = method;
    if (!controls.every((control) => numbersOf(control, "control points").length === 4)) {
      throw new OrvexError("a control point has four numbers: from x and y, to x and y");
    }
    const points = [...controls.flatMap(([x, y]) => [x, y]), ...controls.flatMap(([, , x, y]) => [x, y])];
    const handle = module.withDoubles(points, (at) => module.make("georef_create", method.id, at, count));
    this.owned = new Owned(module, handle, "georef_delete", "transform");
    const report = module.withDoubles(new Float64Array(count + 7), (at) => {
      module.run("georef_report", handle, at);
      return module.doubles(at, count + 7).slice();
    });
    this.residuals = report.slice(0, count);
    this.error = report[count]!;
    this.coefficients = key === "affine" ? [...report.subarray(count + 1)] : null;
  }

  forward(x: number, y: number): [number, number];
  forward(coords: Coordinates): Float64Array;
  forward(given: number | Coordinates, y?: number): [number, number] | Float64Array {
    const { handle } = this.owned;
    const run = (at: number, count: number): void => this.module.run("georef_convert", handle, at, count);
    return typeof given === "number" ? this.module.point(given, y ?? NaN, run) : this.module.convert(given, run);
  }

  dispose(): void {
    this.owned.dispose();
  }
}
