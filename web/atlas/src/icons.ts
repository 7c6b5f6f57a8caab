// Small drawings for buttons, lines of one width in the colour of the text.
const drawings = {
  copy: "M6 5.500V4a1.500 1.500 0 0 1 1.500-1.500H12A1.500 1.500 0 0 1 13.500 4v5A1.500 1.500 0 0 1 12 10.500h-1.500M4 5.500h5A1.500 1.500 0 0 1 10.500 7v5A1.500 1.500 0 0 1 9 13.500H4A1.500 1.500 0 0 1 2.500 12V7A1.500 1.500 0 0 1 4 5.500Z",
  plus: "M8 3v10M3 8h10",
  minus: "M3 8h10",
  whole: "M2.500 6V3.500a1 1 0 0 1 1-1H6M10 2.500h2.500a1 1 0 0 1 1 1V6M13.500 10v2.500a1 1 0 0 1-1 1H10M6 13.500H3.500a1 1 0 0 1-1-1V10",
  share: "M8 10V2.500M5 5l3-3 3 3M3 9v3.500a1 1 0 0 0 1 1h8a1 1 0 0 0 1-1V9",
  close: "M4 4l8 8M12 4l-8 8",
} as const;

export type IconName = keyof typeof drawings;

export function icon(name: IconName): Element {
  const namespace = "http://www.w3.org/2000/svg";
  const svg = document.createElementNS(namespace, "svg");
  for (const [key, value] of Object.entries({ viewBox: "0 0 16 16", width: "16", height: "16", fill: "none", stroke: "currentColor", "stroke-width": "1.3", "stroke-linecap": "round", "stroke-linejoin": "round", "aria-hidden": "true" })) svg.setAttribute(key, value);
  const path = document.createElementNS(namespace, "path");
  path.setAttribute("d", drawings[name]);
  svg.append(path);
  return svg;
}
