// The page's sources as modules of Node, and the library behind them as the page has it, without a browser.
import { existsSync } from "node:fs";
import { fileURLToPath } from "node:url";

import * as esbuild from "esbuild";
import { load } from "orvex";

import { outlines } from "../outlines.mjs";

const places = ["release", "demo"].map((preset) => fileURLToPath(new URL(`../../../build/${preset}/bin/orvex`, import.meta.url)));
/** The command-line tool; nothing where it is not built. */
export const tool = process.env.ORVEX_TOOL ?? places.find(existsSync);

/** A source of the page as a module of Node. */
export async function source(name) {
  const { outputFiles } = await esbuild.build({ entryPoints: [fileURLToPath(new URL(`../src/${name}.ts`, import.meta.url))], bundle: true, format: "esm", write: false });
  return import(`data:text/javascript;base64,${Buffer.from(outputFiles[0].contents).toString("base64")}`);
}

/** The page's engine, with the coasts of the repository. */
export async function startEngine() {
  const [{ Engine }, { unpack }, orvex] = await Promise.all([source("engine"), source("outlines"), load()]);
  const land = unpack(outlines(new URL("../../../", import.meta.url))[0][1]);
  return new Engine(orvex, land, orvex.shapes(land), "");
}
