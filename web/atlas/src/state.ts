// What the page shows, and its short form behind the # of the address: "lcc;lat1=33;lat2=45;at=-96,38;zoom=4".
import { entryOf, firstSlug, type Value, type Values } from "./catalogue";
import { leastZoom, mostZoom, wrapped } from "./view";

export type Place = readonly [lon: number, lat: number];
export type Shading = "none" | "scale" | "area" | "angle";
export type Tab = "point" | "compare" | "distortion" | "table" | "georef";
export type AngleForm = "degrees" | "dms";

/** A part of a map's width from the left and of its height from below. */
export type Share = readonly [x: number, y: number];

/** Where a map stands: whole, or with a place in the middle, or with a part of its box where the middle is no place. */
export interface Stand {
  at?: Place;
  mid?: Share;
  zoom: number;
}

export interface State extends Stand {
  slug: string;
  /** What differs from where the projection opens. */
  values: Values;
  point?: Place;
  tab: Tab;
  /** Step of the graticule in degrees; 0 for none, undefined for one that suits the zoom. */
  graticule?: number;
  tissot: boolean;
  shading: Shading;
  /** The second map. */
  beside?: string;
  besideValues: Values;
  besideStand: Stand;
  from: string;
  to: string;
  angles: AngleForm;
  stated: boolean;
}

export const firstDatum = "World Geodetic System 1984";
export const secondDatum = firstDatum;

export function initial(): State {
  return {
    slug: firstSlug, values: {}, zoom: 1, tab: "point", tissot: false, shading: "none", besideValues: {}, besideStand: { zoom: 1 },
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
  const addStand = (prefix: string, { at, mid, zoom }: Stand) => {
    if (at) add(`${prefix}at`, at.map((degrees) => short(degrees, zoom > 1000 ? 9 : 4)).join(","));
    else if (mid) add(`${prefix}mid`, mid.map((part) => short(part, zoom > 10 ? 9 : 5)).join(","));
    if (zoom !== 1) add(`${prefix}zoom`, String(Number(zoom.toPrecision(4))));
  };
  for (const [key, value] of Object.entries(state.values)) add(key, valueText(value));
  addStand("", state);
  if (state.point) add("p", state.point.map((degrees) => short(degrees, 9)).join(","));
  if (state.tab !== "point") add("tab", state.tab);
  if (state.graticule !== undefined) add("grid", String(state.graticule));
  if (state.tissot) add("tissot", "yes");
  if (state.shading !== "none") add("color", state.shading);
  if (state.beside) {
    add("with", state.beside);
    for (const [key, value] of Object.entries(state.besideValues)) add(`with.${key}`, valueText(value));
    addStand("with.", state.besideStand);
  }
  if (state.from !== firstDatum) add("from", encode(state.from));
  if (state.to !== secondDatum) add("to", encode(state.to));
  if (state.angles !== "degrees") add("angles", state.angles);
  if (state.stated) add("stated", "yes");
  return parts.join(";");
}

function pairOf(text: string): [number, number] | undefined {
  const [first, second, ...rest] = text.split(",").map((part) => (part.trim() === "" ? NaN : Number(part)));
  return rest.length === 0 && Number.isFinite(first) && Number.isFinite(second) ? [first!, second!] : undefined;
}

function placeOf(text: string): Place | undefined {
  const pair = pairOf(text);
  return pair && Math.abs(pair[1]) <= 90 ? [wrapped(pair[0]), pair[1]] : undefined;
}

function shareOf(text: string): Share | undefined {
  const pair = pairOf(text);
  return pair?.every((part) => part >= 0 && part <= 1) ? pair : undefined;
}

/** What an address may speak of. */
export interface Known {
  parameter(slug: string, key: string): boolean;
  datum(name: string, asDestination: boolean): boolean;
}

const shadings: readonly string[] = ["none", "scale", "area", "angle"];
const tabs: readonly string[] = ["point", "compare", "distortion", "table", "georef"];

/** Reads a part of where a map stands. */
function takeStand(stand: Stand, key: "at" | "mid" | "zoom", text: string): boolean {
  if (key === "at") return Boolean((stand.at = placeOf(text)));
  if (key === "mid") return Boolean((stand.mid = shareOf(text)));
  const zoom = Number(text);
  if (!(zoom >= leastZoom && zoom <= mostZoom)) return false;
  stand.zoom = zoom;
  return true;
}

function takeFlag(text: string, take: (flag: boolean) => void): boolean {
  if (text !== "yes" && text !== "no") return false;
  take(text === "yes");
  return true;
}

/** Reads one part; false when it cannot be understood. */
function take(state: State, key: string, text: string, known: Known): boolean {
  switch (key) {
    case "at":
    case "mid":
    case "zoom": return takeStand(state, key, text);
    case "with.at": return takeStand(state.besideStand, "at", text);
    case "with.mid": return takeStand(state.besideStand, "mid", text);
    case "with.zoom": return takeStand(state.besideStand, "zoom", text);
    case "p": return Boolean((state.point = placeOf(text)));
    case "tab": return tabs.includes(text) && Boolean((state.tab = text as Tab));
    case "grid": {
      const step = Number(text);
      if (!(step >= 0 && step <= 90)) return false;
      state.graticule = step;
      return true;
    }
    case "tissot": return takeFlag(text, (flag) => (state.tissot = flag));
    case "color": return shadings.includes(text) && Boolean((state.shading = text as Shading));
    case "with": return Boolean(entryOf(text)) && Boolean((state.beside = text));
    case "from": return known.datum(decode(text), false) && Boolean((state.from = decode(text)));
    case "to": return known.datum(decode(text), true) && Boolean((state.to = decode(text)));
    case "angles": return (text === "dms" || text === "degrees") && Boolean((state.angles = text));
    case "stated": return takeFlag(text, (flag) => (state.stated = flag));
  }
  const beside = key.startsWith("with.");
  const name = beside ? key.slice(5) : key;
  const slug = beside ? state.beside : state.slug;
  if (!slug || !known.parameter(slug, name)) return false;
  (beside ? state.besideValues : state.values)[name] = valueOf(decode(text));
  return true;
}

/**
 * Reads an address. Parts that cannot be understood are left out and named, so that the rest of a damaged link still
 * shows its map.
 */
export function fromAddress(hash: string, known: Known): [State, string[]] {
  const state = initial();
  const wrong: string[] = [];
  const [slug, ...parts] = hash.replace(/^#/, "").split(";");
  if (slug && entryOf(slug)) state.slug = slug;
  else if (slug) wrong.push(slug);
  for (const part of parts.filter(Boolean)) {
    const at = part.indexOf("=");
    let taken = false;
    try {
      taken = at > 0 && take(state, part.slice(0, at), part.slice(at + 1), known);
    } catch {
      taken = false;  // a broken percent sign
    }
    if (!taken) wrong.push(part);
  }
  return [state, wrong];
}
