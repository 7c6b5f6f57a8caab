// Degrees at the lines of the graticule: beside the map where lines end at its edge, upon them where the picture cuts
// them; as many as have room.
import type { Paths } from "orvex";

import type { Chart } from "./chart";
import { thin } from "./format";
import { toPixels, wrapped, type Size, type Spot, type View } from "./view";

export interface Label {
  x: number;
  y: number;
  text: string;
  align: "start" | "center" | "end";
  upon: boolean;
}

interface Line {
  meridian: boolean;
  degrees: number;
  from: number;
  to: number;
}

const ROOM_X = 40, ROOM_Y = 16, INSET = 14, BESIDE = 6, MEET = 12;  // pixels

/** Which meridian or parallel each piece of a graticule is: what two of its places have in common. */
function identify(chart: Chart, paths: Paths, step: number): Line[] {
  const { coords, starts } = paths;
  const count = starts.length - 1;
  const spots = new Float64Array(4 * count);
  for (let i = 0; i < count; ++i) {
    const [from, to] = [starts[i]!, starts[i + 1]!];
    const third = Math.floor((to - from - 1) / 3);
    const [a, b] = [from + third, to - 1 - third];
    spots.set([coords[2 * a]!, coords[2 * a + 1]!, coords[2 * b]!, coords[2 * b + 1]!], 4 * i);
  }
  const places = chart.projection.inverse(spots);
  const lines: Line[] = [];
  for (let i = 0; i < count; ++i) {
    const [lon1, lat1, lon2, lat2] = places.slice(4 * i, 4 * i + 4) as unknown as [number, number, number, number];
    const turned = Math.abs(wrapped(lon2 - lon1));
    const raised = Math.abs(lat2 - lat1);
    const [from, to] = [starts[i]!, starts[i + 1]!];
    const nearest = (value: number) => Math.round(value / step) * step;
    if (turned < raised * 0.02) lines.push({ meridian: true, degrees: nearest(wrapped(lon1)), from, to });
    else if (raised < turned * 0.02) lines.push({ meridian: false, degrees: nearest(lat1), from, to });
  }
  return lines;
}

function degreesText(line: Line): string {
  const value = Number(Math.abs(line.degrees).toFixed(6));
  const letter = value === 0 || (line.meridian && value === 180) ? "" : line.meridian ? (line.degrees > 0 ? "E" : "W") : line.degrees > 0 ? "N" : "S";
  return `${value}\u00b0${letter ? thin + letter : ""}`;
}

/** Labels for the pieces of a graticule. */
export function graticuleLabels(chart: Chart, paths: Paths, step: number, view: View, size: Size): Label[] {
  const labels: Label[] = [];
  const free = (x: number, y: number) => labels.every((other) => Math.abs(other.x - x) > ROOM_X || Math.abs(other.y - y) > ROOM_Y);
  const lines = identify(chart, paths, step);
  const converging = meet(lines, paths, view, size);
  for (const line of lines) {
    const label = line.meridian && converging ? atEquator(line, chart, view, size) : place(line, paths, view, size);
    if (label && free(label.x, label.y)) labels.push(label);
  }
  return labels;
}

/** Whether the lower ends of meridians meet in a point, where there is no room for their labels. */
function meet(lines: readonly Line[], { coords }: Paths, view: View, size: Size): boolean {
  const ends = lines
    .filter((line) => line.meridian)
    .map((line) => [line.from, line.to - 1].map((i) => toPixels(view, size, coords[2 * i]!, coords[2 * i + 1]!)).reduce((a, b) => (a[1] > b[1] ? a : b)))
    .filter((end) => inside(end, size, 0));
  return ends.some((end, i) => ends.some((other, j) => j > i + 1 && Math.hypot(end[0] - other[0], end[1] - other[1]) < MEET));
}

function atEquator(line: Line, chart: Chart, view: View, size: Size): Label | undefined {
  const spot = chart.spot(view, size, [line.degrees, 0]);
  return spot && inside(spot, size, INSET) ? { x: spot[0], y: spot[1] + 9, text: degreesText(line), align: "center", upon: true } : undefined;
}

function inside([x, y]: Spot, size: Size, inset: number): boolean {
  return x >= inset && x <= size.width - inset && y >= inset && y <= size.height - inset;
}

/** Meridians are labelled at their lower end, parallels at their left one. */
function place(line: Line, { coords }: Paths, view: View, size: Size): Label | undefined {
  const spot = (i: number) => toPixels(view, size, coords[2 * i]!, coords[2 * i + 1]!);
  const [first, last] = [spot(line.from), spot(line.to - 1)];
  const forwards = line.meridian ? first[1] > last[1] : first[0] < last[0];
  const order = (n: number) => (forwards ? line.from + n : line.to - 1 - n);
  const count = line.to - line.from;
  const text = degreesText(line);
  const end = spot(order(0));
  if (Math.hypot(first[0] - last[0], first[1] - last[1]) < 2 && count > 4) return uponMiddle(spot(line.from + (count >> 1)), text, size);
  if (inside(end, size, INSET)) return besideEnd(end, spot(order(Math.min(1, count - 1))), text, line.meridian, size);
  for (let n = 1; n < count; ++n) {
    const [a, b] = [spot(order(n - 1)), spot(order(n))];
    const at = entry(a, b, size);
    if (at) return { x: at[0], y: at[1], text, align: line.meridian ? "center" : "start", upon: true };
  }
  return undefined;
}

/** A closed parallel begins behind the pole; its middle lies on the central meridian. */
function uponMiddle([x, y]: Spot, text: string, size: Size): Label | undefined {
  return inside([x, y], size, INSET) ? { x, y, text, align: "center", upon: true } : undefined;
}

/** Off the end of a line, in the direction in which it ends. */
function besideEnd(end: Spot, next: Spot, text: string, meridian: boolean, size: Size): Label | undefined {
  const length = Math.hypot(end[0] - next[0], end[1] - next[1]) || 1;
  const [ux, uy] = meridian && length < 0.5 ? [0, 1] : [(end[0] - next[0]) / length, (end[1] - next[1]) / length];
  const x = end[0] + ux * BESIDE;
  const y = end[1] + uy * (BESIDE + 5);
  const align = ux > 0.4 ? "start" : ux < -0.4 ? "end" : "center";
  return inside([x, y], size, 4) ? { x, y, text, align, upon: false } : undefined;
}

/** Where a step comes into the picture, a little within its frame. */
function entry(a: Spot, b: Spot, size: Size): Spot | undefined {
  if (inside(a, size, INSET) || !(Math.max(a[0], b[0]) >= INSET)) return undefined;
  let [least, most] = [0, 1];
  const within = (from: number, by: number, low: number, high: number) => {
    if (by === 0) return from >= low && from <= high;
    const [s, t] = [(low - from) / by, (high - from) / by];
    least = Math.max(least, Math.min(s, t));
    most = Math.min(most, Math.max(s, t));
    return least <= most;
  };
  const [dx, dy] = [b[0] - a[0], b[1] - a[1]];
  if (!within(a[0], dx, INSET, size.width - INSET) || !within(a[1], dy, INSET, size.height - INSET)) return undefined;
  return [a[0] + least * dx, a[1] + least * dy];
}
