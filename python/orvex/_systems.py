"""Coordinate systems by code or name."""

from typing import NamedTuple, Optional, Union

from ._datum import Datum
from ._errors import OrvexError


class System(NamedTuple):
    """A coordinate system: a projection in its unit, or none for longitude and latitude; and the datum of both."""

    code: int
    name: str
    projection: "Optional[Projection]"
    datum: Optional[Datum]
