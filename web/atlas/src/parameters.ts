// The parameters of the projection, in the order and by the names of the library's catalogue, each with the control that
// the catalogue asks for.
import type { ParameterInfo } from "orvex";

import type { Value, Values } from "./catalogue";
import { h } from "./dom";
import type { Choice, Engine } from "./engine";
import { ChoiceField, FlagField, NumberField, plainNumber, type Field } from "./fields";
import type { AngleText, Axis } from "./format";

export type Change = (key: string, value: Value | undefined, done: boolean) => void;

const OWN = "own";  // of the list of ellipsoids
const userDefined = 0;

function axisOf(key: string): Axis | undefined {
  return key.startsWith("lon") ? "lon" : key.startsWith("lat") ? "lat" : undefined;
}

function utmMeridian(zone: number): number {
  return 6 * zone - 183;
}

export function utmZoneOf(lon0: number): number {
  return Math.min(Math.max(Math.floor((lon0 + 180) / 6) + 1, 1), 60);
}

export class Parameters {
  private fields = new Map<string, Field>();
  private slug = "";

  constructor(private readonly form: HTMLElement, private readonly engine: Engine, private readonly angles: AngleText, private readonly change: Change) {
    form.addEventListener("submit", (event) => event.preventDefault());
  }

  /** Shows a choice; fields are made anew only when the projection is another one. */
  show(choice: Choice): void {
    if (choice.slug !== this.slug) this.build(choice.slug);
    const values = this.engine.values(choice);
    for (const [key, field] of this.fields) field.set(this.valueOf(key, values));
    this.showOwn(values);
  }

  /** A message at the field that it is about, or at the one that was changed. */
  setError(keys: readonly (string | null | undefined)[], text: string): boolean {
    for (const key of keys) {
      const field = key ? this.fields.get(key) : undefined;
      if (!field) continue;
      field.setError(text);
      return true;
    }
    return false;
  }

  clearErrors(): void {
    for (const field of this.fields.values()) field.setError("");
  }

  private valueOf(key: string, values: Values): unknown {
    if (key === "utmzone") return utmZoneOf(Number(values.lon0 ?? 0));
    if (key === "ellipsoid" && (values.radius !== undefined || values.flattening !== undefined)) return OWN;
    return values[key] ?? this.defaultOf(key);
  }

  private defaultOf(key: string): Value {
    if (key === "ellipsoid") return this.engine.orvex.ellipsoids.find((ellipsoid) => ellipsoid.name === "WGS 84")!.name;
    const own = { radius: 6378137, flattening: 1 / 298.257223563 }[key];
    return own ?? this.engine.info(this.slug).parameters.find((parameter) => parameter.key === key)?.default ?? 0;
  }

  private build(slug: string): void {
    this.slug = slug;
    this.fields.clear();
    const add = (key: string, field: Field) => {
      field.element.dataset.key = key;
      this.fields.set(key, field);
    };
    if (slug === "utm") add("utmzone", this.utmZone());
    for (const parameter of this.engine.info(slug).parameters) {
      add(parameter.key, this.fieldOf(parameter));
      if (parameter.control !== "ellipsoid") continue;
      add("radius", this.number("radius", "Ellipsoid Radius (meters)", "m", 1000, plainNumber));
      add("flattening", this.number("flattening", "Ellipsoid Flattening", "", 0.0001, plainNumber));
    }
    const elements = [...this.fields.values()].map((field) => field.element);
    if (elements.length === 0) elements.push(h("p", { class: "quiet" }, "This one has no parameters."));
    this.form.replaceChildren(...elements);
  }

  private number(key: string, label: string, unit: string, step: number, parse: (text: string) => number): NumberField {
    return new NumberField({ label, unit, step, parse, change: (value, done) => this.change(key, value, done) });
  }

  private utmZone(): NumberField {
    const field = new NumberField({
      label: "UTM zone", step: 1, parse: plainNumber,
      change: (value, done) => {
        const zone = Math.round(value);
        if (zone < 1 || zone > 60) field.setError("UTM zones run from 1 to 60");
        else this.change("lon0", utmMeridian(zone), done);
      },
    });
    return field;
  }

  private fieldOf(parameter: ParameterInfo): Field {
    const { key, name } = parameter;
    switch (parameter.control) {
      case "angle": return this.number(key, name, "\u00b0", 1, (text) => this.angles.parse(text, axisOf(key)));
      case "length": return this.number(key, name, "m", 1000, plainNumber);
      case "number": return this.number(key, name, "", key === "k0" ? 0.0001 : 0.1, plainNumber);
      case "flag": return new FlagField(name, (value) => this.change(key, value, true));
      case "zone": return this.zone(name);
      case "ellipsoid": return this.ellipsoid(name);
    }
  }

  private zone(name: string): Field {
    const zones = this.engine.orvex.stateZones(this.slug === "spcs27" ? 1927 : 1983);
    return new ChoiceField(name, zones.map((zone) => ({ value: zone.name, text: zone.name })), (value) => this.change("zone", value, true));
  }

  private ellipsoid(name: string): Field {
    const known = this.engine.orvex.ellipsoids.filter((ellipsoid) => ellipsoid.id !== userDefined);
    const options = [...known.map((ellipsoid) => ({ value: ellipsoid.name, text: ellipsoid.name })), { value: OWN, text: "Of my own \u2026" }];
    const sphere = this.engine.info(this.slug).sphereOnly;
    return new ChoiceField(sphere ? `${name} (its radius)` : name, options, (value) => {
      if (value === OWN) this.change("radius", this.defaultOf("radius"), true);
      else this.change("ellipsoid", value, true);
    });
  }

  private showOwn(values: Values): void {
    const own = values.radius !== undefined || values.flattening !== undefined;
    for (const key of ["radius", "flattening"]) {
      const field = this.fields.get(key);
      if (field) field.element.hidden = !own;
    }
  }
}

/** The values after one has changed; an ellipsoid and a figure of one's own exclude each other. */
export function changed(values: Values, key: string, value: Value | undefined): Values {
  const next = { ...values };
  if (value === undefined) delete next[key];
  else next[key] = value;
  if (key === "ellipsoid") {
    delete next.radius;
    delete next.flattening;
  }
  if (key === "radius" || key === "flattening") {
    delete next.ellipsoid;
    next.radius ??= 6378137;
    next.flattening ??= 1 / 298.257223563;
  }
  return next;
}
