// What `load` answers.
import { makeAngles } from "./angle.js";
import { find, projectionIds } from "./catalogue.js";
import type { Catalogue } from "./catalogue.js";
import { addGrid, datumOf, ShiftObject } from "./datum.js";
import { OrvexError, recordOf, textOf } from "./errors.js";
import { GeorefObject } from "./georef.js";
import { ShapesObject } from "./map.js";
import type { Module } from "./module.js";
import { PointsObject } from "./points.js";
import { ProjectionObject } from "./projection.js";
import type {
  AccuracyOption, Angles, Datum, DatumChoice, Georef, GeorefControl, GeorefMethod, Orvex, Params, Paths, Points, Projection,
  Shapes, Shift, StateZoneChoice, StateZoneInfo, UtmZone,
} from "./types.js";

const polarZone = 61;
const stereographic = "Stereographic";

export class OrvexObject implements Orvex {
  readonly angle: Angles;

  constructor(private readonly module: Module, private readonly catalogue: Catalogue) {
    this.angle = makeAngles(module);
  }

  get version() { return this.catalogue.version; }
  get projections() { return this.catalogue.projections; }
  get ellipsoids() { return this.catalogue.ellipsoids; }
  get datums() { return this.catalogue.datums; }
  get units() { return this.catalogue.units; }
  get georefMethods() { return this.catalogue.georefMethods; }
  get memory() { return this.module.bytes; }

  stateZones(year: 1927 | 1983): readonly StateZoneInfo[] {
    return this.catalogue.zones[checkedYear(year)];
  }

  projection(nameOrId: string | number, params: Params = {}, options: AccuracyOption = {}): Projection {
    const { accuracy = "exact" } = recordOf(options, "options");
    const info = find(this.projections, nameOrId, "projection");
    return new ProjectionObject(this.module, this.catalogue, info, params, accuracy);
  }

  utm(zone: number, south = false, params: Params = {}, options: AccuracyOption = {}): Projection {
    if (!Number.isInteger(zone) || zone < 1 || zone > 60) {
      throw new OrvexError(`${zone} is not a UTM zone: a whole number from 1 to 60`, null, "zone");
    }
    return this.projection(projectionIds.utm, { ...recordOf(params, "parameters"), zone, south, lon0: 6 * zone - 183 }, options);
  }

  statePlane(nameOrId: string | number, year: 1927 | 1983, options: AccuracyOption = {}): Projection {
    return this.projection(planeOf(year), { zone: nameOrId }, options);
  }

  utmAt(place: UtmZone, options: AccuracyOption = {}): Projection {
    const { zone, south } = recordOf(place, "the zone");
    if (zone !== polarZone) return this.utm(zone, south, {}, options);
    return this.projection(stereographic, { lat0: south ? -90 : 90, k0: 0.994, x0: 2e6, y0: 2e6 }, options);
  }

  datum(choice: DatumChoice): Datum {
    return datumOf(this.catalogue, choice);
  }

  shift(from: DatumChoice, to: DatumChoice, options: AccuracyOption = {}): Shift {
    const { accuracy = "exact" } = recordOf(options, "options");
    return new ShiftObject(this.module, this.catalogue, from, to, accuracy);
  }

  grid(name: string, bytes: Uint8Array | ArrayBuffer): void {
    addGrid(this.module, name, bytes);
  }

  georef(controls: readonly GeorefControl[], method: GeorefMethod): Georef {
    return new GeorefObject(this.module, this.catalogue, controls, method);
  }

  utmZone(lon: number, lat: number): UtmZone {
    checkPlace(lon, lat);
    const number = this.module.call("utm_zone", lon, lat), zone = Math.abs(number), south = number < 0;
    const letter = south ? "S" : "N";
    return { zone, south, label: zone === polarZone ? `UPS${letter}` : `${zone}${letter}` };
  }

  stateZone(lon: number, lat: number, year: 1927 | 1983): StateZoneChoice {
    checkPlace(lon, lat);
    const zone = this.module.call("state_zone", planeOf(year), lon, lat);
    return { zone: zone < 0 ? null : zone, label: this.module.text("result_text") };
  }

  mgrs(lon: number, lat: number, digits = 5): string {
    checkPlace(lon, lat);
    if (!Number.isInteger(digits)) throw new OrvexError(`${digits} is not a number of digits`);
    return this.module.text("mgrs", lon, lat, digits);
  }

  fromMgrs(text: string): [number, number] {
    return this.module.withText(textOf(text, "the reference"), (at) => this.module.withDoubles([0, 0], (place) => {
      this.module.run("from_mgrs", at, place);
      const [lon, lat] = this.module.doubles(place, 2);
      return [lon!, lat!];
    }));
  }

  shapes(paths: Paths): Shapes {
    return new ShapesObject(this.module, paths);
  }

  points(count: number): Points {
    return new PointsObject(this.module, count);
  }
}

function checkedYear(year: number): 1927 | 1983 {
  if (year !== 1927 && year !== 1983) throw new OrvexError(`the state plane systems are of 1927 and 1983, not of ${year}`);
  return year;
}

function planeOf(year: 1927 | 1983): number {
  return checkedYear(year) === 1927 ? projectionIds.plane1927 : projectionIds.plane1983;
}

function checkPlace(lon: number, lat: number): void {
  if (!Number.isFinite(lon) || !Number.isFinite(lat) || Math.abs(lat) > 90) throw new OrvexError(`${lon}, ${lat} is no longitude and latitude`);
}
