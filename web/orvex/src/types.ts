/** Angles are degrees, east and north positive; lengths are metres. Points are pairs: longitude, latitude or x, y. */

/** `exact`: the definition to rounding, both ways. `stated`: as hosts of the library get it unless they ask. */
export type Accuracy = "stated" | "exact";

/** What a parameter wants as its control. */
export type Control = "number" | "angle" | "length" | "flag" | "zone" | "ellipsoid";

export type ParameterKey =
  | "scale" | "x0" | "y0" | "lat0" | "lon0" | "lat1" | "lat2" | "lat3" | "lon1" | "lon2" | "lon3" | "k0"
  | "south" | "zone" | "usealpha" | "alpha" | "rotate" | "uoffset" | "ellipsoid" | "radius" | "flattening";

/** A parameter of the library's catalogue. */
export interface ParameterInfo {
  readonly id: number;
  readonly key: ParameterKey;
  /** The catalogue's own name: "Central Latitude". */
  readonly name: string;
  /** "degrees", "map units", "metres"; "" where there is none. */
  readonly unit: string;
  readonly control: Control;
  /** What counts when it is not given. */
  readonly default: number | boolean;
}

export interface ProjectionInfo {
  readonly id: number;
  readonly name: string;
  /** What it uses, in the catalogue's order of display. */
  readonly parameters: readonly ParameterInfo[];
  /** Whether an ellipsoid can be chosen; its radius alone where `sphereOnly`. */
  readonly usesEllipsoid: boolean;
  /** Takes the semi-major axis of its ellipsoid for the radius of a sphere. */
  readonly sphereOnly: boolean;
  /** False for "Unprojected Lat/Long". */
  readonly drawable: boolean;
  /** Parameters that make a valid projection to start from; only those that must differ from their defaults. */
  readonly example: Params;
}

export interface EllipsoidInfo {
  readonly id: number;
  readonly name: string;
  readonly radius: number;
  readonly flattening: number;
  /** POSC (EPSG) number. */
  readonly code: number | null;
}

export type DatumMethod = "none" | "nadcon" | "bursa" | "molodensky" | "mre" | "ntv2";

export interface DatumInfo {
  readonly id: number;
  readonly name: string;
  readonly method: DatumMethod;
  /** Whether it can be a destination. */
  readonly reversible: boolean;
  /** POSC (EPSG) number. */
  readonly code: number | null;
  /** Number of its ellipsoid; null where the method does not say. */
  readonly ellipsoid: number | null;
  /** Its parameters towards WGS 84; null for grids and regression equations. */
  readonly parameters: DatumDefinition | null;
  /** West, south, east, north of where the regression equations or the grid hold; null elsewhere. */
  readonly area: readonly [number, number, number, number] | null;
}

export interface UnitInfo {
  readonly symbol: string;
  readonly name: string;
  readonly metres: number;
}

export interface StateZoneInfo {
  readonly id: number;
  readonly name: string;
  /** USGS code. */
  readonly usgs: number;
  /** POSC (EPSG) number. */
  readonly code: number | null;
}

/** A number or name of the catalogue, or a figure of one's own. */
export type EllipsoidChoice = number | string | { readonly radius: number; readonly flattening?: number };

/** Parameters of a projection. What is not given has its default; the ellipsoid is WGS 84 unless one is given. */
export interface Params {
  scale?: number;
  x0?: number;
  y0?: number;
  lat0?: number;
  lon0?: number;
  lat1?: number;
  lat2?: number;
  lat3?: number;
  lon1?: number;
  lon2?: number;
  lon3?: number;
  k0?: number;
  south?: boolean;
  zone?: number | string;
  usealpha?: boolean;
  alpha?: number;
  rotate?: boolean;
  uoffset?: boolean;
  ellipsoid?: EllipsoidChoice;
  radius?: number;
  flattening?: number;
  /** Wrap longitude differences into +-180 degrees (world projections, stated). */
  wrap?: boolean;
}

/** Parameters as the library has completed them. */
export type CompleteParams = Readonly<{
  scale: number; x0: number; y0: number; lat0: number; lon0: number; lat1: number; lat2: number; lat3: number;
  lon1: number; lon2: number; lon3: number; k0: number; south: boolean; zone: number; usealpha: boolean; alpha: number;
  rotate: boolean; uoffset: boolean; ellipsoid: number; radius: number; flattening: number; wrap: boolean;
}>;

export interface AccuracyOption {
  /** "exact" unless given. */
  accuracy?: Accuracy;
}

/**
 * Coordinates in the module's memory, which are converted in place without a copy. `array` is always a valid view; a
 * view that was kept from before the memory grew has length 0, and a conversion refuses it.
 */
export interface Points {
  readonly array: Float64Array;
  /** Points, half the length of the array. */
  readonly length: number;
  dispose(): void;
}

/** Shapes by their points one after the other: shape i is point starts[i] up to, without it, point starts[i + 1]. */
export interface Paths {
  /** x, y, x, y ... */
  readonly coords: Float64Array;
  /** One entry more than there are shapes. */
  readonly starts: Int32Array;
}

/** Shapes in longitude and latitude that stay in the module's memory, for drawing them again and again. */
export interface Shapes {
  readonly length: number;
  dispose(): void;
}

export type Ring = ArrayLike<number>;

/** One after the other: longitude, latitude, longitude, latitude ... or x, y ... */
export type Coordinates = Float64Array | Points;

export interface Converter {
  /** Converts one point; NaN twice where it cannot be computed. */
  forward(lon: number, lat: number): [number, number];
  /**
   * Converts pairs. `Points` and views of the module's memory are converted in place and returned; other arrays are
   * left alone and a new array is returned. Points that cannot be computed are NaN twice.
   */
  forward(coords: Coordinates): Float64Array;
}

export interface Projection extends Converter {
  readonly info: ProjectionInfo;
  readonly parameters: CompleteParams;
  readonly accuracy: Accuracy;
  /** As `forward`, from x, y to longitude, latitude. */
  inverse(x: number, y: number): [number, number];
  inverse(coords: Coordinates): Float64Array;
  /** Whether a place lies in the projection's domain. */
  inProjection(lon: number, lat: number): boolean;
  /** Cuts a polyline, or the rings of a polygon, to the domain; longitude and latitude in and out. */
  clip(line: Ring): Float64Array[];
  clip(rings: readonly Ring[]): Float64Array[];
  /** Local distortion at many places; NaN where there is none. */
  distortion(lon: ArrayLike<number>, lat: ArrayLike<number>): Distortion;
  /** What it takes to draw a map. */
  map(options?: MapOptions): MapGeometry;
  dispose(): void;
}

/** Of Tissot's indicatrix, place by place. */
export interface Distortion {
  /** Scale along the meridian. */
  readonly h: Float64Array;
  /** Scale along the parallel. */
  readonly k: Float64Array;
  /** Area scale. */
  readonly area: Float64Array;
  /** Largest change of an angle, degrees. */
  readonly omega: Float64Array;
  /** The semi-axes of the ellipse that a small circle becomes. */
  readonly most: Float64Array;
  readonly least: Float64Array;
}

export interface MapOptions {
  /** Size of a pixel in map units: curves are bent to a fraction of it. Unless given, the map is 1000 pixels wide. */
  pixel?: number;
  /** West, south, east, north of the part that is drawn; unless given, what makes sense on a map of the projection. */
  bounds?: readonly [number, number, number, number];
}

export interface MapBox {
  readonly minX: number;
  readonly minY: number;
  readonly maxX: number;
  readonly maxY: number;
}

/**
 * Shapes cut along the exact edge of the map, projected and bent, in map units with y upwards. The arrays of a result
 * are views of the module's memory that hold until the next call of any map, unless `copy` is asked for.
 */
export interface MapGeometry {
  readonly box: MapBox;
  pixel: number;
  /** The outline of all that the map shows: closed, to be filled by the even-odd rule. */
  edge(): Paths;
  /** Meridians and parallels a step apart. */
  graticule(step: number): Paths;
  /** Areas by their rings, which count together by the even-odd rule; so do the closed results. */
  fill(rings: Shapes | Paths): Paths;
  /** Lines, or the outlines of rings. */
  lines(lines: Shapes | Paths): Paths;
  /** Tissot's ellipses a step apart, closed; a circle of a quarter of the step where nothing is distorted. */
  tissot(step: number): Paths;
  /** Where a place is on the map; null when the map does not show it. */
  locate(lon: number, lat: number): [number, number] | null;
  dispose(): void;
}

/** One step between a datum and WGS 84. */
export interface DatumDefinition {
  readonly method: "none" | "bursa" | "molodensky";
  readonly ellipsoid?: EllipsoidChoice;
  /** Origin shift, metres. */
  readonly dx?: number;
  readonly dy?: number;
  readonly dz?: number;
  /** Rotations (position vector), arcseconds. */
  readonly rx?: number;
  readonly ry?: number;
  readonly rz?: number;
  /** Scale correction, parts per million. */
  readonly k?: number;
  /** Prime meridian, degrees east of Greenwich. */
  readonly meridian?: number;
}

export type DatumChoice = number | string | DatumDefinition | Datum;

export interface Datum {
  /** 0 for a definition of one's own. */
  readonly id: number;
  readonly name: string;
  readonly method: DatumMethod;
  readonly parameters: DatumDefinition | null;
}

export interface Shift extends Converter {
  readonly from: Datum;
  readonly to: Datum;
  readonly accuracy: Accuracy;
  /** Heights pass unchanged: the methods shift horizontal positions. Longitude, latitude, height. */
  forward3(coords: Float64Array): Float64Array;
  dispose(): void;
}

export type GeorefMethod =
  | "helmert" | "affine" | "poly1" | "poly2" | "poly3" | "tps" | "natural" | "marcov" | "exponential" | "rational"
  | "idw";

export interface GeorefMethodInfo {
  readonly key: GeorefMethod;
  readonly name: string;
  /** Fewest control points. */
  readonly controls: number;
}

/** Source x, y and destination x, y. */
export type GeorefControl = readonly [number, number, number, number];

export interface Georef extends Converter {
  readonly method: GeorefMethodInfo;
  /** Distances between transformed source and destination at the controls. */
  readonly residuals: Float64Array;
  /** Their root mean square. */
  readonly error: number;
  /** X = c[0] + c[1] x + c[2] y, Y = c[3] + c[4] x + c[5] y, of the affine method; null else. */
  readonly coefficients: readonly number[] | null;
  dispose(): void;
}

export interface AngleFormat {
  /** Fields: "dms" unless given. */
  fields?: "d" | "dm" | "dms";
  /** Digits after the point in the last field, 0 to 15; 4 unless given. */
  decimals?: number;
  /** The hemisphere letter of an axis instead of a sign. */
  axis?: "lon" | "lat";
  /** Two digits before the point in minutes and seconds. */
  pad?: boolean;
  /** Blanks between the fields. */
  blanks?: boolean;
  /** What stands behind degrees, minutes and seconds, each one character: "d'\"" unless given. */
  separators?: string;
}

export interface Angles {
  /** Degrees from text such as "12d30'N"; throws OrvexError for what is none. */
  parse(text: string, degreeSign?: string): number;
  format(degrees: number, options?: AngleFormat): string;
}

/** A UTM zone, or a polar map of UPS (number 61, "UPSN" or "UPSS"). */
export interface UtmZone {
  readonly zone: number;
  readonly south: boolean;
  readonly label: string;
}

export interface StateZoneChoice {
  /** Number of the zone; null where there is none, or several claim the place. */
  readonly zone: number | null;
  /** Its name, or all names in question; "" where there is none. */
  readonly label: string;
}

export interface Orvex {
  readonly version: string;
  readonly projections: readonly ProjectionInfo[];
  readonly ellipsoids: readonly EllipsoidInfo[];
  readonly datums: readonly DatumInfo[];
  readonly units: readonly UnitInfo[];
  readonly georefMethods: readonly GeorefMethodInfo[];
  readonly angle: Angles;
  stateZones(year: 1927 | 1983): readonly StateZoneInfo[];

  projection(nameOrId: string | number, params?: Params, options?: AccuracyOption): Projection;
  utm(zone: number, south?: boolean, params?: Params, options?: AccuracyOption): Projection;
  /** The projection of a zone as `utmZone` answers it, polar maps included. */
  utmAt(zone: UtmZone, options?: AccuracyOption): Projection;
  statePlane(nameOrId: string | number, year: 1927 | 1983, options?: AccuracyOption): Projection;

  datum(choice: DatumChoice): Datum;
  /** From one datum to another through WGS 84. */
  shift(from: DatumChoice, to: DatumChoice, options?: AccuracyOption): Shift;
  /** Makes a grid file known by the name under which it is published: conus.las, conus.los, NTV2_0.GSB ... */
  grid(name: string, bytes: Uint8Array | ArrayBuffer): void;

  georef(controls: readonly GeorefControl[], method: GeorefMethod): Georef;

  /** The zone of a place, with the exceptions of Norway and Svalbard. */
  utmZone(lon: number, lat: number): UtmZone;
  stateZone(lon: number, lat: number, year: 1927 | 1983): StateZoneChoice;
  /** The reference of a place on WGS 84 with so many digits for each coordinate (5: metres); "" where there is none. */
  mgrs(lon: number, lat: number, digits?: number): string;
  /** The centre of the square that a reference names; throws OrvexError for a text that is none. */
  fromMgrs(text: string): [number, number];

  /** Room for so many points in the module's memory. */
  points(count: number): Points;
  /** Puts shapes into the module's memory once. */
  shapes(paths: Paths): Shapes;
  /** The bytes of the module's memory that are in use, for the curious. */
  readonly memory: number;
}

export interface LoadOptions {
  /** Where orvex.wasm is, or what is in it; unless given, beside the package's own files. */
  wasm?: URL | string | ArrayBuffer | Uint8Array | WebAssembly.Module;
}
