"""Projections: printed values, agreement with PROJ, units, and every way to get a parameter wrong."""

import pickle

import numpy as np
import pytest

import orvex
from peers import PEERS
from orvex import OrvexError, Projection

CLARKE = {"ellipsoid": "Clarke 1866"}

# Snyder, Map Projections - A Working Manual (USGS PP 1395), numerical examples, printed to 0.1 m; and IOGP Publication
# 373-7-2, Lambert Conic Conformal (2SP), printed to 0.01 US survey feet.
PRINTED = [
    (Projection("Lambert Conformal Conic", lat0=23, lon0=-96, lat1=33, lat2=45, **CLARKE), -75, 35, 1894410.9, 1564649.5, 0.06),
    (Projection("Albers Equal Area Conic", lat0=23, lon0=-96, lat1=29.5, lat2=45.5, **CLARKE), -75, 35, 1885472.7, 1535925.0, 0.06),
    (Projection("Mercator", lon0=-180, **CLARKE), -75, 35, 11688673.7, 4139145.6, 0.1),
    (Projection.utm(18, **CLARKE), -73.5, 40.5, 627106.5, 4484124.4, 0.06),
    (Projection("lcc", ellipsoid="Clarke 1866", unit="us-ft", lat1="28d23'", lat2="30d17' N", lat0="27d50'", lon0="99 W",
                false_easting=2_000_000), -96, 28.5, 2963503.91, 254759.80, 0.006),
    (Projection.state_plane("Texas South Central", 1927, unit="us-ft"), -96, 28.5, 2963503.91, 254759.80, 0.006),
    (Projection.from_crs("EPSG:32040"), -96, 28.5, 2963503.91, 254759.80, 0.006),
]


@pytest.mark.parametrize("projection, lon, lat, x, y, tolerance", PRINTED)
def test_printed_values(projection, lon, lat, x, y, tolerance):
    assert projection.forward(lon, lat) == pytest.approx((x, y), abs=tolerance, rel=0)
    assert projection.inverse(x, y) == pytest.approx((lon, lat), abs=2e-6, rel=0)


@pytest.mark.parametrize("peer", PEERS, ids=lambda peer: peer.label)
def test_agrees_with_proj_and_comes_back(peer):
    pyproj = pytest.importorskip("pyproj")
    lon, lat = peer.places(2000)
    projection = peer.projection()
    x, y = projection.forward(lon, lat, errors="raise")
    apart = np.array([x, y]) - np.array(pyproj.Proj(peer.definition())(lon, lat))
    if "Hotine" in peer.name:  # whose origins differ by a constant
        apart -= np.median(apart, axis=1, keepdims=True)
    assert np.abs(apart).max() < peer.apart
    back = projection.inverse(x, y, errors="raise")
    off = np.array([np.remainder(back[0] - lon + 180, 360) - 180, back[1] - lat])
    assert np.abs(off).max() < 1e-9


def test_stated_accuracy_is_the_other_one():
    exact = Projection("Lambert Conformal Conic", lat1=33, lat2=45, lat0=39, lon0=-96)
    stated = exact.with_accuracy("stated")
    assert (exact.accuracy, stated.accuracy, stated.with_accuracy("exact")) == ("exact", "stated", exact)
    there = exact.forward(-90.0, 40.0)
    assert exact.inverse(*there) == pytest.approx((-90, 40), abs=1e-11, rel=0)
    assert 1e-9 < abs(stated.inverse(*there)[1] - 40) < 1e-4  # stops early on purpose


def test_units_scale_the_map_and_its_origin_alike():
    metres = Projection("tm", lon0=9, false_easting=500_000)
    for unit, size in [("km", 1000.0), ("ft", 0.3048), ("us-ft", 1200 / 3937), (0.5, 0.5)]:
        other = Projection("tm", lon0=9, false_easting=500_000 / size, unit=unit)
        assert np.array(other.forward(10.0, 50.0)) * size == pytest.approx(metres.forward(10.0, 50.0), rel=1e-14)
        assert other.parameters["false_easting"] == pytest.approx(500_000 / size, rel=1e-15)
        assert other.inverse(*other.forward(10.0, 50.0)) == pytest.approx((10, 50), abs=1e-11)
    assert metres.unit == "m" and Projection("tm", unit="US-FT").unit == "us-ft"


def test_utm_and_state_plane_bring_their_figures():
    south = Projection.utm(33, south=True)
    assert south.forward(15.0, 0.0) == (500_000, 10_000_000) and south.datum.name == "World Geodetic System 1984"
    assert Projection.utm(33, datum="NAD27").parameters["ellipsoid"] == "Clarke 1866"
    texas = Projection.state_plane("texas central", 1983)
    assert texas.datum.name == "North American Datum 1983" and texas.parameters["zone"] == "Texas Central"
    assert texas == Projection.state_plane(4203, 1983) != Projection.state_plane("Texas Central", 1927)
    # As the command-line host's manual has it.
    assert texas.forward(-97.75, 30.25) == pytest.approx((948598.5622, 3067553.4774), abs=1e-4)


def test_values_survive_pickling_and_their_own_parameters():
    for projection in [*(case[0] for case in PRINTED), Projection("Mollweide", radius=6371000, lon0=11, accuracy="stated"),
                       Projection.from_crs("EPSG:29873"), Projection.utm(7)]:
        again = pickle.loads(pickle.dumps(projection))
        assert again == projection and hash(again) == hash(projection) and repr(again) == repr(projection)
        assert again.forward(114.0, 4.0) == projection.forward(114.0, 4.0) or np.isnan(projection.forward(114.0, 4.0)[0])
    lambert = PRINTED[0][0]
    assert Projection(lambert.name, **lambert.parameters) == lambert
    assert eval(repr(lambert)) == lambert


BAD = [  # call, part of the message, the library's id where it is the library that refuses
    (lambda: Projection("Mercater"), "did you mean 'Mercator'", 20205),
    (lambda: Projection(5), "goes by its name", 20205),
    (lambda: Projection("Mercator", lat_0=5), "did you mean 'lat0'", 20205),
    (lambda: Projection("Mercator", lon_0=5), "did you mean 'lon0'", 20205),
    (lambda: Projection("Mercator", false_eating=5), "did you mean 'false_easting'", 20205),
    (lambda: Projection("Mercator", elipsoid="WGS 84"), "did you mean 'ellipsoid'", 20205),
    (lambda: Projection("Mercator", x_0=5), "did you mean 'false_easting'", 20205),
    (lambda: Projection("Mercator", lat2=5), "does not use lat2; it uses: ellipsoid", 20205),
    (lambda: Projection("Mercator", zzz=5), "unknown parameter 'zzz'", 20205),
    (lambda: Projection("Mercator", lon0=400), "", 20235),
    (lambda: Projection("Mercator", lat0=90), "", 20251),
    (lambda: Projection("lcc", lat1=33, lat2=33.01), "", 20247),
    (lambda: Projection("lcc", lat1=float("nan"), lat2=45), "lat1 is a finite number", 20205),
    (lambda: Projection("lcc", lat1="thirty", lat2=45), "not an angle", 20205),
    (lambda: Projection("lcc", lat1=None, lat2=45), "lat1 is a number", 20205),
    (lambda: Projection("tm", k0=-1), "k0 is above 0", 20205),
    (lambda: Projection("tm", ellipsoid="WGS 48"), "unknown ellipsoid", 20205),
    (lambda: Projection("tm", ellipsoid="Clarke 1880"), "Clarke 1880 IGN", 20205),  # several begin like this
    (lambda: Projection("tm", ellipsoid="WGS 84", radius=6e6), "either an ellipsoid or a radius", 20205),
    (lambda: Projection("tm", flattening=0.003), "needs radius", 20205),
    (lambda: Projection("tm", radius=6e6, flattening=1.5), "", 20250),
    (lambda: Projection("tm", unit="parsec"), "unknown unit", 20205),
    (lambda: Projection("tm", unit=0), "unit is above 0", 20205),
    (lambda: Projection("tm", accuracy="rough"), '"exact" or "stated"', 20205),
    (lambda: Projection("Hotine", rotate="maybe"), "True or False", 20205),
    (lambda: Projection("State Plane 1927"), "needs the zone", 20205),
    (lambda: Projection("Unprojected Lat/Long", unit="ft"), "no unit", 20205),
    (lambda: Projection.utm(61), "from 1 to 60", 20205),
    (lambda: Projection.utm(33.5), "from 1 to 60", 20205),
    (lambda: Projection.utm(33, lon0=9), "the zone sets lon0", 20205),
    (lambda: Projection.state_plane("Texas Centrall"), "did you mean 'Texas Central'", 20205),
    (lambda: Projection.state_plane("Texas Central", 1950), "1927 and 1983", 20205),
    (lambda: Projection.state_plane("Montana", 1927), "", 20252),
    (lambda: Projection.from_crs("EPSG:4326"), "geographic", 20205),
    (lambda: Projection.from_crs("EPSG:1"), "EPSG:1", 20205),
    (lambda: Projection.from_crs("EPSG:31370x"), "unknown coordinate system", 20205),
    (lambda: Projection("tm").forward(1, 2, errors="ignore"), '"nan" or "raise"', 20205),
    (lambda: Projection("tm").forward(1, 2, threads=0), "threads", 20205),
    (lambda: Projection("tm").forward(1, 2, threads=2.0), "threads", 20205),
]


@pytest.mark.parametrize("call, text, message_id", BAD)
def test_bad_parameters_are_refused_in_words(call, text, message_id):
    with pytest.raises(OrvexError) as caught:
        call()
    assert isinstance(caught.value, ValueError) and str(caught.value)
    assert text in str(caught.value) and caught.value.message_id == message_id
    assert pickle.loads(pickle.dumps(caught.value)).message_id == message_id


def test_domain():
    disc = Projection("Orthographic", lat0=40, lon0=-100, radius=6371000)
    assert disc.contains(-100, 40) is True and disc.contains(80, -40) is False
    assert disc.contains([-100, 80, np.nan], [[40], [-40]]).tolist() == [[True, False, False], [True, False, False]]
    with pytest.raises(OrvexError, match="do not go together"):
        disc.contains([1, 2], [1, 2, 3])


def test_unplottable_points():
    disc = Projection("Orthographic", lat0=40, lon0=-100, radius=6371000)
    lon, lat = np.array([-100.0, 80.0, -90.0, np.inf]), np.array([40.0, -40.0, 30.0, 1.0])
    x, y = disc.forward(lon, lat)
    assert np.isnan(x).tolist() == np.isnan(y).tolist() == [False, True, False, True]
    with pytest.raises(OrvexError, match=r"point 1 \(lon 80\.0, lat -40\.0\) cannot be converted; 2 of 4") as caught:
        disc.forward(lon, lat, errors="raise")
    assert caught.value.message_id == 1
    with pytest.raises(OrvexError, match=r"point \(1, 0\)"):
        disc.forward(lon.reshape(2, 2).T[:, :1], lat.reshape(2, 2).T[:, :1], errors="raise")
    with pytest.raises(OrvexError, match="the point"):
        disc.forward(80.0, -40.0, errors="raise")


def test_a_point_at_which_a_formula_asserts_takes_no_other_with_it():
    bonne = Projection("Bonne", lat1=90, accuracy="stated")
    lon, lat = np.linspace(-60, 60, 5000), np.linspace(10, 80, 5000)
    lat[1234] = 90
    x, y = bonne.forward(lon, lat)
    keep = np.arange(5000) != 1234
    assert np.isnan(x[1234]) and not np.isnan(x[keep]).any()
    assert np.array_equal(bonne.forward(lon[keep], lat[keep]), (x[keep], y[keep]))


def test_version():
    assert orvex.__version__.count(".") == 2
