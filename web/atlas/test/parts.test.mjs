// Parts of the page with the library behind them, but without a browser: maps and their labels, turning, tables and
// GeoJSON, pictures laid over maps, SVG, command lines.
import assert from "node:assert/strict";
import { execFileSync, spawnSync } from "node:child_process";
import { describe, test } from "node:test";

import { source, startEngine, tool } from "./source.mjs";

const names = ["table", "chart", "labels", "scene", "turn", "view", "warp", "surface", "command", "comparepage", "shading", "format", "catalogue", "state"];
const [engine, ...sources] = await Promise.all([startEngine(), ...names.map(source)]);
const [table, { Chart }, { graticuleLabels }, scene, { Turner }, view, warp, { SvgSurface, trace }, command, { circleAbout }, shading, format, { entries }, { initial }] = sources;
const size = { width: 790, height: 830 };
const margins = [46, 34];
const drawn = entries.filter(({ slug }) => engine.info(slug).drawable);

/** Numbers from 0 to 1, the same in every run. */
function numbers(seed) {
  let state = seed;
  return () => (state = (state * 48271) % 2147483647) / 2147483647;
}

/** A chart with the view of an address, and its end. */
function withChart(choice, { at, zoom = 1 }, use) {
  const chart = new Chart(engine, { values: {}, ...choice }, "exact", size);
  try {
    const whole = chart.fitted(size, margins);
    let now = { ...whole, scale: whole.scale * zoom };
    const spot = at && chart.spot(now, size, at);
    if (spot) {
      const [x, y] = view.toMap(now, size, ...spot);
      now = { ...now, x, y };
    }
    chart.suit(now, size);
    return use(chart, now);
  } finally {
    chart.dispose();
  }
}

describe("labels of the graticule", () => {
  for (const zoom of [1, 3, 40]) {
    test(`tell the meridian or parallel that they stand upon, ${zoom}-fold`, () => {
      let checked = 0;
      for (const { slug } of entries) {
        withChart({ slug }, { at: zoom === 1 ? undefined : [14, 49], zoom }, (chart, now) => {
          const step = scene.graticuleStep(chart, now, size.width, undefined);
          const labels = graticuleLabels(chart, chart.graticule(step), step, now, size);
          if (chart.place(now, size, size.width / 2, size.height / 2)) assert.ok(labels.length > 1, `${slug} has ${labels.length} labels`);
          for (const { x, y, text, upon } of labels) {
            assert.ok(x >= 0 && x <= size.width && y >= 0 && y <= size.height, `${slug}: ${text}`);
            const place = upon && chart.place(now, size, x, y);
            if (!place) continue;
            const degrees = parseFloat(text) * (/[WS]/.test(text) ? -1 : 1);
            const off = Math.min(/[NS]/.test(text) ? Infinity : Math.abs(view.wrapped(place[0] - degrees)), /[EW]/.test(text) ? Infinity : Math.abs(place[1] - degrees));
            assert.ok(off < step / 2, `${slug}: ${text} stands at ${place}`);
            ++checked;
          }
          const texts = new Set(labels.map(({ text, x, y }) => `${text} ${Math.round(x / 40)} ${Math.round(y / 16)}`));
          assert.equal(texts.size, labels.length, `${slug} has a label twice`);
        });
      }
      assert.ok(checked > (zoom === 1 ? 10 : 50), `${checked}`);
    });
  }
});

test("turning brings the place under the pointer nearer to it, and within what the library takes", () => {
  const random = numbers(7);
  for (const { slug, turn } of drawn.filter((entry) => entry.turn !== "none")) {
    const oblique = turn === "lat0" || turn === "lat1";
    withChart({ slug, values: oblique ? { lon0: 10, [turn]: 20 } : {} }, {}, (chart, now) => {
      for (let i = 0; i < 40; ++i) {
        const from = [size.width * (0.2 + 0.6 * random()), size.height * (0.3 + 0.4 * random())];
        const to = [from[0] + 24 * (random() - 0.5), from[1] + 24 * (random() - 0.5)];
        const place = chart.place(now, size, ...from);
        const turner = new Turner(engine, chart.choice, turn, chart.degreesInPixel(now));
        assert.ok(turner.turns, slug);
        const values = turner.follow(chart.projection, now, size, from, to);
        assert.ok(Object.entries(values).every(([key, value]) => typeof value !== "number" || (Number.isFinite(value) && Math.abs(value) <= (/^lat/.test(key) ? 90 : 180) + 1e9 * !/^(lat|lon)/.test(key))), `${slug} ${JSON.stringify(values)}`);
        const meridian = Number(engine.values(chart.choice).lon0 ?? 0);
        if (!place || Math.abs(view.wrapped(place[0] - meridian)) > 150) continue;  // it would jump over the cut
        const after = new Chart(engine, { slug, values }, "exact", size);
        const spot = after.spot(now, size, place);
        after.dispose();
        if (!spot) continue;
        const left = Math.hypot(spot[0] - to[0], spot[1] - to[1]);
        assert.ok(left <= Math.hypot(to[0] - from[0], to[1] - from[1]) + 1, `${slug}: ${place} from ${from} to ${to} came to ${spot}`);
        const central = Math.hypot(from[0] - size.width / 2, from[1] - size.height / 2) < size.width / 5;
        if (oblique && central) assert.ok(left < 1, `${slug}: ${place} should be at ${to} and is at ${spot}`);
      }
    });
  }
});

test("a place is where it shows, on the map and nowhere beyond its edge", () => {
  const random = numbers(3);
  for (const { slug } of entries) {
    for (const zoom of [1, 6]) {
      withChart({ slug }, { at: [10, 40], zoom }, (chart, now) => {
        let on = 0;
        for (let i = 0; i < 300; ++i) {
          const [px, py] = [size.width * random(), size.height * random()];
          const place = chart.place(now, size, px, py);
          if (!place) continue;
          ++on;
          assert.ok(Math.abs(place[0]) <= 180 && Math.abs(place[1]) <= 90, `${slug} ${place}`);
          const spot = chart.spot(now, size, place);
          assert.ok(Math.hypot(spot[0] - px, spot[1] - py) <= 1, `${slug}: ${place}`);
          if (chart.drawn.bounds) continue;  // the part in sight may reach beyond the whole
          const { minX, minY, maxX, maxY } = chart.box;
          const [x, y] = view.toMap(now, size, px, py);
          const slack = 2 / now.scale;
          assert.ok(x >= minX - slack && x <= maxX + slack && y >= minY - slack && y <= maxY + slack, slug);
        }
        assert.ok(on > 20, `${slug} ${zoom}: ${on}`);
        const bounds = chart.inSight(now, size);
        if (bounds) assert.ok(bounds[0] <= bounds[2] && bounds[1] <= bounds[3] && bounds[2] - bounds[0] <= 360, `${slug} ${bounds}`);
      });
    }
  }
});

test("the circle about the pointer has one radius on the globe", () => {
  const radians = Math.PI / 180;
  for (const [place, arc] of [[[0, 0], 10], [[13, 52], 0.001], [[179.9, -60], 5], [[20, 90], 3], [[-70, -89.5], 15]]) {
    const { coords, starts } = circleAbout(place, arc);
    assert.deepEqual([...starts], [0, coords.length / 2]);
    assert.ok(Math.hypot(coords[0] - coords.at(-2), coords[1] - coords.at(-1)) < 1e-9, "closed");
    for (let i = 0; i < coords.length; i += 2) {
      const [lat, other, turn] = [coords[i + 1] * radians, place[1] * radians, (coords[i] - place[0]) * radians];
      const half = Math.sin((lat - other) / 2) ** 2 + Math.cos(lat) * Math.cos(other) * Math.sin(turn / 2) ** 2;
      assert.ok(Math.abs((2 * Math.asin(Math.sqrt(half))) / radians - arc) < 1e-6, `${place}: ${coords.slice(i, i + 2)}`);
    }
  }
});

test("every triangle of a warped picture lies where the fit has its corners", () => {
  const [width, height] = [640, 480];
  const fit = (coords) => coords.map((value, i) => (i % 2 === 0 ? value * 3 + coords[i + 1] * 0.5 + 100 : value * 2 - 50));
  const mesh = warp.meshOf(width, height, fit);
  const now = { x: 700, y: -500, scale: 0.25 };
  const drawnTriangles = [];
  let transform;
  const context = new Proxy({}, { get: (_, name) => (name === "transform" ? (...parts) => (transform = parts) : name === "drawImage" ? () => drawnTriangles.push(transform) : () => undefined) });
  warp.drawMesh(context, {}, mesh, now, size);
  assert.equal(drawnTriangles.length, 800);
  for (const [a, b, c, d, e, f] of drawnTriangles) {
    for (const [u, v] of [[0, 0], [width, 0], [17, 333]]) {
      const [x, y] = fit([u, -v]);
      const [px, py] = view.toPixels(now, size, x, y);
      assert.ok(Math.hypot(a * u + c * v + e - px, b * u + d * v + f - py) < 1e-6, `${u} ${v}`);
    }
  }
  mesh.coords.fill(NaN, 0, 2);
  drawnTriangles.length = 0;
  warp.drawMesh(context, {}, mesh, now, size);
  assert.equal(drawnTriangles.length, 799, "a corner that the fit does not reach takes its triangle away, no other");
});

describe("surfaces", () => {
  const pen = () => {
    const lines = [];
    return { lines, moveTo: (x, y) => lines.push([[x, y]]), lineTo: (x, y) => lines.at(-1).push([x, y]) };
  };
  const shapes = (...rings) => ({ coords: Float64Array.from(rings.flat(2)), starts: Int32Array.from([0, ...rings.map((_, i) => rings.slice(0, i + 1).flat().length)]) });
  const now = { x: 0, y: 0, scale: 1 };
  test("leave out what is off the picture, never what surrounds it", () => {
    const around = [[-1e4, -1e4], [1e4, -1e4], [1e4, 1e4], [-1e4, 1e4]];
    const off = [[1e3, 0], [2e3, 0], [2e3, 5]];
    const across = [[-1e4, 10], [1e4, 10]];
    for (const [rings, count] of [[[around], 1], [[off], 0], [[across], 1], [[off, around, off, across], 2], [[[[0, 0]]], 0], [[], 0]]) {
      const drawing = pen();
      trace(shapes(...rings), now, size, drawing, true);
      assert.equal(drawing.lines.length, count, JSON.stringify(rings));
    }
  });
  test("keep the last point however near, and close what is closed", () => {
    const drawing = pen();
    trace(shapes([[0, 0], [100, 0], [100.1, 0], [100.2, 0.05]]), now, size, drawing, true);
    assert.deepEqual(drawing.lines[0].map((spot) => spot.map((part) => Number(part.toFixed(2)))), [[395, 415], [495, 415], [495.2, 414.95], [395, 415]]);
  });
  test("SVG holds any text", () => {
    const surface = new SvgSurface(size, now);
    surface.text(1, 2, `<&"'>]]>`, { color: "#000", size: 11, halo: "#fff" });
    surface.arrow(0, 0, 0, 0, { color: "#000", width: 1 });
    const text = surface.finish(`A & B <"C">`, "--set x=\"1\" & more");
    assert.match(text, /<title>A &amp; B &lt;&quot;C&quot;&gt;<\/title>\n<desc>--set x=&quot;1&quot; &amp; more<\/desc>/);
    assert.match(text, />&lt;&amp;&quot;'&gt;\]\]&gt;<\/text>/);
    assert.doesNotMatch(text, /NaN|undefined|<path/);
  });
});

test("colours of a distortion run from end to end, with none in the middle", () => {
  for (const { ticks, part } of Object.values(shading.scales)) {
    const parts = ticks.map(part);
    assert.ok(Math.abs(parts[0]) < 1e-12 && Math.abs(parts.at(-1) - 1) < 1e-12 && parts.every((it, i) => i === 0 || it > parts[i - 1]));
    if (ticks.includes(1)) assert.equal(part(1), 0.5);
  }
  const light = (part) => shading.colorAt(part).reduce((sum, it, i) => sum + it * [0.21, 0.72, 0.07][i], 0);
  for (let i = 1; i <= 40; ++i) assert.ok(light(i / 40) > light((i - 1) / 40), `${i}`);
  for (const part of [-1, 2, Infinity, -Infinity]) assert.ok(shading.colorAt(part).every((it) => it >= 0 && it <= 255));
});

test("angles are read and written in every form", () => {
  const { degreesOf, AngleText } = format;
  const { angle } = engine.orvex;
  for (const [text, axis, expected] of [["12.5", "lon", 12.5], [" -12.5 ", "lat", -12.5], ["\u22125", "lon", -5], ["13 24 36 W", "lon", -13.41], ["W13 24 36", "lon", -13.41], ["52:31:12", "lat", 52.52],
    ["-0 30", "lon", -0.5], ["13d24.5'", "lon", 13 + 24.5 / 60], ["13\u00b024\u203236\u2033E", "lon", 13.41], ["1e1", "lon", 10]]) {
    assert.ok(Math.abs(degreesOf(angle, text, axis) - expected) < 1e-12, text);
  }
  for (const [text, axis] of [["13N", "lon"], ["13E", "lat"], ["", "lon"], ["north", "lat"], ["13 75", "lon"], ["0x10", "lon"], ["1,5", "lon"], ["--5", "lon"], ["Infinity", "lon"]]) {
    assert.throws(() => degreesOf(angle, text, axis), undefined, text);
  }
  const text = new AngleText(angle, "dms");
  assert.deepEqual([text.axis(58.3, "lat", 4), text.axis(-0.99999999, "lon", 4), text.axis(NaN, "lon", 4)], ["58\u00b018\u203200.0\u2033N", "1\u00b000\u203200.0\u2033W", "\u2013"]);
  assert.equal(new AngleText(angle, "degrees").place([-13.4, 52.5], 1), "13.4\u00b0\u202fW  52.5\u00b0\u202fN");
});

describe("tables", () => {
  const state = { ...initial(), slug: "utm", values: { lon0: 15 } };
  const job = (kind, columns) => ({ kind, choice: state, accuracy: "exact", from: state.from, to: state.to, columns });
  /** What the page writes, and what the tool is told to do the same. */
  const convert = async (kind, text, chosen) => {
    const read = table.read("t.csv", text, engine.orvex);
    const { guess, decimalComma } = read.summary();
    const columns = chosen ?? guess ?? [0, 1];
    const outcome = read.convert(engine, job(kind, columns), () => undefined);
    return { ...outcome, columns, text: await outcome.file.text(), options: [...columns.flatMap((column, i) => [i === 0 ? "--x" : "--y", `${column + 1}`]), ...(decimalComma ? ["--decimal-comma"] : [])] };
  };
  const forms = [
    ["lon,lat\n13,52\n"], ["lon;lat;n\n13,5;52,5;a\n14;53;b\n"], ["lon|lat\n13|52\n"], ["name\tlon\tlat\nA B\t13\t52\n"], ["13 52 note\n14 53 other\n"], ["lon,lat\r\n13,52\r\n"],
    ['n,lon,lat\n"#12",13,52\nx,14,53\n'], ["#a comment, with commas\n13,52\n#inside, \"and\n14,53\n"], ['#note,"open\n13,52\n'], ["  # x\nlon,lat\n13,52\n# y \"z\n14,53\n"],
    ['"a,b,c;d";13;52\n"e;f";14;53\n', [1, 2]], ['a,lon,lat\n"x ""y"", z",13,52\n"5"" pipe",13,52\n"""",13,52\n'],
    ["E13.5,N52.5\nE14,N53\n"], ['"E 13.5" "N 52.5"\n'], ["lon_old,lat_old,lon,lat\n1,2,13,52\n"], ["x1,y1,easting,northing\n1,2,13,52\n"], ["Easting (m),Northing (m)\n13,52\n"], ["lon (deg),lat (deg)\n13,52\n"],
    ["lat,lon\n95,13\n52,13\n"], ["lon,lat\n190,52\n-190,52\n540,10\n"], ["lon,lat\n1e1,5e1\n+13,+52\n.5,5.\n"], ["lon,lat\n13N,52E\nnan,1\ninf,2\nInfinity,2\n,\n"], ["lon,lat\n13w,52s\n 13 , 52 \n"],
    ["lat,lon,n\n52,13,a\n53,14,b,c\n"], ["lon;lat\n13.5;52,5\n"], ["lon\tlat\n13\t52\t\n14\t53\n"], ['lon,lat\n"13,405","52,52"\n'],
  ];
  test("come out as the tool writes them", { skip: tool ? false : "the tool is not built" }, async () => {
    for (const [text, columns] of forms) {
      for (const [kind, arguments_] of [["forward", ["--utm", "33N"]], ["mgrs", ["--mgrs"]]]) {
        const { text: here, options, converted, columns: used } = await convert(kind, text, columns);
        const { stdout } = spawnSync(tool, ["project", ...arguments_, "--keep", ...options], { input: text, encoding: "utf8" });
        // the page writes quotes only where they are needed
        assert.equal(here.replaceAll('"', ""), stdout.replaceAll('"', ""), text);
        assert.equal((await convert(kind, here, used)).converted, converted, `read again: ${text}`);
      }
    }
  });
  test("are converted each way, and back", async () => {
    const text = "lon,lat\n13.405,52.52\n16.3738,48.2082\n";
    const there = await convert("forward", text);
    const back = await convert("inverse", there.text, [2, 3]);
    assert.deepEqual(back.rows.map((row) => row.slice(-2).map((degrees) => Number(degrees).toFixed(8))), [["13.40500000", "52.52000000"], ["16.37380000", "48.20820000"]]);
    assert.deepEqual(back.header, ["lon", "lat", "x", "y", "lon_out", "lat_out"]);
    assert.deepEqual((await convert("utm", "lon,lat\n13.4,52.5\n0,-89\nx,1\n")).rows.map((row) => row[2]), ["33N", "UPSS", ""]);
    assert.equal((await convert("shift", text)).rows[0].length, 4);
    assert.throws(() => table.read("t.csv", text, engine.orvex).convert(engine, job("forward", [1, 1]), () => undefined), /the same one/);
  });
});

describe("GeoJSON", () => {
  const geometries = [
    { type: "Point", coordinates: [13, 52, 34] }, { type: "MultiPoint", coordinates: [[13, 52], [14, 53]] }, { type: "LineString", coordinates: [[13, 52], [14, 53]] },
    { type: "MultiLineString", coordinates: [[[13, 52], [14, 53]], []] }, { type: "Polygon", coordinates: [[[13, 52], [14, 52], [14, 53], [13, 52]]] },
    { type: "MultiPolygon", coordinates: [[[[13, 52], [14, 52], [14, 53], [13, 52]]], []] }, { type: "Point", coordinates: [] }, null,
    { type: "GeometryCollection", geometries: [{ type: "Point", coordinates: [13, 52] }, { type: "GeometryCollection", geometries: [] }] },
    { type: "LineString", coordinates: [[13, 52], [13, 95]] },
  ];
  const collection = { type: "FeatureCollection", bbox: [13, 52, 14, 53], features: geometries.map((geometry, id) => ({ type: "Feature", id, properties: { bbox: "stays", n: [1.5, null] }, geometry })) };
  const job = { kind: "forward", choice: { slug: "utm", values: { lon0: 15 } }, accuracy: "exact", columns: [0, 1] };
  test("keeps all but the coordinates, as often as it is converted", async () => {
    const read = table.read("a.json", JSON.stringify(collection), engine.orvex);
    for (let i = 0; i < 2; ++i) {
      const outcome = read.convert(engine, job, () => undefined);
      assert.deepEqual([outcome.converted, outcome.failed], [17, 1]);
      const { features, bbox } = JSON.parse(await outcome.file.text());
      assert.equal(bbox, undefined);
      features.forEach(({ geometry, ...others }, id) => {
        assert.deepEqual(others, { type: "Feature", id, properties: collection.features[id].properties });
        assert.equal(geometry?.type, geometries[id]?.type);
      });
      assert.ok(Math.hypot(features[0].geometry.coordinates[0] - 362705.6341, features[0].geometry.coordinates[1] - 5762926.8129) < 1e-3);
      assert.equal(features[0].geometry.coordinates[2], 34);
      assert.deepEqual([features[6].geometry.coordinates, features[9].geometry.coordinates, features[8].geometry.geometries[1]], [[], [], { type: "GeometryCollection", geometries: [] }]);
    }
    const { own, count } = read.summary();
    assert.deepEqual([count, own.points.length, own.lines.starts.length - 1, own.areas.starts.length - 1], [9, 4, 2, 2]);
    assert.throws(() => read.convert(engine, { ...job, kind: "mgrs" }, () => undefined), /for tables/);
  });
  test("that is damaged is refused by what is wrong with it", () => {
    for (const [value, message] of [["{", /is not GeoJSON/], ["[]", /it is no object/], ['{"type":"Feature","geometry":null}', /no geometry/], ['{"type":"FeatureCollection"}', /without features/],
      ['{"type":"FeatureCollection","features":[1]}', /no object/], ['{"type":"Point","coordinates":[1]}', /damaged/], ['{"type":"Polygon","coordinates":[[1,2]]}', /damaged/], ['{"type":"toString"}', /unknown type/]]) {
      assert.throws(() => table.read("a.json", value, engine.orvex), message, value);
    }
  });
});

describe("command lines", () => {
  test("hand any name over as it is", () => {
    for (const name of ["plain.csv", "two words.csv", `we"ird $(x) \`y\` \\z $HOME.csv`, "it's", "a;b&c|d", "*"]) {
      const line = command.tableCommand(engine, { ...initial(), slug: "merc" }, "mgrs", name, { columns: [`${name} x`, "y"], decimalComma: true });
      const given = execFileSync("sh", ["-c", `orvex() { printf '%s\\n' "$@"; }\n${line}`], { encoding: "utf8" }).trimEnd().split("\n");
      assert.deepEqual(given, ["project", "--mgrs", "--x", `${name} x`, "--y", "y", "--keep", "--decimal-comma", name]);
    }
  });
  test("say what the page shows", () => {
    const project = (slug, values, place, stated = false) => command.projectCommand(engine, { slug, values }, stated, place);
    for (const [line, expected] of [
      [project("utm", { lon0: -99, south: true }, [-97.75, -30.25]), "orvex project --utm 14S -- -97.75 -30.25"],
      [project("utm", { lon0: 177 }), "orvex project --utm 60N"], [project("utm", { lon0: -177 }), "orvex project --utm 1N"],
      [project("tmerc", { k0: 0, scale: 0 }, [1, 2]), 'orvex project --proj "Transverse Mercator" --set lon0=15 1 2'],
      [project("spcs83", { zone: "Texas Central" }, undefined, true), 'orvex project --stateplane83 "Texas Central" --stated'],
      [project("moll", { radius: 1, flattening: 0 }), "orvex project --proj Mollweide --set radius=1 --set flattening=0"],
      [command.mapCommand(engine, { ...initial(), slug: "merc", tissot: true }, { bounds: [170, -10, 190, 1e-7], graticule: 5, tissot: 2 }), "orvex map --proj Mercator --bounds 170,-10,-170,0 --graticule 5 --tissot 2 -o merc.svg"],
      [command.datumCommand({ ...initial(), from: "Tokyo - Okinawa", point: [-1e-10, 5] }), 'orvex datum --from "Tokyo - Okinawa" --to "World Geodetic System 1984" -- 0 5'],
    ]) assert.equal(line, expected);
  });
});
