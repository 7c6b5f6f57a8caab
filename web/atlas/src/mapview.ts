// A map on the page: a canvas that can be dragged, zoomed and walked over by keys, with what is drawn on it.
import type { Accuracy, Paths } from "orvex";

import { entryOf, type Entry, type Values } from "./catalogue";
import { Chart, type Piece } from "./chart";
import type { Picture } from "./command";
import { afterQuiet, eachFrame, h } from "./dom";
import type { Choice, Engine } from "./engine";
import { messageOf } from "./format";
import { drawScene, graticuleStep, tissotStep, type Scene } from "./scene";
import type { Place, Stand } from "./state";
import { CanvasSurface, SvgSurface } from "./surface";
import { theme } from "./theme";
import { Turner } from "./turn";
import { atShare, keepWithin, leastZoom, mostZoom, pan, put, shareOf, toMap, zoomAbout, type Margins, type Size, type Spot, type View } from "./view";

export interface MapEvents {
  /** A drag or a key has turned the projection; `done` when it ends. */
  turned(values: Values, done: boolean): void;
  /** The view has moved. */
  moved(done: boolean): void;
  /** The pointer is over a place, or over none. */
  pointed(place: Place | undefined): void;
  picked(place: Place): void;
}

/** Asks for the land at 1:50m, made elsewhere. */
export type FineLand = (choice: Choice, piece: Piece) => Promise<Paths & { lines: Paths }>;

const MARGINS: Margins = [46, 34];  // pixels about a whole map, room for labels
const CLICK = 4;              // pixels that a click may move
const DOUBLE = 280;           // milliseconds in which a second click makes a double one, which only zooms
const QUIET = 140;            // milliseconds without movement until the fine picture
const TURN_BELOW = 4;         // zoom up to which a drag turns maps other than the azimuthal ones
const KEY_STEP = 48;          // pixels

export class MapView {
  readonly element: HTMLElement;
  readonly canvas: HTMLCanvasElement;
  readonly controls: HTMLElement;
  readonly handle: HTMLButtonElement;
  scene: Scene = { labels: true, tissot: false, shading: "none" };
  /** Milliseconds that the last pictures took. */
  readonly frames: number[] = [];

  private readonly veil = h("p", { class: "veil", hidden: true, role: "status" });
  private size: Size = { width: 300, height: 200 };
  private chart?: Chart;
  private view: View = { x: 0, y: 0, scale: 1 };
  private moving = false;
  private accuracy: Accuracy = "exact";
  private fineAsked = 0;
  private readonly pointers = new Map<number, Spot>();
  readonly redraw = eachFrame(() => this.paint());
  private readonly settle = afterQuiet(QUIET, () => this.settled());

  constructor(private readonly engine: Engine, private readonly events: MapEvents, private readonly fineLand: FineLand, name: string) {
    this.canvas = h("canvas", { "aria-hidden": "true" });
    this.controls = h("div", {
      class: "surface", tabindex: 0, role: "application", "aria-label": `${name}: arrow keys turn or move it, plus and minus zoom, 0 shows it whole, Enter takes the place in the middle`,
    }, this.canvas);
    this.handle = h("button", { type: "button", class: "handle", hidden: true });
    this.element = h("section", { class: "map", "aria-label": name }, this.controls, this.handle, this.veil);
    this.listen();
    new ResizeObserver(() => this.resize()).observe(this.controls);
  }

  get choice(): Choice | undefined {
    return this.chart?.choice;
  }

  shows(choice: Choice, accuracy: Accuracy): boolean {
    return accuracy === this.accuracy && JSON.stringify(choice) === JSON.stringify(this.choice);
  }

  get current(): Chart | undefined {
    return this.chart;
  }

  get viewNow(): View {
    return this.view;
  }

  get sizeNow(): Size {
    return this.size;
  }

  /** Shows a projection; throws what the library says and leaves the map as it was, veiled. */
  show(choice: Choice, accuracy: Accuracy, where: Stand | "stay" | "keep"): void {
    let chart: Chart;
    try {
      chart = new Chart(this.engine, choice, accuracy, this.size);
    } catch (error) {
      this.setVeil(messageOf(error));
      throw error;
    }
    this.setVeil("");
    const before = this.chart;
    this.accuracy = accuracy;
    this.chart = chart;
    if (where === "keep" && before) this.keepPlace(before, chart);
    else if (where !== "stay" && where !== "keep") this.goTo(where);
    before?.dispose();
    this.settle();
    this.redraw();
  }

  setVeil(text: string): void {
    this.veil.hidden = text === "";
    this.veil.textContent = text;
    this.element.classList.toggle("veiled", text !== "");
  }

  get zoom(): number {
    return this.chart ? this.view.scale / this.chart.fitted(this.size, MARGINS).scale : 1;
  }

  private get isWhole(): boolean {
    if (!this.chart) return true;
    const whole = this.chart.fitted(this.size, MARGINS);
    const off = Math.hypot(whole.x - this.view.x, whole.y - this.view.y) * this.view.scale;
    return off < 1 && Math.abs(this.zoom - 1) < 1e-3;
  }

  get stand(): Stand {
    if (!this.chart || this.isWhole) return { at: undefined, mid: undefined, zoom: 1 };
    const at = this.middle;
    return { at, mid: at ? undefined : shareOf(this.chart.box, this.view.x, this.view.y), zoom: this.zoom };
  }

  get middle(): Place | undefined {
    return this.chart?.place(this.view, this.size, this.size.width / 2, this.size.height / 2);
  }

  goTo({ at, mid, zoom }: Stand): void {
    if (!this.chart) return;
    const whole = this.chart.fitted(this.size, MARGINS);
    this.view = { ...whole, scale: whole.scale * Math.min(Math.max(zoom, leastZoom), mostZoom) };
    const spot = at && this.chart.spot(this.view, this.size, at);
    if (spot) this.centre(toMap(this.view, this.size, ...spot));
    else if (mid) this.centre(atShare(this.chart.box, mid));
    this.settle();
    this.redraw();
  }

  /** Zooms by a factor about a pixel, or about the middle. */
  zoomBy(factor: number, [px, py]: Spot = [this.size.width / 2, this.size.height / 2]): void {
    if (!this.chart) return;
    const bounded = Math.min(Math.max(this.zoom * factor, leastZoom), mostZoom) / this.zoom;
    this.view = keepWithin(zoomAbout(this.view, this.size, px, py, bounded), this.chart.box);
    this.hasMoved();
  }

  /** Turns the projection or moves the picture, as a drag between two pixels does. */
  drag(from: Spot, to: Spot, swap: boolean): void {
    const chart = this.chart;
    const entry = chart && entryOf(chart.choice.slug);
    if (!chart || !entry) return;
    const turner = new Turner(this.engine, chart.choice, entry.turn, chart.degreesInPixel(this.view));
    if (!turner.turns || this.turnsByDrag(entry) === swap) {
      this.view = keepWithin(pan(this.view, to[0] - from[0], to[1] - from[1]), chart.box);
      this.hasMoved();
      return;
    }
    const values = turner.follow(chart.projection, this.view, this.size, from, to);
    const place = chart.projection.inverse(...toMap(this.view, this.size, ...from));
    try {
      this.show({ slug: entry.slug, values }, this.accuracy, "stay");
    } catch {
      this.setVeil("");
      return;  // a centre that the library refuses: the map waits for the pointer to move on
    }
    if (this.zoom > 1.001) this.follow(place, to, entry);
    this.moving = true;
    this.events.turned(values, false);
  }

  pointAt(place: Place | undefined): Spot | undefined {
    return place && this.chart?.spot(this.view, this.size, place);
  }

  placeAt(px: number, py: number): Place | undefined {
    return this.chart?.place(this.view, this.size, px, py);
  }

  /** What the picture shows, in degrees. */
  get picture(): Picture {
    const { chart, view, size } = this;
    if (!chart) return { graticule: 0, tissot: 0 };
    return {
      bounds: !this.isWhole && this.zoom > 1 ? chart.inSight(view, size) : undefined,
      graticule: graticuleStep(chart, view, size.width, this.scene.graticule), tissot: tissotStep(chart, view, size.width),
    };
  }

  toSvg(title: string, description: string): string {
    const surface = new SvgSurface(this.size, this.view);
    this.drawOn(surface);
    return surface.finish(title, description);
  }

  toPng(): Promise<Blob> {
    const [canvas, context] = this.blank(2);
    this.drawOn(new CanvasSurface(context, this.size, this.view));
    return new Promise((resolve, reject) =>
      canvas.toBlob((blob) => (blob ? resolve(blob) : reject(new Error("the browser could not make the picture"))), "image/png"),
    );
  }

  dispose(): void {
    this.chart?.dispose();
    this.chart = undefined;
    this.element.remove();
  }

  /** Gives the point the keys. */
  focusPoint(): void {
    this.placeHandle();
    this.handle.focus({ preventScroll: true });
  }

  private blank(density: number): [HTMLCanvasElement, CanvasRenderingContext2D] {
    const canvas = document.createElement("canvas");
    canvas.width = Math.round(this.size.width * density);
    canvas.height = Math.round(this.size.height * density);
    const context = canvas.getContext("2d")!;
    context.scale(density, density);
    return [canvas, context];
  }

  private drawOn(surface: CanvasSurface | SvgSurface): void {
    const colors = theme();
    surface.rectangle({ color: colors.paper });
    if (this.chart) drawScene(surface, this.chart, this.view, this.scene, colors, false);
  }

  private turnsByDrag(entry: Entry): boolean {
    return this.zoom < TURN_BELOW || entry.turn === "lat0" || entry.turn === "lat1";
  }

  /** Up and down, where turning does not bring a place under the pointer, the picture moves. */
  private follow(place: readonly [number, number], to: Spot, entry: Entry): void {
    if (entry.turn === "lat0" || entry.turn === "lat1" || !place.every(Number.isFinite)) return;
    const [x, y] = this.chart!.projection.forward(place[0], place[1]);
    if (!Number.isFinite(x)) return;
    const moved = put(this.view, this.size, x, y, ...to);
    this.view = keepWithin({ ...moved, x: this.view.x }, this.chart!.box);
  }

  private centre([x, y]: Spot): void {
    this.view = { ...this.view, x, y };
  }

  /** After a change of projection: the same place in the middle at the same size, or the whole map. */
  private keepPlace(before: Chart, chart: Chart): void {
    const place = before.place(this.view, this.size, this.size.width / 2, this.size.height / 2);
    const wasZoomed = this.view.scale / before.fitted(this.size, MARGINS).scale > 1.05;
    const whole = chart.fitted(this.size, MARGINS);
    const scale = (this.view.scale * before.degree) / chart.degree;
    this.view = whole;
    if (!wasZoomed || !place || scale < whole.scale) return;
    const spot = chart.spot(whole, this.size, place);
    if (!spot) return;
    this.centre(toMap(whole, this.size, ...spot));
    this.view = { ...this.view, scale: Math.min(scale, whole.scale * mostZoom) };
  }

  private hasMoved(): void {
    this.moving = true;
    this.events.moved(false);
    this.settle();
    this.redraw();
  }

  private settled(): void {
    if (this.moving) {
      this.moving = false;
      if (this.pointers.size === 0) this.events.moved(true);  // a drag that pauses goes on
    }
    this.redraw();
    void this.askFine();
  }

  private async askFine(): Promise<void> {
    const chart = this.chart;
    if (!chart) return;
    chart.suit(this.view, this.size);
    chart.dropFineUnless(this.view);
    if (!chart.wantsFine(this.view)) return;
    const asked = ++this.fineAsked;
    const piece = chart.drawn;
    try {
      const land = await this.fineLand(chart.choice, piece);
      if (asked !== this.fineAsked || chart !== this.chart) return;
      chart.setFine({ ...land, piece });
      this.redraw();
    } catch {
      // The coarse coasts stay.
    }
  }

  private paint(): void {
    const chart = this.chart;
    const context = this.canvas.getContext("2d");
    if (!chart || !context) return;
    const started = performance.now();
    const density = this.canvas.width / this.size.width;
    context.setTransform(density, 0, 0, density, 0, 0);
    context.clearRect(0, 0, this.size.width, this.size.height);
    chart.suit(this.view, this.size);
    drawScene(new CanvasSurface(context, this.size, this.view), chart, this.view, this.scene, theme(), this.moving);
    this.placeHandle();
    this.frames.push(performance.now() - started);
    if (this.frames.length > 240) this.frames.splice(0, 120);
  }

  private placeHandle(): void {
    const spot = this.pointAt(this.scene.point);
    const seen = spot && spot[0] > 0 && spot[1] > 0 && spot[0] < this.size.width && spot[1] < this.size.height;
    this.handle.hidden = !seen;
    if (seen) this.handle.style.transform = `translate(${spot[0]}px, ${spot[1]}px)`;
  }

  private resize(): void {
    const box = this.controls.getBoundingClientRect();
    if (box.width < 10 || box.height < 10) return;
    const { stand } = this;
    this.size = { width: Math.round(box.width), height: Math.round(box.height) };
    const density = Math.min(window.devicePixelRatio || 1, 2);
    this.canvas.width = Math.round(this.size.width * density);
    this.canvas.height = Math.round(this.size.height * density);
    if (this.chart) {
      this.goTo(stand);
      this.paint();
    }
  }

  // Pointers and keys.

  private spotOf(event: MouseEvent): Spot {
    const box = this.controls.getBoundingClientRect();
    return [event.clientX - box.left, event.clientY - box.top];
  }

  private listen(): void {
    const target = this.controls;
    const { pointers } = this;
    let start: Spot = [0, 0];
    let dragged = false;
    let last = { time: -Infinity, spot: start };
    let queued: { from: Spot; to: Spot; swap: boolean } | undefined;
    const follow = () => {
      const step = queued;
      queued = undefined;
      if (step) this.drag(step.from, step.to, step.swap);
    };
    const followSoon = eachFrame(follow);
    target.addEventListener("pointerdown", (event) => {
      if (event.button !== 0) return;
      target.setPointerCapture(event.pointerId);
      pointers.set(event.pointerId, this.spotOf(event));
      if (pointers.size === 1) {
        start = this.spotOf(event);
        dragged = false;
      }
    });
    target.addEventListener("pointermove", (event) => {
      const to = this.spotOf(event);
      const from = pointers.get(event.pointerId);
      if (!from) {
        this.events.pointed(this.placeAt(...to));
        return;
      }
      if (pointers.size === 2) {
        this.pinch(event.pointerId, to);
        dragged = true;
      } else if (dragged || Math.hypot(to[0] - start[0], to[1] - start[1]) > CLICK) {
        const origin = dragged ? from : start;
        dragged = true;
        target.classList.add("dragging");
        queued = { from: queued?.from ?? origin, to, swap: event.shiftKey };
        followSoon();
      } else {
        return;
      }
      pointers.set(event.pointerId, to);
      this.events.pointed(this.placeAt(...to));
    });
    const end = (event: PointerEvent) => {
      if (!pointers.delete(event.pointerId) || pointers.size > 0) return;
      target.classList.remove("dragging");
      if (dragged) {
        follow();
        this.settle();
        const choice = this.choice;
        if (choice) this.events.turned(choice.values, true);
      } else if (event.type === "pointerup") {
        const spot = this.spotOf(event);
        const second = event.timeStamp - last.time < DOUBLE && Math.hypot(spot[0] - last.spot[0], spot[1] - last.spot[1]) < 2 * CLICK;
        last = { time: event.timeStamp, spot };
        const place = second ? undefined : this.placeAt(...spot);
        if (place) this.events.picked(place);
      }
    };
    target.addEventListener("pointerup", end);
    target.addEventListener("pointercancel", end);
    target.addEventListener("pointerleave", () => this.events.pointed(undefined));
    target.addEventListener("wheel", (event) => {
      event.preventDefault();
      const lines = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 30 : 1;
      this.zoomBy(Math.exp(Math.min(Math.max(-event.deltaY * lines * 0.0016, -0.7), 0.7)), this.spotOf(event));
    }, { passive: false });
    target.addEventListener("dblclick", (event) => this.zoomBy(2, this.spotOf(event)));
    target.addEventListener("keydown", (event) => this.key(event));
  }

  private pinch(id: number, to: Spot): void {
    const other = [...this.pointers].find(([key]) => key !== id)?.[1];
    const from = this.pointers.get(id);
    if (!other || !from) return;
    const distance = (a: Spot) => Math.hypot(a[0] - other[0], a[1] - other[1]) || 1;
    const middle: Spot = [(to[0] + other[0]) / 2, (to[1] + other[1]) / 2];
    this.view = pan(this.view, (to[0] - from[0]) / 2, (to[1] - from[1]) / 2);
    this.zoomBy(distance(to) / distance(from), middle);
  }

  private key(event: KeyboardEvent): void {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const middle: Spot = [this.size.width / 2, this.size.height / 2];
    const move = (dx: number, dy: number) => this.drag(middle, [middle[0] + dx, middle[1] + dy], event.shiftKey);
    const keys: Record<string, () => void> = {
      ArrowLeft: () => move(KEY_STEP, 0),
      ArrowRight: () => move(-KEY_STEP, 0),
      ArrowUp: () => move(0, KEY_STEP),
      ArrowDown: () => move(0, -KEY_STEP),
      "+": () => this.zoomBy(1.4),
      "=": () => this.zoomBy(1.4),
      "-": () => this.zoomBy(1 / 1.4),
      "0": () => {
        this.goTo({ zoom: 1 });
        this.events.moved(true);
      },
      Enter: () => {
        const place = this.middle;
        if (place) this.events.picked(place);
      },
    };
    const action = keys[event.key];
    if (!action) return;
    event.preventDefault();
    action();
  }
}
