// A projection: conversion, clipping, distortion.
import type { Catalogue } from "./catalogue.js";
import { listOf, numbersOf, OrvexError } from "./errors.js";
import type { Module } from "./module.js";
import { Owned } from "./owned.js";
import { createProjection, readParams } from "./record.js";
import { MapObject } from "./map.js";
import type {
  Accuracy, CompleteParams, Coordinates, Distortion, MapGeometry, MapOptions, Params, Projection, ProjectionInfo, Ring,
} from "./types.js";

const distortionFields = ["h", "k", "area", "omega", "most", "least"] as const;

export class ProjectionObject implements Projection {
  readonly parameters: CompleteParams;
  private readonly owned: Owned;

  constructor(
    private readonly module: Module, catalogue: Catalogue, readonly info: ProjectionInfo, params: Params,
    readonly accuracy: Accuracy,
  ) {
    const handle = createProjection(module, catalogue, info, params, accuracy);
    this.owned = new Owned(module, handle, "projection_delete", "projection");
    this.parameters = readParams(module, catalogue, handle);
  }

  forward(lon: number, lat: number): [number, number];
  forward(coords: Coordinates): Float64Array;
  forward(given: number | Coordinates, lat?: number): [number, number] | Float64Array {
    return this.convert(given, lat, 0);
  }

  inverse(x: number, y: number): [number, number];
  inverse(coords: Coordinates): Float64Array;
  inverse(given: number | Coordinates, y?: number): [number, number] | Float64Array {
    return this.convert(given, y, 1);
  }

  private convert(given: number | Coordinates, other: number | undefined, inverse: number): [number, number] | Float64Array {
    const { handle } = this.owned;
    const run = (at: number, count: number): void => this.module.run("projection_convert", handle, at, count, inverse);
    return typeof given === "number" ? this.module.point(given, other ?? NaN, run) : this.module.convert(given, run);
  }

  inProjection(lon: number, lat: number): boolean {
    numbersOf([lon, lat], "longitude and latitude");
    const answer = this.module.call("projection_holds", this.owned.handle, lon, lat);
    return answer < 0 ? this.module.fail() : answer !== 0;
  }

  clip(shape: Ring | readonly Ring[]): Float64Array[] {
    const isPolygon = typeof listOf<unknown>(shape, "shapes")[0] === "object";
    const rings = (isPolygon ? shape : [shape]) as readonly Ring[];
    const lengths = rings.map((ring) => numbersOf(ring, "rings").length / 2);
    if (!lengths.every(Number.isInteger)) throw new OrvexError("coordinates come in pairs; an array has an odd length");
    const coords = new Float64Array(rings.reduce((sum, ring) => sum + ring.length, 0));
    rings.reduce((at, ring) => (coords.set(ring, at), at + ring.length), 0);
    this.module.withDoubles(coords, (points) => {
      const total = coords.length / 2;
      if (!isPolygon) return this.module.run("projection_clip", this.owned.handle, points, total, 0, 0);
      return this.module.withIntegers(lengths, (counts) => {
        this.module.run("projection_clip", this.owned.handle, points, total, counts, rings.length);
      });
    });
    const { coords: cut, starts } = this.module.paths();
    return Array.from({ length: starts.length - 1 }, (_, i) => cut.slice(2 * starts[i]!, 2 * starts[i + 1]!));
  }

  distortion(lon: ArrayLike<number>, lat: ArrayLike<number>): Distortion {
    const count = numbersOf(lon, "longitudes").length, fields = distortionFields.length;
    if (numbersOf(lat, "latitudes").length !== count) throw new OrvexError("there are not as many latitudes as longitudes");
    const places = new Float64Array(2 * count);
    for (let i = 0; i < count; i++) [places[2 * i], places[2 * i + 1]] = [lon[i]!, lat[i]!];
    return this.module.withDoubles(places, (at) => this.module.withDoubles(new Float64Array(fields * count), (values) => {
      this.module.run("distortion", this.owned.handle, at, count, values);
      const all = this.module.doubles(values, fields * count);
      const column = (field: number): Float64Array => Float64Array.from({ length: count }, (_, i) => all[fields * i + field]!);
      return Object.fromEntries(distortionFields.map((name, field) => [name, column(field)])) as unknown as Distortion;
    }));
  }

  map(options: MapOptions = {}): MapGeometry {
    return new MapObject(this.module, this.owned.handle, options);
  }

  dispose(): void {
    this.owned.dispose();
  }
}
