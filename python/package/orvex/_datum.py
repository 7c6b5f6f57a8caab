"""Geodetic datums."""

import os
import re
from typing import Any, Dict, Optional, Tuple, Union

from . import _core, _parameters
from ._errors import OrvexError
from ._names import did_you_mean, find_name, squashed

#: Method, ellipsoid, prime meridian, dx, dy, dz, rx, ry, rz, k, semi-major axis, flattening.
DatumParameters = Tuple[int, int, float, float, float, float, float, float, float, float, float, float]
_WGS_84 = 3
METHODS = ("none", "NADCON", "Bursa-Wolf", "Molodensky", "HARN", "regression", "NTv2")
_CUSTOM_METHODS = {"none": 0, "bursawolf": 2, "bursa": 2, "molodensky": 3}
_FIGURE = ("ellipsoid", "radius", "flattening")
_SHIFTS, _ROTATIONS = ("dx", "dy", "dz"), ("rx", "ry", "rz", "k")
#: Names that people type.
_ALIASES = {
    "WGS 84": "World Geodetic System 1984", "WGS 72": "World Geodetic System 1972",
    "NAD27": "North American Datum 1927", "NAD 1927": "North American Datum 1927",
    "NAD83": "North American Datum 1983", "NAD 1983": "North American Datum 1983",
    "ED50": "European 1950 - Mean", "OSGB36": "Ord. Surv. of Gr. Br. 1936", "DHDN": "DHDN (Bursa-Wolf)",
    "CH1903": "Switzerland - CH1903 (Bursa-Wolf)", "Pulkovo 1942": "Pulkovo 1942 (Bursa-Wolf)",
}
_ROWS = _core.datums()
_NAMES = [row[1] for row in _ROWS]


class Datum:
    """A geodetic datum: what longitudes and latitudes refer to. Every datum is related to WGS 84.

    >>> Datum("NAD 1927 - CONUS (MRE)"), Datum("WGS 84"), Datum(6267)
    >>> Datum.custom("bursa", ellipsoid="WGS 72", dz=4.5, rz=0.554, k=0.219, name="WGS 72 BE")

    name
        One of :func:`orvex.datums` by name, or by POSC (EPSG) code or number in the list; with ``ini`` also one that is
        stored in that file.
    parameters
        With parameters the datum is one of your own: see :meth:`custom`.
    """

    __slots__ = ("_name", "_number", "_parameters")

    def __init__(self, name: Union[str, int, None] = None, *, ini: Union[str, "os.PathLike[str]", None] = None,
                 **parameters: Any) -> None:
        if parameters:
            if ini is not None:
                raise OrvexError("a datum is either stored or given by its parameters")
            own = _custom(parameters)
            self._set("custom" if name is None else str(name), 0, own)
            _core.Conversion([_core.change_datum(0, _WGS_84, own, None, True)])  # refuses what cannot be
        elif ini is not None and isinstance(name, str) and (stored := _stored(os.fspath(ini), name)):
            self._set(stored, 0, _core.stored_datum(os.fspath(ini), stored))
            if self._parameters is None:
                raise OrvexError(f"the entry of the custom datum {stored!r} cannot be read")
        else:
            number = _built_in(name, [] if ini is None else _core.stored_datums(os.fspath(ini)))
            self._set(*Datum.numbered(number)._key())

    def _set(self, name: str, number: int, parameters: Optional[DatumParameters]) -> None:
        self._name, self._number, self._parameters = name, number, parameters

    @classmethod
    def custom(cls, method: str = "molodensky", *, ellipsoid: Union[str, int, None] = None, name: str = "custom",
               **parameters: float) -> "Datum":
        """A datum of your own by the step from it to WGS 84.

        method
            "molodensky": dx, dy, dz. "bursa": also rx, ry, rz, k. "none": as good as WGS 84.
        ellipsoid
            Name or POSC number, else WGS 84; or ``radius`` (metres) and ``flattening`` (f).
        parameters
            dx, dy, dz in metres; rx, ry, rz in arcseconds, position-vector convention; k in parts per million;
            prime_meridian in degrees east of Greenwich.
        """
        given: Dict[str, Any] = {"method": method, **parameters}
        if ellipsoid is not None:
            given["ellipsoid"] = ellipsoid
        return cls(name, **given)

    @classmethod
    def numbered(cls, number: int) -> "Datum":
        """The datum of a number in the list."""
        datum = object.__new__(cls)
        datum._set(_NAMES[number - 1], number, _core.datum_parameters(number))
        return datum

    @classmethod
    def of(cls, datum: Union["Datum", str, int]) -> "Datum":
        """The datum itself, or the one of that name or number."""
        return datum if isinstance(datum, Datum) else cls(datum)

    def save(self, ini: Union[str, "os.PathLike[str]"], name: Optional[str] = None) -> None:
        """Stores a datum of one's own in an INI file, replacing one of that name there."""
        if self._number or self._parameters is None:
            raise OrvexError(f"{self._name} is built in")
        if not _core.store_datum(os.fspath(ini), name or self._name, self._parameters):
            raise OrvexError(f"the datum {name or self._name!r} cannot be stored in {os.fspath(ini)}: the name is that "
                             "of a built-in datum, or the file cannot be written")

    @property
    def name(self) -> str:
        """Name in the catalogue, or the one that was given."""
        return self._name

    @property
    def number(self) -> int:
        """Number in the catalogue; 0 for a datum of one's own."""
        return self._number

    @property
    def method(self) -> str:
        """How the step to WGS 84 is computed: "Molodensky", "Bursa-Wolf", "regression", "NADCON", "NTv2" or "none"."""
        return METHODS[self._parameters[0] if self._parameters else _ROWS[self._number - 1][2]]

    def from_greenwich(self) -> "Datum":
        """The same datum with longitudes that count from Greenwich."""
        if not self._parameters or not self._parameters[2]:
            return self
        return _restored(self._name, 0, (*self._parameters[:2], 0.0, *self._parameters[3:]))

    @property
    def can_be_target(self) -> bool:
        """Whether it can be converted to; regression and NADCON datums cannot."""
        return _ROWS[self._number - 1][3] if self._number else True

    @property
    def parameters(self) -> Dict[str, Any]:
        """The step to WGS 84, as :meth:`custom` takes it; empty for datums of grids and regression equations."""
        if self._parameters is None:
            return {}
        method, ellipsoid, meridian, *shifts, radius, flattening = self._parameters
        shown: Dict[str, Any] = {"method": METHODS[method], "ellipsoid": _parameters.ellipsoid_name(ellipsoid),
                                 "prime_meridian": meridian}
        shown.update(zip(_SHIFTS + _ROTATIONS, shifts))
        if not ellipsoid:
            shown.update(radius=radius, flattening=flattening)
        return shown

    def parameters_or_fail(self) -> DatumParameters:
        if self._parameters is None:
            raise OrvexError(f"{self._name} has no parameters: it is given by a grid or by regression equations")
        return self._parameters

    def figure(self) -> Dict[int, Union[int, float]]:
        """The ellipsoid by the ids of the parameter catalogue."""
        if self._parameters is None:
            raise OrvexError(f"{self._name} does not tell its ellipsoid: name it, ellipsoid=...")
        ellipsoid, radius, flattening = self._parameters[1], self._parameters[-2], self._parameters[-1]
        if ellipsoid:
            return {_parameters.ELLIPSOID: ellipsoid}
        return {_parameters.ELLIPSOID: 0, _parameters.RADIUS: radius, _parameters.FLATTENING: flattening}

    def _key(self) -> Tuple[Any, ...]:
        return self._name, self._number, self._parameters

    def same_as(self, other: "Datum") -> bool:
        """Whether nothing lies between the two but the name."""
        return self._number == other._number and self._parameters == other._parameters

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Datum) and self._key() == other._key()

    def __hash__(self) -> int:
        return hash(self._key())

    def __reduce__(self) -> Tuple[Any, ...]:
        return _restored, self._key()

    def __repr__(self) -> str:
        if self._number:
            return f"Datum({self._name!r})"
        return f"Datum({', '.join([repr(self._name), *(f'{k}={v!r}' for k, v in self.parameters.items())])})"


def recipe(from_: Datum, to: Datum, exact: bool) -> _core.Recipe:
    """The step from one datum to another; refused by the library where there is no way."""
    return _core.change_datum(from_.number, to.number, None if from_.number else from_.parameters_or_fail(),
                              None if to.number else to.parameters_or_fail(), exact)


def _stored(ini: str, name: str) -> Optional[str]:
    """The name under which a file has a datum. One with letters beyond ASCII is listed in another form, but found."""
    key = squashed(name)
    for stored in _core.stored_datums(ini):
        if stored == name or (key and squashed(stored) == key):
            return stored
    return name if not name.isascii() and _core.stored_datum(ini, name) is not None else None


def _restored(name: str, number: int, parameters: Optional[DatumParameters]) -> Datum:
    datum = object.__new__(Datum)
    datum._set(name, number, parameters)
    return datum


def _built_in(name: Union[str, int, None], stored: "list[str]") -> int:
    if isinstance(name, int) and not isinstance(name, bool):
        for row in _ROWS:
            if row[4] == name:
                return row[0]
        if 1 <= name <= len(_NAMES):
            return name
        raise OrvexError(f"no datum has the number or POSC code {name if abs(name) < 10**18 else 'that was given'}")
    if isinstance(name, str) and re.fullmatch(r"((?i:EPSG):)?[0-9]{1,18}", name):
        return _built_in(int(name.rpartition(":")[2]), stored)
    try:
        return find_name("datum", name, _NAMES, _ALIASES) + 1
    except OrvexError:
        if not stored or not isinstance(name, str):
            raise
        raise OrvexError(f"unknown datum {name!r}{did_you_mean(name, stored + _NAMES)}") from None


def _custom(given: Dict[str, Any]) -> DatumParameters:
    allowed = ("method", "prime_meridian", *_FIGURE, *_SHIFTS, *_ROTATIONS)
    for keyword in given:
        if keyword not in allowed:
            raise OrvexError(f"unknown parameter {keyword!r}"
                             + (did_you_mean(keyword, allowed) or f"; a datum takes {', '.join(allowed)}"))
    method = given.get("method", "molodensky")
    if not isinstance(method, str) or squashed(method) not in _CUSTOM_METHODS:
        raise OrvexError(f'the method of a datum of one\'s own is "molodensky", "bursa" or "none", not {method!r}')
    number = _CUSTOM_METHODS[squashed(method)]
    for keyword in _ROTATIONS:
        if keyword in given and number != _CUSTOM_METHODS["bursa"]:
            raise OrvexError(f"{method} does not use {keyword}; bursa does")
    value = {name: _parameters.number(name, given.get(name, 0.0)) for name in _SHIFTS + _ROTATIONS}
    meridian = _parameters.degrees("prime_meridian", given.get("prime_meridian", 0.0))
    ellipsoid, radius, flattening = _figure(given)
    return (number, ellipsoid, meridian, value["dx"], value["dy"], value["dz"], value["rx"], value["ry"], value["rz"],
            value["k"], radius, flattening)


def _figure(given: Dict[str, Any]) -> Tuple[int, float, float]:
    if "radius" in given:
        if "ellipsoid" in given:
            raise OrvexError("give either an ellipsoid or a radius")
        return 0, _parameters.positive("radius", given["radius"]), _parameters.number("flattening", given.get("flattening", 0))
    if "flattening" in given:
        raise OrvexError("flattening needs radius as well")
    number = _parameters.ellipsoid_number(given.get("ellipsoid", "WGS 84"))
    _, _, radius, flattening, _ = _parameters.ELLIPSOIDS[number - 1]
    return number, radius, flattening
