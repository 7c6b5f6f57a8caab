#!/usr/bin/env python3
"""Tests of registered coordinate systems on the command line: finding, explaining, converting, refusing.

Usage: test_systems.py PROGRAM [unittest arguments]
"""
import csv
import io
import os
import sys
import unittest

import test_tool
from test_tool import OK, USAGE, ToolTest, run


def angle(degrees, minutes=0, seconds=0.0, sign=1):
    return sign * (degrees + minutes / 60 + seconds / 3600)


class Systems(ToolTest):
    # Worked examples of IOGP Publication 373-7-2: system, longitude, latitude, easting, northing in the system's unit.
    PUBLISHED = [
        (32040, angle(96, sign=-1), angle(28, 30), 2963503.91, 254759.80),                    # Lambert, two parallels, US feet
        (24200, angle(76, 56, 37.26, -1), angle(17, 55, 55.80), 255966.58, 142493.51),        # Lambert, one parallel
        (31300, angle(5, 48, 26.533), angle(50, 40, 46.461), 251763.20, 153034.13),           # Lambert, Belgium
        (6201, angle(83, 10, sign=-1), angle(43, 45), 2308335.75, 160210.48),                 # Lambert, Michigan, US feet
        (27700, angle(0, 30), angle(50, 30), 577274.99, 69740.50),                            # transverse Mercator
        (3002, angle(120), angle(3, sign=-1), 5009726.58, 569150.82),                         # Mercator A
        (3388, angle(53), angle(53), 165704.29, 5171848.07),                                  # Mercator B
        (3857, angle(100, 20, sign=-1), angle(24, 22, 54.433), -11169055.58, 2800000.00),     # pseudo-Mercator
        (32661, angle(44), angle(73), 3320416.75, 632668.43),                                 # polar stereographic A
        (3032, angle(120), angle(75, sign=-1), 7255380.79, 7053389.56),                       # polar stereographic B
        (2985, angle(140, 4, 17.040), angle(66, 36, 18.820, -1), 303169.52, 244055.72),       # polar stereographic C
        (29873, angle(115, 48, 19.8196), angle(5, 23, 14.1129), 679245.73, 596562.78),        # Hotine B, another turn
    ]

    def test_published_values_in_both_directions(self):
        for code, lon, lat, x, y in self.PUBLISHED:
            there = self.numbers("convert", "-q", "--to", "EPSG:%d" % code, text="%.12f,%.12f" % (lon, lat))
            self.near(there, (x, y), 0.011, code)
            back = self.numbers("convert", "-q", "--from", str(code), text="%.4f %.4f" % tuple(there))
            self.near(back, (lon, lat), 1e-8, code)

    def test_one_system_by_many_names(self):
        place = "-99.5,31"
        ways = ["EPSG:32039", "epsg:32039", "32039", "urn:ogc:def:crs:EPSG::32039", "NAD27 / Texas Central",
                "nad27 texas central", "http://www.opengis.net/def/crs/EPSG/0/32039"]
        self.assertEqual(len({run("convert", "--to", way, text=place) for way in ways}), 1)
        for name, label in [("wgs84", "EPSG:4326"), ("web mercator", "EPSG:3857"), ("Lambert-93", ""), ("RGF93 v1", "EPSG:4171")]:
            status, out, messages = run("show", name)
            self.assertEqual(status, OK if label else USAGE, messages)
            self.assertIn(label, out)

    def test_unit_meridian_and_order_of_axes(self):
        # one place in metres and in feet of both kinds; Oregon's foot is the international one
        metres = self.numbers("convert", "--from", "4269", "--to", "EPSG:32139", text="-99,31")
        feet = self.numbers("convert", "--from", "4269", "--to", "EPSG:2277", text="-99,31")
        self.near([v * 1200 / 3937 for v in feet], metres, 2e-4, "US survey foot")
        metres = self.numbers("convert", "--from", "4269", "--to", "EPSG:32126", text="-120,45")
        feet = self.numbers("convert", "--from", "4269", "--to", "EPSG:2269", text="-120,45")
        self.near([v * 0.3048 for v in feet], metres, 2e-4, "foot")
        # grads from Paris (2.5969213 grads) and degrees from Greenwich on the same datum
        self.near(self.numbers("convert", "--from", "4807", "--to", "4275", text="0,52"), (2.33722917, 46.8), 1e-9, "Paris")
        # systems that differ by the order of their axes in the registry alone: easting always comes first
        self.assertEqual(*(run("convert", "--from", "4258", "--to", code, text="13,52") for code in ("25833", "3045")))

    def test_datum_is_changed_where_the_catalogue_has_both(self):
        # the same step by hand
        text = "-99.5,31"
        by_hand = run("datum", "--from", "6267", "--to", "6326", text=text)
        self.assertEqual(run("convert", "--from", "4267", "--to", "4326", text=text), by_hand)
        regional = run("datum", "--from", "NAD 1927 - Western US", "--to", "6326", text=text)
        self.assertEqual(run("convert", "--from", "4267", "--from-datum", "NAD 1927 - Western US", "--to", "4326", text=text),
                         regional)
        self.assertNotEqual(by_hand, regional)
        # a system with another meridian than its datum's row: Greenwich here, Paris there
        paris = self.numbers("convert", "--from", "4807", "--to", "4326", text="0,52")
        greenwich = self.numbers("convert", "--from", "4275", "--to", "4326", text="2.33722917,46.8")
        self.near(paris, greenwich, 1e-8, "NTF")
        self.near(greenwich, (2.33651, 46.79994), 3e-5, "NTF to WGS 84")
        # a named projection on the other side needs a datum
        self.refused("convert", "--from", "32039", "--to-utm", "14N", says="--to-datum")
        self.assertEqual(run("convert", "--from", "4267", "--to-utm", "14N", "--to-datum", "3", text=text)[0], OK)

    def test_lacking_datum(self):
        there = self.numbers("convert", "--from", "EPSG:4171", "--to", "EPSG:2154", text="3,46.5")
        self.near(there, (700000, 6600000), 1e-4, "origin of the map")
        for sides in [("2154", "4326"), ("4326", "4171")]:
            self.refused("convert", "--from", sides[0], "--to", sides[1], says='lacks "Reseau Geodesique Francais 1993 v1"')
        self.assertEqual(run("convert", "--from", "2154", "--from-datum", "3", "--to", "4326", text="700000 6600000")[0], OK)
        self.refused("convert", "--from", "32039", "--from-datum", "6301", "--to", "4326", says="contradicts")

    def test_refused_by_name_with_the_reason(self):
        for code, name, reason in [(5514, "S-JTSK / Krovak East North", "Krovak"), (2048, "Lo19", "axes run west and south"),
                                   (28992, "Amersfoort / RD New", "stereographic"), (3035, "LAEA Europe", "of the sphere only"),
                                   (32600, "UTM grid system", "EPSG:32633"), (27200, "New Zealand Map Grid", "New Zealand Map Grid")]:
            for side in ("--from", "--to"):
                self.refused("convert", side, str(code), says="EPSG:%d" % code)
            messages = run("convert", "--to", str(code), text="1,1")[2]
            self.assertIn(name, messages)
            self.assertIn(reason, messages)
            self.assertIn("refused", run("show", str(code))[1])
        self.refused("convert", "--to", "EPSG:4979", says="no projected or geographic")
        self.refused("convert", "--to", "EPSG:32661x", says="unknown coordinate system")
        self.refused("convert", "--to", "UTM zone 33N", says="several coordinate systems")
        self.refused("convert", "--to", "NAD27 / Texas Centrel", says='mean "NAD27 / Texas Central"')
        self.refused("convert", "--to", "32633", "--to-utm", "33N", says="--to names a whole coordinate system")
        self.refused("convert", "--to", "4807", "--dms", says="grad")

    def test_said_but_computed(self):
        status, out, messages = run("convert", "--from", "4326", "--to", "32633", text="40,50\n14,50\n13,49\n")
        self.assertEqual((status, len(out.splitlines())), (OK, 3))
        self.assertIn("orvex: warning: 1 point lies outside the area of EPSG:32633", messages)
        status, _, messages = run("convert", "--to", "3785", text="14,50")
        self.assertEqual((status, messages), (OK, 'orvex: warning: EPSG:3785 "Popular Visualisation CRS / Mercator" is deprecated\n'))

    def test_list(self):
        status, out, _ = run("list", "crs", "nad27", "TEXAS")
        self.assertEqual(status, OK)
        self.assertEqual(out.count("NAD27 / Texas"), 5)
        # where a place lies; an area across the 180th meridian holds both sides of it
        self.assertIn("32633", run("list", "crs", "utm", "--at", "13.4,52.5")[1])
        self.assertNotIn("32634", run("list", "crs", "utm", "--at", "13.4,52.5")[1])
        for place in ("179,-17", "-179,-17"):
            self.assertIn("3460", run("list", "crs", "fiji", "--at", place)[1])
        rows = list(csv.DictReader(io.StringIO(run("list", "crs", "nad27", "texas", "--csv")[1])))
        self.assertEqual([row["unit"] for row in rows if row["code"] == "32039"], ["US survey foot"])
        self.assertTrue(len(rows) == out.count("\n") - 1 and all("Texas" in row["name"] + row["area"] for row in rows))
        self.refused("list", "crs", "no such place", says="no coordinate system")
        self.refused("list", "crs", "--at", "1;2", says="longitude,latitude")
        self.refused("list", "crs", "--at", "52N,13E", says="longitude,latitude")
        self.refused("list", "crs", "--at", "13,95", says="longitude,latitude")


if __name__ == "__main__":
    test_tool.PROGRAM = os.path.abspath(sys.argv.pop(1))
    unittest.main()
