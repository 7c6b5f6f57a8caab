"""What the library knows, as lists of named rows or, with ``frame=True``, as pandas DataFrames."""

from typing import Any, List, NamedTuple, Optional, Tuple, Type

from . import _core, _georef, _parameters
from ._datum import METHODS
from ._names import find_name


class ProjectionInfo(NamedTuple):
    number: int
    name: str
    parameters: Tuple[str, ...]  #: keywords, in display order


class EllipsoidInfo(NamedTuple):
    number: int
    name: str
    radius: float  #: semi-major axis, metres
    flattening: float  #: f, not 1/f
    posc: Optional[int]


class DatumInfo(NamedTuple):
    number: int
    name: str
    method: str
    can_be_target: bool
    posc: Optional[int]


class ZoneInfo(NamedTuple):
    number: int
    name: str
    usgs: Optional[int]
    posc1927: Optional[int]
    posc1983: Optional[int]


class ParameterInfo(NamedTuple):
    keyword: str
    name: str
    unit: str
    used: bool


class MethodInfo(NamedTuple):
    short: str
    name: str
    least_controls: int


class SystemInfo(NamedTuple):
    code: int
    name: str
    projected: bool
    area: str
    deprecated: bool


def _table(kind: Type[Any], rows: List[Any], frame: bool) -> Any:
    if not frame:
        return rows
    import pandas

    table = pandas.DataFrame.from_records(rows, columns=kind._fields)
    for name in ("usgs", "posc", "posc1927", "posc1983"):
        if name in table:
            table[name] = table[name].astype("Int64")
    return table


def projections(frame: bool = False) -> Any:
    """All projections with the parameters they take: a list of ProjectionInfo."""
    rows = [ProjectionInfo(row[0], row[1], tuple(_parameters.used_by(row[0]))) for row in _core.projections()]
    return _table(ProjectionInfo, rows, frame)


def ellipsoids(frame: bool = False) -> Any:
    """All ellipsoids: a list of EllipsoidInfo."""
    return _table(EllipsoidInfo, [EllipsoidInfo(*row) for row in _core.ellipsoids()], frame)


def datums(frame: bool = False) -> Any:
    """All built-in datums: a list of DatumInfo."""
    rows = [DatumInfo(number, name, METHODS[method], target, posc)
            for number, name, method, target, posc in _core.datums()]
    return _table(DatumInfo, rows, frame)


def zones(year: Optional[int] = None, frame: bool = False) -> Any:
    """US state plane zones, all or those of 1927 or 1983: a list of ZoneInfo."""
    rows = [ZoneInfo(number, name, usgs or None, posc27, posc83)
            for number, name, usgs, posc27, posc83 in _core.zones()]
    if year is not None:
        rows = [row for row in rows if _core.zone_exists(_parameters.state_plane_type(year), row.number)]
    return _table(ZoneInfo, rows, frame)


def parameters(projection: str, frame: bool = False) -> Any:
    """All parameters there are, and whether a projection uses them: a list of ParameterInfo."""
    rows = _core.projections()
    used = _parameters.used_by(
        rows[find_name("projection", projection, [row[1] for row in rows], _parameters.PROJECTION_ALIASES)][0])
    names = {row[0]: row[1] for row in _core.parameters()}
    infos = [ParameterInfo(keyword, names[number], _parameters.unit_of(number), keyword in used)
             for keyword, number in _parameters.KEYWORDS.items()]
    return _table(ParameterInfo, infos, frame)


def methods(frame: bool = False) -> Any:
    """Ways to fit a :class:`orvex.Georef`: a list of MethodInfo."""
    rows = [MethodInfo(short, name, least) for short, (name, least) in _georef.methods().items()]
    return _table(MethodInfo, rows, frame)


def systems(text: str = "", frame: bool = False) -> Any:
    """Registered coordinate systems whose code, name or area holds every word of a text: a list of SystemInfo."""
    return _table(SystemInfo, [SystemInfo(*row) for row in _core.search_systems(text)], frame)
