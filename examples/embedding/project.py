#!/usr/bin/env python3
"""Projects an array of points in place with the shared library and nothing but ctypes.

Usage: project.py [path of liborvex.so or talven.dll]"""
import array
import ctypes
import sys
from ctypes import POINTER, c_char_p, c_double, c_int, c_int32, c_uint8, c_void_p

library = ctypes.CDLL(sys.argv[1] if len(sys.argv) > 1 else "liborvex.so.1")
OK, UNPLOTTABLE, MESSAGE_SIZE = 0, 1, 256
DBL_MAX = sys.float_info.max


class Projection(ctypes.Structure):
    _pack_ = 1
    _fields_ = ([("type", c_int32)]
                + [(name, c_double) for name in "scale x_org y_org lat0 lon0 lat1 lat2 lat3 lon1 lon2 lon3 k0".split()]
                + [("south", c_uint8), ("zone", c_int32), ("use_alpha", c_uint8), ("alpha", c_double),
                   ("rotate", c_uint8), ("u_offset", c_uint8), ("ellipsoid", c_int32), ("major_radius", c_double),
                   ("flattening", c_double), ("result", c_int32), ("wrap_lon", c_uint8), ("reserved", c_uint8 * 255)])


assert ctypes.sizeof(Projection) == 396

for name, result, arguments in (
        ("orvex_projection_number", c_int, [c_char_p, POINTER(c_int32)]),
        ("orvex_ellipsoid_number", c_int, [c_char_p, POINTER(c_int32)]),
        ("orvex_create", c_int, [POINTER(Projection), POINTER(c_void_p), c_char_p]),
        ("orvex_delete", None, [c_void_p]),
        ("orvex_forward", c_int, [c_void_p, c_void_p, c_int, c_char_p]),
        ("orvex_inverse", c_int, [c_void_p, c_void_p, c_int, c_char_p])):
    function = getattr(library, name)
    function.restype, function.argtypes = result, arguments


class OrvexError(Exception):
    pass


def number(lookup, name):
    value = c_int32()
    if lookup(name.encode(), ctypes.byref(value)) != OK:
        raise OrvexError(f"unknown name: {name}")
    return value.value


class Projector:
    """Owns one projection; points are array.array('d') with x and y in turn, or anything else with that buffer."""

    def __init__(self, projection, ellipsoid="WGS 84", **parameters):
        record = Projection(type=number(library.orvex_projection_number, projection),
                            ellipsoid=number(library.orvex_ellipsoid_number, ellipsoid), **parameters)
        self._handle, message = c_void_p(), ctypes.create_string_buffer(MESSAGE_SIZE)
        if library.orvex_create(ctypes.byref(record), ctypes.byref(self._handle), message) != OK:
            raise OrvexError(message.value.decode("ascii"))

    def __del__(self):
        library.orvex_delete(self._handle)

    def _convert(self, function, points):
        view = memoryview(points).cast("B")
        buffer = (c_uint8 * len(view)).from_buffer(view)
        message = ctypes.create_string_buffer(MESSAGE_SIZE)
        status = function(self._handle, buffer, len(view) // 16, message)
        if status not in (OK, UNPLOTTABLE):
            raise OrvexError(message.value.decode("ascii"))
        return status == OK

    def forward(self, points):
        """False when some points could not be projected: both their coordinates are DBL_MAX."""
        return self._convert(library.orvex_forward, points)

    def inverse(self, points):
        return self._convert(library.orvex_inverse, points)


def main():
    lambert = Projector("Lambert Conformal Conic", "Clarke 1866", lat0=23, lon0=-96, lat1=33, lat2=45)
    points = array.array("d", [-75, 35, -96, 23, -96, float("inf")])
    complete = lambert.forward(points)
    for x, y in zip(points[0::2], points[1::2]):
        print("unplottable" if x == y == DBL_MAX else f"{x:.1f} {y:.1f}")
    assert not complete
    try:
        Projector("Lambert Conformal Conic", lat1=33, lat2=33)
    except OrvexError as error:
        print(error)


main()
