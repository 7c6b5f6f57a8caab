"""Angles as text: degrees, minutes and seconds."""

import math
from typing import Iterable, List, Union, overload

from . import _core
from ._errors import OrvexError

_SIGNS = str.maketrans({"\u00b0": "d", "\u2032": "'", "\u2033": '"', "\u2019": "'", "\u201d": '"'})
_DECIMAL_DEGREES, _MINUS, _DECIMAL_MINUTES, _HEMISPHERE, _LATITUDE, _ZERO_PADDED = 0x10, 0x20, 0x100, 0x1000, 0x2000, 0x4000
_PARTS = {"d": 1, "dm": 60, "dms": 3600}
_LONGEST = 200


@overload
def parse_angle(text: str) -> float: ...  # type: ignore[misc]  # a text is a list of texts as well
@overload
def parse_angle(text: Iterable[str]) -> List[float]: ...


def parse_angle(text: Union[str, Iterable[str]]) -> Union[float, List[float]]:
    """Decimal degrees of an angle such as ``-85d50'``, ``30d30'15.5"``, ``9.5 E``, ``120d W``; of a list, a list.

    A minus sign and the letters S and W mean negative. Signs for degree, minute and second are read too. Text that is
    no angle raises OrvexError.
    """
    if not isinstance(text, str):
        return [parse_angle(one) for one in text]
    if not text.isprintable() or len(text) > _LONGEST:
        raise OrvexError(f"{text[:_LONGEST]!r} is not an angle")
    return _core.parse_angle(text.translate(_SIGNS).strip().lstrip("+"))


def _carried(degrees: float, parts: int, decimals: int) -> float:
    """Rounded to the last decimal that is written, so that none becomes 59'60". A hundredth of the last place is added
    because the quotient may lie an ulp below a full minute."""
    units = abs(degrees) * parts * 10.0**decimals
    if units >= 1e13:  # doubles cannot tell the hundredths
        return degrees
    return math.copysign((math.floor(units + 0.5) + 0.01) / (parts * 10.0**decimals), degrees)


def format_angle(degrees: float, axis: str = "", *, style: str = "dms", decimals: int = 4) -> str:
    """An angle in decimal degrees as text.

    ``axis``: ``"lon"`` or ``"lat"`` for a letter of the hemisphere at the end, else negative angles have a minus sign.
    ``style``: ``"dms"``, ``"dm"`` or ``"d"``. ``decimals``: 0 to 15, of the last field.

    >>> format_angle(-9.504305556, "lon")
    '9d30\\'15.5000"W'
    """
    if style not in _PARTS or axis not in ("", "lon", "lat"):
        raise OrvexError('style is "dms", "dm" or "d" and axis "lon", "lat" or empty')
    if not 0 <= decimals <= 15 or not math.isfinite(degrees):
        raise OrvexError("an angle that is written is finite, with 0 to 15 decimals")
    shown = max(decimals, 1)  # without decimals the library pads to three digits: one is written and taken off again
    layout = shown | {"d": _DECIMAL_DEGREES, "dm": _DECIMAL_MINUTES, "dms": 0}[style] | _ZERO_PADDED
    layout |= _HEMISPHERE if axis else _MINUS
    if axis == "lat":
        layout |= _LATITUDE
    value = degrees if style == "d" else _carried(degrees, _PARTS[style], decimals)
    text = _core.format_angle(value, layout, "d", "'", '"')
    return text if decimals else text.replace(".0", "")
