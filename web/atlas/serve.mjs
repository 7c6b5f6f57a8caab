// Serves the built page at a loopback address.
import { fileURLToPath } from "node:url";

import * as esbuild from "esbuild";

export async function serve(port) {
  const context = await esbuild.context({});
  const server = await context.serve({ servedir: fileURLToPath(new URL("dist/", import.meta.url)), host: "127.0.0.1", port });
  return { address: `http://127.0.0.1:${server.port}/`, close: () => context.dispose() };
}
