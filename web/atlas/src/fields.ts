// Controls for values. Each has a label, a way by keys and room for a message that moves nothing.
import { freshId, h } from "./dom";
import { messageOf, numberOf } from "./format";

export interface Field {
  readonly element: HTMLElement;
  set(value: unknown): void;
  setError(text: string): void;
  focus(): void;
}

const message = () => h("p", { class: "error", id: freshId("error"), role: "alert", hidden: true });

function showError(element: HTMLElement, input: HTMLElement, error: HTMLElement, text: string): void {
  error.textContent = text;
  error.hidden = text === "";
  element.classList.toggle("wrong", text !== "");
  if (text) {
    input.setAttribute("aria-invalid", "true");
    input.setAttribute("aria-describedby", error.id);
  } else {
    input.removeAttribute("aria-invalid");
    input.removeAttribute("aria-describedby");
  }
}

export interface NumberOptions {
  label: string;
  unit?: string;
  step: number;
  parse(text: string): number;
  format?(value: number): string;
  /** `done` is false while a value is being dragged or typed. */
  change(value: number, done: boolean): void;
}

const SCRUB = 3;  // pixels sideways for a step

/** A number that can be typed, stepped by the arrow keys and dragged sideways by its label. */
export class NumberField implements Field {
  readonly element: HTMLElement;
  private readonly input: HTMLInputElement;
  private readonly error = message();
  private value = 0;

  constructor(private readonly options: NumberOptions) {
    const id = freshId("field");
    this.input = h("input", { id, type: "text", inputmode: "decimal", autocomplete: "off", spellcheck: "false" });
    const label = h("label", { for: id, title: "Drag sideways to change" }, options.label);
    this.element = h("div", { class: "field number" }, label, h("div", { class: "box" }, this.input, options.unit && h("span", { class: "unit" }, options.unit)), this.error);
    this.input.addEventListener("input", () => this.typed(false));
    this.input.addEventListener("change", () => this.typed(true));
    this.input.addEventListener("keydown", (event) => this.key(event));
    this.scrub(label);
  }

  set(value: unknown): void {
    this.value = Number(value);
    if (document.activeElement !== this.input || !this.element.classList.contains("typing")) this.input.value = this.text(this.value);
    this.setError("");
  }

  setError(text: string): void {
    showError(this.element, this.input, this.error, text);
  }

  focus(): void {
    this.input.focus();
  }

  private text(value: number): string {
    return this.options.format?.(value) ?? String(Number(value.toPrecision(15)));
  }

  private typed(done: boolean): void {
    this.element.classList.toggle("typing", !done);
    let value: number;
    try {
      value = this.options.parse(this.input.value);
    } catch (error) {
      if (done || this.input.value.trim() !== "") this.setError(messageOf(error));
      return;
    }
    this.value = value;
    this.setError("");
    this.options.change(value, done);
  }

  /** Where steps begin: an empty field counts from 0. */
  private get origin(): number {
    return Number.isFinite(this.value) ? this.value : 0;
  }

  private stepTo(value: number, done: boolean): void {
    this.value = Number(value.toPrecision(12));
    this.input.value = this.text(this.value);
    this.setError("");
    this.options.change(this.value, done);
  }

  private key(event: KeyboardEvent): void {
    if (event.key === "Enter") {
      event.preventDefault();
      this.typed(true);
      return;
    }
    const direction = { ArrowUp: 1, ArrowDown: -1 }[event.key];
    if (!direction) return;
    event.preventDefault();
    const factor = event.shiftKey ? 10 : event.altKey ? 0.1 : 1;
    this.stepTo(this.origin + direction * factor * this.options.step, true);
  }

  private scrub(label: HTMLElement): void {
    let from = 0;
    let start = 0;
    let dragging = false;
    label.addEventListener("pointerdown", (event) => {
      label.setPointerCapture(event.pointerId);
      [from, start, dragging] = [event.clientX, this.origin, false];
    });
    label.addEventListener("pointermove", (event) => {
      if (!label.hasPointerCapture(event.pointerId)) return;
      const steps = Math.trunc((event.clientX - from) / SCRUB);
      if (steps === 0 && !dragging) return;
      dragging = true;
      this.stepTo(start + steps * this.options.step, false);
    });
    const end = (event: PointerEvent) => {
      if (!label.hasPointerCapture(event.pointerId)) return;
      label.releasePointerCapture(event.pointerId);
      if (dragging) this.options.change(this.value, true);
    };
    label.addEventListener("pointerup", end);
    label.addEventListener("pointercancel", end);
  }
}

export class FlagField implements Field {
  readonly element: HTMLElement;
  private readonly input: HTMLInputElement;
  private readonly error = message();

  constructor(label: string, change: (value: boolean) => void) {
    const id = freshId("field");
    this.input = h("input", { id, type: "checkbox" });
    this.input.addEventListener("change", () => change(this.input.checked));
    this.element = h("div", { class: "field flag" }, this.input, h("label", { for: id }, label), this.error);
  }

  set(value: unknown): void {
    this.input.checked = Boolean(value);
    this.setError("");
  }

  setError(text: string): void {
    showError(this.element, this.input, this.error, text);
  }

  focus(): void {
    this.input.focus();
  }
}

export interface Option {
  value: string;
  text: string;
}

export class ChoiceField implements Field {
  readonly element: HTMLElement;
  readonly select: HTMLSelectElement;
  private readonly error = message();

  constructor(label: string, options: readonly Option[], change: (value: string) => void) {
    const id = freshId("field");
    this.select = h("select", { id }, ...options.map((option) => h("option", { value: option.value }, option.text)));
    this.select.addEventListener("change", () => change(this.select.value));
    this.element = h("div", { class: "field choice" }, h("label", { for: id }, label), h("div", { class: "box" }, this.select), this.error);
  }

  set(value: unknown): void {
    this.select.value = String(value);
    this.setError("");
  }

  setOptions(options: readonly Option[]): void {
    const value = this.select.value;
    this.select.replaceChildren(...options.map((option) => h("option", { value: option.value }, option.text)));
    this.select.value = value;
    if (this.select.selectedIndex < 0) this.select.selectedIndex = 0;
  }

  get value(): string {
    return this.select.value;
  }

  setError(text: string): void {
    showError(this.element, this.select, this.error, text);
  }

  focus(): void {
    this.select.focus();
  }
}

/** A few choices side by side, of which one holds. */
export class SegmentField {
  readonly element: HTMLElement;
  private readonly inputs: HTMLInputElement[];

  constructor(label: string, options: readonly Option[], change: (value: string) => void) {
    const name = freshId("segment");
    this.inputs = options.map((option) => h("input", { type: "radio", name, value: option.value, id: `${name}-${option.value}` }));
    this.element = h("fieldset", { class: "segments" }, h("legend", {}, label),
      h("div", { class: "row" }, ...this.inputs.map((input, i) => h("label", {}, input, h("span", {}, options[i]!.text)))));
    for (const input of this.inputs) input.addEventListener("change", () => change(input.value));
  }

  set(value: string): void {
    for (const input of this.inputs) input.checked = input.value === value;
  }
}

export const beyondPole = "A latitude lies between \u221290 and 90 degrees";

/** A number from plain text. */
export function plainNumber(text: string): number {
  const plain = text.trim().replace(/\u2212/g, "-").replace(/[\u2009\u00a0 ]/g, "");
  const value = numberOf(plain);
  if (!Number.isFinite(value)) throw new Error(`"${text.trim()}" is not a number`);
  return value;
}
