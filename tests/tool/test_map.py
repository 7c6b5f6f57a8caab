#!/usr/bin/env python3
"""Tests of orvex map on the pictures themselves: for every projection of the gallery the land must lie where it lies.

Usage: test_map.py PROGRAM [unittest arguments]
"""
import array
import collections
import contextlib
import ctypes
import fcntl
import importlib.machinery
import importlib.util
import json
import math
import os
import pathlib
import random
import re
import shlex
import struct
import subprocess
import sys
import tempfile
import termios
import time
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
        self.land = self.fills("land")

    def fills(self, name):
        """One list of pieces for each area of a class; the pieces count by the even-odd rule."""
        return [subpaths(p.get("d")) for p in self.root.findall(f"{SVG}g[@class='{name}']/{SVG}path")]

    def texts(self, name):
        """Text, position and anchor of the texts of a class."""
        return [(t.text, int(t.get("x")), int(t.get("y")), t.get("text-anchor")) for t in self.root.iter(f"{SVG}text")
                if t.get("class") == name]

    def spot(self, x, y):
        """Position of map coordinates."""
        scale, x0, y0 = frame(self)
        return 10 * x0 + 10 * x / scale, 10 * y0 - 10 * y / scale

    def lines(self, attribute, value):
        return [piece for p in self.paths if p.get(attribute) == value for piece in subpaths(p.get("d"))]


def frame(picture):
    """Map units in a pixel, and the pixel of their origin."""
    return map(float, re.findall(r"[-+.\de]+\d", picture.root.find(f"{SVG}desc").text))


class Segments:
    """Finds out whether a line passes near a spot."""

    CELL, NEAR = 50, 4  # tenths of a pixel

    def __init__(self, lines):
        self.cells = collections.defaultdict(list)
        for line in lines:
            for a, b in zip(line, line[1:]):
                for k in range(steps := int(math.dist(a, b) // 20) + 1):
                    spot = tuple(a[i] + (b[i] - a[i]) * (k + 0.5) / steps for i in (0, 1))
                    if (a, b) not in (cell := self.cells[self.cell(*spot)])[-1:]:
                        cell.append((a, b))

    def cell(self, x, y):
        return int(x // self.CELL), int(y // self.CELL)

    def near(self, x, y):
        i, k = self.cell(x, y)
        return any(self.distance(x, y, *s) < self.NEAR
                   for u in (-1, 0, 1) for v in (-1, 0, 1) for s in self.cells.get((i + u, k + v), ()))

    @staticmethod
    def distance(x, y, a, b):
        dx, dy = b[0] - a[0], b[1] - a[1]
        t = max(0, min(1, ((x - a[0]) * dx + (y - a[1]) * dy) / ((dx * dx + dy * dy) or 1)))
        return math.hypot(x - a[0] - t * dx, y - a[1] - t * dy)


def painted(areas, x, y):
    return any(inside(pieces, x, y) for pieces in areas)


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


def painted_area(areas):
    """The pieces of an area that lie in an odd number of others are its holes."""
    total = 0
    for pieces in areas:
        for piece in pieces:
            others = sum(inside([other], *piece[0]) for other in pieces if other is not piece)
            total += -area([piece]) if others % 2 else area([piece])
    return total


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


@contextlib.contextmanager
def closings_by_readers(path):
    """A function that tells how often the file has been closed by those who opened it to read."""
    opened, closed_unwritten, header = 0x20, 0x10, struct.Struct("iIII")  # inotify(7)
    libc = ctypes.CDLL(None, use_errno=True)
    queue = libc.inotify_init()
    # openings too: without them closings in a row would be one event
    if libc.inotify_add_watch(queue, os.fsencode(path), opened | closed_unwritten) < 0:
        raise OSError(ctypes.get_errno(), "inotify")
    try:
        yield lambda: sum(mask == closed_unwritten for _, mask, _, _ in header.iter_unpack(os.read(queue, 100 * header.size)))
    finally:
        os.close(queue)


def unread(pipe):
    """Bytes that wait in a pipe."""
    count = array.array("i", [0])
    fcntl.ioctl(pipe, termios.FIONREAD, count)
    return count[0]


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
                maps = projected(without(without(without(arguments, "--graticule"), "--bounds"), "--great-circle"), here)
                seen = self.check_paint(name, picture, maps, here, points, (lon0, setting(arguments, "lat0")))
                self.assertGreater(seen, 1 if "State" in name or "--bounds" in options else 10, name)

    def check_frame(self, picture):
        self.assertIsNotNone(picture.root.find(f"{SVG}title").text)
        self.assertNotIn("http", picture.text.replace("http://www.w3.org/2000/svg", ""))
        for piece in picture.area + picture.lines("stroke", COAST):
            for x, y in piece:
                self.assertTrue(0 <= x <= picture.width and 0 <= y <= picture.height, (x, y))
        self.check_edges(picture)
        # No step of a coast is that long, even where the map stretches most.
        longest = max((math.dist(a, b) for p in picture.lines("stroke", COAST) for a, b in zip(p, p[1:])), default=0)
        self.assertLess(longest, 0.2 * math.hypot(picture.width, picture.height))

    def check_edges(self, picture):
        """Land ends at a coast or at the edge of the map and nowhere else: no hairlines, no streaks, nothing beyond.
        Along the far meridian of an oblique map of an ellipsoid, where the map has no room for the last 0.8 degrees of
        the globe, parts of one area meet and coasts may be some pixels apart."""
        edges = Segments(picture.lines("stroke", COAST) + [piece + piece[:1] for piece in picture.area])
        land = sum(picture.land, [])
        for piece in land:
            astray = 0
            for a, b in zip(piece, piece[1:] + piece[:1]):
                for k in range(steps := int(math.dist(a, b) // 20) + 1):
                    x, y = (a[i] + (b[i] - a[i]) * k / steps for i in (0, 1))
                    well = edges.near(x, y) or all(any(inside([p], x + dx, y + dy) for p in land)
                                                   for dx, dy in ((12, 0), (-12, 0), (0, 12), (0, -12)))
                    astray = 0 if well else astray + 1
                    self.assertLess(astray, 5, (x, y))

    def test_edges(self):
        """Where the edge of the map is no meridian, and where the map is torn."""
        line = "--set lat1=40.6 --set lon1=-73.8 --set lat2=35.5 --set lon2=139.8".split()
        for options in (["Oblique Mercator", *line], ["Oblique Mercator", *line, "--set", "k0=100"],
                        ["Oblique Mercator", *line, "--bounds", "100,-20,300,80"],
                        ["Gnomonic", "--set", "lat1=-10", "--set", "lon0=200"], ["Stereographic", "--set", "lat0=0"],
                        ["Orthographic", "--set", "lat0=-40", "--set", "lon0=170"],
                        ["Orthographic", "--bounds", "-100,-80,100,80"],
                        ["Cassini", "--set", "lat0=-60", "--set", "lon0=100"],
                        ["Azimuthal Equidistant", "--set", "lat1=-30", "--set", "lon0=-60"]):
            with self.subTest(options=options):
                self.check_edges(Map("--proj", *options, "--graticule", "0"))

    def test_meridians_meet(self):
        """Van der Grinten's meridians reach the poles."""
        picture = Map("--proj", "Van Der Grinten")
        top = min(y for piece in picture.area for _, y in piece)
        meridians = [piece for piece in picture.lines("stroke", "#667") if abs(piece[0][1] - piece[-1][1]) > 5000]
        self.assertEqual(len(meridians), 23)
        for piece in meridians:
            self.assertLess(min(y for _, y in piece) - top, 10)

    def test_overlapping_rings(self):
        """Rings that overlap are painted where they do; a ring inside another one is a hole, one in the hole is not."""
        square = "ring 4\n{0} {0}\n{1} {0}\n{1} {1}\n{0} {1}\n"
        with tempfile.TemporaryDirectory() as directory:
            own = pathlib.Path(directory) / "own.txt"
            own.write_text("".join(square.format(*ends) for ends in ((0, 40), (20, 60), (5, 18), (10, 14))))
            picture = Map("--proj", "Equidistant Cylindrical", "--set", "lat1=0", "--overlay", str(own))
            scale, x0, y0 = frame(picture)
            for degrees, painted_there in ((3, 1), (7, 0), (12, 1), (16, 0), (30, 1), (50, 1), (62, 0)):
                d = 10 * math.radians(degrees) * 6378137 / scale
                self.assertEqual(painted(picture.fills("overlay"), 10 * x0 + d, 10 * y0 - d), bool(painted_there), degrees)

    def test_title(self):
        """A long title takes as many lines as it needs, each within the picture."""
        for title in ("W" * 300, "The provinces of the kingdom and their neighbours " * 6, "\u5730\u56f3" * 100):
            picture = Map("--proj", "Mollweide", "--title", title, "--width", "500")
            lines = [t for t in picture.root.iter(f"{SVG}text") if t.get("class") == "title"]
            self.assertGreater(len(lines), 2)
            self.assertEqual("".join(t.text for t in lines).replace(" ", ""), title.replace(" ", ""))
            top = min(y for piece in picture.area for _, y in piece)
            for t in lines:
                width = len(t.text) * int(t.get("font-size")) * (0.98 if t.text[0] in "W\u5730\u56f3" else 0.45)
                self.assertLess(width, picture.width)
                self.assertLess(int(t.get("y")), top)
        self.assertIn("no room", run("map", "--proj", "Mollweide", "--title", "x" * 2000, "--height", "200").stderr)

    def test_hard_shapes(self):
        """Lines that wind round the globe, falling zigzags, rings of random points: time and memory grow with the data."""
        random.seed(7)
        count = 100000
        shapes = {"winding": ("line", ((i * 170 % 360 - 180, -60 + 120 * i / count) for i in range(count))),
                  "zigzag": ("line", ((60 - i % 2 * 120, 80 - 160 * i / count) for i in range(count))),
                  "random": ("ring", ((random.uniform(-180, 180), random.uniform(-90, 90)) for _ in range(count)))}
        with tempfile.TemporaryDirectory() as directory:
            own = pathlib.Path(directory) / "own.txt"
            for name, (kind, points) in shapes.items():
                own.write_text(f"{kind} {count}\n" + "".join(f"{x:.4f} {y:.5f}\n" for x, y in points))
                for projection in ("Mollweide", "Orthographic"):
                    with self.subTest(shape=name, projection=projection):
                        command = [PROGRAM, "map", "--proj", projection, "--land", str(own), "-o", os.devnull]
                        _, status, used = os.wait4(os.posix_spawn(PROGRAM, command, os.environ), 0)
                        self.assertEqual(status, 0)
                        self.assertLess(used.ru_maxrss, 1200000)  # kB; a quarter of it without sanitizers
                        self.assertLess(used.ru_utime, 120)  # seconds; a few without

    def test_many_shapes(self):
        """Islands in a lake of as many points, stacks of rings, crowded places with names: what lies where is found without
        asking all."""
        random.seed(7)
        place = lambda: (random.uniform(-40, 40), random.uniform(-40, 40))
        lake = [(60 * math.cos(i * 2e-5 * math.pi), 60 * math.sin(i * 2e-5 * math.pi)) for i in range(100000)]
        islands = [[(x + a, y + b) for a, b in ((0, 0), (0.1, 0), (0.1, 0.1))] for x, y in (place() for _ in range(100000))]
        rings = "".join(f"ring {len(ring)}\n" + "".join("%.4f %.4f\n" % p for p in ring) for ring in [lake] + islands)
        names = "lon,lat,name\n" + "".join("%.4f,%.4f,place %d\n" % (*place(), i) for i in range(200000))
        square = lambda x, y, half: f"ring 4\n{x - half} {y - half}\n{x + half} {y - half}\n{x + half} {y + half}\n{x - half} {y + half}\n"
        count = 100000
        cases = {"islands": ("--overlay", rings), "places": ("--points", names),
                 "one within the other": ("--overlay", "".join(square(0, 0, 5 - 4 * i / count) for i in range(count))),
                 "one beside the other": ("--overlay", "".join(square(5 * i / count, 0, 5) for i in range(count))),
                 "all the same": ("--overlay", square(0, 0, 5) * count),
                 "one place": ("--points", "lon,lat,name\n" + "10,10,somewhere\n" * 2 * count)}
        with tempfile.TemporaryDirectory() as directory:
            for name, (option, text) in cases.items():
                with self.subTest(case=name):
                    own = pathlib.Path(directory) / "own.txt"
                    own.write_text(text)
                    command = [PROGRAM, "map", "--proj", "Robinson", option, str(own), "-o", os.devnull]
                    _, status, used = os.wait4(os.posix_spawn(PROGRAM, command, os.environ), 0)
                    self.assertEqual(status, 0)
                    self.assertLess(used.ru_utime, 60)  # seconds; two without sanitizers, minutes when every pair was looked at

    @unittest.skipUnless(sys.platform == "linux", "counts by inotify")
    def test_a_pipe_is_opened_once(self):
        """Its only writer may have gone when it is opened again."""
        texts = {"--overlay": ("pipe.json", '{"type":"Point","coordinates":[13,52]}'), "--land": ("pipe.txt", "ring 3\n0 0\n9 0\n9 9\n"),
                 "--points": ("pipe.csv", "lon,lat,name\n13,52,Berlin\n")}
        with tempfile.TemporaryDirectory() as directory:
            for option, (name, text) in texts.items():
                pipe = pathlib.Path(directory) / name
                os.mkfifo(pipe)
                with closings_by_readers(pipe) as closings:
                    writer = os.open(pipe, os.O_RDWR)  # so that the program waits for nobody, however often it opens the pipe
                    os.write(writer, text.encode())
                    with subprocess.Popen([PROGRAM, "map", "--proj", "Robinson", option, str(pipe), "-o", os.devnull]) as process:
                        try:
                            while unread(writer) and process.poll() is None:
                                time.sleep(0.01)
                            os.close(writer)
                            self.assertEqual(process.wait(timeout=60), 0, option)
                        finally:
                            process.kill()
                    self.assertEqual(closings(), 1, option)

    def check_paint(self, name, picture, maps, here, points, centre):
        scale, x0, y0 = frame(picture)
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
                self.assertEqual(painted(picture.land, x, y), land, (name, lon, lat))
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
            self.assertAlmostEqual(painted_area(picture.land) / area(picture.area), expected, delta=0.001, msg=(name, settings))

    def test_own_shapes_and_refusals(self):
        with tempfile.TemporaryDirectory() as directory:
            own = pathlib.Path(directory) / "own.txt"
            own.write_text("# a square with a hole over the antimeridian, and a route\nring 4\n170,-10\n190,-10\n190,10\n"
                           "170,10\nring 4\n178 -2\n178 2\n-178 2\n-178 -2\nLine 2\n-73.8 40.6\n139.8 35.5\n")
            picture = Map("--proj", "equidistant cylindrical", "--set", "lat1=0", "--land", str(own), "--title", "A & <B>",
                          "--width", "4000")
            self.assertEqual(picture.root.find(f"{SVG}title").text, "A & <B>")
            # 20 x 20 less 4 x 4 of 360 x 180 square degrees
            self.assertAlmostEqual(painted_area(picture.land) / area(picture.area), (400 - 16) / 64800, delta=1e-5)
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

    def test_bounds_more_than_a_turn_apart(self):
        """From 300 to -90 degrees is from -60 to 270; no part of the globe has less than no width."""
        for projection in ("Cassini", "Mollweide"):
            maps = [run("map", "--proj", projection, "--bounds", bounds) for bounds in ("300,10,-90,50", "-60,10,270,50")]
            self.assertEqual((maps[0].returncode, maps[0].stdout), (0, maps[1].stdout))
        self.assertIn("within one turn", run("map", "--proj", "Cassini", "--bounds", "360,10,-360,50").stderr)


SPHERE = ["--set", "radius=6371000"]
R = 6371000


class Additions(unittest.TestCase):
    """What explains a map, and the user's own data on it."""

    def setUp(self):
        self.directory = tempfile.TemporaryDirectory()
        self.addCleanup(self.directory.cleanup)

    def file(self, name, text):
        path = pathlib.Path(self.directory.name) / name
        path.write_text(text)
        return str(path)

    def assertNear(self, a, b, delta, message=""):
        self.assertLessEqual(math.dist(a, b), delta, (message, a, b))

    def test_labels(self):
        """Each label stands beside the end of its line, inside the picture and clear of the others."""
        picture = Map("--proj", "Mercator", *SPHERE)
        labels = picture.texts("graticule")
        found = {text: (x, y) for text, x, y, _ in labels}
        for lon, text in ((-90, "90\u00b0W"), (0, "0\u00b0"), (120, "120\u00b0E")):
            x, _ = picture.spot(math.radians(lon) * R, 0)
            meridians = [at for at in labels if at[0] == text and at[3] == "middle"]
            self.assertTrue(any(abs(at[1] - x) < 5 and at[2] > max(y for _, y in picture.area[0]) for at in meridians), text)
        for lat, text in ((-60, "60\u00b0S"), (45, "45\u00b0N")):
            _, y = picture.spot(0, R * math.asinh(math.tan(math.radians(lat))))
            self.assertLess(found[text][0], min(x for x, _ in picture.area[0]))
            self.assertAlmostEqual(found[text][1], y, delta=60)
        self.assertEqual(Map("--proj", "Mercator", "--no-labels").texts("graticule"), [])
        for options in (["Mollweide"], ["Orthographic", "--set", "lat0=40"], ["Azimuthal Equidistant", "--set", "lat1=90"],
                        ["Albers Equal Area Conic", "--set", "lat1=20", "--set", "lat2=50"], ["Polyconic"], ["Bonne", "--set", "lat1=45"]):
            picture = Map("--proj", *options)
            boxes = []
            for text, x, y, anchor in picture.texts("graticule"):
                width = 62 * len(text)
                left = x - width * {"start": 0, "middle": 0.5, "end": 1}[anchor]
                self.assertTrue(-30 < left and left + width < picture.width + 30 and 70 < y < picture.height, (options, text))
                boxes.append((left, y - 80, left + width, y))
            self.assertGreater(len(boxes), 8, options)
            for i, a in enumerate(boxes):
                for b in boxes[:i]:
                    self.assertFalse(a[0] < b[2] and b[0] < a[2] and a[1] < b[3] and b[1] < a[3], (options, a, b))

    def test_points(self):
        """Tables and GeoJSON: dots where the places are, names beside them, what the map does not show left out."""
        table = "name;Latitude;Longitude\nNuuk & Co;64.18;-51.72\n\"Lima\";12d03'S;77.03 W\nPerth;-31.95;115.86\n"
        features = [{"type": "Feature", "properties": {"name": name, "marker-color": "#123456"},
                     "geometry": {"type": "Point", "coordinates": [lon, lat]}}
                    for name, lat, lon in (("Nuuk & Co", 64.18, -51.72), ("Lima", -12.05, -77.03), ("Perth", -31.95, 115.86))]
        files = (self.file("p.csv", table),
                 self.file("p.geojson", json.dumps({"type": "FeatureCollection", "features": features})))
        options = ["--proj", "Orthographic", "--set", "lon0=-60", *SPHERE]
        spots = projected(options, [(-51.72, 64.18), (-77.03, -12.05)])
        for file in files:
            picture = Map(*options, "--points", file)
            dots = [(int(c.get("cx")), int(c.get("cy"))) for c in picture.root.iter(f"{SVG}circle")]
            self.assertEqual(len(dots), 2)
            for dot, spot in zip(dots, spots):
                self.assertNear(dot, picture.spot(*spot), 10)
            self.assertEqual([text for text, *_ in picture.texts("place")], ["Nuuk & Co", "Lima"])
        self.assertIn("#123456", picture.text)
        for text, says in (("lon,lat\n1,2\n1,95\n", ":3: expected"), ("a,b\n1,2\n", ":1: the header"), ("1,x\n", ":1: expected")):
            done = run("map", "--proj", "Mollweide", "--points", self.file("bad.csv", text))
            self.assertEqual(done.returncode, 2, text)
            self.assertIn(says, done.stderr)

    def test_exact_unless_stated(self):
        """A dot stands where the tool's other command puts it, computed in the same way."""
        place = "lon,lat,name\n100.25,40,here\n"
        for options in (["--proj", "Robinson"], ["--proj", "Gnomonic", "--set", "lat1=-90", "--set", "lon0=80", "--bounds", "70,30,130,50"],
                        ["--proj", "Mollweide"], ["--proj", "Oblique Mercator", *"--set lat1=40.6 --set lon1=-73.8 --set lat2=35.5 --set lon2=139.8".split()]):
            if "Gnomonic" in options:
                place = "lon,lat,name\n100.25,-60.5,here\n"
                options = options[:-2]
            with tempfile.NamedTemporaryFile("w", suffix=".csv") as points, self.subTest(options=options):
                points.write(place)
                points.flush()
                spots = []
                for way in ([], ["--stated"]):
                    picture = Map(*options, *way, "--points", points.name, "--width", "20000")
                    dot = picture.root.find(f"{SVG}g[@class='places']/{SVG}circle")
                    spots.append((float(dot.get("cx")), float(dot.get("cy"))))
                    lon, lat = (float(v) for v in place.splitlines()[1].split(",")[:2])
                    wanted = picture.spot(*projected([*options, *way], [(lon, lat)])[0])
                    self.assertLess(math.dist(spots[-1], wanted), 12, way)  # the origin is rounded to a thousandth of a pixel
                if "Robinson" in options:  # 0.4958 at 40 degrees there, 0.4968 as stated: 4.7 pixels
                    self.assertGreater(math.dist(*spots), 30)

    def test_a_strip_beyond_the_seam(self):
        picture = Map("--proj", "Equidistant Cylindrical", "--bounds", "150,-50,210,10", "--graticule", "0")
        self.assertEqual(len(picture.area), 1)
        width, height = (max(axis) - min(axis) for axis in zip(*picture.area[0]))
        self.assertAlmostEqual(width / height, 1, 2)

    def test_scale_bar(self):
        """Its length is what it says; no bar where no scale holds, unless one is wanted."""
        for options in (["--utm", "33N", "--bounds", "12,46,18,50"], ["--stateplane83", "Texas Central"]):
            picture = Map(*options)
            [(text, *_)] = picture.texts("scale")
            length = sum(int(r.get("width")) for r in picture.root.iter(f"{SVG}rect") if r.get("height") == "40")
            metres, unit = text.split()
            scale = next(frame(picture))
            self.assertAlmostEqual(length / 10 * scale / (float(metres) * {"km": 1000, "m": 1}[unit]), 1, delta=0.015)
        self.assertEqual(Map("--proj", "Mollweide").texts("scale"), [])
        self.assertEqual(Map("--utm", "33N", "--bounds", "12,46,18,50", "--scale-bar", "no").texts("scale"), [])
        self.assertEqual(len(Map("--proj", "Mollweide", "--scale-bar", "yes").texts("scale")), 1)

    def test_tissot(self):
        """Circles that grow with the secant of the latitude on Mercator's map, ellipses of one area on Mollweide's."""
        def ellipses(projection):
            picture = Map("--proj", projection, *SPHERE, "--tissot", "20", "--width", "3000")
            return picture, subpaths(picture.root.find(f"{SVG}g[@class='tissot']/{SVG}path").get("d"))

        picture, circles = ellipses("Mercator")
        self.assertGreater(len(circles), 100)
        for circle in circles:
            wide, high = (max(p[i] for p in circle) - min(p[i] for p in circle) for i in (0, 1))
            middle = (max(y for _, y in circle) + min(y for _, y in circle)) / 2
            scale, _, y0 = frame(picture)
            secant = math.cosh((10 * y0 - middle) * scale / 10 / R)
            expected = 2 * 0.25 * math.radians(20) * R / scale * 10 * secant
            self.assertAlmostEqual(wide / expected, 1, delta=0.02)
            self.assertAlmostEqual(high / expected, 1, delta=0.02)
        areas = [area([ellipse]) for ellipse in ellipses("Mollweide")[1]]
        self.assertGreater(len(areas), 100)
        self.assertLess(max(areas) / min(areas), 1.03)

    def test_distortion(self):
        """Bands end where the distortion reaches their limits: Mercator's area scale is 2 at 45 degrees."""
        picture = Map("--proj", "Mercator", *SPHERE, "--distortion", "area")
        limits = [float(text) for text, *_ in picture.texts("legend")]
        bands = picture.root.findall(f"{SVG}g[@class='distortion']/{SVG}path")
        self.assertEqual(len(bands), len(limits))
        self.assertGreaterEqual(len(limits), 3)
        for limit, band in zip(limits, bands):
            lat = math.degrees(math.acos(limit ** -0.5))
            for beyond, there in ((-1.5, False), (1.5, True)):
                if 0 < lat + beyond < 85:
                    y = R * math.asinh(math.tan(math.radians(lat + beyond)))
                    self.assertEqual(inside(subpaths(band.get("d")), *picture.spot(1e6, y)), there, (limit, beyond))
        self.assertIn("area scale 1 everywhere", Map("--proj", "Sinusoidal", *SPHERE, "--distortion", "area").text)
        self.assertIn("angular distortion 0\u00b0 everywhere", Map("--proj", "Mercator", *SPHERE, "--distortion", "angle").text)
        self.assertIn("--distortion takes", run("map", "--proj", "Mercator", "--distortion", "shape").stderr)

    def test_grid_and_zone(self):
        """Lines and labels of the grid stand at its coordinates; a zone has its borders, its axis and its note."""
        picture = Map("--utm", "33N", "--bounds", "10,46,20,50", "--grid", "100000", "--graticule", "0")
        grid = [piece for p in picture.root.findall(f"{SVG}g[@class='grid']/{SVG}path") for piece in subpaths(p.get("d"))]
        x, _ = picture.spot(500000, 0)
        _, y = picture.spot(0, 5300000)
        self.assertTrue(any(all(abs(p[0] - x) <= 1 for p in piece) for piece in grid))
        self.assertTrue(any(all(abs(p[1] - y) <= 1 for p in piece) for piece in grid))
        labels = {text: at for text, *at in picture.texts("grid")}
        self.assertAlmostEqual(labels["500000"][0], x, delta=2)
        self.assertAlmostEqual(labels["5300000"][1], y, delta=60)
        [axis] = picture.lines("stroke-dasharray", "50 40")[:1] and [picture.lines("class", "zone")[-1]]
        self.assertTrue(all(abs(p[0] - x) <= 2 for p in axis))
        self.assertIn("Zone 33N: 12\u00b0E to 18\u00b0E, central meridian 15\u00b0E", picture.text)
        self.assertNotIn("class=\"zone\"", Map("--utm", "33N", "--no-zone").text)
        self.assertIn("500 lines", run("map", "--utm", "33N", "--grid", "10").stderr)

    def test_great_circles(self):
        """Straight on a gnomonic map, as an option and as a block of a file."""
        for options in (["--great-circle", "-73.8,40.6,2.5,49"],
                        ["--overlay", self.file("arc.txt", "arc 2\n-73.8 40.6\n2.5 49\n")]):
            picture = Map("--proj", "Gnomonic", "--set", "lat1=45", "--set", "lon0=-40", *SPHERE, *options)
            lines = picture.lines("class", "great-circle") or picture.lines("stroke", "#c0392b")
            self.assertEqual([len(line) for line in lines], [2])
        done = run("map", "--proj", "Mollweide", "--great-circle", "0,0,180,0")
        self.assertEqual((done.returncode, "opposite" in done.stderr), (2, True))

    def test_letters_of_the_other_axis(self):
        """Latitude first is refused where letters tell; east first is read with letters as without."""
        for options, says in ((["--great-circle", "52N,13E,40N,74W"], "LON1,LAT1"), (["--bounds", "46N,12E,50N,18E"], "W,S,E,N"),
                              (["--points", self.file("places.txt", "52N 13E Berlin\n")], ":1: expected a longitude"),
                              (["--overlay", self.file("line.txt", "line 2\n13E 52N\n40N 74W\n")], ":3: expected a longitude")):
            done = run("map", "--proj", "Mollweide", *options)
            self.assertEqual((done.returncode, done.stdout, says in done.stderr), (2, "", True), (options, done.stderr))
        maps = [Map("--proj", "Mollweide", "--great-circle", text).text for text in ("13E,52N,74W,40N", "13,52,-74,40")]
        self.assertEqual(*maps)

    def test_geojson(self):
        """Areas with holes, lines and colours; what is no GeoJSON is refused with the feature's number."""
        square = [[[0, 0], [20, 0], [20, 20], [0, 20], [0, 0]], [[5, 5], [15, 5], [15, 15], [5, 15], [5, 5]]]
        features = [{"type": "Feature", "properties": {"fill": "#abcdef", "stroke": "#fedcba", "stroke-width": 3},
                     "geometry": {"type": "Polygon", "coordinates": square}},
                    {"type": "Feature", "properties": None, "geometry": {"type": "GeometryCollection", "geometries": [
                        {"type": "MultiLineString", "coordinates": [[[170, 0], [-170, 0]], [[0, 50], [9, 50]]]}]}},
                    {"type": "Feature", "properties": {}, "geometry": None}]
        picture = Map("--proj", "Equidistant Cylindrical", "--set", "lat1=0", *SPHERE, "--overlay",
                      self.file("own.geojson", json.dumps({"type": "FeatureCollection", "features": features})))
        self.assertEqual([g.get("fill") for g in picture.root.findall(f"{SVG}g[@class='overlay']")][:1], ["#abcdef"])
        for degrees, there in ((3, True), (10, False), (25, False)):
            spot = picture.spot(math.radians(degrees) * R, math.radians(degrees) * R)
            self.assertEqual(painted(picture.fills("overlay"), *spot), there, degrees)
        [styled] = [p for p in picture.paths if p.get("stroke") == "#fedcba"]
        self.assertEqual(styled.get("stroke-width"), "30")
        self.assertEqual(len(picture.lines("stroke", "#c0392b")), 3)  # one of them reaches over the edge
        features[1]["geometry"] = {"type": "Line", "coordinates": []}
        for text, says in ((json.dumps({"type": "FeatureCollection", "features": features}), "feature 2: there is no geometry"),
                           ("{", "parse error"), ("[1]", "expected an object"), ('{"type": 7}', "no text"),
                           ('{"type": "Point", "coordinates": [1, 91]}', "no longitude and latitude")):
            done = run("map", "--proj", "Mollweide", "--land", self.file("bad.geojson", text))
            self.assertEqual(done.returncode, 2, text)
            self.assertIn(says, done.stderr)

    def test_fine_coasts(self):
        """Small areas have coasts of 1:50m: Bornholm is there, which 1:110m leaves out."""
        place = projected(["--utm", "33N"], [(14.9, 55.12)])[0]
        for bounds, there in (("8,50,20,60", True), ("-5,0,35,80", False)):
            picture = Map("--utm", "33N", "--bounds", bounds)
            self.assertEqual(painted(picture.land, *picture.spot(*place)), there, bounds)


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
