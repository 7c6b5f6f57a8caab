#!/usr/bin/env python3
"""Tests of zones by point: UTM with its exceptions and UPS, references of the military grid, state plane zones.

Usage: test_zones.py PROGRAM [unittest arguments]
"""
import os
import sys
import unittest

import test_tool
from test_tool import OK, SOME_FAILED, ToolTest, run

# Latitude, longitude, reference to a metre, zone, easting, northing. Origin: GeoConvert of GeographicLib 2.1, whose zones
# are those of TM 8358.1. Borders of zones and bands, both hemispheres, all the exceptions, both polar maps.
PLACES = """
52.5 13.4      33UUU9139017855 33N 391390.731 5817855.241
60.4 5.3       32VKN9619101684 32N 296191.547 6701684.475
56 3           32VJH2604922336 32N 126049.971 6222336.335
55.9999 3      31UEC0000006068 31N 500000.000 6206068.458
63.9999 11.9   32VPS4180800229 32N 641808.510 7100229.552
64 11.9        32WPS4180800240 32N 641808.003 7100240.686
78.2 15.6      33XWG1369680760 33N 513696.945 8680760.053
72 8.9         31XGV0320298893 31N 703202.509 7998893.257
83.9 20.9      33XWP6987520510 33N 569875.902 9320510.735
84 20.9        ZCA3784777139 UPSN 2237847.107 1377139.996
72.5 42        38XLF9934747218 38N 399347.587 8047218.534
-33.85 151.2   56HLH3347153018 56S 333471.815 6253018.169
-0.0001 -78.5  17MQV7827699988 17S 778276.317 9999988.936
0 -78.5        17NQA7827600000 17N 778276.317 0.000
-80 10         32CNS1938418247 32S 519384.803 1118247.585
-80.01 10      BBY9306794941 UPSS 2193067.731 3094941.513
-89 0          BAP0000011026 UPSS 2000000.000 2111026.520
-85 -120       ATK1895922271 UPSS 1518959.788 1722271.304
89.5 100       ZAH5466809639 UPSN 2054668.890 2009639.600
87 -45         YXE6443164431 UPSN 1764431.275 1764431.275
10 179.9       60PZS1795506810 60N 817955.428 1106810.657
10 -179.9      01PAM8204406810 1N 182044.572 1106810.657
7.99 -6        30NSP6924884396 30N 169248.088 884396.776
-8 0.5         31MBM2441714865 31S 224417.395 9114865.002
"""
ROWS = [line.split() for line in PLACES.strip().splitlines()]


class Zones(ToolTest):
    def rows(self, *arguments, text, status=OK):
        got, out, messages = run(*arguments, text=text)
        self.assertEqual(got, status, messages)
        return [line.replace(",", " ").split() for line in out.splitlines()]

    def test_utm_and_ups(self):
        places = "".join("%s,%s\n" % (lon, lat) for lat, lon, *_ in ROWS)
        there = self.rows("project", "--utm", "auto", "--decimals", "4", text=places)
        for row, (x, y, zone) in zip(ROWS, there):
            self.assertEqual(zone, row[3], row)
            self.near([float(x), float(y)], [float(row[4]), float(row[5])], 0.001, row)
        back = self.rows("project", "--utm", "auto", "-i", text="".join(",".join(row) + "\n" for row in there))
        for row, (lon, lat, _) in zip(ROWS, back):
            self.near([float(lon), float(lat)], [float(row[1]), float(row[0])], 5e-8, row)
        # a longitude is the same a turn away
        self.assertEqual(run("project", "--utm", "auto", text="190,10\n"), run("project", "--utm", "auto", text="-170,10\n"))

    def test_references(self):
        places = "".join("%s,%s\n" % (lon, lat) for lat, lon, *_ in ROWS)
        self.assertEqual([row[0] for row in self.rows("project", "--mgrs", text=places)], [row[2] for row in ROWS])
        back = self.rows("project", "--mgrs", "--inverse", text="".join(row[2] + "\n" for row in ROWS))
        for row, (lon, lat) in zip(ROWS, back):  # the square's centre, at most 0.71 m away
            self.assertLess(abs(float(lat) - float(row[0])), 0.71 / 110000, row)
        again = self.rows("project", "--mgrs", text="".join(",".join(row) + "\n" for row in back))
        for row, (reference,) in zip(ROWS, again):  # a square on the border of a zone may have its centre beyond
            if "." in row[0] and "." in row[1]:
                self.assertEqual(reference, row[2])
        for digits, reference in [("0", "33UUU"), ("2", "33UUU9117"), ("8", "33UUU9139073117855240")]:
            got = self.rows("project", "--mgrs=" + digits, text="13.4,52.5\n")[0][0]
            self.assertTrue(got.startswith(reference), (digits, got))
            self.assertEqual(len(got), 5 + 2 * int(digits))
        spellings = ["33UUU9139017855", "33uuu9139017855", '"33U UU 91390 17855"', '"33 U UU 91390 17855"']
        self.assertEqual(len({run("project", "--mgrs", "-i", text=s + ",\n")[1] for s in spellings}), 1)

    def test_references_that_are_none(self):
        wrong = ["33UUU913901785", "33IUU9139017855", "61UUU9139017855", "33UAU9139017855", "33UUW9139017855", "33NUU9139017855",
                 "YAA1212", "BIA1212", "CAA1212", "52.5", "x", "33UUU9139x17855"]
        status, out, messages = run("project", "--mgrs", "-i", text="id,mgrs\n" + "".join("1,%s\n" % w for w in wrong))
        self.assertEqual((status, set(out.splitlines()[1:])), (SOME_FAILED, {"1,,"}), messages)
        self.assertIn("unreadable lines: %d" % len(wrong), messages)
        self.assertIn('input:2: cannot read mgrs "33UUU913901785"', messages)
        status, out, messages = run("project", "--utm", "auto", "-i", text="x,y,zone\n391390,5817855,33X\n391390,5817855,33n\n")
        self.assertEqual((status, out.splitlines()[1]), (SOME_FAILED, ",,33X"))
        self.assertIn('input:2: cannot read zone "33X"', messages)

    def test_columns(self):
        table = "name,lat,lon,note\nA,52.5,13.4,x\nB,,13,y\n"
        for arguments, expected in [
                (["--utm", "auto"], "name,y,x,note,zone\nA,5817855.2,391390.7,x,33N\nB,,,y,\n"),
                (["--utm", "auto", "--keep"], "name,lat,lon,note,x,y,zone\nA,52.5,13.4,x,391390.7,5817855.2,33N\nB,,13,y,,,\n"),
                (["--mgrs"], "name,mgrs,note\nA,33UUU9139017855,x\nB,,y\n"),
                (["--mgrs", "--keep"], "name,lat,lon,note,mgrs\nA,52.5,13.4,x,33UUU9139017855\nB,,13,y,\n")]:
            status, out, _ = run("project", *arguments, "--decimals", "1", "-q", text=table)
            self.assertEqual((status, out), (SOME_FAILED, expected), arguments)
        # the coordinates apart, blanks between columns, another name for the column
        self.assertEqual(run("project", "--mgrs", "--y", "3", "--x", "1", text="13.4 A 52.5 B\n")[1],
                         "33UUU9139017855 A B\n")
        self.assertEqual(run("project", "--mgrs", "-i", "--x", "Ref", "--decimals", "3", text="n;Ref\n1;33UUU9139017855\n")[1],
                         "n;lon;lat\n1;13.400;52.500\n")
        self.assertEqual(run("project", "--utm", "auto", "-i", "--decimals", "3", text="zone,y,x\n33n,5817855.24,391390.73\n")[1],
                         "zone,lat,lon\n33n,52.500,13.400\n")
        self.refused("project", "--utm", "auto", "-i", text="x,y\n1,2\n", says='no column "zone"')

    def test_a_second_column_of_the_name_is_refused(self):
        taken = 'a column "%s" already'
        for arguments, text, says in [
                (["project", "--utm", "auto"], "lon,lat,Zone\n13,52,34N\n", taken % "zone"),
                (["project", "--utm", "auto", "--keep"], "zone,lat,lon\n1,52,13\n", taken % "zone"),
                (["project", "--stateplane83", "auto"], "lon,lat,zone\n-99,31,34N\n", taken % "zone"),
                (["project", "--mgrs"], "lon,lat,mgrs\n13,52,x\n", taken % "mgrs"),
                (["convert", "--from-mgrs", "--to-mgrs=2", "--keep"], "mgrs\n33UUU9139017855\n", taken % "mgrs"),
                (["convert", "--from-utm", "auto", "--to-utm", "auto", "--keep"], "x,y,zone\n391390,5817855,33N\n", "leave --keep out"),
                (["project", "--utm", "auto", "-i"], "x,y,zone,zone\n391390,5817855,34N,33N\n", 'two columns "zone"')]:
            self.refused(*arguments, text=text, says=says)
        self.assertEqual(run("convert", "--from-mgrs", "--to-mgrs=2", text="id,mgrs\n1,33UUU9139017855\n")[1], "id,mgrs\n1,33UUU9117\n")
        # without header the zone is written and read last, whatever stands before it
        there = run("project", "--utm", "auto", text="13,52,34N,a\n14,53,5S,b\n")[1]
        back = run("project", "--utm", "auto", "-i", "--decimals", "6", text=there)[1]
        self.assertEqual(back, "13.000000,52.000000,34N,a,33N\n14.000000,53.000000,5S,b,33N\n")

    def test_sides_of_a_conversion(self):
        self.assertEqual(run("convert", "--from-mgrs", "--from-datum", "6326", "--to", "EPSG:4326", "--decimals", "4",
                             text="33UUU9139017855\n")[:2], (OK, "13.4000 52.5000\n"))
        out = run("convert", "--from", "EPSG:32632", "--to-utm", "auto", "--to-datum", "6326", "--decimals", "1",
                  text="798500.9 5827131.7\n")[1]
        self.assertTrue(out.endswith(" 33N\n"), out)
        # the ellipsoid of the zones is that of the side
        self.assertEqual(run("convert", "--from-utm", "auto", "--from-ellipsoid", "clarke 1866", "--to-utm", "31N",
                             "--to-ellipsoid", "clarke 1866", "--decimals", "2", text="500000,5000000,31N\n")[1],
                         "500000.00,5000000.00,31N\n")
        self.refused("convert", "--from", "32632", "--to-utm", "auto", says="--to-datum")

    def test_zones_to_zones(self):
        utm, nad = ["--from-utm", "auto", "--from-datum", "2"], ["--to-utm", "auto", "--to-datum", "3", "--decimals", "1"]
        x, y = (float(v) for v in run("convert", *utm[:1], "16N", *utm[2:], *nad[:1], "16N", *nad[2:], text="500000 4000000")[1].split())
        for before, after in [("id,x,y,zone,z\n1,500000,4000000,16n,5\n", "id,x,y,zone,z\n1,%.1f,%.1f,16N,5\n" % (x, y)),
                              ("zone,y,x\n16N,4000000,500000\n", "zone,y,x\n16N,%.1f,%.1f\n" % (y, x)),
                              ("y;zone;x\n4000000;\"16N\";500000\n", "y;zone;x\n%.1f;16N;%.1f\n" % (y, x)),
                              ("500000 4000000 a 16N\n", "%.1f %.1f a 16N\n" % (x, y))]:  # without header the last column
            self.assertEqual(run("convert", *utm, *nad, text=before)[:2], (OK, after))
        # a zone that cannot be read stays
        self.assertEqual(run("convert", *utm, *nad, text="x,y,zone\n1,2,33X\n,2,33N\n")[1], "x,y,zone\n,,33X\n,,33N\n")
        self.assertEqual(run("convert", *utm, "--to-stateplane27", "auto", "--to-datum", "2", "--decimals", "1",
                             text="x y zone\n450000 4000000 16N\n500000 7000000 16N\n")[:2],
                         (SOME_FAILED, "x y zone\n469592.3 195634.0 Tennessee\n* * *\n"))

    def test_state_plane(self):
        status, out, messages = run("project", "--stateplane83", "auto", "--decimals", "2",
                                    text="-120.5,45.5\n-99.2,31.2\n-98,31.5\n10,50\n")
        self.assertEqual(status, SOME_FAILED, messages)
        rows = [line.split(",") for line in out.splitlines()]
        named = [row for row in rows if row[0]]
        for row, place in zip(rows, ("-120.5,45.5", "-99.2,31.2", "-98,31.5")):
            if not row[0]:
                self.assertIn(" or ", row[2])
                continue
            self.assertEqual(run("project", "--stateplane83", row[2], "--decimals", "2", text=place)[1], ",".join(row[:2]) + "\n")
        self.assertTrue(named)
        for unit, metres in [("us-ft", 1200 / 3937), ("km", 1000)]:
            auto = run("project", "--stateplane83", "auto", "--to-unit", unit, "--decimals", "6", text="-100.9,31.2")[1].split(",")
            zone = run("project", "--stateplane83", auto[2].strip(), "--decimals", "6", text="-100.9,31.2")[1].split(",")
            self.near([float(v) * metres for v in auto[:2]], [float(v) for v in zone], 1e-3, unit)
            back = run("project", "--stateplane83", "auto", "--from-unit", unit, "-i", text="x,y,zone\n" + ",".join(auto))[1]
            self.near([float(v) for v in back.splitlines()[1].split(",")[:2]], (-100.9, 31.2), 1e-7, back)
        self.assertEqual(rows[3], ["", "", ""])

    def test_refusals(self):
        self.refused("project", "--utm", "auto", "--mgrs", says="name one projection")
        self.refused("project", "--utm", "auto", "--set", "k0=1", says="no --set")
        self.refused("project", "--mgrs=12", says="at most 11 digits")
        self.refused("project", "--mgrs", "--to-unit", "ft", says="in metres")
        self.refused("project", "--utm", "auto", "--geojson", text='{"type":"Point","coordinates":[1,2]}', says="belong to tables")


if __name__ == "__main__":
    test_tool.PROGRAM = os.path.abspath(sys.argv.pop(1))
    unittest.main()
