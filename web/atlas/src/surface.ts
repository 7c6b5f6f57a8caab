// Where maps are drawn: a canvas for the screen and for PNG, and text for SVG, behind one interface.
import type { Paths } from "orvex";

import type { Size, View } from "./view";

export interface LineStyle {
  color: string;
  width: number;
  opacity?: number;
  dash?: readonly number[];
  closed?: boolean;
}

export interface FillStyle {
  color: string;
  opacity?: number;
}

export interface TextStyle {
  color: string;
  size: number;
  align?: "start" | "center" | "end";
  weight?: number;
  halo?: string;
}

/** Paths are in map units; everything else is in pixels. */
export interface Surface {
  readonly size: Size;
  fill(paths: Paths, style: FillStyle): void;
  stroke(paths: Paths, style: LineStyle): void;
  rectangle(style: FillStyle): void;
  text(x: number, y: number, text: string, style: TextStyle): void;
  circle(x: number, y: number, radius: number, fill: string, ring?: LineStyle): void;
  arrow(x: number, y: number, dx: number, dy: number, style: LineStyle): void;
  /** A picture over the whole surface, clipped to paths. */
  image(picture: HTMLCanvasElement, clip: Paths | undefined, opacity: number): void;
}

export const fontFamily = 'system-ui, -apple-system, "Segoe UI", Roboto, "Helvetica Neue", Arial, sans-serif';

interface Pen {
  moveTo(x: number, y: number): void;
  lineTo(x: number, y: number): void;
  /** Where it is missing a line leads back: a canvas measures its whole path at every closePath. */
  close?(): void;
}

const LEAST_STEP = 0.35;  // pixels; nearer points make no difference to the picture

/** Draws paths by a pen in pixels: what lies off the picture is left out, and so are points too near to the last one. */
export function trace(paths: Paths, view: View, size: Size, pen: Pen, closed: boolean): void {
  const { coords, starts } = paths;
  const scale = view.scale;
  const left = size.width / 2 - view.x * scale;
  const top = size.height / 2 + view.y * scale;
  for (let shape = 0; shape + 1 < starts.length; ++shape) {
    const from = 2 * starts[shape]!;
    const to = 2 * starts[shape + 1]!;
    if (to - from < 4 || !reaches(coords, from, to, view, size)) continue;
    const firstX = left + coords[from]! * scale;
    const firstY = top - coords[from + 1]! * scale;
    let [lastX, lastY] = [firstX, firstY];
    pen.moveTo(firstX, firstY);
    for (let i = from + 2; i < to; i += 2) {
      const x = left + coords[i]! * scale;
      const y = top - coords[i + 1]! * scale;
      if (Math.abs(x - lastX) + Math.abs(y - lastY) < LEAST_STEP && i + 2 < to) continue;
      pen.lineTo(x, y);
      lastX = x;
      lastY = y;
    }
    if (!closed) continue;
    if (pen.close) pen.close();
    else pen.lineTo(firstX, firstY);
  }
}

/** Whether a shape's box meets the picture. */
function reaches(coords: Float64Array, from: number, to: number, view: View, size: Size): boolean {
  const halfX = size.width / 2 / view.scale + 4 / view.scale;
  const halfY = size.height / 2 / view.scale + 4 / view.scale;
  let west = true, east = true, south = true, north = true;
  for (let i = from; i < to; i += 2) {
    const x = coords[i]! - view.x;
    const y = coords[i + 1]! - view.y;
    west &&= x < -halfX;
    east &&= x > halfX;
    south &&= y < -halfY;
    north &&= y > halfY;
    if (!west && !east && !south && !north) return true;
  }
  return false;
}

export class CanvasSurface implements Surface {
  constructor(private readonly context: CanvasRenderingContext2D, readonly size: Size, private readonly view: View) {
    context.lineJoin = "round";
    context.lineCap = "butt";
    context.textBaseline = "middle";
  }

  fill(paths: Paths, style: FillStyle): void {
    const context = this.context;
    context.globalAlpha = style.opacity ?? 1;
    context.fillStyle = style.color;
    context.beginPath();
    trace(paths, this.view, this.size, context, true);
    context.fill("evenodd");
    context.globalAlpha = 1;
  }

  stroke(paths: Paths, style: LineStyle): void {
    this.pen(style);
    this.context.beginPath();
    trace(paths, this.view, this.size, this.context, style.closed ?? false);
    this.context.stroke();
    this.context.globalAlpha = 1;
  }

  rectangle(style: FillStyle): void {
    this.context.globalAlpha = style.opacity ?? 1;
    this.context.fillStyle = style.color;
    this.context.fillRect(0, 0, this.size.width, this.size.height);
    this.context.globalAlpha = 1;
  }

  text(x: number, y: number, text: string, style: TextStyle): void {
    const context = this.context;
    context.font = `${style.weight ?? 400} ${style.size}px ${fontFamily}`;
    context.textAlign = style.align ?? "start";
    if (style.halo) {
      context.strokeStyle = style.halo;
      context.lineWidth = 3;
      context.setLineDash([]);
      context.strokeText(text, x, y);
    }
    context.fillStyle = style.color;
    context.fillText(text, x, y);
  }

  circle(x: number, y: number, radius: number, fill: string, ring?: LineStyle): void {
    const context = this.context;
    context.beginPath();
    context.arc(x, y, radius, 0, 2 * Math.PI);
    context.fillStyle = fill;
    context.fill();
    if (!ring) return;
    this.pen(ring);
    context.stroke();
  }

  arrow(x: number, y: number, dx: number, dy: number, style: LineStyle): void {
    this.pen(style);
    const context = this.context;
    context.beginPath();
    for (const [from, ...others] of arrowLines(x, y, dx, dy)) {
      context.moveTo(...from);
      for (const spot of others) context.lineTo(...spot);
    }
    context.stroke();
  }

  image(picture: HTMLCanvasElement, clip: Paths | undefined, opacity: number): void {
    const context = this.context;
    context.save();
    if (clip) {
      context.beginPath();
      trace(clip, this.view, this.size, context, true);
      context.clip("evenodd");
    }
    context.globalAlpha = opacity;
    context.imageSmoothingEnabled = true;
    context.drawImage(picture, 0, 0, this.size.width, this.size.height);
    context.restore();
  }

  private pen(style: LineStyle): void {
    this.context.globalAlpha = style.opacity ?? 1;
    this.context.strokeStyle = style.color;
    this.context.lineWidth = style.width;
    this.context.setLineDash(style.dash ? [...style.dash] : []);
  }
}

type Line = [[number, number], ...[number, number][]];

/** The shaft and the head of an arrow. */
function arrowLines(x: number, y: number, dx: number, dy: number): Line[] {
  const length = Math.hypot(dx, dy);
  if (length === 0) return [];
  const [ux, uy] = [dx / length, dy / length];
  const head = Math.min(9, length / 2);
  const tip: [number, number] = [x + dx, y + dy];
  const wing = (side: number): [number, number] => [
    tip[0] - head * (ux - side * 0.5 * uy),
    tip[1] - head * (uy + side * 0.5 * ux),
  ];
  return [[[x, y], tip], [wing(1), tip, wing(-1)]];
}

const number = (value: number) => String(Number(value.toFixed(2)));

function escaped(text: string): string {
  return text.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/>/g, "&gt;").replace(/"/g, "&quot;");
}

class PathText implements Pen {
  text = "";
  moveTo(x: number, y: number): void {
    this.text += `M${number(x)} ${number(y)}`;
  }
  lineTo(x: number, y: number): void {
    this.text += `L${number(x)} ${number(y)}`;
  }
  close(): void {
    this.text += "Z";
  }
}

/** Writes a picture as SVG that refers to nothing outside itself. */
export class SvgSurface implements Surface {
  private readonly parts: string[] = [];
  private clips = 0;

  constructor(readonly size: Size, private readonly view: View) {}

  fill(paths: Paths, style: FillStyle): void {
    const d = this.path(paths, true);
    if (d) this.parts.push(`<path d="${d}" fill="${style.color}" fill-rule="evenodd"${opacity("fill-", style.opacity)}/>`);
  }

  stroke(paths: Paths, style: LineStyle): void {
    const d = this.path(paths, style.closed ?? false);
    if (d) this.parts.push(`<path d="${d}" fill="none" ${strokeOf(style)}/>`);
  }

  rectangle(style: FillStyle): void {
    const { width, height } = this.size;
    this.parts.push(`<rect width="${width}" height="${height}" fill="${style.color}"${opacity("fill-", style.opacity)}/>`);
  }

  text(x: number, y: number, text: string, style: TextStyle): void {
    const anchor = { start: "start", center: "middle", end: "end" }[style.align ?? "start"];
    const halo = style.halo ? ` stroke="${style.halo}" stroke-width="3" stroke-linejoin="round" paint-order="stroke"` : "";
    this.parts.push(
      `<text x="${number(x)}" y="${number(y)}" font-size="${style.size}" text-anchor="${anchor}" ` +
        `dominant-baseline="central" fill="${style.color}"${style.weight ? ` font-weight="${style.weight}"` : ""}${halo}>${escaped(text)}</text>`,
    );
  }

  circle(x: number, y: number, radius: number, fill: string, ring?: LineStyle): void {
    this.parts.push(`<circle cx="${number(x)}" cy="${number(y)}" r="${number(radius)}" fill="${fill}"${ring ? ` ${strokeOf(ring)}` : ""}/>`);
  }

  arrow(x: number, y: number, dx: number, dy: number, style: LineStyle): void {
    const d = arrowLines(x, y, dx, dy)
      .map((line) => `M${line.map(([px, py]) => `${number(px)} ${number(py)}`).join("L")}`)
      .join("");
    if (d) this.parts.push(`<path d="${d}" fill="none" ${strokeOf(style)}/>`);
  }

  image(picture: HTMLCanvasElement, clip: Paths | undefined, alpha: number): void {
    const { width, height } = this.size;
    let reference = "";
    if (clip) {
      const id = `clip${++this.clips}`;
      this.parts.push(`<clipPath id="${id}"><path d="${this.path(clip, true)}" clip-rule="evenodd"/></clipPath>`);
      reference = ` clip-path="url(#${id})"`;
    }
    this.parts.push(
      `<image width="${width}" height="${height}" preserveAspectRatio="none" href="${picture.toDataURL("image/png")}"${opacity("", alpha)}${reference}/>`,
    );
  }

  finish(title: string, description: string): string {
    const { width, height } = this.size;
    return (
      `<svg xmlns="http://www.w3.org/2000/svg" width="${width}" height="${height}" viewBox="0 0 ${width} ${height}" ` +
      `font-family="${escaped(fontFamily)}">\n<title>${escaped(title)}</title>\n<desc>${escaped(description)}</desc>\n` +
      `${this.parts.join("\n")}\n</svg>\n`
    );
  }

  private path(paths: Paths, closed: boolean): string {
    const pen = new PathText();
    trace(paths, this.view, this.size, pen, closed);
    return pen.text;
  }
}

function opacity(prefix: string, value: number | undefined): string {
  return value === undefined || value === 1 ? "" : ` ${prefix}opacity="${number(value)}"`;
}

function strokeOf(style: LineStyle): string {
  const dash = style.dash ? ` stroke-dasharray="${style.dash.join(" ")}"` : "";
  return `stroke="${style.color}" stroke-width="${number(style.width)}" stroke-linejoin="round"${dash}${opacity("stroke-", style.opacity)}`;
}
