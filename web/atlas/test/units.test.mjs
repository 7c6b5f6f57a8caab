// What needs no browser: addresses, views, outlines, the order of distances.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { test } from "node:test";

import { outlines, readBlocks } from "../outlines.mjs";
import { source } from "./source.mjs";

const [state, view, land, catalogue, format] = await Promise.all(["state", "view", "outlines", "catalogue", "format"].map(source));
const known = { parameter: (slug, key) => ["lat1", "lat2", "lon0", "zone", "south"].includes(key), datum: (name) => name !== "Nowhere" };

test("an address says what it was made from", () => {
  const rows = [
    {}, { slug: "lcc", values: { lat1: 33, lat2: 45.25, lon0: -96 } }, { slug: "utm", values: { lon0: 9, south: true } },
    { slug: "spcs83", values: { zone: "Illinois West" } }, { at: [-96, 38.5], zoom: 4 }, { point: [13.405123456, -52.52] },
    { tab: "table", graticule: 0, tissot: true, shading: "angle" }, { graticule: 10 }, { beside: "laea", besideValues: { lat1: 45 }, besideStand: { at: [9, 45], zoom: 2.5 } },
    { mid: [0.015, 0.98], zoom: 2 }, { mid: [0, 0.123456789], zoom: 400, beside: "laea", besideStand: { mid: [1, 0], zoom: 0.5 } },
    { from: "Ain El Abd 1970 - Bahrain, Island", to: "A; B=C & 50%" }, { angles: "dms", stated: true },
  ];
  for (const row of rows) {
    const whole = { ...state.initial(), ...row };
    const [read, wrong] = state.fromAddress(`#${state.toAddress(whole)}`, known);
    assert.deepEqual(wrong, []);
    assert.deepEqual(read, whole);
  }
  assert.equal(state.toAddress({ ...state.initial(), slug: "lcc", values: { lat1: 33, lat2: 45 }, at: [-96, 38], zoom: 4 }), "lcc;lat1=33;lat2=45;at=-96,38;zoom=4");
});

test("an address that cannot be read harms nothing else", () => {
  for (const part of ["at=1", "at=1,2,3", "at=,", "at=x,y", "at=0,91", "zoom=0", "zoom=-1", "zoom=x", "zoom=Infinity", "tab=none", "color=red", "grid=-1", "grid=100", "with=none", "angles=rad", "tissot=foo", "stated=bar", "from=Nowhere", "zoom=1e308", "with.zoom=0", "with.at=x", "mid=1", "mid=0.5,1.1", "mid=-0.1,0", "with.mid=x,0", "foo=1", "=", "%", "from=%E0%A4"]) {
    const [read, wrong] = state.fromAddress(`#moll;${part};lon0=150`, known);
    assert.deepEqual(wrong, [part]);
    assert.deepEqual([read.slug, read.values.lon0], ["moll", 150]);
  }
  assert.deepEqual(state.fromAddress("#moll;p=500,10;at=-190,20", known)[0], { ...state.initial(), slug: "moll", point: [140, 10], at: [170, 20] });
  assert.deepEqual(state.fromAddress("#nonsense", known)[1], ["nonsense"]);
});

test("views: what is under a pixel stays there, and a whole map fits", () => {
  const size = { width: 811, height: 607 };
  const box = { minX: -2e7, minY: -9e6, maxX: 1.5e7, maxY: 8e6 };
  const whole = view.fit(box, size, [46, 34]);
  for (const [x, y] of [[box.minX, box.minY], [box.maxX, box.maxY]]) {
    const [px, py] = view.toPixels(whole, size, x, y);
    assert.ok(px >= 45.9 && px <= size.width - 45.9 && py >= 33.9 && py <= size.height - 33.9);
  }
  const near = view.zoomAbout(whole, size, 123, 456, 17);
  const [before, after] = [view.toMap(whole, size, 123, 456), view.toMap(near, size, 123, 456)];
  assert.ok(Math.hypot(before[0] - after[0], before[1] - after[1]) < 1e-6);
  const moved = view.put(near, size, 5e5, -7e5, 40, 50);
  assert.ok(view.toPixels(moved, size, 5e5, -7e5).every((pixel, i) => Math.abs(pixel - [40, 50][i]) < 1e-6));
  for (const [degrees, expected] of [[0, 0], [180, 180], [-180, -180], [190, -170], [-190, 170], [540, 180], [359.5, -0.5]]) assert.ok(Math.abs(view.wrapped(degrees) - expected) < 1e-9, `${degrees}`);
});

test("packed outlines are the outlines, to a thousandth of a degree", () => {
  const root = new URL("../../../", import.meta.url);
  const text = readFileSync(new URL("examples/world/land.txt", root), "utf8");
  const rings = text.split(/^ring \d+$/m).slice(1).map((block) => block.trim().split("\n").map((line) => line.split(" ").map(Number)));
  const [[, coarse], [, fine]] = outlines(root);
  const { coords, starts } = land.unpack(coarse);
  assert.equal(starts.length - 1, rings.length);
  rings.forEach((ring, i) => ring.forEach(([lon, lat], j) => {
    const at = 2 * (starts[i] + j);
    assert.ok(Math.abs(view.wrapped(coords[at] - lon)) <= 0.000501 && Math.abs(coords[at + 1] - lat) <= 0.000501, `ring ${i}, point ${j}`);
    if (j > 0) assert.ok(Math.abs(coords[at] - coords[at - 2]) <= 180, "neighbours are joined the short way round");
  }));
  assert.equal(readBlocks(text).length, rings.length);
  const detailed = land.unpack(fine);
  assert.equal(detailed.starts.length - 1, 1421);
  assert.ok(detailed.coords.every(Number.isFinite));
  assert.throws(() => land.unpack(fine.subarray(0, 5000)), /incomplete/);
});

test("projections: 29, each with an address and a name of its own", () => {
  const { entries, search } = catalogue;
  assert.equal(entries.length, 29);
  assert.equal(new Set(entries.map(({ slug }) => slug)).size, 29);
  assert.equal(new Set(entries.map(({ name }) => name)).size, 29);
  assert.ok(entries.every(({ slug, says }) => /^[a-z][a-z0-9]{1,7}$/.test(slug) && says.endsWith(".")));
  assert.deepEqual(search("state plane").map(({ slug }) => slug), ["spcs27", "spcs83"]);
});

test("numbers are grouped and keep their sign", () => {
  const space = "\u202f";
  for (const [value, decimals, text] of [[1234567.891, 2, `1${space}234${space}567.89`], [-999, 0, "\u2212999"], [-0.00001, 3, "0.000"], [NaN, 2, "\u2013"], [-1000.5, 1, `\u22121${space}000.5`]]) {
    assert.equal(format.grouped(value, decimals), text);
  }
});
