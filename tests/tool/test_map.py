#!/usr/bin/env python3
"""Tests of orvex map on the pictures themselves: for every projection of the gallery the land must lie where it lies.

Usage: test_map.py PROGRAM [unittest arguments]
"""
import importlib.machinery
import importlib.util
import math
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

PROGRAM = ""
ROOT = pathlib.Path(__file__).resolve().parents[2]
SVG = "{http://www.w3.org/2000/svg}"
COAST = "#6b6046"


def load_gallery():
    loader = importlib.machinery.SourceFileLoader("gallery", str(ROOT / "scripts/gallery"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("gallery", loader))
    loader.exec_module(module)
    return module.commands()


def run(*arguments, text=""):
    return subprocess.run([PROGRAM, *arguments], input=text, capture_output=True, text=True, timeout=300)


def subpaths(data):
    """Closed or open pieces of absolute positions."""
    pieces = []
    for chunk in data.split("M")[1:]:
        numbers = [int(n) for n in re.findall(r"-?\d+", chunk)]
        x = y = 0
        pieces.append([])
        for dx, dy in zip(numbers[::2], numbers[1::2]):
            x, y = x + dx, y + dy
            pieces[-1].append((x, y))
    return pieces


class Map:
    """A picture taken apart; positions in tenths of a pixel."""

    def __init__(self, *arguments):
        done = run("map", *arguments)
        if done.returncode != 0:
            raise AssertionError((arguments, done.stderr))
        self.text = done.stdout
        self.root = ElementTree.fromstring(done.stdout)
        self.width, self.height = (int(n) for n in self.root.get("viewBox").split()[2:])
        self.area = subpaths(self.root.find(f"{SVG}defs/{SVG}path").get("d"))
        self.paths = self.root.findall(f"{SVG}path")
        self.land = [piece for p in self.paths if p.get("fill-rule") for piece in subpaths(p.get("d"))]

    def lines(self, attribute, value):
        return [piece for p in self.paths if p.get(attribute) == value for piece in subpaths(p.get("d"))]


def inside(pieces, x, y):
    """Even-odd rule."""
    odd = False
    for piece in pieces:
        for (x1, y1), (x2, y2) in zip(piece, piece[1:] + piece[:1]):
            if (y1 > y) != (y2 > y) and x < x1 + (y - y1) * (x2 - x1) / (y2 - y1):
                odd = not odd
    return odd


def area(pieces):
    """Signed by the sense of each ring, so that holes count against their rings."""
    return abs(sum(x1 * y2 - x2 * y1 for p in pieces for (x1, y1), (x2, y2) in zip(p, p[1:] + p[:1]))) / 2


def world():
    """The rings of the world, each unwound, the one that winds round the pole closed along it."""
    rings = []
    for line in (ROOT / "examples/world/land.txt").read_text().splitlines():
        if line.startswith("ring"):
            rings.append([])
        elif not line.startswith("#"):
            lon, lat = (float(word) for word in line.split())
            if rings[-1]:
                lon = rings[-1][-1][0] + math.remainder(lon - rings[-1][-1][0], 360)
            rings[-1].append((lon, lat))
    for ring in rings:
        if abs(ring[-1][0] - ring[0][0]) > 180:
            ring += [(ring[-1][0], -90), (ring[0][0], -90)]
    return rings


def on_land(rings, lon, lat):
    return any(sum(inside([ring], lon + turn, lat) for ring in rings) % 2 for turn in (-360, 0, 360))


def arc(a, b):
    sines = math.sin(math.radians(a[1])) * math.sin(math.radians(b[1]))
    cosines = math.cos(math.radians(a[1])) * math.cos(math.radians(b[1])) * math.cos(math.radians(a[0] - b[0]))
    return math.degrees(math.acos(max(-1, min(1, sines + cosines))))


def probes(rings, count=1200):
    """Points spread evenly over the globe, all farther from every coast point than 1.5 degrees, and whether on land."""
    coast = [p for ring in rings for p in ring if p[1] > -90]
    points = []
    for i in (k * 541 % count for k in range(count)):  # all over the globe from the first few on
        p = (math.remainder((i + 0.5) * 222.49223594996, 360), math.degrees(math.asin((2 * i + 1) / count - 1)))
        if all(abs(p[1] - q[1]) > 1.5 or arc(p, q) > 1.5 for q in coast):
            points.append((*p, on_land(rings, *p)))
    return points


def setting(arguments, name, default=0.0):
    found = re.search(rf"\b{name}=(\S+)", " ".join(arguments))
    return float(found.group(1)) if found else default


def without(arguments, option):
    return [a for i, a in enumerate(arguments) if option not in (a, arguments[i - 1])]


def projected(arguments, points):
    """Map coordinates by the tool's other command; None where there are none."""
    out = run("project", *arguments, text="".join(f"{lon!r},{lat!r}\n" for lon, lat in points)).stdout
    return [tuple(map(float, line.split(","))) if line[0] != "," else None for line in out.splitlines()]


class Pictures(unittest.TestCase):
    def test_gallery(self):
        """Valid, inside its view, free of streaks; known points of land and sea are painted as such."""
        rings = world()
        points = probes(rings)
        self.assertGreater(len(points), 250)
        for name, options in load_gallery():
            with self.subTest(projection=name):
                arguments = shlex.split(options)
                picture = Map(*without(arguments, "--graticule"), "--graticule", "0")
                self.check_frame(picture)
                lon0 = 0 if name == "Robinson" else setting(arguments, "lon0")
                here = [(lon0 + math.remainder(p[0] - lon0, 360), p[1]) for p in points]
                maps = projected(without(without(arguments, "--graticule"), "--bounds"), here)
                seen = self.check_paint(name, picture, maps, here, points, (lon0, setting(arguments, "lat0")))
                self.assertGreater(seen, 1 if "State" in name or "--bounds" in options else 10, name)

    def check_frame(self, picture):
        self.assertIsNotNone(picture.root.find(f"{SVG}title").text)
        self.assertNotIn("http", picture.text.replace("http://www.w3.org/2000/svg", ""))
        for piece in picture.area + picture.land + picture.lines("stroke", COAST):
            for x, y in piece:
                self.assertTrue(0 <= x <= picture.width and 0 <= y <= picture.height, (x, y))
        # No step of a coast is that long, even where the map stretches most.
        longest = max((math.dist(a, b) for p in picture.lines("stroke", COAST) for a, b in zip(p, p[1:])), default=0)
        self.assertLess(longest, 0.2 * math.hypot(picture.width, picture.height))

    def check_paint(self, name, picture, maps, here, points, centre):
        scale, x0, y0 = map(float, re.findall(r"[-+.\de]+\d", picture.root.find(f"{SVG}desc").text))
        seen = 0
        for place, (lon, lat), (_, _, land) in zip(maps, here, points):
            if seen == 80:
                break
            if place is None or (name == "Cassini" and arc((lon, lat), centre) > 88):
                continue  # the far hemisphere would be folded over the near one
            if "ransverse" in name and abs(lon - centre[0]) > 45:
                continue
            x, y = 10 * x0 + 10 * place[0] / scale, 10 * y0 - 10 * place[1] / scale
            if inside(picture.area, x, y):
                seen += 1
                # Two of three spots: boxes that lie side by side may part by a tenth of a pixel.
                painted = sum(inside(picture.land, x + dx, y + dy) for dx, dy in ((0, 0), (7, 3), (-4, 6))) >= 2
                self.assertEqual(painted, land, (name, lon, lat))
        return seen

    def test_land_share(self):
        """On an equal-area map of the globe the land's share is that of the rings on the sphere, wherever it is centred."""
        sines = [[(lon, math.sin(math.radians(lat))) for lon, lat in ring] for ring in world()]
        expected = area(sines) / 720  # Archimedes: longitude and the sine of latitude make an equal-area map
        self.assertAlmostEqual(expected, 0.29, delta=0.01)
        cases = [("Mollweide", f"lon0={lon}") for lon in (-180, -90, -169.5, 10, 179, 300)]
        cases += [("Sinusoidal", "lon0=180"), ("Eckert IV", "lon0=-100"), ("Eckert VI", "lon0=65.25")]
        cases += [("Lambert Azimuthal Equal Area", f"lon0={lon} lat1={lat}")
                  for lon, lat in ((0, 0), (180, 0), (77, 40), (-150, -35), (0, 90), (30, -90), (20, -89))]
        cases += [("Bonne", "lat1=40 lon0=-120"), ("Bonne", "lat1=90 lon0=10"), ("Albers Equal Area Conic", "lat1=20 lat2=50 lon0=170")]
        for name, settings in cases:
            options = [word for s in settings.split() for word in ("--set", s)]
            picture = Map("--proj", name, *options, "--set", "radius=6371000", "--graticule", "0", "--width", "2000")
            self.assertAlmostEqual(area(picture.land) / area(picture.area), expected, delta=0.001, msg=(name, settings))

    def test_own_shapes_and_refusals(self):
        with tempfile.TemporaryDirectory() as directory:
            own = pathlib.Path(directory) / "own.txt"
            own.write_text("# a square with a hole over the antimeridian, and a route\nring 4\n170,-10\n190,-10\n190,10\n"
                           "170,10\nring 4\n178 -2\n178 2\n-178 2\n-178 -2\nLine 2\n-73.8 40.6\n139.8 35.5\n")
            picture = Map("--proj", "equidistant cylindrical", "--set", "lat1=0", "--land", str(own), "--title", "A & <B>",
                          "--width", "4000")
            self.assertEqual(picture.root.find(f"{SVG}title").text, "A & <B>")
            # 20 x 20 less 4 x 4 of 360 x 180 square degrees
            self.assertAlmostEqual(area(picture.land) / area(picture.area), (400 - 16) / 64800, delta=1e-5)
            for text, says in (("ring 2\n1 2\n3 4\n", ":1: a ring"), ("line 2\n1 2\n", "ends inside"),
                               ("line 2\n1 2\n3 91\n", ":3: expected a longitude"), ("point 1\n1 2\n", ":1: expected")):
                own.write_text(text)
                done = run("map", "--proj", "Mollweide", "--land", str(own))
                self.assertEqual((done.returncode, done.stdout), (2, ""), text)
                self.assertIn(says, done.stderr)
        for options, says in ((["--bounds", "1,2,3"], "W,S,E,N"), (["--width", "7"], "--width"),
                              (["--graticule", "-1"], "--graticule"), (["--out", "/nowhere/x.svg"], "cannot write")):
            done = run("map", "--proj", "Mollweide", *options)
            self.assertEqual(done.returncode, 2, options)
            self.assertIn(says, done.stderr)
        self.assertIn("no projection that can be drawn", run("map", "--proj", "Unprojected Lat/Long").stderr)


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
