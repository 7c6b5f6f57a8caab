"""Names, units and values of the parameters of projections."""

import difflib
import functools
import math
from typing import Any, Dict, Iterable, Mapping, Tuple, Union

from . import _core
from ._errors import OrvexError
from ._names import did_you_mean, find_name
from .angles import parse_angle

Value = Union[bool, int, float]

SCALE, FALSE_EASTING, FALSE_NORTHING, K0, SOUTH, ZONE, ELLIPSOID, RADIUS, FLATTENING = 2, 3, 4, 13, 14, 15, 20, 21, 22
LON0 = 6
DEGREES = frozenset((5, 6, 7, 8, 9, 10, 11, 12, 17))
FLAGS = frozenset((SOUTH, 16, 18, 19))

ELLIPSOIDS, ZONES = _core.ellipsoids(), _core.zones()

#: The keyword of each parameter of the library's catalogue.
KEYWORDS: Dict[str, int] = {
    "scale": SCALE, "false_easting": FALSE_EASTING, "false_northing": FALSE_NORTHING, "lat0": 5, "lon0": LON0,
    "lat1": 7, "lat2": 8, "lat3": 9, "lon1": 10, "lon2": 11, "lon3": 12, "k0": K0, "south": SOUTH, "zone": ZONE,
    "use_alpha": 16, "alpha": 17, "rotate": 18, "u_offset": 19, "ellipsoid": ELLIPSOID, "radius": RADIUS,
    "flattening": FLATTENING,
}
NAMES = {number: keyword for keyword, number in KEYWORDS.items()}
OTHER_KEYWORDS = ("datum", "unit", "accuracy", "wrap")

#: Metres of each unit.
UNITS: Dict[str, float] = {
    "m": 1.0, "mm": 0.001, "cm": 0.01, "km": 1000.0, "ft": 0.3048, "us-ft": 1200 / 3937, "yd": 0.9144, "mi": 1609.344,
    "us-mi": 5280 * 1200 / 3937, "nmi": 1852.0,
}
_UNIT_ALIASES = {"metre": "m", "meter": "m", "metres": "m", "meters": "m", "foot": "ft", "feet": "ft", "ftus": "us-ft",
                 "ussurveyfoot": "us-ft", "ussurveyfeet": "us-ft", "kilometre": "km", "kilometer": "km"}

#: Number of the projection that stands for each state plane system.
STATE_PLANE = {1927: 9, 1983: 10}

PROJECTION_ALIASES = {
    "utm": "Universal Transverse Mercator (UTM)", "lcc": "Lambert Conformal Conic", "tm": "Transverse Mercator",
    "tmerc": "Transverse Mercator", "merc": "Mercator", "aea": "Albers Equal Area Conic",
    "albers": "Albers Equal Area Conic", "laea": "Lambert Azimuthal Equal Area", "aeqd": "Azimuthal Equidistant",
    "platecarree": "Equidistant Cylindrical", "gausskruger": "Gauss-Kruger / Gauss Conformal",
    "longlat": "Unprojected Lat/Long", "latlong": "Unprojected Lat/Long",
}


def state_plane_type(year: int) -> int:
    if year not in STATE_PLANE:
        raise OrvexError(f"the state plane systems are those of 1927 and 1983, not {year!r}")
    return STATE_PLANE[year]


def unit_of(number_: int) -> str:
    """What a parameter is measured in."""
    if number_ in DEGREES:
        return "degrees"
    return {FALSE_EASTING: "map units", FALSE_NORTHING: "map units", RADIUS: "metres"}.get(number_, "")


def metres_of(unit: Union[str, float]) -> float:
    """Metres of a unit by name, or of a unit given as its metres."""
    if isinstance(unit, str):
        names = list(UNITS)
        return UNITS[names[find_name("unit", unit, names, _UNIT_ALIASES)]]
    return positive("unit", unit)


def unit_name(metres: float) -> str:
    """The name of a unit of so many metres, or the metres as text."""
    return next((name for name, value in UNITS.items() if value == metres), repr(metres))


def ellipsoid_name(number_: int) -> str:
    return ELLIPSOIDS[number_ - 1][1] if number_ else "user-defined"


def number(name: str, value: Any) -> float:
    if isinstance(value, bool):
        raise OrvexError(f"{name} is a number, not {value!r}")
    try:
        result = float(value)
    except (TypeError, ValueError, OverflowError):
        raise OrvexError(f"{name} is a number, not {value!r}") from None
    if not math.isfinite(result):
        raise OrvexError(f"{name} is a finite number, not {value!r}")
    return result


def positive(name: str, value: Any) -> float:
    result = number(name, value)
    if result <= 0:
        raise OrvexError(f"{name} is above 0, not {value!r}")
    return result


def degrees(name: str, value: Any) -> float:
    return parse_angle(value) if isinstance(value, str) else number(name, value)


def ellipsoid_number(ellipsoid: Union[str, int]) -> int:
    """An ellipsoid by name or POSC (EPSG) number."""
    if isinstance(ellipsoid, int) and not isinstance(ellipsoid, bool):
        for row in ELLIPSOIDS:
            if row[4] == ellipsoid:
                return row[0]
        raise OrvexError(f"no ellipsoid has the POSC number {ellipsoid}")
    names = [row[1] for row in ELLIPSOIDS]
    return ELLIPSOIDS[find_name("ellipsoid", ellipsoid, names, {"GRS80": "GRS 1980 / IUGG 1980"})][0]


def zone_number(zone: Union[str, int]) -> int:
    """A state plane zone by name or USGS code."""
    if isinstance(zone, int) and not isinstance(zone, bool):
        for row in ZONES:
            if zone and row[2] == zone:
                return row[0]
        raise OrvexError(f"no state plane zone has the USGS code {zone}")
    aliases = {"Mississippi East": "Missippippi East", "Mississippi West": "Missippippi West"}
    return ZONES[find_name("state plane zone", zone, [row[1] for row in ZONES], aliases)][0]


@functools.lru_cache(maxsize=None)
def _used_ids(projection: int) -> Tuple[int, ...]:
    return tuple(_core.used_parameters(projection))


def used_by(projection: int) -> Dict[str, int]:
    """Keywords that a projection takes, in display order."""
    used = {NAMES[number]: number for number in _used_ids(projection)}
    if ELLIPSOID in used.values():
        used.update(radius=RADIUS, flattening=FLATTENING)
    return used


def read(projection: int, projection_name: str, given: Mapping[str, Any]) -> Dict[int, Value]:
    """The values of keywords by the ids of the catalogue. A keyword that does not exist, or that this projection does
    not use, is refused with what may have been meant."""
    used = used_by(projection)
    values: Dict[int, Value] = {}
    for keyword, value in given.items():
        if keyword not in KEYWORDS:
            raise OrvexError(f"unknown parameter {keyword!r}"
                             + (_suggestion(keyword, used) or f"; {projection_name} takes {', '.join(used) or 'none'}"))
        if keyword not in used:
            raise OrvexError(f"{projection_name} does not use {keyword}; it uses: {', '.join(used) or 'none'}")
        values[used[keyword]] = _value(keyword, used[keyword], value)
    return values


def _suggestion(keyword: str, used: Iterable[str]) -> str:
    plain = keyword.replace("_", "").lower()
    spellings = {name.replace("_", ""): name for name in [*used, *OTHER_KEYWORDS]}
    spellings.update({"x0": "false_easting", "y0": "false_northing", "lonc": "lon0", "latts": "lat1", "k": "k0"})
    close = difflib.get_close_matches(plain, spellings, n=1, cutoff=0.6)
    return did_you_mean(spellings[close[0]], [spellings[close[0]]]) if close else ""


def _value(keyword: str, number_: int, value: Any) -> Value:
    if number_ == ELLIPSOID:
        return ellipsoid_number(value)
    if number_ == ZONE:
        return zone_number(value)
    if number_ in FLAGS:
        if value not in (True, False):
            raise OrvexError(f"{keyword} is True or False, not {value!r}")
        return bool(value)
    if number_ in DEGREES:
        return degrees(keyword, value)
    return positive(keyword, value) if number_ in (SCALE, K0, RADIUS) else number(keyword, value)
