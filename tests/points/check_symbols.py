#!/usr/bin/env python3
"""Checks the objects of a level: nothing weak outside its namespace, which the linker might take for the whole library,
and no function of the runtime but copying of memory.

usage: check_symbols.py NM LEVEL OBJECT..."""
import re
import subprocess
import sys

nm, level, *objects = sys.argv[1:]
inside = f"orvex::detail::{level}::"
# A reference to the handler of exceptions is data, the same at every level.
handler = re.compile(r"DW\.ref\.|___?gxx_personality")
allowed = re.compile(r"_?_?(memcpy|memset|memmove|_GLOBAL_OFFSET_TABLE_|__stack_chk_fail)$")
errors = []
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
        if kind == "U" and inside not in name and not allowed.match(name):
            errors.append(f"{path}: not its own: {name}")
print("\n".join(errors) or f"{level}: {len(objects)} objects checked")
sys.exit(1 if errors or not objects else 0)
