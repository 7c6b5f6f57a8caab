// A picture of a map finds its place: control points on both, residuals of the fit, the warped picture under the coasts.
import type { Georef, GeorefControl, GeorefMethod } from "orvex";

import type { App, Page } from "./app";
import { acceptDrops, copy, h } from "./dom";
import { beyondPole, ChoiceField, NumberField, plainNumber } from "./fields";
import { grouped, messageOf, minus, none } from "./format";
import type { Place } from "./state";
import type { View } from "./view";
import { drawMesh, meshOf, type Mesh } from "./warp";

interface Control {
  px: number;
  py: number;
  place?: Place;
}

const MOST_PIXELS = 60e6;

export class GeorefPage implements Page {
  readonly element: HTMLElement;
  private readonly canvas = h("canvas", { class: "picture", "aria-hidden": "true" });
  private readonly file = h("input", { type: "file", accept: "image/*", class: "unseen", "aria-label": "Choose a picture" });
  private readonly status = h("p", { class: "note", role: "status" });
  private readonly work = h("div", { hidden: true });
  private readonly method: ChoiceField;
  private readonly list = h("ol", { class: "controls" });
  private readonly total = h("p", { class: "total" });
  private picture?: ImageBitmap;
  private controls: Control[] = [];
  private fit?: Georef;
  private mesh?: Mesh;
  private open = false;

  constructor(private readonly app: App) {
    const drop = h("div", { class: "drop" },
      h("p", {}, h("strong", {}, "Drop a picture of a map here"), ", or ", h("button", { type: "button", class: "link", onclick: () => this.file.click() }, "choose one"), "."),
      h("p", { class: "quiet" }, "Nothing leaves this machine: the picture stays in the page."));
    acceptDrops(drop, (files) => void this.take(files[0]!));
    this.file.addEventListener("change", () => {
      const file = this.file.files?.[0];
      if (file) void this.take(file);
      this.file.value = "";
    });
    const methods = app.engine.orvex.georefMethods.map((method) => ({ value: method.key, text: `${method.name} (${method.controls} or more)` }));
    this.method = new ChoiceField("Method", methods, () => this.refit());
    this.method.set("affine");
    this.canvas.addEventListener("click", (event) => this.clicked(event));
    const add = h("button", { type: "button", onclick: () => this.add({ px: 0, py: 0, place: [0, 0] }) }, "Add a point by numbers");
    const table = h("button", { type: "button", class: "plain", onclick: () => void copy(this.table(), "Control points") }, "Copy as table");
    this.work.append(
      h("p", { class: "hint" }, "Click a place in the picture, then the same place on the map."),
      h("div", { class: "frame" }, this.canvas), this.method.element, this.total, this.list, h("div", { class: "actions" }, add, table));
    this.element = h("div", { class: "page" }, drop, this.file, this.status, this.work);
  }

  opened(open: boolean): void {
    this.open = open;
    this.show();
    this.drawPicture();
  }

  update(): void {
    if (this.picture) this.refit();
  }

  /** The second half of a control point. */
  picked(place: Place): boolean {
    const waiting = this.controls.find((control) => !control.place);
    if (!this.open || !waiting) return false;
    waiting.place = place;
    this.refit();
    this.rebuild();
    return true;
  }

  private say(text: string, wrong = false): void {
    this.status.textContent = text;
    this.status.classList.toggle("wrong", wrong);
  }

  private async take(file: File): Promise<void> {
    try {
      const picture = await createImageBitmap(file);
      if (picture.width * picture.height > MOST_PIXELS) throw new Error("has more than 60 million pixels");
      this.picture = picture;
      this.controls = [];
      this.work.hidden = false;
      this.say(`${file.name}: ${picture.width} \u00d7 ${picture.height} pixels.`);
      this.rebuild();
      this.refit();
    } catch (error) {
      this.say(`${file.name} cannot be shown as a picture${error instanceof Error && error.message ? `: ${error.message}` : ""}`, true);
    }
  }

  private clicked(event: MouseEvent): void {
    if (!this.picture) return;
    const box = this.canvas.getBoundingClientRect();
    const px = ((event.clientX - box.left) / box.width) * this.picture.width;
    const py = ((event.clientY - box.top) / box.height) * this.picture.height;
    const waiting = this.controls.find((control) => !control.place);
    if (waiting) Object.assign(waiting, { px, py });
    else this.controls.push({ px, py });
    this.rebuild();
    this.say("Now click the same place on the map.");
  }

  private add(control: Control): void {
    this.controls.push(control);
    this.rebuild();
    this.refit();
  }

  /** Picture coordinates with y upwards, and where they lie on the map. */
  private pairs(): GeorefControl[] {
    const projection = this.app.map.current?.projection;
    if (!projection) return [];
    return this.complete().map(({ px, py, place }) => [px, -py, ...projection.forward(place![0], place![1])] as const);
  }

  private complete(): Control[] {
    return this.controls.filter((control) => control.place);
  }

  private refit(): void {
    this.fit?.dispose();
    this.fit = undefined;
    this.mesh = undefined;
    const pairs = this.pairs();
    const method = this.app.engine.orvex.georefMethods.find((it) => it.key === this.method.value)!;
    this.method.setError("");
    if (pairs.some((pair) => !pair.every(Number.isFinite))) this.method.setError("A control point lies where this map shows nothing");
    else if (pairs.length >= method.controls) this.compute(pairs, method.key);
    const missing = method.controls - pairs.length;
    this.total.textContent = this.sum(missing);
    this.showResiduals();
    this.show();
  }

  private sum(missing: number): string {
    if (this.fit) return `Root mean square ${grouped(this.fit.error, 1)} m on the map`;
    return missing > 0 ? `${missing} more control ${missing === 1 ? "point" : "points"} to go` : "";
  }

  private compute(pairs: GeorefControl[], key: GeorefMethod): void {
    try {
      const fit = this.app.engine.orvex.georef(pairs, key);
      this.fit = fit;
      this.mesh = meshOf(this.picture!.width, this.picture!.height, (coords) => fit.forward(coords));
    } catch (error) {
      this.method.setError(messageOf(error));
    }
  }

  private show(): void {
    const { scene } = this.app.map;
    scene.underlay = this.mesh && this.picture ? (view) => this.warped(view) : undefined;
    scene.marks = this.open ? this.complete().map((control) => control.place!) : undefined;
    this.app.map.redraw();
  }

  private warped(view: View): HTMLCanvasElement {
    const size = this.app.map.sizeNow;
    const canvas = h("canvas", { width: size.width, height: size.height });
    drawMesh(canvas.getContext("2d")!, this.picture!, this.mesh!, view, size);
    return canvas;
  }

  private drawPicture(): void {
    const { picture, canvas } = this;
    if (!picture) return;
    canvas.width = Math.min(picture.width, 1200);
    canvas.height = Math.round((canvas.width * picture.height) / picture.width);
    const context = canvas.getContext("2d")!;
    context.drawImage(picture, 0, 0, canvas.width, canvas.height);
    const scale = canvas.width / picture.width;
    const dot = Math.max(canvas.width / 90, 4);
    const accent = getComputedStyle(document.documentElement).getPropertyValue("--map-accent");
    this.controls.forEach((control, i) => {
      const [x, y] = [control.px * scale, control.py * scale];
      context.beginPath();
      context.arc(x, y, dot, 0, 2 * Math.PI);
      context.fillStyle = accent;
      context.fill();
      context.lineWidth = dot / 3;
      context.strokeStyle = "#fff";
      context.stroke();
      context.font = `600 ${3 * dot}px system-ui, sans-serif`;
      context.lineWidth = dot;
      context.strokeText(String(i + 1), x + 1.5 * dot, y - dot);
      context.fillText(String(i + 1), x + 1.5 * dot, y - dot);
    });
  }

  private rebuild(): void {
    this.list.replaceChildren(...this.controls.map((control, i) => this.item(control, i)));
    this.showResiduals();
    this.show();
    this.drawPicture();
  }

  private item(control: Control, index: number): HTMLElement {
    const number = (label: string, value: number | undefined, step: number, parse: (text: string) => number, set: (value: number) => void) => {
      const field = new NumberField({ label, step, parse, format: (it) => (Number.isFinite(it) ? String(Number(it.toFixed(6))) : ""), change: (it) => {
        set(it);
        this.refit();
        this.drawPicture();
      } });
      field.set(value ?? NaN);
      return field.element;
    };
    const longitude = (text: string) => this.app.angles.parse(text, "lon");
    const latitude = (text: string) => {
      const lat = this.app.angles.parse(text, "lat");
      if (Math.abs(lat) > 90) throw new Error(beyondPole);
      return lat;
    };
    /** Margins may be cut off a picture, but what lies further off than it is large is a slip. */
    const pixel = (side: number) => (text: string) => {
      const value = plainNumber(text);
      if (!(value >= -side && value <= 2 * side)) throw new Error(`A pixel of this picture lies between ${minus}${side} and ${2 * side}`);
      return value;
    };
    const { width, height } = this.picture!;
    const remove = h("button", { type: "button", class: "plain", "aria-label": `Remove control point ${index + 1}`, onclick: () => {
      this.controls.splice(index, 1);
      this.rebuild();
      this.refit();
    } }, "Remove");
    return h("li", {}, h("div", { class: "heading" }, h("strong", {}, `Point ${index + 1}`), h("output", { class: "residual" }), remove),
      h("div", { class: "four" },
        number("Pixel x", control.px, 1, pixel(width), (px) => (control.px = px)), number("Pixel y", control.py, 1, pixel(height), (py) => (control.py = py)),
        number("Longitude", control.place?.[0], 0.1, longitude, (lon) => (control.place = [lon, control.place?.[1] ?? 0])),
        number("Latitude", control.place?.[1], 0.1, latitude, (lat) => (control.place = [control.place?.[0] ?? 0, lat]))));
  }

  private showResiduals(): void {
    let at = 0;
    this.controls.forEach((control, i) => {
      const output = this.list.children[i]?.querySelector("output");
      const residual = control.place ? this.fit?.residuals[at++] : undefined;
      if (output) output.textContent = residual === undefined ? (control.place ? none : "waits for the map") : `off by ${grouped(residual, 1)} m`;
    });
  }

  /** The control points as `orvex georef --controls` reads them. */
  private table(): string {
    return ["x,y,X,Y", ...this.pairs().map((pair) => pair.join(","))].join("\n") + "\n";
  }
}
