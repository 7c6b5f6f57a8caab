// The projections as the page presents them: short names for addresses, where a map opens, and what a drag turns.
import rows from "./projections.json";

/** A parameter's value under its short name: numbers in degrees or metres, yes or no, names of zones and ellipsoids. */
export type Value = number | boolean | string;
export type Values = Record<string, Value>;

/**
 * What a drag turns: the central meridian, the centre with its latitude in lat0 or lat1, the points of an oblique line,
 * or nothing, so that the picture moves.
 */
export type Turn = "lon" | "lat0" | "lat1" | "points" | "none";

export interface Entry {
  slug: string;
  name: string;
  turn: Turn;
  /** Where a map opens that has been told nothing else. */
  start: Values;
  keeps: string;
  says: string;
}

export const entries = rows as unknown as readonly Entry[];
export const firstSlug = "robster";

const bySlug = new Map(entries.map((entry) => [entry.slug, entry]));

export function entryOf(slug: string): Entry | undefined {
  return bySlug.get(slug);
}

/** The entries whose name, short name or property holds every word looked for. */
export function search(text: string): Entry[] {
  const words = text.toLowerCase().split(/\s+/).filter(Boolean);
  return entries.filter((entry) => {
    const hay = `${entry.name} ${entry.slug} ${entry.keeps} ${entry.says}`.toLowerCase();
    return words.every((word) => hay.includes(word));
  });
}
