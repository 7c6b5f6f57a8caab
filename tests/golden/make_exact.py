#!/usr/bin/env python3
"""Writes exact.csv beside itself: what exact computation must give, by the definitions of exact_maps.py in 50 digits.

Places are the doubles of their degrees, and everything after that is exact; differences from the central meridian are
reduced to half a turn. tol_xy is the greatest of 1e-8 m (transverse Mercator within 35 degrees: 2e-9 m and two
roundings of the coordinate instead), four roundings of the coordinates and of the lengths that they are differences of,
and what one rounding of the angles themselves makes where the map stretches them. tol_deg is 1e-11; where four roundings of
the coordinates already are more than that on the ground (at the poles of equal-area maps that have lines for them) it
is those, the origin says so, and what counts is the way back on the map, tol_map."""
import pathlib
from mpmath import quad

from exact_maps import *

EARTH = "a=6378137;f=0.0033528106647474805"
SPHERE = "R=6371000"
ROUND = "a=6378137;f=1e-10"
FAT = "a=6378137;f=0.01"
FATTER = "a=6378137;f=0.02"
ANY = (EARTH, SPHERE, ROUND, FAT, FATTER)
ULP = mpf(2) ** -52


def beside_poles(lon0):
    """Millimetres and micrometres from them."""
    return [(lon0 + 57, 89.99999999), (lon0 - 100, -89.99999999996)]


def world(lon0):
    """Where a map of the world has its hard places: its ends, its seam, the equator, a turn away."""
    return [(lon0, 0), (lon0 + 33, 90), (lon0 - 71, -90), (lon0 + 180, 47.5), (lon0 - 180, -63.25), (lon0 + 12.25, 1e-7),
            (lon0 - 130.5, 83.5), (lon0 + 99, -1.5), (lon0 + 364, 24), (lon0 - 340, -77)] + beside_poles(lon0)


def about(lat, lon0, polar):
    """Around the centre of an azimuthal map, in polar aspects with the turn around it."""
    if polar:
        side = 1 if lat > 0 else -1
        return [(lon0 + 77, lat), (lon0, side * 75.5), (lon0 + 91, side * 40.25), (lon0 - 158, side * 2.5), (lon0 + 362, side * 89.5)]
    return [(lon0, lat), (lon0 + 1e-6, lat), (lon0 + 2, lat + 3), (lon0 - 21, lat - 17.5), (lon0 + 396, lat / 2 + 20),
            (lon0 - 305, lat + 8), (lon0, lat - 60)]


CASES = []  # projection, parameters, points


def case(projection, figures, parameters, points):
    """Every point on the earth and the sphere; the other figures share them out."""
    shared = 0
    for figure in figures if isinstance(figures, tuple) else (figures,):
        if figure in (EARTH, SPHERE):
            chosen = points
        else:
            chosen, shared = points[shared % 2 :: 2], shared + 1
        CASES.append((projection, f"{figure};{parameters}" if parameters else figure, chosen))


high = [(10, 85.0511), (-71.5, -88.75), (170, 89.9), (-179.5, 45), (190, -20), (-190, 33), (370, 61)]
case("Mercator", ANY, "Lon0=10", high)
case("Mercator", (EARTH, SPHERE), "Lon0=-177;Lat0=-41", [(179.5, 12), (3, -64), (-177, 0), (-357, 70)])
case("Miller Cylindrical", SPHERE, "Lon0=-160", world(-160))
case("Miller Cylindrical", EARTH, "", [(-75, 50), (370, -33)])
case("Equidistant Cylindrical", SPHERE, "Lon0=9;Lat1=-37", world(9))
case("Equidistant Cylindrical", EARTH, "Lat1=52", [(-75, 50), (370, -33)])

strip = [(0, 0), (3, 51.25), (-3, -72), (6, 8), (-12, 33), (20, -55.5), (-34.9, 0), (34.9, 84), (-34.9, 41), (0, 90), (25, -90)]
wide = [(47, 12.5), (-60, 70), (75, 30), (79, 0), (-79, 5), (79, 45), (-79, -80), (79, 89)]
moved = lambda lon0, points: [(lon0 + lon, lat) for lon, lat in points]
case("Transverse Mercator", EARTH, "Lon0=0;Lat0=0", strip + wide)
case("Transverse Mercator", EARTH, "Lon0=-2;Lat0=49;K0=0.9996012717;xOrg=400000;yOrg=-100000", moved(-2, strip[1:5]))
case("Transverse Mercator", EARTH, "Lon0=-176;Lat0=-40", [(179.5, -39), (172, 12), (190, -71), (-190, 5), (-536, -39)])
case("Transverse Mercator", (ROUND, FAT, FATTER), "Lon0=15;K0=0.9996", moved(15, strip[:6]))
case("Transverse Mercator", SPHERE, "Lon0=80;Lat0=-12;K0=0.9996",
     moved(80, [(0, -12), (44, 60), (-89, 5), (90, 45), (-90, -20), (135, 45), (-160, -30), (180, 70), (364, 10), (20, 90)]))
case("Gauss-Kruger / Gauss Conformal", EARTH, "Lon0=9;xOrg=3500000", moved(9, strip[:6]))
case("Universal Transverse Mercator (UTM)", EARTH, "Lon0=-177", [(179.5, 45), (-177, 0), (-174, 83.5), (180, -10), (-181.5, 20), (186, 3)])
case("Universal Transverse Mercator (UTM)", (EARTH, SPHERE), "Lon0=15;bSouth=1", [(12.25, -33), (18, -79.5), (-345, -0.5)])
case("Cassini", SPHERE, "Lat0=31.7;Lon0=35.2", moved(35.2, [(0, 31.7), (2, 34), (-60, 50), (81, 7), (150, 72), (363, 5), (40, 90)]))

cones = {"Lat0=23;Lon0=-96;Lat1=33;Lat2=45": (-96, 1), "Lat0=-40;Lon0=145;Lat1=-30;Lat2=-50": (145, -1),
         "Lat0=40;Lon0=20;Lat1=40;Lat2=40.5": (20, 1), "Lat0=5;Lon0=-70;Lat1=35;Lat2=-10": (-70, 1)}
for projection in ("Lambert Conformal Conic", "Albers Equal Area Conic", "Equidistant Conic"):
    for parameters, (lon0, side) in cones.items():
        sparse = "40.5" in parameters or "-10" in parameters
        points = moved(lon0, [(lon, side * lat) for lon, lat in [(0, 40), (11, 35.25), (-31, 62), (170, 10), (180, 48), (364, -25), (-77, 90)]])
        figures = (EARTH, SPHERE) if sparse else ANY
        case(projection, SPHERE if projection == "Equidistant Conic" else figures, parameters, points)
case("Lambert Conformal Conic", EARTH, "Lat0=0;Lon0=30;Lat1=0.5;Lat2=1", [(31, 0.75), (24, -3), (30, 0)])  # 7e8 m from the apex
case("Lambert Conformal Conic", EARTH, "Lat0=90;Lon0=30;Lat1=60;Lat2=80", [(31, 75), (-140, 30), (30, 90)])
case("Albers Equal Area Conic", EARTH, "Lat0=0;Lon0=30;Lat1=0.5;Lat2=1", [(31, 0.75), (24, -3), (30, 0)])
case("Albers Equal Area Conic", EARTH, "Lat0=90;Lon0=-45;Lat1=90;Lat2=55", [(10, 60), (-160, 27), (0, 90)])
case("Equidistant Conic", EARTH, "Lat0=5;Lon0=100;Lat1=15;Lat2=65", [(-170, 66), (80, 20), (462, 5)])

case("Polyconic", (EARTH, SPHERE, FAT), "Lat0=30;Lon0=-96", moved(-96, [(0, 30), (2, 33), (-17, 39), (55, -24), (9, -66), (1, 1e-7), (20, 0), (33, 90), (364, 50), (-80, 80)] + beside_poles(0)))
case("Polyconic", (ROUND, FATTER), "Lat0=-22;Lon0=-54", moved(-54, [(0, -22), (12, -40), (-30, 15), (363, 0)]))
case("Bonne", (EARTH, SPHERE, FATTER), "Lat1=40;Lon0=-75", moved(-75, [(0, 40), (2, 43), (60, 16), (-48, -13), (180, 30), (364, 70), (0, 90), (33, -90)] + beside_poles(0)))
case("Bonne", (EARTH, ROUND, FAT), "Lat1=-25;Lon0=135", moved(135, [(0, -25), (-17, -9), (60, -49), (5, 30), (0, -90)]))
case("Bonne", (EARTH, SPHERE), "Lat1=90;Lon0=0", [(0, 90), (40, 60), (-100, 20), (180, -50)])

CENTRES = [("90", 20), ("-90", -140), ("0", 33), ("40", -100), ("-33.25", 151.5), ("89.9999", 64), ("89.999999", 64)]
for lat, lon0 in CENTRES:
    polar = fabs(mpf(lat)) == 90
    points = [(lon, p) for lon, p in about(float(lat), lon0, polar) if fabs(p) <= 90]
    if lat[:3] == "89.":
        points = [(lon0, float(lat)), (lon0 + 31, 90), (lon0 - 70, 60), (lon0 + 179, 20)]
    case("Stereographic", (EARTH, SPHERE), f"Lat0={lat};Lon0={lon0};K0=0.97", points)
    if lat in ("90", "-33.25", "0"):
        case("Stereographic", (ROUND, FAT, FATTER), f"Lat0={lat};Lon0={lon0}", points[:4])
    case("Orthographic", SPHERE, f"Lat0={lat};Lon0={lon0}", points)
    case("Gnomonic", SPHERE, f"Lat1={lat};Lon0={lon0}", points[:-1] if polar else points)
    far = [(lon0 + 170, -float(lat) + 10), (lon0 + 120, -30)]
    for projection in ("Lambert Azimuthal Equal Area", "Azimuthal Equidistant"):
        case(projection, SPHERE, f"Lat1={lat};Lon0={lon0}", points + [p for p in far if fabs(p[1]) <= 90])

case("Sinusoidal", (EARTH, SPHERE, ROUND), "Lon0=11", world(11))
case("Sinusoidal", (FAT, FATTER), "Lon0=-170", [(175, 44), (-100, -80), (300, 12.5)])
for projection in ("Mollweide", "Eckert IV", "Eckert VI", "Robinson-Sterling"):
    case(projection, SPHERE, "Lon0=-30", world(-30) + [(-29, 89.5), (77, -5.5e-6)])
case("Van Der Grinten", SPHERE, "Lon0=-30", [p for p in world(-30)])
case("Robinson", SPHERE, "Lon0=50", world(0) + [(77.7, lat) for lat in (36.5, 40, 42.5, -45, 59, 88)] + [(190, 20), (-190, 50)])
case("Mollweide", EARTH, "", [(40, 60)])  # of the sphere with the ellipsoid's a


def reduced(lon, lon0):
    d = mpf(float(lon)) * pi / 180 - lon0
    turns = nint(d / (2 * pi))
    return d if fabs(d) <= pi * (1 + ULP) else d - 2 * pi * turns


def derivatives(projection, dlon, phi):
    """Of x and y by longitude and by latitude, one-sided towards the middle of the map."""
    h = mpf(10) ** -20
    here = projection.forward(dlon, phi)
    side = lambda v: -h if v > 0 else h
    step = lambda other, s: [(b - a) / s for a, b in zip(here, other)]
    return (step(projection.forward(dlon + side(dlon), phi), side(dlon)),
            step(projection.forward(dlon, phi + side(phi)), side(phi)))


def tolerances(name, projection, lon, dlon, phi, x, y):
    size = max(fabs(x), fabs(y), projection.size)
    by_lon, by_lat = derivatives(projection, dlon, phi)
    pole = fabs(phi) == pi / 2  # known without rounding
    angles = ULP * hypot(*by_lon) * (fabs(lon) * pi / 180 + fabs(projection.r.lon0))
    if not pole:
        angles += ULP * hypot(*by_lat) * fabs(phi)
    xy = max(mpf("1e-8"), 4 * ULP * size, angles)
    if name in TRANSVERSE and fabs(dlon) <= 35 * pi / 180 and fabs(projection.r.f) < 0.005:
        xy = max(mpf("2e-9") + 2 * ULP * size, angles)
    # How far the least stretched direction brings four roundings of the coordinates on the ground.
    if pole:
        phi *= 1 - mpf(10) ** -9  # where there are directions
        by_lon, by_lat = derivatives(projection, dlon, phi)
    parallel = projection.r.a * projection.r.parallel(phi)
    meridian = projection.r.a * (1 - projection.r.e2) / sqrt(1 - projection.r.e2 * sin(phi) ** 2) ** 3
    h, k = [v / meridian for v in by_lat], [v / parallel for v in by_lon]
    trace, area = sum(v * v for v in h + k), fabs(h[0] * k[1] - h[1] * k[0])
    least = sqrt((trace - sqrt(max(mpf(0), trace**2 - 4 * area**2))) / 2)
    loss = 4 * ULP * size / projection.r.a / max(least, mpf(10) ** -14) * 180 / pi
    return xy, loss, max(mpf("1e-6"), 8 * ULP * size, 2 * angles)


TRANSVERSE = [name for name, made in MAPS.items() if issubclass(made, TransverseMercator)]


def check_closed_forms():
    """The closed forms of exact_maps.py against the integrals that define them."""
    for text in (EARTH, FATTER, ROUND):
        r = Record(text)
        meridian = lambda t: (1 - r.e2) / sqrt(1 - r.e2 * sin(t) ** 2) ** 3
        parallel = lambda t: cos(t) / sqrt(1 - r.e2 * sin(t) ** 2)
        for phi in (mpf("0.7"), mpf("1.4")):
            assert fabs(quad(meridian, [0, phi]) - r.arc(phi)) < mpf(10) ** -40
            assert fabs(quad(lambda t: meridian(t) / parallel(t), [0, phi]) - r.isometric(phi)) < mpf(10) ** -40
            assert fabs(2 * quad(lambda t: meridian(t) * parallel(t), [0, phi]) - r.authalic(phi)) < mpf(10) ** -40
        path = mpc("0.7", "1.1")
        assert fabs(quad(meridian, [0, path]) - r.arc(path)) < mpf(10) ** -40


def main():
    check_closed_forms()
    lines = ["# Exact computation: the definitions in 50 digits. Written by make_exact.py.",
             "projection,parameters,lon,lat,x,y,tol_xy,tol_deg,tol_map,origin"]
    for name, parameters, points in CASES:
        projection = MAPS[name](Record(parameters))
        given = dict(item.split("=") for item in parameters.split(";"))
        org = mpf(float(given.get("xOrg", 0))), mpf(float(given.get("yOrg", 0)))
        for lon, lat in points:
            lon, lat = float(lon), float(lat)
            dlon, phi = reduced(lon, projection.r.lon0), mpf(lat) * pi / 180
            x, y = (v + o for v, o in zip(projection.forward(dlon, phi), org))
            tol_xy, loss, tol_map = tolerances(name, projection, lon, dlon, phi, x, y)
            invertible = loss <= mpf("1e-11")
            origin = "definition in 50 digits" if invertible else "definition in 50 digits; degrees limited by the rounding of x and y"
            lines.append(",".join([name, parameters, repr(lon), repr(lat), mp.nstr(x, 20), mp.nstr(y, 20), mp.nstr(tol_xy, 2),
                                   mp.nstr(max(loss, mpf("1e-11")), 2), mp.nstr(tol_map, 2), origin]))
    pathlib.Path(__file__).with_name("exact.csv").write_text("\n".join(lines) + "\n", encoding="ascii")


if __name__ == "__main__":
    main()
