// Numbers as people read them: tabular, thin spaces between thousands, degrees in the chosen form.
import type { Angles } from "orvex";

import type { AngleForm, Place } from "./state";

/** A narrow space at which no line ends. */
export const thin = "\u202f";
export const minus = "\u2212";
export const none = "\u2013";

/** A length or a plain number with so many decimals. */
export function grouped(value: number, decimals: number): string {
  if (!Number.isFinite(value)) return none;
  const [whole = "", fraction] = Math.abs(value).toFixed(decimals).split(".");
  const text = whole.replace(/\B(?=(\d{3})+(?!\d))/g, thin) + (fraction ? `.${fraction}` : "");
  return Number(text.replaceAll(thin, "")) !== 0 && value < 0 ? minus + text : text;
}

/** A number with as many digits as matter. */
export function significant(value: number, digits: number): string {
  if (!Number.isFinite(value)) return none;
  return Math.abs(value) >= 1e5 || (value !== 0 && Math.abs(value) < 1e-4) ? value.toPrecision(digits) : String(Number(value.toPrecision(digits)));
}

export type Axis = "lon" | "lat";

/** A number with a decimal point; NaN for another text. */
export function numberOf(text: string): number {
  return /^[+-]?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?$/i.test(text) ? Number(text) : NaN;
}

/** Angle text with its letter in front, or with blanks or colons between its fields, as the library reads it. */
function joined(given: string): string {
  const text = given.replace(/^([NSEW])\s*(.+)$/i, "$2$1");
  const fields = /^([+-]?)\s*(\d+)[\s:]+([0-5]?\d(?:\.\d+)?)(?:[\s:]+([0-5]?\d(?:\.\d+)?))?\s*([NSEW]?)$/i.exec(text);
  if (!fields) return text;
  const [, before = "", degrees, minutes, seconds, behind = ""] = fields;
  return `${before === "+" ? "" : before}${degrees}d${minutes}'${seconds ? `${seconds}"` : ""}${behind}`;
}

/** Degrees from a number or from angle text; throws what is wrong with it. */
export function degreesOf(angles: Angles, text: string, axis?: Axis): number {
  const plain = text.trim().replace(minus, "-");
  const number = numberOf(plain);
  if (Number.isFinite(number)) return number;
  if (axis && (axis === "lon" ? /[NS]/i : /[EW]/i).test(plain)) throw new Error(`"${plain}" is no ${axis === "lon" ? "longitude" : "latitude"}`);
  return angles.parse(joined(plain));
}

const NUDGE = 1e-12;  // degrees, so that 58.3 is 18 minutes and not 17 and 60 seconds

export class AngleText {
  constructor(private readonly angles: Angles, public form: AngleForm) {}

  /** One coordinate with the letter of its hemisphere; decimals of a degree or, two fewer in effect, of a second. */
  axis(degrees: number, axis: Axis, decimals: number): string {
    if (!Number.isFinite(degrees)) return none;
    if (this.form === "dms") return this.dms(degrees, axis, Math.max(decimals - 4, 1));
    const letter = axis === "lon" ? (degrees < 0 ? "W" : "E") : degrees < 0 ? "S" : "N";
    return `${Math.abs(degrees).toFixed(decimals)}\u00b0${thin}${letter}`;
  }

  dms(degrees: number, axis: Axis, decimals: number): string {
    if (!Number.isFinite(degrees)) return none;
    const units = 3600 * 10 ** decimals;  // rounded here, so that 60 seconds are a minute
    const rounded = Math.sign(degrees) * (Math.round(Math.abs(degrees) * units) / units + NUDGE);
    const text = this.angles.format(rounded, { fields: "dms", decimals, axis, pad: true });
    return text.replace("d", "\u00b0").replace("'", "\u2032").replace('"', "\u2033");
  }

  place([lon, lat]: Place, decimals: number): string {
    return `${this.axis(lon, "lon", decimals)}  ${this.axis(lat, "lat", decimals)}`;
  }

  parse(text: string, axis?: Axis): number {
    return degreesOf(this.angles, text, axis);
  }
}

/** What an error says. */
export function messageOf(error: unknown): string {
  return error instanceof Error ? error.message : String(error);
}
