"""Coordinate systems of the registry by code or name."""

from typing import NamedTuple, Optional, Tuple, Union

from . import _core
from ._datum import Datum
from ._errors import OrvexError


class Area(NamedTuple):
    """Where a system is used: bounds in degrees; west is greater than east where it crosses the 180th meridian."""

    name: str
    west: float
    south: float
    east: float
    north: float


class System(NamedTuple):
    """A coordinate system. A projected one has the bytes of its projection, and its unit is metres; in a geographic one
    the unit is degrees, and longitudes count from the meridian."""

    code: int
    name: str
    record: Optional[bytes]
    plane: Optional[Tuple[float, ...]]  #: what is done to the map's coordinates after the projection
    unit: float
    meridian: float
    frame: int  #: equal for systems on the same datum, whatever their prime meridian
    datum_name: str
    datum: Optional[Datum]  #: with longitudes from Greenwich; None when the catalogue lacks it
    area: Area
    deprecated: bool


def find(system: Union[str, int]) -> System:
    """A system by code (32039, "EPSG:32039") or name ("NAD27 / Texas Central")."""
    if isinstance(system, bool) or not isinstance(system, (str, int)):
        raise OrvexError(f"a coordinate system goes by its code or name, not by {system!r}")
    try:
        text = str(system)
        text.encode()
    except ValueError:  # a number of thousands of digits, half a surrogate pair
        raise OrvexError("no coordinate system has such a code or name") from None
    code, name, record, plane, unit, meridian, frame, datum_name, catalogue, area, deprecated = _core.find_system(text)
    datum = Datum.numbered(catalogue).from_greenwich() if catalogue else None
    return System(code, name, record, None if plane is None else tuple(plane), unit, meridian, frame, datum_name, datum,
                  Area(*area), deprecated)
