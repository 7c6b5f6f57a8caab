#!/usr/bin/env node
// Measures the package: points per second each way, and the time of one frame of the world's coasts at 1:110m (the map
// with its edge, land as areas, coasts as lines, graticule) for each projection.
//
//   web/orvex/bench.mjs [frames|points]
import { load } from "./dist/index.js";
import { landPaths } from "./test/land.mjs";

const points = 5_000, rounds = 25;
const what = process.argv[2];

/** The best of a few rounds, milliseconds: what the machine's other work adds is left out. */
function best(work) {
  work();
  let least = Infinity;
  for (let i = 0; i < rounds; i++) {
    const start = performance.now();
    work();
    least = Math.min(least, performance.now() - start);
  }
  return least;
}

const orvex = await load();
const start = performance.now();
await load();
console.log(`load: ${(performance.now() - start).toFixed(0)} ms`);

if (what !== "points") {
  const shapes = orvex.shapes(landPaths());
  console.log("\nmilliseconds of a frame            map     land    coasts  graticule   sum");
  for (const info of orvex.projections.filter((each) => each.drawable)) {
    const projection = orvex.projection(info.id, info.example), map = projection.map();
    const edged = () => {
      const fresh = projection.map();
      fresh.edge();
      fresh.dispose();
    };
    const times = [edged, () => map.fill(shapes), () => map.lines(shapes), () => map.graticule(15)].map(best);
    const sum = times.reduce((a, b) => a + b);
    const [edge, fill, lines, graticule] = times.map((time) => time.toFixed(2).padStart(7));
    console.log(`${info.name.slice(0, 30).padEnd(30)} ${edge}  ${fill}   ${lines}    ${graticule} ${sum.toFixed(2).padStart(7)}`);
  }
}

if (what !== "frames") {
  console.log("\nmillion points a second        forward  inverse  (exact)   forward  inverse  (stated)");
  const room = orvex.points(points);
  for (const info of orvex.projections.filter((each) => each.drawable)) {
    const columns = ["exact", "stated"].flatMap((accuracy) => {
      const projection = orvex.projection(info.id, info.example, { accuracy });
      const lonLat = placesOf(projection), xy = projection.forward(lonLat);
      return [["forward", lonLat], ["inverse", xy]].map(([direction, given]) => {
        const copy = best(() => room.array.set(given));
        return points / 1000 / (best(() => { room.array.set(given); projection[direction](room); }) - copy);
      });
    });
    const [a, b, c, d] = columns.map((rate) => rate.toFixed(1).padStart(8));
    console.log(`${info.name.slice(0, 30).padEnd(30)} ${a} ${b}           ${c} ${d}`);
  }
}

/** Places spread over the domain, the same in each run. */
function placesOf(projection) {
  const places = new Float64Array(2 * points);
  let state = 1;
  const random = () => (state = (state * 16807) % 2147483647) / 2147483647;
  const { lon0 } = projection.parameters;
  for (let i = 0; i < points; ) {
    const near = projection.info.id === 9 || projection.info.id === 10;
    const lon = near ? -98 + 4 * random() : lon0 - 180 + 360 * random(), lat = near ? 30 + 2 * random() : -90 + 180 * random();
    if (projection.info.id !== 14 && !projection.inProjection(lon, lat)) continue;
    places[2 * i] = lon;
    places[2 * i + 1] = lat;
    i++;
  }
  return places;
}
