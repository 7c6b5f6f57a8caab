// How map units become pixels: a place in the middle of the picture and a scale. y grows upwards on the map.
export type Spot = readonly [x: number, y: number];

export interface Box {
  readonly minX: number;
  readonly minY: number;
  readonly maxX: number;
  readonly maxY: number;
}

export interface Size {
  readonly width: number;
  readonly height: number;
}

export interface View {
  /** Map units at the middle of the picture. */
  readonly x: number;
  readonly y: number;
  /** Pixels in a map unit. */
  readonly scale: number;
}

export type Margins = readonly [beside: number, above: number];

export const leastZoom = 0.5;
export const mostZoom = 1e6;

/** The whole box within the picture, apart from margins in pixels at its sides and at its ends. */
export function fit(box: Box, size: Size, [beside, above]: Margins): View {
  const width = Math.max(box.maxX - box.minX, Number.MIN_VALUE);
  const height = Math.max(box.maxY - box.minY, Number.MIN_VALUE);
  const room = (side: number, margin: number) => Math.max(side - 2 * margin, 20);
  return {
    x: (box.minX + box.maxX) / 2,
    y: (box.minY + box.maxY) / 2,
    scale: Math.min(room(size.width, beside) / width, room(size.height, above) / height),
  };
}

export function toPixels(view: View, size: Size, x: number, y: number): Spot {
  return [size.width / 2 + (x - view.x) * view.scale, size.height / 2 - (y - view.y) * view.scale];
}

export function toMap(view: View, size: Size, px: number, py: number): Spot {
  return [view.x + (px - size.width / 2) / view.scale, view.y - (py - size.height / 2) / view.scale];
}

/** Scales by a factor so that what lies under a pixel stays there. */
export function zoomAbout(view: View, size: Size, px: number, py: number, factor: number): View {
  const [x, y] = toMap(view, size, px, py);
  return { x: x + (view.x - x) / factor, y: y + (view.y - y) / factor, scale: view.scale * factor };
}

export function pan(view: View, dx: number, dy: number): View {
  return { ...view, x: view.x - dx / view.scale, y: view.y + dy / view.scale };
}

/** Moved so that a map position shows at a pixel. */
export function put(view: View, size: Size, x: number, y: number, px: number, py: number): View {
  const [atX, atY] = toMap(view, size, px, py);
  return { ...view, x: view.x + x - atX, y: view.y + y - atY };
}

/** Keeps the middle of the picture within a box, so that a map is never lost. */
export function keepWithin(view: View, box: Box): View {
  const clamp = (value: number, least: number, most: number) => Math.min(Math.max(value, least), most);
  return { ...view, x: clamp(view.x, box.minX, box.maxX), y: clamp(view.y, box.minY, box.maxY) };
}

/** A map position as parts of a box, from the left and from below, and back. */
export function shareOf(box: Box, x: number, y: number): Spot {
  return [(x - box.minX) / (box.maxX - box.minX), (y - box.minY) / (box.maxY - box.minY)];
}

export function atShare(box: Box, [right, up]: Spot): Spot {
  return [box.minX + right * (box.maxX - box.minX), box.minY + up * (box.maxY - box.minY)];
}

/** A longitude within half a turn of Greenwich; one that is there keeps its bits. */
export function wrapped(degrees: number): number {
  if (Math.abs(degrees) <= 180) return degrees;
  const turn = ((((degrees + 180) % 360) + 360) % 360) - 180;
  return turn === -180 && degrees > 0 ? 180 : turn;
}

/** Rounded to as many digits as a step needs. */
export function roundTo(value: number, step: number): number {
  const digits = Math.min(Math.max(Math.ceil(-Math.log10(step)), 0), 9);
  return Number(value.toFixed(digits));
}

/** A step of 1, 2, 5 times a power of ten, or one of the round angles, of which about `count` fill a range. */
export function niceStep(range: number, count: number): number {
  const steps = [90, 45, 30, 15, 10, 5, 2, 1, 0.5, 0.25, 0.1, 0.05, 0.02, 0.01, 0.005, 0.002, 0.001, 0.0005, 0.0002, 0.0001];
  return steps.find((step) => range / step >= count) ?? 0.0001;
}
