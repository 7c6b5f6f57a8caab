// A picture laid over the map by a fit: its mesh goes through the fit, and every triangle is drawn where it falls.
import { toPixels, type Size, type Spot, type View } from "./view";

const CELLS = 20;

export interface Mesh {
  /** Map units of the corners of the cells, row by row. */
  coords: Float64Array;
  width: number;
  height: number;
}

/** The mesh of a picture; `fit` takes picture coordinates with y upwards to map units. */
export function meshOf(width: number, height: number, fit: (coords: Float64Array) => Float64Array): Mesh {
  const coords = new Float64Array(2 * (CELLS + 1) ** 2);
  let at = 0;
  for (let row = 0; row <= CELLS; ++row) {
    for (let column = 0; column <= CELLS; ++column) {
      coords[at++] = (width * column) / CELLS;
      coords[at++] = -(height * row) / CELLS;
    }
  }
  return { coords: fit(coords).slice(), width, height };
}

type Corner = readonly [u: number, v: number, at: Spot];

export function drawMesh(context: CanvasRenderingContext2D, picture: CanvasImageSource, mesh: Mesh, view: View, size: Size): void {
  const corner = (column: number, row: number): Corner => {
    const i = 2 * (row * (CELLS + 1) + column);
    return [(mesh.width * column) / CELLS, (mesh.height * row) / CELLS, toPixels(view, size, mesh.coords[i]!, mesh.coords[i + 1]!)];
  };
  for (let row = 0; row < CELLS; ++row) {
    for (let column = 0; column < CELLS; ++column) {
      const [a, b, c, d] = [corner(column, row), corner(column + 1, row), corner(column, row + 1), corner(column + 1, row + 1)];
      triangle(context, picture, a, b, c);
      triangle(context, picture, d, c, b);
    }
  }
}

/** One triangle of the picture by the affine transform of its corners, a little larger so that no seam shows. */
function triangle(context: CanvasRenderingContext2D, picture: CanvasImageSource, ...corners: [Corner, Corner, Corner]): void {
  const spots = corners.map(([, , spot]) => spot);
  if (!spots.every(([x, y]) => Number.isFinite(x) && Number.isFinite(y))) return;
  const [[u0, v0, p0], [u1, v1, p1], [u2, v2, p2]] = corners;
  const determinant = (u1 - u0) * (v2 - v0) - (u2 - u0) * (v1 - v0);
  const along = (i: 0 | 1) => ((p1[i] - p0[i]) * (v2 - v0) - (p2[i] - p0[i]) * (v1 - v0)) / determinant;
  const down = (i: 0 | 1) => ((p2[i] - p0[i]) * (u1 - u0) - (p1[i] - p0[i]) * (u2 - u0)) / determinant;
  const [a, b, c, d] = [along(0), along(1), down(0), down(1)];
  const middle = [0, 1].map((i) => (spots[0]![i]! + spots[1]![i]! + spots[2]![i]!) / 3);
  context.save();
  context.beginPath();
  for (const spot of spots) {
    const [dx, dy] = [spot[0] - middle[0]!, spot[1] - middle[1]!];
    const grow = 1 + 0.8 / (Math.hypot(dx, dy) || 1);
    context.lineTo(middle[0]! + dx * grow, middle[1]! + dy * grow);
  }
  context.closePath();
  context.clip();
  context.transform(a, b, c, d, p0[0] - a * u0 - c * v0, p0[1] - b * u0 - d * v0);
  context.drawImage(picture, 0, 0);
  context.restore();
}
