#!/usr/bin/env python3
"""Writes oblique_polyconic.csv beside this file: the published formulas of Snyder, Map Projections - A Working Manual,
USGS PP 1395 (1987), as printed there, in 40-digit arithmetic. Where the library's inverse stops early on purpose, the
stopping rule itself is evaluated."""
from pathlib import Path

from mpmath import (mp, mpf, asin, atan, atan2, cos, cot, log, pi, radians, degrees, sin, sqrt, tan)

mp.dps = 40
WGS84 = "a=6378137;f=0.0033528106647474805"
CLARKE = "a=6378206.4;f=0.003390075304"
SPHERE = "a=6371000"
FLT_EPSILON = mpf(2) ** -23


def sign(x):
    return -1 if x < 0 else 1


def wrap(angle):
    return atan2(sin(angle), cos(angle))


class Parameters(dict):
    """Fields of a parameter text; angles in radians, absent ones 0."""

    def __init__(self, text):
        super().__init__((name, mpf(value)) for name, value in (item.split("=") for item in text.split(";")))
        self.f = self.get("f", mpf(0))
        self.e2 = 2 * self.f - self.f**2
        self.e = sqrt(self.e2)

    def __getattr__(self, name):
        value = self.get(name, mpf(0))
        return radians(value) if name[:3] in ("Lat", "Lon", "Alp") else value


# ---- oblique Mercator ----

def conformal_t(p, lat):  # 9-13
    return tan(pi / 4 - lat / 2) / ((1 - p.e * sin(lat)) / (1 + p.e * sin(lat))) ** (p.e / 2)


def hotine_uv(p, lat0, azimuth_given, lon, lat):
    """u, v, azimuth at the centre and u of the centre; alternates A and B as printed."""
    k0 = p.K0 or mpf(1)
    B = sqrt(1 + p.e2 * cos(lat0) ** 4 / (1 - p.e2))
    A = p.a * B * k0 * sqrt(1 - p.e2) / (1 - p.e2 * sin(lat0) ** 2)
    D = B * sqrt(1 - p.e2) / (cos(lat0) * sqrt(1 - p.e2 * sin(lat0) ** 2))
    D = max(D, mpf(1))
    root = sign(lat0) * sqrt(D**2 - 1)
    E = (D + root) * conformal_t(p, lat0) ** B
    if azimuth_given:
        F = D + root
        alpha = p.Alpha
        gamma0 = asin(sin(alpha) / D)
        sine = (F - 1 / F) / 2 * tan(gamma0)
        lon0 = p.Lon0 - asin(max(min(sine, mpf(1)), mpf(-1))) / B
    else:
        H, L = conformal_t(p, p.Lat1) ** B, conformal_t(p, p.Lat2) ** B
        F = E / H
        G = (F - 1 / F) / 2
        J = (E**2 - L * H) / (E**2 + L * H)
        P = (L - H) / (L + H)
        difference = wrap(p.Lon1 - p.Lon2)
        lon0 = p.Lon2 + difference / 2 - atan(J * tan(B * difference / 2) / P) / B
        gamma0 = atan(sin(B * wrap(p.Lon1 - lon0)) / G)
        alpha = asin(D * sin(gamma0)) if abs(D * sin(gamma0)) <= 1 else None
    Q = E / conformal_t(p, lat) ** B
    S, T = (Q - 1 / Q) / 2, (Q + 1 / Q) / 2
    angle = B * wrap(lon - lon0)
    V = sin(angle)
    U = (-V * cos(gamma0) + S * sin(gamma0)) / T
    v = A * log((1 - U) / (1 + U)) / (2 * B)
    u = A * atan2(S * cos(gamma0) + V * sin(gamma0), cos(angle)) / B
    centre = None if alpha is None else A / B * sign(lat0) * atan2(sqrt(D**2 - 1), cos(alpha))
    return u, v, alpha, centre


def hotine(p, lon, lat):
    u, v, alpha, centre = hotine_uv(p, p.Lat0, p.bUseAlpha, lon, lat)
    if p.bUOffset:
        u -= centre
    if p.bRotate:
        return v * cos(alpha) + u * sin(alpha), u * cos(alpha) - v * sin(alpha)
    return u, v


def oblique_mercator(p, lon, lat):
    if p.f:
        u, v, _, _ = hotine_uv(p, (p.Lat1 + p.Lat2) / 2, False, lon, lat)
        return u, -v
    lon_pole = atan2(cos(p.Lat1) * sin(p.Lat2) * cos(p.Lon1) - sin(p.Lat1) * cos(p.Lat2) * cos(p.Lon2),
                     sin(p.Lat1) * cos(p.Lat2) * sin(p.Lon2) - cos(p.Lat1) * sin(p.Lat2) * sin(p.Lon1))  # 9-1
    lat_pole = atan(-cos(lon_pole - p.Lon1) / tan(p.Lat1))  # 9-2
    mean = p.Lon2 + wrap(p.Lon1 - p.Lon2) / 2
    if cos(lon_pole + pi / 2 - mean) < 0:  # the node next to the mean meridian belongs to the other pole
        lon_pole, lat_pole = lon_pole + pi, -lat_pole
    d = lon - (lon_pole + pi / 2)
    A = sin(lat_pole) * sin(lat) - cos(lat_pole) * cos(lat) * sin(d)
    R = p.a * (p.K0 or mpf(1))
    return R * atan2(tan(lat) * cos(lat_pole) + sin(lat_pole) * sin(d), cos(d)), R / 2 * log((1 + A) / (1 - A))


# ---- Cassini, Polyconic, Bonne ----

def arc_terms(e2, terms=4):
    return [1 - e2 / 4 - 3 * e2**2 / 64 - 5 * e2**3 / 256, -(3 * e2 / 8 + 3 * e2**2 / 32 + 45 * e2**3 / 1024),
            15 * e2**2 / 256 + 45 * e2**3 / 1024, -35 * e2**3 / 3072][:terms]


def arc(p, lat, terms=4):  # 3-21
    return p.a * sum(A * (lat if k == 0 else sin(2 * k * lat)) for k, A in enumerate(arc_terms(p.e2, terms)))


def cassini(p, lon, lat):
    d = lon - p.Lon0
    return p.a * asin(cos(lat) * sin(d)), p.a * (atan2(tan(lat), cos(d)) - p.Lat0)


def polyconic(p, lon, lat):
    if lat == 0:
        return p.a * (lon - p.Lon0), -arc(p, p.Lat0)
    N, E = p.a / sqrt(1 - p.e2 * sin(lat) ** 2), (lon - p.Lon0) * sin(lat)
    return N * cot(lat) * sin(E), arc(p, lat) - arc(p, p.Lat0) + N * cot(lat) * (1 - cos(E))


def polyconic_inverse(p, x, y):
    A = (y + arc(p, p.Lat0)) / p.a
    B = A**2 + (x / p.a) ** 2
    lat, previous = A, None if p.f else y
    tolerance = FLT_EPSILON * (10 if p.f else 1)
    while previous is None or abs(lat - previous) > tolerance:
        previous = lat
        if p.f:
            C = sqrt(1 - p.e2 * sin(lat) ** 2) * tan(lat)
            M = arc(p, lat) / p.a
            dM = sum(T * (1 if k == 0 else 2 * k * cos(2 * k * lat)) for k, T in enumerate(arc_terms(p.e2)))
            lat -= (A * (C * M + 1) - M - (M**2 + B) * C / 2) / (
                p.e2 * sin(2 * lat) * (M**2 + B - 2 * A * M) / (4 * C) + (A - M) * (C * dM - 2 / sin(2 * lat)) - dM)
        else:
            T = tan(lat)
            lat -= (A * (lat * T + 1) - lat - (lat**2 + B) * T / 2) / ((lat - A) / T - 1)
    C = sqrt(1 - p.e2 * sin(lat) ** 2) * tan(lat)
    return asin(x * C / p.a) / sin(lat) + p.Lon0, lat if p.f else previous  # the sphere delivers the estimate before


def bonne_parallel(p, lat):  # 14-15
    return cos(lat) / sqrt(1 - p.e2 * sin(lat) ** 2)


def bonne(p, lon, lat):
    K = p.a * bonne_parallel(p, p.Lat1) / sin(p.Lat1)
    rho = K + arc(p, p.Lat1, 3) - arc(p, lat, 3)
    E = p.a * bonne_parallel(p, lat) * wrap(lon - p.Lon0) / rho
    return rho * sin(E), K - rho * cos(E)


def bonne_inverse(p, x, y):
    K, s = p.a * bonne_parallel(p, p.Lat1) / sin(p.Lat1), sign(p.Lat1)
    rho = s * sqrt(x**2 + (K - y) ** 2)
    mu = (K + arc(p, p.Lat1, 3) - rho) / (p.a * arc_terms(p.e2)[0])
    e1 = (1 - sqrt(1 - p.e2)) / (1 + sqrt(1 - p.e2))
    lat = (mu + (3 * e1 / 2 - 27 * e1**3 / 32) * sin(2 * mu) + (21 * e1**2 / 16 - 55 * e1**4 / 32) * sin(4 * mu)
           + 155 * e1**3 / 96 * sin(6 * mu) + 1097 * e1**4 / 512 * sin(8 * mu))  # 3-26 with the library's 155
    return p.Lon0 + rho * atan2(s * x, s * (K - y)) / (p.a * bonne_parallel(p, lat)), lat


CASES = [  # projection, formulas, inverse with its own error (or None), parameters, points (lon lat)
    ("Hotine Oblique Mercator", hotine, None, [
        WGS84 + ";bUseAlpha=1;Lat0=57;Lon0=-133.66666666666666;Alpha=-36.86989764583333;K0=0.9999;bRotate=1;bUOffset=1",
        WGS84 + ";bUseAlpha=1;Lat0=-18.9;Lon0=44.1;Alpha=18.9;K0=0.9995;bRotate=1",
        SPHERE + ";bUseAlpha=1;Lat0=-35;Lon0=25;Alpha=-62;bUOffset=1",
        CLARKE + ";bUseAlpha=1;Lat0=0;Lon0=30;Alpha=41;bRotate=1;bUOffset=1",
        WGS84 + ";bUseAlpha=1;Lat0=1e-9;Lon0=30;Alpha=-20;bUOffset=1",
        WGS84 + ";bUseAlpha=1;Lat0=64;Lon0=-20;Alpha=90;bUOffset=1;bRotate=1",
        "a=6000000;f=0.1;bUseAlpha=1;Lat0=52;Lon0=11;Alpha=70;bUOffset=1",
     ], [(2, 3), (-17, 9), (11, -14), (-1, -0.5)]),
    ("Hotine Oblique Mercator", hotine, None, [
        CLARKE + ";Lat0=40;Lat1=47.5;Lon1=-122.3;Lat2=25.7;Lon2=-80.2;K0=0.9996;bRotate=1;bUOffset=1",
        WGS84 + ";Lat0=-30;Lat1=-5;Lon1=140;Lat2=-42;Lon2=-170;bUOffset=1",
        WGS84 + ";Lat0=0;Lat1=20;Lon1=10;Lat2=-20;Lon2=55",
     ], [(2, 3), (-17, 9), (11, -14)]),
    ("Oblique Mercator", oblique_mercator, None, [
        SPHERE + ";Lat1=60;Lon1=150;Lat2=48;Lon2=-130",
        SPHERE + ";Lat1=-20;Lon1=-60;Lat2=35;Lon2=-100;K0=0.999",
        WGS84 + ";Lat1=60;Lon1=150;Lat2=48;Lon2=-130",
        WGS84 + ";Lat1=-20;Lon1=-60;Lat2=35;Lon2=-100;K0=0.999",
        WGS84 + ";Lat1=-33;Lon1=18;Lat2=-34.5;Lon2=151",
     ], [(2, 3), (-17, 9), (11, -14)]),
    ("Cassini", cassini, None, [SPHERE + ";Lat0=31.7;Lon0=35.2", SPHERE + ";Lat0=-42;Lon0=-71"],
     [(2, 3), (-60, 20), (81, -30), (150, 40)]),
    ("Cassini", cassini, None, [SPHERE + ";Lat0=0;Lon0=25"], [(mpf("89.9999"), 0)]),  # next to an end of the map
    ("Polyconic", polyconic, polyconic_inverse, [
        SPHERE + ";Lat0=30;Lon0=-96", WGS84 + ";Lat0=30;Lon0=-96", CLARKE + ";Lat0=-22;Lon0=-54",
     ], [(2, 3), (-17, 9), (21, -24), (9, -66), (1, 1e-7)]),
    ("Bonne", bonne, bonne_inverse, [
        SPHERE + ";Lat1=40;Lon0=-75", WGS84 + ";Lat1=40;Lon0=-75", CLARKE + ";Lat1=-25;Lon0=135",
     ], [(2, 3), (-17, 9), (60, -24), (-48, -13)]),
]


def centre(p):
    """Where a case's points are counted from (degrees): its centre, or near the middle of its two points."""
    if "Lon2" in p:
        return degrees(p.Lon2 + wrap(p.Lon1 - p.Lon2) / 2), (p["Lat1"] + p["Lat2"]) / 2
    return p["Lon0"], p["Lat0"] if "Lat0" in p else p["Lat1"]


def main():
    origin = "Snyder 1987 in 40-digit arithmetic"
    rows = ["# Written by make_oblique_polyconic.py.", "projection,parameters,lon,lat,x,y,tol_xy,tol_deg,origin"]
    for name, forward, inverse, parameters, points in CASES:
        for text in parameters:
            p = Parameters(text)
            lon0, lat0 = centre(p)
            for dlon, dlat in points:
                lon, lat = float(round(lon0, 4) + dlon), float(mpf(dlat) if abs(dlat) < 1e-3 else round(lat0, 4) + dlat)
                x, y = (float(value) for value in forward(p, radians(mpf(lon)), radians(mpf(lat))))
                if inverse is None:
                    rows.append(f"{name},{text},{lon!r},{lat!r},{x!r},{y!r},1e-8,1e-12,{origin}")
                    continue
                rows.append(f"{name},{text},{lon!r},{lat!r},{x!r},{y!r},1e-8,,{origin}")
                lon, lat = (float(degrees(value)) for value in inverse(p, mpf(x), mpf(y)))
                rows.append(f"{name},{text},{lon!r},{lat!r},{x!r},{y!r},,1e-12,{origin}")
    Path(__file__).with_name("oblique_polyconic.csv").write_text("\n".join(rows) + "\n")


if __name__ == "__main__":
    main()
