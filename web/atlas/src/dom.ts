// Elements in a line: h("button", { type: "button", onclick: ... }, "Copy").
type Attributes = Record<string, unknown>;
type Child = Node | string | undefined | null | false;

export function h<K extends keyof HTMLElementTagNameMap>(tag: K, attributes: Attributes = {}, ...children: Child[]): HTMLElementTagNameMap[K] {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (value === undefined || value === false) continue;
    if (name.startsWith("on")) element.addEventListener(name.slice(2), value as EventListener);
    else element.setAttribute(name, value === true ? "" : String(value));
  }
  element.append(...children.filter((child): child is Node | string => Boolean(child)));
  return element;
}

export function byId(id: string): HTMLElement {
  const element = document.getElementById(id);
  if (!element) throw new Error(`the page lacks #${id}`);
  return element;
}

let ids = 0;
/** A name for an element that a label or a description refers to. */
export function freshId(prefix: string): string {
  return `${prefix}-${++ids}`;
}

/** Hands a file to the person, as the browser saves files. */
export function save(blob: Blob, name: string): void {
  const url = URL.createObjectURL(blob);
  h("a", { href: url, download: name }).click();
  setTimeout(() => URL.revokeObjectURL(url), 10_000);
}

/** Once before the next picture, however often asked for. */
export function eachFrame(work: () => void): () => void {
  let asked = 0;
  return () => {
    asked ||= requestAnimationFrame(() => {
      asked = 0;
      work();
    });
  };
}

/** After calls have ceased for a while. */
export function afterQuiet(milliseconds: number, work: () => void): () => void {
  let timer = 0;
  return () => {
    clearTimeout(timer);
    timer = window.setTimeout(work, milliseconds);
  };
}

/** A short message at the foot of the page, also read aloud. */
export function announce(text: string, kind: "note" | "error" = "note"): void {
  const message = h("p", { class: `message ${kind}` }, text);
  const list = byId("messages");
  list.replaceChildren(message);
  setTimeout(() => message.remove(), kind === "error" ? 9000 : 4000);
}

export async function copy(text: string, what: string): Promise<void> {
  try {
    await navigator.clipboard.writeText(text);
    announce(`${what} copied`);
  } catch {
    announce(`The browser does not let the page copy. ${text}`, "error");
  }
}

export type DropHandler = (files: File[]) => void;

/** Lets files be dropped on an element. */
export function acceptDrops(target: HTMLElement, take: DropHandler): void {
  const over = (on: boolean) => target.classList.toggle("over", on);
  target.addEventListener("dragover", (event) => {
    event.preventDefault();
    over(true);
  });
  target.addEventListener("dragleave", () => over(false));
  target.addEventListener("drop", (event) => {
    event.preventDefault();
    over(false);
    const files = [...(event.dataTransfer?.files ?? [])];
    if (files.length > 0) take(files);
  });
}
