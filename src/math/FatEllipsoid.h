// FatEllipsoid - meridian arcs, authalic latitudes and the transverse Mercator map by their definitions, for every
// eccentricity below 1 and any distance from the central meridian. Slow: for ellipsoids that are no planet's, and for
// points where series lose their digits.
#pragma once

#include "points/Elementary.h"

namespace orvex::detail {

/// Meridian arc from the equator to latitude phi, in semi-major axes; e2 is the eccentricity squared.
double FatArc(double e2, double phi);
/// Latitude at the end of an arc (semi-major axes); beyond a quadrant, beyond the pole by as much as the arc.
double FatFootpoint(double e2, double arc);
/// Latitude where the authalic function q has a given part (-1 to 1) of its value at the pole.
double FatAuthalicLatitude(double e2, double relative);

/// A place on the transverse Mercator map of an ellipsoid: distances north of the equator and east of the meridian in
/// semi-major axes, scale 1 on the meridian.
struct TransversePlace {
  double north, east;
};
/// A place on the ellipsoid, radians from equator and central meridian.
struct GeodeticPlace {
  double lat, lon;
};
/// The map: the continuation of the meridian arc, as a function of the isometric latitude, into the complex plane. For
/// longitudes of less than (1 - e) quarter turns.
TransversePlace TransverseMap(double e2, GeodeticPlace place);
/// And back; not finite where it leads out of the range of the map.
GeodeticPlace TransverseUnmap(double e2, TransversePlace place);

namespace ORVEX_LEVEL {

/// A function of one double, lane by lane.
template <class T, class Function>
[[gnu::noinline, gnu::cold]] T EachOf(T values, const Function& function) {
  for (int lane = 0; lane < kLaneCount<T>; ++lane) Put(values, lane, function(Get(values, lane)));
  return values;
}

}  // namespace ORVEX_LEVEL

}  // namespace orvex::detail
