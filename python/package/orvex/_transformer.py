"""From one coordinate system to another: projections and datums at once."""

from typing import Any, List, NamedTuple, Optional, Tuple, Union

from . import _arrays, _core, _datum, _systems
from ._datum import Datum
from ._errors import OrvexError
from ._projection import Projection, is_exact

SystemLike = Union[Projection, Datum, str, int]


class _Side(NamedTuple):
    """What one side comes down to. Without a projection it is longitude and latitude."""

    name: str
    projection: Optional[Projection]
    datum: Optional[Datum]
    #: Of a registered system: its datum there, where datums that the catalogue lacks are told apart as well.
    frame: Optional[int] = None
    frame_name: str = ""
    degrees: float = 1.0  #: of one unit of a geographic system
    meridian: float = 0.0  #: that a geographic system counts from, degrees

    def to_degrees(self) -> List[_core.Recipe]:
        if self.projection:
            return self.projection.recipes(False)
        return [_core.count_angles(self.degrees, self.meridian, True)] if self._counts_its_own_way else []

    def from_degrees(self) -> List[_core.Recipe]:
        if self.projection:
            return self.projection.recipes(True)
        return [_core.count_angles(self.degrees, self.meridian, False)] if self._counts_its_own_way else []

    @property
    def _counts_its_own_way(self) -> bool:
        return self.degrees != 1 or self.meridian != 0

    def says_datum(self) -> bool:
        return self.datum is not None or self.frame is not None

    def same_datum(self, other: "_Side") -> bool:
        if self.frame is not None and other.frame is not None:
            return self.frame == other.frame
        return self.datum is not None and other.datum is not None and self.datum.same_as(other.datum)

    def datum_or_fail(self) -> Datum:
        if self.datum is None:
            raise OrvexError(f"the catalogue of datums lacks {self.frame_name!r}, the datum of {self.name}: it cannot be "
                             "changed for another one")
        return self.datum


def _side(system: SystemLike, accuracy: Optional[str]) -> _Side:
    if isinstance(system, Projection):
        projection = system.with_accuracy(accuracy or system.accuracy)
        return _Side(system.name, None if system.geographic else projection, system.datum)
    if isinstance(system, Datum):
        return _Side(system.name, None, system)
    if isinstance(system, (str, int)) and not isinstance(system, bool):
        return _named(system, accuracy)
    raise OrvexError(f"a coordinate system is a code, a name, a Projection or a Datum, not {system!r}")


def _named(system: Union[str, int], accuracy: Optional[str]) -> _Side:
    """A registered system, else a datum of the catalogue, of that name."""
    try:
        found = _systems.find(system)
    except OrvexError as unknown:
        try:
            datum = Datum(system)
        except OrvexError:
            raise unknown from None
        return _side(datum, accuracy)
    if found.record is None:
        return _Side(found.name, None, found.datum, found.frame, found.datum_name, found.unit, found.meridian)
    projection = Projection.from_crs(system, accuracy=accuracy or "exact")
    return _Side(found.name, projection, found.datum, found.frame, found.datum_name)


class Transformer:
    """Converts coordinates of one system to those of another: out of a projection, from datum to datum, into another.

    >>> to_wgs84 = Transformer(Projection.state_plane("Texas Central", 1927, unit="us-ft"), Datum("WGS 84"))
    >>> lon, lat = to_wgs84.transform(3_000_000.0, 500_000.0)

    from_, to
        Each side a code or name of a coordinate system, a :class:`Projection`, or a :class:`Datum` (or its name) for
        longitude and latitude in degrees on it. When one side does not say its datum, it is that of the other, and
        nothing is shifted.
    accuracy
        "exact" or "stated" for the whole way; by default projections compute as they were made and all else exactly.

    Transformers do not change, can be pickled and compared, and may be used by several threads at once.
    """

    __slots__ = ("_from", "_to", "_accuracy", "_conversion", "_back")

    def __init__(self, from_: SystemLike, to: SystemLike, *, accuracy: Optional[str] = None) -> None:
        exact = is_exact(accuracy or "exact")
        self._from, self._to = _side(from_, accuracy), _side(to, accuracy)
        self._accuracy = accuracy
        self._conversion = _core.Conversion(_recipes(self._from, self._to, exact))
        self._back: Optional[_core.Conversion] = None

    def transform(self, x: Any, y: Any = None, *, out: Any = None, errors: str = "nan",
                  threads: Optional[int] = None) -> Any:
        """Coordinates of the first system to the second: x is longitude or easting, y latitude or northing.

        Arguments as for :meth:`Projection.forward`: numbers, arrays that broadcast, or one (n, 2) array in place.
        """
        return _arrays.convert(self._conversion, x, y, out=out, errors=errors, threads=threads, names=("x", "y"))

    __call__ = transform
    forward = transform

    def inverse(self, x: Any, y: Any = None, *, out: Any = None, errors: str = "nan",
                threads: Optional[int] = None) -> Any:
        """Coordinates of the second system to the first. Refused when the first one's datum is one that cannot be
        converted to (regression equations, NADCON)."""
        if self._back is None:
            self._back = _core.Conversion(_recipes(self._to, self._from, is_exact(self._accuracy or "exact")))
        return _arrays.convert(self._back, x, y, out=out, errors=errors, threads=threads, names=("x", "y"))

    @property
    def source(self) -> str:
        """Name of the system that coordinates come from."""
        return self._from.name

    @property
    def target(self) -> str:
        """Name of the system that coordinates are converted to."""
        return self._to.name

    def _key(self) -> Tuple[Any, ...]:
        return self._from, self._to, self._accuracy

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Transformer) and self._key() == other._key()

    def __hash__(self) -> int:
        return hash(self._key())

    def __reduce__(self) -> Tuple[Any, ...]:
        return _restored, self._key()

    def __repr__(self) -> str:
        return f"<Transformer from {self.source} to {self.target}>"


def _recipes(from_: _Side, to: _Side, exact: bool) -> List[_core.Recipe]:
    return from_.to_degrees() + _datum_recipes(from_, to, exact) + to.from_degrees()


def _datum_recipes(from_: _Side, to: _Side, exact: bool) -> List[_core.Recipe]:
    if not (from_.says_datum() and to.says_datum()) or from_.same_datum(to):
        return []
    return [_datum.recipe(from_.datum_or_fail(), to.datum_or_fail(), exact)]


def _restored(from_: _Side, to: _Side, accuracy: Optional[str]) -> Transformer:
    transformer = object.__new__(Transformer)
    transformer._from, transformer._to, transformer._accuracy = from_, to, accuracy
    transformer._conversion = _core.Conversion(_recipes(from_, to, is_exact(accuracy or "exact")))
    transformer._back = None
    return transformer
