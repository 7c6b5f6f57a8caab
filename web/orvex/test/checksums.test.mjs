// The same bits as the native library: every kept fingerprint.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { test } from "node:test";
import { checksums } from "../checksums.mjs";

test("every kept checksum is the module's too", async () => {
  const folder = new URL("../../../build/wasm/web/", import.meta.url);
  const { default: factory } = await import(new URL("checksums.mjs", folder));
  const kept = readFileSync(new URL("../../../tests/checksums/kept.txt", import.meta.url), "utf8").trimEnd().split("\n");
  const made = await checksums(factory, readFileSync(new URL("checksums.wasm", folder)));
  assert.ok(kept.length > 1000);
  assert.deepEqual(made, kept);
});
