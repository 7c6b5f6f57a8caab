// IsometricLatitude - isometric latitude on the ellipsoid and its inverse, to rounding for every flattening below 1.
#pragma once

#include <algorithm>
#include <cmath>

#include "math/Angles.h"

namespace orvex::detail {

/// psi = artanh(sin phi) - e artanh(e sin phi); Snyder 1987, 7-7 is its negative exponential. Finite for every double
/// phi.
inline double IsometricLatitude(double phi, double e) {
  const double psi = std::asinh(std::tan(phi));
  return e == 0 ? psi : psi - e * std::atanh(e * std::sin(phi));
}

/// Latitude of an isometric latitude, by Newton's method on its tangent. False for what is not finite.
inline bool LatitudeFromIsometric(double psi, double e, double& phi) {
  constexpr double kPole = 40;        // every psi beyond has the pole as its nearest latitude
  constexpr double kRelative = 1e-9;  // of a step; convergence is quadratic, so the next one would be lost in rounding
  constexpr int kMostSteps = 50;      // two for flattenings like the earth's, seven for 0.99
  if (!(std::abs(psi) <= kPole)) {
    phi = std::copysign(kHalfPi, psi);
    return !std::isnan(psi);
  }
  const auto secantOf = [](double t) { return std::sqrt(1 + t * t); };
  const double conformal = std::sinh(psi), e2m = 1 - e * e;  // tangent of the conformal latitude
  double tangent = conformal / e2m;
  for (int i = 0; i < kMostSteps && e != 0; ++i) {
    const double secant = secantOf(tangent), shift = std::sinh(e * std::atanh(e * tangent / secant));
    const double estimate = tangent * secantOf(shift) - shift * secant;
    const double slope = secantOf(estimate) * e2m * secant / (1 + e2m * tangent * tangent);
    const double step = (conformal - estimate) / slope;
    tangent += step;
    if (!(std::abs(step) > kRelative * std::max(1.0, std::abs(tangent)))) break;
  }
  phi = std::atan(tangent);
  return std::isfinite(phi);
}

}  // namespace orvex::detail
