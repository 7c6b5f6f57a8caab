// The command lines that the page shows, run by the tool: they must give what the page gives. Needs the tool of the
// release or demo build; ORVEX_TOOL names another one.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, describe, test } from "node:test";

import { drop, settled, Site } from "./page.mjs";
import { tool } from "./source.mjs";

const projections = JSON.parse(readFileSync(new URL("../src/projections.json", import.meta.url), "utf8"));

const own = [
  "lcc;lat1=-20;lat2=-40;lon0=25.5;x0=500000;p=27,-30", "utm;lon0=-99;p=-97.75,30.25", "utm;lon0=-99;south=yes;p=-97.75,-30.25",
  "utm;lon0=10;p=11,47", "utm;lon0=9;lat0=10;p=11,47", "utm;lon0=9;k0=1;p=11,47", "tmerc;lon0=10;ellipsoid=Bessel+1841;p=11,47", "moll;radius=6371000;flattening=0;p=11,-47",
  "hotine;usealpha=yes;alpha=30;lon0=20;lat0=45;p=21,44", "spcs27;zone=Texas+Central;p=-97.75,30.25", "merc;scale=0.5;p=11,47;stated=yes",
  "tmerc;lon0=10;k0=0;p=11,47", "utm;lon0=9;k0=0;p=11,47", "lcc;lat1=33;lat2=45;scale=0;p=20,40",
];

/** Runs a line of the page by a shell that knows the tool as `orvex`. */
function run(line, folder) {
  return execFileSync("sh", ["-c", `orvex() { "$ORVEX_TOOL" "$@"; }\n${line}`], { env: { ...process.env, ORVEX_TOOL: tool }, cwd: folder, encoding: "utf8", stdio: ["ignore", "pipe", "ignore"] });
}

describe("commands", { skip: tool ? false : "the tool is not built" }, () => {
  let site, folder;
  before(async () => {
    site = await Site.start();
    folder = mkdtempSync(join(tmpdir(), "atlas-"));
  });
  after(async () => {
    await site.stop();
    rmSync(folder, { recursive: true });
  });

  test("coordinates of a point in every projection", async () => {
    const page = await site.open();
    const hashes = [...projections.map(({ slug }) => `${slug};p=${/^spcs/.test(slug) ? "-140,58" : "20,40"}`), ...own];
    for (const hash of hashes) {
      await page.evaluate((it) => (location.hash = it), hash);
      await page.waitForFunction((slug) => atlas.state.slug === slug && atlas.map.choice.slug === slug, hash.split(";")[0]);
      await settled(page);
      const line = await page.locator("#foot .command").textContent();
      const [x, y] = await page.evaluate(() => {
        const projection = atlas.engine.make(atlas.state, atlas.accuracy);
        return projection.forward(...atlas.state.point);
      });
      const answer = run(line, folder).trim().split(/\s+/).map(Number);
      assert.ok(Math.abs(answer[0] - x) <= 5.1e-5 && Math.abs(answer[1] - y) <= 5.1e-5, `${line}: ${answer} is not ${x} ${y}`);
    }
  });

  test("a point on another datum", async () => {
    const page = await site.open("#robster;p=-95.25,38.75;from=NAD+1927+-+CONUS");
    const line = await page.locator("#page-point .command").textContent();
    assert.equal(run(line, folder).trim(), "-95.250260048 38.750039848");
  });

  test("tables of every form come out as the tool writes them", async () => {
    const forms = [
      [2, "p;lon;lat\nA;13,405;52,52\nB;x;3\n"], [1, 'name,lon,lat\r\n"Berlin, ""DE""",13.405,52.52\r\n'],
      [2, "# from the field, twice\nlon,lat\n13.405,52.52\n# of old\n16,48\n"],
      [4, "id,lon,lat\nA,13 24 18 E,52:31:12\nB,E13d24.5',N52.5\nC,52N,13\nD,13 75 18 E,52\n"], [1, ",lon,lat\n0,13.405,52.52\n"],
      [1, "lon,lat,2020\n13.405,52.52,5\n"], [1, "lat,lon,n\n52,13,a,b,c\n"], [1, "x,lon,lat\nhello,13.405,52.52\n"],
      [2, "13.405 52.52 A\n16 95 B\n"], [1, "lon\tlat\n13.405\t52.52\n"], [2, "lon,lat\n0x10,5\n , \n"],
      [4, 'lon,lat\n"13,405","52,52"\n"1,3,4",52\n"13,405",52.52\n"1.300,4",52\n'],
    ];
    const page = await site.open("#utm;lon0=15;tab=table");
    for (const [rows, text] of forms) {
      writeFileSync(join(folder, "form.csv"), text);
      await drop(page, "#page-table .drop", "form.csv", text);
      await page.waitForFunction((start) => document.querySelector("#page-table .note").textContent.startsWith(start), `form.csv: ${rows} rows`);
      await page.getByRole("button", { name: "Convert", exact: true }).click();
      await page.waitForFunction(() => /points? converted/.test(document.querySelector("#page-table .note").textContent));
      const [download] = await Promise.all([page.waitForEvent("download"), page.locator("#page-table button:has-text('Download')").click()]);
      const here = readFileSync(await download.path(), "utf8");
      const there = run(`${await page.locator("#page-table .command").textContent()} || true`, folder);
      assert.equal(here.replace("x_out", "x"), there, text);
    }
  });

  test("the same map, and the same tables", async () => {
    const page = await site.open("#lcc;lat1=40;lat2=52;lon0=10;tissot=yes;color=angle;grid=10;tab=table;stated=yes;at=12,48;zoom=8");
    await page.locator(".share summary").click();
    await page.getByRole("button", { name: "Copy the map command" }).click();
    const map = await page.evaluate(() => navigator.clipboard.readText());
    const [, west, south, east, north] = /--stated --bounds ([\d.-]+),([\d.-]+),([\d.-]+),([\d.-]+) --graticule 10 --tissot \d+ --distortion angle/.exec(map).map(Number);
    assert.ok(west < 8 && east > 16 && south < 46 && north > 50 && east - west < 121, map);
    run(map, folder);
    assert.match(readFileSync(join(folder, "lcc.svg"), "utf8"), /^<svg|^<\?xml/);
    await page.evaluate(() => (location.hash = "#lcc;lat1=40;lat2=52;lon0=10;tab=table"));
    await settled(page);
    const text = "name,lon,lat\nBerlin,13.4050,52.5200\n";
    writeFileSync(join(folder, "pasted"), text);
    await page.getByLabel("Table or GeoJSON as text").fill(text);
    await page.getByRole("button", { name: "Read the text" }).click();
    await page.locator("#page-table .command").waitFor();
    for (const kind of ["forward", "utm", "mgrs", "shift"]) {
      await page.getByLabel("Convert", { exact: true }).first().selectOption(kind);
      await page.getByRole("button", { name: "Convert", exact: true }).click();
      await page.waitForFunction(() => /points? converted/.test(document.querySelector("#page-table .note").textContent));
      const here = (await page.locator(".preview tbody tr").first().locator("td").allTextContents()).slice(3).sort();
      const line = await page.locator("#page-table .command").textContent();
      const there = run(line, folder).trim().split("\n")[1].split(",").slice(3).sort();
      assert.deepEqual(there, here, line);
    }
  });
});
