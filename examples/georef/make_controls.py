#!/usr/bin/env python3
"""Writes controls.csv: twelve control points of a made-up scan of a map, pixels to UTM.

A sheet of 1:25000 scanned at 300 dots per inch (2.117 m a pixel), laid on the scanner 0.6 degrees askew; the paper has
shrunk by 0.3 % across the grain and is bent a little; each point was read to about a pixel. Pixel y runs downwards.
"""
import math
import pathlib
import random

WIDTH, HEIGHT = 6400, 5200  # pixels
PIXEL = 25000 * 0.0254 / 300  # metres
SKEW = math.radians(0.6)
EAST, NORTH = 688400.0, 5337900.0  # upper left corner, UTM zone 32 north


def ground(x, y):
    u, v = x * PIXEL * 1.003, y * PIXEL
    u += 9.0 * math.sin(math.pi * y / HEIGHT)  # the bend
    return (EAST + u * math.cos(SKEW) + v * math.sin(SKEW),
            NORTH + u * math.sin(SKEW) - v * math.cos(SKEW))


def main():
    rng = random.Random(20240517)
    lines = ["x,y,easting,northing"]
    for row in range(3):
        for column in range(4):
            x = round((column + 0.5) / 4 * WIDTH + rng.uniform(-500, 500))
            y = round((row + 0.5) / 3 * HEIGHT + rng.uniform(-500, 500))
            east, north = ground(x, y)
            lines.append(f"{x},{y},{east + rng.gauss(0, 1.8):.1f},{north + rng.gauss(0, 1.8):.1f}")
    path = pathlib.Path(__file__).with_name("controls.csv")
    path.write_text("\n".join(lines) + "\n", encoding="ascii", newline="\n")


if __name__ == "__main__":
    main()
