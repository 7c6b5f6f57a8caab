"""Makes values of every kind out of a fuzzer's bytes and gives them to the package.

What must hold: an exception of the package or of Python's for wrong arguments, or a result of the promised kind; arrays
that were given are as before, and layout, type and threads change no result.
"""

import decimal
import fractions
import os
import pickle
import struct
import warnings

import numpy as np

import orvex
from orvex import Datum, Georef, OrvexError, Projection, Transformer, _core, catalogue

warnings.simplefilter("ignore")
np.seterr(all="ignore")

DIRECTORY = ""  # for files; set by the program
REFUSALS = (OrvexError, TypeError, ValueError, OverflowError, MemoryError)
EDGES = (0.0, -0.0, 90.0, -90.0, 180.0, -180.0, 360.0, 1.0, 1e-9, 1e7, 6378137.0, 1e300, np.finfo(float).max,
         -np.finfo(float).max, np.inf, np.nan, 5e-324)
TYPES = ("f8", "f8", "f8", "f8", "f4", ">f8", "f2", "g", "i1", "u8", "i8", "?", "c16", "S3", "U2", "M8[s]", "m8[s]", "O",
         "V8", "f8,f8")
TEXTS = [row.name for rows in (orvex.projections(), orvex.ellipsoids(), orvex.datums(), orvex.zones()) for row in rows]
TEXTS += ["", "EPSG:32039", "EPSG:4326", "EPSG:31467", "EPSG:27572", "utm", "us-ft", "m", "nan", "exact", "stated", "lon",
          "dms", "-85d50'30.5\"", "9.5 E", "tps", "helmert", "molodensky", "bursa", "NAD27", "\0", "\ud800", "\u00b0"]
KEYWORDS = list(orvex.Projection.utm(1).parameters) + [info.keyword for info in orvex.parameters("utm")] + [
    "unit", "accuracy", "datum", "wrap", "k", "__class__"]


class Failing:
    """Pretends to be much and is nothing."""

    dtype, ndim, __array_priority__ = np.dtype("f8"), 1, 1e9

    def _fail(self, *_, **__):
        raise ValueError("it is not so")

    __array__ = __float__ = __index__ = __len__ = __iter__ = __eq__ = to_numpy = __repr__ = _fail
    __hash__ = object.__hash__


class Column:
    """A column of a table as other packages have them."""

    def __init__(self, values):
        self._values, self.dtype, self.ndim = values, values.dtype, 1

    def to_numpy(self, **_):
        return self._values


class Input:
    """The bytes as values; one that is missing is 0."""

    def __init__(self, data):
        self._data, self._at = data, 0

    def raw(self, count):
        self._at += count
        return self._data[self._at - count:self._at].ljust(count, b"\0")

    def below(self, limit):
        return self.raw(1)[0] % limit

    def choose(self, choices):
        return choices[struct.unpack("<H", self.raw(2))[0] % len(choices)]

    def number(self):
        kind = self.raw(1)[0]
        if kind < 160:
            return struct.unpack("<h", self.raw(2))[0] / 100
        if kind < 200:
            return struct.unpack("<i", self.raw(4))[0] * 0.25
        return EDGES[kind % len(EDGES)] if kind < 230 else struct.unpack("<d", self.raw(8))[0]

    def text(self):
        text = self.choose(TEXTS)
        kind = self.below(4)
        if kind == 1:
            return text[:self.below(20)].upper()
        return self.raw(self.below(30)).decode("utf-8", "surrogateescape") if kind == 2 else text

    def array(self, dimensions=None):
        """Of any type, shape, order and step, sometimes read-only or on an odd address."""
        kind = np.dtype(self.choose(TYPES))
        count = dimensions if dimensions is not None else self.below(4)
        shape = [self.below(5) for _ in range(count)]
        if count == 2 and self.below(4):
            shape[1] = 2
        size = int(np.prod(shape, dtype=int))
        values = [self.number() for _ in range(min(size, 40))]
        array = np.resize(np.array(values), shape) if values else np.zeros(shape)
        if self.below(16) == 0:
            array = np.repeat(array, 3000, axis=0) if count else array  # more than one block
        if kind.kind in "Mm":
            array = array.astype("i8")
        array = array.astype(kind) if kind.names is None and kind.kind != "V" else np.zeros(shape, kind)
        return self.laid_out(array)

    def laid_out(self, array):
        """The same values, laid out elsewise in memory."""
        if array.dtype.hasobject:
            return array
        layout = self.below(12)
        if layout == 1:
            array = np.asfortranarray(array)
        elif layout == 2 and array.ndim:
            array = np.repeat(array, 2, axis=-1)[..., ::2]
        elif layout == 3:
            array = np.flip(np.flip(array).copy())
        elif layout == 4:
            array = np.frombuffer(b"\0" + array.tobytes(), np.uint8)[1:].view(array.dtype).reshape(array.shape) \
                if array.size else array
        elif layout == 5 and array.size:
            array = np.broadcast_to(array.ravel()[0], array.shape)
        elif layout == 6:
            array = array.T
        elif layout == 7:
            array = np.ma.MaskedArray(array, mask=[self.below(2) for _ in range(array.size)] if array.ndim == 1 else 0)
        elif layout == 8:
            array = array.copy()
            array.flags.writeable = False
        return array

    def value(self, depth=0):
        """Any object."""
        kind = self.below(24)
        if kind < 8:
            return self.array()
        if kind < 12:
            return self.number()
        if kind < 15 and depth < 3:
            items = [self.value(depth + 1) for _ in range(self.below(4))]
            return tuple(items) if kind == 12 else items
        if kind < 17:
            return self.text()
        if kind == 17:
            return self.choose((True, False, 0, 1, -1, 33, 4326, 32633, 6267, 2**31, -2**63, 10**30, 10**400, 10**5000))
        if kind == 18:
            return self.choose((fractions.Fraction(1, 3), decimal.Decimal("12.5"), decimal.Decimal("sNaN"), 1j, {}, set(),
                                np.float32(3.5), np.int64(-7), np.bool_(True), np.datetime64("NaT"), range(3), Ellipsis))
        if kind == 19:
            return self.raw(self.below(40))
        if kind == 20:
            return Failing()
        if kind == 21:
            return Column(self.array(1))
        if kind == 22:
            return memoryview(self.raw(8 * self.below(4))).cast("d")
        return None

    def options(self):
        """Keywords of a conversion but `out`."""
        options = {}
        if self.below(4) == 0:
            options["errors"] = self.choose(("raise", "raise", "nan", "", None))
        if self.below(4) == 0:
            options["threads"] = self.choose((1, 2, 3, 0, -1, True, 10**30, 1.0, None))
        return options


def expect(holds, what):
    if not holds:
        raise AssertionError(what)


def same(a, b):
    return a.shape == b.shape and a.dtype == b.dtype and a.tobytes() == b.tobytes()


def conversions():
    lambert = Projection("lcc", ellipsoid="GRS 1980", lat1=33, lat2=45, lat0=39, lon0=-96)
    texas = Projection.state_plane("Texas Central", 1927, unit="us-ft", accuracy="stated")
    ways = [Transformer("EPSG:32039", "EPSG:4326"), Transformer("EPSG:4267", "EPSG:4807"), Transformer("WGS 84", "DHDN"),
            Transformer(lambert, texas), Transformer(lambert, lambert)]
    both = [lambert, texas, Projection.utm(33), Projection("Robinson"), Projection("Gnomonic", lat1=40), *ways]
    corners = [[0, 0, 10, 20], [1, 0, 12, 20], [0, 1, 10, 23], [1, 1, 12, 24]]
    sheets = [Georef(corners, method) for method in ("affine", "tps", "natural", "idw")]
    return [way for one in both for way in (one.forward, one.inverse)] + [sheet.forward for sheet in sheets]


CONVERSIONS = conversions()


def plain(values):
    """The values as an array of doubles of its own, where that is plainly what they are."""
    array = np.asarray(np.ma.filled(values.astype("f8"), np.nan)) if isinstance(values, np.ma.MaskedArray) \
        else np.asarray(values)
    return np.array(array, "f8", order="C") if array.dtype.kind in "fiu" else None


def expected(convert, x, y):
    """The coordinates by one straight call."""
    if y is None:
        x, y = x[..., 0], x[..., 1]
    x, y = (np.array(values, order="C") for values in np.broadcast_arrays(x, y))
    return [result.reshape(x.shape) for result in convert(x.ravel(), y.ravel(), threads=1)]


def parts(result, shape):
    """Both coordinates of what a conversion gave."""
    if isinstance(result, np.ndarray):
        expect(result.shape == (*shape, 2), "points come back as points")
        return [result[..., 0], result[..., 1]]
    expect(isinstance(result, (tuple, list)) and len(result) == 2, "two results")
    return result


def target(given, x, y):
    """Something for `out`: of the right shape most times, sometimes over the points that are given."""
    kind = given.below(8)
    if kind == 0:
        return given.value()
    if kind == 1 and isinstance(x, np.ndarray):
        return (x, y) if y is not None else x
    if kind == 2 and isinstance(x, np.ndarray) and x.ndim == 1 and len(x) > 1 and x.flags.writeable:
        return x[::-1], np.zeros(len(x))
    shape = np.broadcast_shapes(np.shape(x), np.shape(y) if y is not None else ())
    if y is None or kind == 3:
        return given.laid_out(np.zeros(shape if y is None else (*shape, 2)))
    return given.laid_out(np.zeros(shape)), given.laid_out(np.zeros(shape))


def run_conversion(given):
    convert = given.choose(CONVERSIONS)
    x = given.value() if given.below(4) == 0 else given.array()
    y = given.choose((None, x)) if given.below(2) else given.array() if given.below(4) else given.value()
    options = given.options()
    if given.below(2):
        options["out"] = target(given, x, y)
    arrays = [one for one in (x, y) if isinstance(one, np.ndarray) and not one.dtype.hasobject]
    before = [one.copy() for one in arrays]
    clean = [plain(one) if isinstance(one, np.ndarray) else None for one in (x, y)]
    wanted = None
    try:
        if clean[0] is not None and (y is None or clean[1] is not None):
            wanted = expected(convert, *clean)
    except (ValueError, IndexError):
        pass
    try:
        result = convert(x, y, **options)
    except REFUSALS:
        expect(all(map(same, arrays, before)), "a call that is refused changes nothing")
        raise
    if options.get("out") is None and not (y is None and result is x):
        expect(all(map(same, arrays, before)), "what is given stays")
    if options.get("out") is not None:
        expect(result is options["out"], "out is what comes back")
    if wanted is not None:
        for got, one in zip(parts(result, wanted[0].shape), wanted):
            got = np.asarray(np.ma.getdata(got), "f8")
            expect(got.shape == one.shape and np.array_equal(got, one, equal_nan=True), "the same whatever the layout")
            expect(not (np.abs(one) >= 1e308).any(), "no marker is left")


def run_projection(given):
    keywords = {given.choose(KEYWORDS): given.value() if given.below(8) == 0 else given.number()
                for _ in range(given.below(6))}
    if given.below(4) == 0:
        keywords["datum"] = given.text()
    if given.below(4) == 0:
        keywords["zone"] = given.text()
    projection = Projection(given.text() if given.below(3) else given.choose(TEXTS[:29]), **keywords)
    check_kept(projection)
    expect(projection.parameters is not None and projection.unit, "it tells its parameters")
    lon, lat = (np.array([given.number() for _ in range(5)]) for _ in range(2))
    x, y = projection.forward(lon, lat)
    expect((np.isfinite(x) & np.isfinite(y) | np.isnan(x) & np.isnan(y)).all(), "a point or NaN")
    lon, lat = projection.inverse(x, y)
    expect((np.isfinite(lon) & np.isfinite(lat) | np.isnan(lon) & np.isnan(lat)).all(), "a place or NaN")
    inside = projection.contains(lon, lat)
    expect(inside.dtype == bool and inside.shape == lon.shape, "a truth for each place")
    orvex.clip(projection, lines=given.value() if given.below(2) else np.column_stack([lon, lat]))
    Transformer(projection, given.text()).transform(lon, lat)


def run_clip(given):
    projection = given.choose((Projection.utm(33), Projection("Orthographic", lat1=40), Projection("Mercator", lon0=170)))
    kind = given.choose(("rings", "lines", "shapes"))
    shapes = given.value() if given.below(2) else [
        np.array([[given.number(), given.number()] for _ in range(given.below(9))]) for _ in range(given.below(4))]
    for piece in orvex.clip(projection, **{kind: shapes}):
        expect(piece.ndim == 2 and piece.shape[1] == 2 and np.isfinite(piece).all(), "a piece is points")
        expect(kind != "rings" or (piece[0] == piece[-1]).all(), "a ring is closed")


def run_contains(given):
    projection = given.choose((Projection.utm(33), Projection("Robinson")))
    lon, lat = given.value(), given.value()
    inside = projection.contains(lon, lat)
    lon, lat = (one.to_numpy() if isinstance(one, Column) else np.asarray(one) for one in (lon, lat))
    shape = np.broadcast_shapes(lon.shape, lat.shape)
    expect(np.shape(inside) == shape, "a truth for each place")


def run_georef(given):
    controls = given.value() if given.below(4) == 0 else np.array(
        [[given.number() for _ in range(4)] for _ in range(given.below(14))])
    sheet = Georef(controls, given.choose(list(catalogue._georef.methods())) if given.below(8) else given.text())
    expect(sheet.residuals.shape == (len(sheet.controls),), "a residual for each control")
    repr(sheet)
    x, y = sheet.forward(np.array([given.number(), 1.0]), np.array([given.number(), 2.0]))
    expect(x.shape == y.shape == (2,), "an image for each point")


def check_kept(thing):
    again = pickle.loads(pickle.dumps(thing))
    expect(again == thing and hash(again) == hash(thing), "what is pickled is the same again")
    repr(thing)


def run_datum(given):
    keywords = {given.choose(("dx", "dy", "dz", "rx", "ry", "rz", "k", "prime_meridian", "radius", "flattening")):
                given.value() if given.below(8) == 0 else given.number() for _ in range(given.below(5))}
    if given.below(2):
        keywords["method"] = given.choose(("bursa", "molodensky", "none"))
    name = given.text()
    datum = Datum(name, **keywords)
    check_kept(datum)
    expect(datum.parameters is not None, "it tells its parameters")
    Transformer(datum, "WGS 84").transform(np.array([given.number()]), np.array([given.number()]))
    ini = os.path.join(DIRECTORY, "python.ini")
    if os.path.exists(ini):
        os.remove(ini)
    datum.save(ini)
    again = Datum(name, ini=ini)
    expect(again.number == 0 and again.method == datum.method, "what is stored is read again")


def run_texts(given):
    text = given.text()
    call = given.choose((
        lambda: orvex.parse_angle(text), lambda: orvex.parse_angle(given.value()), lambda: Datum(text),
        lambda: Datum(given.value()), lambda: Projection(given.value()), lambda: Projection.utm(given.value()),
        lambda: Projection.state_plane(given.value(), given.choose((1927, 1983, 0))), lambda: orvex.parameters(text),
        lambda: Projection.from_crs(given.value()), lambda: Transformer(text, given.value()), lambda: orvex.systems(text),
        lambda: orvex.format_angle(given.number(), given.choose(("lon", "lat", "", text)),
                                   style=given.choose(("d", "dm", "dms", text)), decimals=given.below(18)),
        lambda: Datum(text, ini=given.value())))
    call()


def run_core(given):
    """The compiled part by itself, with what the Python side would have refused."""
    bytes_ = bytearray(Projection.utm(33)._record.to_bytes())
    for _ in range(given.below(6)):
        bytes_[given.below(len(bytes_))] = given.below(256)
    recipes = [_core.transform_plane([given.number() for _ in range(6)]),
               _core.count_angles(given.number(), given.number(), True), None]
    conversion = _core.Conversion(recipes[:1 + given.below(2)])
    record = _core.Record(4, {15: 0, 20: 47}, False)
    call = given.choose((
        lambda: _core.Record.from_bytes(bytes(bytes_)), lambda: _core.Record.from_bytes(given.raw(given.below(256))),
        lambda: _core.Record(given.below(32), {given.below(26): given.number() for _ in range(4)}, True),
        lambda: conversion.convert(*(given.array(1) for _ in range(4)), given.below(3)),
        lambda: conversion.convert(*(given.value() for _ in range(4)), 1), lambda: _core.Conversion(recipes),
        lambda: record.contains(given.array(), given.array()), lambda: record.clip_line(given.value()),
        lambda: record.clip_rings([given.array(2), given.array(2)]), lambda: _core.new_array([given.below(9) for _ in range(3)]),
        lambda: _core.change_datum(given.below(256), given.below(256), None, None, True),
        lambda: _core.change_datum(0, 3, (given.below(9), given.below(60), *(given.number() for _ in range(10))), None, True),
        lambda: _core.georeference(given.below(256) - 99, given.array(2), given.array(2)),
        lambda: _core.used_parameters(given.below(256) - 99), lambda: _core.zone_exists(given.below(99), given.below(256)),
        lambda: _core.format_angle(given.number(), struct.unpack("<i", given.raw(4))[0], *"d'\""),
        lambda: _core.parse_angle(given.text()), lambda: _core.find_system(given.text())))
    made = call()
    if isinstance(made, _core.Record):
        for exact in (False, True):
            both = _core.Conversion([made.forward(exact), made.inverse(exact)])
            both.point(given.number(), given.number())
    elif isinstance(made, _core.Recipe):
        _core.Conversion([made]).point(given.number(), given.number())


KINDS = (run_conversion, run_conversion, run_conversion, run_projection, run_projection, run_clip, run_contains, run_georef,
         run_datum, run_texts, run_core)


def run(data):
    given = Input(data)
    try:
        given.choose(KINDS)(given)
    except UnicodeDecodeError as error:
        raise AssertionError(f"a text that cannot be told: {error}") from error
    except REFUSALS:
        pass
