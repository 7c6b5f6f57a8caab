"""Arrays of every kind: converted right or refused with a message, and nothing spoilt that was given."""

from decimal import Decimal

import numpy as np
import pandas as pd
import pytest

from orvex import OrvexError, Projection

UTM = Projection.utm(33)
LON, LAT = np.array([13.405, 16.3738, 15.0]), np.array([52.52, 48.2082, -1.5])
X, Y = UTM.forward(LON, LAT)

unaligned = np.frombuffer(b"\0" + LON.tobytes(), np.uint8)[1:].view(np.float64)
unaligned_writable = np.zeros(25, np.uint8)[1:].view(np.float64)
records = np.zeros(3, [("name", "S3"), ("lon", "f8"), ("lat", "f8")])
records["lon"], records["lat"] = LON, LAT
read_only = LON.copy()
read_only.flags.writeable = False

FORMS = {
    "lists": (list(LON), list(LAT)),
    "tuples": (tuple(LON), tuple(LAT)),
    "columns": (np.asfortranarray(np.column_stack([LON, LAT]))[:, 0], LAT),
    "every other": (np.repeat(LON, 2)[::2], np.repeat(LAT, 3)[::3]),
    "backwards": (LON[::-1][::-1], LAT[::-1].copy()[::-1]),
    "big-endian": (LON.astype(">f8"), LAT.astype(">f8")),
    "read-only": (read_only, LAT),
    "unaligned": (unaligned, LAT),
    "fields": (records["lon"], records["lat"]),
    "series": (pd.Series(LON, index=[7, 8, 9]), pd.Series(LAT, dtype="Float64")),
    "objects": (LON.astype(object), np.array([Decimal(repr(value)) for value in LAT], object)),
    "long doubles": (LON.astype(np.longdouble), LAT),
    "memory": (memoryview(LON), LAT),
}


@pytest.mark.parametrize("lon, lat", FORMS.values(), ids=FORMS.keys())
def test_forms_of_arrays(lon, lat):
    before = np.array(lon, np.float64), np.array(lat, np.float64)
    x, y = UTM.forward(lon, lat)
    assert np.array_equal(x, X) and np.array_equal(y, Y) and x.dtype == y.dtype == np.float64
    assert np.array_equal(before[0], np.array(lon, np.float64)) and np.array_equal(before[1], np.array(lat, np.float64))


def test_narrow_numbers_are_what_they_say():
    assert np.array_equal(UTM.forward(LON.astype(np.float32), LAT), UTM.forward(LON.astype(np.float32).astype(float), LAT))
    assert np.array_equal(UTM.forward(np.array([13, 16], np.int8), np.array([52, 48], np.uint64)),
                          UTM.forward([13.0, 16.0], [52.0, 48.0]))


def test_shapes():
    for shape in [(0,), (0, 3), (1,), (2, 3), (2, 0, 2), (1, 1, 1)]:
        x, y = UTM.forward(np.full(shape, 15.0), np.full(shape, 50.0))
        assert x.shape == y.shape == shape and np.allclose(x, 500_000)
    x, y = UTM.forward(np.linspace(12, 18, 5), np.linspace(40, 50, 3)[:, None])
    assert x.shape == (3, 5) and x[2, 4] == UTM.forward(18.0, 50.0)[0]
    assert UTM.forward(np.transpose(x / 1e5 + 10), 50)[0].shape == (5, 3)
    for scalar in [(15.0, 50.0), (15, 50), (np.float32(15), np.int64(50)), (np.array(15.0), np.array(50.0))]:
        result = UTM.forward(*scalar)
        assert result == UTM.forward(15.0, 50.0) and [type(value) for value in result] == [float, float]


def test_masked_points_stay_masked():
    lon = np.ma.array(LON, mask=[False, True, False])
    x, y = UTM.forward(lon, LAT, errors="raise")
    assert x.mask.tolist() == y.mask.tolist() == [False, True, False] and np.array_equal(x.data[[0, 2]], X[[0, 2]])
    pairs = np.ma.array(np.column_stack([LON, LAT]), mask=[[False, False], [False, True], [False, False]])
    result = UTM.forward(pairs)
    assert result.mask.tolist() == [[False] * 2, [True] * 2, [False] * 2] and np.array_equal(pairs.data[:, 0], LON)
    filled = UTM.forward(np.ma.array([1, 2], mask=[True, False], dtype=int), 50)
    assert filled[0].mask.tolist() == [True, False]


def test_missing_values():
    x, y = UTM.forward(pd.Series([13.405, None, np.inf], dtype="Float64"), [52.52, np.nan, 1.0])
    assert x[0] == X[0] and np.isnan(x[1:]).all() and np.isnan(y[1:]).all()
    marker = np.finfo(float).max  # the library's own mark for an unplottable coordinate
    assert np.isnan(UTM.forward([marker, 15.0], [50.0, marker])).all()


BAD = {
    "words": (["a", "b"], [1, 2], "not real numbers"),
    "angles as text": (np.array(["9d30'E"]), [1], "parse_angle"),
    "complex": (np.array([1j]), [1], "complex"),
    "truth": (np.array([True]), [1], "bool"),
    "dates": (np.array(["2020-01-01"], "M8[D]"), [1], "datetime"),
    "records": (records, LAT, "not real numbers"),
    "objects": (np.array([object()], object), [1], "not real numbers"),
    "nested objects": (np.array([[1, 2], [3]], object), [1], "not real numbers"),
    "None": (None, [1], "not real numbers"),
    "text among objects": (np.array([1, "2"], object), [1, 2], "not real numbers"),
    "ragged": ([[1, 2], [3]], [1], "lon"),
    "lengths": ([1, 2, 3], [1, 2], r"lon of shape \(3,\) and lat of shape \(2,\)"),
    "nothing at all": ([], [1, 2], "do not go together"),
    "set": ({1.0}, [1], "not real numbers"),
    "huge": ([10**400], [1], "not real numbers"),
}


@pytest.mark.parametrize("lon, lat, text", BAD.values(), ids=BAD.keys())
def test_what_is_no_array_of_numbers_is_refused(lon, lat, text):
    with pytest.raises(OrvexError, match=text):
        UTM.forward(lon, lat)
    with pytest.raises(OrvexError):
        UTM.inverse(lat, lon)


def test_one_array_of_pairs_is_converted_in_place():
    pairs = np.column_stack([LON, LAT])
    assert UTM.forward(pairs) is pairs and np.array_equal(pairs, np.column_stack([X, Y]))
    part = np.zeros((5, 2))
    part[1:4] = np.column_stack([LON, LAT])
    window = part[1:4]
    assert UTM.forward(window) is window and np.array_equal(part[1:4, 0], X) and not part[[0, 4]].any()


def _pairs(order="C", dtype=np.float64):
    return np.array(np.column_stack([LON, LAT]), dtype, order=order)


COPIED = {
    "Fortran order": _pairs("F"), "single": _pairs(dtype=np.float32), "big-endian": _pairs(dtype=">f8"),
    "every other": np.repeat(_pairs(), 2, axis=0)[::2], "columns of more": np.hstack([_pairs(), _pairs()])[:, :2],
    "backwards": _pairs()[::-1], "whole": _pairs().astype(int), "list": _pairs().tolist(),
}


@pytest.mark.parametrize("pairs", COPIED.values(), ids=COPIED.keys())
def test_pairs_of_any_other_kind_are_copied(pairs):
    before = np.array(pairs)
    result = UTM.forward(pairs)
    assert np.array_equal(np.array(pairs), before) and not np.may_share_memory(result, np.asarray(pairs))
    assert np.array_equal(result.T, UTM.forward(before[:, 0].astype(float), before[:, 1].astype(float)))


def test_pairs_that_must_not_be_written_are_copied_and_other_shapes_refused():
    pairs = _pairs()
    pairs.flags.writeable = False
    assert np.array_equal(UTM.forward(pairs), np.column_stack([X, Y])) and np.array_equal(pairs, _pairs())
    assert UTM.forward(np.empty((0, 2))).shape == (0, 2)
    for shape in [(2,), (3,), (3, 3), (2, 3), (1, 2, 2), ()]:
        with pytest.raises(OrvexError, match=r"shape \(n, 2\)"):
            UTM.forward(np.zeros(shape))
    pairs = _pairs()
    pairs[1, 0] = np.nan
    before = pairs.copy()
    with pytest.raises(OrvexError, match="point 1"):
        UTM.forward(pairs, errors="raise")
    assert np.array_equal(pairs, before, equal_nan=True)


def test_out():
    x, y = np.empty(3), np.empty(6)[::2]
    assert UTM.forward(LON, LAT, out=(x, y))[0] is x and np.array_equal(x, X) and np.array_equal(y, Y)
    both = np.empty((3, 2))
    assert UTM.forward(LON, LAT, out=both) is both and np.array_equal(both.T, (X, Y))
    assert np.array_equal(UTM.forward(_pairs("F"), out=both).T, (X, Y))
    transposed = np.empty((3, 2), order="F").T  # (2, 3), neither order flat in C
    other = np.empty((2, 3))
    UTM.forward(LON, LAT[:2, None], out=(transposed, other))
    assert np.array_equal(transposed, UTM.forward(LON, LAT[:2, None])[0])
    UTM.forward(LON, LAT, out=(unaligned_writable, x))
    assert np.array_equal(unaligned_writable, X)
    scalar = np.empty(()), np.empty(())
    UTM.forward(15.0, 50.0, out=scalar)
    assert (float(scalar[0]), float(scalar[1])) == UTM.forward(15.0, 50.0)


@pytest.mark.parametrize("layout", ["same", "swapped", "shifted", "broadcast", "reversed"])
def test_out_may_be_what_was_given(layout):
    work = np.tile(np.column_stack([LON, LAT]).ravel(), 2000)
    lon, lat = work[0:-2:2].copy(), work[1:-2:2].copy()
    expected = UTM.forward(lon, lat)
    memory = np.concatenate([lon, [0.0], lat, [0.0]])
    n = len(lon)
    a, b = memory[:n], memory[n + 1:-1]
    out = {"same": (a, b), "swapped": (b, a), "shifted": (memory[1:n + 1], memory[n + 2:]),
           "reversed": (a[::-1], b[::-1]), "broadcast": (a, b)}[layout]
    if layout == "broadcast":
        expected = UTM.forward(lon[0], lat)
        a = memory[:1]
    x, y = UTM.forward(a, b, out=out)
    assert np.array_equal(x, expected[0]) and np.array_equal(y, expected[1])


BAD_OUT = [
    (np.empty(3), "shape"), ((np.empty(3),), "pair"), ((np.empty(3), np.empty(4)), "shape"),
    ((np.empty(3, np.float32), np.empty(3)), "float64"), ((np.empty(3, ">f8"), np.empty(3)), "float64"),
    (([0, 0, 0], [0, 0, 0]), "float64"), ((read_only, np.empty(3)), "read-only"), (5, "pair"), ("ab", "pair"),
    ((np.ma.zeros(3), np.empty(3)), "float64"),
]


@pytest.mark.parametrize("out, text", BAD_OUT)
def test_out_of_the_wrong_kind_is_refused(out, text):
    with pytest.raises(OrvexError, match=text):
        UTM.forward(LON, LAT, out=out)


def test_out_must_not_overlap_itself_and_keeps_its_values_when_the_call_raises():
    memory = np.zeros(4)
    with pytest.raises(OrvexError, match="overlap"):
        UTM.forward(LON, LAT, out=(memory[:3], memory[1:]))
    x, y = np.ones(3), np.ones(3)
    with pytest.raises(OrvexError, match="point 2"):
        UTM.forward([13, 14, np.nan], LAT, out=(x, y), errors="raise")
    assert x.tolist() == y.tolist() == [1, 1, 1]


@pytest.mark.parametrize("count", [1, 2047, 2048, 2049, 200_001])
def test_threads_and_slices_do_not_change_a_bit(count):
    random = np.random.default_rng(count)
    lon, lat = random.uniform(5, 25, count), random.uniform(-85, 89, count)
    lon[:: max(1, count // 7)] = np.nan
    one = np.array(UTM.forward(lon, lat, threads=1))
    for threads in (2, 5, None, np.int64(3)):
        assert np.array_equal(one, UTM.forward(lon, lat, threads=threads), equal_nan=True)
    if count < 3000:
        each = np.array([UTM.forward(float(a), float(b)) for a, b in zip(lon, lat)]).T
        assert np.array_equal(one, each, equal_nan=True)


def test_threads_of_the_interpreter_share_a_projection():
    from concurrent.futures import ThreadPoolExecutor

    lon, lat = np.random.default_rng(5).uniform((12, 40), (18, 50), (40_000, 2)).T
    expected = UTM.forward(lon, lat)
    with ThreadPoolExecutor(8) as pool:
        results = list(pool.map(lambda _: UTM.forward(lon, lat, threads=2), range(40)))
    assert all(np.array_equal(result, expected) for result in results)


@pytest.mark.filterwarnings("ignore:.*fork:DeprecationWarning")
def test_a_child_may_use_a_projection_that_threads_are_using():
    """A lock that another thread had while the process was forked is never given back in the child."""
    import os
    import signal
    import threading
    import time

    stop = threading.Event()

    def convert():
        while not stop.is_set():
            UTM.forward(LON, LAT)

    threads = [threading.Thread(target=convert) for _ in range(6)]
    for thread in threads:
        thread.start()
    try:
        end = time.monotonic() + 15
        for _ in range(300):
            child = os.fork()
            if child == 0:
                signal.alarm(10)
                os._exit(0 if np.array_equal(UTM.forward(LON, LAT), (X, Y)) else 1)
            assert os.waitpid(child, 0)[1] == 0
            if time.monotonic() > end:
                break
    finally:
        stop.set()
        for thread in threads:
            thread.join()


def test_the_lock_is_released():
    """While a conversion runs, another thread of the interpreter counts on."""
    import threading

    lon, lat = np.full(3_000_000, 15.5), np.full(3_000_000, 50.0)
    counted, stop = [0], threading.Event()

    def count():
        while not stop.is_set():
            counted[0] += 1

    counter = threading.Thread(target=count)
    counter.start()
    try:
        before = counted[0]
        UTM.inverse(lon, lat, threads=1)
        assert counted[0] - before > 1000
    finally:
        stop.set()
        counter.join()


def test_kept_memory_is_nobody_elses():
    # Results of this size get memory that earlier results had, once nobody looks at those any more.
    mercator = Projection("Mercator")
    lon = np.linspace(-170, 170, 100_000)
    first_x, first_y = mercator.forward(lon, lon / 3)
    expected = first_x.copy()
    window = first_y[10:20]
    end = window.copy()
    del first_y
    for shift in (1.0, 2.0, 3.0):
        mercator.forward(lon / 2 + shift, lon / 4)
    assert np.array_equal(first_x, expected)
    assert np.array_equal(window, end)
    assert first_x.flags.writeable and not np.shares_memory(first_x, mercator.forward(lon, lon / 3)[0])


def test_out_may_exchange_the_columns():
    mercator = Projection("Mercator")
    lon, lat = np.linspace(-170, 170, 10_000), np.linspace(-80, 95, 10_000)
    x, y = mercator.forward(lon, lat)
    mercator.forward(lon, lat, out=(lat, lon))
    assert np.array_equal(lat, x, equal_nan=True) and np.array_equal(lon, y, equal_nan=True)
