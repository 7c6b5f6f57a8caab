"""Dask with a real scheduler and two worker processes on loopback; one of them is killed on the way."""

import os
import signal
import time

import numpy as np
import pandas as pd
import pytest

import orvex

dd = pytest.importorskip("dask.dataframe")
distributed = pytest.importorskip("distributed")

import orvex.dask  # noqa: E402

SECONDS = 60  # after which a computation counts as lost
WAY = orvex.Transformer(orvex.Projection.state_plane("Texas Central", 1927, unit="us-ft"), orvex.Projection.utm(14))


def _table(rows):
    random = np.random.default_rng(11)
    table = pd.DataFrame({"name": np.arange(rows).astype(str), "x": random.uniform(1.5e6, 2.5e6, rows),
                          "y": random.uniform(1e5, 9e5, rows)}, index=np.arange(rows) * 3)
    table.loc[30, "x"] = np.nan
    return table


@pytest.fixture(scope="module")
def client(tmp_path_factory):
    """Workers are processes of their own with a nanny each, which starts a new one where one dies."""
    import dask

    with dask.config.set({"distributed.scheduler.allowed-failures": 5, "distributed.worker.daemon": True,
                          "temporary-directory": str(tmp_path_factory.mktemp("dask"))}):
        cluster = distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, host="127.0.0.1",
                                           dashboard_address=None, silence_logs="CRITICAL")
        with cluster, distributed.Client(cluster, timeout=SECONDS) as connected:
            yield connected


def _result(client, collection):
    return client.compute(collection).result(timeout=SECONDS)


def test_partitions_on_workers_have_the_bits_of_one_machine(client):
    table = _table(20_000)
    local = orvex.dask.convert(table, WAY, x="x", y="y", threads=2)
    expected = WAY.transform(table.x, table.y)
    assert np.array_equal(local[["x", "y"]].to_numpy().T, expected, equal_nan=True) and "name" in local
    lazy = orvex.dask.convert(dd.from_pandas(table, npartitions=9), WAY, x="x", y="y")
    assert list(lazy.columns) == list(table.columns) and lazy.x.dtype == np.float64 and lazy.npartitions == 9
    pd.testing.assert_frame_equal(_result(client, lazy), local, check_exact=True)


def test_results_beside_what_they_come_from_and_other_conversions(client):
    table = _table(1000)
    lazy = orvex.dask.convert(dd.from_pandas(table, npartitions=3), WAY, x="x", y="y", out=("easting", "northing"))
    result = _result(client, lazy)
    assert np.array_equal(result[["easting", "northing"]].to_numpy().T, WAY.transform(table.x, table.y), equal_nan=True)
    assert result[["x", "y"]].equals(table[["x", "y"]])
    degrees = pd.DataFrame({"lon": [15.0], "lat": [50.0]})
    moved = orvex.dask.convert(degrees, orvex.Projection.utm(33), x="lon", y="lat")
    assert (moved.lon[0], moved.lat[0]) == orvex.Projection.utm(33).forward(15.0, 50.0) and degrees.lon[0] == 15


def test_errors_of_workers_arrive(client):
    lazy = orvex.dask.convert(dd.from_pandas(_table(100), npartitions=2), WAY, errors="raise")
    with pytest.raises(orvex.OrvexError, match="point 10 ") as caught:
        _result(client, lazy)
    assert caught.value.message_id == 1
    with pytest.raises(KeyError):
        orvex.dask.convert(dd.from_pandas(_table(10), npartitions=1), WAY, x="longitude", y="y")


def _slow(frame):
    time.sleep(0.15)
    return frame


def test_a_worker_that_is_killed_loses_nothing(client):
    table = _table(20_000)
    local = orvex.dask.convert(table, WAY, threads=1)
    lazy = orvex.dask.convert(dd.from_pandas(table, npartitions=24).map_partitions(_slow, meta=table.head(0)), WAY)
    future = client.compute(lazy)
    deadline = time.monotonic() + SECONDS
    while not any(client.run_on_scheduler(lambda dask_scheduler: [w.nbytes > 0 for w in dask_scheduler.workers.values()])):
        assert time.monotonic() < deadline, "no worker has begun"
        time.sleep(0.05)
    victims = client.run(os.getpid)
    address, pid = next(iter(victims.items()))
    os.kill(pid, signal.SIGKILL)
    assert not future.done()
    pd.testing.assert_frame_equal(future.result(timeout=SECONDS), local, check_exact=True)
    assert pid not in client.run(os.getpid).values()
