// The land of the world as rings of longitude and latitude, unpacked from the form that outlines.mjs packs.

/** Rings or lines one behind the other: x and y by turns, and where each begins; the last entry is the end. */
export interface Shapes {
  coords: Float64Array;
  starts: Int32Array;
}

const UNITS = 1000;

export function unpack(bytes: Uint8Array): Shapes {
  let at = 0;
  const unsigned = () => {
    let value = 0;
    for (let shift = 0; ; shift += 7) {
      const byte = bytes[at++];
      if (byte === undefined) throw new Error("the outlines are incomplete");
      value |= (byte & 127) << shift;
      if (byte < 128) return value;
    }
  };
  const signed = () => {
    const value = unsigned();
    return (value >>> 1) ^ -(value & 1);
  };
  const rings = unsigned();
  const starts = new Int32Array(rings + 1);
  const coords: number[] = [];
  for (let ring = 0; ring < rings; ++ring) {
    let lon = 0;
    let lat = 0;
    for (let left = unsigned(); left > 0; --left) {
      lon += signed();
      lat += signed();
      coords.push(lon / UNITS, lat / UNITS);
    }
    starts[ring + 1] = coords.length / 2;
  }
  return { coords: Float64Array.from(coords), starts };
}

export async function fetchOutlines(name: string, base: string | URL = document.baseURI): Promise<Shapes> {
  const response = await fetch(new URL(name, base));
  if (!response.ok) throw new Error(`${name} could not be loaded (${response.status})`);
  return unpack(new Uint8Array(await response.arrayBuffer()));
}

/** Arrays of places as shapes. */
export function shapesOf(lines: readonly (readonly (readonly [number, number])[])[]): Shapes {
  const starts = new Int32Array(lines.length + 1);
  lines.forEach((line, i) => (starts[i + 1] = starts[i]! + line.length));
  const coords = new Float64Array(2 * starts[lines.length]!);
  let at = 0;
  for (const line of lines) {
    for (const [x, y] of line) {
      coords[at++] = x;
      coords[at++] = y;
    }
  }
  return { coords, starts };
}
