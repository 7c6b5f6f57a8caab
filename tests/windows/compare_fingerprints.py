#!/usr/bin/env python3
"""Compares two platforms' fingerprints point by point and prints the differences for each projection and datum method.

Usage: compare_fingerprints.py A B
Exit status 1 when a place is plottable on one platform only, or the places differ by more than what an ulp or two in the
functions of the two runtimes explain: a micrometre on the ground."""
import math
import struct
import sys

DBL_MAX = sys.float_info.max
METRES, DEGREES = 1e-6, 1e-11


def read(name):
    with open(name, encoding="ascii") as file:
        return [line.rstrip("\r\n").split(";") for line in file]


def doubles(text):
    return [struct.unpack(">d", bytes.fromhex(word))[0] for word in text.split()]


def ordinal(value):
    bits = struct.unpack("<q", struct.pack("<d", value))[0]
    return bits if bits >= 0 else -(bits & 0x7FFFFFFFFFFFFFFF)


class Differences:
    def __init__(self):
        self.points = self.equal = self.ulps = self.split = 0
        self.distance = 0.0

    def add(self, a, b):
        self.points += 1
        self.equal += a == b
        if (DBL_MAX in a) != (DBL_MAX in b):
            self.split += 1
        elif DBL_MAX not in a:
            self.distance = max(self.distance, math.dist(a, b))
            self.ulps = max(self.ulps, *(abs(ordinal(p) - ordinal(q)) for p, q in zip(a, b)))


def main():
    first, second = read(sys.argv[1]), read(sys.argv[2])
    if len(first) != len(second):
        sys.exit("the fingerprints are of different versions")
    groups, bad = {}, []
    for a, b in zip(first, second):
        if a[:2] != b[:2] or len(a[2]) < 30 and a != b:
            sys.exit(f"different outcomes: {a} and {b}")
        if len(a[2]) < 30:
            continue  # the same exception
        difference = groups.setdefault((a[0], a[1]), Differences())
        if a[2] == b[2]:  # an inverse may rarely start from different places
            difference.add(doubles(a[3]), doubles(b[3]))
    print("| projection, form | direction | points | equal | largest difference, ulp | largest difference |")
    print("|---|---|---:|---:|---:|---:|")
    for (group, direction), d in groups.items():
        angular = direction == "I" or group.startswith("Datum")
        print(f"| {group} | {'forward' if direction == 'F' else 'inverse'} | {d.points} | {100 * d.equal // max(d.points, 1)} % |"
              f" {d.ulps} | {d.distance:.1e} {'degrees' if angular else 'm'} |")
        if d.split or d.distance > (DEGREES if angular else METRES):
            bad.append(f"{group}, {direction}: {d.distance:.2e}, plottable on one platform only: {d.split}")
        if d.points == 0:
            bad.append(f"{group}, {direction}: nothing to compare")
    print("\n".join(bad), file=sys.stderr)
    sys.exit(1 if bad else 0)


main()
