"""The worked example runs as it stands, with its million places."""

import pathlib
import subprocess
import sys

import numpy as np
import pandas as pd
import pytest

EXAMPLE = pathlib.Path(__file__).resolve().parents[2] / "examples" / "python" / "places.py"


def test_a_million_places(tmp_path):
    pytest.importorskip("matplotlib")
    done = subprocess.run([sys.executable, str(EXAMPLE), "1000000", str(tmp_path)], capture_output=True, text=True,
                          timeout=300)
    assert done.returncode == 0, done.stderr
    table = pd.read_csv(tmp_path / "places-wgs84.csv")
    assert len(table) == 1_000_000 and table.lon.isna().sum() == table.lat.isna().sum() == 1
    assert table.lon.between(-105, -93).sum() == table.lat.between(28, 35).sum() == 999_999
    lost = float(done.stdout.split("there and back: ")[1].split()[0])
    assert lost < 1e-4  # inches
    matplotlib_image = pytest.importorskip("matplotlib.image")
    picture = matplotlib_image.imread(tmp_path / "places.png")[..., :3]
    assert min(picture.shape[:2]) > 400 and len(np.unique((picture * 255).astype(int).reshape(-1, 3), axis=0)) > 30
