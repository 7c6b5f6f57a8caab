// A point in every system at once: coordinates that can be edited, zones, and another datum with the shift to it.
import type { Projection } from "orvex";

import type { App, Page } from "./app";
import { datumCommand } from "./command";
import { copy, h } from "./dom";
import { beyondPole, ChoiceField, NumberField, SegmentField } from "./fields";
import { grouped, messageOf, none, thin } from "./format";
import { GridFiles } from "./grids";
import { icon } from "./icons";
import type { AngleForm, Place } from "./state";
import { wrapped } from "./view";

const DEGREES = 9, LENGTHS = 4, BACK = 8;  // decimals; BACK is for the way back, a millimetre
const MEAN_RADIUS = 6371008.8;

/** A line of a list of results: what it is, what it is worth, and a way to copy it. */
class Row {
  readonly element: HTMLElement;
  private readonly value = h("span", { class: "value" }, none);
  private readonly name: HTMLElement;
  private plain = "";

  constructor(name: string) {
    this.name = h("dt", {}, name);
    const button = h("button", { type: "button", class: "copy", "aria-label": `Copy ${name}`, title: "Copy" }, icon("copy"));
    button.addEventListener("click", () => void copy(this.plain, name));
    this.element = h("div", { class: "row" }, this.name, h("dd", {}, this.value, button));
  }

  set(text: string, plain = text, name?: string): void {
    this.value.textContent = text || none;
    this.plain = plain;
    if (name) this.name.textContent = name;
    this.element.classList.toggle("empty", text === "" || text === none);
  }
}

/** Two coordinates, one below the other. */
const pair = (a: string, b: string) => `${a}\n${b}`;

export class PointPage implements Page {
  readonly element: HTMLElement;
  private readonly lon: NumberField;
  private readonly lat: NumberField;
  private readonly form: SegmentField;
  private readonly computed: SegmentField;
  private readonly rows = {
    degrees: new Row("Degrees"), dms: new Row("DMS"), xy: new Row("x, y"), utm: new Row("UTM"), mgrs: new Row("MGRS"),
    spcs83: new Row("State plane 1983"), spcs27: new Row("State plane 1927"),
  };
  private readonly accuracy: HTMLElement;
  private readonly from: ChoiceField;
  private readonly to: ChoiceField;
  private readonly swap: HTMLButtonElement;
  private readonly command = h("code", { class: "command", tabindex: 0 });
  private readonly datumCommand: HTMLElement;
  private readonly shifted = { place: new Row("Position"), shift: new Row("Shift"), stated: new Row("Stated \u2212 exact") };
  private readonly datumNote = h("p", { class: "note", role: "status" });
  private readonly grids: GridFiles;
  private readonly hint = h("p", { class: "hint" }, "Click on the map to take a point, or type one.");

  constructor(private readonly app: App) {
    const axis = (label: string, index: 0 | 1) =>
      new NumberField({ label, step: 0.1, parse: (text) => app.angles.parse(text, index === 0 ? "lon" : "lat"), format: (value) => this.coordinate(value, index), change: (value, done) => this.typed(index, value, done) });
    this.lon = axis("Longitude", 0);
    this.lat = axis("Latitude", 1);
    this.form = new SegmentField("Angles", [{ value: "degrees", text: "Degrees" }, { value: "dms", text: "D\u00b0 M\u2032 S\u2033" }], (value) => app.change({ angles: value as AngleForm }));
    const ways = [{ value: "exact", text: "Exactly" }, { value: "stated", text: "As stated" }];
    this.computed = new SegmentField("Compute this page", ways, (value) => app.change({ stated: value === "stated" }));
    const datums = app.engine.orvex.datums.map((datum) => ({ value: datum.name, text: datum.name }));
    this.from = new ChoiceField("From datum", datums, (from) => app.change({ from }));
    this.to = new ChoiceField("To datum", app.engine.orvex.datums.filter((datum) => datum.reversible).map((datum) => ({ value: datum.name, text: datum.name })), (to) => app.change({ to }));
    this.swap = h("button", { type: "button", class: "plain", onclick: () => app.change({ from: app.state.to, to: app.state.from }) }, "Exchange");
    this.datumCommand = h("div", { class: "line" }, this.command,
      h("button", { type: "button", class: "copy", "aria-label": "Copy the command of the shift", title: "Copy the command", onclick: () => void copy(this.command.textContent ?? "", "Command") }, icon("copy")));
    this.grids = new GridFiles(app);
    this.accuracy = h("table", { class: "accuracy" });
    this.element = h("div", { class: "page" },
      this.hint,
      h("div", { class: "pairs" }, this.lon.element, this.lat.element),
      this.form.element,
      h("dl", { class: "results" }, ...Object.values(this.rows).map((row) => row.element)),
      h("h3", {}, "Stated and exact"), this.accuracy, this.computed.element,
      h("div", { class: "heading" }, h("h3", {}, "On another datum"), this.swap),
      this.from.element, this.to.element,
      h("dl", { class: "results" }, ...Object.values(this.shifted).map((row) => row.element)), this.datumNote, this.grids.element, this.datumCommand);
  }

  update(): void {
    const { state } = this.app;
    this.form.set(state.angles);
    this.computed.set(state.stated ? "stated" : "exact");
    this.from.set(state.from);
    this.to.set(state.to);
    this.grids.show([state.from, state.to]);
    this.swap.disabled = !this.app.engine.known.datum(state.from, true);
    this.datumCommand.hidden = state.from === state.to || !state.point;
    this.command.textContent = datumCommand(state);
    this.hint.hidden = Boolean(state.point);
    const point = state.point;
    this.lon.set(point?.[0] ?? NaN);
    this.lat.set(point?.[1] ?? NaN);
    this.showRows(point);
    this.showAccuracy(point);
    this.showShift(point);
  }

  private coordinate(value: number, index: 0 | 1): string {
    if (!Number.isFinite(value)) return "";
    return this.app.state.angles === "dms" ? this.app.angles.dms(value, index === 0 ? "lon" : "lat", 4) : String(Number(value.toFixed(DEGREES)));
  }

  private typed(index: 0 | 1, value: number, done: boolean): void {
    const field = index === 0 ? this.lon : this.lat;
    if (index === 1 && Math.abs(value) > 90) {
      field.setError(beyondPole);
      return;
    }
    const point = this.app.state.point ?? this.app.map.middle ?? [0, 0];
    this.app.setPoint(index === 0 ? [wrapped(value), point[1]] : [point[0], value], done);
  }

  private showRows(point: Place | undefined): void {
    const { rows, app } = this;
    if (!point) {
      for (const row of Object.values(rows)) row.set("");
      return;
    }
    const { orvex } = app.engine;
    const [lon, lat] = point;
    rows.degrees.set(pair(lon.toFixed(DEGREES), lat.toFixed(DEGREES)), `${lon.toFixed(DEGREES)} ${lat.toFixed(DEGREES)}`);
    const dms = [app.angles.dms(lon, "lon", 4), app.angles.dms(lat, "lat", 4)] as const;
    rows.dms.set(pair(...dms), dms.join(" "));
    this.inProjection(rows.xy, point);
    const zone = orvex.utmZone(lon, lat);
    this.plane(rows.utm, point, zone.zone > 60 ? "UPS" : "UTM", zone.label, () => orvex.utmAt(zone, { accuracy: app.accuracy }));
    const mgrs = orvex.mgrs(lon, lat);
    rows.mgrs.set(mgrs.replace(/^(\d*[A-Z])([A-Z]{2})(\d{5})(\d{5})$/, "$1 $2 $3 $4"), mgrs);
    for (const [row, year] of [[rows.spcs83, 1983], [rows.spcs27, 1927]] as const) {
      const choice = orvex.stateZone(lon, lat, year);
      if (choice.zone === null) row.set(choice.label, choice.label);
      else this.plane(row, point, "", choice.label, () => orvex.statePlane(choice.zone!, year, { accuracy: app.accuracy }));
    }
  }

  private inProjection(row: Row, point: Place): void {
    const { engine, state } = this.app;
    const drawable = engine.info(state.slug).drawable;
    this.plane(row, point, "", "", () => engine.make(state, this.app.accuracy), drawable ? LENGTHS : DEGREES);
  }

  private plane(row: Row, [lon, lat]: Place, system: string, zone: string, make: () => Projection, decimals = LENGTHS): void {
    try {
      const projection = make();
      const [x, y] = projection.forward(lon, lat);
      projection.dispose();
      const known = Number.isFinite(x);
      const name = [system, zone].filter(Boolean).join(" ");
      const numbers = known ? pair(grouped(x, decimals), grouped(y, decimals)) : none;
      row.set(name && !system ? `${zone}\n${numbers}` : numbers, known ? `${x.toFixed(decimals)} ${y.toFixed(decimals)}` : "", system ? name : undefined);
    } catch {
      row.set("");
    }
  }

  /** Both ways to compute side by side, with their difference in millimetres. */
  private showAccuracy(point: Place | undefined): void {
    const { engine, state } = this.app;
    const head = h("thead", {}, h("tr", {}, h("td"), ...["Stated", "Exact", "Difference"].map((text) => h("th", { scope: "col" }, text))));
    const results = point && (["stated", "exact"] as const).map((accuracy) => {
      try {
        const projection = engine.make(state, accuracy);
        const there = projection.forward(...(point as [number, number]));
        const back = projection.inverse(...there);
        projection.dispose();
        return { there, back };
      } catch {
        return { there: [NaN, NaN], back: [NaN, NaN] };
      }
    });
    const drawable = engine.info(state.slug).drawable;
    const line = (name: string, stated: number, exact: number, decimals: number, unit: number) =>
      h("tr", {}, h("th", { scope: "row" }, name), h("td", {}, grouped(stated, decimals)), h("td", {}, grouped(exact, decimals)),
        h("td", { class: "difference" }, results ? millimetres((stated - exact) * unit) : none));
    const degree = (Math.PI / 180) * MEAN_RADIUS;
    const narrow = Math.cos(((point?.[1] ?? 0) * Math.PI) / 180);
    const [stated, exact] = results ?? [];
    const value = (which: "there" | "back", i: 0 | 1) => [stated?.[which][i] ?? NaN, exact?.[which][i] ?? NaN] as const;
    const plane = drawable ? 3 : BACK;
    this.accuracy.replaceChildren(
      h("caption", { class: "unseen" }, "Coordinates on the map and back again, computed in both ways"), head,
      h("tbody", {},
        line("x", ...value("there", 0), plane, drawable ? 1 : degree * narrow), line("y", ...value("there", 1), plane, drawable ? 1 : degree),
        line("lon", ...value("back", 0), BACK, degree * narrow), line("lat", ...value("back", 1), BACK, degree)));
  }

  private showShift(point: Place | undefined): void {
    const { app, shifted } = this;
    const { state } = app;
    for (const row of Object.values(shifted)) row.set("");
    app.map.scene.shift = undefined;
    app.map.redraw();
    this.datumNote.textContent = "";
    if (!point) return;
    try {
      const exact = this.shift(point, "exact");
      const stated = this.shift(point, "stated");
      const shown = state.stated ? stated : exact;
      if (!shown.every(Number.isFinite)) throw new Error("This point has no position on the other datum.");
      const away = metres(point, shown);
      app.map.scene.shift = { east: away[0], north: away[1] };
      shifted.place.set(pair(app.angles.axis(shown[0], "lon", DEGREES), app.angles.axis(shown[1], "lat", DEGREES)), shown.map((degrees) => degrees.toFixed(DEGREES)).join(" "));
      shifted.shift.set(`${grouped(Math.hypot(...away), 3)} m   ${compass(away)}`, Math.hypot(...away).toFixed(4));
      const apart = metres(exact, stated);
      shifted.stated.set(millimetres(Math.hypot(...apart)));
    } catch (error) {
      this.datumNote.textContent = messageOf(error);
    }
  }

  private shift(point: Place, accuracy: "exact" | "stated"): [number, number] {
    const shift = this.app.engine.orvex.shift(this.app.state.from, this.app.state.to, { accuracy });
    try {
      return shift.forward(point[0], point[1]);
    } finally {
      shift.dispose();
    }
  }
}


/** From one place to another near it, metres east and north. */
function metres(from: readonly [number, number], to: readonly [number, number]): [number, number] {
  const degree = (Math.PI / 180) * MEAN_RADIUS;
  return [wrapped(to[0] - from[0]) * degree * Math.cos((from[1] * Math.PI) / 180), (to[1] - from[1]) * degree];
}

function compass([east, north]: readonly [number, number]): string {
  const points = ["N", "NE", "E", "SE", "S", "SW", "W", "NW"];
  return Math.hypot(east, north) < 1e-9 ? "" : points[Math.round(((Math.atan2(east, north) * 180) / Math.PI + 360) / 45) % 8]!;
}

/** A difference in metres as millimetres. */
function millimetres(metresApart: number): string {
  if (!Number.isFinite(metresApart)) return none;
  const mm = metresApart * 1000;
  if (Math.abs(mm) < 5e-4) return `0${thin}mm`;
  return `${grouped(mm, Math.abs(mm) < 10 ? 3 : 0)}${thin}mm`;
}
