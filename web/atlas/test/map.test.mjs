// The map in a real browser: every projection, dragging, zooming, parameters that the library takes and refuses, the
// address, export.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { after, afterEach, before, describe, test } from "node:test";

import { colours, drag, field, fingerprint, hashOf, settled, Site, type } from "./page.mjs";

const projections = JSON.parse(readFileSync(new URL("../src/projections.json", import.meta.url), "utf8"));

let site;
before(async () => (site = await Site.start()));
afterEach(() => site.close());
after(() => site.stop());

const longitude = (hash) => Number(/lon0=(-?[\d.]+)/.exec(hash)?.[1] ?? 0);

describe("every projection", () => {
  let page;
  before(async () => (page = await site.open("", { keep: true })));
  for (const { slug, name } of projections) {
    test(name, async () => {
      await page.locator(`#projections [data-slug="${slug}"]`).click();
      await settled(page);
      assert.match(hashOf(page), new RegExp(`^#${slug}(;|$)`));
      assert.equal(await page.locator("#projections [aria-current=true]").getAttribute("data-slug"), slug);
      assert.match(await page.locator(".sentence").textContent(), new RegExp(`^${name.replace(/[()/]/g, ".")}`));
      const { land, sea } = await colours(page);
      assert.ok(land > 0.01 && sea > 0.02, `land ${land}, sea ${sea}`);
      const shown = await page.evaluate(() => [...document.querySelectorAll("#parameters [data-key]")].filter((it) => !it.hidden).map((it) => it.dataset.key).filter((it) => it !== "utmzone"));
      const used = await page.evaluate((key) => atlas.engine.info(key).parameters.map((parameter) => parameter.key), slug);
      assert.deepEqual(shown, used, "a control for each parameter of the catalogue, in its order");
      assert.deepEqual(page.errors, []);
    });
  }
  test("the list is found by words", async () => {
    await page.fill("#find", "equal area");
    const left = await page.locator("#projections li:not([hidden]) button").evaluateAll((buttons) => buttons.map((button) => button.dataset.slug));
    assert.deepEqual(left.toSorted?.() ?? [...left].sort(), ["albers", "laea"]);
    await page.fill("#find", "nothing of the kind");
    assert.equal(await page.locator("#projections li:visible").textContent(), "No projection of that name.");
  });
});

test("nothing is asked of other hosts and nothing is wrong on a fresh page", async () => {
  const page = await site.open();
  assert.deepEqual(page.foreign, []);
  assert.deepEqual(page.errors, []);
  assert.equal(hashOf(page), "#robster");
});

test("a drag turns the globe so that the place under the pointer follows it", async () => {
  for (const [slug, from, to, tolerance] of [["robster", [0.5, 0.5], [0.65, 0.5], 0.5], ["ortho", [0.5, 0.5], [0.56, 0.6], 0.5], ["lcc", [0.5, 0.7], [0.56, 0.7], 0.5]]) {
    const page = await site.open(`#${slug}`);
    const placeAt = (spot) => page.evaluate(([x, y]) => atlas.map.placeAt(x * atlas.map.sizeNow.width, y * atlas.map.sizeNow.height), spot);
    const taken = await placeAt(from);
    await drag(page, from, to);
    const now = await placeAt(to);
    const apart = slug === "ortho" ? Math.hypot(now[0] - taken[0], now[1] - taken[1]) : Math.abs(now[0] - taken[0]);
    assert.ok(apart < tolerance, `${slug}: ${taken} became ${now}`);
    assert.notEqual(longitude(hashOf(page)), 0);
  }
});

test("where nothing turns, a drag moves the picture", async () => {
  const page = await site.open("#robin;at=10,20;zoom=3");
  await drag(page, [0.5, 0.5], [0.4, 0.5]);
  const at = /at=(-?[\d.]+),/.exec(hashOf(page));
  assert.ok(Number(at[1]) > 12, hashOf(page));
  assert.doesNotMatch(hashOf(page), /lon0/);
});

test("the wheel keeps the place under the pointer", async () => {
  const page = await site.open("#merc");
  const box = await page.locator(".surface").boundingBox();
  const spot = [box.width * 0.6, box.height * 0.4];
  const before = await page.evaluate((it) => atlas.map.placeAt(...it), spot);
  await page.mouse.move(box.x + spot[0], box.y + spot[1]);
  for (let i = 0; i < 6; ++i) await page.mouse.wheel(0, -250);
  await settled(page);
  const after = await page.evaluate((it) => atlas.map.placeAt(...it), spot);
  assert.ok(Math.hypot(after[0] - before[0], after[1] - before[1]) < 0.01, `${before} became ${after}`);
  assert.match(hashOf(page), /at=.*zoom=/);
});

test("a double click sets one point and zooms once", async () => {
  const page = await site.open("#merc");
  const box = await page.locator(".surface").boundingBox();
  const spot = [box.x + box.width * 0.6, box.y + box.height * 0.4];
  const before = await page.evaluate(() => history.length);
  await page.mouse.dblclick(...spot);
  await settled(page);
  assert.match(hashOf(page), /^#merc;at=[^;]*;zoom=2;p=[^;]*$/);
  assert.equal(await page.evaluate(() => history.length), before + 2);
  const point = hashOf(page).match(/p=.*/)[0];
  await page.mouse.click(spot[0] + 50, spot[1]);
  await settled(page);
  assert.match(hashOf(page), /zoom=2;p=/);
  assert.ok(!hashOf(page).includes(point));
});

test("keys turn, zoom and take a point", async () => {
  const page = await site.open("#ortho");
  await page.locator(".surface").focus();
  await page.keyboard.press("ArrowRight");
  await settled(page);
  assert.ok(longitude(hashOf(page)) > 20);
  await page.keyboard.press("+");
  await settled(page);
  assert.match(hashOf(page), /zoom=1.4/);
  await page.keyboard.press("Enter");
  await settled(page);
  const point = /p=([^;]+)/.exec(hashOf(page))[1].split(",").map(Number);
  await page.keyboard.press("ArrowUp");
  await page.waitForURL((url) => !url.hash.includes(`p=${point}`));
  const moved = /p=([^;]+)/.exec(hashOf(page))[1].split(",").map(Number);
  assert.ok(moved[1] > point[1], "the point has the focus and moves");
  await page.keyboard.press("Delete");
  await settled(page);
  assert.doesNotMatch(hashOf(page), /p=/);
});

test("a refused parameter says so at its field, and the map keeps its last good state", async () => {
  const cases = [
    ["lcc", "lat2", "33", /parallel/i], ["albers", "lat2", "-29.5", /parallel/i], ["merc", "lat0", "90", /./], ["bonne", "lat1", "0", /./],
    ["robster", "lon0", "ten", /./], ["utm", "utmzone", "61", /1 to 60/],
  ];
  for (const [slug, key, text, message] of cases) {
    const page = await site.open(`#${slug}`);
    const [picture, hash] = [await colours(page), hashOf(page)];
    const layout = await field(page, key).boundingBox();
    await type(page, key, text);
    const error = field(page, key).locator(".error");
    await error.waitFor({ state: "visible", timeout: 2000 });
    assert.match(await error.textContent(), message, `${slug} ${key}=${text}`);
    assert.equal(await field(page, key).locator("input").getAttribute("aria-invalid"), "true");
    assert.equal(hashOf(page), hash, "the address keeps the last good state");
    assert.deepEqual(await colours(page), picture, "and so does the map");
    assert.deepEqual(await field(page, key).boundingBox(), layout, "nothing moves");
    await type(page, key, { utmzone: "32", lon0: "9d30'E" }[key] ?? "40");
    assert.equal(await page.locator("#parameters .error:visible").count(), 0);
    assert.notEqual(hashOf(page), hash);
    assert.deepEqual(page.errors, []);
  }
});

test("numbers are stepped by keys and dragged sideways, and the back button undoes", async () => {
  const page = await site.open("#moll");
  const input = field(page, "lon0").locator("input");
  await input.focus();
  await input.press("ArrowUp");
  await input.press("Shift+ArrowUp");
  await settled(page);
  assert.equal(longitude(hashOf(page)), 11);
  const label = await field(page, "lon0").locator("label").boundingBox();
  await page.mouse.move(label.x + 5, label.y + 5);
  await page.mouse.down();
  await page.mouse.move(label.x + 35, label.y + 5, { steps: 5 });
  await page.mouse.up();
  await settled(page);
  assert.equal(longitude(hashOf(page)), 21);
  await page.goBack();
  await settled(page);
  assert.equal(longitude(hashOf(page)), 11);
  assert.equal(await input.inputValue(), "11");
  await page.goBack();
  await settled(page);
  assert.equal(longitude(hashOf(page)), 1);
});

test("a link shows the same map on another page", async () => {
  const hash = "#lcc;lat1=40;lat2=52;lon0=10;at=12,48;zoom=3;p=13.405,52.52;grid=10;tissot=yes";
  const [first, second] = [await site.open(hash), await site.open(hash)];
  assert.equal(hashOf(first), hash);
  assert.equal(await fingerprint(first), await fingerprint(second));
});

test("a damaged link shows what can be read and names the rest", async () => {
  const page = await site.open("#lcc;lat1=33;nonsense=1;zoom=-4;p=5,95;with=nowhere;%E0%A4=1");
  assert.match(await page.locator(".message.error").textContent(), /nonsense=1, zoom=-4, p=5,95, with=nowhere/);
  assert.ok((await colours(page)).land > 0.01);
});

test("a link with what the library refuses shows the rest and says why", async () => {
  const cases = [
    ["#lcc;lat1=1e308;lon0=10;p=1,2", /lat1=1e\+308/, "#lcc;lon0=10;p=1,2"], ["#bonne;lat1=0", /lat1=0 .*cannot be zero/, "#bonne"],
    ["#spcs83;zone=Nowhere", /zone=Nowhere/, "#spcs83"], ["#merc;lon0=1e308", /lon0=1e\+308 .*outside the range/, "#merc"],
    ["#hotine;rotate=perhaps", /neither true nor false/, "#hotine"], [`#moll;${"x".repeat(5000)}`, /x{100}\u2026$/, "#moll"],
  ];
  for (const [hash, message, left] of cases) {
    const page = await site.open(hash);
    assert.match(await page.locator(".message.error").textContent(), message);
    assert.equal(hashOf(page), left);
    assert.ok((await colours(page)).land > 0.005, hash);
    assert.deepEqual(page.errors, []);
    await page.close();
  }
  const page = await site.open("#moll");
  await page.evaluate(() => (location.hash = "#bonne;lat1=0"));
  await settled(page);
  assert.equal(hashOf(page), "#bonne");
});

describe("the address follows the view", () => {
  const steps = (page) => page.evaluate(() => history.length);
  for (const hash of ["#merc;at=10,50;zoom=3", "#ortho;at=10,50;zoom=3"]) {
    test(`a drag is one step: ${hash}`, async () => {
      const page = await site.open(hash);
      const middle = (where) => where.evaluate(() => atlas.map.middle.map((degrees) => degrees.toFixed(2)).join());
      const before = await steps(page);
      await drag(page, [0.5, 0.5], [0.6, 0.6]);
      assert.equal(await steps(page), before + 1);
      const [moved, shown] = [hashOf(page), await middle(page)];
      await page.goBack();
      await settled(page);
      assert.equal(hashOf(page), hash);
      assert.equal(await middle(page), "10.00,50.00");
      assert.equal(await middle(await site.open(moved)), shown);
    });
  }
  test("another projection keeps the place and the zoom", async () => {
    const page = await site.open("#robster;at=-100,40;zoom=5");
    await page.locator('[data-slug="merc"]').click();
    await settled(page);
    assert.match(hashOf(page), /^#merc;.*at=-100,40;zoom=/);
  });
  test("also where the middle is off the map", async () => {
    const page = await site.open("#moll");
    const box = await page.locator(".surface").first().boundingBox();
    const corner = await page.evaluate(() => {
      const { chart, view, size } = { chart: atlas.map.current, view: atlas.map.viewNow, size: atlas.map.sizeNow };
      return [size.width / 2 + (chart.box.maxX - view.x) * view.scale, size.height / 2 - (chart.box.maxY - view.y) * view.scale];
    });
    await page.mouse.move(box.x + corner[0], box.y + corner[1]);
    for (let i = 0; i < 5; ++i) await page.mouse.wheel(0, -250);
    await page.evaluate(() => atlas.map.drag([0, 0], [-4000, 4000], false));  // as far into the corner as it goes
    await settled(page);
    const stands = (where) => where.evaluate(() => ({ middle: atlas.map.middle, view: atlas.map.viewNow }));
    const { middle, view } = await stands(page);
    assert.equal(middle, undefined);
    assert.match(hashOf(page), /^#moll;mid=1,1;zoom=7\.389$/);
    const there = (await stands(await site.open(hashOf(page)))).view;
    assert.ok(Math.abs(there.scale / view.scale - 1) < 1e-3 && Math.hypot(there.x - view.x, there.y - view.y) * view.scale < 1, JSON.stringify([view, there]));
    await page.goBack();
    await settled(page);
    assert.equal(hashOf(page), "#moll");
  });
  test("of the second map, too", async () => {
    const page = await site.open("#merc;tab=compare;with=laea");
    const box = await page.locator(".surface").nth(1).boundingBox();
    await page.mouse.move(box.x + box.width / 2, box.y + box.height / 2);
    await page.mouse.wheel(0, -400);
    await settled(page);
    assert.match(hashOf(page), /with\.zoom=/);
    const zoom = (where) => where.evaluate(() => atlas.pages.compare.second.zoom);
    const other = await site.open(hashOf(page));
    assert.ok(Math.abs((await zoom(page)) / (await zoom(other)) - 1) < 1e-3);
    await page.goBack();
    await settled(page);
    assert.ok(Math.abs((await zoom(page)) - 1) < 1e-3);
  });
});

test("zoomed in to a street, the map has its graticule and its point", async () => {
  for (const hash of ["#utm;at=13.4,52.5;zoom=400;p=13.4,52.5", "#merc;at=13.4,52.5;zoom=1000000;p=13.4,52.5", "#laea;at=10,52;zoom=90000;p=10,52"]) {
    const page = await site.open(hash);
    const lines = await page.evaluate(() => atlas.map.current.graticule(0.0001 * Math.max(1, 4e5 / atlas.map.zoom) ).starts.length - 1);
    assert.ok(lines > 2, `${hash}: ${lines}`);
    assert.ok(await page.locator(".handle").first().isVisible());
    assert.deepEqual(page.errors, []);
  }
});

test("zoomed in, the coasts are those of 1:50m", async () => {
  const page = await site.open("#merc;at=10,56;zoom=20");
  await page.waitForFunction(() => atlas.map.current.land().coords.length > 0 && !atlas.map.current.wantsFine(atlas.map.viewNow));
  const { land, sea } = await colours(page);
  assert.ok(land > 0.05 && sea > 0.05);
});

describe("export", () => {
  const save = async (page, name) => {
    await page.locator(".share summary").click();
    const [download] = await Promise.all([page.waitForEvent("download"), page.getByRole("button", { name }).click()]);
    return [download.suggestedFilename(), readFileSync(await download.path())];
  };
  test("SVG", async () => {
    const page = await site.open("#moll;tissot=yes;color=area;p=13,52");
    const [name, bytes] = await save(page, "Save as SVG");
    assert.equal(name, "moll.svg");
    const facts = await page.evaluate((text) => {
      const svg = new DOMParser().parseFromString(text, "image/svg+xml");
      return { wrong: svg.querySelector("parsererror")?.textContent, title: svg.querySelector("title").textContent, paths: svg.querySelectorAll("path").length, outside: /href="(?!data:)/.test(text), description: svg.querySelector("desc").textContent };
    }, bytes.toString());
    assert.equal(facts.wrong, undefined);
    assert.equal(facts.title, "Mollweide");
    assert.ok(facts.paths > 5 && !facts.outside);
    assert.match(bytes.toString(), /<rect width="\d+" height="\d+" fill="#f7f5f0"/);
    assert.match(facts.description, /orvex map --proj Mollweide --tissot 30 --distortion area -o moll.svg/);
  });
  test("PNG of twice the size", async () => {
    const page = await site.open("#moll");
    const [name, bytes] = await save(page, "Save as PNG");
    assert.equal(name, "moll.png");
    assert.equal(bytes.subarray(1, 4).toString(), "PNG");
    const width = await page.evaluate(() => atlas.map.sizeNow.width);
    assert.equal(bytes.readUInt32BE(16), 2 * width);
  });
  test("the link and the command are copied", async () => {
    const page = await site.open("#utm;lon0=-99;p=-97.75,30.25");
    await page.locator(".share summary").click();
    await page.getByRole("button", { name: "Copy the link" }).click();
    assert.equal(await page.evaluate(() => navigator.clipboard.readText()), page.url());
    await page.getByRole("button", { name: "Copy the command", exact: true }).click();
    assert.equal(await page.evaluate(() => navigator.clipboard.readText()), "orvex project --utm 14N -- -97.75 30.25");
  });
});
