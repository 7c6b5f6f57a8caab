#!/usr/bin/env python3
"""Tests of GeoJSON in and out.

Usage: test_geojson.py PROGRAM [unittest arguments]
"""
import json
import os
import re
import resource
import sys
import unittest

import test_tool
from test_tool import OK, SOME_FAILED, ToolTest, run


def positions(value):
    """All positions below a value, in order."""
    if isinstance(value, dict):
        value = list(value.get("geometries", [])) + list(value.get("features", [])) + [value.get("geometry"), value.get("coordinates")]
    if isinstance(value, list):
        if len(value) >= 2 and all(isinstance(part, (int, float)) for part in value):
            return [value]
        return [position for part in value for position in positions(part)]
    return []


class GeoJson(ToolTest):
    RING = [[10, 50], [11, 50.5], [10.5, 51.25], [10, 50]]
    GEOMETRIES = [
        {"type": "Point", "coordinates": [12.5, 49.25, 310.5]},
        {"type": "MultiPoint", "coordinates": [[9, 48], [9.5, 48.5]]},
        {"type": "LineString", "coordinates": RING[:3]},
        {"type": "MultiLineString", "coordinates": [RING[:2], RING[1:3]]},
        {"type": "Polygon", "coordinates": [RING, RING]},
        {"type": "MultiPolygon", "coordinates": [[RING], [RING, RING]]},
        {"type": "GeometryCollection", "geometries": [{"type": "Point", "coordinates": [8, 47]},
                                                      {"type": "LineString", "coordinates": RING[:2]}]},
        {"type": "Point", "coordinates": []},
        None,
    ]

    def collection(self):
        features = [{"type": "Feature", "id": i, "properties": {"name": "K\u00f6ln \"%d\"" % i, "deep": [1, {"x": None}], "n": 0.1},
                     "geometry": geometry, "foreign": i} for i, geometry in enumerate(self.GEOMETRIES)]
        return {"type": "FeatureCollection", "name": "test", "bbox": [8, 47, 12.5, 51.25], "features": features, "extra": [1, 2]}

    def save(self, name, value):
        return self.file(name, json.dumps(value))

    def converted(self, *arguments, text=""):
        status, out, messages = run(*arguments, text=text)
        self.assertEqual((status, messages), (OK, ""), arguments)
        return json.loads(out.encode("latin-1"))

    def test_every_position_is_converted_and_all_else_kept(self):
        source = self.collection()
        name = self.save("in.geojson", source)
        for command in (["project", "--utm", "32N"], ["convert", "--to-utm", "32N"], ["datum", "--from", "6230", "--to", "6326"]):
            result = self.converted(*command, name)
            table = "".join("%r,%r\n" % tuple(position[:2]) for position in positions(source))
            expected = [[float(value) for value in line.split(",")] for line in run(*command, text=table)[1].splitlines()]
            self.assertEqual([position[:2] for position in positions(result)], expected, command)
            self.assertEqual(positions(result)[0][2], 310.5)  # heights pass
            west, south, east, north = result["bbox"]
            self.assertEqual((west, south), tuple(min(p[axis] for p in expected) for axis in (0, 1)))
            self.assertEqual((east, north), tuple(max(p[axis] for p in expected) for axis in (0, 1)))
            for before, after in zip(source["features"], result["features"]):
                self.assertEqual({k: v for k, v in before.items() if k != "geometry"}, {k: v for k, v in after.items() if k != "geometry"})
                self.assertEqual((before["geometry"] or {}).get("type"), (after["geometry"] or {}).get("type"))
            self.assertEqual((result["name"], result["extra"], list(result)), ("test", [1, 2], list(source)))

    def test_numbers_stay_as_they_were_written(self):
        numbers = ["0", "-0", "1.0", "-0.0", "1.50", "0.1", "1e5", "1E+5", "2E-3", "100000.0", "1e-400", "123456789012345.6789", "5e-324",
                   "9223372036854775808", "-9223372036854775808", "18446744073709551615", "18446744073709551616",
                   "-9223372036854775809", "12345678901234567890123", "1.7976931348623157e308", "1e16", "0.00001", "0.000001"]
        text = '{"type":"Feature","id":1e0,"properties":{"a":[%s],"b":{"c":1.10}},"geometry":{"type":"Point","coordinates":[%%s,34.10]}}\n' \
            % ",".join(numbers)
        for place in ("1.3e1,5250E-2", "13.00,52.50"):  # read by value
            status, out, messages = run("project", "--utm", "33N", "--geojson", text=text % place)
            self.assertEqual((status, out, messages), (OK, text % "364240.977,5818532.1448", ""))
        # results are the shortest that give their values back
        texts = ["%r" % (9.5 + i / 7) for i in range(2000)]
        out = run("project", "--utm", "32N", "--geojson", text='{"type":"MultiPoint","coordinates":[%s]}' % ",".join("[%s,1]" % t for t in texts))[1]
        for number in re.findall(r"-?[0-9][-+.e0-9]*", out):
            self.assertEqual(number, repr(float(number)))

    def test_bare_geometries_features_and_standard_input(self):
        feature = {"type": "Feature", "properties": {}, "geometry": self.GEOMETRIES[0]}
        for value in (self.GEOMETRIES[0], self.GEOMETRIES[6], feature):
            result = self.converted("project", "--utm", "32N", "--geojson", "--decimals", "1", text=json.dumps(value))
            self.assertEqual(list(result), list(value))
            self.assertTrue(all(round(c, 1) == c for position in positions(result) for c in position[:2]))

    def test_says_its_system(self):
        name = self.save("in.json", self.GEOMETRIES[0])
        status, out, _ = run("convert", "--to", "EPSG:25832", name)
        self.assertEqual(status, OK)
        self.assertEqual(json.loads(out)["crs"]["properties"]["name"], "urn:ogc:def:crs:EPSG::25832")
        utm = self.file("utm.json", out)
        back = self.converted("convert", "--from", "25832", utm)
        self.assertNotIn("crs", back)
        self.near(back["coordinates"], self.GEOMETRIES[0]["coordinates"], 1e-6, "there and back")
        self.refused("convert", "--from", "25833", utm, says="EPSG:25832, not in EPSG:25833")
        self.refused("project", "--utm", "33N", utm, says="orvex convert --from EPSG:25832")
        self.refused("project", "--utm", "33N", "--geojson", "13", "52", says="--geojson is for files")

    def test_what_cannot_be_computed(self):
        features = [{"type": "Feature", "properties": {"n": i}, "geometry": {"type": "LineString", "coordinates": [[0, 0], [x, 10]]}}
                    for i, x in enumerate((20, 170))]
        name = self.save("in.geojson", {"type": "FeatureCollection", "features": features})
        status, out, messages = run("project", "--proj", "orthographic", name)
        self.assertEqual((status, messages), (SOME_FAILED, "orvex: %s: feature 2: [170,10] has no place in the result; "
                                              "the geometry is empty now\norvex: points converted: 3, unplottable: 1\n" % name))
        first, second = (feature["geometry"] for feature in json.loads(out)["features"])
        self.assertEqual((len(first["coordinates"]), second), (2, {"type": "LineString", "coordinates": []}))

    def test_threads_change_nothing(self):
        places = [[6 + i % 6000 / 1000, i % 80000 / 1000] for i in range(70000)]
        text = json.dumps({"type": "MultiPoint", "coordinates": places})
        one, five = (run("project", "--utm", "32N", "--geojson", "--threads", n, text=text) for n in ("1", "5"))
        self.assertEqual((one[0], one), (OK, five))
        table = run("project", "--utm", "32N", text="\n".join("%r,%r" % tuple(place) for place in places[::10000]))[1]
        got = json.loads(one[1])["coordinates"]
        self.assertEqual(["%.4f,%.4f" % tuple(place) for place in got[::10000]], table.splitlines())

    def test_nesting_beyond_all_use_is_refused(self):
        def point(depth):  # within itself the object is one level
            return '{"type":"Point","coordinates":[13,52],"p":' + "[" * (depth - 1) + "]" * (depth - 1) + "}"
        self.assertEqual(json.loads(run("project", "--utm", "33N", "--geojson", text=point(500))[1])["p"], json.loads(point(500))["p"])
        brackets = '{"type":"Point","coordinates":[13,52],"p":"%s\\\\\\"%s"}' % ("[" * 1000, "[" * 1000)  # within a text they nest nothing
        self.assertEqual(self.converted("project", "--utm", "33N", "--geojson", text=brackets)["p"], json.loads(brackets)["p"])
        # closed and not, within the coordinates and in foreign members: each ended the program by its recursion
        controls = self.file("c.csv", "0,0,0,0\n1,0,1,0\n0,1,0,1\n1,1,1,1\n")
        commands = [["project", "--utm", "33N"], ["datum", "--from", "2", "--to", "3"], ["convert", "--to-utm", "33N"],
                    ["georef", "--controls", controls, "--method", "affine"]]
        before = sorted(os.listdir(self.directory) + ["deep.geojson"])
        for text in (point(501), point(100_000), '{"type":"Point","coordinates":' + "[" * 100_000, '{"p":' * 100_000):
            name = self.file("deep.geojson", text)
            for command in commands:
                self.refused(*command, name, "-o", self.file("out.geojson"), says="deep.geojson: arrays and objects nest more than 500 deep")
            self.refused("map", "--proj", "mercator", "--land", name, "--out", self.file("map.svg"), says="more than 500 deep")
            self.assertEqual(sorted(os.listdir(self.directory)), before)

    def test_no_form_costs_more_than_its_length(self):
        def seconds(value):
            name = self.save("long.json", {"type": "Point", "coordinates": [13, 52], "p": value})
            before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
            self.converted("project", "--utm", "33N", name)
            return resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before
        plain = [[i, i] for i in range(150_000)]
        limit = 1 + 8 * seconds(plain)
        nested = plain
        for _ in range(400):
            nested = {"first": nested, "second": 1, "third": 2}
        self.assertLess(seconds(nested), limit)
        names = {"name %d" % i: i for i in range(100_000)}
        self.assertEqual(self.converted("project", "--utm", "33N", self.save("in.json", {"type": "Point", "coordinates": [13, 52], **names})),
                         {"type": "Point", "coordinates": [362705.6341, 5762926.8129], **names})
        self.assertLess(seconds(names), limit)

    def test_refusals(self):
        def feature(geometry):
            return '{"type":"FeatureCollection","features":[{"type":"Feature","properties":null,"geometry":null},' \
                   '{"type":"Feature","geometry":%s}]}' % geometry
        for text, says in [('{"type":"Point","coordinates":[1,2', "line 1"), ("", "no JSON"), ("[]", 'without "type"'),
                           ('{"type":"Point","coordinates":[1]}', "no pair of numbers"),
                           ('{"type":"Point","coordinates":["1",2]}', "no pair of numbers"),
                           ('{"type":"Point","coordinates":[1.0e0,{"a":1e5}]}', 'no pair of numbers: [1.0e0,{"a":1e5}]'),
                           ('{"type":"Pont","coordinates":[1,2]}', '"Pont"'),
                           ('{"type":"Point","coordinates":[1,1e999]}', "no JSON"),
                           (feature('{"type":"Polygon","coordinates":[[1,2]]}'), "feature 2: "),
                           (feature('{"type":"LineString"}'), 'LineString without "coordinates"'),
                           ('{"type":"GeometryCollection","geometries":[' * 200 + "]}" * 200, "too deep")]:
            target = self.file("out.json", "old")
            name = self.file("in.json", text)
            self.refused("project", "--utm", "33N", name, "-o", target, says=says)
            self.assertEqual(self.read("out.json"), "old")
        name = self.save("good.json", self.GEOMETRIES[0])
        for option in (["--keep"], ["--dms"], ["--x", "a"]):
            self.refused("project", "--utm", "33N", name, *option, says="belong to tables")


if __name__ == "__main__":
    test_tool.PROGRAM = os.path.abspath(sys.argv.pop(1))
    unittest.main()
