// What `load` answers.
import { OrvexError } from "./errors.js";
import { find, projectionIds } from "./catalogue.js";
import type { Catalogue } from "./catalogue.js";
import { ProjectionObject } from "./projection.js";
import type { Module } from "./module.js";
import { PointsObject } from "./points.js";
import type { AccuracyOption, Orvex, Params, Points, Projection, StateZoneInfo } from "./types.js";

export class OrvexObject implements Orvex {
  constructor(private readonly module: Module, private readonly catalogue: Catalogue) {}

  get version() { return this.catalogue.version; }
  get projections() { return this.catalogue.projections; }
  get ellipsoids() { return this.catalogue.ellipsoids; }
  get datums() { return this.catalogue.datums; }
  get units() { return this.catalogue.units; }
  get georefMethods() { return this.catalogue.georefMethods; }
  get memory() { return this.module.bytes; }

  stateZones(year: 1927 | 1983): readonly StateZoneInfo[] {
    return this.catalogue.zones[year] ?? [];
  }

  projection(nameOrId: string | number, params: Params = {}, { accuracy = "exact" }: AccuracyOption = {}): Projection {
    const info = find(this.projections, nameOrId, "projection");
    return new ProjectionObject(this.module, this.catalogue, info, params, accuracy);
  }

  utm(zone: number, south = false, params: Params = {}, options: AccuracyOption = {}): Projection {
    if (!Number.isInteger(zone) || zone < 1 || zone > 60) {
      throw new OrvexError(`${zone} is not a UTM zone: a whole number from 1 to 60`, null, "zone");
    }
    return this.projection(projectionIds.utm, { ...params, zone, south, lon0: 6 * zone - 183 }, options);
  }

  statePlane(nameOrId: string | number, year: 1927 | 1983, options: AccuracyOption = {}): Projection {
    return this.projection(year === 1927 ? projectionIds.plane1927 : projectionIds.plane1983, { zone: nameOrId }, options);
  }

  points(count: number): Points {
    return new PointsObject(this.module, count);
  }
}
