// InverseTrig - arctangent of one and of two arguments, arcsine.
#pragma once

#include "points/DoubleDouble.h"

namespace orvex::detail::ORVEX_LEVEL {

double ColdAtan2(double y, double x);
double Atan2(double y, double x);

/// The angle of a point of the first quadrant, or, where left, of its mirror image in the second. The larger coordinate
/// is within 2^-700 and 2^800.
template <bool kBothSides, class T>
ORVEX_INLINE T AngleOf(T y, T x, MaskOf<T> left) {
  const MaskOf<T> steep = y > x;
  const T most = Greater(x, y), least = Lesser(x, y);  // not a number if y is not
  constexpr double kBeyond = 0.53125;
  // Beyond it the angle is counted from there: tan(a - pi/4) = (t - 1) / (1 + t), so
  // that one division serves. The numerator is exact, beyond one half. The quotient is kept as a sum, or the angle
  // would lose its last bit.
  const MaskOf<T> middle = least > kBeyond * most;
  const T mirrored = kBothSides ? Where(left, T(-0.0)) : T(0), sign = FlipSign(Where(steep, T(-0.0)), mirrored);
  const Double<T> q = Quotient(FlipSign(least - Where(middle, most), sign), most + Where(middle, least));
  const T t = q.high + q.low, z = t * t;
  const T tail =
      t * z *
      PolynomialOf(z, -0x1.555555555547p-2, 0x1.999999997e386p-3, -0x1.2492491b6f40bp-3, 0x1.c71c6eb627825p-4,
                   -0x1.745cc9ce52ad8p-4, 0x1.3b0eccb7e78e4p-4, -0x1.10dbe9b11ba67p-4, 0x1.dec48946c9fe7p-5,
                   -0x1.9ed7a41a7d947p-5, 0x1.4a791f677ac82p-5, -0x1.9be26d7e148ffp-6, 0x1.1a05375190f56p-7);
  // The angle is n pi/4 plus or minus atan q. The first part of pi/4 has 50 bits, so that its multiples are exact.
  constexpr double kEighthHigh = 0x1.921fb54442d18p-1, kEighthLow = 0x1.1a62633145c07p-55;
  T n = Select(middle, T(1), Where(steep, T(2)));
  if constexpr (kBothSides) n = FlipSign(n, mirrored) + Where(left, T(4));
  const Double<T> sum = SumOfOrdered(n * kEighthHigh, q.high);
  return sum.high + (sum.low + ((q.low + tail) + n * kEighthLow));
}

template <class T>
ORVEX_INLINE T Atan2(T y, Same<T> x) {
  const T ay = Abs(y), ax = Abs(x), sum = ay + ax;
  if (!All((sum >= T(0x1p-600)) & (sum <= T(0x1p600)))) [[unlikely]] {
    if constexpr (kLaneCount<T> == 1) {
      return ColdAtan2(y, x);
    } else {
      return LaneByLane<T>(&Atan2, y, x);
    }
  }
  constexpr double kUp = 0x1p200;  // keeps remainders from underflow
  return FlipSign(AngleOf<true, T>(ay * kUp, ax * kUp, x < T(0)), y);
}
template <class T>
ORVEX_INLINE T Atan(T tangent) {
  return FlipSign(AngleOf<false, T>(Lesser(T(0x1p100), Abs(tangent)), T(1), No<T>()), tangent);
}

// ---- arcsine ----

inline constexpr double kQuarterTurn = 0x1.921fb54442d18p+0, kQuarterTurnLow = 0x1.1a62633145c07p-54;

/// Not a number outside -1 to 1.
template <class T>
ORVEX_INLINE T Asin(T sine) {
  const T size = Abs(sine);
  // Up to one half the arcsine of w = size, beyond it a quarter turn less twice that of w = sqrt((1 - size) / 2).
  const MaskOf<T> beyond = size > T(0.5);
  const T z = Select(beyond, 0.5 * (1 - size), size * size), root = Sqrt(z), w = Select(beyond, root, size);
  const T high = High(w), low = w - high;
  const T rest = Where(beyond, ((z - high * high) - 2 * high * low) - low * low);  // z - w^2
  const T tail = w * z *
                 PolynomialOf(z, 0x1.555555555539p-3, 0x1.333333336e80fp-4, 0x1.6db6db427a4f8p-5, 0x1.f1c72c38fb342p-6,
                              0x1.6e89f440197a8p-6, 0x1.1c6be1a68770cp-6, 0x1.c6fdc1aaa597cp-7, 0x1.8ec2fca60060dp-7,
                              0x1.abcf5cd7f156ep-8, 0x1.3ff4a9908c2fbp-6, -0x1.09d3283359a11p-6, 0x1.056d6c811e11dp-5);
  // The root's own error, rest / (2 w), matters where w is near one half; there 1.15 is near enough to 1 / (2 w).
  const Double<T> sum = SumOfOrdered(T(kQuarterTurn), -2 * w);
  const T far = sum.high + (sum.low + (kQuarterTurnLow - 2 * (1.15 * rest + tail)));
  return FlipSign(Select(beyond, far, w + tail), sine);
}

}  // namespace orvex::detail::ORVEX_LEVEL
