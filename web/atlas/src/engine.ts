// The library, loaded once for a thread, and projections as the page names them.
import { load, type Accuracy, type Orvex, type Params, type Projection, type ProjectionInfo, type Shapes as Stored } from "orvex";

import { entryOf, type Values } from "./catalogue";
import { fetchOutlines, type Shapes } from "./outlines";

/** A projection and what it is told, as threads tell each other. */
export interface Choice {
  slug: string;
  values: Values;
}

/** On this sphere an arc of a degree is 1 long, so that Equidistant Cylindrical draws plain degrees. */
const degreeSphere = { radius: 180 / Math.PI, flattening: 0 };

export class Engine {
  private readonly infos: Map<string, ProjectionInfo>;

  private constructor(readonly orvex: Orvex, readonly coarse: Shapes, readonly coarseLand: Stored, private readonly base: string) {
    this.infos = new Map(orvex.projections.map((info) => [info.name, info]));
  }

  static async start(base: string): Promise<Engine> {
    const [orvex, land] = await Promise.all([load({ wasm: new URL("orvex.wasm", base) }), fetchOutlines("land110.bin", base)]);
    return new Engine(orvex, land, orvex.shapes(land), base);
  }

  private fine?: Promise<Stored>;
  /** The land at 1:50m, fetched when first asked for. */
  fineLand(): Promise<Stored> {
    this.fine ??= fetchOutlines("land50.bin", this.base).then((land) => this.orvex.shapes(land));
    return this.fine;
  }

  info(slug: string): ProjectionInfo {
    const entry = entryOf(slug);
    const info = entry && this.infos.get(entry.name);
    if (!info) throw new Error(`the library has no projection "${slug}"`);
    return info;
  }

  /** What an address may speak of. */
  readonly known = {
    parameter: (slug: string, key: string) => this.has(slug, key),
    datum: (name: string, asDestination: boolean) => this.orvex.datums.some((datum) => datum.name === name && (datum.reversible || !asDestination)),
  };

  has(slug: string, key: string): boolean {
    if (key === "radius" || key === "flattening") return this.info(slug).usesEllipsoid;
    return this.info(slug).parameters.some((parameter) => parameter.key === key);
  }

  /** What a projection is told: where it opens, apart from what is chosen. */
  values(choice: Choice): Values {
    return { ...entryOf(choice.slug)?.start, ...choice.values };
  }

  make(choice: Choice, accuracy: Accuracy = "exact"): Projection {
    return this.orvex.projection(this.info(choice.slug).name, this.values(choice) as Params, { accuracy });
  }

  /** The projection that draws a choice: its own, or the plate of plain degrees. */
  drawing(choice: Choice, accuracy: Accuracy = "exact"): Projection {
    if (this.info(choice.slug).drawable) return this.make(choice, accuracy);
    return this.orvex.projection("Equidistant Cylindrical", { ellipsoid: degreeSphere }, { accuracy });
  }
}
