// Tables and GeoJSON that a person brings: read, converted and written again, without a page in sight.
import type { Accuracy, Orvex } from "orvex";
import Papa from "papaparse";

import type { Choice, Engine } from "./engine";
import { degreesOf, messageOf, type Axis } from "./format";
import { shapesOf, type Shapes } from "./outlines";

export type Kind = "forward" | "inverse" | "shift" | "utm" | "mgrs";

export interface Job {
  kind: Kind;
  choice: Choice;
  accuracy: Accuracy;
  from: string;
  to: string;
  /** Columns of longitude or x, and of latitude or y. */
  columns: readonly [number, number];
}

/** What a page is told about what was read. */
export interface Summary {
  name: string;
  what: "table" | "geojson";
  header: string[];
  /** Whether the header stood in the file. */
  headed: boolean;
  decimalComma: boolean;
  rows: string[][];
  count: number;
  guess?: readonly [number, number];
  problems: string[];
  own: OwnPaths;
}

export interface OwnPaths {
  areas: Shapes;
  lines: Shapes;
  points: [number, number][];
}

export interface Outcome {
  header: string[];
  rows: string[][];
  converted: number;
  failed: number;
  milliseconds: number;
  file: Blob;
  fileName: string;
}

const PREVIEW = 60;
const BLOCK = 65536;
const MOST_DRAWN = 20000;

export class BadInput extends Error {}

/** A file or a pasted text that has been read. */
export interface Source {
  summary(columns?: readonly [number, number]): Summary;
  convert(engine: Engine, job: Job, progress: (part: number) => void): Outcome;
}

export function read(name: string, text: string, orvex: Orvex): Source {
  const plain = text.replace(/^\uFEFF/, "");
  if (plain.trim() === "") throw new BadInput(`${name} is empty`);
  if (plain.includes("\0")) throw new BadInput(`${name} is not a text`);
  return /^\s*[{[]/.test(plain) ? new GeoSource(name, plain) : new TableSource(name, plain, orvex);
}

// Tables.

/** Names of columns that belong together. */
const columnNames = [
  [["lon", "longitude", "long", "lng"], ["lat", "latitude"]],
  [["x", "easting", "east", "e"], ["y", "northing", "north", "n"]],
] as const;
const decimalCommas = /^\s*[+-]?\d+,\d+\s*$/;
const mayPartThousands = /^\s*[+-]?[1-9]\d{0,2},\d{3}\s*$/;
const decimalPoints = /^\s*[+-]?\d+\.\d+\s*$/;

const comments = /^[ \t]*#.*$/gm;
const COMMENT = "\0";  // in front of one; no text that is read has it

/** Comments as rows of one field, whatever signs they hold. */
function withComments(text: string): string {
  return text.replace(comments, (line) => `"${COMMENT}${line.replaceAll('"', '""')}"`);
}

function isComment(row: readonly string[]): boolean {
  return row[0]?.startsWith(COMMENT) ?? false;
}

const quotedFields = /(^|[,;\t|])[ ]*"(?:[^"]|"")*"/g;

/** Whichever the first line of the table holds most outside of quotes, else blanks. */
function delimiterOf(text: string): string {
  const first = text.replace(comments, "").split(/\r\n?|\n/).find((each) => each.trim() !== "") ?? "";
  const line = first.replace(quotedFields, "$1");
  const counts = [",", ";", "\t", "|"].map((sign) => [sign, line.split(sign).length - 1] as const);
  const [sign, count] = counts.reduce((most, each) => (each[1] > most[1] ? each : most));
  return count > 0 ? sign : " ";
}

class TableSource implements Source {
  private readonly header: string[];
  /** What stands above the rows in a file: comments, and the header if there is one. */
  private readonly above: string[][];
  /** Comments among them stay where they are. */
  private readonly rows: string[][];
  private readonly headed: boolean;
  private readonly decimalComma: boolean;
  private readonly problems: string[];
  private readonly delimiter: string;
  private readonly newline: string;

  constructor(private readonly name: string, text: string, private readonly orvex: Orvex) {
    this.delimiter = delimiterOf(text);
    this.newline = text.includes("\r\n") ? "\r\n" : "\n";
    const { data, errors } = Papa.parse<string[]>(withComments(text), { skipEmptyLines: true, delimiter: this.delimiter });
    const rows = this.delimiter === " " ? data.map((row) => row.filter((field) => field !== "")) : data;
    const top = rows.findIndex((row) => !isComment(row));
    const first = rows[top];
    if (!first || first.length < 2) throw new BadInput(`${this.name} has no two columns: it is no table of coordinates`);
    const sample = rows.slice(top, top + PREVIEW).flat();
    this.decimalComma = this.delimiter !== "," && sample.some((field) => decimalCommas.test(field)) && !sample.some((field) => decimalPoints.test(field));
    const names = first.map((field) => field.trim());
    this.headed = guess(names) !== undefined || names.every((field) => !Number.isFinite(this.coordinate(field)));
    this.header = this.headed ? names : names.map((_, i) => `column ${i + 1}`);
    this.above = rows.slice(0, this.headed ? top + 1 : top);
    this.rows = rows.slice(this.above.length);
    if (this.rows.length === 0) throw new BadInput(`${this.name} has a header and no rows`);
    this.problems = [...errors.slice(0, 5).map((error) => `row ${(error.row ?? 0) + 1}: ${error.message}`), ...this.tooLong()];
  }

  private tooLong(): string[] {
    const count = this.rows.filter((row) => !isComment(row) && row.length > this.header.length).length;
    return count > 0 ? [`${count} rows have more columns than the first`] : [];
  }

  /** A number, or degrees, minutes and seconds; NaN for another text. */
  private coordinate(text: string | undefined, axis?: Axis): number {
    if (!text) return NaN;
    try {
      return degreesOf(this.orvex.angle, this.withPoint(text, axis === undefined), axis);
    } catch {
      return NaN;
    }
  }

  /** A comma between commas stood within quotes: it is the decimal one, but for lengths of which it may part the thousands. */
  private withPoint(text: string, isLength: boolean): string {
    const within = this.delimiter === "," && /^[^,.]*\d,\d[^,.]*$/.test(text) && !(isLength && mayPartThousands.test(text));
    return this.decimalComma || within ? text.replace(",", ".") : text;
  }

  summary(columns = this.headed ? guess(this.header) : ([0, 1] as const)): Summary {
    const shown = this.rows.filter((row) => !isComment(row));
    return {
      name: this.name, what: "table", header: this.header, headed: this.headed, decimalComma: this.decimalComma, rows: shown.slice(0, PREVIEW), count: shown.length,
      guess: columns, problems: this.problems, own: { areas: shapesOf([]), lines: shapesOf([]), points: columns ? this.points(columns) : [] },
    };
  }

  convert(engine: Engine, job: Job, progress: (part: number) => void): Outcome {
    const [x, y] = job.columns;
    if (x === y) throw new BadInput("the two columns are the same one");
    const started = performance.now();
    const converter = makeConverter(engine, job);
    const coords = new Float64Array(2 * this.rows.length);
    this.rows.forEach((row, i) => {
      coords[2 * i] = this.coordinate(row[x], job.kind === "inverse" ? undefined : "lon");
      coords[2 * i + 1] = this.coordinate(row[y], job.kind === "inverse" ? undefined : "lat");
    });
    const results: string[][] = [];
    try {
      for (let from = 0; from < this.rows.length; from += BLOCK) {
        const to = Math.min(from + BLOCK, this.rows.length);
        for (const row of converter.convert(coords.subarray(2 * from, 2 * to))) {
          results.push(row);
        }
        progress(to / this.rows.length);
      }
    } finally {
      converter.dispose();
    }
    const header = [...this.header, ...converter.header.map((name) => this.fresh(name))];
    const rows = this.rows.map((row, i) => (isComment(row) ? row : [...this.padded(row), ...this.written(results[i]!)]));
    const points = rows.filter((row) => !isComment(row));
    const failed = results.filter((cells, i) => !isComment(this.rows[i]!) && cells.every((cell) => cell === "")).length;
    return {
      header, rows: points.slice(0, PREVIEW), converted: points.length - failed, failed, milliseconds: performance.now() - started,
      file: new Blob([this.fileOf(header, rows)], { type: "text/csv" }), fileName: `${stem(this.name)}-${job.kind}.csv`,
    };
  }

  /** The form of the file that was read: its delimiter, line ends and comments. */
  private fileOf(header: string[], rows: string[][]): string {
    const above = this.headed ? [...this.above.slice(0, -1), header] : this.above;
    const needsQuotes = (field: string) => field.includes(this.delimiter) || /^#|["\r\n]/.test(field);
    const quoted = (field: string) => (needsQuotes(field) ? `"${field.replaceAll('"', '""')}"` : field);
    const lines = [...above, ...rows].map((row) => (isComment(row) ? row[0]!.slice(COMMENT.length) : row.map(quoted).join(this.delimiter)));
    return lines.join(this.newline) + this.newline;
  }

  private padded(row: readonly string[]): string[] {
    return [...row, ...Array<string>(Math.max(this.header.length - row.length, 0)).fill("")];
  }

  private written(cells: readonly string[]): string[] {
    if (this.delimiter === " ") return cells.map((cell) => cell || "*");  // an empty field would move the columns
    return this.decimalComma ? cells.map((cell) => cell.replace(".", ",")) : [...cells];
  }

  private fresh(name: string): string {
    return this.header.includes(name) ? `${name}_out` : name;
  }

  private points([x, y]: readonly [number, number]): [number, number][] {
    return this.rows
      .slice(0, MOST_DRAWN)
      .map((row): [number, number] => [this.coordinate(row[x], "lon"), this.coordinate(row[y], "lat")])
      .filter(([lon, lat]) => Math.abs(lon) <= 360 && Math.abs(lat) <= 90);
  }
}

/** Whether a column's name is a usual one with more behind it: "lon (deg)". E13.5 is an angle. */
function extendsName(column: string, name: string): boolean {
  return name !== "e" && name !== "n" && column.startsWith(name) && /^[^a-z0-9]/.test(column.slice(name.length));
}

/** The column with one of the usual names, before those with more behind it; -1 without one. */
function columnNamed(header: readonly string[], usual: readonly string[]): number {
  const columns = header.map((name) => name.toLowerCase());
  const exact = usual.map((name) => columns.indexOf(name)).find((at) => at >= 0);
  return exact ?? usual.map((name) => columns.findIndex((column) => extendsName(column, name))).find((at) => at >= 0) ?? -1;
}

/** The columns of the coordinates by their names. */
function guess(header: readonly string[]): readonly [number, number] | undefined {
  for (const [lon, lat] of columnNames) {
    const [x, y] = [columnNamed(header, lon), columnNamed(header, lat)];
    if (x >= 0 && y >= 0) return [x, y];
  }
  return undefined;
}

function stem(name: string): string {
  return name.replace(/\.[^.]*$/, "") || "table";
}

// Conversions.

interface Converter {
  header: string[];
  convert(coords: Float64Array): Iterable<string[]>;
  dispose(): void;
}

function* pairs(coords: Float64Array, decimals: number): Iterable<string[]> {
  for (let i = 0; i < coords.length; i += 2) {
    const plottable = Number.isFinite(coords[i]) && Number.isFinite(coords[i + 1]);
    yield plottable ? [coords[i]!.toFixed(decimals), coords[i + 1]!.toFixed(decimals)] : ["", ""];
  }
}

function* eachPlace(coords: Float64Array, width: number, answer: (lon: number, lat: number) => string[]): Iterable<string[]> {
  for (let i = 0; i < coords.length; i += 2) {
    const [lon, lat] = [coords[i]!, coords[i + 1]!];
    const known = Number.isFinite(lon) && Math.abs(lat) <= 90;
    yield known ? answer(lon, lat) : Array<string>(width).fill("");
  }
}

const LENGTHS = 4, DEGREES = 9;

function makeConverter(engine: Engine, job: Job): Converter {
  switch (job.kind) {
    case "forward":
    case "inverse": {
      const projection = engine.make(job.choice, job.accuracy);
      const forward = job.kind === "forward";
      return {
        header: forward ? ["x", "y"] : ["lon", "lat"],
        convert: (coords) => (forward ? pairs(projection.forward(coords), LENGTHS) : pairs(projection.inverse(coords), DEGREES)),
        dispose: () => projection.dispose(),
      };
    }
    case "shift": {
      const shift = engine.orvex.shift(job.from, job.to, { accuracy: job.accuracy });
      return { header: ["lon", "lat"], convert: (coords) => pairs(shift.forward(coords), DEGREES), dispose: () => shift.dispose() };
    }
    case "utm": return utmConverter(engine, job.accuracy);
    case "mgrs":
      return {
        header: ["mgrs"],
        convert: (coords) => eachPlace(coords, 1, (lon, lat) => [engine.orvex.mgrs(lon, lat)]),
        dispose: () => undefined,
      };
  }
}

/** Each point in its own zone; the projections of the zones met are kept. */
function utmConverter({ orvex }: Engine, accuracy: Accuracy): Converter {
  const zones = new Map<string, ReturnType<Orvex["utmAt"]>>();
  const answer = (lon: number, lat: number) => {
    const zone = orvex.utmZone(lon, lat);
    let projection = zones.get(zone.label);
    if (!projection) zones.set(zone.label, (projection = orvex.utmAt(zone, { accuracy })));
    const [x, y] = projection.forward(lon, lat);
    return Number.isFinite(x) ? [zone.label, x.toFixed(LENGTHS), y.toFixed(LENGTHS)] : ["", "", ""];
  };
  return {
    header: ["zone", "x", "y"],
    convert: (coords) => eachPlace(coords, 3, answer),
    dispose: () => zones.forEach((projection) => projection.dispose()),
  };
}

// GeoJSON.

type Json = null | boolean | number | string | Json[] | { [key: string]: Json };
type JsonObject = { [key: string]: Json };
type Position = [number, number, ...number[]];

const depths: Record<string, number> = { Point: 0, MultiPoint: 1, LineString: 1, MultiLineString: 2, Polygon: 2, MultiPolygon: 3 };

function isPosition(value: Json | undefined): value is Position {
  return Array.isArray(value) && value.length >= 2 && value.every((part) => typeof part === "number");
}

function isObject(value: Json | undefined): value is JsonObject {
  return typeof value === "object" && value !== null && !Array.isArray(value);
}

class GeoSource implements Source {
  private readonly root: JsonObject;
  private features = 0;

  constructor(private readonly name: string, text: string) {
    let root: Json;
    try {
      root = JSON.parse(text) as Json;
    } catch (error) {
      throw new BadInput(`${name} is not GeoJSON: ${messageOf(error)}`);
    }
    if (!isObject(root)) throw new BadInput(`${name} is not GeoJSON: it is no object`);
    this.root = root;
    walk(root, (geometry) => {
      check(geometry, name);
      ++this.features;
    }, name);
    if (this.features === 0) throw new BadInput(`${name} has no geometry`);
  }

  summary(): Summary {
    return { name: this.name, what: "geojson", header: [], headed: false, decimalComma: false, rows: [], count: this.features, problems: [], own: this.own() };
  }

  convert(engine: Engine, job: Job, progress: (part: number) => void): Outcome {
    if (job.kind === "utm" || job.kind === "mgrs") throw new BadInput("shapes have many places; zones and references are for tables");
    const started = performance.now();
    const copy = structuredClone(this.root);
    const positions: Position[] = [];
    walk(copy, (geometry) => eachPosition(geometry.coordinates!, depths[String(geometry.type)]!, (position) => positions.push(position)), this.name);
    const coords = new Float64Array(2 * positions.length);
    positions.forEach((position, i) => coords.set([position[0], position[1]], 2 * i));
    const failed = this.put(positions, this.converted(engine, job, coords));
    progress(1);
    walk(copy, emptied, this.name);
    dropBoxes(copy);
    return {
      header: [], rows: [], converted: positions.length - failed, failed, milliseconds: performance.now() - started,
      file: new Blob([JSON.stringify(copy), "\n"], { type: "application/geo+json" }), fileName: `${stem(this.name)}-${job.kind}.geojson`,
    };
  }

  private converted(engine: Engine, job: Job, coords: Float64Array): Float64Array {
    if (job.kind === "shift") {
      const shift = engine.orvex.shift(job.from, job.to, { accuracy: job.accuracy });
      try {
        return shift.forward(coords);
      } finally {
        shift.dispose();
      }
    }
    const projection = engine.make(job.choice, job.accuracy);
    try {
      return job.kind === "forward" ? projection.forward(coords) : projection.inverse(coords);
    } finally {
      projection.dispose();
    }
  }

  private put(positions: Position[], results: Float64Array): number {
    let failed = 0;
    positions.forEach((position, i) => {
      [position[0], position[1]] = [results[2 * i]!, results[2 * i + 1]!];
      failed += Number.isFinite(position[0]) ? 0 : 1;
    });
    return failed;
  }

  private own(): OwnPaths {
    const areas: Position[][] = [];
    const lines: Position[][] = [];
    const points: [number, number][] = [];
    walk(this.root, (geometry) => {
      const type = String(geometry.type);
      const coordinates = geometry.coordinates as Json[];
      if (type === "Point") points.push([coordinates[0] as number, coordinates[1] as number]);
      else if (type === "MultiPoint") points.push(...(coordinates as Position[]).map(([x, y]): [number, number] => [x, y]));
      else if (type === "LineString") lines.push(coordinates as Position[]);
      else if (type === "MultiLineString") lines.push(...(coordinates as Position[][]));
      else if (type === "Polygon") areas.push(...(coordinates as Position[][]));
      else areas.push(...(coordinates as Position[][][]).flat());
    }, this.name);
    const onGlobe = (line: readonly Position[]) => line.length > 1 && line.every(([lon, lat]) => Math.abs(lon) <= 720 && Math.abs(lat) <= 90);
    const paths = (all: Position[][]) => shapesOf(all.filter(onGlobe).map((line) => line.map(([x, y]) => [x, y] as const)));
    return { areas: paths(areas), lines: paths(lines), points: points.filter(([lon, lat]) => Math.abs(lon) <= 360 && Math.abs(lat) <= 90).slice(0, MOST_DRAWN) };
  }
}

/** Calls for every geometry with coordinates. */
function walk(node: JsonObject, visit: (geometry: JsonObject) => void, name: string): void {
  const each = (list: Json | undefined, what: string) => {
    if (!Array.isArray(list)) throw new BadInput(`${name} is not GeoJSON: a ${String(node.type)} without ${what}`);
    for (const part of list) {
      if (!isObject(part)) throw new BadInput(`${name} is not GeoJSON: something in ${what} is no object`);
      walk(part, visit, name);
    }
  };
  if (node.type === "FeatureCollection") each(node.features, "features");
  else if (node.type === "GeometryCollection") each(node.geometries, "geometries");
  else if (node.type === "Feature") {
    if (isObject(node.geometry)) walk(node.geometry, visit, name);
  } else if (Object.hasOwn(depths, String(node.type))) visit(node);
  else throw new BadInput(`${name} is not GeoJSON: unknown type "${String(node.type)}"`);
}

function check(geometry: JsonObject, name: string): void {
  const inner = (value: Json | undefined, depth: number): boolean =>
    depth === 0 ? isPosition(value) : Array.isArray(value) && value.every((part) => inner(part, depth - 1));
  const empty = Array.isArray(geometry.coordinates) && geometry.coordinates.length === 0;
  if (!empty && !inner(geometry.coordinates, depths[String(geometry.type)]!)) {
    throw new BadInput(`${name}: the coordinates of a ${String(geometry.type)} are damaged`);
  }
}

function eachPosition(coordinates: Json, depth: number, visit: (position: Position) => void): void {
  if (depth === 0) {
    if (isPosition(coordinates)) visit(coordinates);
  } else {
    for (const part of coordinates as Json[]) eachPosition(part, depth - 1, visit);
  }
}

/** A geometry with a position that cannot be computed keeps its type and gets empty coordinates. */
function emptied(geometry: JsonObject): void {
  let whole = true;
  eachPosition(geometry.coordinates!, depths[String(geometry.type)]!, (position) => (whole &&= Number.isFinite(position[0]) && Number.isFinite(position[1])));
  if (!whole) geometry.coordinates = [];
}

/** Bounding boxes say where the shapes were. */
function dropBoxes(node: Json): void {
  if (Array.isArray(node)) node.forEach(dropBoxes);
  else if (isObject(node)) {
    delete node.bbox;
    for (const [key, value] of Object.entries(node)) if (key !== "properties") dropBoxes(value);
  }
}
