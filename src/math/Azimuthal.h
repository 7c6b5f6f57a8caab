// Azimuthal - what the azimuthal projections share: the sphere as seen from their centre, and the way back.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 5-3 and 20-14 to 20-17.
#pragma once

#include <algorithm>
#include <cmath>

#include "math/Angles.h"

namespace orvex::detail {

/// A point seen from the centre: the cosine of its arc c, and the components of sin c towards east and north. On every
/// azimuthal map x and y are one multiple of the latter two.
struct AzimuthalView {
  double cosC, east, north;
};

/// A direction from the middle of the sphere, times any positive factor: rho, where a caller tests `along` against
/// zero.
struct AzimuthalDirection {
  double up;      // sin phi
  double across;  // cos phi sin dlon
  double along;   // cos phi cos dlon

  /// 20-14. From sine and cosine: the arcsine loses half the digits at the poles, and its argument may exceed 1 by
  /// rounding.
  double Latitude() const { return std::atan2(up, std::sqrt(across * across + along * along)); }
  /// Longitude less the central longitude, 20-15.
  double LongitudeDifference() const { return std::atan2(across, along); }
};

/// Sine and cosine of the arc between centre and point, from what the map tells about it. `sine` is not negative; what
/// exceeds 1 counts as 1.
struct Arc {
  double sine, cosine;

  /// cos(pi/2) in doubles. No cosine is 0, which callers refuse: a quarter turn from the centre is a place like others.
  static constexpr double kLeastCosine = 6.123233995736766e-17;

  static Arc Of(double angle) { return {std::sin(angle), std::cos(angle)}; }
  static Arc WithSine(double sine) {
    sine = std::min(sine, 1.0);
    return {sine, std::max(std::sqrt((1 - sine) * (1 + sine)), kLeastCosine)};
  }
  static Arc WithHalfSine(double sine) {
    sine = std::min(sine, 1.0);
    return {2 * sine * std::sqrt((1 - sine) * (1 + sine)), 1 - 2 * sine * sine};
  }
  static Arc WithHalfTangent(double tangent) {
    const double cosine = 2 / (1 + tangent * tangent) - 1;  // right at infinity as well
    return {2 / (tangent + 1 / tangent), cosine == 0 ? kLeastCosine : cosine};
  }
};

/// Centre of an azimuthal projection.
struct AzimuthalCentre {
  double lat, lon, sinLat, cosLat;

  AzimuthalCentre(double centreLat, double centreLon)
      : lat(centreLat), lon(centreLon), sinLat(std::sin(centreLat)), cosLat(std::cos(centreLat)) {}

  AzimuthalView View(double pointLat, double pointLon) const {
    return View(std::sin(pointLat), std::cos(pointLat), pointLon);
  }

  /// The same when sine and cosine of the latitude are at hand.
  AzimuthalView View(double sinPointLat, double cosPointLat, double pointLon) const {
    const double cosDlon = std::cos(pointLon - lon);
    return {sinLat * sinPointLat + cosLat * cosPointLat * cosDlon, cosPointLat * std::sin(pointLon - lon),
            cosLat * sinPointLat - sinLat * cosPointLat * cosDlon};
  }

  /// Where the arc c towards map point (x, y) ends, rho = |(x, y)|; the direction is scaled by rho.
  AzimuthalDirection Direction(double x, double y, double rho, const Arc& c) const {
    return {rho * c.cosine * sinLat + y * c.sine * cosLat, x * c.sine, rho * cosLat * c.cosine - y * sinLat * c.sine};
  }
};

/// The poles that a centre may lie on, and the sign of their latitude.
inline constexpr double kNorthPole = 1, kSouthPole = -1;

/// Longitude difference of a map point in the polar aspects, 20-16 and 20-17.
inline double PolarLongitudeDifference(double x, double y, double pole) {
  return std::atan2(x, -pole * y);
}

}  // namespace orvex::detail
