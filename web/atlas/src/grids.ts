// Grid files that some datums read: chosen or dropped here, and then known to the page and to its worker.
import type { App } from "./app";
import { acceptDrops, h } from "./dom";
import { messageOf } from "./format";

const files: Partial<Record<string, string>> = {
  nadcon: "conus.las and conus.los, or prvi.las and prvi.los",
  ntv2: "NTV2_0.GSB",
};

export class GridFiles {
  readonly element: HTMLElement;
  private readonly wanted = h("strong", {});
  private readonly input = h("input", { type: "file", multiple: true, accept: ".las,.los,.gsb", class: "unseen", "aria-label": "Choose grid files" });
  private readonly status = h("p", { class: "note", role: "status" });

  constructor(private readonly app: App) {
    const choose = h("button", { type: "button", class: "link", onclick: () => this.input.click() }, "choose them");
    this.element = h("div", { class: "drop grids", hidden: true },
      h("p", {}, "This datum is computed by a grid. Drop ", this.wanted, " here, or ", choose, "."),
      h("p", { class: "quiet" }, "They stay on this machine, until the page is closed."), this.input, this.status);
    acceptDrops(this.element, (dropped) => void this.take(dropped));
    this.input.addEventListener("change", () => {
      void this.take([...(this.input.files ?? [])]);
      this.input.value = "";
    });
  }

  /** Offers to take the files that a datum needs, if it needs any. */
  show(datums: readonly string[]): void {
    const known = this.app.engine.orvex.datums;
    const names = datums.flatMap((name) => files[known.find((datum) => datum.name === name)?.method ?? ""] ?? []);
    this.element.hidden = names.length === 0;
    this.wanted.textContent = [...new Set(names)].join("; ");
  }

  /** What cannot be taken is named; the others are taken. */
  private async take(chosen: readonly File[]): Promise<void> {
    const taken: string[] = [], refused: string[] = [];
    for (const file of chosen) {
      const { name } = file;
      try {
        const bytes = await file.arrayBuffer();
        this.app.engine.orvex.grid(name, bytes);
        await this.app.helper.ask({ do: "grid", name, bytes });
        taken.push(name);
      } catch (error) {
        refused.push(messageOf(error));
      }
    }
    this.status.textContent = [...(taken.length > 0 ? [`Taken: ${taken.join(", ")}.`] : []), ...refused].join(" ");
    this.status.classList.toggle("wrong", refused.length > 0);
    this.app.change({});
  }
}
