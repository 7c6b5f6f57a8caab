#!/usr/bin/env python3
"""Checks the objects of a level: nothing weak outside its namespace, which the linker might take for the whole library,
and no function but copying of memory and the library's own. With the level `runtime`: the library imports no
mathematical function of the runtime, so none takes part in a coordinate.

usage: check_symbols.py NM LEVEL OBJECT..."""
import re
import subprocess
import sys

nm, level, *objects = sys.argv[1:]
inside = f"orvex::detail::{level}::"
# A reference to the handler of exceptions is data, the same at every level.
handler = re.compile(r"DW\.ref\.|___?gxx_personality")
# Besides memory (bcmp is Clang's memcmp where only equality counts): the table of addresses, and what probes a stack frame
# (of more than a page on Windows).
allowed = re.compile(r"_*(memcpy|memcmp|bcmp|memset|memmove|_GLOBAL_OFFSET_TABLE_|__stack_chk_fail|chkstk(_ms)?)$")
mathematical = re.compile(
    r"(a?(sin|cos|tan)h?|atan2|sincos|exp2?|expm1|log(10|1p|2|b)?|pow|hypot|cbrt|fmod|remainder|remquo|fma|sqrt|"
    r"floor|ceil|trunc|l?l?round|nearbyint|l?l?rint|modf|[lt]gamma|erfc?|nextafter|nexttoward|scalbl?n)[fl]?(@.*)?$")


def imports(library):
    listing = subprocess.run([nm, "-D", "--undefined-only", library], check=True, capture_output=True, text=True).stdout
    return [line.split()[-1] for line in listing.splitlines()]


errors = []
if level == "runtime":
    errors = [f"{path}: imports {name}" for path in objects for name in imports(path) if mathematical.match(name)]
    print("\n".join(errors) or f"{len(objects)} libraries checked")
    sys.exit(1 if errors or not any(map(imports, objects)) else 0)
for path in objects:
    listing = subprocess.run([nm, "-C", path], check=True, capture_output=True, text=True).stdout
    for line in listing.splitlines():
        match = re.match(r"\s*[0-9a-fA-F]*\s+([A-Za-z])\s+(.*)", line)
        if not match:
            continue
        kind, name = match.groups()
        if handler.match(name):
            continue
        if kind in "VWvwu" and inside not in name:
            errors.append(f"{path}: weak: {name}")
        if kind == "U" and "orvex::detail::" not in name and not allowed.match(name):
            errors.append(f"{path}: not its own: {name}")
print("\n".join(errors) or f"{level}: {len(objects)} objects checked")
sys.exit(1 if errors or not objects else 0)
