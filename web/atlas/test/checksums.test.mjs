// The same bits in a page: every kept checksum of the library, computed by the browser. Needs the module of the preset wasm.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { after, before, test } from "node:test";

import { Site } from "./page.mjs";

const module = new URL("../../../build/wasm/web/", import.meta.url);
const read = (name, base = module) => readFileSync(new URL(name, base));

let site;
before(async () => (site = await Site.start()));
after(() => site.stop());

test("every kept checksum", { timeout: 240_000 }, async () => {
  const kept = read("../../../tests/checksums/kept.txt", import.meta.url).toString().trimEnd().split("\n");
  const page = await site.open();
  const files = { "checksums-factory.mjs": read("checksums.mjs"), "checksums-hook.mjs": read("../../orvex/checksums.mjs", import.meta.url), "checksums.wasm": read("checksums.wasm") };
  for (const [name, body] of Object.entries(files)) {
    await page.route(`**/${name}`, (route) => route.fulfill({ body, contentType: name.endsWith("wasm") ? "application/wasm" : "text/javascript" }));
  }
  const made = await page.evaluate(async () => {
    const at = (name) => new URL(name, location.href).href;
    const [{ default: factory }, { checksums }, bytes] = await Promise.all([import(at("checksums-factory.mjs")), import(at("checksums-hook.mjs")), fetch(at("checksums.wasm")).then((answer) => answer.arrayBuffer())]);
    return checksums(factory, bytes);
  });
  assert.ok(kept.length > 1000);
  assert.deepEqual(made, kept);
});
