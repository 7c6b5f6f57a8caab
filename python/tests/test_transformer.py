"""Datums, coordinate systems, and the way from one to another."""

import pickle

import numpy as np
import pytest

import orvex
from orvex import Datum, OrvexError, Projection, Transformer, _core

WGS_84 = Datum("WGS 84")


def test_worked_datum_examples():
    # IOGP Publication 373-7-2: WGS 72 to WGS 84, 4 00'00.554"E 55 00'00.090"N, from height 0.
    own = Datum.custom("bursa", ellipsoid="WGS 72", dz=4.5, rz=0.554, k=0.219, name="WGS 72 BE")
    lon, lat = Transformer(own, WGS_84).transform(4.0, 55.0)
    assert ((lon - 4) * 3600, (lat - 55) * 3600) == pytest.approx((0.554, 0.090), abs=6e-4)
    assert Transformer(own, WGS_84).inverse(lon, lat) == pytest.approx((4, 55), abs=1e-11)
    # As the manual of the library has it.
    assert Transformer("NAD27", "WGS 84").transform(-95.25, 38.75) == pytest.approx((-95.25026005, 38.75003985), abs=6e-9)
    mre = Transformer(Datum("NAD 1927 - CONUS (MRE)"), WGS_84)
    assert mre.transform(-95.25, 38.75) == pytest.approx((-95.25025251, 38.75002911), abs=6e-9)
    with pytest.raises(OrvexError) as refused:
        mre.inverse(-95.25, 38.75)
    assert refused.value.message_id == 20261


def test_the_whole_way_is_its_parts_one_behind_the_other():
    texas = Projection.state_plane("Texas Central", 1927, unit="us-ft")
    utm = Projection.utm(14)
    way = Transformer(texas, utm)
    x, y = np.random.default_rng(3).uniform((1.5e6, 1e5), (2.5e6, 9e5), (50_000, 2)).T
    lon, lat = texas.inverse(x, y)
    lon, lat = Transformer(Datum("NAD27"), WGS_84).transform(lon, lat)
    expected = utm.forward(lon, lat)
    for threads in (1, 2, None):
        assert np.array_equal(way.transform(x, y, threads=threads), expected)
    assert np.array_equal(way(x, y), expected) and np.array_equal(way.forward(x, y), expected)
    back = way.inverse(*expected)
    assert np.abs(np.array(back) - (x, y)).max() < 1e-5
    assert np.array_equal(pickle.loads(pickle.dumps(way)).transform(x, y), expected)
    assert pickle.loads(pickle.dumps(way)) == way and hash(way) == hash(Transformer(texas, utm))
    pairs = np.column_stack([x, y])
    assert way.transform(pairs) is pairs and np.array_equal(pairs.T, expected)


@pytest.mark.parametrize("code", [
    "EPSG:2154", "EPSG:3035", "EPSG:3857", "EPSG:26939", "EPSG:27572", "EPSG:27700", "EPSG:29873", "EPSG:31370",
    "EPSG:32039", "EPSG:32633", "EPSG:32733", "EPSG:3031", "EPSG:5070", "EPSG:2256",
])
def test_registered_systems_agree_with_proj(code):
    pyproj = pytest.importorskip("pyproj")
    crs = pyproj.CRS(code)
    west, south, east, north = crs.area_of_use.bounds
    if code in ("EPSG:3035",):  # of the sphere only in this library
        with pytest.raises(OrvexError, match="cannot be represented"):
            Projection.from_crs(code)
        return
    projection = Projection.from_crs(code)
    random = np.random.default_rng(7)
    middle = (west + east) / 2
    lon = random.uniform((west + middle) / 2, (east + middle) / 2, 500)  # PROJ's poles and seams are another matter
    lat = random.uniform(south + (north - south) / 4, north - (north - south) / 4, 500)
    x, y = projection.forward(lon, lat)
    theirs = pyproj.Proj(crs)(lon, lat)
    assert np.abs(np.array([x, y]) - theirs).max() * projection.metres_per_unit < 1e-3
    back = projection.inverse(x, y)
    assert np.abs(np.array(back) - (lon, lat)).max() < 1e-9


def test_sides_by_code_name_projection_and_datum():
    by_code = Transformer("EPSG:32039", "EPSG:4326")
    for other in [Transformer(32039, 4326), Transformer("NAD27 / Texas Central", "WGS 84"),
                  Transformer("epsg:32039", WGS_84), Transformer(Projection.from_crs("EPSG:32039"), "EPSG:4326")]:
        assert other.transform(2e6, 5e5) == by_code.transform(2e6, 5e5)
    lon, lat = by_code.transform(2e6, 5e5)
    plain = Projection.from_crs(32039).inverse(2e6, 5e5)
    assert 1e-6 < abs(lon - plain[0]) < 1e-3  # the datum was changed
    assert (by_code.source, by_code.target) == ("NAD27 / Texas Central", "WGS 84")


def test_a_datum_that_the_catalogue_lacks_serves_its_own_systems_only():
    lambert = Transformer("EPSG:4171", "EPSG:2154")  # both RGF93
    assert lambert.transform(3.0, 46.5) == pytest.approx((700_000, 6_600_000), abs=1e-6)  # natural origin, printed
    with pytest.raises(OrvexError, match="lacks"):
        Transformer("EPSG:2154", "EPSG:4326")


def test_prime_meridians_and_grads():
    paris = 2.5969213 * 0.9  # grads, as registered
    to_greenwich = Transformer("EPSG:4807", "EPSG:4275")  # NTF (Paris) in grads to NTF
    assert to_greenwich.transform(10.0, 50.0) == pytest.approx((9 + paris, 45.0), abs=1e-9)
    assert to_greenwich.inverse(*to_greenwich.transform(10.0, 50.0)) == pytest.approx((10, 50), abs=1e-12)
    # The same place by way of WGS 84, whether longitudes count from Paris or from Greenwich.
    a = Transformer("EPSG:4807", "EPSG:4326").transform(1.0, 52.0)
    b = Transformer(Datum("NTF France - Paris Meridian (Bursa-Wolf)"), WGS_84).transform(0.9, 46.8)
    c = Transformer(Projection.from_crs("EPSG:27572"), WGS_84).transform(
        *Projection.from_crs("EPSG:27572").forward(0.9 + paris, 46.8))
    assert a == pytest.approx(b, abs=1e-8) and a == pytest.approx(c, abs=1e-8)


def test_sides_without_a_datum_shift_nothing():
    lambert = Projection("lcc", ellipsoid="Clarke 1866", lat1=33, lat2=45, lon0=-96)
    assert Transformer(lambert, WGS_84).transform(*lambert.forward(-90.0, 40.0)) == pytest.approx((-90, 40), abs=1e-11)
    with_datum = Projection("lcc", datum="NAD27", lat1=33, lat2=45, lon0=-96)
    assert with_datum.parameters["ellipsoid"] == "Clarke 1866"
    assert Transformer(with_datum, WGS_84).transform(*with_datum.forward(-90.0, 40.0)) != pytest.approx((-90, 40), abs=1e-6)
    same = Transformer(WGS_84, Datum(3))
    assert same.transform(200.123, 95.0) == (200.123, 95.0)  # nothing lies between: bit for bit
    assert Transformer(Projection("Unprojected Lat/Long"), lambert).transform(-90.0, 40.0) == lambert.forward(-90.0, 40.0)


def test_accuracy_of_the_whole_way():
    tokyo = Datum("Tokyo")
    exact, stated = Transformer(tokyo, WGS_84), Transformer(tokyo, WGS_84, accuracy="stated")
    place = 139.0, 36.0
    assert exact.inverse(*exact.transform(*place)) == pytest.approx(place, abs=1e-10)
    assert 1e-8 < np.abs(np.subtract(stated.inverse(*stated.transform(*place)), place)).max() < 1e-5  # centimetres


def test_custom_datums_in_a_file(tmp_path):
    ini = tmp_path / "own.ini"
    own = Datum("Old survey", method="molodensky", ellipsoid="Bessel 1841", dx=580, dy=80.5, dz=399)
    own.save(ini)
    again = Datum("old SURVEY", ini=ini)
    assert again.parameters == pytest.approx(own.parameters) or again.parameters["dx"] == 580
    assert again.parameters["ellipsoid"] == "Bessel 1841" and again.method == "Molodensky" and again.can_be_target
    assert Transformer(again, WGS_84).transform(13.0, 52.0) == pytest.approx(Transformer(own, WGS_84).transform(13.0, 52.0))
    assert Datum("Tokyo", ini=ini) == Datum("Tokyo")
    with pytest.raises(OrvexError, match="did you mean 'Old survey'"):
        Datum("Old surwey", ini=ini)
    with pytest.raises(OrvexError, match="cannot be stored"):
        own.save(ini, "Tokyo")
    with pytest.raises(OrvexError, match="cannot be stored"):
        own.save(tmp_path / "nowhere" / "own.ini")
    with pytest.raises(OrvexError, match="built in"):
        WGS_84.save(ini)


def test_the_compiled_part_refuses_what_is_no_record_or_step():
    bytes_ = Projection.utm(33)._record.to_bytes()
    for flag in (100, 105, 114, 115, 140):
        with pytest.raises(OrvexError, match="not the bytes of a projection"):
            _core.Record.from_bytes(bytes_[:flag] + b"\7" + bytes_[flag + 1:])
    for make, says in [(lambda: _core.Conversion([None]), "None"), (lambda: _core.Record(9, {15: 1e300}, False), "whole number"),
                       (lambda: _core.Record(9, {15: 0.5}, False), "whole number")]:
        with pytest.raises(OrvexError, match=says):
            make()


def test_names_of_custom_datums_in_any_encoding(tmp_path):
    ini = tmp_path / "own.ini"
    own = Datum.custom("molodensky", dx=580)
    names = "Plain", "\u00d6sterreich", "M\udcf6sia", "+"  # the third as a program has it that knows no UTF-8
    for name in names:
        own.save(ini, name)
    for name in names:
        found = Datum(name, ini=ini)
        assert found.name == name and found.parameters["dx"] == 580
    with pytest.raises(OrvexError, match="unknown datum '-'"):
        Datum("-", ini=ini)
    before = ini.read_bytes()
    for path, name in ((ini, "Pla\0in"), (f"{ini}\0", "Other")):  # would be stored under a shorter name
        with pytest.raises(ValueError, match="null byte"):
            own.save(path, name)
    assert ini.read_bytes() == before


@pytest.mark.parametrize("call, text", [
    (lambda: Datum("WGS 48"), "did you mean"),
    (lambda: Datum(9999), "9999"),
    (lambda: Datum(None), "goes by its name"),
    (lambda: Datum(3.0), "goes by its name"),
    (lambda: Datum.custom("helmert"), "molodensky"),
    (lambda: Datum.custom(dX=5), "did you mean 'dx'"),
    (lambda: Datum.custom(rx=5), "does not use rx"),
    (lambda: Datum.custom(dx="far"), "dx is a number"),
    (lambda: Datum.custom(dx=float("inf")), "finite"),
    (lambda: Datum.custom(ellipsoid="WGS 84", radius=1.0), "either"),
    (lambda: Datum.custom("bursa", rx=5000.0), "rotation"),
    (lambda: Datum("x", ini="own.ini", dx=5), "either stored or given"),
    (lambda: Transformer("EPSG:4326", None), "Projection or a Datum"),
    (lambda: Transformer("EPSG:4326", True), "Projection or a Datum"),
    (lambda: Transformer("Atlantis", "EPSG:4326"), "unknown coordinate system"),
    (lambda: Transformer("EPSG:2193x", "EPSG:4326"), "unknown coordinate system"),
    (lambda: Transformer("EPSG:999999", "EPSG:4326"), "EPSG:999999"),
    (lambda: Transformer("EPSG:" + "9" * 5000, "EPSG:4326"), "EPSG:999"),
    (lambda: Transformer(10**5000, "EPSG:4326"), "no coordinate system"),
    (lambda: Transformer("\ud800", "EPSG:4326"), "no coordinate system"),
    (lambda: Datum("\u00b2"), "unknown datum"),
    (lambda: Transformer("EPSG:4326", "NAD 1927 - CONUS (MRE)"), "destination"),
    (lambda: Transformer("EPSG:4326", "EPSG:4326", accuracy="best"), '"exact" or "stated"'),
])
def test_what_names_nothing_is_refused_in_words(call, text):
    with pytest.raises(OrvexError, match=text):
        call()


def test_a_grid_that_is_missing_is_said_and_nothing_is_touched():
    shift = Transformer(Datum("NAD 1927 - Canada (NTV2)"), WGS_84)
    points = np.array([[-95.25, 50.0]] * 5000)
    with pytest.raises(OrvexError, match="NTV2 grid") as refused:
        shift.transform(points, threads=2)
    assert refused.value.message_id == 20280 and (points == (-95.25, 50.0)).all()
    with pytest.raises(OrvexError, match="conus.LAS"):
        Transformer(Datum("NAD 1927 - CONUS (NADCON)"), WGS_84).transform(-95.25, 38.75)


def test_catalogues_as_lists_and_frames():
    assert [len(rows) for rows in (orvex.projections(), orvex.ellipsoids(), orvex.datums(), orvex.zones(1927),
                                   orvex.zones(1983), orvex.methods())] == [29, 55, 253, 134, 123, 11]
    frame = orvex.datums(frame=True).set_index("name")
    assert frame.loc["NAD 1927 - CONUS (MRE)", "can_be_target"] == False  # noqa: E712
    assert frame.loc["World Geodetic System 1984", "posc"] == 6326
    assert {row.keyword for row in orvex.parameters("utm") if row.used} == {"ellipsoid", "radius", "flattening", "scale",
                                                                            "k0", "lon0", "lat0", "south"}
    assert orvex.zones(frame=True).set_index("name").loc["Texas Central", "posc1927"] == 32039
    assert any(row.code == 32039 for row in orvex.systems("texas central")) and not orvex.systems("atlantis")
    assert len(orvex.systems()) > 5000
    for rows in (orvex.projections, orvex.ellipsoids, orvex.methods, orvex.systems):
        assert list(rows(frame=True).columns) == list(rows()[0]._fields)
    with pytest.raises(OrvexError):
        orvex.zones(1950)
    with pytest.raises(OrvexError):
        orvex.parameters("Mercater")


@pytest.mark.parametrize("text, degrees", [
    ("-85d50'", -(85 + 50 / 60)), ("30d30'15.5\"", 30 + 30 / 60 + 15.5 / 3600), ("57", 57), ("120d W", -120),
    (" 45 N ", 45), ("9\u00b030\u2032 E", 9.5), ("+7.25", 7.25),
])
def test_angles_are_read(text, degrees):
    assert orvex.parse_angle(text) == pytest.approx(degrees, abs=1e-13)
    assert orvex.parse_angle([text, "1"]) == [orvex.parse_angle(text), 1.0]


def test_angles_are_written_and_read_again():
    for value, axis, style, decimals, text in [
        (-9.504305556, "lon", "dms", 4, '9d30\'15.5000"W'), (45.25, "lat", "dm", 2, "45d15.00'N"),
        (-0.5, "", "dms", 0, "-0d30'00\""), (10.9999999999, "lat", "dms", 2, '11d00\'00.00"N'), (7.125, "", "d", 3, "7.125"),
    ]:
        assert orvex.format_angle(value, axis, style=style, decimals=decimals) == text
    for value in np.random.default_rng(2).uniform(-180, 180, 200):
        assert orvex.parse_angle(orvex.format_angle(value, "lon", decimals=9)) == pytest.approx(value, abs=1e-12)
    for bad in ["", "east", "12d30'xyz", "1\0", "9" * 300, "12,5"]:
        with pytest.raises(OrvexError):
            orvex.parse_angle(bad)
    for bad in [dict(style="x"), dict(decimals=16), dict(axis="x")]:
        with pytest.raises(OrvexError):
            orvex.format_angle(1.0, **bad)
    with pytest.raises(OrvexError):
        orvex.format_angle(float("nan"))
