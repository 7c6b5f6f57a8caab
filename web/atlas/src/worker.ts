// Work off the page's own thread: the fine coasts and the person's tables. Arrays are handed over, not copied.
import type { Paths } from "orvex";

import { kept, type Piece } from "./chart";
import { Engine, type Choice } from "./engine";
import { messageOf } from "./format";
import { read, type Job, type Outcome, type Source, type Summary } from "./table";

export type Task =
  | { do: "fine"; choice: Choice; piece: Piece }
  | { do: "read"; name: string; text: string }
  | { do: "columns"; columns: readonly [number, number] }
  | { do: "convert"; job: Job }
  | { do: "grid"; name: string; bytes: ArrayBuffer };

export interface Answers {
  fine: Paths & { lines: Paths };
  read: Summary;
  columns: Summary;
  convert: Outcome;
  grid: void;
}

export type Message =
  | { id: number; result: unknown }
  | { id: number; error: string }
  | { id: number; progress: number };

let engine: Promise<Engine> | undefined;
let source: Source | undefined;

async function fine(choice: Choice, piece: Piece): Promise<Answers["fine"]> {
  const ready = await engine!;
  const land = await ready.fineLand();
  const projection = ready.drawing(choice);
  const map = projection.map(piece.bounds ? { pixel: piece.pixel, bounds: piece.bounds } : { pixel: piece.pixel });
  try {
    return { ...kept(map.fill(land)), lines: kept(map.lines(land)) };
  } finally {
    map.dispose();
    projection.dispose();
  }
}

async function perform(task: Task, progress: (part: number) => void): Promise<unknown> {
  switch (task.do) {
    case "fine": return fine(task.choice, task.piece);
    case "read": return (source = read(task.name, task.text, (await engine!).orvex)).summary();
    case "columns": return source?.summary(task.columns);
    case "convert":
      if (!source) throw new Error("there is no table yet");
      return source.convert(await engine!, task.job, progress);
    case "grid": return (await engine!).orvex.grid(task.name, task.bytes);
  }
}

function buffersOf(value: unknown): ArrayBuffer[] {
  const fineLand = value as Partial<Answers["fine"]> | undefined;
  if (!fineLand?.lines || !fineLand.coords || !fineLand.starts) return [];
  return [fineLand.coords, fineLand.starts, fineLand.lines.coords, fineLand.lines.starts].map((array) => array.buffer as ArrayBuffer);
}

self.addEventListener("message", (event: MessageEvent<{ id: number; base: string; task: Task }>) => {
  const { id, base, task } = event.data;
  engine ??= Engine.start(base);
  perform(task, (progress) => postMessage({ id, progress } satisfies Message)).then(
    (result) => postMessage({ id, result } satisfies Message, { transfer: buffersOf(result) }),
    (error: unknown) => postMessage({ id, error: messageOf(error) } satisfies Message),
  );
});
