"""Shared by the generators of golden files: 40-digit arithmetic, parameters, output in the layout of CheckGolden."""
import sys
from mpmath import mp, mpf, pi, sqrt, sin, cos, tan, asin, atan, atan2, log, exp, cosh, sinh  # noqa: F401

mp.dps = 40
COLUMNS = "projection,parameters,lon,lat,x,y,tol_xy,tol_deg,origin"
WGS84 = (mpf("6378137.0"), mpf("0.0033528106647474805"))
CLARKE_1866 = (mpf("6378206.4"), mpf("0.0033900753040885176"))
SPHERE = (mpf(6370997), mpf(0))


def rad(degrees):
    """Radians as the library's driver makes them, in doubles; everything after that is exact."""
    return mpf(float(degrees) * 3.141592653589793 / 180.0)


def deg(radians):
    return radians * 180 / pi


def radius_text(a, f):
    return {"R": mp.nstr(a, 20), **({"f": mp.nstr(f, 20)} if f else {})}


class Rows:
    """Collects rows; without tol_xy a row is for the inverse only, without tol_deg for the forward only."""

    def __init__(self, origin):
        self.origin = origin
        self.lines = []

    def add(self, projection, parameters, lon, lat, x, y, tol_xy="", tol_deg=""):
        text = ";".join(f"{k}={v}" for k, v in parameters.items())
        values = [mp.nstr(mpf(v), 20) for v in (lon, lat, x, y)]
        self.lines.append(",".join([projection, text, *values, str(tol_xy), str(tol_deg), self.origin]))

    def write(self, what):
        out = open(sys.argv[1], "w", encoding="ascii") if len(sys.argv) > 1 else sys.stdout
        print(f"# {what} Made by {sys.argv[0].split('/')[-1]} in {mp.dps}-digit arithmetic.", file=out)
        print(COLUMNS, file=out)
        for line in self.lines:
            print(line, file=out)
