// The list of projections: a small map of each, drawn by the library when the page has nothing else to do.
import { entries, search, type Entry } from "./catalogue";
import { Chart } from "./chart";
import { h } from "./dom";
import type { Engine } from "./engine";
import { CanvasSurface } from "./surface";
import { theme } from "./theme";

const WIDTH = 64, HEIGHT = 40;

export class ProjectionList {
  private readonly items = new Map<string, { item: HTMLElement; button: HTMLButtonElement; canvas: HTMLCanvasElement }>();
  private readonly empty = h("li", { class: "quiet", hidden: true }, "No projection of that name.");

  constructor(list: HTMLElement, find: HTMLInputElement, private readonly engine: Engine, choose: (slug: string) => void) {
    const density = Math.min(window.devicePixelRatio || 1, 2);
    for (const entry of entries) {
      const canvas = h("canvas", { width: WIDTH * density, height: HEIGHT * density, "aria-hidden": "true" });
      const button = h("button", { type: "button", "data-slug": entry.slug },
        canvas, h("span", { class: "name" }, entry.name, h("small", {}, keepsText(entry))));
      button.addEventListener("click", () => choose(entry.slug));
      const item = h("li", {}, button);
      this.items.set(entry.slug, { item, button, canvas });
      list.append(item);
    }
    list.append(this.empty);
    find.addEventListener("input", () => this.filter(find.value));
    find.addEventListener("keydown", (event) => {
      if (event.key === "ArrowDown") this.shown()[0]?.focus();
      else if (event.key === "Enter") this.shown()[0]?.click();
      else if (event.key === "Escape") {
        find.value = "";
        this.filter("");
      } else return;
      event.preventDefault();
    });
    list.addEventListener("keydown", (event) => this.walk(event, find));
  }

  select(slug: string): void {
    for (const [key, { button }] of this.items) {
      const current = key === slug;
      if (current && button.getAttribute("aria-current") !== "true") button.scrollIntoView({ block: "nearest" });
      button.toggleAttribute("aria-current", current);
      if (current) button.setAttribute("aria-current", "true");
    }
  }

  /** Draws the small maps, one in each idle moment. */
  drawAll(): void {
    const left = [...this.items];
    const next = () => {
      const job = left.shift();
      if (!job) return;
      this.draw(job[0], job[1].canvas);
      idle(next);
    };
    idle(next);
  }

  private filter(text: string): void {
    const found = new Set(search(text).map((entry) => entry.slug));
    for (const [slug, { item }] of this.items) item.hidden = !found.has(slug);
    this.empty.hidden = found.size > 0;
  }

  private shown(): HTMLButtonElement[] {
    return [...this.items.values()].filter(({ item }) => !item.hidden).map(({ button }) => button);
  }

  private walk(event: KeyboardEvent, find: HTMLElement): void {
    const by = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    if (!by) return;
    event.preventDefault();
    const shown = this.shown();
    const next = shown.indexOf(document.activeElement as HTMLButtonElement) + by;
    (shown[next] ?? (next < 0 ? find : undefined))?.focus();
  }

  private draw(slug: string, canvas: HTMLCanvasElement): void {
    const size = { width: WIDTH, height: HEIGHT };
    const context = canvas.getContext("2d")!;
    const density = canvas.width / WIDTH;
    context.setTransform(density, 0, 0, density, 0, 0);
    context.clearRect(0, 0, WIDTH, HEIGHT);
    const chart = new Chart(this.engine, { slug, values: {} }, "exact", size);
    const view = chart.fitted(size, [2, 2]);
    chart.suit(view, size);
    const colors = theme();
    const surface = new CanvasSurface(context, size, view);
    surface.fill(chart.edge(), { color: colors.sea });
    surface.fill(chart.land(), { color: colors.dark ? "#7d7a62" : "#b9a877" });
    surface.stroke(chart.edge(), { color: colors.quiet, width: 0.6, closed: true });
    chart.dispose();
  }
}

function keepsText(entry: Entry): string {
  const texts: Record<string, string> = {
    angles: "keeps angles", areas: "keeps areas", distances: "true distances", compromise: "a compromise", view: "a view of the globe", "great circles": "straight great circles", degrees: "degrees",
  };
  return texts[entry.keeps] ?? entry.keeps;
}

function idle(work: () => void): void {
  if ("requestIdleCallback" in window) requestIdleCallback(work, { timeout: 1500 });
  else setTimeout(work, 30);
}
