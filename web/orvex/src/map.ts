// Maps: shapes cut along the edge of what a projection shows, projected and bent.
import { numbersOf, OrvexError, recordOf } from "./errors.js";
import type { Handle, Module } from "./module.js";
import { Owned } from "./owned.js";
import type { MapBox, MapGeometry, MapOptions, Paths, Shapes } from "./types.js";

const usualWidth = 1000;  // pixels

export class ShapesObject implements Shapes {
  readonly length: number;
  private readonly owned: Owned;

  constructor(readonly module: Module, paths: Paths) {
    const coords = numbersOf(recordOf(paths, "shapes").coords, "coordinates of shapes");
    const starts = Array.from(numbersOf(paths.starts, "starts of shapes"));
    this.length = starts.length - 1;
    const isRising = starts.every((start, i) => start >= (starts[i - 1] ?? 0));
    if (this.length < 0 || starts[0]! < 0 || !isRising || 2 * starts[this.length]! > coords.length) {
      throw new OrvexError("the starts of the shapes do not rise within the coordinates");
    }
    const handle = module.withDoubles(coords, (points) =>
      module.withIntegers(starts, (at) => module.make("shapes_create", points, at, this.length)));
    this.owned = new Owned(module, handle, "shapes_delete", "set of shapes");
  }

  get handle(): Handle {
    return this.owned.handle;
  }

  dispose(): void {
    this.owned.dispose();
  }
}

export class MapObject implements MapGeometry {
  readonly box: MapBox;
  private readonly owned: Owned;
  private size = 0;

  constructor(private readonly module: Module, projection: Handle, options: MapOptions) {
    const { pixel, bounds } = recordOf(options, "options");
    if (bounds && numbersOf(bounds, "bounds").length !== 4) throw new OrvexError("bounds are west, south, east and north");
    const handle = bounds
      ? module.withDoubles(bounds, (at) => module.make("map_create", projection, at))
      : module.make("map_create", projection, 0);
    this.owned = new Owned(module, handle, "map_delete", "map");
    const [minX, minY, maxX, maxY] = module.withDoubles([0, 0, 0, 0], (at) => {
      module.call("map_box", handle, at);
      return module.doubles(at, 4).slice();
    });
    this.box = Object.freeze({ minX: minX!, minY: minY!, maxX: maxX!, maxY: maxY! });
    this.pixel = pixel ?? (this.box.maxX - this.box.minX) / usualWidth;
  }

  get pixel(): number {
    return this.size;
  }

  set pixel(size: number) {
    this.module.run("map_set_pixel", this.owned.handle, size);
    this.size = size;
  }

  edge(): Paths {
    return this.draw("map_edge");
  }

  graticule(step: number): Paths {
    return this.draw("map_graticule", step);
  }

  tissot(step: number): Paths {
    return this.draw("map_tissot", step);
  }

  fill(rings: Shapes | Paths): Paths {
    return this.withShapes(rings, (handle) => this.draw("map_fill", handle));
  }

  lines(lines: Shapes | Paths): Paths {
    return this.withShapes(lines, (handle) => this.draw("map_lines", handle));
  }

  locate(lon: number, lat: number): [number, number] | null {
    return this.module.withDoubles(numbersOf([lon, lat], "longitude and latitude"), (at) => {
      const answer = this.module.call("map_locate", this.owned.handle, at);
      if (answer < 0) this.module.fail();
      const [x, y] = this.module.doubles(at, 2);
      return answer === 0 ? null : [x!, y!];
    });
  }

  dispose(): void {
    this.owned.dispose();
  }

  private draw(what: string, ...values: number[]): Paths {
    this.module.run(what, this.owned.handle, ...values);
    return this.module.paths();
  }

  private withShapes(given: Shapes | Paths, use: (handle: Handle) => Paths): Paths {
    if (given instanceof ShapesObject) {
      if (given.module !== this.module) throw new OrvexError("these shapes lie in the memory of another module");
      return use(given.handle);
    }
    const shapes = new ShapesObject(this.module, given as Paths);
    try {
      return use(shapes.handle);
    } finally {
      shapes.dispose();
    }
  }
}
