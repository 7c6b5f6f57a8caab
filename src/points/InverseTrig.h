// InverseTrig - arctangent of one and of two arguments, arcsine, arccosine.
#pragma once

#include "points/DoubleDouble.h"

namespace orvex::detail::ORVEX_LEVEL {

double ColdAtan2(double y, double x);
double Atan2(double y, double x);

/// The angle of a point (x, |y|): 0 to pi. The larger coordinate is within 2^-700 and 2^800; x is not -0.
template <class T>
ORVEX_INLINE T AngleOf(T ay, T x) {
  const T ax = Abs(x);
  const MaskOf<T> steep = ay > ax;
  const T most = Select(steep, ay, ax), least = Select(steep, ax, ay);
  // Beyond half the slope of the diagonal the angle is counted from there: tan(a - pi/4) = (t - 1) / (1 + t), so
  // that one division serves. The numerator is exact. The quotient is kept as a sum, or the angle would lose its last
  // bit.
  const MaskOf<T> middle = least > 0.5 * most;
  const Double<T> q = Quotient(Double<T>{least - Where(middle, most), T(0)}, SumOfOrdered(most, Where(middle, least)));
  const T t = q.high + q.low, z = t * t;
  const T tail =
      t * z *
      PolynomialOf(z, -0x1.5555555555516p-2, 0x1.9999999991142p-3, -0x1.249249215de3bp-3, 0x1.c71c7090e8ec7p-4,
                   -0x1.745cf4cb39789p-4, 0x1.3b113dc14f3cdp-4, -0x1.10f31f1dac3ebp-4, 0x1.dfe977c6dc21ep-5,
                   -0x1.a39864e5a4c39p-5, 0x1.56f5c027c5b34p-5, -0x1.c17fb6ad560d1p-6, 0x1.4b83dcb5d9702p-7);
  // The angle is n pi/4 plus or minus atan q. The first part of pi/4 has 50 bits, so that its multiples are exact.
  constexpr double kEighthHigh = 0x1.921fb54442d18p-1, kEighthLow = 0x1.1a62633145c07p-55;
  const T eighths = FlipSign(Select(middle, T(1), Where(steep, T(2))), x) + Where(x < T(0), T(4));
  const T sign = FlipSign(Where(steep, T(-0.0)), x);
  const Double<T> sum = SumOfOrdered(eighths * kEighthHigh, FlipSign(q.high, sign));
  return sum.high + (sum.low + (FlipSign(q.low + tail, sign) + eighths * kEighthLow));
}

template <class T>
ORVEX_INLINE T Atan2(T y, Same<T> x) {
  const T ay = Abs(y), ax = Abs(x), most = Select(ay > ax, ay, ax);
  if (!All((most >= T(0x1p-600)) & (most <= T(0x1p600)) & (ay == ay) & (ax == ax))) [[unlikely]] {
    if constexpr (kLaneCount<T> == 1) {
      return ColdAtan2(y, x);
    } else {
      return LaneByLane<T>(&Atan2, y, x);
    }
  }
  return FlipSign(AngleOf<T>(ay * 0x1p200, x * 0x1p200 + 0.0), y);  // the factor keeps remainders from underflow
}
template <class T>
ORVEX_INLINE T Atan(T tangent) {
  const T size = Abs(tangent);
  return FlipSign(AngleOf<T>(Select(size > T(0x1p100), T(0x1p100), size), T(1)), tangent);
}

// ---- arcsine and arccosine ----

/// Up to one half the arcsine of w, beyond it half the arccosine: the arcsine of w = sqrt((1 - size) / 2).
template <class T>
struct HalfArc {
  MaskOf<T> beyond;
  T w, rest, tail;  // rest = z - w^2 where beyond
};
template <class T>
ORVEX_INLINE HalfArc<T> HalfArcOf(T size) {
  const MaskOf<T> beyond = size > T(0.5);
  const T z = Select(beyond, 0.5 * (1 - size), size * size), root = Sqrt(z), w = Select(beyond, root, size);
  const T high = High(w), low = w - high;
  const T rest = Where(beyond, ((z - high * high) - 2 * high * low) - low * low);
  return {beyond, w, rest,
          w * z *
              PolynomialOf(z, 0x1.555555555539p-3, 0x1.333333336e80fp-4, 0x1.6db6db427a4f8p-5, 0x1.f1c72c38fb342p-6,
                           0x1.6e89f440197a8p-6, 0x1.1c6be1a68770cp-6, 0x1.c6fdc1aaa597cp-7, 0x1.8ec2fca60060dp-7,
                           0x1.abcf5cd7f156ep-8, 0x1.3ff4a9908c2fbp-6, -0x1.09d3283359a11p-6, 0x1.056d6c811e11dp-5)};
}
inline constexpr double kQuarterTurn = 0x1.921fb54442d18p+0, kQuarterTurnLow = 0x1.1a62633145c07p-54;

/// Not a number outside -1 to 1.
template <class T>
ORVEX_INLINE T Asin(T sine) {
  const HalfArc<T> arc = HalfArcOf(Abs(sine));
  const T near = arc.w + arc.tail;
  // The root's own error, rest / (2 w), matters where w is near one half; there 1.15 is near enough to 1 / (2 w).
  const Double<T> sum = SumOfOrdered(T(kQuarterTurn), -2 * arc.w);
  const T far = sum.high + (sum.low + (kQuarterTurnLow - 2 * (1.15 * arc.rest + arc.tail)));
  return FlipSign(Select(arc.beyond, far, near), sine);
}
/// Not a number outside -1 to 1.
template <class T>
ORVEX_INLINE T Acos(T cosine) {
  const HalfArc<T> arc = HalfArcOf(Abs(cosine));
  // Twice the half arc, or the sine's: to be taken from nothing, from a quarter turn or from a half.
  const T factor = FlipSign(Select(arc.beyond, T(-2), T(1)), cosine);
  const T start = Select(arc.beyond, Where(cosine < T(0), T(2)), T(1));
  const T low = arc.tail + arc.rest / (2 * OneUnless<T>(arc.w > T(0), arc.w));
  const Double<T> sum = SumOfOrdered(start * kQuarterTurn, -factor * arc.w);
  return sum.high + (sum.low + (start * kQuarterTurnLow - factor * low));
}

}  // namespace orvex::detail::ORVEX_LEVEL
