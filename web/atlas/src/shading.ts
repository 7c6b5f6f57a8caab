// Distortion as colour: a field over the picture and its legend. The colours run through even steps of lightness, so
// that they can be told apart in grey.
import type { Projection } from "orvex";

import type { Shading } from "./state";
import { toMap, type Size, type View } from "./view";

type Color = readonly [number, number, number];

// Anchors of a viridis-like scale, dark to light.
const anchors: readonly Color[] = [
  [68, 1, 84], [71, 44, 122], [59, 81, 139], [44, 113, 142], [33, 144, 141], [39, 173, 129], [92, 200, 99], [170, 220, 50], [253, 231, 37],
];

/** The colour at a part of the scale, 0 to 1. */
export function colorAt(part: number): Color {
  const at = Math.min(Math.max(part, 0), 1) * (anchors.length - 1);
  const index = Math.min(Math.floor(at), anchors.length - 2);
  const mix = at - index;
  const [a, b] = [anchors[index]!, anchors[index + 1]!];
  return [0, 1, 2].map((i) => a[i]! + mix * (b[i]! - a[i]!)) as unknown as Color;
}

export interface Scale {
  title: string;
  unit: string;
  ticks: readonly number[];
  /** Where a value stands on the scale, 0 to 1; 1 (no distortion) stands in the middle where a scale has two sides. */
  part(value: number): number;
}

const logarithmic = (most: number) => (value: number) => 0.5 + Math.log(value) / (2 * Math.log(most));

export const scales: Record<Exclude<Shading, "none">, Scale> = {
  scale: { title: "Largest scale", unit: "", ticks: [0.25, 0.5, 1, 2, 4], part: logarithmic(4) },
  area: { title: "Area scale", unit: "", ticks: [0.25, 0.5, 1, 2, 4], part: logarithmic(4) },
  angle: { title: "Largest change of an angle", unit: "\u00b0", ticks: [0, 20, 40, 60, 80], part: (value) => value / 80 },
};

/** A small picture of the field; `cell` is the side of one of its points in pixels. */
export function shade(projection: Projection, shading: Exclude<Shading, "none">, view: View, size: Size, cell: number): HTMLCanvasElement {
  const columns = Math.max(Math.ceil(size.width / cell), 1);
  const rows = Math.max(Math.ceil(size.height / cell), 1);
  const spots = new Float64Array(2 * columns * rows);
  for (let row = 0, at = 0; row < rows; ++row) {
    for (let column = 0; column < columns; ++column, at += 2) {
      [spots[at], spots[at + 1]] = toMap(view, size, ((column + 0.5) * size.width) / columns, ((row + 0.5) * size.height) / rows) as [number, number];
    }
  }
  const values = widened(fieldOf(projection, shading, projection.inverse(spots)), columns);
  const canvas = document.createElement("canvas");
  canvas.width = columns;
  canvas.height = rows;
  const context = canvas.getContext("2d")!;
  const picture = context.createImageData(columns, rows);
  const scale = scales[shading];
  values.forEach((value, i) => {
    if (!Number.isFinite(value)) return;
    picture.data.set(colorAt(scale.part(value)), 4 * i);
    picture.data[4 * i + 3] = 255;
  });
  context.putImageData(picture, 0, 0);
  return canvas;
}

/** Points without a value beside some with one take theirs, so that the field reaches the edge of the map. */
function widened(values: Float64Array, columns: number): Float64Array {
  return values.map((value, i) => {
    if (Number.isFinite(value)) return value;
    const around = [i - 1, i + 1, i - columns, i + columns].map((at) => values[at] ?? NaN).filter(Number.isFinite);
    return around.length === 0 ? NaN : around.reduce((sum, it) => sum + it, 0) / around.length;
  });
}

function fieldOf(projection: Projection, shading: Exclude<Shading, "none">, places: Float64Array): Float64Array {
  const count = places.length / 2;
  const lon = new Float64Array(count);
  const lat = new Float64Array(count);
  for (let i = 0; i < count; ++i) {
    lon[i] = places[2 * i]!;
    lat[i] = places[2 * i + 1]!;
  }
  const distortion = projection.distortion(lon, lat);
  return { scale: distortion.most, area: distortion.area, angle: distortion.omega }[shading];
}

/** The ends of a scale hold what lies beyond them. */
function beyond({ ticks }: Scale, i: number): string {
  if (i === ticks.length - 1) return "\u2265\u202f";
  return i === 0 && ticks[0] !== 0 ? "\u2264\u202f" : "";
}

/** The scale as a strip with numbers, which a screen reader hears as a sentence. */
export function legend(shading: Exclude<Shading, "none">): HTMLElement {
  const scale = scales[shading];
  const figure = document.createElement("figure");
  figure.className = "legend";
  const steps = Array.from({ length: 9 }, (_, i) => `rgb(${colorAt(i / 8).map(Math.round).join(" ")})`);
  const ticks = scale.ticks
    .map((tick, i) => `<span style="left:${100 * scale.part(tick)}%">${beyond(scale, i)}${tick}${scale.unit}</span>`)
    .join("");
  figure.innerHTML =
    `<figcaption>${scale.title}</figcaption><div class="strip" style="background:linear-gradient(90deg,${steps.join(",")})"></div>` +
    `<div class="ticks">${ticks}</div>`;
  return figure;
}
