"""Fits to control points, clipping, tables of geometries and maps."""

import pickle

import numpy as np
import pytest

import orvex
from orvex import Georef, OrvexError, Projection

# examples/georef/controls.csv of the source tree and what the command-line host's manual reports for it
CONTROLS = np.array([
    [462, 480, 689395.90, 5336895.70], [2559, 1152, 693865.70, 5335518.00], [3605, 549, 696063.20, 5336820.60],
    [5998, 608, 701153.20, 5336747.00], [843, 2259, 690249.20, 5333132.90], [2862, 3011, 694550.80, 5331591.50],
    [4103, 2116, 697164.50, 5333514.40], [6073, 2151, 701347.40, 5333482.70], [851, 4518, 690311.80, 5328356.60],
    [2482, 4162, 693767.70, 5329143.50], [4053, 4418, 697107.00, 5328640.00], [5986, 4120, 701207.40, 5329313.80],
])
REPORTED = [1.75, 2.48, 7.32, 1.61, 5.36, 2.13, 1.82, 1.34, 2.57, 2.04, 2.61, 1.01]


def test_fit_and_residuals():
    affine = Georef(CONTROLS, "affine")
    assert affine.residuals == pytest.approx(REPORTED, abs=0.005) and affine.rms == pytest.approx(3.19, abs=0.005)
    assert affine.forward(0.0, 0.0) == pytest.approx((688404.376328435, 5337899.60008889), abs=1e-6)
    assert affine.method == "Affine Polynomial" and np.array_equal(affine.controls, CONTROLS)
    pair = Georef((CONTROLS[:, :2].tolist(), CONTROLS[:, 2:]), "Affine Polynomial")
    assert np.array_equal(pair.forward(CONTROLS[:, 0], CONTROLS[:, 1]), affine.transform(CONTROLS[:, 0], CONTROLS[:, 1]))
    warp = Georef(CONTROLS, "tps")
    assert warp.rms < 1e-5 and warp.forward(0.0, 0.0) == pytest.approx((688402.3332, 5337902.9758), abs=1e-4)
    again = pickle.loads(pickle.dumps(warp))
    assert np.array_equal(again.forward(CONTROLS[:, :2].copy()), warp(CONTROLS[:, :2].copy()))
    with pytest.raises(ValueError):
        affine.residuals[0] = 1


@pytest.mark.parametrize("controls, method, text", [
    (CONTROLS[:6], "poly3", "at least 10 control points, not 6"), (CONTROLS, "affinity", "did you mean 'affine'"),
    (CONTROLS[:, :3], "affine", r"\(n, 4\)"), ((CONTROLS[:, :2], CONTROLS[1:, 2:]), "affine", "do not go together"),
    (np.full((4, 4), np.nan), "affine", "not finite"), (np.ones((4, 4)), "affine", "do not determine"),
    ([], "affine", r"\(n, 4\)"), ("controls.csv", "affine", "not real numbers"), (None, "affine", "not real numbers"),
])
def test_controls_that_fit_nothing_are_refused(controls, method, text):
    with pytest.raises(OrvexError, match=text):
        Georef(controls, method)


DISC = Projection("Orthographic", lat0=0, lon0=0, radius=6371000)


def test_lines_are_cut_to_the_domain():
    line = np.column_stack([np.linspace(-170, 170, 341), np.zeros(341)])
    (piece,) = orvex.clip(DISC, line)
    assert np.array_equal(orvex.clip(DISC, lines=[line])[0], piece)
    assert np.abs(piece[[0, -1], 0]) == pytest.approx(90, abs=2e-3) and np.isfinite(DISC.forward(piece.copy())).all()
    assert orvex.clip(DISC, [[150, 0], [170, 10]]) == [] and len(orvex.clip(DISC, [[(0, 0), (10, 10)], [(5, 5), (7, 7)]])) == 2


def test_rings_stay_rings_with_their_holes():
    outer = np.array([(-120, -20), (-60, -20), (-60, 20), (-120, 20), (-120, -20)], float)
    hole = np.array([(-70, -5), (-65, -5), (-65, 5), (-70, -5)], float)
    left = orvex.clip(DISC, [outer, hole])
    assert len(left) == 2 and all((ring[0] == ring[-1]).all() and len(ring) > 3 for ring in left)
    assert min(ring[:, 0].min() for ring in left) > -90.01
    open_ring = orvex.clip(DISC, rings=[outer[:-1], hole[:-1]])
    assert all(np.array_equal(a, b) for a, b in zip(left, open_ring))


def test_what_reaches_over_the_edge_comes_on_both_sides():
    mollweide = Projection("Mollweide", lon0=0)
    box = np.array([(170, 0), (190, 0), (190, 10), (170, 10), (170, 0)], float)
    west_and_east = orvex.clip(mollweide, box)
    assert sorted(round(float(ring[:, 0].mean())) // 100 for ring in west_and_east) == [-2, 1]


@pytest.mark.parametrize("call, text", [
    (lambda: orvex.clip(DISC), "give rings"), (lambda: orvex.clip(DISC, [], lines=[]), "give rings"),
    (lambda: orvex.clip("Orthographic", []), "clipped to a Projection"), (lambda: orvex.clip(DISC, 5), r"\(n, 2\)"),
    (lambda: orvex.clip(DISC, lines=[[(0, 0)]]), "at least 2 points"),
    (lambda: orvex.clip(DISC, [np.zeros((5, 3))]), r"\(n, 2\)"),
    (lambda: orvex.clip(DISC, lines=[[(0, 0), (np.nan, 1)]]), "not finite"),
    (lambda: orvex.clip(DISC, [[(0, 0), (1, 1)], [(0, 0), (1, 0), (1, 1), (0, 0)]]), "some are not"),
    (lambda: orvex.clip(Projection("Unprojected Lat/Long"), [[(0, 0), (1, 1)]]), ""),
])
def test_shapes_that_are_none_are_refused(call, text):
    with pytest.raises(OrvexError, match=text):
        call()


# ---- tables of geometries ----


@pytest.fixture
def table():
    geopandas = pytest.importorskip("geopandas")
    from shapely.geometry import MultiPolygon, Point, Polygon

    box = Polygon([(-100, 30), (-97, 30), (-97, 32), (-100, 30)], [[(-98, 30.9), (-97.5, 31), (-98, 31.1)]])
    shapes = [Point(-97.75, 30.25), box, MultiPolygon([box]), None, Polygon(), Point(-98, 30, 5)]
    return geopandas.GeoDataFrame({"name": list("abcdef")}, geometry=shapes, crs="EPSG:4326", index=[3, 1, 4, 2, 5, 9])


def test_geodataframes(table):
    import orvex.geo

    transformer = orvex.Transformer("EPSG:4326", "EPSG:32614")
    result = orvex.geo.to_crs(table, "EPSG:32614")
    assert result.crs.to_epsg() == 32614 and list(result.index) == list(table.index) and list(result.name) == list("abcdef")
    assert table.geometry.iloc[0].x == -97.75 and table.crs.to_epsg() == 4326
    assert result.geometry.iloc[0].coords[0] == transformer.transform(-97.75, 30.25)
    hole = np.array(table.geometry.iloc[1].interiors[0].coords)
    assert np.array_equal(result.geometry.iloc[2].geoms[0].interiors[0].coords, transformer.transform(hole.copy()))
    assert result.geometry.iloc[3] is None and result.geometry.iloc[4].is_empty and result.geometry.iloc[5].z == 5
    points = table.geometry[[3]]
    assert orvex.geo.to_crs(points, 32614).iloc[0].coords[0] == transformer.transform(-97.75, 30.25)
    back = orvex.geo.to_crs(result.drop(index=[2, 5]), "EPSG:4326")
    assert back.geometry.iloc[1].equals_exact(table.geometry.iloc[1], 1e-9)
    nameless = type(table)(table[["name"]], geometry=list(table.geometry))
    with pytest.raises(OrvexError, match="name it"):
        orvex.geo.to_crs(nameless, "EPSG:32614")
    own = orvex.geo.to_crs(nameless, Projection.utm(14), from_="WGS 84")
    assert own.crs is None and own.geometry.iloc[0].coords[0] == result.geometry.iloc[0].coords[0]


def test_shapely_transform(table):
    import orvex.geo
    from shapely.ops import transform

    transformer = orvex.Transformer("WGS 84", Projection("Orthographic", lat0=40, lon0=-100, radius=6371000))
    shape = table.geometry.iloc[1]
    moved = transform(orvex.geo.function(transformer), shape)
    assert np.array_equal(moved.exterior.coords, transformer.transform(np.array(shape.exterior.coords)))
    assert transform(transformer.transform, table.geometry.iloc[0]).x == transformer.transform(-97.75, 30.25)[0]
    with pytest.raises(OrvexError, match="cannot be converted"):
        transform(orvex.geo.function(transformer, errors="raise"), type(table.geometry.iloc[0])(80, -40))


# ---- maps ----


@pytest.fixture
def plot():
    matplotlib = pytest.importorskip("matplotlib")
    matplotlib.use("Agg")
    import orvex.plot
    from matplotlib import pyplot

    yield orvex.plot
    pyplot.close("all")


def _drawn(collection):
    return [path.vertices for path in collection.get_paths()]


@pytest.mark.parametrize("row", orvex.projections()[1:], ids=lambda row: row.name)
def test_every_projection_can_be_drawn(plot, row):
    needed = {"Albers Equal Area Conic": dict(lat1=29.5, lat2=45.5), "Lambert Conformal Conic": dict(lat1=33, lat2=45),
              "Equidistant Conic": dict(lat1=20, lat2=60), "Bonne": dict(lat1=40), "Hotine Oblique Mercator":
              dict(use_alpha=True, alpha=30, lat0=40), "Oblique Mercator": dict(lat1=40.6, lon1=-73.8, lat2=35.5, lon2=139.8)}
    projection = Projection.state_plane("Texas Central", int(row.name[-4:])) if row.name.startswith("State Plane") \
        else Projection(row.name, **needed.get(row.name, {}))
    ax = plot.world(projection)
    grid, coasts, ellipses = ax.collections
    assert len(_drawn(grid)) > 3 and len(_drawn(coasts)) > (0 if "State" in row.name else 3)
    everything = np.vstack(_drawn(grid) + _drawn(coasts) + _drawn(ellipses))
    assert np.isfinite(everything).all() and np.ptp(everything, axis=0).max() < 3e8
    # No line leaps across the map: a step on the globe of at most a degree is a small part of the map.
    size = np.ptp(np.vstack(_drawn(grid)), axis=0).max()
    steps = np.concatenate([np.hypot(*np.diff(path, axis=0).T) for path in _drawn(coasts)])
    assert steps.max() < size / 5
    ax.figure.canvas.draw()


def test_ellipses_are_what_the_projection_promises(plot):
    def axes(projection):
        lon, lat = np.meshgrid(np.arange(-60, 61, 30.0), np.arange(-60, 61, 20.0))
        return np.linalg.svd(plot.indicatrices(projection, lon.ravel(), lat.ravel()), compute_uv=False).T

    long, short = axes(Projection("Mercator"))
    assert long == pytest.approx(short, rel=1e-6)  # conformal
    long, short = axes(Projection("Mollweide", radius=6378137.0))
    assert long * short == pytest.approx(np.ones(len(long)), rel=1e-6)  # equal area


def test_data_on_top(plot):
    disc = Projection("Orthographic", lat0=40, lon0=-100, radius=6371000)
    ax = plot.world(disc, ellipses=None)
    dots = plot.points(disc, [-100, 80], [40, -40], ax=ax, color="k")
    assert np.allclose(dots.get_offsets()[0], 0, atol=1e-3) and np.ma.is_masked(np.ma.masked_invalid(dots.get_offsets())[1])
    path = plot.lines(disc, [[(-100, 40), (80, -40)], [(170, 50), (-170, 50)]], ax=ax)
    assert len(_drawn(path)) == 2
    part = plot.world(Projection.utm(33), extent=("5 E", 45, 25, 56), step=5, ellipses=None)
    assert 3e5 < np.ptp(np.vstack(_drawn(part.collections[0])), axis=0).max() < 3e6
    for bad in [(1, 2, 3), (0, 50, 10, 40), (0, -100, 10, 40), (0, 0, 500, 40)]:
        with pytest.raises(OrvexError, match="west, south, east, north"):
            plot.world(disc, extent=bad)
    with pytest.raises(OrvexError, match="Projection"):
        plot.world("Orthographic")
    with pytest.raises(OrvexError, match="a line"):
        plot.lines(disc, [[(1, 2)]])
