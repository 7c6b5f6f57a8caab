// One projection as a map: its geometry for what a picture shows, kept until the picture shows something else.
import type { Accuracy, MapGeometry, MapOptions, Paths, Projection } from "orvex";

import type { Choice, Engine } from "./engine";
import { shapesOf, type Shapes } from "./outlines";
import type { Place } from "./state";
import { fit, toMap, toPixels, wrapped, type Box, type Margins, type Size, type Spot, type View } from "./view";

export type Bounds = readonly [west: number, south: number, east: number, north: number];

/** What a piece of the map has been made for. */
export interface Piece {
  pixel: number;
  bounds?: Bounds;
}

const FINE_DEGREES = 0.11;    // a pixel so small that the coasts of 1:110m look angular
const PART_DEGREES = 0.05;    // from here on only what is in sight is drawn
const WIDEST_PART = 120;      // degrees of longitude
const LEAST_PIXEL = 0.02;     // degrees; finer curves of the whole world would only take time
const AROUND = 0.5;           // of what is in sight is drawn beyond it on each side

/** A copy that stays when the module's memory is used again. */
export function kept(paths: Paths): Paths {
  return { coords: paths.coords.slice(), starts: paths.starts.slice() };
}

const LEAST_STEP = 0.1;       // degrees, of the library's own graticules

/** Meridians and parallels of an area too small for the library's graticule. */
function fineGraticule(bounds: Bounds | undefined, step: number): Shapes {
  if (!bounds) return shapesOf([]);
  const [west, south, east, north] = bounds;
  const multiples = (from: number, to: number) => {
    const first = Math.ceil(from / step);
    return Array.from({ length: Math.floor(to / step) - first + 1 }, (_, i) => (first + i) * step);
  };
  return shapesOf([
    ...multiples(west, east).map((lon): [number, number][] => [[lon, south], [lon, north]]),
    ...multiples(south, north).map((lat): [number, number][] => [[west, lat], [east, lat]]),
  ]);
}

const nothing: Paths = { coords: new Float64Array(0), starts: new Int32Array(1) };

export class Chart {
  readonly projection: Projection;
  private readonly whole: MapGeometry;
  private part?: MapGeometry;
  private piece: Piece;
  private cache = new Map<string, Paths>();
  private fine?: Paths & { lines: Paths; piece: Piece };

  constructor(private readonly engine: Engine, readonly choice: Choice, accuracy: Accuracy, size: Size) {
    this.projection = engine.drawing(choice, accuracy);
    try {
      this.whole = this.projection.map();
      const across = Math.max(this.whole.box.maxX - this.whole.box.minX, this.whole.box.maxY - this.whole.box.minY);
      this.piece = { pixel: across / Math.max(size.width, 1) };
    } catch (error) {
      this.projection.dispose();
      throw error;
    }
  }

  dispose(): void {
    this.part?.dispose();
    this.whole.dispose();
    this.projection.dispose();
  }

  get box(): Box {
    return this.whole.box;
  }

  get drawn(): Piece {
    return this.piece;
  }

  fitted(size: Size, margins: Margins): View {
    return fit(this.box, size, margins);
  }

  /** Map units that an arc of a degree takes where the map is true to scale. */
  get degree(): number {
    const { radius, scale } = this.projection.parameters;
    return radius * scale * (Math.PI / 180);
  }

  degreesInPixel(view: View): number {
    return 1 / (view.scale * this.degree);
  }

  place(view: View, size: Size, px: number, py: number): Place | undefined {
    const [lon, lat] = this.projection.inverse(...toMap(view, size, px, py));
    if (!Number.isFinite(lon) || !Number.isFinite(lat)) return undefined;
    const spot = this.spot(view, size, [lon, lat]);
    if (!spot || Math.hypot(spot[0] - px, spot[1] - py) > 1) return undefined;  // beyond the map's edge
    return [wrapped(lon), lat];
  }

  /** Where a place shows; nothing where the map does not show it. */
  spot(view: View, size: Size, place: Place): Spot | undefined {
    const at = (this.part ?? this.whole).locate(place[0], place[1]) ?? this.whole.locate(place[0], place[1]);
    return at ? toPixels(view, size, at[0], at[1]) : undefined;
  }

  /** Makes sure that the geometry suits the picture. */
  suit(view: View, size: Size): void {
    const bounds = this.degreesInPixel(view) < PART_DEGREES ? this.inSight(view, size) : undefined;
    const pixel = bounds ? 1 / view.scale : Math.max(1 / view.scale, LEAST_PIXEL * this.degree);
    if (sameBend(pixel, this.piece.pixel) && covers(this.piece.bounds, bounds)) return;
    this.part?.dispose();
    this.part = undefined;
    this.cache.clear();
    this.piece = bounds ? { pixel, bounds: widened(bounds) } : { pixel };
    if (bounds) this.part = this.partOf(this.piece);
    if (!this.part) {
      this.piece = { pixel: Math.max(pixel, LEAST_PIXEL * this.degree) };
      this.whole.pixel = this.piece.pixel;
    }
  }

  edge(): Paths {
    return this.made("edge", () => this.map.edge());
  }

  land(): Paths {
    return this.fine ?? this.made("land", () => this.map.fill(this.engine.coarseLand));
  }

  coasts(): Paths {
    return this.fine?.lines ?? this.made("coasts", () => this.map.lines(this.engine.coarseLand));
  }

  graticule(step: number): Paths {
    if (step <= 0) return nothing;
    return this.made(`graticule ${step}`, () => (step < LEAST_STEP ? this.map.lines(fineGraticule(this.piece.bounds, step)) : this.map.graticule(step)));
  }

  tissot(step: number): Paths {
    return this.made(`tissot ${step}`, () => this.map.tissot(step));
  }

  /** Shapes that are not kept: a circle about the pointer, the person's own. */
  areas(shapes: Paths): Paths {
    return kept(this.map.fill(shapes));
  }

  lines(shapes: Paths): Paths {
    return kept(this.map.lines(shapes));
  }

  wantsFine(view: View): boolean {
    return this.degreesInPixel(view) < FINE_DEGREES && !(this.fine && sameBend(this.fine.piece.pixel, this.piece.pixel) && covers(this.fine.piece.bounds, this.piece.bounds));
  }

  /** Takes the land at 1:50m, made elsewhere for a piece; none takes it away. */
  setFine(fine?: Paths & { lines: Paths; piece: Piece }): void {
    this.fine = fine;
  }

  dropFineUnless(view: View): void {
    if (this.degreesInPixel(view) >= FINE_DEGREES) this.fine = undefined;
  }

  private get map(): MapGeometry {
    return this.part ?? this.whole;
  }

  private made(key: string, make: () => Paths): Paths {
    let paths = this.cache.get(key);
    if (!paths) this.cache.set(key, (paths = kept(make())));
    return paths;
  }

  private partOf(piece: Piece): MapGeometry | undefined {
    try {
      return this.projection.map({ pixel: piece.pixel, bounds: piece.bounds } as MapOptions);
    } catch {
      return undefined;  // nothing of the part lies in the domain
    }
  }

  /** The longitudes and latitudes in sight, from a grid of places; nothing where they are too many. */
  inSight(view: View, size: Size): Bounds | undefined {
    const across = 12;
    const spots = new Float64Array(2 * (across + 1) ** 2);
    let at = 0;
    for (let row = 0; row <= across; ++row) {
      for (let column = 0; column <= across; ++column) {
        const [x, y] = toMap(view, size, (size.width * column) / across, (size.height * row) / across);
        spots[at++] = x;
        spots[at++] = y;
      }
    }
    const places = this.projection.inverse(spots);
    let middle: number | undefined;
    let [west, south, east, north] = [Infinity, Infinity, -Infinity, -Infinity];
    for (let i = 0; i < places.length; i += 2) {
      if (!Number.isFinite(places[i]) || !Number.isFinite(places[i + 1])) continue;
      middle ??= places[i]!;
      const lon = middle + wrapped(places[i]! - middle);
      [west, east] = [Math.min(west, lon), Math.max(east, lon)];
      [south, north] = [Math.min(south, places[i + 1]!), Math.max(north, places[i + 1]!)];
    }
    if (middle === undefined || east - west > WIDEST_PART) return undefined;
    return [west, south, east, north];
  }
}

function sameBend(a: number, b: number): boolean {
  return a / b < 1.6 && b / a < 1.6;
}

function covers(outer: Bounds | undefined, inner: Bounds | undefined): boolean {
  if (!outer || !inner) return outer === inner;
  const turn = 360 * Math.round((outer[0] + outer[2] - inner[0] - inner[2]) / 720);
  return outer[0] <= inner[0] + turn && outer[2] >= inner[2] + turn && outer[1] <= inner[1] && outer[3] >= inner[3];
}

function widened([west, south, east, north]: Bounds): Bounds {
  const [dx, dy] = [Math.max((east - west) * AROUND, 1e-6), Math.max((north - south) * AROUND, 1e-6)];
  const clamp = (lat: number) => Math.min(Math.max(lat, -90), 90);
  const middle = (west + east) / 2;
  const shift = wrapped(middle) - middle;
  return [west - dx + shift, clamp(south - dy), east + dx + shift, clamp(north + dy)];
}
