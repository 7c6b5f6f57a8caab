"""Dask: columns of a table converted partition by partition, on one machine or many."""

from typing import Any, Dict, Optional, Tuple, Union

from ._georef import Georef
from ._projection import Projection
from ._transformer import Transformer


def convert(table: Any, transformer: Union[Transformer, Projection, Georef], x: str = "x", y: str = "y", *,
            out: Optional[Tuple[str, str]] = None, errors: str = "nan", threads: int = 1) -> Any:
    """A Dask (or pandas) DataFrame with two columns converted.

    transformer
        A :class:`orvex.Transformer`, a :class:`orvex.Projection` (forward) or an :class:`orvex.Georef`. It is sent to
        the workers with each task, in some 1 kB.
    x, y
        Names of the columns with longitude or easting and with latitude or northing.
    out
        Names of the columns for the results; by default those that they come from.
    errors
        "nan" or "raise", as for :meth:`orvex.Projection.forward`.
    threads
        For each partition. One is right where the workers of a machine share its cores already.

    The partitions stay as they are, no row leaves its own, and the bits do not depend on their number. A Dask table is
    converted when it is computed.
    """
    arguments: Dict[str, Any] = dict(transformer=transformer, x=x, y=y, out=out or (x, y), errors=errors,
                                     threads=threads)
    if hasattr(table, "map_partitions"):
        return table.map_partitions(_convert_frame, meta=_convert_frame(table._meta, **arguments), **arguments)
    return _convert_frame(table, **arguments)


def _convert_frame(frame: Any, *, transformer: Any, x: str, y: str, out: Tuple[str, str], errors: str,
                   threads: int) -> Any:
    new_x, new_y = transformer.forward(frame[x], frame[y], errors=errors, threads=threads)
    return frame.assign(**{out[0]: new_x, out[1]: new_y})
