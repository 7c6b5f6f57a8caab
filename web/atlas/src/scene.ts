// What is on a map, layer by layer, on any surface.
import type { Paths } from "orvex";

import type { Chart } from "./chart";
import { graticuleLabels } from "./labels";
import { thin } from "./format";
import { shade } from "./shading";
import type { Place, Shading } from "./state";
import type { Surface } from "./surface";
import type { Theme } from "./theme";
import { niceStep, type View } from "./view";

export interface OwnShapes {
  areas: Paths;
  lines: Paths;
  points: readonly Place[];
}

export interface Scene {
  graticule?: number;
  labels: boolean;
  tissot: boolean;
  shading: Shading;
  point?: Place;
  /** Where the point is on another datum, metres east and north of it. */
  shift?: { east: number; north: number };
  /** Outline of a circle on the globe about the pointer, longitude and latitude. */
  circle?: Paths;
  own?: OwnShapes;
  /** A picture that lies in map units, under the coasts. */
  underlay?: (view: View) => HTMLCanvasElement | undefined;
  /** Numbered places, where control points lead. */
  marks?: readonly Place[];
}

/** The step of the graticule: the one that was chosen, or one that suits the picture. */
export function graticuleStep(chart: Chart, view: View, width: number, chosen: number | undefined): number {
  if (chosen === 0) return 0;
  const range = Math.min(chart.degreesInPixel(view) * width, 360);
  const suitable = range > 150 ? (width < 500 ? 30 : 15) : niceStep(range, 6);
  return chosen === undefined ? suitable : Math.max(chosen, range / 150);  // more lines than that are a surface
}

/** The step of Tissot's ellipses. */
export function tissotStep(chart: Chart, view: View, width: number): number {
  const range = Math.min(chart.degreesInPixel(view) * width, 360);
  return range > 150 ? 30 : Math.max(niceStep(range, 4), 1);
}

export function drawScene(surface: Surface, chart: Chart, view: View, scene: Scene, theme: Theme, moving: boolean): void {
  const size = surface.size;
  const edge = chart.edge();
  surface.fill(edge, { color: theme.sea });
  const shaded = scene.shading !== "none";
  if (scene.shading !== "none") surface.image(shade(chart.projection, scene.shading, view, size, moving ? 14 : 5), edge, 1);
  const underlay = scene.underlay?.(view);
  if (shaded) surface.fill(chart.land(), { color: theme.dark ? "#ffffff" : "#1d2b33", opacity: 0.2 });
  else surface.fill(chart.land(), { color: theme.land, opacity: underlay ? 0.35 : 1 });
  if (underlay) surface.image(underlay, edge, 0.85);
  const step = graticuleStep(chart, view, size.width, scene.graticule);
  const graticule = chart.graticule(step);
  surface.stroke(graticule, { color: shaded ? "#ffffff" : theme.grid, width: 0.6, opacity: shaded ? 0.4 : 0.5 });
  // While the map moves, the outlines of the areas stand for the coasts: they differ along the edge, which is drawn over them.
  surface.stroke(moving ? chart.land() : chart.coasts(), {
    color: underlay ? theme.accent : shaded ? theme.ink : theme.coast, width: 0.7, opacity: shaded ? 0.55 : 1, closed: moving,
  });
  if (scene.tissot) drawTissot(surface, chart, view, shaded ? "#ffffff" : theme.accent);
  if (scene.own) drawOwn(surface, chart, view, scene.own, theme);
  if (scene.circle) {
    const circle = chart.areas(scene.circle);
    surface.fill(circle, { color: theme.accent, opacity: 0.14 });
    surface.stroke(chart.lines(scene.circle), { color: theme.accent, width: 1.4 });
  }
  surface.stroke(edge, { color: theme.quiet, width: 1, closed: true });
  if (scene.labels && step > 0) drawLabels(surface, chart, view, graticule, step, theme, shaded);
  scene.marks?.forEach((mark, i) => drawMark(surface, chart, view, mark, String(i + 1), theme));
  if (scene.point) drawPoint(surface, chart, view, scene.point, scene.shift, theme);
}

function drawTissot(surface: Surface, chart: Chart, view: View, color: string): void {
  const ellipses = chart.tissot(tissotStep(chart, view, surface.size.width));
  surface.fill(ellipses, { color, opacity: 0.2 });
  surface.stroke(ellipses, { color, width: 1, closed: true });
}

function drawOwn(surface: Surface, chart: Chart, view: View, own: OwnShapes, theme: Theme): void {
  if (own.areas.starts.length > 1) {
    surface.fill(chart.areas(own.areas), { color: theme.own, opacity: 0.25 });
    surface.stroke(chart.lines(own.areas), { color: theme.own, width: 1.3 });
  }
  if (own.lines.starts.length > 1) surface.stroke(chart.lines(own.lines), { color: theme.own, width: 1.6 });
  for (const place of own.points) {
    const spot = chart.spot(view, surface.size, place);
    if (spot) surface.circle(spot[0], spot[1], 3, theme.own, { color: theme.halo, width: 1 });
  }
}

function drawLabels(surface: Surface, chart: Chart, view: View, graticule: Paths, step: number, theme: Theme, shaded: boolean): void {
  for (const label of graticuleLabels(chart, graticule, step, view, surface.size)) {
    const halo = label.upon ? (shaded ? theme.paper : theme.halo) : undefined;
    surface.text(label.x, label.y, label.text, { color: label.upon && shaded ? theme.ink : theme.quiet, size: 11, align: label.align, halo });
  }
}

function drawMark(surface: Surface, chart: Chart, view: View, place: Place, text: string, theme: Theme): void {
  const spot = chart.spot(view, surface.size, place);
  if (!spot) return;
  surface.circle(spot[0], spot[1], 4, theme.accent, { color: theme.halo, width: 1.5 });
  surface.text(spot[0] + 8, spot[1] - 8, text, { color: theme.accent, size: 12, weight: 600, halo: theme.halo });
}

const ARROW = 54;  // pixels; the shift is drawn this long whatever it is, with its length beside it

function drawPoint(surface: Surface, chart: Chart, view: View, point: Place, shift: Scene["shift"], theme: Theme): void {
  const spot = chart.spot(view, surface.size, point);
  if (!spot) return;
  const length = shift ? Math.hypot(shift.east, shift.north) : 0;
  if (shift && length > 1e-6) {
    const far = chart.degreesInPixel(view) * 2;
    const tip = chart.spot(view, surface.size, [
      point[0] + (far * shift.east) / length / Math.max(Math.cos((point[1] * Math.PI) / 180), 0.01),
      Math.min(Math.max(point[1] + (far * shift.north) / length, -90), 90),
    ]);
    if (tip) {
      const [dx, dy] = [tip[0] - spot[0], tip[1] - spot[1]];
      const by = ARROW / (Math.hypot(dx, dy) || 1);
      surface.arrow(spot[0], spot[1], dx * by, dy * by, { color: theme.halo, width: 4.5 });
      surface.arrow(spot[0], spot[1], dx * by, dy * by, { color: theme.accent, width: 2 });
      const text = `${length < 10 ? length.toFixed(2) : length.toFixed(1)}${thin}m`;
      surface.text(spot[0] + dx * by + (dx >= 0 ? 6 : -6), spot[1] + dy * by, text, {
        color: theme.accent, size: 12, weight: 600, align: dx >= 0 ? "start" : "end", halo: theme.halo,
      });
    }
  }
  surface.circle(spot[0], spot[1], 5.5, theme.accent, { color: theme.halo, width: 2 });
}
