// At phone width the panels are sheets that slide up over the map, opened from a bar at the foot.
import { byId, h } from "./dom";
import { icon } from "./icons";

const sheets = [["choose", "Projection"], ["panel", "Details"]] as const;

export function setUpSheets(): void {
  const bar = byId("bar");
  const buttons = sheets.map(([id, name]) => {
    const button = h("button", { type: "button", "aria-expanded": "false", "aria-controls": id }, name);
    button.addEventListener("click", () => open(button.getAttribute("aria-expanded") === "true" ? undefined : id));
    return button;
  });
  const open = (which: string | undefined) =>
    sheets.forEach(([id], i) => {
      byId(id).classList.toggle("open", id === which);
      buttons[i]!.setAttribute("aria-expanded", String(id === which));
    });
  bar.append(...buttons);
  for (const close of document.querySelectorAll("[data-close]")) {
    close.append(icon("close"));
    close.addEventListener("click", () => open(undefined));
  }
  document.addEventListener("keydown", (event) => {
    if (event.key === "Escape") open(undefined);
  });
  document.querySelector("[data-skip]")?.addEventListener("click", (event) => {
    event.preventDefault();
    document.querySelector<HTMLElement>(".surface")?.focus();
  });
}
