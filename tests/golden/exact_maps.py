"""The projections by their definitions, in 50 digits, for make_exact.py: no series, and none of the library's arrangements.

Each map is made from a Record and gives forward(dlon, phi) in radians, dlon reduced to half a turn. The sphere: vectors. The
ellipsoid: the meridian arc by elliptic integrals, isometric and authalic latitude in closed form (checked against
their integrals by make_exact.py), the transverse Mercator as the meridian arc continued to the complex isometric latitude."""
from mpmath import (asin, atan, atan2, atanh, cos, cot, ellipe, exp, fabs, floor, hypot, log, lu_solve, matrix, mp, mpc, mpf,
                    nint, pi, sign, sin, sqrt, tan, tanh)

mp.dps = 50


class Record:
    """The fields of a parameter text; angles in radians, those not given 0."""

    def __init__(self, text):
        given = {name: float(value) for name, value in (item.split("=") for item in text.split(";"))}
        self.a = mpf(given.get("R", given.get("a", 6378137.0)))
        self.f = mpf(given.get("f", 0))
        self.e2 = self.f * (2 - self.f)
        self.e = sqrt(self.e2)
        self.k0 = mpf(given.get("K0", 1))
        self.south = given.get("bSouth", 0) != 0
        self.lat0, self.lat1, self.lat2, self.lon0 = (
            mpf(given.get(name, 0)) * pi / 180 for name in ("Lat0", "Lat1", "Lat2", "Lon0"))

    def parallel(self, phi):
        """Radius of a parallel over a."""
        return mpf(0) if fabs(phi) == pi / 2 else cos(phi) / sqrt(1 - self.e2 * sin(phi) ** 2)

    def isometric(self, phi):
        """Integral of meridian radius over parallel radius."""
        return 2 * atanh(tan(phi / 2)) - self.e * atanh(self.e * sin(phi))

    def conformal(self, phi):
        return phi if fabs(phi) == pi / 2 else 2 * atan(tanh(self.isometric(phi) / 2))

    def authalic(self, phi):
        """Twice the integral of meridian radius times parallel radius, over a squared."""
        s = sin(phi)
        if self.e == 0:
            return 2 * s
        return (1 - self.e2) * (s / (1 - self.e2 * s * s) + atanh(self.e * s) / self.e)

    def arc(self, phi):
        """Meridian arc from the equator over a, of a real or a complex latitude."""
        s = sin(phi)
        return ellipe(phi, self.e2) - self.e2 * s * cos(phi) / sqrt(1 - self.e2 * s * s)


def vector(lat, lon):
    return cos(lat) * cos(lon), cos(lat) * sin(lon), sin(lat)


def from_centre(lat0, dlon, lat):
    """Arc from a centre and the unit vector (east, north) towards a point; (0, 0) at the centre and its antipode."""
    x, y, z = vector(lat, dlon)
    east, north, up = y, cos(lat0) * z - sin(lat0) * x, cos(lat0) * x + sin(lat0) * z
    h = hypot(east, north)
    if h < mpf(10) ** -45:
        return (mpf(0) if up > 0 else pi), mpf(0), mpf(0)
    return atan2(h, up), east / h, north / h


class Map:
    """size: where a coordinate is the small difference of large lengths, those lengths."""

    size = mpf(0)

    def __init__(self, record):
        self.r = record
        self.make()

    def make(self):
        pass


# ---- cylinders ----


class Mercator(Map):
    def forward(self, dlon, phi):
        k = self.r.a * self.r.parallel(self.r.lat0)
        return k * dlon, k * self.r.isometric(phi)


class Miller(Map):
    def forward(self, dlon, phi):
        return self.r.a * dlon, self.r.a * 5 / 2 * atanh(tan(2 * phi / 5))


class EquidistantCylindrical(Map):
    def forward(self, dlon, phi):
        return self.r.a * cos(self.r.lat1) * dlon, self.r.a * phi


class TransverseMercator(Map):
    def make(self):
        self.origin = self.r.arc(self.r.lat0)

    def complex_latitude(self, w):
        """The latitude, complex, whose isometric latitude is w."""
        phi = 2 * atan(tanh(w / 2))  # of the sphere
        for _ in range(200):
            s = sin(phi)
            residual = 2 * atanh(tan(phi / 2)) - self.r.e * atanh(self.r.e * s) - w
            step = residual * (1 - self.r.e2 * s * s) * cos(phi) / (1 - self.r.e2)
            phi -= step
            if fabs(step) < mpf(10) ** -45:
                return phi
        raise ArithmeticError(f"no complex latitude for {w}")

    def forward(self, dlon, phi):
        r, beyond = self.r, fabs(dlon) > pi / 2  # the sphere alone: over the pole
        if fabs(phi) == pi / 2:
            return mpf(0), r.a * r.k0 * (r.arc(phi) - self.origin)
        w = mpc(r.isometric(phi), sign(dlon) * pi - dlon if beyond else dlon)
        z = r.arc(self.complex_latitude(w))
        if beyond:
            return r.a * r.k0 * z.imag, r.a * r.k0 * (sign(phi) * pi - z.real - self.origin)
        return r.a * r.k0 * z.imag, r.a * r.k0 * (z.real - self.origin)


class Utm(TransverseMercator):
    def make(self):
        self.r.k0 = mpf(0.9996)
        super().make()

    def forward(self, dlon, phi):
        x, y = super().forward(dlon, phi)
        return x + 500000, y + (10000000 if self.r.south else 0)


class Cassini(Map):
    def forward(self, dlon, phi):
        x, y, z = vector(phi, dlon)
        return self.r.a * asin(y), self.r.a * (atan2(z, x) - self.r.lat0)


# ---- cones ----


class Cone(Map):
    """rho(phi), over a; n."""

    def make(self):
        self.n = self.constant()
        self.rho0 = self.rho(self.r.lat0)

    def forward(self, dlon, phi):
        rho = self.rho(phi)
        self.size = self.r.a * max(fabs(rho), fabs(self.rho0))
        theta = self.n * dlon
        return self.r.a * rho * sin(theta), self.r.a * (self.rho0 - rho * cos(theta))


class Lambert(Cone):
    """n from m(lat1) / m(lat2) = exp(n (psi2 - psi1))."""

    def constant(self):
        r = self.r
        return log(r.parallel(r.lat1) / r.parallel(r.lat2)) / (r.isometric(r.lat2) - r.isometric(r.lat1))

    def rho(self, phi):
        r = self.r
        if fabs(phi) == pi / 2:
            return mpf(0)  # the pole of the apex
        return r.parallel(r.lat1) / self.n * exp(self.n * (r.isometric(r.lat1) - r.isometric(phi)))


class Albers(Cone):
    def constant(self):
        r = self.r
        return (r.parallel(r.lat1) ** 2 - r.parallel(r.lat2) ** 2) / (r.authalic(r.lat2) - r.authalic(r.lat1))

    def rho(self, phi):
        r = self.r
        return sqrt(r.parallel(r.lat1) ** 2 + self.n * (r.authalic(r.lat1) - r.authalic(phi))) / self.n


class EquidistantConic(Cone):
    def constant(self):
        return (cos(self.r.lat1) - cos(self.r.lat2)) / (self.r.lat2 - self.r.lat1)

    def rho(self, phi):
        return cos(self.r.lat1) / self.n + self.r.lat1 - phi


class Polyconic(Map):
    def forward(self, dlon, phi):
        r = self.r
        if phi == 0:
            return r.a * dlon, -r.a * r.arc(r.lat0)
        rho = mpf(0) if fabs(phi) == pi / 2 else cot(phi) / sqrt(1 - r.e2 * sin(phi) ** 2)
        E = dlon * sin(phi)
        return r.a * rho * sin(E), r.a * (r.arc(phi) - r.arc(r.lat0) + 2 * rho * sin(E / 2) ** 2)


class Bonne(Map):
    def forward(self, dlon, phi):
        r = self.r
        top = r.parallel(r.lat1) / sin(r.lat1)
        rho = top + r.arc(r.lat1) - r.arc(phi)
        self.size = r.a * max(fabs(rho), fabs(top))
        E = mpf(0) if fabs(rho) < mpf(10) ** -40 else r.parallel(phi) * dlon / rho
        return r.a * rho * sin(E), r.a * (top - rho * cos(E))


# ---- azimuthal ----


class Azimuthal(Map):
    def centre(self):
        return self.r.lat1

    def forward(self, dlon, phi):
        c, east, north = from_centre(self.centre(), dlon, phi)
        rho = self.r.a * self.radius(c)
        return rho * east, rho * north


class LambertAzimuthal(Azimuthal):
    def radius(self, c):
        return 2 * sin(c / 2)


class AzimuthalEquidistant(Azimuthal):
    def radius(self, c):
        return c


class Gnomonic(Azimuthal):
    def radius(self, c):
        return tan(c)


class Orthographic(Azimuthal):
    def centre(self):
        return self.r.lat0

    def radius(self, c):
        return sin(c)


class Stereographic(Azimuthal):
    """Of the conformal sphere, which turns its pole to the centre; scale k0 there."""

    def make(self):
        r = self.r
        if fabs(r.lat0) == pi / 2:
            self.scale = 2 * r.k0 / sqrt((1 + r.e) ** (1 + r.e) * (1 - r.e) ** (1 - r.e))
        else:
            self.scale = 2 * r.k0 * r.parallel(r.lat0) / cos(r.conformal(r.lat0))

    def centre(self):
        return self.r.conformal(self.r.lat0)

    def forward(self, dlon, phi):
        return super().forward(dlon, self.r.conformal(phi))

    def radius(self, c):
        return self.scale * tan(c / 2)


# ---- the world ----


class Sinusoidal(Map):
    def forward(self, dlon, phi):
        return self.r.a * self.r.parallel(phi) * dlon, self.r.a * self.r.arc(phi)


def parameter(area, whole, phi):
    """The angle theta whose area below is the share sin(phi) of that below a quarter turn. By bisection first: the
    derivative may be 0 at a quarter turn."""
    if fabs(phi) == pi / 2:
        return phi
    wanted = whole * fabs(sin(phi))
    low, high = mpf(0), pi / 2
    for _ in range(170):
        middle = (low + high) / 2
        low, high = (middle, high) if area(middle) < wanted else (low, middle)
    return sign(phi) * (low + high) / 2


class Mollweide(Map):
    def forward(self, dlon, phi):
        theta = parameter(lambda t: 2 * t + sin(2 * t), pi, phi)
        return 2 * sqrt(mpf(2)) / pi * self.r.a * dlon * cos(theta), sqrt(mpf(2)) * self.r.a * sin(theta)


class Eckert4(Map):
    def forward(self, dlon, phi):
        theta = parameter(lambda t: t + sin(t) * cos(t) + 2 * sin(t), 2 + pi / 2, phi)
        return (2 / sqrt(pi * (4 + pi)) * self.r.a * dlon * (1 + cos(theta)),
                2 * sqrt(pi / (4 + pi)) * self.r.a * sin(theta))


class Eckert6(Map):
    def forward(self, dlon, phi):
        theta = parameter(lambda t: t + sin(t), 1 + pi / 2, phi)
        return self.r.a * dlon * (1 + cos(theta)) / sqrt(2 + pi), 2 * self.r.a * theta / sqrt(2 + pi)


class VanDerGrinten(Map):
    """Where the circles of meridian and parallel cross: the closed forms of Snyder (1987), p. 241."""

    def forward(self, dlon, phi):
        if phi == 0:
            return self.r.a * dlon, mpf(0)
        theta = asin(min(mpf(1), fabs(2 * phi / pi)))
        if dlon == 0 or fabs(phi) == pi / 2:
            return mpf(0), sign(phi) * pi * self.r.a * tan(theta / 2)
        A = fabs(pi / dlon - dlon / pi) / 2
        G = cos(theta) / (sin(theta) + cos(theta) - 1)
        P = G * (2 / sin(theta) - 1)
        Q = A * A + G
        x = (A * (G - P * P) + sqrt(A * A * (G - P * P) ** 2 - (P * P + A * A) * (G * G - P * P))) / (P * P + A * A)
        y = fabs(P * Q - A * sqrt((A * A + 1) * (P * P + A * A) - Q * Q)) / (P * P + A * A)
        return sign(dlon) * pi * self.r.a * x, sign(phi) * pi * self.r.a * y


LENGTH = "1 .9986 .9954 .99 .9822 .973 .96 .9427 .9216 .8962 .8679 .835 .7986 .7597 .7186 .6732 .6213 .5722 .5322"
DISTANCE = "0 .062 .124 .186 .248 .31 .372 .434 .4958 .5571 .6176 .6769 .7346 .7903 .8435 .8936 .9394 .9761 1"


class Robinson(Map):
    """Cubic splines through the published table, each 5 degrees: lengths even and distances odd about the equator, the last
    two intervals one cubic. Centred on Greenwich."""

    def make(self):
        self.r.lon0 = mpf(0)
        self.length, self.distance = self.spline(LENGTH, even=True), self.spline(DISTANCE, even=False)

    @staticmethod
    def spline(text, even):
        y = [mpf(value) for value in text.split()]
        n, h = len(y) - 1, mpf(5)
        system, right = matrix(n + 1), matrix(n + 1, 1)  # for half the second derivatives
        for i in range(1, n):
            system[i, i - 1], system[i, i], system[i, i + 1] = h, 4 * h, h
            right[i] = 3 * (y[i + 1] - 2 * y[i] + y[i - 1]) / h
        system[0, 0] = 1
        if even:  # first derivative 0
            system[0, 0], system[0, 1], right[0] = 2 * h / 3, h / 3, (y[1] - y[0]) / h
        system[n, n], system[n, n - 1], system[n, n - 2] = 1, -2, 1
        c = lu_solve(system, right)
        return [(y[i], (y[i + 1] - y[i]) / h - h * (2 * c[i] + c[i + 1]) / 3, c[i], (c[i + 1] - c[i]) / (3 * h))
                for i in range(n)]

    def forward(self, dlon, phi):
        degrees = fabs(phi) * 180 / pi
        i = min(17, int(floor(degrees / 5)))
        d = degrees - 5 * i
        value = lambda row: ((row[3] * d + row[2]) * d + row[1]) * d + row[0]
        return (mpf("0.8487") * self.r.a * value(self.length[i]) * dlon,
                mpf("1.3523") * self.r.a * sign(phi) * value(self.distance[i]))


class RobinsonSterling(Map):
    """The published table by Stirling's central differences of the second order."""

    def forward(self, dlon, phi):
        def value(text, parity):
            rows = [mpf(v) for v in text.split()]
            i = min(17, int(floor(fabs(phi) * 36 / pi)))
            p = fabs(phi) * 36 / pi - i
            below = parity * rows[1] if i == 0 else rows[i - 1]
            return rows[i] + p * (rows[i + 1] - below) / 2 + p * p * (rows[i + 1] - 2 * rows[i] + below) / 2

        return (mpf("0.8487") * self.r.a * value(LENGTH, 1) * dlon,
                mpf("1.3523") * self.r.a * sign(phi) * value(DISTANCE, -1))


MAPS = {
    "Mercator": Mercator, "Miller Cylindrical": Miller, "Equidistant Cylindrical": EquidistantCylindrical,
    "Transverse Mercator": TransverseMercator, "Gauss-Kruger / Gauss Conformal": TransverseMercator,
    "Universal Transverse Mercator (UTM)": Utm, "Cassini": Cassini, "Lambert Conformal Conic": Lambert,
    "Albers Equal Area Conic": Albers, "Equidistant Conic": EquidistantConic, "Polyconic": Polyconic, "Bonne": Bonne,
    "Lambert Azimuthal Equal Area": LambertAzimuthal, "Azimuthal Equidistant": AzimuthalEquidistant,
    "Gnomonic": Gnomonic, "Orthographic": Orthographic, "Stereographic": Stereographic, "Sinusoidal": Sinusoidal,
    "Mollweide": Mollweide, "Eckert IV": Eckert4, "Eckert VI": Eckert6, "Van Der Grinten": VanDerGrinten,
    "Robinson": Robinson, "Robinson-Sterling": RobinsonSterling,
}
