// What the library and the package refuse.
import type { ParameterKey } from "./types.js";

export class OrvexError extends Error {
  constructor(
    message: string,
    /** Number of the library's message, 20200 to 20281; null for what the package itself refuses. */
    readonly messageId: number | null = null,
    /** The parameter that it is about, where that is known. */
    readonly parameter: ParameterKey | null = null,
  ) {
    super(message);
    this.name = "OrvexError";
  }
}

/** What a caller gave as an array; anything else is refused. */
export function listOf<T>(given: ArrayLike<T>, what: string): ArrayLike<T> {
  if (typeof given !== "object" || typeof given?.length !== "number") throw new OrvexError(`${what} must be an array, not ${String(given)}`);
  return given;
}

/** An array of numbers; null and texts in it would count as 0. */
export function numbersOf(given: ArrayLike<number>, what: string): ArrayLike<number> {
  const list = listOf(given, what);
  if (ArrayBuffer.isView(list)) return list;
  for (let i = 0; i < list.length; ++i) {
    if (typeof list[i] !== "number") throw new OrvexError(`${what} must be numbers; one of them is ${String(list[i])}`);
  }
  return list;
}

/** What a caller gave as a text. */
export function textOf(given: string, what: string): string {
  if (typeof given !== "string") throw new OrvexError(`${what} must be a text, not ${String(given)}`);
  return given;
}

/** What a caller gave as an object of named values. */
export function recordOf<T extends object>(given: T, what: string): T {
  if (typeof given !== "object" || given === null) throw new OrvexError(`${what} must be an object, not ${String(given)}`);
  return given;
}

/** Which parameter a failed check is about: the one whose value it looked at. */
const parameterOfMessage: Readonly<Record<number, ParameterKey>> = {
  20231: "scale", 20232: "k0", 20233: "x0", 20234: "y0", 20235: "lon0", 20236: "lon1", 20237: "lon2", 20238: "lon3",
  20239: "lat0", 20240: "lat1", 20241: "lat2", 20242: "lat3", 20243: "alpha", 20244: "lat1", 20245: "lat2",
  20246: "alpha", 20247: "lat2", 20248: "ellipsoid", 20249: "radius", 20250: "flattening", 20251: "lat0",
  20252: "zone", 20253: "lat2", 20254: "lat1", 20255: "lat1", 20256: "lat2",
};

export function libraryError(message: string, messageId: number): OrvexError {
  return new OrvexError(message, messageId || null, parameterOfMessage[messageId] ?? null);
}
