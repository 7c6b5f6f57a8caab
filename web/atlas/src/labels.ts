// Degrees at the lines of the graticule: beside the map where lines end at its edge, upon them where the picture cuts
// them or where their ends lie too close together.
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

/** A meridian or parallel, or a piece of one. */
interface Line {
  meridian: boolean;
  degrees: number;
  spots: readonly Spot[];
}

/** Where the map is. */
interface Frame {
  centre: Spot;
  onMap(x: number, y: number): boolean;
}

// Pixels.
const ROOM_X = 40, ROOM_Y = 16, INSET = 14, BESIDE = 7, MEET = 12, SAME = 2.5, GLYPH = 6, HALF_LINE = 6;

/** Labels for the pieces of a graticule. */
export function graticuleLabels(chart: Chart, paths: Paths, step: number, view: View, size: Size): Label[] {
  const lines = identify(chart, paths, step, view, size);
  const frame: Frame = { centre: middleOf(chart, view, size), onMap: (x, y) => chart.place(view, size, x, y) !== undefined };
  const meridians = lines.filter((line) => line.meridian);
  const ends = meridians.filter((line) => !meetsOthers(line, lowest(line), lines) || meetsOthers(line, highest(line), lines)).map(lowest).filter((end) => inside(end, size, 0));
  const upon = ends.length > 2 && spacing(ends) < MEET;
  const atEquator = (line: Line) => equatorLabel(line, chart, view, size);
  const spots = upon ? meridians.map(atEquator).flatMap((label): Spot[] => (label ? [[label.x, label.y]] : [])) : ends;
  const stride = spots.length > 2 ? strideFor(spacing(spots)) : 1;
  const labels: Label[] = [];
  const roomX = (a: Label, b: Label) => Math.max(ROOM_X, ((a.text.length + b.text.length) / 2) * GLYPH + BESIDE);
  const free = (label: Label) => labels.every((other) => Math.abs(other.x - label.x) > roomX(label, other) || Math.abs(other.y - label.y) > ROOM_Y);
  for (const line of lines) {
    if (line.meridian && Math.round(line.degrees / step) % stride !== 0) continue;
    const label = line.meridian && upon ? atEquator(line) : place(line, lines, frame, size);
    if (label && free(label)) labels.push(label);
  }
  return labels;
}

/** Which meridian or parallel each piece is: what two of its places have in common. */
function identify(chart: Chart, { coords, starts }: Paths, step: number, view: View, size: Size): Line[] {
  const count = starts.length - 1;
  const probes = new Float64Array(4 * count);
  for (let i = 0; i < count; ++i) {
    const third = Math.floor((starts[i + 1]! - starts[i]! - 1) / 3);
    const [a, b] = [starts[i]! + third, starts[i + 1]! - 1 - third];
    probes.set([coords[2 * a]!, coords[2 * a + 1]!, coords[2 * b]!, coords[2 * b + 1]!], 4 * i);
  }
  const places = chart.projection.inverse(probes);
  const lines: Line[] = [];
  for (let i = 0; i < count; ++i) {
    const [lon1, lat1, lon2, lat2] = places.slice(4 * i, 4 * i + 4) as unknown as [number, number, number, number];
    const turned = Math.abs(wrapped(lon2 - lon1));
    const raised = Math.abs(lat2 - lat1);
    const nearest = (value: number) => Math.round(value / step) * step;
    const spots: Spot[] = [];
    for (let j = starts[i]!; j < starts[i + 1]!; ++j) spots.push(toPixels(view, size, coords[2 * j]!, coords[2 * j + 1]!));
    if (turned < raised * 0.02) lines.push({ meridian: true, degrees: nearest(wrapped(lon1)), spots });
    else if (raised < turned * 0.02) lines.push({ meridian: false, degrees: nearest(lat1), spots });
  }
  return lines;
}

function degreesText(line: Line): string {
  const value = Number(Math.abs(line.degrees).toFixed(6));
  if (value === 0 || (line.meridian && value === 180)) return `${value}\u00b0`;
  const letter = line.meridian ? (line.degrees > 0 ? "E" : "W") : line.degrees > 0 ? "N" : "S";
  return `${value}\u00b0${thin}${letter}`;
}

const firstOf = (line: Line) => line.spots[0]!;
const lastOf = (line: Line) => line.spots.at(-1)!;
const apart = (a: Spot, b: Spot) => Math.hypot(a[0] - b[0], a[1] - b[1]);

function lowest(line: Line): Spot {
  return firstOf(line)[1] > lastOf(line)[1] ? firstOf(line) : lastOf(line);
}

function highest(line: Line): Spot {
  return lowest(line) === firstOf(line) ? lastOf(line) : firstOf(line);
}

function middleOf(chart: Chart, view: View, size: Size): Spot {
  const { minX, minY, maxX, maxY } = chart.box;
  return toPixels(view, size, (minX + maxX) / 2, (minY + maxY) / 2);
}

/** The usual distance of neighbours. */
function spacing(spots: readonly Spot[]): number {
  const nearest = spots.map((spot, i) => Math.min(...spots.map((other, j) => (i === j || apart(spot, other) < 0.01 ? Infinity : apart(spot, other)))));
  const finite = nearest.filter(Number.isFinite).sort((a, b) => a - b);
  return finite.length === 0 ? 0 : finite[finite.length >> 1]!;
}

/** Every so many lines there is room for a label. */
function strideFor(distance: number): number {
  return [1, 2, 3, 4, 6, 12].find((stride) => stride * distance > ROOM_X) ?? 24;
}

function inside([x, y]: Spot, size: Size, inset: number): boolean {
  return x >= inset && x <= size.width - inset && y >= inset && y <= size.height - inset;
}

function equatorLabel(line: Line, chart: Chart, view: View, size: Size): Label | undefined {
  const spot = chart.spot(view, size, [line.degrees, 0]);
  return spot && inside(spot, size, INSET) ? { x: spot[0], y: spot[1] + 9, text: degreesText(line), align: "center", upon: true } : undefined;
}

/** Meridians are labelled at their lower end, parallels at their left one. */
function place(line: Line, lines: readonly Line[], frame: Frame, size: Size): Label | undefined {
  const text = degreesText(line);
  const [first, last] = [firstOf(line), lastOf(line)];
  if (apart(first, last) < SAME && line.spots.length > 4) return uponMiddle(line, text, size);
  let forwards = line.meridian ? first[1] > last[1] : first[0] < last[0];
  if (meetsOthers(line, forwards ? first : last, lines)) forwards = !forwards;
  const ordered = forwards ? line.spots : [...line.spots].reverse();
  const end = ordered[0]!;
  if (inside(end, size, INSET)) return goesOn(line, end, lines) ? undefined : besideEnd(end, ordered[1]!, text, frame, size);
  for (let i = 1; i < ordered.length; ++i) {
    const at = entry(ordered[i - 1]!, ordered[i]!, size);
    const onItsSide = at && (line.meridian ? at[1] > size.height - INSET - 1 : at[0] < INSET + 1);
    if (at && !onItsSide) return undefined;
    if (at) return { x: at[0], y: at[1], text, align: line.meridian ? "center" : "start", upon: true };
  }
  return undefined;
}

/** Whether a line ends only to go on as another piece. */
function goesOn(line: Line, end: Spot, lines: readonly Line[]): boolean {
  return lines.some((other) => other !== line && other.meridian === line.meridian && other.degrees === line.degrees && (apart(firstOf(other), end) < SAME || apart(lastOf(other), end) < SAME));
}

/** Whether an end is a pole at which meridians meet. */
function meetsOthers(line: Line, end: Spot, lines: readonly Line[]): boolean {
  return line.meridian && lines.some((other) => other.meridian && other.degrees !== line.degrees && (apart(firstOf(other), end) < SAME || apart(lastOf(other), end) < SAME));
}

/** A closed parallel begins behind the pole; its middle lies on the central meridian. */
function uponMiddle(line: Line, text: string, size: Size): Label | undefined {
  const [x, y] = line.spots[line.spots.length >> 1]!;
  return inside([x, y], size, INSET) ? { x, y, text, align: "center", upon: true } : undefined;
}

/** Off the end of a line: away from the middle of the map or on in its own direction, whichever leaves the map. */
function besideEnd(end: Spot, next: Spot, text: string, frame: Frame, size: Size): Label | undefined {
  const unit = (from: Spot): Spot => [(end[0] - from[0]) / (apart(end, from) || 1), (end[1] - from[1]) / (apart(end, from) || 1)];
  const directions = [unit(frame.centre), unit(next)];
  const leaves = ([ux, uy]: Spot) => !frame.onMap(end[0] + 2 * BESIDE * ux, end[1] + 2 * BESIDE * uy);
  // Along a slanting edge, such as the cut of a cone, a text may lie on the map though its anchor does not.
  for (const distance of [BESIDE, 2 * BESIDE]) {
    for (const direction of directions) {
      const label = labelBeside(end, direction, distance, text, size);
      if (label && isClear(label, frame)) return label;
    }
  }
  return labelBeside(end, directions.find(leaves) ?? directions[0]!, BESIDE, text, size);
}

function isClear(label: Label, frame: Frame): boolean {
  const width = label.text.length * GLYPH;
  const left = label.x - { start: 0, center: width / 2, end: width }[label.align];
  return [left, left + width].every((x) => !frame.onMap(x, label.y - HALF_LINE) && !frame.onMap(x, label.y + HALF_LINE));
}

function labelBeside(end: Spot, [ux, uy]: Spot, distance: number, text: string, size: Size): Label | undefined {
  const x = end[0] + ux * distance;
  const y = end[1] + uy * (distance + 5);
  const align = ux > 0.4 ? "start" : ux < -0.4 ? "end" : "center";
  return inside([x, y], size, 4) ? { x, y, text, align, upon: false } : undefined;
}

/** Where a step comes into the picture, a little within its frame. */
function entry(a: Spot, b: Spot, size: Size): Spot | undefined {
  if (inside(a, size, INSET)) return undefined;
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
