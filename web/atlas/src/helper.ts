// A worker and the answers that it owes.
import type { Answers, Message, Task } from "./worker";

interface Waiting {
  resolve(result: never): void;
  reject(error: Error): void;
  progress?(part: number): void;
}

export class Helper {
  private readonly worker = new Worker("worker.js", { type: "module" });
  private readonly waiting = new Map<number, Waiting>();
  private last = 0;

  constructor() {
    this.worker.addEventListener("message", (event: MessageEvent<Message>) => this.take(event.data));
    this.worker.addEventListener("error", (event) => this.fail(event.message || "the worker could not start"));
  }

  ask<T extends Task>(task: T, progress?: (part: number) => void): Promise<Answers[T["do"]]> {
    const id = ++this.last;
    return new Promise((resolve, reject) => {
      this.waiting.set(id, { resolve, reject, progress });
      this.worker.postMessage({ id, base: document.baseURI, task });
    });
  }

  private take(message: Message): void {
    const waiting = this.waiting.get(message.id);
    if (!waiting) return;
    if ("progress" in message) {
      waiting.progress?.(message.progress);
      return;
    }
    this.waiting.delete(message.id);
    if ("error" in message) waiting.reject(new Error(message.error));
    else waiting.resolve(message.result as never);
  }

  private fail(text: string): void {
    for (const waiting of this.waiting.values()) waiting.reject(new Error(text));
    this.waiting.clear();
  }
}
