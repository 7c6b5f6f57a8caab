"""Looking things up by what people type."""

import difflib
from typing import Iterable, Mapping, Optional, Sequence

from ._errors import OrvexError

_LONGEST = 200  # no name is near to a longer text, which would take long to compare


def squashed(text: str) -> str:
    """The letters and digits of a name, in lower case: "NAD 1927 - CONUS" and "nad1927 conus" are the same."""
    return "".join(c for c in text.lower() if c.isalnum())


def did_you_mean(wanted: str, names: Iterable[str]) -> str:
    """The end of a message: up to three names that may have been meant, those that hold all its words first."""
    if len(wanted) > _LONGEST:
        return ""
    names = list(dict.fromkeys(name for name in names if name))
    words = wanted.lower().split()
    holding = [name for name in names if words and all(word in name.lower() for word in words)]
    lower = {name.lower(): name for name in names}
    close = [lower[name] for name in difflib.get_close_matches(wanted.lower(), lower, n=3, cutoff=0.6)]
    found = list(dict.fromkeys(sorted(holding, key=len) + close))[:3]
    return f"; did you mean {' or '.join(repr(name) for name in found)}?" if found else ""


def find_name(kind: str, wanted: object, names: Sequence[str], aliases: Optional[Mapping[str, str]] = None) -> int:
    """Index of a name: in any spelling of case and punctuation, by an alias, or by a beginning that only one has."""
    if not isinstance(wanted, str):
        raise OrvexError(f"a {kind} goes by its name, not by {wanted!r}")
    key = squashed(wanted)
    known = {squashed(alias): name for alias, name in (aliases or {}).items()}
    key = squashed(known.get(key, key))
    keys = [squashed(name) for name in names]
    if key and key in keys:
        return keys.index(key)
    beginning = [index for index, candidate in enumerate(keys) if key and candidate.startswith(key)]
    if len(beginning) == 1:
        return beginning[0]
    raise OrvexError(f"unknown {kind} {wanted!r}{did_you_mean(wanted, [*(aliases or ()), *names])}")
