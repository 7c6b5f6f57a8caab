// The world's land at 1:110m from the file that the command-line host has it from.
import { readFileSync } from "node:fs";

const file = new URL("../../../examples/world/land.txt", import.meta.url);

/** Its rings as flat coordinates and starts. */
export function landPaths() {
  const coords = [], starts = [0];
  for (const line of readFileSync(file, "utf8").split("\n")) {
    const [x, y] = line.split(" ");
    if (line.startsWith("#") || line === "") continue;
    if (x !== "ring") coords.push(Number(x), Number(y));
    else if (coords.length > 0) starts.push(coords.length / 2);
  }
  starts.push(coords.length / 2);
  return { coords: Float64Array.from(coords), starts: Int32Array.from(starts) };
}
