#!/usr/bin/env python3
"""A million places from state plane feet to WGS 84 and onto a map.

A script in cells: run it as a whole, or cell by cell in an editor that knows "# %%".

Usage: places.py [ROWS [DIRECTORY]]   makes places.csv, places-wgs84.csv and places.png
"""
# %% A table as a county office may have it: x and y in US survey feet, NAD 27, Texas Central zone.
import pathlib
import sys
import time

import matplotlib

matplotlib.use("Agg")
import numpy as np
import pandas as pd

import orvex
import orvex.plot

rows = int(sys.argv[1]) if len(sys.argv) > 1 else 1_000_000
directory = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else ".")

random = np.random.default_rng(1927)
towns = np.array([[2_811_000, 1_010_000], [2_264_000, 595_000], [1_380_000, 730_000], [3_340_000, 680_000]])  # feet
nearest = random.integers(len(towns), size=rows)
places = pd.DataFrame({
    "place": np.arange(rows),
    "x": (towns[nearest, 0] + random.normal(0, 90_000, rows)).round(2),
    "y": (towns[nearest, 1] + random.normal(0, 60_000, rows)).round(2),
})
places.loc[17, "x"] = np.nan  # a gap, as in every table
places.to_csv(directory / "places.csv", index=False)

# %% Read it, convert it, keep it.
table = pd.read_csv(directory / "places.csv")
to_wgs84 = orvex.Transformer("EPSG:32039", "EPSG:4326")  # "NAD27 / Texas Central" to "WGS 84"

start = time.perf_counter()
table["lon"], table["lat"] = to_wgs84.transform(table["x"], table["y"])
seconds = time.perf_counter() - start
table.to_csv(directory / "places-wgs84.csv", index=False, float_format="%.9f")
print(f"{rows} places in {seconds * 1000:.0f} ms; {table.lon.isna().sum()} without a position")

# %% The way back shows what was lost: nothing.
x, y = to_wgs84.inverse(table["lon"], table["lat"])
lost = np.nanmax(np.hypot(x - table["x"], y - table["y"])) * 12
print(f"there and back: {lost:.1e} inches at most")

# %% A projection for the picture, the library's map under it, the places on top.
texas = orvex.Projection("Lambert Conformal Conic", lat1=27.5, lat2=35, lat0=31, lon0=-99)
ax = orvex.plot.world(texas, extent=(-108, 24, -90, 38), ellipses=None)
shown = table.dropna()
px, py = texas.forward(shown["lon"], shown["lat"])
cells = ax.hexbin(px, py, gridsize=160, mincnt=1, bins="log", cmap="magma_r", zorder=3)
ax.figure.colorbar(cells, ax=ax, label="places", shrink=0.6)
ax.set_title(f"{len(shown):,} places, Texas Central feet (1927) on WGS 84")
ax.figure.savefig(directory / "places.png", dpi=120)
print(f"picture: {directory / 'places.png'}")
