"""GeoPandas and Shapely: whole tables of geometries from one coordinate system to another."""

from typing import Any, Callable, List, Optional, Tuple

import numpy as np
import shapely
import shapely.geometry
import shapely.ops

from ._errors import OrvexError
from ._transformer import SystemLike, Transformer

_VECTORISED = hasattr(shapely, "get_coordinates")  # Shapely 2


def function(transformer: Transformer, errors: str = "nan") -> Callable[..., Tuple[Any, ...]]:
    """What ``shapely.ops.transform`` takes: ``shapely.ops.transform(function(transformer), geometry)``.

    A third coordinate is passed on as it is.
    """

    def convert(x: Any, y: Any, *z: Any) -> Tuple[Any, ...]:
        return (*transformer.transform(x, y, errors=errors), *z)

    return convert


def to_crs(table: Any, to: SystemLike, from_: Optional[SystemLike] = None, *, accuracy: Optional[str] = None,
           errors: str = "nan") -> Any:
    """A GeoDataFrame or GeoSeries in another coordinate system; the original stays as it is.

    to, from_
        As for :class:`orvex.Transformer`. Without ``from_`` it is the table's own ``crs``. Afterwards the table's
        ``crs`` is ``to`` where that is a code that the table's library knows, else None.
    errors
        "nan" or "raise", as for :meth:`orvex.Projection.forward`.

    Vertices are converted, edges are not divided: give long ones points on the way first.
    """
    source = _own_system(table) if from_ is None else from_
    transformer = Transformer(source, to, accuracy=accuracy)
    geometry = getattr(table, "geometry", None)
    if geometry is None:
        raise OrvexError(f"a GeoDataFrame or GeoSeries is needed, not {type(table).__name__}")
    converted = _converted(list(geometry), transformer, errors)
    series = type(geometry)(converted, index=geometry.index, name=geometry.name, crs=_crs_of(to))
    return series if table is geometry or not hasattr(table, "columns") else _with_geometry(table, series)


def _with_geometry(table: Any, series: Any) -> Any:
    return table.copy().set_geometry(series, crs=series.crs)


def _own_system(table: Any) -> SystemLike:
    crs = getattr(table, "crs", None)
    if crs is None:
        raise OrvexError("the table does not say its coordinate system: name it, from_=...")
    code = crs.to_epsg()
    return f"EPSG:{code}" if code else str(crs.name)


def _crs_of(system: SystemLike) -> Optional[str]:
    if isinstance(system, int) and not isinstance(system, bool):
        return f"EPSG:{system}"
    return system if isinstance(system, str) and system.upper().startswith("EPSG:") else None


def _converted(shapes: List[Any], transformer: Transformer, errors: str) -> Any:
    if _VECTORISED:
        return shapely.transform(shapes, lambda points: transformer.transform(points, errors=errors))
    if _all_points(shapes):
        points = np.array([(shape.x, shape.y) for shape in shapes]).reshape(-1, 2)
        return [shapely.geometry.Point(point) for point in transformer.transform(points, errors=errors)]
    convert = function(transformer, errors)
    return [shape if shape is None or shape.is_empty else shapely.ops.transform(convert, shape) for shape in shapes]


def _all_points(shapes: List[Any]) -> bool:
    return all(isinstance(shape, shapely.geometry.Point) and not shape.is_empty and not shape.has_z for shape in shapes)
