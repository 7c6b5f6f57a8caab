// The library's tables, read once, and looking things up in them.
import { OrvexError } from "./errors.js";
import { examples } from "./examples.js";
import type { Module } from "./module.js";
import type {
  Control, DatumDefinition, DatumInfo, DatumMethod, EllipsoidInfo, GeorefMethod, GeorefMethodInfo, ParameterInfo,
  ParameterKey, ProjectionInfo, StateZoneInfo, UnitInfo,
} from "./types.js";

interface RawDatum {
  id: number;
  name: string;
  method: number;
  reversible: boolean;
  code: number | null;
  ellipsoid?: number;
  values?: [number, number, number, number, number, number, number, number];
  area?: [number, number, number, number];
}

interface Raw {
  version: string;
  parameters: { id: number; key: ParameterKey; name: string; unit: string; type: number }[];
  projections: { id: number; name: string; sphere: boolean; parameters: number[] }[];
  ellipsoids: EllipsoidInfo[];
  datums: RawDatum[];
  units: UnitInfo[];
  zones1927: StateZoneInfo[];
  zones1983: StateZoneInfo[];
  georefMethods: string[];
}

/** By the numbers of the library's methods; one of them is reserved. */
export const datumMethods: readonly (DatumMethod | null)[] = ["none", "nadcon", "bursa", "molodensky", null, "mre", "ntv2"];

/** In the library's order; affine coefficients without controls have no key. */
const georefKeys: readonly ([GeorefMethod, number] | null)[] = [
  ["helmert", 2], ["affine", 3], ["poly1", 4], ["poly2", 6], ["poly3", 10], null, ["tps", 3], ["natural", 3],
  ["marcov", 3], ["exponential", 3], ["rational", 3], ["idw", 3],
];

export const projectionIds = { utm: 4, plane1927: 9, plane1983: 10, unprojected: 0 } as const;
export const wgs84Ellipsoid = 47;
const noZone = 142;
const doubleType = 0, boolType = 1, zoneType = 3;

function controlOf(type: number, unit: string): Control {
  if (type === boolType) return "flag";
  if (type === zoneType) return "zone";
  if (type !== doubleType) return "ellipsoid";
  if (unit === "degrees") return "angle";
  return unit === "" ? "number" : "length";
}

function defaultOf(key: ParameterKey, control: Control, projection: number): number | boolean {
  if (key === "k0") return projection === projectionIds.utm ? 0.9996 : 1;
  if (key === "scale") return 1;
  if (control === "zone") return noZone;
  if (control === "ellipsoid") return wgs84Ellipsoid;
  return control === "flag" ? false : 0;
}

/** Lower-case letters and digits alone. */
function condensed(text: string): string {
  return text.toLowerCase().replace(/[^a-z0-9]/g, "");
}

/** The entry with a number or name, without regard to case, blanks and punctuation. */
export function find<Row extends { id: number; name: string }>(
  rows: readonly Row[], nameOrId: string | number, kind: string, parameter: ParameterKey | null = null,
): Row {
  const wanted = String(nameOrId).toLowerCase();
  const row =
    typeof nameOrId === "number"
      ? rows.find((each) => each.id === nameOrId)
      : rows.find((each) => each.name.toLowerCase() === wanted) ??
        rows.find((each) => condensed(each.name) === condensed(wanted));
  if (row) return row;
  const near = rows.filter((each) => wanted.length > 2 && condensed(each.name).includes(condensed(wanted)));
  const hint = near.length > 0 ? `; did you mean ${near.slice(0, 3).map((each) => `"${each.name}"`).join(", ")}?` : "";
  throw new OrvexError(`there is no ${kind} "${nameOrId}"${hint}`, null, parameter);
}

export class Catalogue {
  readonly version: string;
  readonly parameters: readonly ParameterInfo[];
  readonly projections: readonly ProjectionInfo[];
  readonly ellipsoids: readonly EllipsoidInfo[];
  readonly datums: readonly DatumInfo[];
  readonly units: readonly UnitInfo[];
  readonly zones: Readonly<Record<1927 | 1983, readonly StateZoneInfo[]>>;
  readonly georefMethods: readonly (GeorefMethodInfo & { id: number })[];

  constructor(module: Module) {
    const raw = JSON.parse(module.text("catalogue")) as Raw;
    const describe = (projection: number) => (row: Raw["parameters"][number]): ParameterInfo => {
      const control = controlOf(row.type, row.unit);
      const { id, key, name } = row;
      const unit = row.type === doubleType ? row.unit : "";
      return { id, key, name, unit, control, default: defaultOf(key, control, projection) };
    };
    this.version = raw.version;
    this.parameters = raw.parameters.map(describe(projectionIds.unprojected));
    this.projections = raw.projections.map(({ id, name, sphere, parameters }) => {
      const used = parameters.map((number) => raw.parameters.find((row) => row.id === number)!).map(describe(id));
      const usesEllipsoid = used.some((each) => each.key === "ellipsoid");
      const drawable = id !== projectionIds.unprojected;
      return { id, name, parameters: used, usesEllipsoid, sphereOnly: sphere, drawable, example: examples[id] ?? {} };
    });
    this.ellipsoids = raw.ellipsoids;
    this.datums = raw.datums.map(datumInfo);
    this.units = raw.units;
    this.zones = { 1927: raw.zones1927, 1983: raw.zones1983 };
    this.georefMethods = raw.georefMethods.flatMap((name, id) => {
      const [key, controls] = georefKeys[id] ?? [];
      return key === undefined ? [] : [{ id, key, name, controls: controls! }];
    });
  }
}

function datumInfo({ id, name, method, reversible, code, ellipsoid, values, area }: RawDatum): DatumInfo {
  const kind = datumMethods[method]!;
  let parameters: DatumDefinition | null = null;
  if (values && (kind === "none" || kind === "bursa" || kind === "molodensky")) {
    const [dx, dy, dz, rx, ry, rz, k, meridian] = values;
    parameters = { method: kind, ellipsoid: ellipsoid!, dx, dy, dz, rx, ry, rz, k, meridian };
  }
  return { id, name, method: kind, reversible, code, ellipsoid: ellipsoid ?? null, parameters, area: area ?? null };
}
