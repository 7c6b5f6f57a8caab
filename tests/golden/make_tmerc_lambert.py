"""Golden rows of transverse Mercator, UTM and Lambert conformal conic: the series and closed forms of Snyder (1987), p. 48-65
and 104-110, written from the equations and evaluated in 40 digits."""
from golden import *

rows = Rows("Snyder 1987 in 40 digits")


def arc(a, e2, phi):
    return a * ((1 - e2 / 4 - 3 * e2**2 / 64 - 5 * e2**3 / 256) * phi
                - (3 * e2 / 8 + 3 * e2**2 / 32 + 45 * e2**3 / 1024) * sin(2 * phi)
                + (15 * e2**2 / 256 + 45 * e2**3 / 1024) * sin(4 * phi) - 35 * e2**3 / 3072 * sin(6 * phi))


def tm_forward(a, f, k0, lat0, lon0, lon, lat):
    dl, phi, p0 = rad(lon) - rad(lon0), rad(lat), rad(lat0)
    if f == 0:
        B = sin(dl) * cos(phi)
        return a * k0 * log((1 + B) / (1 - B)) / 2, a * k0 * (atan(tan(phi) / cos(dl)) - p0)
    e2 = 2 * f - f * f
    ep2 = e2 / (1 - e2)
    N, T, C, A = a / sqrt(1 - e2 * sin(phi)**2), tan(phi)**2, ep2 * cos(phi)**2, dl * cos(phi)
    x = k0 * N * (A + (1 - T + C) * A**3 / 6 + (5 - 18 * T + T**2 + 72 * C - 58 * ep2) * A**5 / 120)
    y = k0 * (arc(a, e2, phi) - arc(a, e2, p0)
              + N * tan(phi) * (A**2 / 2 + (5 - T + 9 * C + 4 * C**2) * A**4 / 24
                                + (61 - 58 * T + T**2 + 600 * C - 330 * ep2) * A**6 / 720))
    return x, y


def tm_inverse(a, f, k0, lat0, lon0, x, y):
    l0, p0 = rad(lon0), rad(lat0)
    if f == 0:
        D, xs = y / (a * k0) + p0, x / (a * k0)
        return deg(l0 + atan(sinh(xs) / cos(D))), deg(asin(sin(D) / cosh(xs)))
    e2 = 2 * f - f * f
    ep2 = e2 / (1 - e2)
    mu = (arc(a, e2, p0) + y / k0) / (a * (1 - e2 / 4 - 3 * e2**2 / 64 - 5 * e2**3 / 256))
    e1 = (1 - sqrt(1 - e2)) / (1 + sqrt(1 - e2))
    p1 = mu + (3 * e1 / 2 - 27 * e1**3 / 32) * sin(2 * mu) + (21 * e1**2 / 16 - 55 * e1**4 / 32) * sin(4 * mu) \
        + 151 * e1**3 / 96 * sin(6 * mu) + 1097 * e1**4 / 512 * sin(8 * mu)
    C, T, w = ep2 * cos(p1)**2, tan(p1)**2, 1 - e2 * sin(p1)**2
    N, R = a / sqrt(w), a * (1 - e2) / w**1.5
    D = x / (N * k0)
    phi = p1 - N * tan(p1) / R * (D**2 / 2 - (5 + 3 * T + 10 * C - 4 * C**2 - 9 * ep2) * D**4 / 24
                                  + (61 + 90 * T + 298 * C + 45 * T**2 - 252 * ep2 - 3 * C**2) * D**6 / 720)
    lam = l0 + (D - (1 + 2 * T + C) * D**3 / 6
                + (5 - 2 * C + 28 * T - 3 * C**2 + 8 * ep2 + 24 * T**2) * D**5 / 120) / cos(p1)
    return deg(lam), deg(phi)


def t_of(phi, e):
    return tan(pi / 4 - phi / 2) / ((1 - e * sin(phi)) / (1 + e * sin(phi)))**(e / 2)


def cone(a, f, lat0, lat1, lat2):
    e = sqrt(2 * f - f * f)
    p0, p1, p2 = rad(lat0), rad(lat1), rad(lat2)
    m = lambda p: cos(p) / sqrt(1 - e * e * sin(p)**2)
    n = (log(m(p1)) - log(m(p2))) / (log(t_of(p1, e)) - log(t_of(p2, e)))
    aF = a * m(p1) / (n * t_of(p1, e)**n)
    return e, n, aF, aF * t_of(p0, e)**n


def lambert_forward(a, f, lat0, lat1, lat2, lon0, lon, lat):
    e, n, aF, rho0 = cone(a, f, lat0, lat1, lat2)
    rho, theta = aF * t_of(rad(lat), e)**n, n * (rad(lon) - rad(lon0))
    return rho * sin(theta), rho0 - rho * cos(theta)


def lambert_inverse(a, f, lat0, lat1, lat2, lon0, x, y):
    e, n, aF, rho0 = cone(a, f, lat0, lat1, lat2)
    s = -1 if n < 0 else 1
    theta, rho = atan2(s * x, s * (rho0 - y)), s * sqrt(x * x + (rho0 - y)**2)
    if f == 0:
        return deg(theta / n) + mpf(lon0), deg(2 * atan((aF / rho)**(1 / n)) - pi / 2)
    t = (rho / aF)**(1 / n)
    phi, previous = pi / 2 - 2 * atan(t), y
    while abs(phi - previous) > mpf("1.1920928955078125e-06"):  # the result is the previous estimate
        previous, phi = phi, pi / 2 - 2 * atan(t * ((1 - e * sin(phi)) / (1 + e * sin(phi)))**(e / 2))
    return deg(theta / n) + mpf(lon0), deg(previous)


for (a, f), k0, lat0, lon0 in [(WGS84, "0.9996", 0, 15), (CLARKE_1866, "0.9999375", "36.6875", "-88.328125"),
                               (WGS84, "1", -30, -177), (SPHERE, "0.9996", -10, 50)]:
    common = {"K0": k0, "Lat0": lat0, "Lon0": lon0, **radius_text(a, f)}
    for dlon, lat in [("0", "0.25"), ("2.9", "51.125"), ("-5.75", "-33.5"), ("12.5", "71.75"), ("-30", "8"), ("0.001", "-89.5")]:
        lon = mpf(lon0) + mpf(dlon)
        x, y = tm_forward(a, f, mpf(k0), lat0, lon0, lon, lat)
        ilon, ilat = tm_inverse(a, f, mpf(k0), lat0, lon0, x, y)
        for name in ("Transverse Mercator", "Gauss-Kruger / Gauss Conformal"):
            rows.add(name, common, lon, lat, x, y, tol_xy="1e-8")
            rows.add(name, common, ilon, ilat, x, y, tol_deg="1e-12")
        south = {**common, "bSouth": 1}
        rows.add("Universal Transverse Mercator (UTM)", common, lon, lat, x + 500000, y, tol_xy="1e-8")
        rows.add("Universal Transverse Mercator (UTM)", south, ilon, ilat, x + 500000, y + 10000000, tol_deg="1e-12")

for (a, f), lat0, lat1, lat2, lon0 in [
        (WGS84, 23, 33, 45, -96), (CLARKE_1866, "31.65625", "32.125", "33.96875", "-97.5"),
        (WGS84, -40, -30, -50, 145), (WGS84, 0, -10, 40, 10), (SPHERE, 23, 33, 45, -96), (SPHERE, -30, -20, -60, 20)]:
    common = {"Lat0": lat0, "Lat1": lat1, "Lat2": lat2, "Lon0": lon0, **radius_text(a, f)}
    for dlon, lat in [("0", "1.25"), ("21", "35.125"), ("-100", "-62.5"), ("170", "75.75"), ("-3.5", "-15"), ("45", "49.5")]:
        lon = mpf(lon0) + mpf(dlon)
        x, y = lambert_forward(a, f, lat0, lat1, lat2, lon0, lon, lat)
        grown = max(mpf(1), abs(x) / 10**7, abs(y) / 10**7)  # towards the open pole coordinates grow beyond the globe's size
        rows.add("Lambert Conformal Conic", common, lon, lat, x, y, tol_xy=mp.nstr(mpf("1e-8") * grown, 3))
        ilon, ilat = lambert_inverse(a, f, lat0, lat1, lat2, lon0, x, y)
        rows.add("Lambert Conformal Conic", common, ilon, ilat, x, y, tol_deg="1e-12")

rows.write("Transverse Mercator, UTM and Lambert conformal conic.")
