#!/usr/bin/env python3
"""Writes exact_datum.csv beside itself: exact datum steps in 50 digits, with the parameters and formulas of make_datum.py.

From a datum: its formula, at the longitude counted from Greenwich. Back: the place on the datum, at height 0, that the way
there carries to the given one, found by correcting with what is missing until 45 digits stand."""
import pathlib

from mpmath import fabs

from make_datum import DATUMS, WGS84, molodensky, mp, mpf, pi, position_vector

MORE_POINTS = {  # beside those of make_datum.py: far from home, near a pole, next to the antimeridian, a turn away
    2: ["9.75 -71.5", "200 62.25"], 7: ["-33.5 89.25"], 106: ["163 85", "163 5.3125"], 147: ["-179.5 12", "2.3125 0"],
    220: ["-60.5 -89.5"], 221: ["179.5 30"], 222: ["-178.75 -44", "2.34375 43.25"], 252: ["-340 61.5"]}
KUSAIE = (106, ("6378388", "0.003367003367003367"), "647 1777 -1124", "0", [])


def there(ellipsoid, params, pm, lon, lat):
    src, dst = [tuple(mpf(x) for x in e) for e in (ellipsoid, WGS84)]
    p = [mpf(x) for x in params.split()]
    lam, phi = (lon + mpf(pm)) * pi / 180, lat * pi / 180
    out = molodensky(src, dst, p, lam, phi) if len(p) == 3 else position_vector(src, dst, p, False, lam, phi)
    return [v * 180 / pi for v in out]


def difference(a, b):
    return (a - b + 540) % 360 - 180


def back(ellipsoid, params, pm, lon, lat):
    x, y = lon - mpf(pm), lat
    for _ in range(2000):
        to = there(ellipsoid, params, pm, x, y)
        dx, dy = difference(lon, to[0]), lat - to[1]
        x, y = x + dx, y + dy
        if fabs(dx) + fabs(dy) < mpf(10) ** -45:
            return x, y
    raise ArithmeticError("no way back")


def main():
    lines = ["# Exact datum steps; 3 is WGS 84. Written by make_exact_datum.py.", "from,to,lon,lat,expected_lon,expected_lat"]
    for number, ellipsoid, params, pm, points in DATUMS + [KUSAIE]:
        for point in points + MORE_POINTS.get(number, []):
            lon, lat = (mpf(v) for v in point.split())
            for source, target, (x, y) in ((number, 3, there(ellipsoid, params, pm, lon, lat)),
                                           (3, number, back(ellipsoid, params, pm, lon, lat))):
                x = lon + difference(x, lon)  # on the turn of the place given
                lines.append(f"{source},{target},{point.replace(' ', ',')},{mp.nstr(x, 20)},{mp.nstr(y, 20)}")
    pathlib.Path(__file__).with_name("exact_datum.csv").write_text("\n".join(lines) + "\n", encoding="ascii")


if __name__ == "__main__":
    main()
