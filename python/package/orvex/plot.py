"""Matplotlib: maps of the world or a part of it in any projection, cut by the library's own clipping.

>>> import matplotlib.pyplot as plt, orvex, orvex.plot
>>> mollweide = orvex.Projection("Mollweide", lon0=11)
>>> ax = orvex.plot.world(mollweide)
>>> orvex.plot.points(mollweide, [13.4, -58.4], [52.5, -34.6], ax=ax, color="crimson")
>>> plt.savefig("world.png")
"""

import functools
import pathlib
from typing import Any, Iterable, List, NamedTuple, Optional, Sequence, Tuple, Union

import numpy as np
from matplotlib import pyplot
from matplotlib.collections import LineCollection, PolyCollection

from . import _parameters
from ._arrays import Array, column
from ._clip import clip
from ._errors import OrvexError
from ._projection import Projection

_LAND = pathlib.Path(__file__).parent / "data" / "land.txt"
_WORLD_STEPS = 360  #: longest step along a line, as a part of the extent
_ROUND_STEPS = (60, 45, 30, 20, 15, 10, 5, 2, 1, 0.5, 0.25, 0.1, 0.05, 0.01)  #: degrees
_JUST_INSIDE = 1e-6  #: degrees from the edge of the map at which it is drawn
_DIFFERENCE = 1e-4  #: degrees either side, for derivatives
_WGS_84 = (6378137.0, 1 / 298.257223563)


Step = Union[float, str]


class Extent(NamedTuple):
    """A part of the globe in degrees; east is greater than west."""

    west: float
    south: float
    east: float
    north: float

    @property
    def turns_round(self) -> bool:
        return self.east - self.west >= 360

    def holds(self, points: Array) -> Array:
        lon, lat = points.T
        inside = (lat >= self.south) & (lat <= self.north)
        return inside if self.turns_round else inside & (lon >= self.west) & (lon <= self.east)


def _default_extent(projection: Projection) -> Extent:
    """All that a projection can sensibly show; clipping to its domain does the rest."""
    parameters = projection.parameters
    lon0 = float(parameters.get("lon0", 0.0))
    world = Extent(lon0 - 180, -90.0, lon0 + 180, 90.0)
    if projection.name == "Mercator":
        return world._replace(south=-85.0, north=85.0)
    if projection.name == "Miller Cylindrical":
        return world._replace(south=-89.9, north=89.9)
    if projection.name == "Lambert Conformal Conic":  # the far pole is infinitely far away
        northern = parameters["lat1"] + parameters["lat2"] >= 0
        return world._replace(**({"south": -30.0} if northern else {"north": 30.0}))
    if projection.name.startswith("Universal"):
        south, north = (-80.0, 0.0) if parameters["south"] else (0.0, 84.0)
        return Extent(lon0 - 20, south, lon0 + 20, north)
    if projection.name.startswith(("Transverse", "Gauss")):
        return world._replace(west=lon0 - 45, east=lon0 + 45)
    if projection.name.startswith("State Plane"):
        lon, lat = projection.inverse(*_zone_origin(projection))
        return Extent(lon - 8, lat - 4, lon + 8, lat + 12)
    return world


def _zone_origin(projection: Projection) -> Tuple[float, float]:
    """A point in a state plane zone: half a million metres from zero lies in or near every one of them."""
    return 600_000.0 / projection.metres_per_unit, 100_000.0 / projection.metres_per_unit


def _extent(projection: Projection, extent: Optional[Sequence[float]]) -> Extent:
    if not isinstance(projection, Projection) or projection.geographic:
        raise OrvexError(f"a map is drawn in a Projection, not in {projection!r}")
    if extent is None:
        return _default_extent(projection)
    if len(extent) != 4:
        raise OrvexError("an extent is west, south, east, north in degrees")
    west, south, east, north = (_parameters.degrees("extent", value) for value in extent)
    if east <= west:
        east += 360
    if not (-90 <= south < north <= 90 and -360 <= west < east <= 540 and east - west <= 360):
        raise OrvexError("an extent is west, south, east, north in degrees, within one turn")
    return Extent(west, south, east, north)


@functools.lru_cache(maxsize=1)
def land() -> Tuple[Array, ...]:
    """The land of the world at 1:110m (Natural Earth): closed rings of longitude and latitude, shape (n, 2)."""
    rings: List[Array] = []
    rows = [line.split() for line in _LAND.read_text(encoding="ascii").splitlines() if line and not line.startswith("#")]
    at = 0
    while at < len(rows):
        count = int(rows[at][1])
        rings.append(np.array(rows[at + 1 : at + 1 + count], np.float64))
        at += 1 + count
    return tuple(rings)


# ---- from shapes on the globe to paths on the map ----


def _dense(points: Array, step: float) -> Array:
    """Neighbours joined the short way round, with points on the way."""
    points = np.column_stack([np.unwrap(points[:, 0], period=360), points[:, 1]])
    parts = np.maximum(1, np.ceil(np.abs(np.diff(points, axis=0)).max(axis=1, initial=0) / step)).astype(int)
    places = np.concatenate([start + np.arange(count) / count for start, count in enumerate(parts)] + [[len(parts)]])
    whole = np.arange(len(points))
    return np.column_stack([np.interp(places, whole, points[:, axis]) for axis in (0, 1)])


def _runs(points: Array, kept: Array) -> Iterable[Array]:
    """The stretches of a line whose points are kept."""
    edges = np.flatnonzero(np.diff(np.concatenate([[False], kept, [False]]).astype(np.int8)))
    return (points[start:end] for start, end in edges.reshape(-1, 2) if end - start > 1)


def _paths(projection: Projection, lines: Iterable[Array], extent: Extent) -> List[Array]:
    """Lines in degrees as paths on the map: cut to the extent and to the projection's domain."""
    step = min(1.0, (extent.east - extent.west) / _WORLD_STEPS, (extent.north - extent.south) / _WORLD_STEPS * 2)
    quarter = _quarter(projection)
    paths: List[Array] = []
    for line in lines:
        dense = _dense(line, step)
        for turn in (0.0,) if extent.turns_round else (-360.0, 0.0, 360.0):
            moved = dense + (turn, 0.0)
            for run in _runs(moved, extent.holds(moved)):
                for piece in clip(projection, lines=run):
                    paths.extend(_unbroken(projection.forward(piece), quarter))
    return paths


def _quarter(projection: Projection) -> float:
    """A quarter of the ellipsoid's girth in units of the map: what lies farther apart there is no neighbour."""
    radius = (projection.figure() or _WGS_84)[0]
    return float(np.pi / 2 * radius * projection.parameters.get("scale", 1.0) / projection.metres_per_unit)


def _unbroken(path: Array, far: float) -> Iterable[Array]:
    """The stretches of a path without missing points and without leaps from one side of the map to the other."""
    leaps = np.flatnonzero(np.hypot(*np.diff(path, axis=0).T) > far) + 1
    for part in np.split(path, leaps):
        yield from _runs(part, np.isfinite(part[:, 0]))


def _add(ax: Any, collection: Any) -> Any:
    ax.add_collection(collection)
    ax.autoscale_view()
    return collection


def _axes(ax: Any) -> Any:
    return pyplot.gca() if ax is None else ax


# ---- layers ----


def coasts(projection: Projection, ax: Any = None, *, extent: Optional[Sequence[float]] = None, **style: Any) -> Any:
    """Draws the coasts of the world; ``style`` goes to the LineCollection that is returned."""
    paths = _paths(projection, land(), _extent(projection, extent))
    return _add(_axes(ax), LineCollection(paths, **{"colors": "#5b5340", "linewidths": 0.7, "zorder": 2, **style}))


def _step(given: Step, area: Extent, lines: int) -> float:
    """The distance of lines in degrees; "auto": a round one that gives some number of them at least."""
    if given == "auto":
        width = min(area.east - area.west, 2 * (area.north - area.south))
        return next((step for step in _ROUND_STEPS if width / step >= lines), _ROUND_STEPS[-1])
    return _parameters.positive("step", given)


def graticule(projection: Projection, ax: Any = None, *, step: Step = "auto",
              extent: Optional[Sequence[float]] = None, **style: Any) -> Any:
    """Draws meridians and parallels every ``step`` degrees, and the meridian where a map of the world is cut open."""
    area = _extent(projection, extent)
    step = _step(step, area, 12)
    meridians = np.arange(np.ceil(area.west / step) * step, area.east + step / 1e6, step)
    if area.turns_round:
        meridians = np.append(meridians, [area.west + _JUST_INSIDE, area.east - _JUST_INSIDE])
    parallels = np.arange(np.ceil(area.south / step) * step, area.north + step / 1e6, step)
    lines = [np.array([[lon, area.south], [lon, (area.south + area.north) / 2], [lon, area.north]]) for lon in meridians]
    lons = np.linspace(area.west + _JUST_INSIDE, area.east - _JUST_INSIDE, 5)  # no step of half a turn
    lines += [np.column_stack([lons, np.full(5, lat)]) for lat in parallels]
    paths = _paths(projection, lines, area)
    return _add(_axes(ax), LineCollection(paths, **{"colors": "#a9b8c4", "linewidths": 0.5, "zorder": 1, **style}))


def _ground_scale(projection: Projection, lat: Array) -> Tuple[Array, Array]:
    """Metres of a degree of longitude and of latitude on the projection's ellipsoid."""
    radius, flattening = projection.figure() or _WGS_84
    squared = flattening * (2 - flattening)
    root = 1 - squared * np.sin(np.radians(lat)) ** 2
    degree = np.radians(1.0)
    return radius / np.sqrt(root) * np.cos(np.radians(lat)) * degree, radius * (1 - squared) / root**1.5 * degree


def indicatrices(projection: Projection, lon: Any, lat: Any) -> Array:
    """Derivatives of the map at places: what a metre eastward and a metre northward become.

    Shape (n, 2, 2): [[dx/east, dx/north], [dy/east, dy/north]]. The singular values are the semi-axes of Tissot's
    ellipse; NaN where the map has no derivative.
    """
    lons, lats = np.broadcast_arrays(np.atleast_1d(column(lon, "lon").values), np.atleast_1d(column(lat, "lat").values))
    east, north = _ground_scale(projection, lats)
    columns = []
    for d_lon, d_lat, metres in ((_DIFFERENCE, 0.0, east), (0.0, _DIFFERENCE, north)):
        x1, y1 = projection.forward(lons + d_lon, lats + d_lat)
        x0, y0 = projection.forward(lons - d_lon, lats - d_lat)
        apart = np.stack([x1 - x0, y1 - y0], axis=-1)
        apart[np.abs(apart).max(axis=-1) > _quarter(projection)] = np.nan  # one on each side of the map's edge
        columns.append(apart / (2 * _DIFFERENCE * metres[..., None]))
    return np.stack(columns, axis=-1)


def tissot(projection: Projection, ax: Any = None, *, step: Step = "auto", radius: Optional[float] = None,
           extent: Optional[Sequence[float]] = None, **style: Any) -> Any:
    """Draws Tissot's ellipses every ``step`` degrees: what small circles on the ground become, all drawn as if they
    had the same radius there (metres; by default a sixth of the step along a meridian)."""
    area = _extent(projection, extent)
    step = _step(step, area, 6)
    radius = step * 111_000 / 6 if radius is None else _parameters.positive("radius", radius)
    lons = np.arange(np.ceil(area.west / step) * step, area.east - step / 1e6, step)
    lats = np.arange(np.ceil(area.south / step) * step, area.north + step / 1e6, step)
    lon, lat = (grid.ravel() for grid in np.meshgrid(lons, lats[np.abs(lats) < 89]))
    inside = projection.contains(lon, lat)
    lon, lat = lon[inside], lat[inside]
    centres = projection.forward(np.column_stack([lon, lat]))
    angle = np.linspace(0, 2 * np.pi, 73)
    ellipses = centres[:, None, :] + radius * np.einsum("nij,jk->nki", indicatrices(projection, lon, lat),
                                                        np.array([np.cos(angle), np.sin(angle)]))
    drawn = [ellipse for ellipse in ellipses if np.isfinite(ellipse).all()]
    look = {"facecolors": "#c8553d55", "edgecolors": "#c8553d", "linewidths": 0.6, "zorder": 3, **style}
    return _add(_axes(ax), PolyCollection(drawn, **look))


def points(projection: Projection, lon: Any, lat: Any, ax: Any = None, **style: Any) -> Any:
    """Draws places (degrees); those outside the projection's domain are left out. ``style`` goes to ``ax.scatter``,
    whose result is returned."""
    lons, lats = np.broadcast_arrays(np.atleast_1d(column(lon, "lon").values), np.atleast_1d(column(lat, "lat").values))
    x, y = projection.forward(lons, lats)
    outside = ~projection.contains(lons, lats)
    x[outside] = y[outside] = np.nan
    return _axes(ax).scatter(x, y, **{"s": 12, "zorder": 4, **style})


def lines(projection: Projection, shapes: Sequence[Any], ax: Any = None, *,
          extent: Optional[Sequence[float]] = None, **style: Any) -> Any:
    """Draws lines given as (n, 2) arrays of longitude and latitude; neighbouring points are joined the short way."""
    given = [np.asarray(column(shape, "a line").values) for shape in shapes]
    for shape in given:
        if shape.ndim != 2 or shape.shape[1] != 2 or len(shape) < 2 or not np.isfinite(shape).all():
            raise OrvexError("a line is an array of shape (n, 2) with at least 2 finite points")
    paths = _paths(projection, given, _extent(projection, extent))
    return _add(_axes(ax), LineCollection(paths, **{"colors": "crimson", "linewidths": 1.2, "zorder": 4, **style}))


def world(projection: Projection, ax: Any = None, *, extent: Optional[Sequence[float]] = None,
          step: Optional[Step] = "auto", ellipses: Optional[Step] = "auto") -> Any:
    """Draws coasts, graticule and Tissot's ellipses, and returns the axes for data on top (:func:`points`,
    :func:`lines`, or anything of Matplotlib's at the coordinates that ``projection.forward`` gives).

    ax
        Axes to draw into; by default new ones.
    extent
        West, south, east, north in degrees; by default what the projection can sensibly show.
    step, ellipses
        Degrees from one line of the graticule and from one ellipse to the next; "auto" chooses, None is for none.
    """
    area = _extent(projection, extent)
    ax = pyplot.figure(figsize=(10, 6), layout="constrained").add_subplot() if ax is None else ax
    if step is not None:
        graticule(projection, ax, step=step, extent=area)
    coasts(projection, ax, extent=area)
    if ellipses is not None:
        tissot(projection, ax, step=ellipses, extent=area)
    ax.set_aspect("equal")
    ax.set_axis_off()
    return ax
