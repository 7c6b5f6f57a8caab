// What Emscripten writes beside orvex.wasm.
declare const factory: (options: object) => Promise<never>;
export default factory;
