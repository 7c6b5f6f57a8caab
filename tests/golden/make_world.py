#!/usr/bin/env python3
"""make_world - reference values of the world projections, in 40-digit arithmetic: writes world.csv beside itself.

Where a stopping rule or single precision decides the result, the row holds what that very procedure gives, forward and
inverse in rows of their own; everywhere else the row holds the exact value and is checked in both directions. Van der
Grinten follows the closed forms of Snyder (1987), p. 241, not the library's intersection of circles.
"""
import pathlib
import struct

from mpmath import asin, cos, fabs, floor, mp, mpf, pi, sign, sin, sqrt, tan

mp.dps = 40
R = 6371007.181
FLOAT_EPSILON = mpf(2) ** -23
POINTS = [(-167.3, 71.4), (-120.25, -38.6), (-33.1, 2.75), (14.2, -61.9), (47.7, 24.1), (101.3, 83.2), (161.9, -17.4),
          (64.5, 0)]


def rad(degrees):
    return mpf(degrees) * pi / 180


def deg(radians):
    return radians * 180 / pi


def single(x):
    """Rounded to single precision."""
    return struct.unpack("f", struct.pack("f", float(x)))[0]


# ---- each forward: (x, y) from longitude difference and latitude in radians


def sinusoidal(dlon, phi, a, e2=mpf(0)):
    c = [1 - e2 / 4 - 3 * e2**2 / 64 - 5 * e2**3 / 256, 3 * e2 / 8 + 3 * e2**2 / 32 + 45 * e2**3 / 1024,
         15 * e2**2 / 256 + 45 * e2**3 / 1024, 35 * e2**3 / 3072]
    arc = c[0] * phi - c[1] * sin(2 * phi) + c[2] * sin(4 * phi) - c[3] * sin(6 * phi)
    return a * dlon * cos(phi) / sqrt(1 - e2 * sin(phi) ** 2), a * arc


def sinusoidal_inverse(x, y, a, e2):
    mu = y / (a * (1 - e2 / 4 - 3 * e2**2 / 64 - 5 * e2**3 / 256))
    n = (1 - sqrt(1 - e2)) / (1 + sqrt(1 - e2))
    phi = (mu + (3 * n / 2 - 27 * n**3 / 32) * sin(2 * mu) + (21 * n**2 / 16 - 55 * n**4 / 32) * sin(4 * mu)
           + 151 * n**3 / 96 * sin(6 * mu) + 1097 * n**4 / 512 * sin(8 * mu))
    return x * sqrt(1 - e2 * sin(phi) ** 2) / (a * cos(phi)), phi


def mollweide(dlon, phi, a, exact):
    theta = phi + mpf(1e-07) if fabs(phi) < 1e-07 else phi
    passes, delta = 0, mpf(999)
    while fabs(delta) > (mpf(10) ** -35 if exact else FLOAT_EPSILON):
        delta = -(theta + sin(theta) - pi * sin(phi)) / (cos(theta) + 1)
        theta += delta
        passes += 1
    assert passes < 500
    return 2 * sqrt(mpf(2)) / pi * a * dlon * cos(theta / 2), sqrt(mpf(2)) * a * sin(theta / 2)


def last_step_dropped(theta, step, exact):
    """Newton's method that stops at 10 FLT_EPSILON and does not apply the step it stops at."""
    delta = step(theta)
    for _ in range(99):
        theta += delta
        delta = step(theta)
        if fabs(delta) <= (mpf(10) ** -35 if exact else 10 * FLOAT_EPSILON):
            break
    return theta


def eckert4(dlon, phi, a, exact):
    k = mpf(3.5707963267948966)
    theta = last_step_dropped(phi / 2, lambda t: -(t + sin(t) * cos(t) + 2 * sin(t) - k * sin(phi))
                              / (2 * cos(t) * (1 + cos(t))), exact)
    return mpf(0.4222382) * a * dlon * (1 + cos(theta)), mpf(1.3265004) * a * sin(theta)


def eckert6(dlon, phi, a, exact):
    k = mpf(2.5707963267948966)
    theta = last_step_dropped(phi, lambda t: -(t + sin(t) - k * sin(phi)) / (1 + cos(t)), exact)
    return a * dlon * (1 + cos(theta)) / sqrt(2 + pi), 2 * a * theta / sqrt(2 + pi)


def van_der_grinten(dlon, phi, a):
    if phi == 0:
        return a * dlon, mpf(0)
    theta = asin(fabs(2 * phi / pi))
    if dlon == 0:
        return mpf(0), sign(phi) * pi * a * tan(theta / 2)
    A = fabs(pi / dlon - dlon / pi) / 2
    G = cos(theta) / (sin(theta) + cos(theta) - 1)
    P = G * (2 / sin(theta) - 1)
    Q = A**2 + G
    x = (A * (G - P**2) + sqrt(A**2 * (G - P**2) ** 2 - (P**2 + A**2) * (G**2 - P**2))) / (P**2 + A**2)
    y = (P * Q - A * sqrt((A**2 + 1) * (P**2 + A**2) - Q**2)) / (P**2 + A**2)
    return sign(dlon) * pi * a * x, sign(phi) * pi * a * y


LENGTH = "1 .9986 .9954 .99 .9822 .973 .96 .9427 .9216 .8962 .8679 .835 .7986 .7597 .7186 .6732 .6213 .5722 .5322"
DISTANCE = "0 .062 .124 .186 .248 .31 .372 .434 .4958 .5571 .6176 .6769 .7346 .7903 .8435 .8936 .9394 .9761 1"


def robinson_stirling(dlon, phi, a):
    def value(text, parity):
        rows = [mpf(v) for v in text.split()]
        i = min(17, int(floor(fabs(phi) * 36 / pi)))
        p = fabs(phi) * 36 / pi - i
        below = parity * rows[1] if i == 0 else rows[i - 1]
        return rows[i] + p * (rows[i + 1] - below) / 2 + p**2 * (rows[i + 1] - 2 * rows[i] + below) / 2

    return mpf("0.8487") * a * value(LENGTH, 1) * dlon, mpf("1.3523") * a * sign(phi) * value(DISTANCE, -1)


# Interval of 5 degrees -> single precision coefficients of length and distance; the rows that the points below fall in.
ROBINSON = {
    0: ((1, -5.6723901e-12, -7.1551098e-05, 3.11028e-06), (0, 0.0124, 3.7252901e-10, 1.15484e-09)),
    3: ((0.99000001, -0.00135363, -5.96598e-05, 3.67749e-06), (0.186, 0.0124008, 2.66917e-07, -8.4452303e-08)),
    4: ((0.98220003, -0.00167442, -4.4975e-06, -5.7239399e-06), (0.248, 0.0123971, -9.9968202e-07, 3.15569e-07)),
    7: ((0.94270003, -0.00382792, -6.53428e-05, -2.6149301e-06), (0.43399999, 0.0125501, 5.2003401e-05, -1.00051e-05)),
    8: ((0.92159998, -0.0046774698, -0.000104566, 4.8122001e-06),
        (0.49680001, 0.0123198, -9.8073499e-05, 9.2239698e-06)),
    12: ((0.79860002, -0.0075533702, -5.00038e-05, 9.35532e-07),
         (0.73460001, 0.0113572, -4.0838899e-05, -5.1852402e-07)),
    14: ((0.71859998, -0.0085136602, -7.0112001e-05, -8.63072e-06),
         (0.84350002, 0.0103433, -6.4693399e-05, 5.36384e-09)),
    16: ((0.62129998, -0.010418, 8.8394801e-05, 6.2403101e-06),
         (0.93940002, 0.0084094899, -0.000192847, -4.2102301e-06)),
    17: ((0.5722, -0.0090660099, 0.000181999, 6.2403301e-06),
         (0.97610003, 0.0061652502, -0.00025600099, -4.2102101e-06)),
}
WIDTH, HEIGHT = single(0.8487), single(1.3523)


def cubic(row, d):
    c = [mpf(single(v)) for v in row]
    return c[0] + ((c[3] * d + c[2]) * d + c[1]) * d


def robinson(lon, phi, a):
    i = min(17, int(fabs(phi) * mpf(11.459156036376953)))
    d = (fabs(phi) - i * mpf(0.0872664600610733)) * mpf(57.29577951308232)
    return WIDTH * a * cubic(ROBINSON[i][0], d) * lon, sign(phi) * HEIGHT * a * cubic(ROBINSON[i][1], d)


def robinson_inverse(x, y, a, i):
    """Every operation rounded to single precision, but for the root of the cubic of row i, which is found exactly."""
    X, Y = single(float(x) / a / WIDTH), single(abs(float(y) / a / HEIGHT))
    t = mpf(2)
    for _ in range(60):
        c = [mpf(single(v)) for v in ROBINSON[i][1]]
        t -= (cubic(ROBINSON[i][1], t) - Y) / ((3 * c[3] * t + 2 * c[2]) * t + c[1])
    assert 0 <= t < 5
    t = single(t)
    phi = single(single(5 * i + t) * single(0.017453292))
    c = [single(v) for v in ROBINSON[i][0]]
    length = single(single(single(single(single(c[3] * t) + c[2]) * t) + c[1]) * t)
    return mpf(single(X / single(c[0] + length))), mpf(phi if y >= 0 else -phi)


def main():
    rows = ["projection,parameters,lon,lat,x,y,tol_xy,tol_deg,origin"]

    def number(v):
        return repr(v) if isinstance(v, (int, float)) else mp.nstr(v, 20)

    def emit(name, parameters, lon, lat, xy, forward=True, inverse=True, how="exact"):
        rows.append(",".join([name, parameters, number(lon), number(lat), number(xy[0]), number(xy[1]),
                              "1e-8" if forward else "", "1e-12" if inverse else "", "make_world: " + how]))

    def both(name, function, lon0, points, flags=""):
        for lon, lat in points:
            dlon = rad(lon) - rad(lon0)
            if flags:
                dlon -= 2 * pi * floor((dlon + pi) / (2 * pi))
            args = (dlon, rad(lat), mpf(R))
            parameters = f"R={R};Lon0={lon0}{flags}"
            if function in (mollweide, eckert4, eckert6):
                emit(name, parameters, lon, lat, function(*args, exact=False), inverse=False, how="stopping rule")
                emit(name, parameters, lon, lat, function(*args, exact=True), forward=False)
            else:
                emit(name, parameters, lon, lat, function(*args))

    for name, function in [("Sinusoidal", sinusoidal), ("Mollweide", mollweide), ("Eckert IV", eckert4),
                           ("Eckert VI", eckert6), ("Robinson-Sterling", robinson_stirling)]:
        both(name, function, 11, POINTS)
        both(name, function, 100, [(-129.4, 33.3)], ";wrap=1")
    for lat in (-90, 90):
        both("Robinson-Sterling", robinson_stirling, 11, [(64, lat)])

    f = mpf(1) / mpf(298.257223563)
    e2 = 2 * f - f * f
    for lon, lat in POINTS:
        xy = sinusoidal(rad(lon) - rad(11), rad(lat), mpf(6378137), e2)
        emit("Sinusoidal", "Lon0=11", lon, lat, xy, inverse=False, how="series")
    for x, y in [(4321987.5, 7654321.25), (-1234567.75, -3456789.5), (765432.5, -9876543.25)]:
        dlon, phi = sinusoidal_inverse(mpf(x), mpf(y), mpf(6378137), e2)
        emit("Sinusoidal", "Lon0=11", deg(dlon) + 11, deg(phi), (x, y), forward=False, how="series")

    both("Van Der Grinten", van_der_grinten, 11, POINTS)
    # On and near the axes and near the antimeridian, where the closed forms lose their digits in double precision.
    both("Van Der Grinten", van_der_grinten, -20, [(-20, 47.5), (61.5, 0), (-19.999999999, -47.5), (61.5, 1e-9)])
    both("Van Der Grinten", van_der_grinten, -20, [(-20.00001, 1e-5), (159.999999, 55), (-199.999, -1e-6)])

    for lon, lat in POINTS + [(-77.7, 42.5), (33.3, 88)]:
        parameters = f"R={R};Lon0=50"  # which must not matter
        x, y = robinson(rad(lon), rad(lat), mpf(R))
        emit("Robinson", parameters, lon, lat, (x, y), inverse=False, how="single precision table")
        back = robinson_inverse(x, y, R, min(17, int(abs(lat) / 5)))
        emit("Robinson", parameters, deg(back[0]), deg(back[1]), (x, y), forward=False, how="single precision")

    pathlib.Path(__file__).with_name("world.csv").write_text("\n".join(rows) + "\n", encoding="ascii")


if __name__ == "__main__":
    main()
