// What the projection keeps and what it does not: colours with their legend, Tissot's ellipses, the graticule, numbers at
// the point.
import type { App, Page } from "./app";
import { h } from "./dom";
import { ChoiceField, FlagField, SegmentField } from "./fields";
import { grouped, significant } from "./format";
import { legend } from "./shading";
import type { Shading } from "./state";

const steps = [
  { value: "", text: "As suits the zoom" }, { value: "0", text: "None" },
  ...["30", "15", "10", "5", "2", "1"].map((value) => ({ value, text: `${value}\u00b0` })),
];

export class DistortionPage implements Page {
  readonly element: HTMLElement;
  private readonly shading: SegmentField;
  private readonly legend = h("div", { class: "legends" });
  private readonly tissot: FlagField;
  private readonly graticule: ChoiceField;
  private readonly numbers = h("dl", { class: "results" });
  private shown?: Shading;

  constructor(private readonly app: App) {
    const kinds = [["none", "None"], ["scale", "Scale"], ["area", "Area"], ["angle", "Angle"]] as const;
    this.shading = new SegmentField("Colour the map by", kinds.map(([value, text]) => ({ value, text })), (value) => app.change({ shading: value as Shading }));
    this.tissot = new FlagField("Tissot's ellipses: what small circles become", (tissot) => app.change({ tissot }));
    this.graticule = new ChoiceField("Graticule", steps, (value) => app.change({ graticule: value === "" ? undefined : Number(value) }));
    this.element = h("div", { class: "page" }, this.shading.element, this.legend, this.tissot.element, this.graticule.element,
      h("h3", {}, "At the point"), this.numbers);
  }

  update(): void {
    const { state } = this.app;
    this.shading.set(state.shading);
    this.tissot.set(state.tissot);
    this.graticule.set(state.graticule ?? "");
    if (this.shown !== state.shading) {
      this.shown = state.shading;
      this.legend.replaceChildren(...(state.shading === "none" ? [] : [legend(state.shading)]));
    }
    this.showNumbers();
  }

  private showNumbers(): void {
    const point = this.app.state.point;
    const chart = this.app.map.current;
    const at = point && chart?.projection.distortion([point[0]], [point[1]]);
    const rows: [string, number | undefined, string][] = [
      ["Scale along the meridian, h", at?.h[0], ""], ["Scale along the parallel, k", at?.k[0], ""],
      ["Largest scale", at?.most[0], ""], ["Smallest scale", at?.least[0], ""],
      ["Area scale", at?.area[0], ""], ["Largest change of an angle", at?.omega[0], "\u00b0"],
    ];
    this.numbers.replaceChildren(...rows.map(([name, value, unit]) =>
      h("div", { class: "row" }, h("dt", {}, name), h("dd", { class: "value" }, `${unit ? grouped(value ?? NaN, 4) : significant(value ?? NaN, 6)}${value === undefined || !Number.isFinite(value) ? "" : unit}`))));
  }
}
