// The package as strangers get it: packed, installed into an empty folder, imported there, in a thread as well.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { test } from "node:test";
import { fileURLToPath } from "node:url";

const root = fileURLToPath(new URL("..", import.meta.url));

test("npm pack gives a package that works by itself", () => {
  const folder = mkdtempSync(join(tmpdir(), "orvex-package-"));
  const npm = (...args) => execFileSync("npm", args, { cwd: folder, encoding: "utf8", stdio: ["ignore", "pipe", "ignore"] });
  try {
    const [{ filename, files }] = JSON.parse(npm("pack", "--json", root));
    const names = files.map(({ path }) => path);
    for (const name of ["dist/index.js", "dist/index.d.ts", "dist/orvex.wasm", "package.json"]) assert.ok(names.includes(name), name);
    assert.deepEqual(names.filter((name) => !name.startsWith("dist/")).sort(), ["README.md", "package.json"]);
    npm("init", "-y");
    npm("install", "--offline", "--no-audit", "--no-fund", `./${filename}`);
    writeFileSync(join(folder, "worker.mjs"), `
      import { parentPort } from "node:worker_threads";
      import { load } from "orvex";
      const orvex = await load();
      parentPort.postMessage(orvex.utm(33).forward(13.405, 52.52).map((value) => value.toFixed(4)).join(" "));`);
    writeFileSync(join(folder, "main.mjs"), `
      import { readFileSync } from "node:fs";
      import { createRequire } from "node:module";
      import { Worker } from "node:worker_threads";
      import { load } from "orvex";
      const bytes = readFileSync(createRequire(import.meta.url).resolve("orvex/orvex.wasm"));
      const orvex = await load({ wasm: bytes });
      console.log(orvex.angle.format(12.5, { axis: "lat" }));
      new Worker(new URL("worker.mjs", import.meta.url)).on("message", console.log);`);
    const printed = execFileSync(process.execPath, ["main.mjs"], { cwd: folder, encoding: "utf8" });
    assert.equal(printed, "12d30'0.0000\"N\n391779.2593 5820072.1592\n");
  } finally {
    rmSync(folder, { recursive: true });
  }
});
