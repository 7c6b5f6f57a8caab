// The person's own tables and shapes: dropped, pasted or chosen, shown on the map, converted and handed back.
import type { App, Page } from "./app";
import { tableCommand } from "./command";
import { acceptDrops, copy, h, save } from "./dom";
import { ChoiceField } from "./fields";
import { messageOf } from "./format";
import { icon } from "./icons";
import type { Kind, Outcome, Summary } from "./table";

const kinds: readonly { value: Kind; text: string }[] = [
  { value: "forward", text: "to x, y of this map" }, { value: "inverse", text: "from x, y of this map" },
  { value: "shift", text: "to the other datum" }, { value: "utm", text: "to UTM, each point in its zone" }, { value: "mgrs", text: "to MGRS references" },
];
const MOST_BYTES = 200e6;

export class TablePage implements Page {
  readonly element: HTMLElement;
  private readonly paste = h("textarea", { rows: 4, placeholder: "name,lon,lat\nBerlin,13.4050,52.5200", spellcheck: "false", "aria-label": "Table or GeoJSON as text" });
  private readonly file = h("input", { type: "file", accept: ".csv,.tsv,.txt,.json,.geojson", class: "unseen", "aria-label": "Choose a file" });
  private readonly status = h("p", { class: "note", role: "status" });
  private readonly work = h("div", { hidden: true });
  private readonly kind: ChoiceField;
  private readonly x: ChoiceField;
  private readonly y: ChoiceField;
  private readonly columns = h("div", { class: "pairs" });
  private readonly preview = h("table", { class: "preview" });
  private readonly download = h("button", { type: "button", hidden: true }, "Download");
  private readonly command = h("code", { class: "command", tabindex: 0 });
  private summary?: Summary;
  private outcome?: Outcome;

  constructor(private readonly app: App) {
    const drop = h("div", { class: "drop" },
      h("p", {}, h("strong", {}, "Drop a CSV or GeoJSON here"), ", or ", this.chooser(), "."),
      h("p", { class: "quiet" }, "Nothing leaves this machine: the page computes here and sends nothing."));
    acceptDrops(drop, (files) => void this.take(files[0]!));
    this.file.addEventListener("change", () => {
      const file = this.file.files?.[0];
      if (file) void this.take(file);
      this.file.value = "";
    });
    this.kind = new ChoiceField("Convert", kinds, () => this.choose());
    this.x = new ChoiceField("Longitude or x", [], () => this.choose());
    this.y = new ChoiceField("Latitude or y", [], () => this.choose());
    this.columns.append(this.x.element, this.y.element);
    this.download.addEventListener("click", () => this.outcome && save(this.outcome.file, this.outcome.fileName));
    const convert = h("button", { type: "button", class: "main", onclick: () => void this.convert() }, "Convert");
    const forget = h("button", { type: "button", class: "plain", onclick: () => this.forget() }, "Remove from the map");
    const copyCommand = h("button", { type: "button", class: "copy", "aria-label": "Copy the command for this table", onclick: () => void copy(this.command.textContent ?? "", "Command") }, icon("copy"));
    this.work.append(this.columns, this.kind.element, h("div", { class: "actions" }, convert, this.download, forget),
      h("div", { class: "scroll", tabindex: 0, role: "region", "aria-label": "First rows" }, this.preview), h("div", { class: "line" }, this.command, copyCommand));
    const read = h("button", { type: "button", onclick: () => void this.read("pasted", this.paste.value) }, "Read the text");
    this.element = h("div", { class: "page" }, drop, this.file, this.paste, read, this.status, this.work);
  }

  update(): void {
    this.showCommand();
  }

  private chooser(): HTMLElement {
    return h("button", { type: "button", class: "link", onclick: () => this.file.click() }, "choose a file");
  }

  private async take(file: File): Promise<void> {
    if (file.size > MOST_BYTES) {
      this.say(`${file.name} is larger than 200 MB; the command line converts tables of any size`, true);
      return;
    }
    const text = await file.text().catch(() => undefined);
    if (text === undefined) this.say(`${file.name} cannot be read: it may be a folder`, true);
    else await this.read(file.name, text);
  }

  private say(text: string, wrong = false): void {
    this.status.textContent = text;
    this.status.classList.toggle("wrong", wrong);
  }

  private async read(name: string, text: string): Promise<void> {
    try {
      this.accept(await this.app.helper.ask({ do: "read", name, text }));
    } catch (error) {
      this.say(messageOf(error), true);
    }
  }

  private accept(summary: Summary): void {
    this.summary = summary;
    this.outcome = undefined;
    this.download.hidden = true;
    this.work.hidden = false;
    const table = summary.what === "table";
    this.columns.hidden = !table;
    this.kind.setOptions(table ? kinds : kinds.slice(0, 3));
    const options = summary.header.map((text, i) => ({ value: String(i), text }));
    this.x.setOptions(options);
    this.y.setOptions(options);
    this.x.set(summary.guess?.[0] ?? 0);
    this.y.set(summary.guess?.[1] ?? 1);
    const what = table ? `${summary.count} rows` : `${summary.count} ${summary.count === 1 ? "shape" : "shapes"}`;
    const unsure = table && !summary.guess ? " Which columns hold the coordinates cannot be told by their names: choose them." : "";
    this.say(`${summary.name}: ${what}.${unsure}${summary.problems.length > 0 ? ` ${summary.problems.join("; ")}` : ""}`);
    this.show(summary.header, summary.rows);
    this.draw(summary);
    this.showCommand();
  }

  private draw(summary: Summary | undefined): void {
    const own = this.kind.value === "inverse" ? undefined : summary?.own;
    this.app.map.scene.own = own && { areas: own.areas, lines: own.lines, points: own.points };
    this.app.map.redraw();
    this.app.change({});
  }

  private async choose(): Promise<void> {
    this.showCommand();
    if (this.summary?.what !== "table") return this.draw(this.summary);
    try {
      const summary = await this.app.helper.ask({ do: "columns", columns: this.chosen() });
      this.summary = summary;
      this.draw(summary);
    } catch (error) {
      this.say(messageOf(error), true);
    }
  }

  private chosen(): readonly [number, number] {
    return [Number(this.x.value || 0), Number(this.y.value || 1)];
  }

  private async convert(): Promise<void> {
    const { app } = this;
    const { state } = app;
    this.say("Converting \u2026");
    try {
      const outcome = await app.helper.ask(
        { do: "convert", job: { kind: this.kind.value as Kind, choice: { slug: state.slug, values: state.values }, accuracy: app.accuracy, from: state.from, to: state.to, columns: this.chosen() } },
        (part) => this.say(`Converting \u2026 ${Math.round(part * 100)} %`),
      );
      this.outcome = outcome;
      const failed = outcome.failed > 0 ? `, ${outcome.failed} could not be computed and are empty` : "";
      this.say(`${outcome.converted} points converted in ${Math.max(Math.round(outcome.milliseconds), 1)} ms${failed}.`);
      if (outcome.header.length > 0) this.show(outcome.header, outcome.rows);
      this.download.textContent = `Download ${outcome.fileName}`;
      this.download.hidden = false;
    } catch (error) {
      this.say(messageOf(error), true);
    }
  }

  private show(header: readonly string[], rows: readonly (readonly string[])[]): void {
    this.preview.replaceChildren(
      h("thead", {}, h("tr", {}, ...header.map((name) => h("th", { scope: "col" }, name)))),
      h("tbody", {}, ...rows.slice(0, 12).map((row) => h("tr", {}, ...row.map((cell) => h("td", {}, cell))))));
  }

  private showCommand(): void {
    const { summary } = this;
    if (!summary) return;
    const table = summary.what === "table" ? { columns: this.chosen().map((i) => columnOf(summary, i)), decimalComma: summary.decimalComma } : undefined;
    this.command.textContent = tableCommand(this.app.engine, this.app.state, this.kind.value, summary.name, table);
  }

  private forget(): void {
    this.app.map.scene.own = undefined;
    this.app.map.redraw();
    this.app.change({});
  }
}

/** A column as the tool is told: by its name, or by its number where no other name tells it. */
function columnOf({ header, headed }: Summary, index: number): string {
  const name = header[index] ?? "";
  return headed && name !== "" && header.indexOf(name) === header.lastIndexOf(name) ? name : String(index + 1);
}
