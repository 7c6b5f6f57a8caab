// The command line of the tool that computes or draws what the page shows.
import type { Value, Values } from "./catalogue";
import type { Choice, Engine } from "./engine";
import { utmZoneOf } from "./parameters";
import { short, type Place, type State } from "./state";

function quoted(text: string): string {
  return /^[\w.,:=+/-]+$/.test(text) ? text : `"${text.replace(/(["\\$`])/g, "\\$1")}"`;
}

const valueText = (value: Value) => (typeof value === "boolean" ? (value ? "yes" : "no") : String(value));

function sets(values: Values, leave: readonly string[]): string[] {
  return Object.entries(values)
    .filter(([key]) => key !== "ellipsoid" && !leave.includes(key))
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
  if (choice.slug === "utm" && values.lon0 === 6 * zone - 183 && (values.k0 ?? 0.9996) === 0.9996) {
    return [`--utm ${zone}${values.south === true ? "S" : "N"}`, ...sets(values, ["lon0", "south", "k0"]), ...ellipsoid];
  }
  return [`--proj ${quoted(engine.info(choice.slug).name)}`, ...sets(values, []), ...ellipsoid];
}

/** Map coordinates of a place. */
export function projectCommand(engine: Engine, choice: Choice, stated: boolean, place?: Place): string {
  const options = ["orvex project", ...projectionOptions(engine, choice)];
  if (stated) options.push("--stated");
  if (place) {
    const numbers = place.map((degrees) => short(degrees, 9));
    options.push(numbers.some((text) => text.startsWith("-")) ? `-- ${numbers.join(" ")}` : numbers.join(" "));
  }
  return options.join(" ");
}

/** The same map as a file. */
export function mapCommand(engine: Engine, state: State): string {
  const options = ["orvex map", ...projectionOptions(engine, { slug: state.slug, values: state.values })];
  if (state.graticule !== undefined) options.push(`--graticule ${state.graticule}`);
  if (state.tissot) options.push("--tissot 30");
  if (state.shading !== "none") options.push(`--distortion ${state.shading}`);
  return [...options, `-o ${state.slug}.svg`].join(" ");
}

/** A table through the same conversion as the page's. */
export function tableCommand(engine: Engine, state: State, kind: string, file: string, columns: readonly [string, string] | undefined): string {
  const choice = { slug: state.slug, values: state.values };
  const stated = state.stated ? ["--stated"] : [];
  const named = columns ? [`--x ${quoted(columns[0])} --y ${quoted(columns[1])} --keep`] : [];
  const parts: Record<string, string[]> = {
    forward: ["orvex project", ...projectionOptions(engine, choice)],
    inverse: ["orvex project --inverse", ...projectionOptions(engine, choice)],
    shift: ["orvex datum", `--from ${quoted(state.from)}`, `--to ${quoted(state.to)}`],
    utm: ["orvex project --utm auto"],
    mgrs: ["orvex project --mgrs"],
  };
  return [...(parts[kind] ?? []), ...stated, ...named, quoted(file)].join(" ");
}
