// MeridianArc - distances along the meridian and their inverse, by series in the eccentricity and in e1.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 3-21 and 3-24 to 3-26.
#pragma once

#include "points/Elementary.h"

namespace orvex::detail::ORVEX_LEVEL {

/// First eccentricity squared of an ellipsoid with flattening f.
constexpr double EccentricitySquared(double f) {
  return 2 * f - f * f;
}

/// Sum of c1 sin t + c2 sin 2t + c3 sin 3t + c4 sin 4t by Clenshaw's recurrence, from sin t and cos t.
template <class T>
ORVEX_INLINE T SineSeries(T sinT, T cosT, double c1, double c2, double c3, double c4) {
  const T twoCos = 2 * cosT;
  const T b3 = c3 + twoCos * c4;
  const T b2 = c2 + twoCos * b3 - c4;
  return sinT * (c1 + twoCos * b2 - b3);
}

/// Meridian arc M(phi) = a (A0 phi - A2 sin 2phi + A4 sin 4phi - A6 sin 6phi), 3-21.
struct MeridianArc {
  double a, A0, A2, A4, A6;

  MeridianArc(double semiMajor, double e2)
      : a(semiMajor),
        A0(1 - e2 / 4 - 3 * e2 * e2 / 64 - 5 * e2 * e2 * e2 / 256),
        A2(3 * e2 / 8 + 3 * e2 * e2 / 32 + 45 * e2 * e2 * e2 / 1024),
        A4(15 * e2 * e2 / 256 + 45 * e2 * e2 * e2 / 1024),
        A6(35 * e2 * e2 * e2 / 3072) {}

  template <class T>
  ORVEX_INLINE T operator()(T phi) const {
    const auto [sinPhi, cosPhi] = SinCos(phi);
    return Length(phi, sinPhi, cosPhi);
  }

  /// The same when sine and cosine of phi are at hand.
  template <class T>
  ORVEX_INLINE T Length(T phi, T sinPhi, T cosPhi) const {
    return a * (A0 * phi + SineSeries(2 * sinPhi * cosPhi, 1 - 2 * sinPhi * sinPhi, -A2, A4, -A6, 0));
  }
};

/// Latitude at the end of an arc, by its rectifying latitude mu = M / (a A0), 3-26. The coefficient of sin 6mu is
/// 151/96 there; one module keeps another.
struct FootpointLatitude {
  double c1, c2, c3, c4;
  double perLength;  // mu of a unit of length

  FootpointLatitude(const MeridianArc& arc, double e2, double sin6Numerator = 151) : perLength(1 / (arc.a * arc.A0)) {
    const double r = Sqrt(1 - e2);
    const double e1 = (1 - r) / (1 + r);  // 3-24
    const double e1Squared = e1 * e1;
    c1 = e1 * (3.0 / 2 - 27 * e1Squared / 32);
    c2 = e1Squared * (21.0 / 16 - 55 * e1Squared / 32);
    c3 = sin6Numerator * e1Squared * e1 / 96;
    c4 = 1097 * e1Squared * e1Squared / 512;
  }

  template <class T>
  ORVEX_INLINE T operator()(T length) const {
    const T mu = length * perLength;
    const auto [sine, cosine] = SinCos(2 * mu);
    return mu + SineSeries(sine, cosine, c1, c2, c3, c4);
  }
};

}  // namespace orvex::detail::ORVEX_LEVEL
