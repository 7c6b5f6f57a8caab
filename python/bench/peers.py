"""Projections that PROJ has too: the same definition for both, and the places where both are used."""

from typing import Any, Dict, List, NamedTuple, Tuple

import numpy as np

import orvex

SPHERE = {"radius": 6371000.0}
WGS_84: Dict[str, Any] = {"ellipsoid": "WGS 84"}


class Peer(NamedTuple):
    name: str
    parameters: Dict[str, Any]
    proj: str  #: PROJ's definition, without the ellipsoid
    west: float
    south: float
    east: float
    north: float
    apart: float = 1e-5  #: metres that PROJ's result may differ by; its own iterations stop at 1e-6

    @property
    def label(self) -> str:
        return f"{self.name}, {'sphere' if 'radius' in self.parameters else 'ellipsoid'}"

    def projection(self) -> orvex.Projection:
        return orvex.Projection(self.name, **self.parameters)

    def definition(self) -> str:
        return f"+proj={self.proj} {'+R=6371000' if 'radius' in self.parameters else '+ellps=WGS84'}"

    def places(self, count: int, seed: int = 1) -> Tuple[np.ndarray, np.ndarray]:
        random = np.random.default_rng(seed)
        return random.uniform(self.west, self.east, count), random.uniform(self.south, self.north, count)


def _peers() -> List[Peer]:
    def sphere(**parameters: Any) -> Dict[str, Any]:
        return {**SPHERE, **parameters}

    def wgs84(**parameters: Any) -> Dict[str, Any]:
        return {**WGS_84, **parameters}

    conic = dict(lat0=23, lon0=-96)
    american, disc = (-150, 10, -40, 75), (-140, 5, -60, 75)
    return [
        Peer("Mercator", wgs84(lon0=20), "merc +lon_0=20", -155, -80, 195, 80),
        Peer("Mercator", sphere(lon0=20), "merc +lon_0=20", -155, -80, 195, 80),
        Peer("Albers Equal Area Conic", wgs84(lat1=29.5, lat2=45.5, **conic),
             "aea +lat_0=23 +lon_0=-96 +lat_1=29.5 +lat_2=45.5", *american),
        Peer("Albers Equal Area Conic", sphere(lat1=29.5, lat2=45.5, **conic),
             "aea +lat_0=23 +lon_0=-96 +lat_1=29.5 +lat_2=45.5", *american),
        Peer("Miller Cylindrical", sphere(lon0=20), "mill +lon_0=20", -155, -85, 195, 85),
        Peer("Universal Transverse Mercator (UTM)", wgs84(lon0=15.0), "utm +zone=33", 11, 0, 19, 84),
        Peer("Lambert Conformal Conic", wgs84(lat1=33, lat2=45, **conic),
             "lcc +lat_0=23 +lon_0=-96 +lat_1=33 +lat_2=45", *american),
        Peer("Lambert Conformal Conic", sphere(lat1=33, lat2=45, **conic),
             "lcc +lat_0=23 +lon_0=-96 +lat_1=33 +lat_2=45", *american),
        Peer("Stereographic", wgs84(lat0=-40, lon0=100, k0=0.9999), "stere +lat_0=-40 +lon_0=100 +k_0=0.9999",
             60, -80, 140, 0),
        Peer("Stereographic", sphere(lat0=40, lon0=-100, k0=0.97), "stere +lat_0=40 +lon_0=-100 +k_0=0.97", *disc),
        Peer("Orthographic", sphere(lat0=40, lon0=-100), "ortho +lat_0=40 +lon_0=-100", *disc),
        Peer("Mollweide", sphere(lon0=11), "moll +lon_0=11", -165, -85, 185, 85),
        Peer("Polyconic", wgs84(lat0=30, lon0=-96), "poly +lat_0=30 +lon_0=-96", -120, 0, -70, 60),
        Peer("Polyconic", sphere(lat0=30, lon0=-96), "poly +lat_0=30 +lon_0=-96", -120, 0, -70, 60),
        Peer("Equidistant Cylindrical", sphere(lon0=20, lat1=-37), "eqc +lon_0=20 +lat_ts=-37", -155, -85, 195, 85),
        # Another interpolation of the same table.
        Peer("Robinson", sphere(), "robin", -175, -85, 175, 85,
             apart=np.inf),
        # PROJ's formula loses its digits near the centre of the map: centimetres against 40-digit arithmetic.
        Peer("Van Der Grinten", sphere(lon0=-30), "vandg +lon_0=-30", -205, -80, 145, 80, apart=0.1),
        Peer("Cassini", sphere(lat0=-12, lon0=80), "cass +lat_0=-12 +lon_0=80", 50, -60, 110, 60),
        Peer("Transverse Mercator", wgs84(lat0=49, lon0=-2, k0=0.9996012717),
             "tmerc +lat_0=49 +lon_0=-2 +k_0=0.9996012717", -10, 40, 6, 65),
        Peer("Transverse Mercator", sphere(lat0=-12, lon0=80, k0=0.9996), "tmerc +lat_0=-12 +lon_0=80 +k_0=0.9996",
             50, -60, 110, 60),
        Peer("Sinusoidal", wgs84(lon0=11), "sinu +lon_0=11", -165, -85, 185, 85),
        Peer("Sinusoidal", sphere(lon0=11), "sinu +lon_0=11", -165, -85, 185, 85),
        Peer("Lambert Azimuthal Equal Area", sphere(lat1=40, lon0=-100), "laea +lat_0=40 +lon_0=-100", *disc),
        Peer("Bonne", wgs84(lat1=40, lon0=-75), "bonne +lat_1=40 +lon_0=-75", -130, 0, -20, 80),
        Peer("Bonne", sphere(lat1=40, lon0=-75), "bonne +lat_1=40 +lon_0=-75", -130, 0, -20, 80),
        Peer("Eckert IV", sphere(lon0=-30), "eck4 +lon_0=-30", -205, -85, 145, 85),
        Peer("Eckert VI", sphere(lon0=-30), "eck6 +lon_0=-30", -205, -85, 145, 85),
        Peer("Equidistant Conic", sphere(lat0=10, lon0=7, lat1=-20, lat2=61),
             "eqdc +lat_0=10 +lon_0=7 +lat_1=-20 +lat_2=61", -60, -40, 70, 75),
        Peer("Gnomonic", sphere(lat1=40, lon0=-100), "gnom +lat_0=40 +lon_0=-100", -130, 15, -70, 65),
        Peer("Azimuthal Equidistant", sphere(lat1=40, lon0=-100), "aeqd +lat_0=40 +lon_0=-100", *disc),
        Peer("Hotine Oblique Mercator", wgs84(lat0=57, lon0=-133.6, alpha=-36.9, k0=0.9999, use_alpha=True, rotate=True),
             "omerc +lat_0=57 +lonc=-133.6 +alpha=-36.9 +k_0=0.9999 +no_uoff", -137, 54, -130, 60),
    ]


PEERS = _peers()
