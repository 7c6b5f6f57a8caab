// A browser on the built page, for the tests: started once, a fresh page for each of them.
import { chromium } from "playwright-core";

import { serve } from "../serve.mjs";

const executablePath = process.env.CHROMIUM ?? "/usr/bin/chromium";
const args = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync"];

export class Site {
  static async start() {
    const server = await serve();
    const browser = await chromium.launch({ executablePath, args });
    return new Site(server, browser);
  }

  constructor(server, browser) {
    this.server = server;
    this.browser = browser;
    this.contexts = [];
  }

  /** Closes the pages of a test, so that they take no time from the next one. */
  async close() {
    await Promise.all(this.contexts.splice(0).map((context) => context.close()));
  }

  /** The page at an address behind #; what it logs as an error and what it asks of other hosts is collected. */
  async open(hash = "", { width = 1440, height = 900, dark = false, keep = false } = {}) {
    const context = await this.browser.newContext({ viewport: { width, height }, colorScheme: dark ? "dark" : "light", acceptDownloads: true });
    await context.grantPermissions(["clipboard-read", "clipboard-write"]);
    if (!keep) this.contexts.push(context);
    const page = await context.newPage();
    page.errors = [];
    page.foreign = [];
    page.on("pageerror", (error) => page.errors.push(String(error)));
    page.on("console", (message) => message.type() === "error" && page.errors.push(message.text()));
    page.on("request", (request) => {
      const url = request.url();
      if (!url.startsWith(this.server.address) && !/^(blob|data):/.test(url)) page.foreign.push(url);
    });
    await page.goto(this.server.address + hash);
    await page.waitForSelector(".ready");
    await settled(page);
    return page;
  }

  async stop() {
    await this.browser.close();
    await this.server.close();
  }
}

/** After the picture for a quiet moment has been drawn, with the fine coasts where they are due. */
export async function settled(page) {
  await page.waitForTimeout(450);
  await page.waitForFunction(() => !atlas.map.current.wantsFine(atlas.map.viewNow));
}

/** Shares of colours on the map: what is land, what is sea, what is neither. */
export function colours(page, which = 0) {
  return page.evaluate((index) => {
    const canvas = document.querySelectorAll(".surface canvas")[index];
    const { data } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
    const style = getComputedStyle(document.documentElement);
    const rgb = (name) => style.getPropertyValue(name).trim().match(/\w\w/g).map((pair) => parseInt(pair, 16));
    const [land, sea] = [rgb("--map-land"), rgb("--map-sea")];
    const near = (i, color) => color.every((part, k) => Math.abs(data[i + k] - part) < 6) && data[i + 3] > 200;
    let [landCount, seaCount, total] = [0, 0, 0];
    for (let i = 0; i < data.length; i += 16, ++total) {
      if (near(i, land)) ++landCount;
      else if (near(i, sea)) ++seaCount;
    }
    return { land: landCount / total, sea: seaCount / total };
  }, which);
}

/** A number that stands for the picture on the map. */
export function fingerprint(page) {
  return page.evaluate(() => {
    const canvas = document.querySelector(".surface canvas");
    const { data } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
    let hash = 2166136261;
    for (let i = 0; i < data.length; i += 4) hash = Math.imul(hash ^ (data[i] | (data[i + 1] << 8) | (data[i + 2] << 16)), 16777619);
    return hash >>> 0;
  });
}

/** Drags over the map, from and to as parts of its width and height. */
export async function drag(page, from, to, steps = 8) {
  const box = await page.locator(".surface").first().boundingBox();
  const at = ([x, y]) => [box.x + x * box.width, box.y + y * box.height];
  await page.mouse.move(...at(from));
  await page.mouse.down();
  await page.mouse.move(...at(to), { steps });
  await page.mouse.up();
  await settled(page);
}

/** Drops a file made of text or bytes on an element. */
export async function drop(page, selector, name, content, type = "text/plain") {
  const bytes = [...(typeof content === "string" ? new TextEncoder().encode(content) : content)];
  const transfer = await page.evaluateHandle(({ name, bytes, type }) => {
    const data = new DataTransfer();
    data.items.add(new File([Uint8Array.from(bytes)], name, { type }));
    return data;
  }, { name, bytes, type });
  await page.dispatchEvent(selector, "drop", { dataTransfer: transfer });
}

/** The control of a parameter. */
export function field(page, key) {
  return page.locator(`#parameters [data-key="${key}"]`);
}

export async function type(page, key, text) {
  const input = field(page, key).locator("input");
  await input.fill(text);
  await input.press("Enter");
  await settled(page);
}

export const hashOf = (page) => new URL(page.url()).hash;
