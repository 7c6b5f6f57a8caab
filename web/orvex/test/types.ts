// Compiled, never run: the package's types as a page uses them.
import { load, OrvexError } from "../dist/index.js";
import type { MapGeometry, Paths, Projection } from "../dist/index.js";

export async function use(): Promise<Paths> {
  const orvex = await load({ wasm: new Uint8Array() });
  const projection: Projection = orvex.projection("Lambert Conformal Conic", { lat1: 33, lat2: 45 }, { accuracy: "stated" });
  const point: [number, number] = projection.forward(-96, 39);
  const array: Float64Array = projection.inverse(orvex.points(4));
  const map: MapGeometry = projection.map({ bounds: [-130, 15, -60, 60] });
  // @ts-expect-error: there is no such parameter
  orvex.projection("Mercator", { latitude: 3 });
  // @ts-expect-error: pairs, not two arrays
  projection.forward(array, array);
  const error = new OrvexError(String(point), 20230, "lat0");
  return error.parameter === "lat0" ? map.graticule(15) : map.fill({ coords: array, starts: new Int32Array([0, 4]) });
}
