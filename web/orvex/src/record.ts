// Parameters of a projection on their way into the library's record and out of it.
import { find, projectionIds, wgs84Ellipsoid } from "./catalogue.js";
import type { Catalogue } from "./catalogue.js";
import { OrvexError, recordOf } from "./errors.js";
import type { Handle, Module } from "./module.js";
import type { Accuracy, CompleteParams, EllipsoidChoice, ParameterInfo, ParameterKey, Params, ProjectionInfo } from "./types.js";

const wrapId = 0;
const clarke1866 = 15, grs80 = 3;

/** A figure as the library takes it: a number of the catalogue, or 0 with radius and flattening. */
export function figureOf(catalogue: Catalogue, choice: EllipsoidChoice): { id: number; radius: number; flattening: number } {
  if (typeof choice !== "object" || choice === null) return find(catalogue.ellipsoids, choice, "ellipsoid", "ellipsoid");
  return { id: 0, radius: finite(choice.radius, "radius"), flattening: finite(choice.flattening ?? 0, "flattening") };
}

export function finite(value: unknown, key: ParameterKey): number {
  if (typeof value !== "number" || !Number.isFinite(value)) {
    throw new OrvexError(`${key} is not a finite number: ${String(value)}`, null, key);
  }
  return value;
}

function flag(value: unknown, key: ParameterKey): number {
  if (typeof value !== "boolean") throw new OrvexError(`${key} is neither true nor false: ${String(value)}`, null, key);
  return value ? 1 : 0;
}

/** The accuracy as the module takes it. */
export function exactFlag(accuracy: Accuracy): number {
  if (accuracy !== "exact" && accuracy !== "stated") throw new OrvexError(`accuracy is "exact" or "stated", not "${String(accuracy)}"`);
  return accuracy === "exact" ? 1 : 0;
}

/** Writes the draft of the module's next projection. */
class Draft {
  constructor(private readonly module: Module, private readonly catalogue: Catalogue, private readonly info: ProjectionInfo) {
    module.call("draft_begin", info.id);
  }

  write(params: Params): void {
    const { wrap, ellipsoid, radius, flattening, ...others } = params;
    this.writeFigure(ellipsoid, radius, flattening);
    for (const [key, value] of Object.entries(others)) {
      if (value !== undefined) this.set(key as ParameterKey, value);
    }
    if (wrap) this.module.run("draft_set", wrapId, 1);
  }

  private writeFigure(ellipsoid?: EllipsoidChoice, radius?: number, flattening?: number): void {
    if (radius !== undefined && ellipsoid !== undefined) {
      throw new OrvexError("ellipsoid and radius both choose the ellipsoid; leave one out", null, "ellipsoid");
    }
    if (flattening !== undefined && radius === undefined) {
      throw new OrvexError("flattening needs radius given as well", null, "flattening");
    }
    const given = radius === undefined ? ellipsoid : { radius, flattening: flattening ?? 0 };
    if (given !== undefined && !this.info.usesEllipsoid) throw this.unused(radius === undefined ? "ellipsoid" : "radius");
    const figure = figureOf(this.catalogue, given === undefined ? this.usualEllipsoid() : given);
    this.write1("ellipsoid", figure.id);
    if (figure.id !== 0) return;
    this.write1("radius", figure.radius);
    this.write1("flattening", figure.flattening);
  }

  private usualEllipsoid(): number {
    if (this.info.id === projectionIds.plane1927) return clarke1866;
    return this.info.id === projectionIds.plane1983 ? grs80 : wgs84Ellipsoid;
  }

  private set(key: ParameterKey, value: number | string | boolean): void {
    const parameter = this.catalogue.parameters.find((each) => each.key === key);
    if (!parameter) throw new OrvexError(`there is no parameter "${key}"`);
    const isUsed = this.info.parameters.some((each) => each.key === key);
    // The number of a UTM zone may stand in its record, though the projection follows the meridian.
    if (!isUsed && !(key === "zone" && this.info.id === projectionIds.utm)) throw this.unused(key);
    this.write1(key, this.numberOf(parameter, value));
  }

  private numberOf({ control, key }: ParameterInfo, value: number | string | boolean): number {
    if (control === "flag") return flag(value, key);
    if (control === "zone" && this.info.id !== projectionIds.utm) {
      const year = this.info.id === projectionIds.plane1927 ? 1927 : 1983;
      return find(this.catalogue.zones[year], value as number | string, `state plane zone of ${year}`, "zone").id;
    }
    return finite(value, key);
  }

  private write1(key: ParameterKey, value: number): void {
    this.module.run("draft_set", this.catalogue.parameters.find((each) => each.key === key)!.id, value);
  }

  private unused(key: ParameterKey): OrvexError {
    const used = this.info.parameters.map((each) => each.key).join(", ") || "none";
    return new OrvexError(`${this.info.name} does not use ${key}; it uses: ${used}`, null, key);
  }
}

/** A handle of the library for the parameters. */
export function createProjection(
  module: Module, catalogue: Catalogue, info: ProjectionInfo, params: Params, accuracy: Accuracy,
): Handle {
  const exact = exactFlag(accuracy);
  new Draft(module, catalogue, info).write(recordOf(params, "parameters"));
  return module.make("projection_create", exact);
}

/** The parameters of a handle. */
export function readParams(module: Module, catalogue: Catalogue, handle: Handle): CompleteParams {
  const entries = catalogue.parameters.map(({ id, key, control }): [string, number | boolean] => {
    const value = module.call("projection_get", handle, id);
    return [key, control === "flag" ? value !== 0 : value];
  });
  entries.push(["wrap", module.call("projection_get", handle, wrapId) !== 0]);
  return Object.freeze(Object.fromEntries(entries)) as CompleteParams;
}
