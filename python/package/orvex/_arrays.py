"""What users hand over as coordinates, brought into the form that the compiled part takes, and back."""

import os
from typing import Any, NamedTuple, Optional, Sequence, Tuple

import numpy as np
from numpy.typing import NDArray

from ._core import Conversion, new_array
from ._errors import UNPLOTTABLE, OrvexError

Array = NDArray[Any]

#: Up to here one thread has done its work before others are under way.
FEW_POINTS = 100_000


class Column(NamedTuple):
    """One coordinate of all points: aligned native doubles, and where they are masked."""

    values: Array
    mask: Optional[Array]


def column(values: Any, name: str) -> Column:
    """Takes whatever holds real numbers; refuses the rest by name. Copies only what is not doubles already."""
    mask = None
    if values is None:
        raise OrvexError(f"{name} is None, not real numbers")
    if isinstance(values, np.ma.MaskedArray):
        mask = np.ma.getmaskarray(values)
        values = np.ma.filled(values.astype(np.float64), np.nan)
    elif hasattr(values, "to_numpy") and getattr(values, "ndim", 1) == 1 and hasattr(values, "dtype"):
        values = _from_series(values, name)
    try:
        array = np.asarray(values)
    except ValueError as error:
        raise OrvexError(f"{name} is not an array: {error}") from None
    if array.dtype == object:
        array = _from_objects(array, name)
    if array.dtype.kind not in "fiu":
        hint = "; read angles with orvex.parse_angle" if array.dtype.kind in "SU" else ""
        raise OrvexError(f"{name} holds {array.dtype}, not real numbers{hint}")
    return Column(np.require(array, np.float64, ["ALIGNED"]), mask)


def _from_series(series: Any, name: str) -> Array:
    """A column of a table; what is missing there is NaN."""
    if series.dtype == object or getattr(series.dtype, "kind", "O") not in "fiu":
        return np.asarray(series)
    try:
        return np.asarray(series.to_numpy(dtype=np.float64, na_value=np.nan))
    except (TypeError, ValueError) as error:
        raise OrvexError(f"{name} does not hold real numbers: {error}") from None


def _from_objects(array: Array, name: str) -> Array:
    if any(isinstance(value, (str, bytes, bool, complex)) for value in array.flat):
        raise OrvexError(f"{name} holds objects that are not real numbers")
    try:
        return array.astype(np.float64)
    except (TypeError, ValueError, OverflowError) as error:
        raise OrvexError(f"{name} holds objects that are not real numbers: {error}") from None


def thread_count(threads: Optional[int], points: int) -> int:
    """As many as the process may use for many points, one for few, unless the caller says how many."""
    if threads is None:
        return len(os.sched_getaffinity(0)) if points > FEW_POINTS else 1
    if isinstance(threads, bool) or not isinstance(threads, (int, np.integer)) or not 1 <= threads <= 1024:
        raise OrvexError(f"threads is a whole number from 1 to 1024, not {threads!r}")
    return int(threads)


def convert(conversion: Conversion, x: Any, y: Any, *, out: Any, errors: str, threads: Optional[int],
            names: Tuple[str, str]) -> Any:
    """Converts coordinates in whatever form they come and answers in the same form."""
    if type(x) is float and type(y) is float and out is None and errors == "nan":
        return conversion.point(x, y)
    if errors not in ("nan", "raise"):
        raise OrvexError(f'errors is "nan" or "raise", not {errors!r}')
    if y is None:
        return _convert_pairs(conversion, x, out, errors, threads, names)
    first, second = column(x, names[0]), column(y, names[1])
    try:
        xs, ys = np.broadcast_arrays(first.values, second.values)
    except ValueError:
        raise OrvexError(f"{names[0]} of shape {first.values.shape} and {names[1]} of shape {second.values.shape} "
                         "do not go together") from None
    mask = _joined(first.mask, second.mask, xs.shape)
    out_x, out_y = _targets(out, xs.shape)
    _run(conversion, (xs, ys), (out_x, out_y), mask, out is None, errors, threads, names)
    if out is not None:
        return out
    if xs.ndim == 0 and mask is None:
        return float(out_x), float(out_y)
    if mask is not None:
        return np.ma.array(out_x, mask=mask), np.ma.array(out_y, mask=mask.copy())
    return out_x, out_y


def _convert_pairs(conversion: Conversion, points: Any, out: Any, errors: str, threads: Optional[int],
                   names: Tuple[str, str]) -> Any:
    """One (n, 2) array: in place where it is doubles in C order that can be written to, else a new one."""
    given = column(points, "the array of points")
    if given.values.ndim != 2 or given.values.shape[1] != 2:
        raise OrvexError(f"one array of points has the shape (n, 2), not {given.values.shape}; "
                         f"else give {names[0]} and {names[1]}")
    values = given.values
    in_place = (out is None and isinstance(points, np.ndarray) and given.mask is None and values.flags.c_contiguous
                and values.flags.writeable and np.may_share_memory(values, points))
    target = values if in_place else new_array(values.shape) if out is None else _checked(out, values.shape)
    mask = None if given.mask is None else given.mask.any(axis=1)
    _run(conversion, (values[:, 0], values[:, 1]), (target[:, 0], target[:, 1]), mask, out is None, errors, threads,
         names)
    if out is not None or in_place:
        return points if in_place else out
    return target if mask is None else np.ma.array(target, mask=np.column_stack([mask, mask]))


def _joined(a: Optional[Array], b: Optional[Array], shape: Tuple[int, ...]) -> Optional[Array]:
    if a is None and b is None:
        return None
    none = np.zeros((), bool)
    return np.array(np.broadcast_to(none if a is None else a, shape) | np.broadcast_to(none if b is None else b, shape))


def _checked(array: Any, shape: Tuple[int, ...]) -> Array:
    if not isinstance(array, np.ndarray) or isinstance(array, np.ma.MaskedArray) or array.dtype != np.float64 \
            or not array.dtype.isnative:
        raise OrvexError("out takes arrays of float64")
    if array.shape != shape:
        raise OrvexError(f"out has the shape {array.shape}; the results have {shape}")
    if not array.flags.writeable:
        raise OrvexError("out is read-only")
    return array


def _targets(out: Any, shape: Tuple[int, ...]) -> Tuple[Array, Array]:
    """The arrays for both results: two new ones, the two of a pair, or both halves of one (..., 2) array."""
    if out is None:
        return new_array(shape), new_array(shape)
    if isinstance(out, np.ndarray):
        both = _checked(out, shape + (2,))
        return both[..., 0], both[..., 1]
    if not isinstance(out, (tuple, list)) or len(out) != 2:
        raise OrvexError("out is a pair of arrays, or one array with both coordinates in its last dimension")
    out_x, out_y = _checked(out[0], shape), _checked(out[1], shape)
    if _overlap(out_x, out_y):
        raise OrvexError("the two arrays of out overlap")
    return out_x, out_y


def _overlap(a: Array, b: Array) -> bool:
    try:
        return np.shares_memory(a, b, max_work=10_000)
    except np.TooHardError:
        return True


def _same_places(a: Array, b: Array) -> bool:
    return a.__array_interface__["data"] == b.__array_interface__["data"] and a.strides == b.strides


def _run(conversion: Conversion, given: Sequence[Array], targets: Sequence[Array],
         mask: Optional[Array], fresh: bool, errors: str, threads: Optional[int], names: Tuple[str, str]) -> None:
    """Converts into the targets. Straight where nothing can be spoilt: a call that is going to raise, or whose results
    lie over points that are still to be read, goes through arrays of its own."""
    workers = thread_count(threads, given[0].size)
    safe = all(_same_places(a, b) or not _overlap(a, b) for a in given for b in targets) if not fresh else True
    straight = safe and errors == "nan" and all(a.ndim == 1 or a.flags.c_contiguous for a in targets) \
        and all(a.flags.aligned for a in targets)
    results = targets if straight else [np.empty(a.shape) for a in targets]
    missing = conversion.convert(given[0].reshape(-1), given[1].reshape(-1), results[0].reshape(-1),
                                 results[1].reshape(-1), workers)
    if missing and errors == "raise":
        _refuse(given, results[0], mask, names)
    if not straight:
        for target, result in zip(targets, results):
            target[...] = result


def _refuse(given: Sequence[Array], result: Array, mask: Optional[Array],
            names: Tuple[str, str]) -> None:
    failed = np.isnan(result) if mask is None else np.isnan(result) & ~mask
    count = int(failed.sum())
    if not count:
        return
    index = tuple(int(i) for i in np.unravel_index(int(failed.argmax()), failed.shape))
    x, y = (float(values[index]) for values in given)
    place = f"point {index[0] if len(index) == 1 else index}" if index else "the point"
    raise OrvexError(f"{place} ({names[0]} {x!r}, {names[1]} {y!r}) cannot be converted"
                     + (f"; {count} of {failed.size} cannot" if failed.size > 1 else ""), UNPLOTTABLE)
