// What the page shows, and its short form behind the # of the address: "lcc;lat1=33;lat2=45;at=-96,38;zoom=4".
import { entryOf, firstSlug, type Value, type Values } from "./catalogue";

export type Place = readonly [lon: number, lat: number];
export type Shading = "none" | "scale" | "area" | "angle";
export type Tab = "point" | "compare" | "distortion" | "table" | "georef";
export type AngleForm = "degrees" | "dms";

export interface State {
  slug: string;
  /** What differs from where the projection opens. */
  values: Values;
  /** The place in the middle of the map; without it the map is shown whole. */
  at?: Place;
  zoom: number;
  point?: Place;
  tab: Tab;
  /** Step of the graticule in degrees; 0 for none, undefined for one that suits the zoom. */
  graticule?: number;
  tissot: boolean;
  shading: Shading;
  /** The second map. */
  beside?: string;
  besideValues: Values;
  from: string;
  to: string;
  angles: AngleForm;
  stated: boolean;
}

export const firstDatum = "World Geodetic System 1984";
export const secondDatum = firstDatum;

export function initial(): State {
  return {
    slug: firstSlug, values: {}, zoom: 1, tab: "point", tissot: false, shading: "none", besideValues: {},
    from: firstDatum, to: secondDatum, angles: "degrees", stated: false,
  };
}

/** As few digits as keep a millionth of a degree, which no screen shows. */
export function short(value: number, digits = 6): string {
  return String(Number(value.toFixed(digits)));
}

const encode = (text: string) => encodeURIComponent(text).replace(/%20/g, "+").replace(/%2C/gi, ",");
const decode = (text: string) => decodeURIComponent(text.replace(/\+/g, "%20"));

function valueText(value: Value): string {
  if (typeof value === "boolean") return value ? "yes" : "no";
  return typeof value === "number" ? String(value) : encode(value);
}

function valueOf(text: string): Value {
  if (text === "yes" || text === "no") return text === "yes";
  const number = Number(text);
  return text !== "" && Number.isFinite(number) ? number : text;
}

/** The state without what is as on a fresh page. */
export function toAddress(state: State): string {
  const parts = [state.slug];
  const add = (key: string, text: string) => parts.push(`${key}=${text}`);
  for (const [key, value] of Object.entries(state.values)) add(key, valueText(value));
  if (state.at) add("at", state.at.map((degrees) => short(degrees, state.zoom > 1000 ? 9 : 4)).join(","));
  if (state.zoom !== 1) add("zoom", String(Number(state.zoom.toPrecision(4))));
  if (state.point) add("p", state.point.map((degrees) => short(degrees, 9)).join(","));
  if (state.tab !== "point") add("tab", state.tab);
  if (state.graticule !== undefined) add("grid", String(state.graticule));
  if (state.tissot) add("tissot", "yes");
  if (state.shading !== "none") add("color", state.shading);
  if (state.beside) {
    add("with", state.beside);
    for (const [key, value] of Object.entries(state.besideValues)) add(`with.${key}`, valueText(value));
  }
  if (state.from !== firstDatum) add("from", encode(state.from));
  if (state.to !== secondDatum) add("to", encode(state.to));
  if (state.angles !== "degrees") add("angles", state.angles);
  if (state.stated) add("stated", "yes");
  return parts.join(";");
}

function placeOf(text: string): Place | undefined {
  const [lon, lat, ...rest] = text.split(",").map((part) => (part.trim() === "" ? NaN : Number(part)));
  if (rest.length > 0 || !Number.isFinite(lon) || !Number.isFinite(lat) || Math.abs(lat!) > 90) return undefined;
  return [lon!, lat!];
}

const shadings: readonly string[] = ["none", "scale", "area", "angle"];
const tabs: readonly string[] = ["point", "compare", "distortion", "table", "georef"];

/** Reads one part; false when it cannot be understood. */
function take(state: State, key: string, text: string, knows: (slug: string, key: string) => boolean): boolean {
  switch (key) {
    case "at": return Boolean((state.at = placeOf(text)));
    case "p": return Boolean((state.point = placeOf(text)));
    case "zoom": {
      const zoom = Number(text);
      if (!(zoom > 0) || !Number.isFinite(zoom)) return false;
      state.zoom = zoom;
      return true;
    }
    case "tab": return tabs.includes(text) && Boolean((state.tab = text as Tab));
    case "grid": {
      const step = Number(text);
      if (!(step >= 0 && step <= 90)) return false;
      state.graticule = step;
      return true;
    }
    case "tissot": state.tissot = text === "yes"; return true;
    case "color": return shadings.includes(text) && Boolean((state.shading = text as Shading));
    case "with": return Boolean(entryOf(text)) && Boolean((state.beside = text));
    case "from": state.from = decode(text); return true;
    case "to": state.to = decode(text); return true;
    case "angles": return (text === "dms" || text === "degrees") && Boolean((state.angles = text));
    case "stated": state.stated = text === "yes"; return true;
  }
  const beside = key.startsWith("with.");
  const name = beside ? key.slice(5) : key;
  const slug = beside ? state.beside : state.slug;
  if (!slug || !knows(slug, name)) return false;
  (beside ? state.besideValues : state.values)[name] = valueOf(decode(text));
  return true;
}

/**
 * Reads an address. Parts that cannot be understood are left out and named, so that the rest of a damaged link still
 * shows its map. `knows` says whether a projection has a parameter.
 */
export function fromAddress(hash: string, knows: (slug: string, key: string) => boolean): [State, string[]] {
  const state = initial();
  const wrong: string[] = [];
  const [slug, ...parts] = hash.replace(/^#/, "").split(";");
  if (slug && entryOf(slug)) state.slug = slug;
  else if (slug) wrong.push(slug);
  for (const part of parts.filter(Boolean)) {
    const at = part.indexOf("=");
    let taken = false;
    try {
      taken = at > 0 && take(state, part.slice(0, at), part.slice(at + 1), knows);
    } catch {
      taken = false;  // a broken percent sign
    }
    if (!taken) wrong.push(part);
  }
  return [state, wrong];
}
