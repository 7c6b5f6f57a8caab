// Azimuthal - what the azimuthal projections share: the sphere as seen from their centre, and the way back.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 5-3 and 20-14 to 20-17.
#pragma once

#include "math/Angles.h"

namespace orvex::detail::ORVEX_LEVEL {

/// A point seen from the centre: the cosine of its arc c, and the components of sin c towards east and north. On every
/// azimuthal map x and y are one multiple of the latter two.
template <class T>
struct AzimuthalView {
  T cosC, east, north;
};

/// A direction from the middle of the sphere, times any positive factor: rho, where a caller tests `along` against
/// zero.
template <class T>
struct AzimuthalDirection {
  T up;      // sin phi
  T across;  // cos phi sin dlon
  T along;   // cos phi cos dlon

  /// 20-14. From sine and cosine: the arcsine loses half the digits at the poles, and its argument may exceed 1 by
  /// rounding.
  ORVEX_INLINE T Latitude() const { return Atan2(up, Sqrt(across * across + along * along)); }
  /// Longitude less the central longitude, 20-15.
  ORVEX_INLINE T LongitudeDifference() const { return Atan2(across, along); }
};

/// Sine and cosine of the arc between centre and point, from what the map tells about it. `sine` is not negative; what
/// exceeds 1 counts as 1.
template <class T>
struct Arc {
  T sine, cosine;

  ORVEX_INLINE static Arc Of(T angle) {
    const auto [s, c] = SinCos(angle);
    return {s, c};
  }
  ORVEX_INLINE static Arc WithSine(T s) {
    s = Select(s > T(1), T(1), s);
    const T c = Sqrt((1 - s) * (1 + s));
    return {s, Select(c < T(kLeastCosine), T(kLeastCosine), c)};
  }
  ORVEX_INLINE static Arc WithHalfSine(T s) {
    s = Select(s > T(1), T(1), s);
    return {2 * s * Sqrt((1 - s) * (1 + s)), 1 - 2 * s * s};
  }
  ORVEX_INLINE static Arc WithHalfTangent(T t) {
    // At infinity, the antipode, 2 / (t + 1 / t) is right as well.
    const T s = 2 / (t + 1 / t), c = 2 / (1 + t * t) - 1;
    return {s, Select(c == T(0), T(kLeastCosine), c)};
  }

 private:
  static constexpr double kLeastCosine = 6.123233995736766e-17;  // cos(pi/2) in doubles: never 0, which callers refuse
};

/// Centre of an azimuthal projection.
struct AzimuthalCentre {
  double lat, lon, sinLat, cosLat;

  AzimuthalCentre(double centreLat, double centreLon)
      : lat(centreLat), lon(centreLon), sinLat(Sin(centreLat)), cosLat(Cos(centreLat)) {}

  template <class T>
  ORVEX_INLINE AzimuthalView<T> View(T pointLat, T pointLon) const {
    const auto [sinPointLat, cosPointLat] = SinCos(pointLat);
    return View(sinPointLat, cosPointLat, pointLon);
  }

  /// The same when sine and cosine of the latitude are at hand.
  template <class T>
  ORVEX_INLINE AzimuthalView<T> View(T sinPointLat, T cosPointLat, T pointLon) const {
    const auto [sinDlon, cosDlon] = SinCos(pointLon - lon);
    return {sinLat * sinPointLat + cosLat * cosPointLat * cosDlon, cosPointLat * sinDlon,
            cosLat * sinPointLat - sinLat * cosPointLat * cosDlon};
  }

  /// Where the arc c towards map point (x, y) ends, rho = |(x, y)|; the direction is scaled by rho.
  template <class T>
  ORVEX_INLINE AzimuthalDirection<T> Direction(T x, T y, T rho, const Arc<T>& c) const {
    return {rho * c.cosine * sinLat + y * c.sine * cosLat, x * c.sine, rho * cosLat * c.cosine - y * sinLat * c.sine};
  }
};

/// The poles that a centre may lie on, and the sign of their latitude.
inline constexpr double kNorthPole = 1, kSouthPole = -1;

/// Longitude difference of a map point in the polar aspects, 20-16 and 20-17.
template <class T>
ORVEX_INLINE T PolarLongitudeDifference(T x, T y, double pole) {
  return Atan2(x, -pole * y);
}

}  // namespace orvex::detail::ORVEX_LEVEL
