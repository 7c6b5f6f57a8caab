"""Measures the package: against pyproj, by threads, as arrays grow, stage by stage, and on Dask's workers.

    bench.py [peers] [threads] [growth] [stages] [dask] [--points N] [--largest N] [--repetitions N] [--write PAGE]

Everything is timed in one run, the contestants by turns, so that what else the machine does falls on all of them. Ratios
to pyproj are those of processor time, one thread each, paired; what threads and workers gain is wall-clock time, the
least of the repetitions. --write puts the tables between the markers of a page.
"""

import argparse
import os
import pathlib
import re
import resource
import statistics
import subprocess
import sys
import time
from typing import Any, Callable, Dict, List, Sequence, Tuple

import numpy as np

import orvex
from peers import PEERS, Peer

Timed = Callable[[], Any]


def clocked(clock: Callable[[], float], work: Timed) -> float:
    start = clock()
    work()
    return clock() - start


def by_turns(clock: Callable[[], float], repetitions: int, *contestants: Timed) -> List[List[float]]:
    """Seconds of each contestant in each repetition; one round to warm up is not counted."""
    rounds = [[clocked(clock, work) for work in contestants] for _ in range(repetitions + 1)]
    return [list(times) for times in zip(*rounds[1:])]


def table(header: Sequence[str], rows: Sequence[Sequence[str]]) -> str:
    rule = ["---"] + ["--:"] * (len(header) - 1)
    return "\n".join("| " + " | ".join(row) + " |" for row in [header, rule, *rows])


# ---- against pyproj ----


def duel(peer: Peer, points: int, repetitions: int) -> List[Tuple[List[float], float, float]]:
    """For each direction: nanoseconds a point with new arrays, with out= and with pyproj, and the medians of the paired
    ratios of the latter to both of the former."""
    import pyproj

    lon, lat = peer.places(points)
    ours, theirs, out = peer.projection(), pyproj.Proj(peer.definition()), (np.empty(points), np.empty(points))
    x, y = ours.forward(lon, lat)
    results = []
    for contestants in [
        (lambda: ours.forward(lon, lat, threads=1), lambda: ours.forward(lon, lat, out=out, threads=1),
         lambda: theirs(lon, lat)),
        (lambda: ours.inverse(x, y, threads=1), lambda: ours.inverse(x, y, out=out, threads=1),
         lambda: theirs(x, y, inverse=True)),
    ]:
        times = by_turns(time.process_time, repetitions, *contestants)
        ratios = [statistics.median(there / here for here, there in zip(mine, times[2])) for mine in times[:2]]
        results.append(([statistics.median(each) / points * 1e9 for each in times], *ratios))
    return results


def measure_peers(points: int, repetitions: int) -> str:
    rows, ratios = [], []
    for peer in PEERS:
        cells = [peer.label]
        for (new, reused, there), *pair in duel(peer, points, repetitions):
            cells += [f"{new:.1f}", f"{reused:.1f}", f"{there:.0f}", f"{pair[0]:.1f}", f"{pair[1]:.1f}"]
            ratios.append(pair)
        rows.append(cells)
        print(*cells, sep="  ", file=sys.stderr)
    one = ["{}", "out=", "pyproj", "ratio", "out="]
    header = ["ns a point", *(cell.format(direction) for direction in ("forward", "inverse") for cell in one)]
    new, reused = (statistics.median(column) for column in zip(*ratios))
    return table(header, rows) + (f"\n\nOf {len(ratios)} ratios the median is {new:.1f} with new arrays (least "
                                  f"{min(min(pair) for pair in ratios):.1f}) and {reused:.1f} with `out=` (most "
                                  f"{max(max(pair) for pair in ratios):.1f}).")


# ---- threads ----


def measure_threads(points: int, repetitions: int) -> str:
    """Speed by the clock, and what does not depend on other work of the machine: the processor time of one thread over
    that of all together, times their number. Points are fetched block by block, so no thread ends before the others."""
    cores = len(os.sched_getaffinity(0))
    counts = [count for count in (1, 2, 4, 8, 16, 32, 64) if count <= cores]
    rows, gains = [], []
    for peer in PEERS:
        lon, lat = peer.places(points)
        projection, out = peer.projection(), (np.empty(points), np.empty(points))
        runs = [lambda count=count: projection.forward(lon, lat, out=out, threads=count) for count in counts]
        best = [min(times) for times in by_turns(time.perf_counter, repetitions, *runs)]
        spent = by_turns(time.process_time, repetitions, *runs)
        gains.append(statistics.median(counts[-1] * one / all_ for one, all_ in zip(spent[0], spent[-1])))
        rows.append([peer.label, *(f"{points / seconds / 1e6:.0f}" for seconds in best), f"{gains[-1]:.2f}"])
        print(*rows[-1], sep="  ", file=sys.stderr)
    header = ["million points a second", *(f"{count} thread{'s' * (count > 1)}" for count in counts),
              "gain by processor time"]
    return table(header, rows) + (f"\n\nOf {len(gains)} gains from 1 to {counts[-1]} threads by processor time the median "
                                  f"is {statistics.median(gains):.2f}, the least {min(gains):.2f}.")


# ---- growth ----

_ONE_SIZE = """
import resource, sys, time
import numpy as np
sys.path.insert(0, {bench!r})
import bench
print(*bench.one_size({points}, {mode!r}))
"""


def peak() -> int:
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024


def one_size(points: int, mode: str) -> Tuple[float, float]:
    """Nanoseconds and bytes of memory for each point of one call, beyond the coordinates that were given."""
    utm = orvex.Projection.utm(33)
    utm.forward(15.0, 50.0)
    random = np.random.default_rng(4)
    pairs = np.empty((points, 2))
    for start in range(0, points, 1 << 20):  # without arrays beside it that would count as memory of the call
        part = pairs[start:start + (1 << 20)]
        part[:, 0], part[:, 1] = random.uniform(12, 18, len(part)), random.uniform(0, 80, len(part))
    way: Dict[str, Timed] = {
        "in place": lambda: utm.forward(pairs),
        "new arrays": lambda: utm.forward(pairs[:, 0], pairs[:, 1]),
    }
    if mode == "pyproj":
        import pyproj

        theirs = pyproj.Proj("+proj=utm +zone=33 +ellps=WGS84")
        theirs(15.0, 50.0)
        way[mode] = lambda: theirs(pairs[:, 0], pairs[:, 1])
    before = peak()
    seconds = clocked(time.perf_counter, way[mode])
    return seconds / points * 1e9, max(0, peak() - before) / points


def measure_growth(largest: int) -> str:
    sizes = [size for size in (10**4, 10**5, 10**6, 10**7, 10**8) if size <= largest]
    modes = ("in place", "new arrays", "pyproj")
    rows = []
    for size in sizes:
        cells = [f"{size:.0e}".replace("e+0", "e")]
        for mode in modes:
            program = _ONE_SIZE.format(bench=str(pathlib.Path(__file__).parent), points=size, mode=mode)
            output = subprocess.run([sys.executable, "-c", program], check=True, capture_output=True, text=True).stdout
            nanoseconds, memory = (float(word) for word in output.split())
            cells += [f"{nanoseconds:.1f}", f"{memory:.0f}" if size >= 10**7 else ""]
        rows.append(cells)
        print(*cells, sep="  ", file=sys.stderr)
    return table(["points", *(cell for mode in modes for cell in (f"{mode}, ns", "bytes"))], rows)


# ---- Dask ----

_PARTITION = 2_000_000  # rows: 32 MB of coordinates


def _generated(block: int, rows: int) -> Any:
    import pandas

    random = np.random.default_rng(block)
    return pandas.DataFrame({"x": random.uniform(1.5e6, 2.5e6, rows), "y": random.uniform(1e5, 9e5, rows)})


def measure_dask(largest: int, repetitions: int) -> str:
    """A table of state plane feet made on the workers, converted to UTM and summed there; only sums travel."""
    import dask
    import dask.dataframe as dd
    import distributed
    import orvex.dask

    way = orvex.Transformer("EPSG:32039", "EPSG:32614")
    sizes = [size for size in (10**5, 10**6, 10**7, 10**8) if size <= largest]
    seconds: Dict[Tuple[int, str], List[float]] = {}
    for workers in (1, 2):
        with distributed.LocalCluster(n_workers=workers, threads_per_worker=1, host="127.0.0.1",
                                      dashboard_address=None) as cluster, distributed.Client(cluster) as client:
            for size in sizes:
                blocks = max(2, -(-size // _PARTITION))
                parts = [dask.delayed(_generated)(block, size // blocks) for block in range(blocks)]
                frame = client.persist(dd.from_delayed(parts, meta=_generated(0, 0)))
                distributed.wait(frame)
                for stage in ("converted", "summed"):
                    # Names differ each time, lest the scheduler hands out a result that it has.
                    tables = [orvex.dask.convert(frame, way, out=(f"x{i}", f"y{i}"))[[f"x{i}", f"y{i}"]]
                              if stage == "converted" else frame[["x", "y"]] + i for i in range(repetitions)]
                    best = min(clocked(time.perf_counter, one.sum().compute) for one in tables)
                    seconds.setdefault((workers, stage), []).append(best)
                del frame
    columns = [(1, "converted"), (2, "converted"), (1, "summed"), (2, "summed")]
    rows = [[f"{size:.0e}".replace("e+0", "e"), *(f"{seconds[column][row]:.3f}" for column in columns),
             f"{seconds[1, 'converted'][row] / seconds[2, 'converted'][row]:.2f}"] for row, size in enumerate(sizes)]
    header = ["points", "1 worker, s", "2 workers, s", "1 worker, summed only", "2 workers, summed only", "gain"]
    return table(header, rows)


# ---- where the time goes ----


def measure_stages(points: int, repetitions: int) -> str:
    """Each stage of a table's way on one core, in processor time; the shuffle on two workers, by the clock."""
    import tempfile

    import pandas

    way = orvex.Transformer("EPSG:32039", "EPSG:32614")
    frame = _generated(0, points)
    with tempfile.TemporaryDirectory() as directory:
        text, binary = pathlib.Path(directory, "places.csv"), pathlib.Path(directory, "places.npy")
        frame.to_csv(text, index=False, float_format="%.3f")
        np.save(binary, frame.to_numpy())
        pairs = np.load(binary)
        stages: List[Tuple[str, Timed]] = [
            ("reading text (CSV)", lambda: pandas.read_csv(text)),
            ("reading binary (npy)", lambda: np.load(binary)),
            ("converting, new arrays", lambda: way.transform(pairs[:, 0], pairs[:, 1], threads=1)),
            ("writing binary (npy)", lambda: np.save(binary, pairs)),
            ("writing text (CSV)", lambda: frame.to_csv(text, index=False, float_format="%.3f")),
        ]
        times = by_turns(time.process_time, repetitions, *(work for _, work in stages))
    rows = [[name, f"{statistics.median(each) / points * 1e9:.0f}"] for (name, _), each in zip(stages, times)]
    rows.append(["shuffling between two workers, by the clock", f"{_shuffle_seconds(points) / points * 1e9:.0f}"])
    return table(["stage", "ns a point"], rows)


def _shuffle_seconds(points: int) -> float:
    """Every row goes to the partition of its strip of the map."""
    import dask
    import dask.dataframe as dd
    import distributed

    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, host="127.0.0.1",
                                  dashboard_address=None) as cluster, distributed.Client(cluster) as client:
        parts = [dask.delayed(_generated)(block, points // 8) for block in range(8)]
        frame = client.persist(dd.from_delayed(parts, meta=_generated(0, 0)))
        distributed.wait(frame)
        strips = [1.5e6 + 125e3 * strip for strip in range(9)]
        return clocked(time.perf_counter, lambda: distributed.wait(
            client.persist(frame.set_index("x", divisions=strips, shuffle="tasks"))))


def write(page: pathlib.Path, topic: str, text: str) -> None:
    marks = f"<!-- {topic} -->", f"<!-- end of {topic} -->"
    old = page.read_text(encoding="utf-8")
    new, count = re.subn(f"{marks[0]}.*?{marks[1]}", lambda _: f"{marks[0]}\n{text}\n{marks[1]}", old, flags=re.S)
    if count != 1:
        raise SystemExit(f"{page} has no place for {topic}")
    page.write_text(new, encoding="utf-8")


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("topics", nargs="*", choices=["peers", "threads", "growth", "stages", "dask", []])
    parser.add_argument("--points", type=int, default=10**6)
    parser.add_argument("--largest", type=int, default=10**8)
    parser.add_argument("--repetitions", type=int, default=5)
    parser.add_argument("--write", type=pathlib.Path, metavar="PAGE")
    options = parser.parse_args()
    work: Dict[str, Timed] = {
        "peers": lambda: measure_peers(options.points, options.repetitions),
        "threads": lambda: measure_threads(options.points, options.repetitions),
        "growth": lambda: measure_growth(options.largest),
        "stages": lambda: measure_stages(options.points, options.repetitions),
        "dask": lambda: measure_dask(options.largest, options.repetitions),
    }
    for topic in options.topics or work:
        text = work[topic]()
        print(f"\n{topic}\n\n{text}\n")
        if options.write:
            write(options.write, topic, text)


if __name__ == "__main__":
    main()
