// Parameters that make a valid and telling map of each projection: what it cannot do without, by its number.
import type { Params } from "./types.js";

export const examples: Readonly<Record<number, Params>> = {
  2: { lat1: 29.5, lat2: 45.5, lat0: 23, lon0: -96 },  // Albers Equal Area Conic
  4: { lon0: 15 },  // Universal Transverse Mercator: zone 33
  5: { lat1: 33, lat2: 45, lat0: 39, lon0: -96 },  // Lambert Conformal Conic
  6: { lat0: 90 },  // Stereographic
  7: { lat0: 30, lon0: 20 },  // Orthographic
  9: { zone: "Texas Central" },
  10: { zone: "Texas Central" },
  12: { lat0: 40, lat1: 56, lon1: -3, lat2: -15, lon2: 47, k0: 1, rotate: true, uoffset: true },  // Hotine
  16: { lat0: 20, lon0: 10 },  // Cassini
  17: { lon0: 15 },  // Transverse Mercator
  18: { lon0: 9 },  // Gauss-Kruger
  20: { lat1: 52, lon0: 10 },  // Lambert Azimuthal Equal Area
  21: { lat1: 45, lon0: 10 },  // Bonne
  25: { lat1: 40.6, lon1: -73.8, lat2: 35.5, lon2: 139.8 },  // Oblique Mercator: New York to Tokyo
  26: { lat1: 20, lat2: 60, lat0: 40, lon0: 60 },  // Equidistant Conic
  27: { lat1: 45, lon0: -40 },  // Gnomonic
  28: { lat1: 90 },  // Azimuthal Equidistant
};
