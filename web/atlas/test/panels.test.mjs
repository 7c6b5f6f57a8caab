// The panels in a real browser: a point in every system, two maps, distortion, tables and shapes, georeferencing.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { after, afterEach, before, describe, test } from "node:test";

import { drop, hashOf, settled, Site } from "./page.mjs";

let site;
before(async () => (site = await Site.start()));
afterEach(() => site.close());
after(() => site.stop());

const plain = (text) => text.replaceAll("\u202f", "").replaceAll("\u2212", "-").replace(/\s+/g, " ").trim();
const row = async (page, name) => plain(await page.locator(`.results .row:has(dt:text-is("${name}")) dd`).first().textContent());
const status = (page, tab) => page.locator(`#page-${tab} .note[role=status]`).first();

/** A NADCON file of 25 by 13 nodes about the middle of Texas, each with the same seconds of arc. */
function nadconFile(seconds) {
  const columns = 25, rows = 13, record = 4 * (columns + 1);
  const view = new DataView(new ArrayBuffer(record * (rows + 1)));
  [columns, rows, 1].forEach((count, i) => view.setInt32(64 + 4 * i, count, true));
  [-101, 0.25, 29, 0.25, 0].forEach((degrees, i) => view.setFloat32(76 + 4 * i, degrees, true));
  for (let row = 1; row <= rows; ++row) {
    for (let column = 1; column <= columns; ++column) view.setFloat32(row * record + 4 * column, seconds, true);
  }
  return new Uint8Array(view.buffer);
}

describe("a point", () => {
  // Coordinates from docs/tool.md and, for Berlin, from the README.
  test("in every system", async () => {
    const page = await site.open("#utm;lon0=15;p=13.405,52.52");
    assert.equal(await row(page, "Degrees"), "13.405000000 52.520000000");
    assert.match(await row(page, "DMS"), /^13.24.18\.0000.E 52.31.12\.0000.N$/);
    assert.equal(await row(page, "x, y"), "391779.2593 5820072.1592");
    assert.equal(await row(page, "UTM 33N"), "391779.2593 5820072.1592");
    assert.equal(await row(page, "MGRS"), "33U UU 91779 20072");
    assert.equal(await row(page, "State plane 1983"), "\u2013");
  });
  test("in a state plane zone, and beside two of them", async () => {
    const page = await site.open("#robster;p=-100.9,31.2");
    assert.equal(await row(page, "State plane 1983"), "Texas Central 646000.4946 3170115.7919");
    const other = await site.open("#robster;p=-90.5,39.8");
    assert.match(await row(other, "State plane 1983"), /Illinois West or Missouri East/);
  });
  test("on another datum, with the shift", async () => {
    const page = await site.open("#robster;p=-95.25,38.75;from=NAD+1927+-+CONUS;to=World+Geodetic+System+1984");
    assert.match(await row(page, "Position"), /^95\.250260048.W 38\.750039848.N$/);
    const metres = Number(/^([\d.]+) m/.exec(await row(page, "Shift"))[1]);
    assert.ok(metres > 15 && metres < 40, `${metres}`);
    await page.getByLabel("From datum").selectOption("World Geodetic System 1984");
    assert.match(await row(page, "Shift"), /^0\.000 m/);
  });
  test("by grid files that the person drops", async () => {
    const page = await site.open("#robster;p=-98,31;from=NAD+1927+-+CONUS+(NADCON);to=World+Geodetic+System+1984");
    assert.match(await status(page, "point").textContent(), /NADCON grids .* are not there/);
    assert.equal(await row(page, "Position"), "\u2013");
    await drop(page, ".grids", "conus.los", nadconFile(36));
    await drop(page, ".grids", "notes.txt", "no grid");
    await page.waitForFunction(() => /"notes.txt" is not the name of a grid file/.test(document.querySelector(".grids .note").textContent));
    await drop(page, ".grids", "conus.las", nadconFile(18));
    await page.waitForFunction(() => /Taken: conus.las/.test(document.querySelector(".grids .note").textContent));
    const [lon, lat] = (await row(page, "Position")).match(/[\d.]+/g).map(Number);
    assert.ok(Math.abs(lon - 98.01) < 1e-6 && Math.abs(lat - 31.005) < 1e-6, `${lon} ${lat}`);
    await page.getByRole("tab", { name: "Table" }).click();
    await drop(page, "#page-table .drop", "a.csv", "lon,lat\n-98,31\n");
    await page.waitForFunction(() => /1 rows/.test(document.querySelector("#page-table .note").textContent));
    await page.getByLabel("Convert", { exact: true }).selectOption("shift");
    await page.getByRole("button", { name: "Convert", exact: true }).click();
    await page.waitForFunction(() => /1 points converted/.test(document.querySelector("#page-table .note").textContent));
  });
  test("stated and exact side by side", async () => {
    const page = await site.open("#robin;p=20,40");
    const cells = await page.locator("#page-point table.accuracy tbody tr").nth(1).locator("td").allTextContents();
    const apart = Number(plain(cells[2]).replace("mm", ""));
    assert.ok(Math.abs(apart) > 8e6 && Math.abs(apart) < 9e6, `8.6 km at 40 degrees, not ${apart} mm`);
  });
  test("follows what is typed, and takes no latitude beyond a pole", async () => {
    const page = await site.open("#moll");
    const fill = async (label, text) => {
      await page.getByLabel(label, { exact: true }).fill(text);
      await page.getByLabel(label, { exact: true }).press("Enter");
      await settled(page);
    };
    await fill("Longitude", "9d30'E");
    await fill("Latitude", "48.5");
    assert.match(hashOf(page), /p=9.5,48.5/);
    await fill("Latitude", "91");
    assert.match(await page.locator("#page-point .error:visible").textContent(), /between/);
    assert.match(hashOf(page), /p=9.5,48.5/);
  });
  test("steps from an empty field begin at 0", async () => {
    const page = await site.open("#robster;at=20,30;zoom=2");
    await page.getByLabel("Longitude", { exact: true }).focus();
    await page.keyboard.press("ArrowUp");
    await settled(page);
    assert.match(hashOf(page), /p=0.1,30/);
    assert.deepEqual(page.errors, []);
  });
  test("has its shift to another datum whatever page is open", async () => {
    const page = await site.open("#robster;p=-95.25,38.75;from=NAD+1927+-+CONUS;tab=distortion");
    const shift = () => page.evaluate(() => atlas.map.scene.shift);
    const before = await shift();
    assert.ok(before.east < -20);
    await page.locator(".handle").focus();
    await page.keyboard.press("ArrowRight");
    await settled(page);
    assert.notEqual((await shift()).east, before.east);
  });
  test("where a click sets it", async () => {
    const page = await site.open("#robster");
    const box = await page.locator(".surface").boundingBox();
    await page.mouse.click(box.x + box.width / 2, box.y + box.height / 2);
    await settled(page);
    assert.match(hashOf(page), /p=0,0/);
  });
});

test("two maps are tied by the pointer", async () => {
  const page = await site.open("#merc;tab=compare;with=laea");
  assert.equal(await page.locator(".surface canvas").count(), 2);
  const box = await page.locator(".surface").first().boundingBox();
  await page.mouse.move(box.x + box.width * 0.5, box.y + box.height * 0.6);
  await settled(page);
  const circles = await page.evaluate(() => [atlas.map, atlas.pages.compare.second].map((map) => map.scene.circle?.coords.length));
  assert.ok(circles[0] > 100 && circles[0] === circles[1]);
  await page.getByRole("button", { name: "Exchange the maps" }).click();
  await settled(page);
  assert.match(hashOf(page), /^#laea;.*with=merc/);
  await page.locator("#page-compare select").selectOption("");
  assert.equal(await page.locator(".surface canvas").count(), 1);
});

test("distortion has colours, a legend and numbers that agree with the formulas", async () => {
  const page = await site.open("#merc;tab=distortion;p=0,60");
  await page.getByText("Area", { exact: true }).click();
  await settled(page);
  assert.match(hashOf(page), /color=area/);
  assert.equal(await page.locator(".legend figcaption").textContent(), "Area scale");
  // On the ellipsoid: sec(lat) * sqrt(1 - e2 sin(lat)^2), squared.
  const e2 = 0.00669437999014;
  const expected = (1 - e2 * 0.75) / 0.25;
  assert.ok(Math.abs(Number(await row(page, "Area scale")) - expected) < 1e-5);
  assert.ok(Number((await row(page, "Largest change of an angle")).replace("\u00b0", "")) < 1e-4, "conformal");
});

describe("tables", () => {
  const csv = 'name,lon,lat\n"Berlin, DE",13.4050,52.5200\nVienna,16.3738,48.2082\nnowhere,x,95\n';
  const read = async (page, text) => {
    await page.getByLabel("Table or GeoJSON as text").fill(text);
    await page.getByRole("button", { name: "Read the text" }).click();
    await page.waitForFunction(() => document.querySelector("#page-table .note").textContent !== "");
  };
  const convert = async (page) => {
    await page.getByRole("button", { name: "Convert", exact: true }).click();
    await page.locator("#page-table button:has-text('Download')").waitFor({ state: "visible" });
    const [download] = await Promise.all([page.waitForEvent("download"), page.locator("#page-table button:has-text('Download')").click()]);
    return readFileSync(await download.path(), "utf8");
  };
  test("to map coordinates and to zones and references", async () => {
    const page = await site.open("#utm;lon0=15;tab=table");
    await read(page, csv);
    assert.match(await status(page, "table").textContent(), /3 rows/);
    assert.equal(await convert(page), 'name,lon,lat,x,y\n"Berlin, DE",13.4050,52.5200,391779.2593,5820072.1592\nVienna,16.3738,48.2082,602065.2074,5340353.5943\nnowhere,x,95,,\n');
    assert.match(await status(page, "table").textContent(), /2 points converted.*1 could not be computed/);
    assert.equal(await page.locator("#page-table .command").textContent(), "orvex project --utm 33N --x lon --y lat --keep pasted");
    for (const [kind, line] of [["utm", "Vienna,16.3738,48.2082,33N,602065.2074,5340353.5943"], ["mgrs", "Vienna,16.3738,48.2082,33UXP0206540353"]]) {
      await page.getByLabel("Convert", { exact: true }).first().selectOption(kind);
      assert.equal((await convert(page)).split("\n")[2], line);
    }
  });
  test("back again, from columns that were chosen", async () => {
    const page = await site.open("#utm;lon0=15;tab=table");
    await read(page, "p;rechts;hoch\n1;391779.2593;5820072.1592\n");
    assert.match(await status(page, "table").textContent(), /choose them/);
    await page.getByLabel("Longitude or x").selectOption("1");
    await page.getByLabel("Latitude or y").selectOption("2");
    await page.getByLabel("Convert", { exact: true }).first().selectOption("inverse");
    const [, , , lon, lat] = (await convert(page)).split("\n")[1].split(";").map(Number);
    assert.ok(Math.abs(lon - 13.405) < 2e-9 && Math.abs(lat - 52.52) < 2e-9, `${lon} ${lat}`);
  });
  test("GeoJSON keeps what is not a coordinate", async () => {
    const page = await site.open("#utm;lon0=15;tab=table");
    const shape = { type: "Feature", properties: { name: "line", n: [1, 2] }, geometry: { type: "LineString", coordinates: [[13.4, 52.5, 34], [14, 53]] } };
    await drop(page, "#page-table .drop", "line.geojson", JSON.stringify(shape));
    await page.waitForFunction(() => atlas.map.scene.own?.lines.starts.length === 2);
    const result = JSON.parse(await convert(page));
    assert.deepEqual(result.properties, shape.properties);
    assert.deepEqual(result.geometry.coordinates[0].map((number) => Number(number.toFixed(4))), [391390.7313, 5817855.2408, 34]);
  });
  test("what cannot be read is named, and what was there stays", async () => {
    const page = await site.open("#merc;tab=table");
    await read(page, csv);
    const shown = await page.locator(".preview").textContent();
    const bad = [
      ["broken.geojson", '{"type":"FeatureCollection","features":[{', /broken.geojson is not GeoJSON/],
      ["odd.json", '{"type":"Point","coordinates":["a",2]}', /coordinates of a Point are damaged/],
      ["other.json", '{"type":"Topology"}', /unknown type "Topology"/],
      ["empty.csv", "\n\n", /empty\.csv is empty/], ["one.csv", "alone\n1\n", /no two columns/],
      ["bytes.csv", Uint8Array.from([1, 0, 2, 0]), /is not a text/], ["folder", undefined, /folder cannot be read/],
    ];
    for (const [name, content, message] of bad) {
      if (content === undefined) await page.evaluate(() => (File.prototype.text = () => Promise.reject(new DOMException("a directory", "NotFoundError"))));
      await drop(page, "#page-table .drop", name, content ?? "");
      await page.waitForFunction((source) => new RegExp(source).test(document.querySelector("#page-table .note").textContent), message.source);
      assert.equal(await page.locator(".preview").textContent(), shown);
    }
    assert.deepEqual(page.errors, []);
    assert.match(await convert(page), /Berlin/);
  });
  test("a long table does not hold up the page", async () => {
    const page = await site.open("#lcc;tab=table");
    const rows = Array.from({ length: 200_000 }, (_, i) => `${(i % 100) - 140},${(i % 60) + 10}`).join("\n");
    await drop(page, "#page-table .drop", "long.csv", `lon,lat\n${rows}\n`);
    await page.waitForFunction(() => /200000 rows/.test(document.querySelector("#page-table .note").textContent), undefined, { timeout: 20000 });
    const turns = page.evaluate(() => new Promise((resolve) => {
      let count = 0;
      const tick = () => {
        ++count;
        if (/converted/.test(document.querySelector("#page-table .note").textContent)) resolve(count);
        else setTimeout(tick, 5);
      };
      tick();
    }));
    await page.getByRole("button", { name: "Convert", exact: true }).click();
    assert.ok((await turns) > 10, "the page goes on while the worker converts");
    assert.match(await status(page, "table").textContent(), /200000 points converted/);
  });
});

describe("georeferencing", () => {
  /** A picture whose pixels are tenths of a degree: 600 by 300 from 30 W 75 N. */
  const picture = (page) => page.evaluate(async () => {
    const canvas = new OffscreenCanvas(600, 300);
    const context = canvas.getContext("2d");
    context.fillStyle = "#3355cc";
    context.fillRect(0, 0, 600, 300);
    return [...new Uint8Array(await (await canvas.convertToBlob()).arrayBuffer())];
  });
  const place = (px, py) => [-30 + px / 10, 75 - py / 10];
  test("control points lead the picture under the coasts, with their residuals", async () => {
    const page = await site.open("#eqc;tab=georef");
    await drop(page, "#page-georef .drop", "map.png", await picture(page), "image/png");
    await page.locator("canvas.picture").waitFor({ state: "visible" });
    for (const [px, py] of [[50, 50], [550, 40], [300, 250]]) {
      await page.getByRole("button", { name: "Add a point by numbers" }).click();
      const inputs = page.locator(".controls li").last().locator("input");
      const [lon, lat] = place(px, py);
      for (const [i, value] of [px, py, lon, lat].entries()) {
        await inputs.nth(i).fill(String(value));
        await inputs.nth(i).press("Enter");
      }
    }
    await settled(page);
    assert.match(await page.locator(".total").textContent(), /Root mean square 0\.0 m/);
    const blue = await page.evaluate(([lon, lat]) => {
      const [x, y] = atlas.map.pointAt([lon, lat]);
      const canvas = document.querySelector(".surface canvas");
      const density = canvas.width / atlas.map.sizeNow.width;
      return [...canvas.getContext("2d").getImageData(x * density, y * density, 1, 1).data];
    }, [-25, 50]);
    assert.ok(blue[2] > 180 && blue[0] < 110, `the picture lies there: ${blue}`);
    await page.getByRole("button", { name: "Add a point by numbers" }).click();
    const fourth = page.locator(".controls li").last().locator("input");
    for (const [i, value] of [100, 100, -20, 64].entries()) {
      await fourth.nth(i).fill(String(value));
      await fourth.nth(i).press("Enter");
    }
    await settled(page);
    const off = Number(/off by ([\d.]+)/.exec(plain(await page.locator(".controls .residual").last().textContent()))[1]);
    assert.ok(off > 10_000, "a point a degree off shows in the residuals");
  });
  test("the picture stays under the coasts when the map becomes another one", async () => {
    const page = await site.open("#eqc;tab=georef");
    await drop(page, "#page-georef .drop", "map.png", await picture(page), "image/png");
    await page.locator("canvas.picture").waitFor({ state: "visible" });
    for (const [px, py] of [[50, 50], [550, 40], [300, 250]]) {
      await page.evaluate((control) => atlas.pages.georef.add(control), { px, py, place: place(px, py) });
    }
    await page.getByRole("tab", { name: "Point" }).click();
    await page.locator('[data-slug="moll"]').click();
    await settled(page);
    const [corner, there] = await page.evaluate(([lon, lat]) => [[...atlas.pages.georef.mesh.coords], atlas.map.current.projection.forward(lon, lat)], place(0, 0));
    assert.ok(Math.hypot(corner[0] - there[0], corner[1] - there[1]) < 4e5, "the fit is that of the map shown");
  });
  test("by clicks: first the picture, then the map", async () => {
    const page = await site.open("#eqc;tab=georef");
    await drop(page, "#page-georef .drop", "map.png", await picture(page), "image/png");
    await page.locator("canvas.picture").click({ position: { x: 40, y: 30 } });
    assert.match(await page.locator(".controls .residual").textContent(), /waits/);
    const box = await page.locator(".surface").boundingBox();
    await page.mouse.click(box.x + box.width / 2, box.y + box.height / 2);
    await settled(page);
    assert.match(await page.locator(".total").textContent(), /2 more control points to go/);
    assert.doesNotMatch(hashOf(page), /p=/, "the click belongs to the control point");
  });
  test("a pixel far beyond the picture is refused, and the fit stays", async () => {
    const page = await site.open("#eqc;tab=georef");
    await drop(page, "#page-georef .drop", "map.png", await picture(page), "image/png");
    await page.locator("canvas.picture").waitFor({ state: "visible" });
    for (const [px, py] of [[50, 50], [550, 40], [300, 250]]) {
      await page.evaluate((control) => atlas.pages.georef.add(control), { px, py, place: place(px, py) });
    }
    const inputs = page.locator(".controls li").last().locator("input");
    const fit = () => page.evaluate(() => atlas.pages.georef.fit.coefficients.join());
    const before = await fit();
    for (const [axis, text, refused] of [[0, "1e308", true], [1, "601", true], [0, "-601", true], [0, "x", true], [1, "-20", false]]) {
      await inputs.nth(axis).fill(text);
      await inputs.nth(axis).press("Enter");
      const error = page.locator(".controls li").last().locator(".error").nth(axis);
      assert.equal(await error.isVisible(), refused, text);
      if (refused) assert.match(await error.textContent(), /lies between \u2212(600|300) and (1200|600)|not a number/);
      assert.equal((await fit()) === before, refused, text);
    }
    assert.deepEqual(page.errors, []);
  });
  test("a file that is no picture is refused", async () => {
    const page = await site.open("#eqc;tab=georef");
    await drop(page, "#page-georef .drop", "notes.png", "this is text", "image/png");
    await page.waitForFunction(() => /notes.png cannot be shown/.test(document.querySelector("#page-georef .note").textContent));
  });
});
