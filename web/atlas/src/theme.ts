// Colours of the maps, as the styles of the page have them: light and dark.
export interface Theme {
  dark: boolean;
  paper: string;
  sea: string;
  land: string;
  coast: string;
  ink: string;
  quiet: string;
  grid: string;
  accent: string;
  halo: string;
  own: string;
}

const names = ["paper", "sea", "land", "coast", "ink", "quiet", "grid", "accent", "halo", "own"] as const;

/** The colours in force. */
export function theme(): Theme {
  const style = getComputedStyle(document.documentElement);
  const colors = Object.fromEntries(names.map((name) => [name, style.getPropertyValue(`--map-${name}`).trim()]));
  return { dark: style.getPropertyValue("--dark").trim() === "1", ...colors } as Theme;
}
