// The line at the foot: where the pointer is in every sense, and the command that computes the same.
import type { App } from "./app";
import { projectCommand } from "./command";
import { copy, h } from "./dom";
import { grouped, none } from "./format";
import { icon } from "./icons";
import type { Place } from "./state";

export class Foot {
  private readonly cells = new Map<string, HTMLElement>();
  private readonly command = h("code", { class: "command", tabindex: 0 });

  constructor(element: HTMLElement, private readonly app: App) {
    const cell = (key: string, label: string) => {
      const value = h("span", { class: "value" }, none);
      this.cells.set(key, value);
      return h("span", { class: `cell ${key}` }, label && h("span", { class: "unit" }, label), value);
    };
    const button = h("button", { type: "button", class: "copy", "aria-label": "Copy the command", title: "Copy the command", onclick: () => void copy(this.command.textContent ?? "", "Command") }, icon("copy"));
    element.append(
      h("div", { class: "readout" }, cell("place", ""), cell("x", "x"), cell("y", "y"), cell("scale", "scale"), cell("area", "area"), cell("angle", "angle")),
      h("div", { class: "line" }, this.command, button));
  }

  /** The place under the pointer, else the point. */
  show(place: Place | undefined): void {
    const { app } = this;
    const at = place ?? app.state.point;
    const projection = app.map.current?.projection;
    const set = (key: string, text: string) => (this.cells.get(key)!.textContent = text);
    const [x, y] = at && projection ? projection.forward(at[0], at[1]) : [NaN, NaN];
    const distortion = at && projection ? projection.distortion([at[0]], [at[1]]) : undefined;
    const plane = app.engine.info(app.state.slug).drawable ? 3 : 6;
    set("place", at ? app.angles.place(at, 4) : none);
    set("x", grouped(x, plane));
    set("y", grouped(y, plane));
    set("scale", factor(distortion?.most[0]));
    set("area", factor(distortion?.area[0]));
    set("angle", distortion && Number.isFinite(distortion.omega[0]) ? `${distortion.omega[0]!.toFixed(2)}\u00b0` : none);
    this.command.textContent = projectCommand(app.engine, { slug: app.state.slug, values: app.state.values }, app.state.stated, app.state.point);
  }
}

function factor(value: number | undefined): string {
  return value === undefined || !Number.isFinite(value) ? none : value >= 1000 ? value.toExponential(2) : value.toFixed(5);
}
