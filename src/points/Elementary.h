// Elementary - the elementary functions of the formulas: the same bits in every lane and on every platform.
//
// Only operations that IEEE 754 rounds in one way take part, so a double and a vector give the same bits at every
// instruction set. Errors: at most one unit in the last place, two for Tan and Pow; measured ones stand in
// docs/elementary.md. Arguments that need more than the plain course (huge ones, subnormal ones, what is not finite,
// what has no answer) go lane by lane through a function that is not inlined; the results of these are those of C's
// functions.
//
// With T = double each function has one compiled copy (Elementary.cpp), which is what `Sin(x)` calls; vectors inline.
#pragma once

#include "points/ExpLog.h"
#include "points/Hyperbolic.h"
#include "points/InverseTrig.h"
#include "points/Lanes.h"
#include "points/Trig.h"

namespace orvex::detail::ORVEX_LEVEL {

/// The hypotenuse, without overflow or loss of a part on the way.
template <class T>
ORVEX_INLINE T Hypot(T x, Same<T> y) {
  const T ax = Abs(x), ay = Abs(y);
  const MaskOf<T> steep = ay > ax;
  const T most = Select(steep, ay, ax), least = Select(steep, ax, ay);
  // A power of two keeps the squares in range.
  const T scale = Select(most > T(0x1p500), T(0x1p-600), Select(most < T(0x1p-400), T(0x1p600), T(1)));
  const T back = Select(most > T(0x1p500), T(0x1p600), Select(most < T(0x1p-400), T(0x1p-600), T(1)));
  const T a = most * scale, b = least * scale;
  const T aHigh = High(a), aLow = a - aHigh, bHigh = High(b), bLow = b - bHigh;
  // Both squares exactly, then the root of their sum, bettered once: (sum - root^2) / (2 root).
  const T a2 = a * a, a2Low = ((aHigh * aHigh - a2) + 2 * aHigh * aLow) + aLow * aLow;
  const T b2 = b * b, b2Low = ((bHigh * bHigh - b2) + 2 * bHigh * bLow) + bLow * bLow;
  const T sum = a2 + b2, sumLow = ((a2 - sum) + b2) + (a2Low + b2Low);
  const T root = Sqrt(sum), rootHigh = High(root), rootLow = root - rootHigh;
  const T rest = ((sum - rootHigh * rootHigh) - 2 * rootHigh * rootLow) - rootLow * rootLow;
  const MaskOf<T> plain = (root > T(0)) & (root <= T(0x1p1000));
  const T better = root + (rest + sumLow) / (2 * OneUnless<T>(plain, root));
  const MaskOf<T> infinite = (most == T(__builtin_inf())) | (least == T(__builtin_inf()));
  return Select(infinite, T(__builtin_inf()), Select(plain, better, root) * back);
}

// ---- one compiled copy for a double; those that vectors fall back upon are declared beside them ----

double Sin(double x);
double Cos(double x);
double Asin(double x);
double Atan(double x);
double Sinh(double x);
double Cosh(double x);
double Hypot(double x, double y);

/// x less y times the quotient cut off, exactly; the sign is that of x. As C's fmod.
double Remainder(double x, double y);
/// x less y times the nearest whole quotient (of two the even one), exactly. As C's remainder.
double RemainderNearest(double x, double y);

// A double beside a vector stands for every lane.
template <class T>
requires(kLaneCount<T> > 1) ORVEX_INLINE T Atan2(double y, T x) {
  return Atan2<T>(T(y), x);
}
template <class T>
requires(kLaneCount<T> > 1) ORVEX_INLINE T Pow(double x, T y) {
  return Pow<T>(T(x), y);
}
template <class T>
requires(kLaneCount<T> > 1) ORVEX_INLINE T Hypot(double x, T y) {
  return Hypot<T>(T(x), y);
}

}  // namespace orvex::detail::ORVEX_LEVEL
