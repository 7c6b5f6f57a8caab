// Builds the atlas into dist, or with --serve also serves it at a loopback address.
import { cpSync, mkdirSync, readdirSync, readFileSync, renameSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";
import { parseArgs } from "node:util";
import { gzipSync } from "node:zlib";

import * as esbuild from "esbuild";

import { outlines } from "./outlines.mjs";
import { serve } from "./serve.mjs";

const here = new URL("./", import.meta.url);
const dist = fileURLToPath(new URL("dist/", here));
const { values } = parseArgs({ options: { serve: { type: "boolean" }, port: { type: "string" } } });

rmSync(dist, { recursive: true, force: true });
mkdirSync(dist, { recursive: true });

for (const [name, bytes] of outlines(new URL("../../", here))) writeFileSync(dist + name, bytes);
for (const [from, to] of [["index.html", "index.html"], ["src/icon.svg", "icon.svg"], ["src/projections.json", "projections.json"]]) {
  cpSync(fileURLToPath(new URL(from, here)), dist + to);
}
const library = dirname(createRequire(import.meta.url).resolve("orvex"));
cpSync(fileURLToPath(new URL("orvex.wasm", pathToFileURL(`${library}/`))), `${dist}orvex.wasm`);

await esbuild.build({
  absWorkingDir: fileURLToPath(here),
  entryPoints: { atlas: "src/main.ts", worker: "src/worker.ts", styles: "src/atlas.css" },
  entryNames: "[name]",
  outdir: dist,
  bundle: true,
  format: "esm",
  target: "es2022",
  minify: true,
  charset: "utf8",
  external: ["node:*"],
  logLevel: "warning",
});
renameSync(`${dist}styles.css`, `${dist}atlas.css`);

for (const name of readdirSync(dist)) {
  const bytes = readFileSync(dist + name);
  console.log(`${name.padEnd(18)} ${String(bytes.length).padStart(8)} bytes  ${String(gzipSync(bytes, { level: 9 }).length).padStart(8)} gzipped`);
}

if (values.serve) {
  const { address } = await serve(values.port ? Number(values.port) : undefined);
  console.log(`\nThe atlas is at ${address} (end it with Ctrl+C)`);
}
