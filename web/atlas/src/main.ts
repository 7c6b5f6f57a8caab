// The page: makes its parts, keeps its state in the address and leads what happens to where it matters.
import { OrvexError, type Accuracy } from "orvex";

import type { App, Page } from "./app";
import { entryOf, type Value, type Values } from "./catalogue";
import { mapCommand } from "./command";
import { ComparePage } from "./comparepage";
import { DistortionPage } from "./distortionpage";
import { afterQuiet, announce, byId, copy, h, save } from "./dom";
import { Engine } from "./engine";
import { Foot } from "./foot";
import { AngleText, messageOf } from "./format";
import { GeorefPage } from "./georefpage";
import { Helper } from "./helper";
import { icon, type IconName } from "./icons";
import { ProjectionList } from "./list";
import { MapView } from "./mapview";
import { changed, Parameters, utmZoneOf } from "./parameters";
import { PointPage } from "./pointpage";
import { setUpSheets } from "./sheets";
import { fromAddress, initial, toAddress, type Place, type State, type Tab } from "./state";
import { TablePage } from "./tablepage";
import { roundTo, wrapped } from "./view";

const tabNames: readonly [Tab, string][] = [["point", "Point"], ["compare", "Compare"], ["distortion", "Distortion"], ["table", "Table"], ["georef", "Georef"]];

class Atlas implements App {
  readonly angles: AngleText;
  readonly map: MapView;
  readonly helper = new Helper();
  state: State;
  private readonly parameters: Parameters;
  private readonly list: ProjectionList;
  private readonly foot: Foot;
  private readonly pages: Record<Tab, Page> & { compare: ComparePage };
  private readonly sentence = h("p", { class: "sentence" });
  private guide?: string;
  private readonly writeSoon = afterQuiet(600, () => this.write());
  private readonly refreshSoon = afterQuiet(90, () => this.refresh());

  constructor(readonly engine: Engine) {
    this.state = initial();
    this.angles = new AngleText(engine.orvex.angle, this.state.angles);
    this.map = new MapView(engine, {
      turned: (values, done) => this.change({ values }, done),
      moved: (done) => this.moved(done),
      pointed: (place) => this.pointed(place),
      picked: (place) => this.picked(place),
    }, (choice, piece) => this.helper.ask({ do: "fine", choice, piece }), "Map");
    byId("maps").append(this.map.element);
    this.map.element.append(this.sentence, this.tools());
    this.list = new ProjectionList(byId("projections"), byId("find") as HTMLInputElement, engine, (slug) => this.choose(slug));
    this.parameters = new Parameters(byId("parameters"), engine, this.angles, (key, value, done) => this.setParameter(key, value, done));
    byId("reset").addEventListener("click", () => this.change({ values: {} }, true));
    this.foot = new Foot(byId("foot"), this);
    this.pages = {
      point: new PointPage(this), compare: new ComparePage(this, byId("maps")), distortion: new DistortionPage(this),
      table: new TablePage(this), georef: new GeorefPage(this),
    };
    this.makeTabs();
    setUpSheets();
    this.handleKeys();
    window.addEventListener("popstate", () => this.readAddress());
    window.addEventListener("hashchange", () => this.readAddress());
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => this.recolor());
  }

  get accuracy(): Accuracy {
    return this.state.stated ? "stated" : "exact";
  }

  start(): void {
    this.showAddress(...fromAddress(location.hash, this.engine.known));
    this.list.drawAll();
    void findGuide().then((guide) => {
      this.guide = guide;
      this.refresh();
    });
  }

  change(part: Partial<State>, done = true): void {
    const before = this.state;
    const next: State = { ...before, ...part };
    const turned = part.values !== undefined && next.slug === before.slug;
    this.state = next;
    const refusal = this.showMap(next.slug === before.slug ? "stay" : "keep");
    if (refusal) {
      this.state = before;
      this.refresh();
      this.refused(refusal);
      return;
    }
    this.angles.form = next.angles;
    if (next.tab !== before.tab) this.openTab(next.tab);
    this.follow(done, turned);
  }

  setPoint(point: Place | undefined, done = true): void {
    this.change({ point }, done);
    if (!done) this.writeSoon();
  }

  goTo(at: Place, zoom = this.map.zoom): void {
    this.map.goTo({ at, zoom });
    this.moved(true);
  }

  // The map.

  private choice(state = this.state) {
    return { slug: state.slug, values: state.values };
  }

  /** Shows the state's projection, or answers why the library refuses it; then the map stays as it was. */
  private showMap(where: { at?: Place; zoom: number } | "stay" | "keep"): unknown {
    try {
      if (where !== "stay" || !this.map.shows(this.choice(), this.accuracy)) this.map.show(this.choice(), this.accuracy, where);
      return undefined;
    } catch (error) {
      return error;
    }
  }

  /** A refusal stands at the field that it is about. */
  private refused(error: unknown, changedKey?: string): void {
    if (!this.parameters.setError([parameterOf(error), changedKey], messageOf(error))) announce(messageOf(error), "error");
  }

  private choose(slug: string): void {
    const middle = this.map.middle;
    const before = this.state;
    if (slug === before.slug) return;
    const values = this.carried(slug, middle);
    this.state = { ...before, slug, values, at: undefined, mid: undefined, zoom: 1 };
    const refusal = this.showMap("keep");
    if (refusal) this.state = before;
    this.refresh();
    if (refusal) this.refused(refusal);
    else this.write();
  }

  /** The new projection shows the place that stood in the middle, where it can be turned to it. */
  private carried(slug: string, middle: Place | undefined): Values {
    const entry = entryOf(slug);
    const old = this.engine.values(this.choice());
    const values: Values = {};
    if (!entry || !middle || this.isAtHome()) return values;
    const lon = roundTo(wrapped(middle[0]), 0.01);
    if (slug === "utm") values.lon0 = 6 * utmZoneOf(lon) - 183;
    else if (entry.turn !== "none" && entry.turn !== "points" && this.engine.has(slug, "lon0")) values.lon0 = lon;
    if (entry.turn === "lat0" || entry.turn === "lat1") values[entry.turn] = roundTo(middle[1], 0.01);
    if (this.engine.has(slug, "ellipsoid") && old.ellipsoid !== undefined) values.ellipsoid = old.ellipsoid;
    return values;
  }

  /** Whether nobody has turned or moved the map yet: then the next one opens as it likes best. */
  private isAtHome(): boolean {
    const turned = Object.keys(this.state.values).some((key) => /^(lon|lat)/.test(key));
    return !turned && this.map.zoom < 1.05;
  }

  private setParameter(key: string, value: Value | undefined, done: boolean): void {
    const before = this.state;
    this.state = { ...before, values: changed(before.values, key, value) };
    const refusal = this.showMap("stay");
    if (refusal) {
      this.state = before;
      this.refused(refusal, key);
      return;
    }
    this.parameters.clearErrors();
    this.map.setVeil("");
    this.follow(done, true);
  }

  /** What follows a change of the state: at once when it is done, and while a drag goes on only what moves with it. */
  private follow(done: boolean, onlyValues: boolean): void {
    if (done || !onlyValues) this.refresh();
    else {
      this.parameters.show(this.choice());
      this.pages.georef.update();
      this.refreshSoon();
    }
    if (done) this.write();
  }

  moved(done: boolean): void {
    if (done) this.write();
    this.pages.compare.pointed?.(undefined);
  }

  private pointed(place: Place | undefined): void {
    this.foot.show(place);
    this.pages.compare.pointed?.(place);
  }

  private picked(place: Place): void {
    if (this.pages[this.state.tab].picked?.(place)) return;
    const digits = Math.max(Math.min(Math.ceil(-Math.log10((this.map.current?.degreesInPixel(this.map.viewNow) ?? 1) / 10)), 9), 0);
    this.setPoint([Number(place[0].toFixed(digits)), Number(place[1].toFixed(digits))], true);
    this.map.focusPoint();
  }

  private refresh(): void {
    const { state, map } = this;
    Object.assign(map.scene, { graticule: state.graticule, tissot: state.tissot, shading: state.shading, point: state.point });
    this.list.select(state.slug);
    this.parameters.show(this.choice());
    for (const page of Object.values(this.pages)) page.update();
    this.foot.show(undefined);
    const entry = entryOf(state.slug)!;
    const more = this.guide && h("a", { href: `${this.guide}#${anchorOf(entry.name)}` }, "More");
    this.sentence.replaceChildren(h("strong", {}, entry.name), ` ${entry.says} `, more ?? "");
    document.title = `${entry.name} \u00b7 Orvex atlas`;
    if (state.point) map.handle.setAttribute("aria-label", `Point at ${this.angles.place(state.point, 4)}: arrow keys move it, Delete removes it`);
    map.setVeil("");
    map.redraw();
  }

  private recolor(): void {
    this.list.drawAll();
    this.refresh();
    this.compare.second?.redraw();
  }

  // The address.

  /** A step that the back button undoes. */
  private write(): void {
    this.state = { ...this.state, ...this.map.stand, besideStand: this.compare.second?.stand ?? { zoom: 1 } };
    const hash = `#${toAddress(this.state)}`;
    if (hash !== location.hash) history.pushState(null, "", hash);
  }

  private readAddress(): void {
    const [state, wrong] = fromAddress(location.hash, this.engine.known);
    if (wrong.length > 0 || toAddress(state) !== toAddress(this.state)) this.showAddress(state, wrong);
  }

  /** Parameters that the library refuses are left out and named, like parts that cannot be read. */
  private showAddress(state: State, wrong: string[]): void {
    this.state = state;
    this.angles.form = state.angles;
    const where = { at: state.at, mid: state.mid, zoom: state.zoom };
    for (let refusal = this.showMap(where); refusal; refusal = this.showMap(where)) wrong.push(this.leaveOut(refusal));
    this.openTab(state.tab);
    this.refresh();
    this.compare.restore();
    history.replaceState(null, "", `#${toAddress(this.state)}`);
    if (wrong.length > 0) announce(`This link has parts that cannot be used and are left out: ${wrong.map(cut).join(", ")}`, "error");
  }

  /** Takes away the parameter that a refusal is about, or all where it does not say; answers which and why. */
  private leaveOut(refusal: unknown): string {
    const { values } = this.state;
    const key = parameterOf(refusal);
    const refused = key && key in values ? [key] : Object.keys(values);
    if (refused.length === 0) throw refusal;
    this.state = { ...this.state, values: Object.fromEntries(Object.entries(values).filter(([name]) => !refused.includes(name))) };
    return `${refused.map((name) => `${name}=${String(values[name])}`).join(" ")} (${messageOf(refusal)})`;
  }

  private get compare(): ComparePage {
    return this.pages.compare;
  }

  // Controls about the map.

  private tools(): HTMLElement {
    const button = (drawing: IconName, name: string, action: () => void) =>
      h("button", { type: "button", "aria-label": name, title: name, onclick: action }, icon(drawing));
    const shareMenu = h("details", { class: "share" }, h("summary", { "aria-label": "Export and share", title: "Export and share" }, icon("share")),
      h("div", { class: "menu" },
        h("button", { type: "button", onclick: () => this.exportSvg() }, "Save as SVG"),
        h("button", { type: "button", onclick: () => void this.exportPng() }, "Save as PNG"),
        h("button", { type: "button", onclick: () => void copy(location.href, "Link") }, "Copy the link"),
        h("button", { type: "button", onclick: () => void copy(this.mapCommand(), "Command") }, "Copy the map command")));
    shareMenu.addEventListener("keydown", (event) => {
      if (event.key !== "Escape") return;
      shareMenu.open = false;
      shareMenu.querySelector("summary")?.focus();
    });
    shareMenu.addEventListener("click", (event) => {
      if ((event.target as Element).closest(".menu button")) shareMenu.open = false;
    });
    document.addEventListener("pointerdown", (event) => {
      if (!shareMenu.contains(event.target as Node)) shareMenu.open = false;
    });
    return h("div", { class: "tools", role: "group", "aria-label": "Map tools" },
      button("plus", "Zoom in", () => this.map.zoomBy(1.6)), button("minus", "Zoom out", () => this.map.zoomBy(1 / 1.6)),
      button("whole", "Whole map", () => {
        this.map.goTo({ zoom: 1 });
        this.moved(true);
      }), shareMenu);
  }

  private mapCommand(): string {
    return mapCommand(this.engine, this.state, this.map.picture);
  }

  private description(): string {
    return `Drawn by Orvex: ${this.mapCommand()}`;
  }

  private exportSvg(): void {
    const svg = this.map.toSvg(entryOf(this.state.slug)!.name, this.description());
    save(new Blob([svg], { type: "image/svg+xml" }), `${this.state.slug}.svg`);
  }

  private async exportPng(): Promise<void> {
    try {
      save(await this.map.toPng(), `${this.state.slug}.png`);
    } catch (error) {
      announce(messageOf(error), "error");
    }
  }

  private handleKeys(): void {
    const { handle } = this.map;
    handle.addEventListener("keydown", (event) => {
      const point = this.state.point;
      if (!point) return;
      const step = ((this.map.current?.degreesInPixel(this.map.viewNow) ?? 0.1) * (event.shiftKey ? 1 : 8));
      const moves: Record<string, readonly [number, number]> = { ArrowLeft: [-step, 0], ArrowRight: [step, 0], ArrowUp: [0, step], ArrowDown: [0, -step] };
      const by = moves[event.key];
      if (event.key === "Delete" || event.key === "Backspace") {
        this.setPoint(undefined);
        this.map.controls.focus();
      } else if (by) {
        const rounded = (value: number) => roundTo(value, step / 10);
        this.setPoint([rounded(wrapped(point[0] + by[0])), rounded(Math.min(Math.max(point[1] + by[1], -90), 90))], false);
      } else return;
      event.preventDefault();
    });
  }

  // The panel.

  private makeTabs(): void {
    const tabs = byId("tabs");
    for (const [key, name] of tabNames) {
      const tab = h("button", { type: "button", role: "tab", id: `tab-${key}`, "aria-controls": `page-${key}` }, name);
      tab.addEventListener("click", () => this.change({ tab: key }));
      tabs.append(tab);
      const page = h("div", { role: "tabpanel", id: `page-${key}`, "aria-labelledby": `tab-${key}`, tabindex: -1 }, this.pages[key].element);
      byId("pages").append(page);
    }
    tabs.addEventListener("keydown", (event) => {
      const by = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
      if (!by) return;
      const at = tabNames.findIndex(([key]) => key === this.state.tab);
      const next = tabNames[(at + by + tabNames.length) % tabNames.length]![0];
      this.change({ tab: next });
      byId(`tab-${next}`).focus();
    });
    this.openTab(this.state.tab);
  }

  private openTab(open: Tab): void {
    for (const [key] of tabNames) {
      const selected = key === open;
      const tab = byId(`tab-${key}`);
      tab.setAttribute("aria-selected", String(selected));
      tab.tabIndex = selected ? 0 : -1;
      byId(`page-${key}`).hidden = !selected;
      this.pages[key].opened?.(selected);
    }
  }
}

function parameterOf(error: unknown): string | null {
  return error instanceof OrvexError ? error.parameter : null;
}

/** Nonsense is named by its beginning. */
function cut(part: string): string {
  return part.length > 160 ? `${part.slice(0, 159)}\u2026` : part;
}

/** The guide to the projections, where the page is part of the documentation's site. */
async function findGuide(): Promise<string | undefined> {
  if (!/\/atlas\/(index\.html)?$/.test(location.pathname)) return undefined;
  const guide = new URL("../docs/projections.html", location.href).href;
  const answer = await fetch(guide, { method: "HEAD" }).catch(() => undefined);
  return answer?.ok ? guide : undefined;
}

/** The heading of a projection in the documentation. */
function anchorOf(name: string): string {
  const shared: Record<string, string> = {
    "Gauss-Kruger / Gauss Conformal": "transverse-mercator-gauss-kruger", "Transverse Mercator": "transverse-mercator-gauss-kruger",
    "State Plane 1927": "state-plane-1927-and-1983", "State Plane 1983": "state-plane-1927-and-1983", "Unprojected Lat/Long": "unprojected-lat-long",
  };
  return shared[name] ?? name.toLowerCase().replace(/[()]/g, "").replace(/ /g, "-");
}

async function begin(): Promise<void> {
  const maps = byId("maps");
  try {
    const engine = await Engine.start(document.baseURI);
    const atlas = new Atlas(engine);
    Object.assign(window, { atlas });
    atlas.start();
    document.documentElement.classList.add("ready");
    performance.mark("map");
  } catch (error) {
    maps.append(h("p", { class: "notice", role: "alert" }, `The atlas could not start: ${messageOf(error)}`));
  }
}

void begin();
