// What a drag does to a projection: it turns the globe under the map so that the place under the pointer follows.
import type { Projection } from "orvex";

import type { Turn, Values } from "./catalogue";
import type { Choice, Engine } from "./engine";
import { roundTo, toMap, toPixels, wrapped, type Size, type Spot, type View } from "./view";

const TINY = 1e-3;       // degrees, for differences
const LARGEST = 25;      // degrees in a step
const PASSES = 3;

/** Longitudes that turn together, and the latitude that turns with them. */
function handles(turn: Turn): { longitudes: string[]; latitude?: string } {
  switch (turn) {
    case "lon": return { longitudes: ["lon0"] };
    case "lat0": return { longitudes: ["lon0"], latitude: "lat0" };
    case "lat1": return { longitudes: ["lon0"], latitude: "lat1" };
    case "points": return { longitudes: ["lon0", "lon1", "lon2"] };
    case "none": return { longitudes: [] };
  }
}

type Amount = readonly [lon: number, lat: number];

export class Turner {
  private readonly longitudes: string[];
  private readonly latitude?: string;
  /** How many degrees a pixel to the right and a pixel down turn, where last they could be told. */
  private rate: readonly [Amount, Amount];

  constructor(private readonly engine: Engine, readonly choice: Choice, turn: Turn, degreesInPixel: number) {
    const { longitudes, latitude } = handles(turn);
    this.longitudes = longitudes.filter((key) => engine.has(choice.slug, key));
    this.latitude = latitude;
    this.rate = [[-degreesInPixel, 0], [0, latitude ? degreesInPixel : 0]];
  }

  get turns(): boolean {
    return this.longitudes.length > 0;
  }

  /** The values with which what was under one pixel is under another, or as near to it as turning brings it. */
  follow(projection: Projection, view: View, size: Size, from: Spot, to: Spot): Values {
    const place = projection.inverse(...toMap(view, size, ...from));
    let amount = this.byRate(to[0] - from[0], to[1] - from[1]);
    if (place.every(Number.isFinite)) amount = this.solve(place, view, size, from, to) ?? amount;
    return this.turned(amount, roundingOf(this.rate));
  }

  private byRate(dx: number, dy: number): Amount {
    const [right, down] = this.rate;
    return [dx * right[0] + dy * down[0], dx * right[1] + dy * down[1]];
  }

  /** Newton's method on the place's distance from the pixel; nothing where it does not come nearer. */
  private solve(place: readonly [number, number], view: View, size: Size, from: Spot, to: Spot): Amount | undefined {
    let amount: Amount = [0, 0];
    let spot: Spot | undefined = from;
    for (let pass = 0; pass < PASSES; ++pass) {
      const east = this.step(place, view, size, amount, [TINY, 0], spot);
      const north = this.latitude ? this.step(place, view, size, amount, [0, TINY], spot) : undefined;
      if (!east || (this.latitude && !north)) return undefined;
      const by = leastSquares(east, north, [to[0] - spot[0], to[1] - spot[1]]);
      if (!by || Math.hypot(...by) > LARGEST) return undefined;
      amount = [amount[0] + by[0], amount[1] + by[1]];
      const next = this.spot(place, view, size, amount);
      if (!next) return undefined;
      spot = next;
    }
    const before = Math.hypot(to[0] - from[0], to[1] - from[1]);
    return Math.hypot(to[0] - spot[0], to[1] - spot[1]) <= before ? amount : undefined;
  }

  /** How far the place moves on the screen for a degree. */
  private step(place: readonly [number, number], view: View, size: Size, amount: Amount, by: Amount, spot: Spot): Spot | undefined {
    const moved = this.spot(place, view, size, [amount[0] + by[0], amount[1] + by[1]]);
    return moved && [(moved[0] - spot[0]) / TINY, (moved[1] - spot[1]) / TINY];
  }

  private spot(place: readonly [number, number], view: View, size: Size, amount: Amount): Spot | undefined {
    let projection: Projection | undefined;
    try {
      projection = this.engine.drawing({ slug: this.choice.slug, values: this.turned(amount, 0) });
      const [x, y] = projection.forward(place[0], place[1]);
      return Number.isFinite(x) ? toPixels(view, size, x, y) : undefined;
    } catch {
      return undefined;  // a centre that the library refuses
    } finally {
      projection?.dispose();
    }
  }

  private turned(amount: Amount, rounding: number): Values {
    const all = this.engine.values(this.choice);
    const values: Values = { ...this.choice.values };
    const set = (key: string, value: number) => (values[key] = rounding > 0 ? roundTo(value, rounding) : value);
    for (const key of this.longitudes) set(key, wrapped(Number(all[key] ?? 0) + amount[0]));
    if (this.latitude) set(this.latitude, Math.min(Math.max(Number(all[this.latitude] ?? 0) + amount[1], -90), 90));
    return values;
  }
}

/** A tenth of what a pixel turns: no eye sees what is rounded off, and links stay short. */
function roundingOf(rate: readonly [Amount, Amount]): number {
  return Math.abs(rate[0][0]) / 10;
}

/** Degrees by which two movements, or one, come nearest to a difference in pixels. */
function leastSquares(east: Spot, north: Spot | undefined, [dx, dy]: Spot): Amount | undefined {
  const ee = east[0] ** 2 + east[1] ** 2;
  const er = east[0] * dx + east[1] * dy;
  if (!north) return ee > 0 ? [er / ee, 0] : undefined;
  const nn = north[0] ** 2 + north[1] ** 2;
  const en = east[0] * north[0] + east[1] * north[1];
  const nr = north[0] * dx + north[1] * dy;
  const determinant = ee * nn - en * en;
  if (!(determinant > 1e-4 * ee * nn)) return undefined;
  return [(er * nn - nr * en) / determinant, (nr * ee - er * en) / determinant];
}
