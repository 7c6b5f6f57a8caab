// Points in the module's memory.
import { OrvexError } from "./errors.js";
import { pointBytes } from "./module.js";
import type { Module } from "./module.js";
import { Owned } from "./owned.js";
import type { Points } from "./types.js";

export class PointsObject implements Points {
  private readonly owned: Owned;

  constructor(private readonly module: Module, readonly length: number) {
    if (!Number.isInteger(length) || length < 0) throw new OrvexError(`${length} is not a number of points`);
    this.owned = new Owned(module, module.allocate(length * pointBytes), "points_delete", "array of points");
    this.array.fill(0);
  }

  get array(): Float64Array {
    return this.module.doubles(this.owned.handle, 2 * this.length);
  }

  dispose(): void {
    this.owned.dispose();
  }
}
