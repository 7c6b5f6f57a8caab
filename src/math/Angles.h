// Angles - conversion and wrapping.
#pragma once

#include "points/Elementary.h"

namespace orvex::detail::ORVEX_LEVEL {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kTwoPi = 6.283185307179586;
inline constexpr double kHalfPi = 1.5707963267948966;
inline constexpr double kQuarterPi = 0.7853981633974483;

/// FLT_EPSILON as a double: the tolerance of many of the projections' tests and iterations.
inline constexpr double kFloatEpsilon = 1.1920928955078125e-07;

// One product each: multiples of 45 degrees come out to the last bit, both ways.
inline constexpr double kRadiansPerDegree = kPi / 180, kDegreesPerRadian = 180 / kPi;

template <class T>
ORVEX_INLINE constexpr T DegToRad(T degrees) {
  return degrees * kRadiansPerDegree;
}

template <class T>
ORVEX_INLINE constexpr T RadToDeg(T radians) {
  return radians * kDegreesPerRadian;
}

/// Wraps an angle once into [-pi, pi]: below -pi a full turn is added, then above pi one is subtracted.
template <class T>
ORVEX_INLINE T WrapOnce(T angle) {
  angle = Select(angle < T(-kPi), angle + kTwoPi, angle);
  return Select(angle > T(kPi), angle - kTwoPi, angle);
}

/// The number within [low, high] that lies nearest. Not a number stays what it is.
template <class T>
ORVEX_INLINE T Clamp(T value, double low, double high) {
  value = Select(value < T(low), T(low), value);
  return Select(value > T(high), T(high), value);
}

/// Arcsine with the argument clamped to [-1, 1].
template <class T>
ORVEX_INLINE T ClampedAsin(T sine) {
  return Asin(Clamp(sine, -1, 1));
}

}  // namespace orvex::detail::ORVEX_LEVEL
