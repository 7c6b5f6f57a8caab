// A second map beside the first, tied to it by the pointer and by circles of one size on the globe.
import { entries, entryOf, type Values } from "./catalogue";
import type { App, Page } from "./app";
import { h } from "./dom";
import { ChoiceField } from "./fields";
import { messageOf } from "./format";
import { MapView } from "./mapview";
import { shapesOf, type Shapes } from "./outlines";
import type { Place } from "./state";

const SIDES = 96;

/** A circle on the globe, an arc in degrees about a place, as a closed ring. */
export function circleAbout([lon, lat]: Place, arc: number): Shapes {
  const radians = Math.PI / 180;
  const [sinLat, cosLat] = [Math.sin(lat * radians), Math.cos(lat * radians)];
  const [sinArc, cosArc] = [Math.sin(arc * radians), Math.cos(arc * radians)];
  const ring: [number, number][] = [];
  for (let side = 0; side <= SIDES; ++side) {
    const azimuth = ((side % SIDES) / SIDES) * 2 * Math.PI;
    const sine = sinLat * cosArc + cosLat * sinArc * Math.cos(azimuth);
    const east = Math.atan2(Math.sin(azimuth) * sinArc * cosLat, cosArc - sinLat * sine);
    ring.push([lon + east / radians, Math.asin(Math.min(Math.max(sine, -1), 1)) / radians]);
  }
  return shapesOf([ring]);
}

export class ComparePage implements Page {
  readonly element: HTMLElement;
  private readonly choice: ChoiceField;
  private readonly note = h("p", { class: "note", role: "status" });
  private readonly numbers = h("table", { class: "accuracy" });
  private readonly title = h("p", { class: "sentence" });
  private map?: MapView;
  private shown = "";

  constructor(private readonly app: App, private readonly place: HTMLElement) {
    const options = [{ value: "", text: "No second map" }, ...entries.map((entry) => ({ value: entry.slug, text: entry.name }))];
    this.choice = new ChoiceField("Second map", options, (value) => app.change({ beside: value || undefined, besideValues: {} }));
    const swap = h("button", { type: "button", class: "plain", onclick: () => this.exchange() }, "Exchange the maps");
    this.element = h("div", { class: "page" }, this.choice.element, swap,
      h("p", { class: "hint" }, "The pointer carries a circle of one size on the globe over both maps: what is kept, stays."),
      this.numbers, this.note);
  }

  update(): void {
    const { state } = this.app;
    this.choice.set(state.beside ?? "");
    const key = JSON.stringify([state.beside, state.besideValues, state.stated]);
    if (state.beside && this.map && key === this.shown) this.dress();
    else if (state.beside) this.open(key);
    else this.close();
    this.showNumbers(state.point);
  }

  /** Both maps show the circle, wherever the pointer is. */
  pointed(place: Place | undefined): void {
    if (!this.map) return;
    const wide = Math.min(this.degrees(this.app.map), this.degrees(this.map));
    const circle = place && circleAbout(place, Math.min(Math.max(wide * 0.06, 1e-4), 15));
    for (const map of [this.app.map, this.map]) {
      map.scene.circle = circle;
      map.redraw();
    }
    this.showNumbers(place ?? this.app.state.point);
  }

  /** Moves the second map to where an address has it. */
  restore(): void {
    this.map?.goTo(this.app.state.besideStand);
  }

  get second(): MapView | undefined {
    return this.map;
  }

  private degrees(map: MapView): number {
    return Math.min((map.current?.degreesInPixel(map.viewNow) ?? 0.3) * map.sizeNow.width, 360);
  }

  private open(key: string): void {
    const { app } = this;
    const { state } = app;
    this.shown = key;
    if (!this.map) {
      this.map = new MapView(app.engine, {
        turned: (values, done) => this.turned(values, done),
        moved: (done) => app.moved(done),
        pointed: (place) => this.pointed(place),
        picked: (place) => app.setPoint(place, true),
      }, (choice, piece) => app.helper.ask({ do: "fine", choice, piece }), "Second map");
      this.map.handle.remove();  // the point is moved on the first map
      this.map.element.append(this.title);
      this.place.append(this.map.element);
      this.place.classList.add("two");
    }
    this.title.replaceChildren(h("strong", {}, entryOf(state.beside!)!.name));
    this.dress();
    this.note.textContent = "";
    try {
      this.map.show({ slug: state.beside!, values: state.besideValues }, app.accuracy, this.map.current ? "keep" : state.besideStand);
    } catch (error) {
      this.note.textContent = messageOf(error);
    }
  }

  private turned(values: Values, done: boolean): void {
    const { state } = this.app;
    this.shown = JSON.stringify([state.beside, values, state.stated]);
    this.app.change({ besideValues: values }, done);
  }

  private dress(): void {
    const { scene } = this.app.map;
    Object.assign(this.map!.scene, { ...scene, circle: this.map!.scene.circle, underlay: undefined, marks: undefined });
    this.map!.redraw();
  }

  private close(): void {
    if (!this.map) return;
    this.map.dispose();
    this.map = undefined;
    this.shown = "";
    this.app.map.scene.circle = undefined;
    this.app.map.redraw();
    this.place.classList.remove("two");
  }

  private exchange(): void {
    const { state } = this.app;
    if (state.beside) this.app.change({ slug: state.beside, values: state.besideValues, beside: state.slug, besideValues: state.values });
  }

  private showNumbers(place: Place | undefined): void {
    if (!this.map) {
      this.numbers.replaceChildren();
      return;
    }
    const maps = [this.app.map, this.map];
    const at = maps.map((map) => place && map.current?.projection.distortion([place[0]], [place[1]]));
    const name = (map: MapView) => entryOf(map.choice?.slug ?? "")?.name ?? "";
    const row = (title: string, values: readonly (number | undefined)[], unit: string) =>
      h("tr", {}, h("th", { scope: "row" }, title), ...values.map((value) => h("td", {}, value === undefined || !Number.isFinite(value) ? "\u2013" : `${value.toFixed(4)}${unit}`)));
    this.numbers.replaceChildren(
      h("thead", {}, h("tr", {}, h("td"), ...maps.map((map) => h("th", { scope: "col" }, name(map))))),
      h("tbody", {}, row("Largest scale", at.map((it) => it?.most[0]), ""), row("Area scale", at.map((it) => it?.area[0]), ""), row("Change of angles", at.map((it) => it?.omega[0]), "\u00b0")));
  }
}
