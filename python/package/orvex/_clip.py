"""Cutting shapes of longitude and latitude to what a projection can show."""

from typing import Any, List, Optional

import numpy as np

from . import _arrays
from ._arrays import Array
from ._errors import OrvexError
from ._projection import Projection


def clip(projection: Projection, shapes: Any = None, *, rings: Any = None, lines: Any = None) -> List[Array]:
    """What of the shapes a projection can show, still in degrees: a list of (m, 2) arrays to be projected.

    rings
        The closed rings of one polygon, holes among them: (n, 2) arrays of longitude and latitude, whose ends are
        joined when they do not meet. What is left of each comes back closed.
    lines
        Lines: (n, 2) arrays. Each may come back in several pieces, or in none.
    shapes
        Either: rings if every one ends where it begins, lines if none does.

    Pieces that reach over the edge of the map come a second time, a turn of longitude away. A segment with both ends
    outside is dropped: give long ones points on the way. One array may be given instead of a list of one.
    """
    given = [what is not None for what in (shapes, rings, lines)]
    if sum(given) != 1:
        raise OrvexError("give rings, or lines, or shapes that are one or the other")
    if not isinstance(projection, Projection):
        raise OrvexError(f"shapes are clipped to a Projection, not to {projection!r}")
    if rings is not None:
        return projection._record.clip_rings([_closed(ring) for ring in _parts(rings)])
    parts = _parts(shapes if lines is None else lines)
    if lines is None:
        closed = [_is_closed(part) for part in parts]
        if parts and all(closed):
            return projection._record.clip_rings(parts)
        if any(closed):
            raise OrvexError("some shapes are closed and some are not: give rings=... and lines=...")
    return [piece for part in parts for piece in projection._record.clip_line(part)]


def _parts(shapes: Any) -> List[Array]:
    if isinstance(shapes, np.ndarray) and shapes.ndim == 2 and shapes.dtype != object:
        return [_part(shapes)]
    try:
        parts = list(shapes)
    except TypeError:
        raise OrvexError(f"shapes are (n, 2) arrays, not {shapes!r}") from None
    first: Optional[Array] = None
    if parts and not isinstance(parts[0], np.ndarray):
        try:
            first = np.asarray(parts[0], np.float64)
        except (TypeError, ValueError):
            first = None
    if first is not None and first.ndim == 1:  # one shape as a list of points
        return [_part(parts)]
    return [_part(part) for part in parts]


def _part(points: Any) -> Array:
    given = _arrays.column(points, "a shape")
    if given.values.ndim != 2 or given.values.shape[1] != 2:
        raise OrvexError(f"a shape has the dimensions (n, 2), not {given.values.shape}")
    if len(given.values) < 2:
        raise OrvexError("a shape has at least 2 points")
    if not np.isfinite(given.values).all():
        raise OrvexError("a shape has a coordinate that is not finite")
    return given.values


def _is_closed(part: Array) -> bool:
    return len(part) > 3 and bool((part[0] == part[-1]).all())


def _closed(ring: Array) -> Array:
    return ring if (ring[0] == ring[-1]).all() else np.vstack([ring, ring[:1]])
