"""Georeferencing: transforms between two planes fitted to control points."""

from typing import Any, Dict, NamedTuple, Optional, Tuple

import numpy as np

from . import _arrays, _core
from ._arrays import Array
from ._errors import OrvexError
from ._names import find_name


class _Method(NamedTuple):
    short: str
    number: int
    least_controls: int


_METHODS = (_Method("helmert", 0, 2), _Method("affine", 1, 3), _Method("poly1", 2, 4), _Method("poly2", 3, 6),
            _Method("poly3", 4, 10), _Method("tps", 6, 3), _Method("natural", 7, 3), _Method("marcov", 8, 3),
            _Method("exponential", 9, 3), _Method("rational", 10, 3), _Method("idw", 11, 3))
_NAMES = _core.georef_methods()


def methods() -> Dict[str, Tuple[str, int]]:
    """Short name of each method: its full name and the least number of controls."""
    return {method.short: (_NAMES[method.number], method.least_controls) for method in _METHODS}


def _find(text: str) -> _Method:
    names = [method.short for method in _METHODS] + [_NAMES[method.number] for method in _METHODS]
    return _METHODS[find_name("method", text, names) % len(_METHODS)]


def _pairs(points: Any, what: str) -> Array:
    array = _arrays.column(points, what).values
    if array.ndim != 2 or array.shape[1] != 2:
        raise OrvexError(f"{what} has the shape (n, 2), not {array.shape}")
    return array


def _controls(controls: Any) -> Tuple[Array, Array]:
    if isinstance(controls, tuple) and len(controls) == 2:
        source, target = _pairs(controls[0], "the source of the controls"), _pairs(controls[1], "their target")
    else:
        array = _arrays.column(controls, "the array of controls").values
        if array.ndim != 2 or array.shape[1] != 4:
            raise OrvexError(f"controls have the shape (n, 4): x, y, X, Y; not {array.shape}")
        source, target = array[:, :2], array[:, 2:]
    if source.shape != target.shape:
        raise OrvexError(f"{len(source)} source and {len(target)} target points do not go together")
    if not (np.isfinite(source).all() and np.isfinite(target).all()):
        raise OrvexError("a control point has a coordinate that is not finite")
    return np.array(source, order="C"), np.array(target, order="C")


class Georef:
    """A transform from one plane to another, fitted to pairs of control points.

    >>> sheet = Georef([[462, 480, 689395.9, 5336895.7], [2559, 1152, 693865.7, 5335518.0], ...], "affine")
    >>> sheet.rms, sheet.residuals
    >>> X, Y = sheet.forward(1000.0, 2000.0)

    controls
        An array of shape (n, 4) with x, y of the source and X, Y of the target, or a pair of (n, 2) arrays.
    method
        "helmert", "affine", "poly1", "poly2", "poly3"; warps that meet every control: "tps", "natural", "marcov",
        "exponential", "rational", "idw"; or a full name ("Thin Plate Spline").
    """

    __slots__ = ("_method", "_source", "_target", "_conversion", "_residuals")

    def __init__(self, controls: Any, method: str = "affine") -> None:
        self._method = _find(method)
        self._source, self._target = _controls(controls)
        if len(self._source) < self._method.least_controls:
            raise OrvexError(f"{self.method} needs at least {self._method.least_controls} control points, "
                             f"not {len(self._source)}")
        self._conversion = _core.Conversion([_core.georeference(self._method.number, self._source, self._target)])
        images = self.forward(self._source.copy())
        self._residuals = np.hypot(*(images - self._target).T)
        self._residuals.flags.writeable = False

    def forward(self, x: Any, y: Any = None, *, out: Any = None, errors: str = "nan",
                threads: Optional[int] = None) -> Any:
        """Points of the source plane to the target plane; arguments as for :meth:`Projection.forward`."""
        return _arrays.convert(self._conversion, x, y, out=out, errors=errors, threads=threads, names=("x", "y"))

    transform = forward
    __call__ = forward

    @property
    def method(self) -> str:
        """Full name of the method."""
        return _NAMES[self._method.number]

    @property
    def controls(self) -> Array:
        """The control points, shape (n, 4)."""
        return np.hstack([self._source, self._target])

    @property
    def residuals(self) -> Array:
        """Distance between each control's image and its target, in units of the target; shape (n,)."""
        return self._residuals

    @property
    def rms(self) -> float:
        """Root mean square of the residuals."""
        return float(np.sqrt(np.mean(self._residuals**2)))

    def __reduce__(self) -> Tuple[Any, ...]:
        return Georef, (self.controls, self._method.short)

    def __repr__(self) -> str:
        return f"<Georef {self.method!r}, {len(self._source)} controls, rms {self.rms:.6g}>"
