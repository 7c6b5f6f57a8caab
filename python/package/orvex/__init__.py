"""Orvex: map projections, geodetic datums, clipping and georeferencing for NumPy arrays.

>>> import numpy as np, orvex
>>> utm = orvex.Projection.utm(33)
>>> x, y = utm.forward(np.array([13.4050, 16.3738]), np.array([52.5200, 48.2082]))
>>> lon, lat = orvex.Transformer("EPSG:32039", "EPSG:4326").transform(2_900_000.0, 700_000.0)

x is always longitude or easting and y latitude or northing; angles are decimal degrees. Everything is computed exactly
unless ``accuracy="stated"`` asks for what other hosts of the library get. The modules :mod:`orvex.geo`,
:mod:`orvex.plot` and :mod:`orvex.dask` serve GeoPandas, Matplotlib and Dask; they are imported by name.
"""

from ._clip import clip
from ._core import __version__
from ._datum import Datum
from ._errors import OrvexError
from ._georef import Georef
from ._projection import Projection
from ._transformer import Transformer
from .angles import format_angle, parse_angle
from .catalogue import datums, ellipsoids, methods, parameters, projections, systems, zones

__all__ = [
    "Datum", "Georef", "OrvexError", "Projection", "Transformer", "__version__", "clip", "datums", "ellipsoids",
    "format_angle", "methods", "parameters", "parse_angle", "projections", "systems", "zones",
]
