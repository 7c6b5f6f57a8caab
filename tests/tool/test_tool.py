#!/usr/bin/env python3
"""Tests of the command-line host as a user meets it: arguments and streams in, text, messages and exit status out.

Usage: test_tool.py PROGRAM [unittest arguments]
"""
import csv
import io
import os
import re
import resource
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import unittest

PROGRAM = ""
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
OK, SOME_FAILED, USAGE = 0, 1, 2


def run(*arguments, text="", cwd=None):
    """Status, output and messages of one run; bytes stay bytes in disguise (latin-1)."""
    done = subprocess.run([PROGRAM, *arguments], input=text.encode("latin-1"), capture_output=True, cwd=cwd, timeout=300)
    return done.returncode, done.stdout.decode("latin-1"), done.stderr.decode("latin-1")


class ToolTest(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = directory.name

    def file(self, name, text=None):
        path = os.path.join(self.directory, name)
        if text is not None:
            with open(path, "w", encoding="latin-1", newline="") as out:
                out.write(text)
        return path

    def read(self, name):
        with open(self.file(name), encoding="latin-1", newline="") as handle:
            return handle.read()

    def numbers(self, *arguments, text=""):
        status, out, messages = run(*arguments, text=text)
        self.assertEqual((status, messages), (OK, ""), arguments)
        return [float(field) for field in re.split(r"[,\s]+", out.strip())]

    def near(self, got, expected, tolerance, what):
        self.assertEqual(len(got), len(expected), what)
        for value, wanted in zip(got, expected):
            self.assertLessEqual(abs(value - wanted), tolerance, (what, got, expected))

    def refused(self, *arguments, says, text="1,2\n"):
        status, out, messages = run(*arguments, text=text, cwd=self.directory)
        self.assertEqual((status, out), (USAGE, ""), arguments)
        self.assertTrue(messages.startswith("orvex: "), messages)
        self.assertIn(says, messages)


class Names(ToolTest):
    def test_a_long_text_is_no_name_at_once(self):
        before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
        self.refused("show", "a" * 100_000 + " b", says="unknown coordinate system")
        self.assertLess(resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before, 10)


class Project(ToolTest):
    def test_published_values_in_both_directions(self):
        rows = [
            # Snyder 1987, p. 270 (zone 18 after adding the false easting) and p. 296
            (["--utm", "18N", "--ellipsoid", "clarke 1866"], (-73.5, 40.5), (627106.5, 4484124.4)),
            (["--proj", "lambert CONFORMAL conic", "--ellipsoid", "7008", "--set", "Standard Parallel=33d", "--set",
              "lat2=45", "--set", "LAT0=23d00'00\"N", "--set", "lon0=96dW"], (-75, 35), (1894410.9, 1564649.5)),
            # published origins of the zones: 1983 in metres, 1927 two million US survey feet east
            (["--stateplane83", "texas central"], (-(100 + 20 / 60), 29 + 40 / 60), (700000, 3000000)),
            (["--stateplane27", "Texas Central"], (-(100 + 20 / 60), 29 + 40 / 60), (2e6 * 1200 / 3937, 0)),
        ]
        for options, place, there in rows:
            text = "%.12f,%.12f\n" % place
            self.near(self.numbers("project", *options, text=text), there, 0.06, options)
            text = "%.4f %.4f" % there
            # the ellipsoidal conic's inverse stops at 0.5 m by design
            self.near(self.numbers("project", *options, "-i", text=text), place, 5e-6, options)

    def test_filters_know_short_names(self):
        for what, text, expected in [("zones", "mississippi", ["Missippippi East", "Missippippi West"]),
                                     ("datums", "wgs84", ["World Geodetic System 1984"]),
                                     ("projections", "lcc", ["Lambert Conformal Conic"]),
                                     ("ellipsoids", "grs80", ["GRS 1980 / IUGG 1980"])]:
            rows = csv.DictReader(io.StringIO(run("list", what, *text.split(), "--csv")[1]))
            self.assertEqual([row["name"] for row in rows], expected, text)
        self.assertIn("nothing has all of these words", run("list", "datums", "no such thing")[2])

    def test_same_projection_by_other_names(self):
        ways = [["--utm", "32N"], ["--utm", "32"], ["--proj", "universal transverse mercator (utm)", "--set", "lon0=9"],
                ["--proj", "Transverse Mercator", "--set", "lon0=9d0'E", "--set", "k0=.9996", "--set", "x0=5e5"]]
        results = {run("project", *way, text="11.5,48.1")[1] for way in ways}
        self.assertEqual(len(results), 1, results)
        code = re.search(r"(\d+)  Texas Central$", run("list", "zones")[1], re.M).group(1)
        self.assertEqual(run("project", "--posc", code, text="-99,31")[1],
                         run("project", "--stateplane83", "Texas Central", text="-99,31")[1])

    def test_contradictions(self):
        tm = ["--proj", "transverse mercator"]
        for options, says in [
            ([*tm, "--ellipsoid", "grs 1980 / iugg 1980", "--set", "radius=6371000"], "both choose the ellipsoid"),
            ([*tm, "--set", "ellipsoid=wgs 84", "--set", "radius=6371000"], "both choose the ellipsoid"),
            (["--utm", "33N", "--set", "lon0=9"], "--utm 33N has its own lon0"),
            (["--utm", "33N", "--set", "south=yes"], "--utm 33N has its own south"),
            (["--utm", "33N", "--set", "k0=1"], "--utm 33N has its own k0"),
            (["--stateplane83", "texas central", "--set", "zone=texas north"], "has its own zone"),
            (["--posc", "26939", "--set", "zone=texas north"], "has its own zone"),
            ([*tm, "--set", "lon0=9", "--set", "Central Longitude=9"], "lon0 is set twice"),
            ([*tm, "--set", "radius=6e6", "--set", "flattening=0", "--set", "flattening=.003"], "flattening is set twice"),
            (["--utm", "33N", "--utm", "34N"], "--utm"), (["--utm", "33N", "--posc", "26939"], "name one projection"),
        ]:
            self.refused("project", *options, says=says)
        self.refused("convert", "--to-utm", "33N", "--to-set", "lon0=9", says="--to-utm 33N has its own lon0")

    def test_an_ellipsoid_for_a_projection_of_the_sphere_is_said(self):
        for options, said in [(["--ellipsoid", "clarke 1866"], True), (["--set", "radius=6371000", "--set", "flattening=.003"], True),
                              (["--set", "radius=6371000"], False), ([], False)]:
            status, _, messages = run("project", "--proj", "Mollweide", *options, text="1,2")
            self.assertEqual(status, OK)
            self.assertEqual("is a projection of the sphere" in messages, said, messages)
        self.assertEqual(run("project", "--proj", "Sinusoidal", "--ellipsoid", "clarke 1866", text="1,2")[2], "")

    def test_refusals(self):
        for arguments, says in [
            (["project", "--proj", "mercater"], 'did you mean "Mercator"?'),
            (["project", "--stateplane83", "texas centrl"], '"Texas Central"'),
            (["project", "--proj", "Mercator", "--ellipsoid", "iugg"], '"GRS 1980 / IUGG 1980"'),
            (["project", "--proj", "Transverse Mercator", "--set", "lat2=9"],
             "does not use lat2; it uses: ellipsoid, scale, x0, y0, k0, lon0, lat0"),
            (["project", "--proj", "Mercator", "--set", "lonn=9"], '"lon0"'),
            (["project", "--proj", "Mercator", "--set", "lon0=9x"], "cannot read the value of lon0=9x"),
            (["project", "--proj", "Mercator", "--set", "flattening=0.003"], "needs radius"),
            (["project", "--proj", "tm", "--set", "k0=0"], "k0=0 would shrink the map to a point"),
            (["convert", "--to-utm", "33N", "--to-set", "scale=-0.0"], "scale=-0.0 would shrink the map to a point"),
            (["project", "--proj", "Lambert Conformal Conic"], "similar for Lambert Conformal Conic projection, for example: "
             "--set lat1=33 --set lat2=45\n"),
            (["convert", "--to-proj", "bonne"], "--to-set lat1=40"),
            (["project", "--proj", "State Plane 1983"], "name the zone"),
            (["project", "--utm", "61N"], "is not a UTM zone"), (["project", "--utm", "33X"], "is not a UTM zone"),
            (["project", "--utm", "33N", "--proj", "Mercator"], "name one projection"), (["project"], "name one projection"),
            (["project", "--posc", "1"], "POSC number 1"), (["project", "--utm", "1N", "no.csv"], "cannot open no.csv"),
            (["project", "--utm", "1N", "."], "directory"), (["project", "--utm", "1N", "-o", "no/x"], "cannot write no/x"),
            (["project", "--utm", "1N", "--foo"], "Try: orvex project --help"),
            (["lst"], 'did you mean "list"?'), ([], "needs one of: list, project"), (["list", "foo"], '"foo"'),
        ]:
            self.refused(*arguments, says=says)


class Exact(ToolTest):
    def test_longitudes_count_modulo_a_turn(self):
        for zone, lon, like in [("1N", 179.5, 5.5), ("2N", 190, 10), ("33N", 375, 9), ("60N", -179.5, 12.5)]:
            got = self.numbers("project", "--utm", zone, text="%r 45" % lon)
            self.near(got, self.numbers("project", "--utm", "32N", text="%r 45" % like), 1e-4, zone)
        self.assertNotEqual(run("project", "--utm", "1N", "--stated", text="179.5 45")[1],
                            run("project", "--utm", "1N", text="179.5 45")[1])

    def test_there_and_back_and_stated_when_asked_for(self):
        places = "-97.750000000000,30.250000000000\n-99.125000000000,31.875000000000\n"
        zone = ["--stateplane83", "texas central", "--decimals", "12"]
        there = run("project", *zone, text=places)[1]
        self.assertEqual(re.sub(r"\d,|\d$", ",", run("project", *zone, "-i", text=there)[1], flags=re.M),
                         re.sub(r"\d,|\d$", ",", places, flags=re.M))
        stated = self.numbers("project", *zone, "-i", "--stated", text=there.splitlines()[0])
        self.assertGreater(abs(stated[1] - 30.25), 1e-6)  # its inverse stops half a metre early
        # the way back of a datum is the inverse of the way there
        to = ["datum", "--from", "tokyo", "--to", "6326", "--decimals", "12"]
        back = ["datum", "--to", "tokyo", "--from", "6326", "--decimals", "12"]
        for flags, low, high in [([], 0, 1e-11), (["--stated"], 1e-9, 1e-5)]:
            shifted = run(*to, *flags, text="139.5,35.5")[1]
            got = self.numbers(*back, *flags, text=shifted)
            self.assertTrue(low <= max(abs(got[0] - 139.5), abs(got[1] - 35.5)) <= high, (flags, got))
        for command in ["project", "convert", "datum"]:
            self.assertIn("--stated", run(command, "--help")[1])


class Units(ToolTest):
    def test_map_coordinates_in_other_units(self):
        origin = "%.12f,%.12f\n" % (-(100 + 20 / 60), 29 + 40 / 60)  # of the zone of 1927: two million US survey feet east
        zone = ["--stateplane27", "Texas Central"]
        for unit, metres in [("us-ft", 1200 / 3937), ("US survey foot", 1200 / 3937), ("ft", 0.3048), ("km", 1000), ("m", 1),
                             ("us-mi", 5280 * 1200 / 3937), ("feet", 0.3048)]:
            got = self.numbers("project", *zone, "--to-unit", unit, text=origin)
            self.near(got, (2e6 * 1200 / 3937 / metres, 0), 1e-3, unit)
            text = "%.9f,0" % got[0]
            self.near(self.numbers("project", *zone, "-i", "--from-unit", unit, text=text), (-100 - 1 / 3, 29 + 2 / 3), 1e-6, unit)
        got = self.numbers("convert", "--from-utm", "14N", "--from-unit", "km", "--to-utm", "14N", "--to-unit", "ft", text="500 3000")
        self.near(got, (500e3 / 0.3048, 3e6 / 0.3048), 1e-3, "convert")
        self.assertIn("us-ft", run("list", "units")[1])

    def test_refusals(self):
        for arguments, says in [(["project", "--utm", "14N", "--to-unit", "furlong"], "unknown unit"),
                                (["project", "--utm", "14N", "--from-unit", "ft"], "--to-unit"),
                                (["project", "--utm", "14N", "-i", "--to-unit", "ft"], "--from-unit"),
                                (["convert", "--from-utm", "14N", "--to-unit", "ft"], "--to-unit needs a projection")]:
            self.refused(*arguments, says=says)

    def test_a_number_of_a_foot_system_is_said(self):
        posc = ["project", "--posc", "32039"]
        self.assertIn("US survey feet, the coordinates here are metres", run(*posc, text="-100,31")[2])
        for options in [[*posc, "--to-unit", "us-ft"], [*posc, "--to-unit", "m"], ["project", "--posc", "32139"]]:
            self.assertEqual(run(*options, text="-98,32")[2], "")


class CommandLine(ToolTest):
    def test_coordinates_are_operands(self):
        place = "391779.2593 5820072.1592\n"  # Berlin, the same as PROJ
        for operands in [["13.4050", "52.5200"], ["E13.4050", "N52.52"], ["13 24 18 E", "52 31 12"], ["13.405,52.52"],
                         ["52.52", "13.405", "--order", "lat,lon"], ["--order", "lat,lon", "52.52,13.405"]]:
            status, out, messages = run("project", "--utm", "33N", *operands)
            if "lat,lon" in operands:
                out = " ".join(reversed(out.split())) + "\n"
            self.assertEqual((status, out, messages), (OK, place, ""), operands)
        self.assertEqual(self.numbers("project", "-73.5", "40.5", "-74", "41", "--utm", "18N"),
                         self.numbers("project", "--utm", "18N", text="-73.5 40.5\n-74 41\n"))
        self.assertEqual(self.numbers("datum", "--from", "2", "--to", "3", "-95.25", "38.75"),
                         self.numbers("datum", "--from", "2", "--to", "3", text="-95.25 38.75"))
        self.assertEqual(run("project", "--proj", "orthographic", "180", "0", "0", "0"),
                         (SOME_FAILED, "* *\n0.0000 0.0000\n", "orvex: points converted: 1, unplottable: 1\n"))
        for operands, says in [(["1", "2", "3"], "in pairs"), (["a.csv", "b.csv"], 'cannot read longitude "a.csv"'),
                               (["13.4", "95"], "beyond the pole"), (["N52", "E13"], "--order lat,lon"), (["13.4"], "cannot open 13.4")]:
            self.refused("project", "--utm", "33N", *operands, says=says)

    def test_empty_values_do_not_pass_for_missing_ones(self):
        for command, options in [("convert", ["--from", "--from-datum", "--to-utm"]), ("datum", ["--from", "--ini"]),
                                 ("project", ["--ellipsoid", "--from-unit", "--x", "-o", "--set"])]:
            for option in options:
                self.refused(command, option, "", says="needs a value, not an empty one")
                self.refused(command, option + "=", "1", "2", says=": needs a value, not an empty one")  # the next one is not taken
        self.refused("project", "--utm", "33N", "--quiet=", says="--quiet= has an empty value")
        self.refused("project", "--mgrs=", says="--mgrs= has an empty value")
        title = self.file("title.svg")  # may be empty
        self.assertEqual(run("map", "--proj", "robinson", "--title=", "-o", title)[0], OK)
        # other arguments that end in an equals sign
        self.assertEqual(run("map", "--proj", "robinson", "--title", "--set=", "-o", title)[0], OK)
        self.assertIn(">--set=<", self.read("title.svg"))
        self.refused("project", "--utm", "33N", "--", "--x=", says="cannot open --x=")

    def test_the_manual_and_the_completions_know_every_option(self):
        page = run("man")[1].replace("\\", "")
        completions = {shell: run("completion", shell)[1] for shell in ("bash", "zsh", "fish")}
        for command in ["project", "convert", "datum", "georef", "map"]:
            for option in re.findall(r"--[a-z][a-z0-9-]+", run(command, "--help")[1].split("Options:")[1]):
                self.assertIn(option, page)
                for shell, script in completions.items():
                    self.assertIn("-l " + option[2:] if shell == "fish" else option, script, shell)
        self.refused("completion", "tcsh", says="unknown shell")

    @unittest.skipUnless(shutil.which("bash"), "no bash")
    def test_the_completion_of_bash(self):
        script = self.file("completion", run("completion", "bash")[1])
        for words, offered in [(["orvex", "pro"], {"project"}), (["orvex", "list", "zo"], {"zones"}),
                               (["orvex", "project", "--utm", "33N", "--stat"], {"--stated", "--stateplane27", "--stateplane83"}),
                               (["orvex", "datum", "add", "X", "--fl"], {"--flattening"}), (["orvex", "project", "fi"], set())]:
            ask = 'source "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($#-1)); _orvex; echo "${COMPREPLY[@]}"'
            done = subprocess.run(["bash", "-c", ask, script, *words], capture_output=True, encoding="ascii")
            self.assertEqual((set(done.stdout.split()), done.stderr), (offered, ""), words)

    def test_lists_for_other_programs_and_of_some_rows(self):
        for arguments, count in [(["datums"], 253), (["zones"], 142), (["ellipsoids"], 55), (["projections"], 29), (["units"], 23),
                                 (["zones", "texas central"], 3), (["zones", "central", "texas"], 3), (["datums", "6267"], 4), (["datums", "nowhere"], 0)]:
            status, out, _ = run("list", *arguments, "--csv")
            rows = list(csv.DictReader(io.StringIO(out)))
            self.assertEqual((status, len(rows)), (OK, count), arguments)
            lines = run("list", *arguments)[1].splitlines()[1:]
            self.assertEqual(len(lines), count)
            self.assertTrue(all("  " + row["name"] in line for line, row in zip(lines, rows)), arguments)
        rows = {row["name"]: row for row in csv.DictReader(io.StringIO(run("list", "ellipsoids", "--csv")[1]))}
        self.assertEqual(rows["International 1924"]["1/flattening"], "297.0000000")
        self.assertIn("yes,lon0,number,degrees,Central Longitude", run("list", "params", "tm", "--csv")[1].splitlines())
        self.assertEqual(len(run("list", "params", "tm", "central", "longitude", "--csv")[1].splitlines()), 2)

    def test_datums_have_areas(self):
        rows = {row["name"]: row["area"] for row in csv.DictReader(io.StringIO(run("list", "datums", "--csv")[1]))}
        self.assertEqual((len(rows), [name for name, area in rows.items() if not area]), (253, []))
        for name, word in [("Tokyo - Okinawa", "Okinawa"), ("Hu-tzu-shan", "Taiwan"), ("Schwarzeck", "Namibia"),
                           ("S-42 Romania", "Romania"), ("S-42 Hungary", "Hungary"), ("World Geodetic System 1984", "World"),
                           ("NAD 1927 - Canada (NTV2)", "Canada"), ("Minna - Cameroon", "Cameroon")]:
            self.assertIn(word, rows[name])
        self.assertRegex(run("list", "datums", "taiwan")[1], r"^NUMBER.*AREA\n.*Hu-tzu-shan +Taiwan.*\n$")
        run("datum", "add", "Site", "--ini", self.file("own.ini"), "--dx", "1")
        self.assertRegex(run("list", "datums", "site", "--ini", self.file("own.ini"))[1], r"Site +-\n$")

    def test_the_completions_of_zsh_and_fish(self):
        zsh, fish = (self.file(shell, run("completion", shell)[1]) for shell in ("zsh", "fish"))
        asked = [(["pro"], {"project"}), (["list", "zo"], {"zones"}), (["datum", "add", "X", "--fl"], {"--flattening"}),
                 (["project", "--utm", "33N", "--stat"], {"--stated", "--stateplane27", "--stateplane83"})]
        stub = 'compadd() { shift; for w in "$@"; do [[ $w == $PREFIX* ]] && print -r -- $w; done }; _files() { }; '
        for shell, check in [("zsh", ["-n", zsh]), ("fish", ["-n", fish])]:
            if not shutil.which(shell):
                print("skipped: no", shell, file=sys.stderr)
                continue
            done = subprocess.run([shell, *check], capture_output=True, encoding="ascii")
            self.assertEqual((done.returncode, done.stderr), (0, ""), shell)
            for words, offered in asked:
                if shell == "fish":
                    ask = [shell, "--no-config", "-c", 'source $argv[1]; complete -C "$argv[2]"', fish, " ".join(["orvex", *words])]
                else:
                    ask = [shell, "-f", "-c", stub + 'file=$1; shift; words=("$@"); CURRENT=$#; PREFIX=${@[-1]}; set --; source $file',
                           shell, zsh, "orvex", *words]
                done = subprocess.run(ask, capture_output=True, encoding="utf-8", cwd=self.directory, timeout=120)
                got = {line.split("\t")[0] for line in done.stdout.splitlines()}
                self.assertEqual((got, done.stderr), (offered, ""), (shell, words))

    def test_names_that_people_type(self):
        for arguments, others in [
            (["project", "--proj", "tm", "--set", "lon0=-93"], ["project", "--proj", "Transverse Mercator", "--set", "lon0=-93"]),
            (["project", "--proj", "LCC", "--set", "lat1=33", "--set", "lat2=45"],
             ["project", "--proj", "lambert conformal conic", "--set", "lat1=33", "--set", "lat2=45"]),
            (["project", "--proj", "laea"], ["project", "--proj", "lambert azimuthal equal area"]),
            (["project", "--utm", "15", "--ellipsoid", "grs80"], ["project", "--utm", "15", "--ellipsoid", "7019"]),
            (["project", "--stateplane83", "Mississippi West"], ["project", "--posc", "26995"]),
            (["datum", "--from", "nad27", "--to", "WGS-84"], ["datum", "--from", "2", "--to", "3"]),
            (["datum", "--from", "ed50", "--to", "nad83"], ["datum", "--from", "5", "--to", "1"]),
        ]:
            typed, named = (run(*command, text="-90 33")[:2] for command in (arguments, others))
            self.assertEqual((typed[0], typed), (OK, named), arguments)

    def test_the_version_has_a_short_name(self):
        self.assertEqual(run("-v"), run("--version"))
        self.assertRegex(run("-v")[1], r"^orvex \d")


class Areas(ToolTest):
    def test_points_outside_are_counted(self):
        tm = ["project", "--proj", "transverse mercator", "--set", "lon0=10"]
        texas = ["project", "--stateplane83", "texas central"]
        mre = ["datum", "--from", "NAD 1927 - CONUS (MRE)", "--to", "6326"]
        for arguments, text, count in [
            (["project", "--utm", "33N"], "15 52\n21.4 52\n8.6 52", 0), (["project", "--utm", "33N"], "21.6 52", 1),
            (["project", "--utm", "33N"], "15 52\n30 52\n-100 10\n15 85", 3),
            (["project", "--utm", "33N"], "15 84.49\n15 -80.49", 0), (["project", "--utm", "33N"], "15 84.51\n15 -80.51", 2),
            (["project", "--utm", "1N"], "179.5 45", 0),
            (["project", "--utm", "33N", "-i"], "500000 5e6\n1500000 5e6", 1), (texas, "-99 31\n-93 31\n-80 31", 1),
            ([*texas, "-i"], "700000 3e6\n7e6 3e6", 1), (tm, "40 10\n60 10\n-36 10\n369 5", 2),
            (["project", "--proj", "mollweide"], "179 80", 0), (mre, "-95 38", 0), (mre, "10 50\n-95 38", 1),
            (["convert", "--from-utm", "33N", "--to-utm", "31N"], "500000 5e6", 1),
            (["convert", "--from-utm", "33N", "--to-utm", "32N"], "500000 5e6", 0),
        ]:
            _, _, messages = run(*arguments, text=text)
            told = re.findall(r"^orvex: warning: (\d+) points? lies? outside ", messages, re.M)
            self.assertEqual(told, [str(count)] if count else [], (arguments, text, messages))
        self.assertEqual(run("project", "--utm", "33N", "-q", text="30 52"), (OK, run("project", "--utm", "33N", text="30 52")[1], ""))
        self.assertIn("more than 3.5 degrees beyond it, or half a degree beyond 80 S or 84 N",
                      run("project", "--utm", "33N", text="15 85")[2])
        many = "\n".join(["15 52", "30 52"] * 20000)
        self.assertIn(" 20000 points lie outside", run("project", "--utm", "33N", "--threads", "3", text=many)[2])


class Outputs(ToolTest):
    def test_an_output_stands_there_complete_or_not_at_all(self):
        self.file("names.csv", "id,p,q\n1,9,0\n")
        self.file("out.csv", "old\n")
        self.refused("project", "--utm", "32N", "names.csv", "-o", "out.csv", says="--x and --y")
        self.refused("map", "--proj", "mollweide", "--land", "names.csv", "-o", "out.csv", says="names.csv")
        self.assertEqual(self.read("out.csv"), "old\n")
        for stop in [signal.SIGTERM, signal.SIGKILL]:
            process = subprocess.Popen([PROGRAM, "project", "--utm", "32N", "-o", "out.csv"], cwd=self.directory, stdin=subprocess.PIPE)
            process.stdin.write(b"9,0\n" * 300000)
            process.stdin.flush()
            process.send_signal(stop)
            self.assertEqual(process.wait(), -stop)
            process.stdin.close()
            self.assertEqual(self.read("out.csv"), "old\n")
            if stop == signal.SIGTERM:
                self.assertEqual(sorted(os.listdir(self.directory)), ["names.csv", "out.csv"])

    def test_links_and_rights_of_an_output_stay(self):
        self.file("out.csv", "old\n")
        os.chmod(self.file("out.csv"), 0o640)
        os.symlink("out.csv", self.file("link.csv"))
        self.assertEqual(run("project", "--utm", "32N", "-o", self.file("link.csv"), text="9,0")[0], OK)
        self.assertTrue(os.path.islink(self.file("link.csv")))
        self.assertEqual((self.read("out.csv"), os.stat(self.file("out.csv")).st_mode & 0o777), ("500000.0000,0.0000\n", 0o640))
        self.refused("project", "--utm", "32N", "-o", "no/x", says="cannot write no/x: No such file or directory", text="9,0")
        self.refused("project", "--utm", "32N", "no.csv", says="cannot open no.csv: No such file or directory")

    def test_a_full_or_closed_output_is_an_error_in_every_command(self):
        controls = self.file("c.csv", Georef.AFFINE)
        for command in [["list", "datums"], ["list", "zones"], ["--help"], ["datum", "show", "2"], ["project", "--utm", "32N"],
                        ["georef", "--controls", controls, "--method", "affine", "--report"], ["map", "--proj", "mollweide"]]:
            if os.path.exists("/dev/full"):
                with open("/dev/full", "w") as full:
                    done = subprocess.run([PROGRAM, *command], input=b"9,0\n", stdout=full, stderr=subprocess.PIPE)
                self.assertEqual(done.returncode, USAGE, command)
                self.assertIn(b"cannot write to standard output: No space left", done.stderr, command)
            done = subprocess.run(["sh", "-c", 'exec "$@" >&-', "sh", PROGRAM, *command], input=b"9,0\n", stderr=subprocess.PIPE)
            self.assertEqual(done.returncode, USAGE, command)

    def test_a_closed_stream_is_not_the_output(self):
        """What is meant for a closed stream does not get into the file that is opened in its place."""
        for closed in ["2>&-", ">&-", ">&- 2>&-"]:
            done = subprocess.run(["sh", "-c", f'exec "$@" {closed}', "sh", PROGRAM, "project", "--utm", "32N", "-o", self.file("out.csv")],
                                  input=b"9,0\nx,y\n", capture_output=True)
            self.assertEqual((done.returncode, self.read("out.csv")), (SOME_FAILED, "500000.0000,0.0000\n,\n"), closed)

    def test_a_size_limit_is_an_error(self):
        self.file("out.csv", "old\n")
        for command in [["project", "--utm", "32N"], ["map", "--proj", "mollweide"]]:
            done = subprocess.run([PROGRAM, *command, "-o", self.file("out.csv")], input=b"9,0\n" * 10000, capture_output=True,
                                  preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096)))
            self.assertEqual(done.returncode, USAGE)
            self.assertIn(b"out.csv: File too large", done.stderr)
            self.assertEqual((os.listdir(self.directory), self.read("out.csv")), (["out.csv"], "old\n"))


class Grids(ToolTest):
    def ntv2(self, path):
        """A grid of 1 degree over 104..96 W, 48..54 N: all nodes 3.6 seconds north and 7.2 seconds west."""
        def record(key, value, form):
            return struct.pack("<8s" + form, key.encode(), value).ljust(16, b"\0")
        head = [("NUM_OREC", 11, "i"), ("NUM_SREC", 11, "i"), ("NUM_FILE", 1, "i"), ("GS_TYPE", b"SECONDS ", "8s"),
                ("VERSION", b"NTv2.0  ", "8s"), ("SYSTEM_F", b"NAD27   ", "8s"), ("SYSTEM_T", b"NAD83   ", "8s"),
                ("MAJOR_F", 6378206.4, "d"), ("MINOR_F", 6356583.8, "d"), ("MAJOR_T", 6378137.0, "d"), ("MINOR_T", 6356752.3, "d")]
        sub = [("SUB_NAME", b"WHOLE   ", "8s"), ("PARENT", b"NONE    ", "8s"), ("CREATED", b"        ", "8s"),
               ("UPDATED", b"        ", "8s"), ("S_LAT", 48 * 3600.0, "d"), ("N_LAT", 54 * 3600.0, "d"), ("E_LONG", 96 * 3600.0, "d"),
               ("W_LONG", 104 * 3600.0, "d"), ("LAT_INC", 3600.0, "d"), ("LONG_INC", 3600.0, "d"), ("GS_COUNT", 63, "i")]
        with open(path, "wb") as out:
            for key, value, form in head + sub:
                out.write(record(key.ljust(8), value, form))
            out.write(struct.pack("<4f", 3.6, 7.2, 0, 0) * 63 + b"END     " + b"\0" * 8)

    def nadcon(self, las, los):
        """A pair of files under their published names: 100 to 90 W, 30 to 40 N; 0.36 seconds north, 0.72 west."""
        for path, seconds in [(las, 0.36), (los, 0.72)]:
            header = b"NADCON EXTRACTED REGION".ljust(56) + b"NADGRD  " + struct.pack("<3i5f", 23, 21, 1, -100.5, 0.5, 30, 0.5, 0)
            row = struct.pack("<24f", 0, *[seconds] * 23)
            with open(path, "wb") as out:
                out.write(header + row * 21)

    def test_nadcon_files_as_published(self):
        os.mkdir(self.file("grids"))
        for names in [("conus.las", "conus.los"), ("CONUS.LAS", "CONUS.LOS")]:
            self.nadcon(*(self.file("grids/" + name) for name in names))
            command = ["datum", "--from", "232", "--to", "1", "--grids", self.file("grids")]
            got = self.numbers(*command, "--", "-95.25", "35.25")
            self.near(got, (-95.25 - 0.72 / 3600, 35.25 + 0.36 / 3600), 2e-9, names)
            self.assertIn("1 point lies outside every grid", run(*command, text="-60 35")[2])
            for name in names:
                os.remove(self.file("grids/" + name))

    def test_directory_by_option_or_environment(self):
        os.mkdir(self.file("grids"))
        self.ntv2(self.file("grids/ntv2_0.gsb"))
        command = ["datum", "--from", "253", "--to", "6326"]
        text = "-100.5 50.25\n-80 50\n"
        expected = (-100.5 - 7.2 / 3600, 50.25 + 3.6 / 3600, -80, 50)
        for extra, environment in [(["--grids", self.file("grids")], {}), ([], {"ORVEX_GRIDS": self.file("grids")}),
                                   (["--grids", self.file("grids") + "/"], {"ORVEX_GRIDS": "nowhere"})]:
            done = subprocess.run([PROGRAM, *command, *extra], input=text, capture_output=True, encoding="ascii",
                                  env=dict(os.environ, **environment))
            self.assertEqual(done.returncode, OK, done.stderr)
            self.near([float(v) for v in done.stdout.split()], expected, 2e-9, environment)
            self.assertIn("1 point lies outside every grid", done.stderr)
        back = ["datum", "--to", "253", "--from", "6326", "--grids", self.file("grids")]
        self.near(self.numbers(*back, "%.12f" % expected[0], "%.12f" % expected[1]), (-100.5, 50.25), 2e-9, "back")

    def test_missing_files_are_named(self):
        for datum, name in [("232", "conus.las and conus.los"), ("233", "prvi.las"), ("253", "NTV2_0.GSB")]:
            self.refused("datum", "--from", datum, "--to", "3", "--grids", "nowhere", "-95", "35", says="cannot open " + name)
            self.refused("convert", "--from-datum", datum, "--to-datum", "3", "-95", "35", says="--grids or ORVEX_GRIDS")


class Tables(ToolTest):
    A, B = "686121.7558,5330438.1302", "500000.0000,0.0000"  # 11.5 48.1 and 9 0 in UTM zone 32

    def test_what_is_no_coordinate_stays_byte_for_byte(self):
        a, b = self.A.split(","), self.B.split(",")
        for text, expected in [
            ("11.5,48.1\n9,0", f"{self.A}\n{self.B}\n"),
            ("\xef\xbb\xbfid;LAT;Lon;note\r\n#c\r\n \r\n\"M;\xc3\xbc\"; 48.1 ;+11.5;\"a \"\"b\"\"\"\r\n",
             f"\xef\xbb\xbfid;y;x;note\r\n#c\r\n \r\n\"M;\xc3\xbc\";{a[1]};{a[0]};\"a \"\"b\"\"\"\r\n"),
            ("lon\tlat\tn\n11.5\t48.1\t\n9\t0\tx,y", f"x\ty\tn\n{a[0]}\t{a[1]}\t\n{b[0]}\t{b[1]}\tx,y\n"),
            ("  11.5   48.1  A b\n\n9 0", f"  {a[0]}   {a[1]}  A b\n\n{b[0]} {b[1]}\n"),
            ("id|longitude (deg)|lat_dd\n7|9|0", f"id|x|y\n7|{b[0]}|{b[1]}\n"),
        ]:
            status, out, messages = run("project", "--utm", "32N", text=text)
            self.assertEqual((status, out, messages), (OK, expected, ""), text)
        status, out, _ = run("project", "--utm", "32N", "--keep", "--x", "p", "--y", "3", text="id,P,q\n1,9,0\n")
        self.assertEqual((status, out), (OK, f"id,P,q,x,y\n1,9,0,{self.B}\n"))

    def test_degree_minute_second_text_in_and_out(self):
        forms = ["11d30'0.5\",48d6'N", "\"11d30'0.5\"\"\",48d6m", "11\xc2\xb030\xe2\x80\xb20.5\xe2\x80\xb3,48.1",
                 "%.12f,48d06'00\"" % (11 + 30 / 60 + 0.5 / 3600)]
        lines = set(run("project", "--utm", "32N", text="\n".join(forms))[1].splitlines())
        self.assertEqual(len(lines), 1, lines)
        self.assertEqual(run("project", "--utm", "32N", "-i", "--dms", text=lines.pop())[1],
                         '"11d30\'00.5000""E","48d06\'00.0000""N"\n')
        # seconds that round to sixty carry, west and south have their letters
        for degrees, expected in [("-10.99999999 -0.5", '11d00\'00.00"W 0d30\'00.00"S'),
                                  ("10.3333333333 59.9999999999", '10d20\'00.00"E 60d00\'00.00"N'),
                                   ("-0.0000000001 12.0025", '0d00\'00.00"E 12d00\'09.00"N')]:
            out = run("project", "--proj", "unprojected lat/long", "--dms", "--decimals", "2", text=degrees)[1]
            self.assertEqual(out.strip(), expected)
        out = run("project", "--proj", "unprojected lat/long", "--dms", "--decimals", "0", text="9.5 -0.99999")[1]
        self.assertEqual(out, '9d30\'00"E 1d00\'00"S\n')

    def test_angles_as_people_write_them(self):
        for text in ["E011.5 N48.1", "11:30:00 48:06:00", "11:30E 48:06N", "\"11 30 00\" \"48 06\"", "\"E 11 30\" \"N 48 6 0\"",
                     "11 30 E,48 06 00 N", "e11d30',n48d6'0\"", "11d30m0s;48d6m0sN", "+11.5\t48:06"]:
            status, out, messages = run("project", "--utm", "32N", text=text)
            self.assertEqual((status, messages), (OK, ""), text)
            self.assertEqual(re.split(r"[,;\s]", out.strip()), self.A.split(","), text)
        south = [run("project", "--utm", "32N", text=t)[1] for t in ["11.5,-33.5125", "11.5,33d30'45S", "11.5,S33:30:45",
                                                                     "11.5,33 30 45 s", "11.5,33d30m45\"S"]]
        self.assertEqual(len(set(south)), 1, south)
        for bad in ["11:60,48", "11d5.5'3\",48", "E11W,48", "11 30,48", "11:30:20:5,48", "11::30,48", "1e3x,48"]:
            status, _, messages = run("project", "--utm", "32N", text="9,0\n" + bad)
            self.assertEqual(status, SOME_FAILED, bad)
            self.assertIn("standard input:2: cannot read longitude", messages, bad)

    def test_a_sign_and_a_letter_contradict_each_other(self):
        for text in ["-13W,52", "W-13,52", "W -13d30',52", "+13E,52", "13,-52S", "13,S-52", "W-13,S-52"]:
            status, out, messages = run("project", "--utm", "33N", text=text + "\n")
            self.assertEqual((status, out), (SOME_FAILED, ",\n"), text)
            self.assertIn(": a sign or a letter, not both", messages)
        self.refused("project", "--utm", "33N", "--", "13", "-52S", says='latitude "-52S": a sign or a letter')

    def test_letters_in_the_wrong_column_and_latitudes_beyond_the_pole(self):
        utm = ["project", "--utm", "32N"]
        for text in ["48.1N 11.5E\n", "\nN48.1,E11.5\n"]:
            self.refused(*utm, says="--order lat,lon", text=text)
            self.assertEqual(len(self.numbers(*utm, "--order", "lat,lon", text=text)), 2)
        status, out, messages = run(*utm, text="lon,lat\n11.5,48.1\n48.1N,11.5E\n11.5,95\n11.5,-90.1\n")
        self.assertEqual((status, out), (SOME_FAILED, f"x,y\n{self.A}\n,\n,\n,\n"))
        self.assertIn('3: longitude "48.1N" has a letter of latitude', messages)
        self.assertIn('4: latitude "95" lies beyond the pole', messages)
        self.assertIn("unreadable lines: 3", messages)
        self.refused("project", "--proj", "mercator", "--set", "lon0=50N", says="letter of a latitude")
        self.refused("project", "--proj", "tm", "--set", "lat0=95", says="lat0=95 lies beyond the pole")

    def test_columns_that_a_header_does_not_tell(self):
        text = "Breite;Laenge\n48.1;11.5\n"
        utm = ["project", "--utm", "32N"]
        self.refused(*utm, says="--order lat,lon", text=text)
        y_first = ";".join(reversed(self.A.split(",")))
        for options in [["--order", "lat,lon"], ["--x", "2", "--y", "1"], ["--x", "Laenge", "--y", "breite"]]:
            self.assertEqual(run(*utm, *options, text=text)[:2], (OK, f"y;x\n{y_first}\n"), options)
        self.assertEqual(run(*utm, "--order", "lat,lon", text="48.1 11.5\n")[1], y_first.replace(";", " ") + "\n")
        self.refused(*utm, "--order", "lat,lon", says="another order", text="lon,lat\n1,2\n")
        self.refused(*utm, "--order", "lat,lon", "--x", "1", says="--x and --y")
        self.refused(*utm, "--order", "latlon", says="--order is")

    def test_doubled_quotes_within_quotes(self):
        for field in ['"x ""y"", z"', '"5"" pipe"', '""""', '""', '"a "" b, c"', '"""a"", ""b"""', 'in 5" of', ' "a, b" ']:
            row = "%s,11.5,48.1\n" % field
            self.assertEqual(run("project", "--utm", "32N", text="name,lon,lat\n" + row)[:2], (OK, "name,x,y\n%s,%s\n" % (field, self.A)), field)
            self.assertEqual(run("project", "--utm", "32N", "--x", "2", "--y", "3", text=row)[:2], (OK, "%s,%s\n" % (field, self.A)), field)
        self.assertIn("a quote is not closed", run("project", "--utm", "32N", text='lon,lat,n\n11.5,48.1,"a""\n')[2])
        # delimiters within quotes are none
        self.assertEqual(run("project", "--utm", "32N", "--x", "2", "--y", "3", text='"a ""b"", c, d";11.5;48.1\n')[1],
                         '"a ""b"", c, d";%s\n' % self.A.replace(",", ";"))

    def test_decimal_commas_when_asked_for(self):
        a = [number.replace(".", ",") for number in self.A.split(",")]
        utm = ["project", "--utm", "32N", "--decimal-comma"]
        for text, expected in [("lon;lat;z\n11,5;48,1;1,5\n", f"x;y;z\n{a[0]};{a[1]};1,5\n"), ("11,5 48,1", f"{a[0]} {a[1]}\n"),
                               ("lon\tlat\n\"11,5\"\t48d6,0'\n", f"x\ty\n{a[0]}\t{a[1]}\n")]:
            self.assertEqual(run(*utm, text=text)[:2], (OK, expected), text)
        self.assertEqual(run(*utm, "--delimiter", ",", text='"11,5","48,1"')[1], f'"{a[0]}","{a[1]}"\n')
        # a point may be a comma for thousands there
        self.assertEqual(run(*utm, text="11.500;48,1")[0], SOME_FAILED)
        self.assertIn("--decimal-comma", run("project", "--utm", "32N", text="lon;lat\n11,5;48\n")[2])

    def test_decimal_commas_within_quotes_between_commas(self):
        utm = ["project", "--utm", "32N"]
        for text, there in [('lon,lat,z\n"11,5","48,1","1,5"\n', 'x,y,z\n' + self.A + ',"1,5"\n'), ('"11,5",48.1\n', self.A + "\n"),
                            ('lat,lon\n"48,100","E 11,500"\n', "y,x\n" + ",".join(reversed(self.A.split(","))) + "\n"),
                            ("\"11d30,0'\",48.1\n", self.A + "\n")]:
            self.assertEqual(run(*utm, text=text)[:2], (OK, there), text)
        for text in ['"1,1,5",48\n', '"1.100,5",48\n', '"11,",48\n', '",5",48\n', '"11, 5",48\n', '"11,5";48\n', '"11,5" 48\n']:
            self.assertEqual(run(*utm, text=text)[0], SOME_FAILED, text)
        self.refused(*utm, "11,5,48", says='cannot read latitude "5,48"')
        # a length may have a comma for thousands
        for x, status in [("686099,75", OK), ("68,6099", OK), ("0,686", OK), ("686,099", SOME_FAILED), ("-6,099", SOME_FAILED)]:
            self.assertEqual(run(*utm, "-i", text='x,y\n"%s",5330000\n' % x)[0], status, x)

    def test_lines_longer_than_the_header_are_said(self):
        for text, count in [("lon,lat\n11,5,48,1\n9,0\n", 1), ("lon,lat\n9,0,\n", 0), ("lon lat name\n9 0 New York\n", 0),
                            ("9,0\n9,0,1\n", 0), ('lon,lat,name\n9,0,"a,b"\n', 0)]:
            told = re.findall(r"warning: lines with more columns than the header: (\d+)", run("project", "--utm", "32N", text=text)[2])
            self.assertEqual(told, [str(count)] if count else [], text)

    def test_threads_change_nothing(self):
        rows = ["%d,%.6f,%.6f" % (i, 6 + i % 6000 / 1000, i % 80000 / 1000) for i in range(60000)]
        rows[777] = "777,x,1"
        rows[40000] = "# a comment"
        rows[59999] = "59999,1"
        text = "\xef\xbb\xbf\n# first\nid,lon,lat\n" + "\n".join(rows)
        results = {run("project", "--utm", "32N", "--threads", n, text=text) for n in ("1", "2", "7")}
        self.assertEqual(len(results), 1)
        status, out, messages = results.pop()
        self.assertEqual(status, SOME_FAILED)
        lines = out.splitlines()
        self.assertEqual(lines[:3], ["\xef\xbb\xbf", "# first", "id,x,y"])
        self.assertEqual([line.split(",")[0] for line in lines[3:]], [row.split(",")[0] for row in rows])
        self.assertEqual([int(n) for n in re.findall(r"input:(\d+):", messages)], [781, 60003])
        # each thread has handles of its own, whatever the command
        commands = [["convert", "--from-datum", "2", "--to-datum", "3", "--to-utm", "32N"], ["datum", "--from", "5", "--to", "3"],
                    ["georef", "--controls", self.file("c.csv", Georef.AFFINE), "--method", "tps"]]
        for command in commands:
            place = ["--x", "2", "--y", "3"]
            one, four = (run(*command, *place, "--threads", n, text="\n".join(rows[:40000])) for n in ("1", "4"))
            self.assertEqual(one, four, command)

    def test_bad_lines_are_numbered_and_kept(self):
        text = "id,lon,lat\n1,9,0\n\n2,x,0\n3\n4,9,\"0\n5,nan,0\n6,,\n7,1e999,0\n8,9,0"
        path = self.file("in.csv", text)
        status, out, messages = run("project", "--utm", "32N", path)
        self.assertEqual(status, SOME_FAILED)
        self.assertEqual(out.splitlines(), ["id,x,y", "1," + self.B, "", "2,,", "3", "4,9,\"0", "5,,", "6,,", "7,,",
                                            "8," + self.B])
        self.assertEqual([int(n) for n in re.findall(r"in\.csv:(\d+):", messages)], [4, 5, 6, 7, 8, 8, 9])
        self.assertIn("points converted: 2, unplottable: 0, unreadable lines: 6", messages)

    def test_unplottable_points(self):
        arguments = ["project", "--proj", "Orthographic"]
        for text, expected in [("a,lon,lat\nb,180,0\nc,0,0\n", "a,x,y\nb,,\nc,0.0000,0.0000\n"), ("180 0 b\n", "* * b\n")]:
            status, out, messages = run(*arguments, text=text)
            self.assertEqual((status, out), (SOME_FAILED, expected))
            self.assertIn("unplottable: 1,", messages)

    def test_a_point_that_ends_the_library_s_call_costs_no_other(self):
        points = ["30,40", "10,90", "50,60"]  # the pole is the centre of a Bonne map of latitude 90: an inconsistency
        bonne = ["--stated", "--proj", "Bonne", "--set", "lat1=90"]
        alone = [run("project", *bonne, text=points[i])[1] for i in (0, 2)]
        self.assertTrue(all(re.fullmatch(r"-?\d+\.\d+,-?\d+\.\d+\n", line) for line in alone), alone)
        for command in [["project", *bonne], ["convert", "--stated", "--to-proj", "Bonne", "--to-set", "lat1=90"]]:
            status, out, messages = run(*command, text="\n".join(points))
            self.assertEqual((status, out), (SOME_FAILED, f"{alone[0]},\n{alone[1]}"), command)
            self.assertIn("points converted: 2, unplottable: 1,", messages)
        # no point of such a cone comes back, and each says so
        cone = ["--stated", "--proj", "Lambert Conformal Conic", "--set", "radius=6371000", "--set", "lat1=30", "--set", "lat2=-30"]
        status, out, messages = run("project", *cone, "-i", text="1e6,2e6\n3e6,4e6\n")
        self.assertEqual((status, out), (SOME_FAILED, ",\n,\n"))

    def test_refusals(self):
        self.file("in.csv", "id,lon,lat\n1,9,0\n")
        self.file("names.csv", "id,p,q\n1,9,0\n")
        os.symlink(self.file("in.csv"), self.file("link.csv"))
        project = ["project", "--utm", "32N"]
        for arguments, says in [(["names.csv"], "--x and --y"), (["names.csv", "--x", "pp"], 'did you mean "p"'),
                                (["in.csv", "--x", "9"], "no column 9"), (["in.csv", "--x", "0"], "from 1"),
                                (["in.csv", "--x", "2", "--y", "2"], "same column"), (["--x", "p"], "no header"),
                                (["in.csv", "--delimiter", "xx"], "delimiter"), (["in.csv", "-o", "link.csv"], "is the input")]:
            self.refused(*project, *arguments, says=says)
        self.assertEqual(self.read("in.csv"), "id,lon,lat\n1,9,0\n")
        if os.path.exists("/dev/stdin"):
            with open(self.file("in.csv"), "rb") as text:
                done = subprocess.run([PROGRAM, *project, "-o", self.file("in.csv")], stdin=text, capture_output=True)
            self.assertEqual((done.returncode, self.read("in.csv")), (USAGE, "id,lon,lat\n1,9,0\n"))
        if os.path.exists("/dev/full"):
            self.assertEqual(run(*project, "-o", "/dev/full", text="9,0\n")[0], USAGE)

    def test_absurd_input(self):
        long = "9" * 3_000_000
        for text, good in [("", 0), ("\n" * 70000, 0), ("\0,\0\n9,0\n", 0), ("9,0\n" + long + "," + long + "\n9,0", 2),
                           ("9,0\n" + "," * 1_000_000 + "\n", 1), ("9,0\n" + '"' * 999_999 + "\n9,0", 2),
                           ("".join(map(chr, range(256))) * 50 + "\n", 0), ("9,0\n1e308,1e308\n-1e-320,4e-324\n", 2)]:
            status, out, _ = run("project", "--utm", "32N", text=text)
            self.assertIn(status, (OK, SOME_FAILED, USAGE))  # no signal, no sanitizer report
            self.assertGreaterEqual(len(re.findall(r"^[-\d.]+,[-\d.]+$", out, re.M)), good, text[:40])

    def test_many_blocks_keep_their_order(self):
        text = "".join("%d,9,0\n" % i if i % 5 else "%d,?,0\n" % i for i in range(50000))
        status, out, messages = run("project", "--utm", "32N", "--x", "2", "--y", "3", text=text)
        self.assertEqual(status, SOME_FAILED)
        self.assertEqual(out, "".join("%d,%s\n" % (i, self.B if i % 5 else ",") for i in range(50000)))
        self.assertIn("9900 more", messages)  # the first hundred are shown


class Datums(ToolTest):
    def test_custom_datum_from_store_to_result(self):
        ini = self.file("own.ini", "; mine\n[Other]\nkey=1\n")
        # EPSG Guidance Note 7-2: WGS 72 to WGS 84 moves 4 E 55 N by 0.554 and 0.090 arcseconds
        add = ["datum", "add", "--ini", ini, "--method", "bursa", "--ellipsoid", "wgs 72"]
        self.assertEqual(run(*add, "Site A", "--dz", "4.5", "--rz", "0.554", "--k", "0.219")[0], OK)
        for name in ["site a", "254"]:
            got = self.numbers("datum", "--from", name, "--to", "6326", "--ini", ini, text="4,55")
            self.near(got, (4 + 0.554 / 3600, 55 + 0.090 / 3600), 0.0006 / 3600, name)
        back = self.numbers("datum", "--to", "Site A", "--from", "6326", "--ini", ini, text="%.12f,%.12f" % tuple(got))
        self.near(back, (4, 55), 1e-7, "back")
        self.assertRegex(run("datum", "show", "SITE A", "--ini", ini)[1], r"(?s)254 \(custom\).*0 0 4\.5 m.*0\.219 ppm")
        self.assertRegex(run("list", "datums", "--ini", ini)[1], r"254 .*Bursa-Wolf.*Site A +-\n$")
        self.assertEqual(run("datum", "add", "B", "--ini", ini, "--dx", "-1.5")[0], OK)
        self.assertEqual(run("datum", "remove", "site a", "--ini", ini)[0], OK)
        kept = self.read("own.ini")
        self.assertTrue(kept.startswith("; mine\n[Other]\nkey=1\n"), kept)
        self.assertNotIn("Site A", kept)
        for arguments, says in [
            (["remove", "Site A", "--ini", ini], "there is no datum"), (["show", "american 1983"], '"North American Datum 1983"'),
            (["add", "C", "--ini", ini, "--rx", "1"], "--method bursa"), (["add", "C", "--ini", ini, "--method", "ntv2"], "none, mol"),
            (["add", "C", "--ini", "no/own.ini"], "cannot store"), (["add", "C", "--ini", ini, "--flattening", "1"], "--radius"),
            (["add", "world geodetic system 1984", "--ini", ini], "built-in"), (["add", "wgs84", "--ini", ini], "built-in"),
            (["add", "3", "--ini", ini], "cannot name a datum"), (["add", "C", "--ini", ini, "--dx", "nan"], "--dx is not a finite"),
            (["add", "C", "--ini", ini, "--radius", "inf"], "--radius is not a finite"),
            (["show", "tokyo", "--ini", "none.ini"], "cannot open none.ini"), (["show", "tokyo", "--ini", "."], ". is a directory"), (["--from", "6326"], "--from and --to"),
            (["--from", "6326", "--to", "European 1950 (MRE)"], "only be converted from"), (["--from", "1", "--to", "0"], "no datum"),
        ]:
            self.refused("datum", *arguments, says=says)
        if hasattr(os, "mkfifo"):
            os.mkfifo(self.file("pipe.ini"))
            self.refused("datum", "show", "tokyo", "--ini", "pipe.ini", says="pipe.ini is no file")  # not waited for

    def test_convert_is_the_three_steps_in_one(self):
        zone, point = ["stateplane27", "Texas Central"], "650000,250000\n"
        datums = ["NAD 1927 - CONUS", "6326"]
        place = run("project", "--" + zone[0], zone[1], "-i", "--decimals", "15", text=point)[1]
        shifted = run("datum", "--from", datums[0], "--to", datums[1], "--decimals", "15", text=place)[1]
        expected = run("project", "--utm", "14N", text=shifted)[1]
        self.assertEqual(run("convert", "--from-" + zone[0], zone[1], "--from-datum", datums[0], "--to-datum", datums[1],
                             "--to-utm", "14N", text=point)[1], expected)
        self.assertNotEqual(place, shifted)
        self.refused("convert", says="nothing to convert")
        self.refused("convert", "--to-utm", "1N", "--from-datum", "1", says="both datums")

    def test_a_side_stands_on_the_ellipsoid_of_its_datum(self):
        self.assertEqual(run("datum", "add", "Site", "--ini", self.file("own.ini"), "--ellipsoid", "clarke 1866", "--dx", "-8",
                             "--dy", "160", "--dz", "176")[0], OK)
        # another implementation with the same three shifts gives 4000211.09
        for datum in ["2", "124", "site"]:
            got = self.numbers("convert", "--ini", self.file("own.ini"), "--from-utm", "16N", "--from-datum", datum,
                               "--to-utm", "16N", "--to-datum", "3", text="500000 4000000")
            self.near(got, (500000.38, 4000211.09), 0.01, datum)
        # regression equations give no parameters, but the ellipsoid is known
        given = ["--from-ellipsoid", "international 1924"]
        utm = ["convert", "--from-utm", "31N", "--from-datum", "European 1950 (MRE)", "--to-datum", "3"]
        self.assertEqual(self.numbers(*utm, text="500000 5e6"), self.numbers(*utm, *given, text="500000 5e6"))

    def test_contradictions_of_ellipsoid_and_datum_are_said(self):
        to = ["--to-utm", "16N", "--to-datum", "3"]
        zone = ["--from-stateplane27", "alabama east"]
        for arguments, says in [
            (["--from-utm", "16N", "--from-ellipsoid", "wgs 84", "--from-datum", "2", *to],
             "ellipsoid (WGS 84) is not that of --from-datum 2 (Clarke 1866)"),
            ([*zone, "--from-datum", "3", *to], "zone's ellipsoid (Clarke 1866) is not that of --from-datum 3 (WGS 84)"),
            ([*zone, "--to-utm", "16N"], "different ellipsoids (Clarke 1866, WGS 84)"),
            ([*zone, "--from-datum", "2", *to], None), (["--from-posc", "26929", "--from-datum", "6326", *to], None),
            (["--from-posc", "26929", "--to-utm", "16N"], None),
            (["--from-proj", "mercator", "--from-set", "radius=6378137", "--from-datum", "3", "--to-utm", "31N", "--to-datum",
              "3"], None),
        ]:
            status, _, messages = run("convert", *arguments, text="200000 400000")
            self.assertEqual(status, OK, messages)
            self.assertIn(says, messages) if says else self.assertEqual(messages, "")


class Georef(ToolTest):
    # X = 1000 + 2x - y/2, Y = 5000 - 2y + x/4 in five places
    AFFINE = "col,row,e,n\n" + "".join(
        "%d,%d,%.3f,%.3f\n" % (x, y, 1000 + 2 * x - y / 2, 5000 - 2 * y + x / 4)
        for x, y in [(0, 0), (100, 8), (8, 100), (96, 104), (48, 40)])

    def test_affine_data_come_back_by_every_method_that_can(self):
        controls = self.file("c.csv", self.AFFINE)
        for method in ["affine", "AFFINE polynomial", "poly1", "tps", "natural", "marcov", "exponential", "rational",
                       "idw"]:
            got = self.numbers("georef", "--controls", controls, "--method", method, text="12,20\n-400,300\n")
            self.near(got, (1014, 4963, 50, 4300), 2e-4, method)

    def test_report_and_world_file(self):
        controls = self.file("c.csv", self.AFFINE)
        world = self.file("c.wld")
        status, out, _ = run("georef", "--controls", controls, "--method", "affine", "--report", "--world-file", world)
        self.assertEqual(status, OK)
        self.assertRegex(out, r"total error \(root mean square\)  0\.0000\n")
        coefficients = [float(v) for v in re.findall(r"[=*] ([-+.e\d]+)", out)]
        self.near(coefficients, (1000, 2, -0.5, 5000, 0.25, -2), 1e-9, "coefficients")
        # the position is that of the centre of pixel (0, 0), half a pixel from its corner
        self.near([float(v) for v in self.read("c.wld").split()], (2, 0.25, -0.5, -2, 1000.75, 4999.125), 1e-9, "world")

    def test_controls_with_names_that_are_off_and_from_other_programs(self):
        rows = [line.split(",") for line in self.AFFINE.splitlines()[1:]]
        off = ["1", "1", "0", "0"]
        named = "name,col,row,e,n,on\n" + "".join(
            ",".join(["P%d" % i, *row, switch]) + "\n" for i, (row, switch) in enumerate([*((r, "yes") for r in rows), (off, "no")]))
        qgis = "#CRS: any\nmapX,mapY,sourceX,sourceY,enable,dX,dY,residual\n" + "".join(
            ",".join([e, n, x, y, switch, "0", "0", "0"]) + "\n"
            for (x, y, e, n), switch in [*((r, "1") for r in rows), (off, "0")])
        plain = run("georef", "--controls", self.file("p.csv", self.AFFINE), "--method", "tps", text="12,20\n")
        for name, text in [("n.csv", named), ("q.points", qgis)]:
            got = run("georef", "--controls", self.file(name, text), "--method", "tps", text="12,20\n")
            self.assertEqual(got, plain, name)
        report = run("georef", "--controls", self.file("n.csv"), "--method", "affine", "--report")[1]
        self.assertEqual(re.findall(r"  (P\d)$", report, re.M), ["P0", "P1", "P2", "P3", "P4"])
        gcps = run("georef", "--controls", self.file("n.csv"), "--method", "affine", "--gcp")[1].splitlines()
        self.assertEqual(len(gcps), 5)
        self.near([float(v) for v in gcps[1].split()[1:]], [float(v) for v in rows[1]], 1e-9, "gcp")

    def test_report_and_options_go_to_the_output(self):
        fit = ["georef", "--controls", self.file("c.csv", self.AFFINE), "--method", "affine"]
        for asked in [["--report"], ["--gcp"], ["--report", "--gcp"]]:
            printed = run(*fit, *asked)[1]
            self.assertTrue(printed)
            self.assertEqual(run(*fit, *asked, "-o", self.file("out")), (OK, "", ""))
            self.assertEqual(self.read("out"), printed)
            status, points, messages = run(*fit, *asked, "-", text="12,20\n")
            self.assertEqual((status, points, messages), (OK, "1014.0000,4963.0000\n", printed))
        self.refused(*fit, "--report", "-o", "c.csv", says="is the input")
        self.refused(*fit, "-o", "c.csv", says="is the input")
        self.refused(*fit, "--world-file", "w", "-o", "out", says="--output is for")
        self.assertEqual(self.read("c.csv"), self.AFFINE)

    def test_the_header_of_controls_orders_the_columns(self):
        rows = [line.split(",") for line in self.AFFINE.splitlines()[1:]]
        for header, order in [("y,x,northing,easting", (1, 0, 3, 2)), ("dest_x,dest_y,source_x,source_y", (2, 3, 0, 1)),
                              ("x,y,north,east", (0, 1, 3, 2)), ("a,b,c,d", (0, 1, 2, 3))]:
            text = "\n".join([header, *(",".join(row[i] for i in order) for row in rows)])
            self.near(self.numbers("georef", "--controls", self.file("o.csv", text), "--method", "affine", "12", "20"),
                      (1014, 4963), 1e-3, header)
        self.refused("georef", "--controls", self.file("o.csv", "x,easting,y,northing\n1,2,3,4\n"), "--method", "affine", says="apart")

    def test_controls_with_decimal_commas_or_from_standard_input(self):
        text = self.AFFINE.replace(",", ";").replace(".", ",")
        fit = ["georef", "--method", "affine", "12", "20"]
        self.assertEqual(run(*fit, "--decimal-comma", "--controls", self.file("k.csv", text))[:2], (OK, "1014,0000 4963,0000\n"))
        self.assertEqual(run(*fit, "--controls", "-", text=self.AFFINE)[:2], (OK, "1014.0000 4963.0000\n"))
        rows = [line.split(",") for line in self.AFFINE.splitlines()[1:]]
        quoted = "\n".join(",".join('"%s,0"' % value if value.isdigit() else value for value in row) for row in rows)
        self.assertEqual(run(*fit, "--controls", self.file("q.csv", quoted))[:2], (OK, "1014.0000 4963.0000\n"))
        self.assertIn("cannot read column 2", run(*fit, "--controls", self.file("q.csv", '1,"2,000",3,4\n'))[2])
        self.refused("georef", "--method", "affine", "--controls", "-", says="two inputs")

    def test_what_says_neither_on_nor_off(self):
        for word in ["nein", "maybe", "2", ""]:
            text = "x,y,e,n,on\n0,0,0,0,yes\n9,0,9,0,Y\n0,9,0,9,1\n9,9,9,9,%s\n" % word
            messages = run("georef", "--controls", self.file("on.csv", text), "--method", "affine", "--report")[2]
            self.assertIn('on.csv:5: "%s" is neither on nor off' % word, messages)

    def test_a_warp_tells_what_each_point_shows_of_the_others(self):
        # affine data but for one point, which is (0.3, 0.4) off: the others say so, though the warp passes through it
        lines = self.AFFINE.splitlines()
        x, y, e, n = (float(v) for v in lines[5].split(","))
        lines[5] = "%g,%g,%.3f,%.3f" % (x, y, e + 0.3, n + 0.4)
        out = run("georef", "--controls", self.file("w.csv", "\n".join(lines)), "--method", "tps", "--report")[1]
        self.assertRegex(out, r"total error \(root mean square\)  0\.0000\n")
        left_out = dict(re.findall(r"^ +(\d) +([\d.]+)$", out.split("each point by the fit to the others:")[1], re.M))
        self.assertEqual(len(left_out), 5)
        self.near([float(left_out["5"])], [0.5], 1e-3, "left out")

    def test_the_inverse_undoes_the_transform(self):
        controls = os.path.join(ROOT, "examples/georef/controls.csv")
        with open(controls, encoding="ascii") as text:
            places = [line.rsplit(",", 2)[0] for line in text.read().splitlines() if line[0].isdigit()]
        self.assertEqual(len(places), 12)
        places += ["%.3f,%.3f" % (500 + 613.7 * (i % 10), 500 + 777.3 * (i // 10)) for i in range(60)]
        for method in ["helmert", "affine", "projective", "poly1", "poly2", "poly3", "tps", "natural", "marcov", "exponential",
                       "rational", "idw"]:
            for flip in [[], ["--flip-y"]]:
                command = ["georef", "--controls", controls, "--method", method, *flip, "--decimals", "9"]
                there = run(*command, text="\n".join(places))[1]
                status, back, messages = run(*command, "--inverse", "--threads", "2", text=there)
                self.assertEqual(status, OK, (method, messages))
                # eastings and northings of seven digits leave half a nanometre, that is as many pixels
                self.near([float(v) for v in re.split("[,\n]", back.strip())], [float(v) for p in places for v in p.split(",")],
                          5e-9, method)

    def test_what_has_no_way_back(self):
        def parabola(bend):  # X = x + bend x^2, which turns at x = -1 / (2 bend)
            return "\n".join("%d %d %.6f %d" % (x, y, x + bend * x * x, y) for x, y in
                             [(0, 0), (50, 0), (100, 10), (0, 80), (50, 90), (100, 100), (20, 30)])
        poly2 = ["georef", "--controls", self.file("p.txt", parabola(0.002)), "--method", "poly2", "--inverse"]
        status, out, messages = run(*poly2, text="75.625,40\n-124,3\n-126,3\n")  # it turns at -125
        self.assertEqual((status, out.splitlines()[2]), (SOME_FAILED, ","))
        self.near([float(v) for v in out.splitlines()[0].split(",")], (66.5, 40), 0.5, "within")
        self.assertEqual(run(*poly2[:-1], text=out.splitlines()[1])[1], "-124.0000,3.0000\n")
        self.assertIn("warning: points without a way back: 1;", messages)
        # one that turns among its controls is refused, and so are destinations on a line and an inverse of nothing
        self.refused("georef", "--controls", self.file("f.txt", parabola(-0.02)), "--method", "poly2", "--inverse", says="folds")
        self.file("line.txt", "0 0 5 5\n9 0 6 6\n0 9 7 7\n")
        self.refused("georef", "--controls", "line.txt", "--method", "affine", "-i", says="no inverse")
        self.refused("georef", "--controls", "line.txt", "--method", "affine", "-i", "--report", says="--inverse is for points")

    # X = (2x + y + 10) / w, Y = (5 - x + 3y) / w, w = 1 + x / 1000: the horizon lies at x = -1000
    @staticmethod
    def perspective(x, y, dx=0.0, dy=0.0):
        w = 1 + x / 1000
        return "%.17g %.17g %.17g %.17g" % (x, y, (2 * x + y + 10) / w + dx, (5 - x + 3 * y) / w + dy)

    PLACES = [(0, 0), (800, 30), (20, 600), (700, 650), (300, 200), (500, 450)]

    def test_a_projective_fit(self):
        for places in [self.PLACES, self.PLACES[:4]]:
            file = self.file("v.txt", "\n".join(self.perspective(x, y) for x, y in places))
            command = ["georef", "--controls", file, "--method", "projective"]
            out = run(*command, "--report", "--decimals", "9")[1]
            self.near([float(v) for v in re.findall(r"[=*(] *([-+.e\d]+)", out.split("\nX =")[1].join(["X =", ""]))],
                      (10, 2, 1, 5, -1, 3, 1, 0.001, 0), 1e-9, out)
            self.assertRegex(out, r"total error \(root mean square\)  0\.000000000\n")
            given = self.perspective(-900, 40).split()
            self.near(self.numbers(*command, "--", "-900", "40"), [float(v) for v in given[2:]], 1e-6, "near the horizon")
            self.near(self.numbers(*command, "-i", *given[2:]), (-900, 40), 1e-6, "back")
            for beyond in [("-1000", "7"), ("-2000", "7")]:
                self.assertEqual(run(*command, "--", *beyond)[:2], (SOME_FAILED, "* *\n"))
        left_out = dict(re.findall(r"^ +(\d) +([-.\d]+)$", run(*command, "--report")[1].split("the others:")[1], re.M))
        self.assertEqual(left_out, dict.fromkeys("1234", "-"))  # three points determine none

    def test_a_projective_fit_is_one_of_least_squares(self):
        shifts = [(0.5, -0.2), (-0.3, 0.4), (0.1, 0.6), (-0.6, -0.1), (0.2, 0.3), (0.4, -0.5)]
        rows = [self.perspective(*place, *shift) for place, shift in zip(self.PLACES, shifts)]
        out = run("georef", "--controls", self.file("n.txt", "\n".join(rows)), "--method", "projective", "--report", "--decimals", "9")[1]
        c = [float(v) for v in re.findall(r"[=*(] *([-+.e\d]+)", "X =" + out.split("\nX =")[1])]
        self.assertEqual(len(c), 9)

        def total(c):
            squares = 0
            for x, y, e, n in ([float(v) for v in row.split()] for row in rows):
                w = c[6] + c[7] * x + c[8] * y
                squares += ((c[0] + c[1] * x + c[2] * y) / w - e) ** 2 + ((c[3] + c[4] * x + c[5] * y) / w - n) ** 2
            return (squares / len(rows)) ** 0.5
        least = float(re.search(r"root mean square\)  ([.\d]+)", out).group(1))
        self.near([total(c)], [least], 1e-8, "formula")
        for i in range(8):
            for change in (1e-4, -1e-4):
                other = c[:6] + [1, c[7], c[8]]
                other[i if i < 6 else i + 1] += change * (1 if i in (0, 3) else 1e-2 if i < 6 else 1e-5)
                self.assertGreater(total(other), least, (i, change))

    def test_controls_that_determine_no_projective_fit(self):
        def fit(rows, says):
            self.refused("georef", "--controls", self.file("c.txt", "\n".join(rows)), "--method", "projective", says=says)
        good = [self.perspective(x, y) for x, y in self.PLACES]
        fit(good[:3], "Projective needs at least 4 control points, not 3")
        fit([self.perspective(x, y) for x, y in [(0, 0), (100, 50), (200, 100), (70, 300)]], "no three lie on one line")
        fit([self.perspective(x, 3 * x + 1e6) for x in (0, 10, 25, 60, 99)] + good[:1], "no three lie on one line")
        fit(["0 0 0 0", "9 0 5 5", "0 9 8 8", "9 9 1 7"], "no three lie on one line")
        fit(good[:1] * 4, "no three lie on one line")
        fit(["0 0 0 0", "1 0 1 0", "1 1 0 1", "0 1 0.9 0.9"], "both sides of a horizon")

    def test_rows_of_qgis_count_upwards_and_those_of_gdal_and_world_files_downwards(self):
        rows = [line.split(",") for line in self.AFFINE.splitlines()[1:]]
        qgis = "mapX,mapY,sourceX,sourceY,enable\n" + "".join("%s,%s,%s,-%s,%d\n" % (e, n, x, y, i != 1)
                                                              for i, (x, y, e, n) in enumerate(rows))
        results = []
        for name, text in [("p.csv", "\n".join(",".join(row) for i, row in enumerate(rows) if i != 1)), ("q.points", qgis)]:
            command = ["georef", "--controls", self.file(name, text), "--method", "affine", "--gcp", "--world-file", self.file("w")]
            gcps = [float(v) for v in run(*command)[1].replace("-gcp", "").split()]
            results.append(gcps + [float(v) for v in self.read("w").split()])
        self.near(results[1], results[0], 1e-9, "rows")
        report = run("georef", "--controls", self.file("q.points"), "--method", "affine", "--report")[1]
        self.assertEqual(re.findall(r"^ +(\d) ", report, re.M), ["1", "3", "4", "5"])  # numbers of the table

    def test_helmert_residuals_and_mirror(self):
        # scale and rotation 3 + 4i, shift (10, 20); the last corner of the square is off by (0.4, 0.3), so d = 0.5.
        # With centred corners z the fit takes d * (1/4 + z conj(z4) / 8): of d it leaves 1/2 at the corner itself,
        # nothing at the opposite one and sqrt(2)/4 at its neighbours; their root mean square is also d sqrt(2)/4.
        points = [(0, 0), (2, 0), (2, 2), (0, 2)]
        rows = [[x, y, 10 + 3 * x - 4 * y, 20 + 4 * x + 3 * y] for x, y in points]
        rows[3][2] += 0.4
        rows[3][3] += 0.3
        controls = self.file("h.txt", "\n".join(" ".join("%.4f" % v for v in row) for row in rows))
        status, out, messages = run("georef", "--controls", controls, "--method", "helmert", "--report")
        self.assertEqual((status, messages), (OK, ""))
        errors = [float(line.split()[-1]) for line in out.splitlines() if re.match(r"\s+\d+\s", line)]
        errors.append(float(re.search(r"total error.* ([\d.]+)\n", out).group(1)))
        self.near(errors, (0.17678, 0, 0.17678, 0.25, 0.17678), 0.00006, "errors")
        mirrored = self.file("m.txt", "\n".join("%g %g %g %g" % (x, -y, e, n) for (x, y), (_, _, e, n) in zip(points, rows)))
        status, _, messages = run("georef", "--controls", mirrored, "--method", "helmert", "--report")
        self.assertEqual(status, OK)
        self.assertIn("try with --flip-y", messages)

    def test_refusals(self):
        self.file("bad.csv", "x,y,e,n\n1,1,5,5\n2,2,6,6,7\n\n3,x,7,8\n4,4,\"9,9\n")
        self.file("line.csv", "1,1,5,5\n2,2,6,6\n3,3,7,8\n")
        self.file("empty.csv", "# nothing\n")
        self.file("good.csv", self.AFFINE)
        self.file("named.csv", "lon,X,Y,name,on\n" + "1,2,3,4\n" * 4)  # rows of another length than the header
        self.file("wide.csv", "a,b,c,d,e,f,name\n" + "1,2,3,4\n" * 4)
        for file, method, says in [("bad.csv", "affine", "bad.csv: 3 bad lines"), ("line.csv", "affine", "not on one line"),
                                   ("line.csv", "poly3", "needs at least 10 control points, not 3"),
                                   ("empty.csv", "tps", "no control points"), ("good.csv", "afine", 'mean "affine"'),
                                   ("named.csv", "affine", "the header has 5 columns"), ("wide.csv", "affine", "has 7 columns"),
                                   ("none.csv", "affine", "cannot open")]:
            self.refused("georef", "--controls", file, "--method", method, says=says)
        for file, says in [("/proc/self/mem", "cannot read /proc/self/mem"), (self.directory, "is a directory")]:
            self.refused("georef", "--controls", file, "--method", "affine", says=says)  # no reading is not the end
            for option in ["--land", "--points"]:
                self.refused("map", "--proj", "mollweide", option, file, says=says)
        with subprocess.Popen([PROGRAM, "georef", "--controls", "-", "--method", "affine", "--report"], stderr=subprocess.PIPE,
                              stdin=os.open(self.directory, os.O_RDONLY)) as georef:
            self.assertIn(b"cannot read standard input", georef.stderr.read())
        messages = run("georef", "--controls", self.file("bad.csv"), "--method", "affine")[2]
        self.assertEqual(re.findall(r"bad\.csv:(\d):", messages), ["3", "5", "6"])
        good = ["georef", "--controls", "good.csv", "--method"]
        self.refused(*good, "tps", "--world-file", "w", says="affine map")
        self.refused(*good, "affine", "--world-file", "good.csv", says="is the input")


if __name__ == "__main__":
    PROGRAM = os.path.abspath(sys.argv.pop(1))
    unittest.main()
