// Angles - conversion and wrapping.
#pragma once

#include <algorithm>
#include <cmath>

namespace orvex::detail {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kTwoPi = 6.283185307179586;
inline constexpr double kHalfPi = 1.5707963267948966;
inline constexpr double kQuarterPi = 0.7853981633974483;

/// FLT_EPSILON as a double: the tolerance of many of the projections' tests and iterations.
inline constexpr double kFloatEpsilon = 1.1920928955078125e-07;

constexpr double DegToRad(double degrees) {
  return degrees * kPi / 180.0;
}

constexpr double RadToDeg(double radians) {
  return radians * 180.0 / kPi;
}

/// Wraps an angle once into [-pi, pi]: below -pi a full turn is added, then above pi one is subtracted.
constexpr double WrapOnce(double angle) {
  if (angle < -kPi) angle += kTwoPi;
  if (angle > kPi) angle -= kTwoPi;
  return angle;
}

/// Arcsine with the argument clamped to [-1, 1].
inline double ClampedAsin(double sine) {
  return std::asin(std::clamp(sine, -1.0, 1.0));
}

constexpr double Square(double x) {
  return x * x;
}

}  // namespace orvex::detail
