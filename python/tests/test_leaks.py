"""A million calls, good and bad: neither memory nor references pile up."""

import gc
import sys

import numpy as np
import pytest

import orvex
from orvex import Datum, Georef, OrvexError, Projection, Transformer

WARM_UP = 0.1
ALLOWED_KB = 2000  # a leak of 16 bytes a call in the smallest row is more than that; the allocator's own moods are less


def _resident_kb():
    with open("/proc/self/statm", encoding="ascii") as status:
        return int(status.read().split()[1]) * 4


def _refused(call):
    try:
        call()
    except OrvexError:
        return
    raise AssertionError("accepted")


UTM = Projection.utm(33)
LON, LAT = np.full(8, 15.0), np.full(8, 50.0)
PAIRS = np.column_stack([LON, LAT])
WAY = Transformer(Datum("NAD27"), UTM)
LAMBERT = Projection("lcc", lat1=33, lat2=45)
RING = np.array([(-120, -20), (-60, -20), (-60, 20), (-120, 20), (-120, -20)], float)
CONTROLS = np.random.default_rng(1).normal(size=(5, 4))
NOT_NUMBERS = np.array(["a"])

CALLS = [  # how often, what: a million in all
    (400_000, lambda: UTM.forward(15.0, 50.0)),
    (200_000, lambda: WAY.transform(-95.0, 38.0)),
    (130_000, lambda: UTM.inverse(LON, LAT)),
    (100_000, lambda: UTM.forward(PAIRS)),
    (50_000, lambda: _refused(lambda: UTM.forward(NOT_NUMBERS, LAT))),
    (30_000, lambda: _refused(lambda: UTM.forward(np.nan, 1.0, errors="raise"))),
    (20_000, lambda: _refused(lambda: Projection("lcc", lat1=33, lat2=33))),
    (20_000, lambda: LAMBERT.with_accuracy("stated").forward(LON, LAT)),
    (20_000, lambda: orvex.clip(LAMBERT, rings=[RING])),
    (10_000, lambda: Georef(CONTROLS, "affine")),
    (10_000, lambda: orvex.format_angle(orvex.parse_angle("9d30'E"), "lon")),
    (5_000, lambda: Transformer("EPSG:32039", "EPSG:4326")),
    (5_000, lambda: UTM.forward(np.zeros(5000), np.zeros(5000), threads=2)),
]


def test_the_rows_make_a_million():
    assert sum(times for times, _ in CALLS) == 1_000_000


@pytest.mark.parametrize("times, call", CALLS)
def test_nothing_piles_up(times, call):
    for _ in range(int(times * WARM_UP)):
        call()
    gc.collect()
    kept = [None, orvex.OrvexError, LON.dtype, LON, UTM]
    references, resident = [sys.getrefcount(one) for one in kept], _resident_kb()
    for _ in range(times - int(times * WARM_UP)):
        call()
    gc.collect()
    assert _resident_kb() - resident < ALLOWED_KB
    assert all(abs(sys.getrefcount(one) - before) < 100 for one, before in zip(kept, references))
