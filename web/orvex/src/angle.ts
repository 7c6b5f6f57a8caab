// Angles as text.
import { OrvexError, recordOf, textOf } from "./errors.js";
import type { Module } from "./module.js";
import type { AngleFormat, Angles } from "./types.js";

/** Bits of the library's format word; the low four are the number of decimals. */
const decimalDegrees = 0x10, minusSign = 0x20, decimalMinutes = 0x100, spaced = 0x200, hemisphere = 0x1000, latitude = 0x2000,
  zeroPad = 0x4000;
const fieldBits = { d: decimalDegrees, dm: decimalMinutes, dms: 0 } as const;

/** The number of a character of one byte. */
function byteOf(character: string | undefined): number {
  const code = character?.charCodeAt(0) ?? 0;
  if (code > 127) throw new OrvexError(`"${character}" is not a character of ASCII`);
  return code;
}

export function makeAngles(module: Module): Angles {
  return {
    parse(text: string, degreeSign = ""): number {
      // The typographic signs are taken for those that the library knows.
      const plain = textOf(text, "an angle").replace(/[\u00b0\u00ba]/g, "d").replace(/[\u2032\u2019]/g, "'").replace(/[\u2033\u201d]/g, '"');
      return module.withText(plain, (at) => module.withDoubles([0], (degrees) => {
        module.run("angle_parse", at, byteOf(textOf(degreeSign, "the degree sign")), degrees);
        return module.doubles(degrees, 1)[0]!;
      }));
    },
    format(degrees: number, options: AngleFormat = {}): string {
      const { fields = "dms", decimals = 4, axis, pad = false, blanks = false, separators = "d'\"" } = recordOf(options, "options");
      if (!(fields in fieldBits)) throw new OrvexError(`fields are "d", "dm" or "dms", not ${String(fields)}`);
      if (axis !== undefined && axis !== "lon" && axis !== "lat") throw new OrvexError(`axis is "lon" or "lat", not ${String(axis)}`);
      if (!Number.isInteger(decimals) || decimals < 0 || decimals > 15) throw new OrvexError("decimals are 0 to 15");
      if (!Number.isFinite(degrees)) throw new OrvexError(`${String(degrees)} is not an angle`);
      const sign = axis === undefined ? minusSign : hemisphere | (axis === "lat" ? latitude : 0);
      const word = decimals | fieldBits[fields] | sign | (pad ? zeroPad : 0) | (blanks ? spaced : 0);
      const [d, m, s] = [0, 1, 2].map((i) => byteOf(textOf(separators, "separators")[i]));
      return module.text("angle_format", degrees, word, d!, m!, s!);
    },
  };
}
