"""Map projections."""

from typing import Any, Dict, List, Optional, Tuple, Union

import numpy as np

from . import _arrays, _core, _parameters, _systems
from ._datum import Datum
from ._errors import OrvexError
from ._names import find_name
from ._parameters import ELLIPSOID, FALSE_EASTING, FALSE_NORTHING, FLATTENING, LON0, RADIUS, SCALE, SOUTH, ZONE

_LATLONG, _UTM = 0, 4
_CLARKE_1866, _GRS_1980, _WGS_84 = 15, 3, 47
_NAMES = [row[1] for row in _core.projections()]


Plane = Tuple[float, ...]


def is_exact(accuracy: str) -> bool:
    if accuracy not in ("exact", "stated"):
        raise OrvexError(f'accuracy is "exact" or "stated", not {accuracy!r}')
    return accuracy == "exact"


class Projection:
    """A map projection with its parameters; converts longitude and latitude to x and y, and back.

    >>> lambert = Projection("Lambert Conformal Conic", ellipsoid="GRS 1980", lat1=33, lat2=45, lat0=39, lon0=-96)
    >>> x, y = lambert.forward(-75.0, 35.0)

    name
        One of :func:`orvex.projections`, in any case; a unique beginning or a usual short name ("utm", "lcc") will do.
    ellipsoid
        Name or POSC number (:func:`orvex.ellipsoids`); that of the datum unless said otherwise, else WGS 84.
        ``radius`` (metres) and ``flattening`` (f, not 1/f) make one of your own; a radius alone makes a sphere.
    datum
        What the longitudes and latitudes refer to, for :class:`orvex.Transformer`; None: not said.
    unit
        Of x and y, and of ``false_easting`` and ``false_northing``: "m", "km", "ft" (international), "us-ft" (US
        survey) and others, or metres as a number.
    accuracy
        "exact": the definition to rounding. "stated": what other hosts of the library have known for years.
    wrap
        For ``accuracy="stated"``: reduce longitude differences to +-180 degrees in projections that otherwise do not.
    parameters
        As the projection takes them (``orvex.parameters(name)``): lat0, lon0, lat1, lat2, lon1, lon2 and alpha in
        degrees or as text ("96d0'W"), false_easting, false_northing, k0, scale, south, rotate, u_offset, use_alpha.

    Projections do not change, can be pickled, compared and used as keys, and may be used by several threads at once.
    """

    __slots__ = ("_record", "_metres", "_accuracy", "_datum", "_plane", "_forward", "_inverse")

    def __init__(self, name: str, *, ellipsoid: Union[str, int, None] = None, datum: Union[Datum, str, int, None] = None,
                 unit: Union[str, float] = "m", accuracy: str = "exact", wrap: bool = False, **parameters: Any) -> None:
        number = find_name("projection", name, _NAMES, _parameters.PROJECTION_ALIASES)
        metres = _parameters.metres_of(unit)
        datum = None if datum is None else Datum.of(datum)
        if ellipsoid is not None:
            parameters["ellipsoid"] = ellipsoid
        values = _parameters.read(number, _NAMES[number], parameters)
        if number in _parameters.STATE_PLANE.values() and ZONE not in values:
            raise OrvexError(f'{_NAMES[number]} needs the zone, for example zone="Texas Central"')
        _complete(values, number, datum, metres)
        self._set(_core.Record(number, values, bool(wrap)), metres, accuracy, datum)

    def _set(self, record: _core.Record, metres: float, accuracy: str, datum: Optional[Datum],
             plane: Optional[Plane] = None) -> None:
        self._record, self._metres, self._accuracy, self._datum, self._plane = record, metres, accuracy, datum, plane
        self._forward = _core.Conversion(self.recipes(True))
        self._inverse = _core.Conversion(self.recipes(False))

    def recipes(self, forward: bool) -> List[_core.Recipe]:
        """The steps of one direction for the compiled part."""
        exact = is_exact(self._accuracy)
        if self._plane is None:
            return [self._record.forward(exact) if forward else self._record.inverse(exact)]
        if forward:
            return [self._record.forward(exact), _core.transform_plane(self._plane)]
        return [_core.transform_plane(_undone(self._plane)), self._record.inverse(exact)]

    @classmethod
    def utm(cls, zone: int, south: bool = False, *, ellipsoid: Union[str, int, None] = None,
            datum: Union[Datum, str, int, None] = None, unit: Union[str, float] = "m",
            accuracy: str = "exact", **parameters: Any) -> "Projection":
        """A zone of the Universal Transverse Mercator, 1 to 60; on WGS 84 unless ellipsoid or datum are given."""
        if isinstance(zone, bool) or not isinstance(zone, (int, np.integer)) or not 1 <= zone <= 60:
            raise OrvexError(f"a UTM zone is a number from 1 to 60, not {zone!r}")
        if "lon0" in parameters:
            raise OrvexError("the zone sets lon0")
        if ellipsoid is None and datum is None and not {"radius", "flattening"} & set(parameters):
            datum = "WGS 84"
        return cls(_NAMES[_UTM], ellipsoid=ellipsoid, datum=datum, unit=unit, accuracy=accuracy,
                   lon0=6.0 * int(zone) - 183.0, south=south, **parameters)

    @classmethod
    def state_plane(cls, zone: Union[str, int], year: int = 1983, *, unit: Union[str, float] = "m",
                    accuracy: str = "exact", **parameters: Any) -> "Projection":
        """A US state plane zone by name ("Texas Central") or USGS code, of the 1927 or the 1983 system.

        x and y are in metres unless another unit is named: zones of 1927 were published in US survey feet ("us-ft").
        The datum is the system's, NAD 27 or NAD 83, unless another is given.
        """
        number = _parameters.state_plane_type(year)
        datum = parameters.pop("datum", f"North American Datum {year}")
        return cls(_NAMES[number], zone=zone, datum=datum, unit=unit, accuracy=accuracy, **parameters)

    @classmethod
    def from_crs(cls, system: Union[str, int], *, accuracy: str = "exact") -> "Projection":
        """The projection of a coordinate system by code or name, in the system's unit: ``from_crs("EPSG:32039")``."""
        found = _systems.find(system)
        if found.record is None:
            raise OrvexError(f"{found.name} is geographic: longitude and latitude without a projection")
        return _restored(found.record, found.unit, accuracy, found.datum, found.plane)

    def with_accuracy(self, accuracy: str) -> "Projection":
        """The same projection, computed "exact" or "stated"."""
        if accuracy == self._accuracy:
            return self
        return _restored(self._record.to_bytes(), self._metres, accuracy, self._datum, self._plane)

    def forward(self, lon: Any, lat: Any = None, *, out: Any = None, errors: str = "nan",
                threads: Optional[int] = None) -> Any:
        """Longitude and latitude in degrees, east and north positive, to x (easting) and y (northing) in ``unit``.

        lon, lat
            Numbers, or lists, arrays and columns of any shapes that broadcast; two floats give two floats, anything
            else two float64 arrays of the common shape. One writable float64 array of shape (n, 2) in C order, without
            lat, is converted **in place** and returned; of any other type or layout a converted copy is returned.
            Masked points come back masked.
        out
            Where to put the results instead of new arrays: a pair of float64 arrays of the common shape, or one with
            both coordinates in its last dimension. They may be the arrays given.
        errors
            "nan": a point that cannot be projected, one with NaN or infinity among them, has NaN in both coordinates.
            "raise": OrvexError names the first such point, and no array is changed.
        threads
            How many threads share the points; default: all there are for more than 100,000 points, else one. Results
            are the same bits for any number. The interpreter's lock is released meanwhile.
        """
        return _arrays.convert(self._forward, lon, lat, out=out, errors=errors, threads=threads, names=("lon", "lat"))

    def inverse(self, x: Any, y: Any = None, *, out: Any = None, errors: str = "nan",
                threads: Optional[int] = None) -> Any:
        """x and y in ``unit`` to longitude and latitude in degrees; arguments as for :meth:`forward`."""
        return _arrays.convert(self._inverse, x, y, out=out, errors=errors, threads=threads, names=("x", "y"))

    def contains(self, lon: Any, lat: Any) -> Any:
        """Whether places (degrees; numbers or arrays that broadcast) lie in the projection's domain, that is, in what
        clipping leaves: False outside, for NaN, and beyond +-360 or +-90 degrees."""
        lons, lats = (_arrays.column(values, name).values for values, name in ((lon, "lon"), (lat, "lat")))
        try:
            lons, lats = np.broadcast_arrays(lons, lats)
        except ValueError:
            raise OrvexError(f"lon of shape {lons.shape} and lat of shape {lats.shape} do not go together") from None
        inside = self._record.contains(np.ascontiguousarray(lons).ravel(), np.ascontiguousarray(lats).ravel())
        return inside.reshape(lons.shape) if lons.ndim else bool(inside[0])

    @property
    def name(self) -> str:
        """Display name of the projection."""
        return _NAMES[self._record.type]

    @property
    def accuracy(self) -> str:
        """"exact" or "stated"."""
        return self._accuracy

    @property
    def datum(self) -> Optional[Datum]:
        """What longitudes and latitudes refer to, if that was said."""
        return self._datum

    @property
    def metres_per_unit(self) -> float:
        """Metres of one unit of x and y."""
        return self._metres

    @property
    def unit(self) -> str:
        """Name of the unit of x and y, or its metres as text."""
        return _parameters.unit_name(self._metres)

    @property
    def parameters(self) -> Dict[str, Any]:
        """The parameters that the projection uses, completed, as its constructor takes them."""
        values = self._record.values()
        shown: Dict[str, Any] = {name: values[number] for name, number in _parameters.used_by(self._record.type).items()}
        if shown.get("ellipsoid"):
            shown["ellipsoid"] = _parameters.ellipsoid_name(shown["ellipsoid"])
            del shown["radius"], shown["flattening"]
        else:
            shown.pop("ellipsoid", None)
        if "zone" in shown:
            shown["zone"] = _parameters.ZONES[shown["zone"]][1]
        for name in ("false_easting", "false_northing"):
            if name in shown:
                shown[name] /= self._metres
        if "scale" in shown:
            shown["scale"] *= self._metres
        return shown

    def figure(self) -> Optional[Tuple[float, float]]:
        """Semi-major axis in metres and flattening of the ellipsoid; None for state plane zones, whose record says none."""
        values = self._record.values()
        return (float(values[RADIUS]), float(values[FLATTENING])) if values[RADIUS] else None

    @property
    def geographic(self) -> bool:
        """True for "Unprojected Lat/Long", whose x and y are longitude and latitude."""
        return self._record.type == _LATLONG

    def _key(self) -> Tuple[Any, ...]:
        return self._record.to_bytes(), self._metres, self._accuracy, self._datum, self._plane

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Projection) and self._key() == other._key()

    def __hash__(self) -> int:
        return hash(self._key())

    def __reduce__(self) -> Tuple[Any, ...]:
        return _restored, self._key()

    def __repr__(self) -> str:
        shown = [f"{name}={value!r}" for name, value in self.parameters.items()]
        shown += [f"unit={self.unit!r}"] if self._metres != 1 else []
        shown += [f"datum={self._datum.name!r}"] if self._datum else []
        shown += ["accuracy='stated'"] if self._accuracy == "stated" else []
        return f"Projection({', '.join([repr(self.name), *shown])})"


def _complete(values: Dict[int, _parameters.Value], projection: int, datum: Optional[Datum], metres: float) -> None:
    """Adds what follows from the other parameters: the ellipsoid, and the unit as part of the scale."""
    if FLATTENING in values and RADIUS not in values:
        raise OrvexError("flattening needs radius as well")
    if RADIUS in values and ELLIPSOID in values:
        raise OrvexError("give either an ellipsoid or a radius")
    if projection in _parameters.STATE_PLANE.values():
        values[ELLIPSOID] = _CLARKE_1866 if projection == _parameters.STATE_PLANE[1927] else _GRS_1980
    elif RADIUS in values:
        values[ELLIPSOID] = 0
    elif ELLIPSOID not in values and datum is not None:
        values.update(datum.figure())
    else:
        values.setdefault(ELLIPSOID, _WGS_84)
    for origin in (FALSE_EASTING, FALSE_NORTHING):
        if origin in values:
            values[origin] *= metres
    if projection != _LATLONG:
        values[SCALE] = values.get(SCALE, 1.0) / metres
    elif metres != 1:
        raise OrvexError("longitude and latitude are in degrees; they take no unit")


def _undone(plane: Plane) -> Plane:
    """The plane transform that leads back."""
    x0, a, b, y0, c, d = plane
    determinant = a * d - b * c
    a, b, c, d = d / determinant, -b / determinant, -c / determinant, a / determinant
    return -(a * x0 + b * y0), a, b, -(c * x0 + d * y0), c, d


def _restored(record: bytes, metres: float, accuracy: str, datum: Optional[Datum], plane: Optional[Plane]) -> Projection:
    projection = object.__new__(Projection)
    projection._set(_core.Record.from_bytes(record), metres, accuracy, datum, plane)
    return projection
