// What the library makes of fixed points in WebAssembly: lines of a checksum and a name, as tests/checksums/kept.txt
// has them. For Node and for pages alike: give it the factory of build/wasm/web/checksums.mjs and the bytes beside it.
export async function checksums(factory, wasmBinary) {
  const lines = [];
  const module = await factory({ wasmBinary, print: (line) => lines.push(line) });
  module.callMain([]);
  return lines;
}
