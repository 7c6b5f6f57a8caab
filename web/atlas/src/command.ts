// The command line of the tool that computes or draws what the page shows.
import type { Value, Values } from "./catalogue";
import type { Bounds } from "./chart";
import type { Choice, Engine } from "./engine";
import { utmZoneOf } from "./parameters";
import { short, type Place, type State } from "./state";
import { wrapped } from "./view";

function quoted(text: string): string {
  return /^[\w.,:=+/-]+$/.test(text) ? text : `"${text.replace(/(["\\$`])/g, "\\$1")}"`;
}

const valueText = (value: Value) => (typeof value === "boolean" ? (value ? "yes" : "no") : String(value));

/** As many digits as the page's addresses have. */
const placeText = (place: Place) => place.map((degrees) => short(degrees, 9)).join(" ");

/** The library's records mean the usual scale by 0; the tool refuses it. */
const isUsual = (key: string, value: Value) => (key === "k0" || key === "scale") && value === 0;

function sets(values: Values, leave: readonly string[]): string[] {
  return Object.entries(values)
    .filter(([key, value]) => key !== "ellipsoid" && !leave.includes(key) && !isUsual(key, value))
    .map(([key, value]) => `--set ${quoted(`${key}=${valueText(value)}`)}`);
}

/** The projection as the tool is told. */
export function projectionOptions(engine: Engine, choice: Choice): string[] {
  const values = engine.values(choice);
  const ellipsoid = values.ellipsoid === undefined ? [] : [`--ellipsoid ${quoted(String(values.ellipsoid))}`];
  if (choice.slug === "spcs27" || choice.slug === "spcs83") {
    const year = choice.slug === "spcs27" ? "27" : "83";
    return [`--stateplane${year} ${quoted(String(values.zone))}`, ...sets(values, ["zone"])];
  }
  const zone = utmZoneOf(Number(values.lon0 ?? 0));
  const isZone = values.lon0 === 6 * zone - 183 && (values.k0 ?? 0.9996) === 0.9996 && (values.lat0 ?? 0) === 0;
  if (choice.slug === "utm" && isZone) {
    return [`--utm ${zone}${values.south === true ? "S" : "N"}`, ...sets(values, ["lon0", "lat0", "south", "k0"]), ...ellipsoid];
  }
  return [`--proj ${quoted(engine.info(choice.slug).name)}`, ...sets(values, []), ...ellipsoid];
}

/** Map coordinates of a place. */
export function projectCommand(engine: Engine, choice: Choice, stated: boolean, place?: Place): string {
  const options = ["orvex project", ...projectionOptions(engine, choice)];
  if (stated) options.push("--stated");
  if (place) options.push(`${placeText(place).includes("-") ? "-- " : ""}${placeText(place)}`);
  return options.join(" ");
}

/** What a picture shows, as the tool draws it. */
export interface Picture {
  /** Unless the map stands whole. */
  bounds?: Bounds;
  /** Steps in degrees. */
  graticule: number;
  tissot: number;
}

const usualGraticule = 15;

/** The same map as a file. */
export function mapCommand(engine: Engine, state: State, { bounds, graticule, tissot }: Picture): string {
  const options = ["orvex map", ...projectionOptions(engine, { slug: state.slug, values: state.values })];
  if (state.stated) options.push("--stated");
  if (bounds) options.push(`--bounds ${bounds.map((degrees, i) => short(i % 2 === 0 ? wrapped(degrees) : degrees)).join(",")}`);
  if (graticule !== usualGraticule) options.push(`--graticule ${short(graticule)}`);
  if (state.tissot) options.push(`--tissot ${tissot}`);
  if (state.shading !== "none") options.push(`--distortion ${state.shading}`);
  return [...options, `-o ${state.slug}.svg`].join(" ");
}

/** A place on another datum. */
export function datumCommand({ from, to, stated, point }: State): string {
  const options = ["orvex datum", `--from ${quoted(from)}`, `--to ${quoted(to)}`, ...(stated ? ["--stated"] : [])];
  return [...options, ...(point ? [`-- ${placeText(point)}`] : [])].join(" ");
}

/** A table through the same conversion as the page's. */
export function tableCommand(engine: Engine, state: State, kind: string, file: string, table?: { columns: readonly string[]; decimalComma: boolean }): string {
  const choice = { slug: state.slug, values: state.values };
  const stated = state.stated ? ["--stated"] : [];
  const named = table ? [`--x ${quoted(table.columns[0]!)} --y ${quoted(table.columns[1]!)} --keep`] : [];
  if (table?.decimalComma) named.push("--decimal-comma");
  const parts: Record<string, string[]> = {
    forward: ["orvex project", ...projectionOptions(engine, choice)],
    inverse: ["orvex project --inverse", ...projectionOptions(engine, choice)],
    shift: ["orvex datum", `--from ${quoted(state.from)}`, `--to ${quoted(state.to)}`],
    utm: ["orvex project --utm auto"],
    mgrs: ["orvex project --mgrs"],
  };
  return [...(parts[kind] ?? []), ...stated, ...named, quoted(file)].join(" ");
}
