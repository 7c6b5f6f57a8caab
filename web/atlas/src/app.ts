// What the parts of the page share: the state, the library, the main map, and how each hears of changes.
import type { Accuracy } from "orvex";

import type { Engine } from "./engine";
import type { AngleText } from "./format";
import type { Helper } from "./helper";
import type { MapView } from "./mapview";
import type { Place, State } from "./state";

export interface App {
  readonly engine: Engine;
  readonly angles: AngleText;
  readonly state: State;
  readonly map: MapView;
  readonly helper: Helper;
  readonly accuracy: Accuracy;
  /** Changes the state; the page follows. A change that is done becomes a step that the back button undoes. */
  change(part: Partial<State>, done?: boolean): void;
  setPoint(place: Place | undefined, done?: boolean): void;
  /** One of the maps has moved; `done` when it stands still. */
  moved(done: boolean): void;
  /** Shows the whole of some places on the main map. */
  goTo(at: Place, zoom?: number): void;
}

/** A page of the panel. */
export interface Page {
  readonly element: HTMLElement;
  /** The state, the projection or the point is another one. */
  update(): void;
  /** The pointer is over a place. */
  pointed?(place: Place | undefined): void;
  /** A click on the map while this page is open; true when the page has used it. */
  picked?(place: Place): boolean;
  opened?(open: boolean): void;
}
