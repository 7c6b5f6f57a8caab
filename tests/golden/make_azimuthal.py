"""Golden rows of the azimuthal projections, by other ways than the library takes. Sphere: the point as a vector, its arc c and
direction from the centre by dot products, then the radius of each projection. Ellipsoid (stereographic only): the conformal
sphere by the isometric latitude; the inverse is the series Snyder (1987) 3-5, which stops at e^8, and its rows hold what the
series gives. How far that is from the exact latitude is printed on standard error."""
import sys
from mpmath import asinh, atanh, fabs, findroot, hypot
from golden import *

R, A, F = SPHERE[0], *WGS84
E2 = 2 * F - F * F
E = sqrt(E2)
K0_SPHERE, K0_ELLIPSOID = mpf("0.97"), mpf("0.9999079")
CENTRES = [(90, 20), (-90, -140), (0, 33), (40, -100), (mpf("-33.25"), mpf("151.5")), (mpf("89.999"), 64)]
DIRECTIONS = [(mpf("0.7"), 203), (23, 74), (50, -155), (85, 12), (138, -40), (172, 110)]  # arc and azimuth, degrees
REACH = {"Stereographic": 90, "Orthographic": 84, "Gnomonic": 84, "Lambert Azimuthal Equal Area": 180,
         "Azimuthal Equidistant": 180}
RADIUS = {"Stereographic": lambda c: 2 * K0_SPHERE * tan(c / 2), "Orthographic": sin, "Gnomonic": tan,
          "Lambert Azimuthal Equal Area": lambda c: 2 * sin(c / 2), "Azimuthal Equidistant": lambda c: c}


def vector(lat, lon):
    return (cos(lat) * cos(lon), cos(lat) * sin(lon), sin(lat))


def seen_from(lat0, lon0, lat, lon):
    """Arc from the centre and the unit vector (east, north) towards the point."""
    dot = lambda u, v: sum(a * b for a, b in zip(u, v))
    point = vector(lat, lon)
    east = dot(point, (-sin(lon0), cos(lon0), 0))
    north = dot(point, (-sin(lat0) * cos(lon0), -sin(lat0) * sin(lon0), cos(lat0)))
    h = hypot(east, north)
    return atan2(h, dot(point, vector(lat0, lon0))), east / h, north / h


def end_of(lat0, lon0, c, azimuth):
    """Latitude and longitude at an arc and azimuth, rounded to 4 decimals of a degree."""
    up, away = vector(lat0, lon0), [a * cos(azimuth) + b * sin(azimuth) for a, b in zip(
        (-sin(lat0) * cos(lon0), -sin(lat0) * sin(lon0), cos(lat0)), (-sin(lon0), cos(lon0), 0))]
    v = [u * cos(c) + w * sin(c) for u, w in zip(up, away)]
    return mp.nint(deg(asin(v[2])) * 10000) / 10000, mp.nint(deg(atan2(v[1], v[0])) * 10000) / 10000


def isometric(lat):
    return asinh(tan(lat)) - E * atanh(E * sin(lat))


def conformal(lat):
    return atan(sinh(isometric(lat)))


def centre_radius(lat0):
    """2 a k0 m1 / cos chi1; in the polar aspects its limit."""
    if fabs(lat0) == pi / 2:
        return 2 * A * K0_ELLIPSOID / sqrt((1 + E) ** (1 + E) * (1 - E) ** (1 - E))
    return 2 * A * K0_ELLIPSOID * cos(lat0) / sqrt(1 - E2 * sin(lat0) ** 2) / cos(conformal(lat0))


def ellipsoid_forward(lat0, lon0, lat, lon):
    if fabs(lat0) == pi / 2:
        side = 1 if lat0 > 0 else -1
        rho, dlon = centre_radius(lat0) * exp(-side * isometric(lat)), lon - lon0
        return rho * sin(dlon), -side * rho * cos(dlon)
    c, east, north = seen_from(conformal(lat0), lon0, conformal(lat), lon)
    rho = centre_radius(lat0) * tan(c / 2)
    return rho * east, rho * north


def ellipsoid_inverse(lat0, lon0, x, y):
    """Latitude by the series, longitude, and the exact latitude."""
    rho = hypot(x, y)
    c = 2 * atan(rho / centre_radius(lat0))
    chi0 = lat0 if fabs(lat0) == pi / 2 else conformal(lat0)
    up, north, east = vector(chi0, 0), (-sin(chi0), 0, cos(chi0)), (0, 1, 0)
    v = [u * cos(c) + sin(c) / rho * (n * y + e * x) for u, n, e in zip(up, north, east)]
    chi, e2 = asin(v[2]), E2
    series = (chi + (e2 / 2 + 5 * e2**2 / 24 + e2**3 / 12 + 13 * e2**4 / 360) * sin(2 * chi)
              + (7 * e2**2 / 48 + 29 * e2**3 / 240 + 811 * e2**4 / 11520) * sin(4 * chi)
              + (7 * e2**3 / 120 + 81 * e2**4 / 1120) * sin(6 * chi) + 4279 * e2**4 / 161280 * sin(8 * chi))
    exact = findroot(lambda lat: conformal(lat) - chi, series)
    return series, lon0 + atan2(v[1], v[0]), exact


rows = Rows("independent geometry in 40 digits")
worst = mpf(0)
for lat0_deg, lon0_deg in CENTRES:
    lat0, lon0 = rad(lat0_deg), rad(lon0_deg)
    for arc, azimuth in DIRECTIONS:
        lat_deg, lon_deg = end_of(lat0, lon0, rad(arc), rad(azimuth))
        lat, lon = rad(lat_deg), rad(lon_deg)
        c, east, north = seen_from(lat0, lon0, lat, lon)
        tolerance = "4e-8" if arc > 170 else "1e-8"  # there a radian across is 20 R and more on the map
        for name, reach in REACH.items():
            if arc > reach:
                continue
            centre = "Lat0" if name in ("Stereographic", "Orthographic") else "Lat1"
            parameters = {"R": R, centre: lat0_deg, "Lon0": lon0_deg}
            if name == "Stereographic":
                parameters["K0"] = K0_SPHERE
            x, y = R * RADIUS[name](c) * east, R * RADIUS[name](c) * north
            if name == "Gnomonic" and lat0_deg == -90:  # the forward mirrors this aspect on purpose
                rows.add(name, parameters, lon_deg, lat_deg, x, -y, tolerance)
                rows.add(name, parameters, lon_deg, lat_deg, x, y, "", "1e-12")
            else:
                rows.add(name, parameters, lon_deg, lat_deg, x, y, tolerance, "1e-12")
        if arc > REACH["Stereographic"]:
            continue
        parameters = {"a": A, "f": F, "Lat0": lat0_deg, "Lon0": lon0_deg, "K0": K0_ELLIPSOID}
        x, y = ellipsoid_forward(lat0, lon0, lat, lon)
        rows.add("Stereographic", parameters, lon_deg, lat_deg, x, y, tolerance)
        series_lat, back_lon, exact = ellipsoid_inverse(lat0, lon0, x, y)
        worst = max(worst, fabs(series_lat - exact) * A)
        rows.add("Stereographic", parameters, deg(back_lon), deg(series_lat), x, y, "", "1e-12")
rows.write("Azimuthal projections.")
print("series 3-5 against the exact latitude: at most", mp.nstr(worst, 3), "m at these points", file=sys.stderr)
