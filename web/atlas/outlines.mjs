// Packs the outlines of the world that the project keeps as text into what the page loads: coordinates as numbers of few
// bytes. A file holds the number of rings and then, for each, its number of points and their longitudes and latitudes in
// units of 1/1000 degree, from the second point on as differences, longitude the short way round. Every number is a
// variable-length integer of seven bits a byte, lowest first; signed ones are folded (0, -1, 1, -2 ...).
import { readFileSync } from "node:fs";

const UNITS = 1000;
const TURN = 360 * UNITS;

function shortWay(difference) {
  return ((((difference + TURN / 2) % TURN) + TURN) % TURN) - TURN / 2;
}

class Packer {
  bytes = [];
  unsigned(value) {
    for (; value >= 128; value = Math.floor(value / 128)) this.bytes.push((value % 128) | 128);
    this.bytes.push(value);
  }
  signed(value) {
    this.unsigned(value >= 0 ? 2 * value : -2 * value - 1);
  }
}

/** Blocks "ring N" followed by N lines "longitude latitude". */
export function readBlocks(text) {
  const rings = [];
  for (const line of text.split("\n")) {
    if (line.startsWith("ring")) rings.push([]);
    else if (line && !line.startsWith("#")) rings.at(-1).push(line.split(" ").map((degrees) => Math.round(degrees * UNITS)));
  }
  return rings;
}

/** A ring a line, in the text form that scripts/make-outlines writes. */
export function readLines(text) {
  return text
    .split("\n")
    .filter((line) => line && !line.startsWith("#"))
    .map((line) => {
      const numbers = [];
      let value = 0, shift = 1;
      for (const character of line) {
        const group = character.charCodeAt(0) - 63;
        value += (group & 31) * shift;
        shift *= 32;
        if (group & 32) continue;
        numbers.push(value % 2 ? -(value + 1) / 2 : value / 2);
        value = 0;
        shift = 1;
      }
      const ring = [];
      let x = 0, y = 0;
      for (let i = 0; i < numbers.length; i += 2) ring.push([(x += numbers[i]), (y += numbers[i + 1])]);
      return ring;
    });
}

export function pack(rings) {
  const packer = new Packer();
  packer.unsigned(rings.length);
  for (const ring of rings) {
    packer.unsigned(ring.length);
    let x = 0, y = 0;
    ring.forEach(([lon, lat], i) => {
      packer.signed(i === 0 ? lon : shortWay(lon - x));
      packer.signed(lat - y);
      [x, y] = [lon, lat];
    });
  }
  return Uint8Array.from(packer.bytes);
}

/** The two files: name and bytes. */
export function outlines(root) {
  return [
    ["land110.bin", pack(readBlocks(readFileSync(new URL("examples/world/land.txt", root), "utf8")))],
    ["land50.bin", pack(readLines(readFileSync(new URL("tools/orvex/maps/land50m.txt", root), "utf8")))],
  ];
}
