// Trig - sine, cosine and tangent.
#pragma once

#include "points/DoubleDouble.h"

namespace orvex::detail::ORVEX_LEVEL {

template <class T>
struct SineCosine {
  T sine, cosine;
};

/// An angle less a multiple of a quarter turn: within an eighth of a turn, as a sum; the multiple in the last two bits.
template <class T>
struct ReducedAngle {
  T angle, low;
  BitsOf<T> quarters;
};

/// Sine and cosine of a reduced angle, in [-pi/4, pi/4], not yet turned, each a larger part and a small one.
/// Minimax polynomials (see coefficients.sollya).
template <class T>
struct PlainSineCosine {
  Double<T> sine, cosine;
};
template <class T>
ORVEX_INLINE PlainSineCosine<T> SinCosOfReduced(T r, T low) {
  const T z = r * r, z2 = z * z;
  const T s = PolynomialByTwos(z, z2, -0x1.5555555555548p-3, 0x1.111111110f74cp-7, -0x1.a01a019beebd7p-13,
                               0x1.71de355b4ef37p-19, -0x1.ae5e5114a021p-26, 0x1.5d8d1fe5b925cp-33);
  const T c = PolynomialByTwos(z, z2, 0x1.555555555554bp-5, -0x1.6c16c16c15009p-10, 0x1.a01a019c8d111p-16,
                               -0x1.27e4f7ef88f7bp-22, 0x1.1ee9da20008d8p-29, -0x1.8fa582fd0cddp-37);
  const T half = 0.5 * z, rest = 1 - half;
  return {{r, r * z * s + low}, {rest, ((1 - rest) - half) + (z2 * c - r * low)}};
}

/// The plain course holds below; beyond it the parts of the quarter turn are too few.
inline constexpr double kMostTurned = 32768;

template <class T>
ORVEX_INLINE ReducedAngle<T> ReduceAngle(T size) {
  // Quarter turns in three parts; the first two have 33 bits each, so that their products are exact.
  constexpr double kPart1 = 0x1.921fb544p+0, kPart2 = 0x1.0b4611a6p-34, kPart3 = 0x1.3198a2e037073p-69;
  constexpr double kWhole = 0x1.8p52;
  const T shifted = size * 0x1.45f306dc9c883p-1 + kWhole, k = shifted - kWhole;
  const T a = size - k * kPart1, b = k * kPart2, r = a - b;
  return {r, ((a - r) - b) - k * kPart3, ToBits(shifted)};
}
/// The sine takes the sign of x besides, which is how its zeros keep theirs.
template <class T>
ORVEX_INLINE SineCosine<T> SinCosOf(const ReducedAngle<T>& reduced, T x) {
  const PlainSineCosine<T> plain = SinCosOfReduced(reduced.angle, reduced.low);
  T sine = plain.sine.high + plain.sine.low, cosine = plain.cosine.high + plain.cosine.low;
  SwapWhere(IsOdd<T>(reduced.quarters), sine, cosine);
  const BitsOf<T> turns = reduced.quarters << 62;  // half turns turn both, a quarter the cosine
  return {FromBits<T>(ToBits(sine) ^ ((turns ^ ToBits(x)) & kSignBit)),
          FromBits<T>(ToBits(cosine) ^ ((turns + (kSignBit >> 1)) & kSignBit))};
}

/// For every finite double beyond kMostTurned.
ReducedAngle<double> ReduceHugeAngle(double size);
/// `sines` holds the angles before.
[[gnu::cold]] void EachSinCos(double* sines, double* cosines, int count);
SineCosine<double> SinCos(double x);
double Tan(double x);

template <class T>
ORVEX_INLINE SineCosine<T> SinCos(T x) {
  const T size = Abs(x);
  if (!All(size <= T(kMostTurned))) [[unlikely]] {
    if constexpr (kLaneCount<T> == 1) {
      if (!IsFinite(x)) return {NotANumber(x), NotANumber(x)};
      return SinCosOf(ReduceHugeAngle(size), x);
    } else {
      double sine[kLaneCount<T>], cosine[kLaneCount<T>];
      Store(sine, x);
      EachSinCos(sine, cosine, kLaneCount<T>);
      return {Load<T>(sine), Load<T>(cosine)};
    }
  }
  return SinCosOf(ReduceAngle(size), x);
}
template <class T>
ORVEX_INLINE T Sin(T x) {
  return SinCos<T>(x).sine;
}
template <class T>
ORVEX_INLINE T Cos(T x) {
  return SinCos<T>(x).cosine;
}

template <class T>
ORVEX_INLINE T TanOf(const ReducedAngle<T>& reduced, T x) {
  const PlainSineCosine<T> plain = SinCosOfReduced(reduced.angle, reduced.low);
  const Double<T> sine = SumOfOrdered(plain.sine.high, plain.sine.low);
  const Double<T> cosine = SumOfOrdered(plain.cosine.high, plain.cosine.low);
  const MaskOf<T> odd = IsOdd<T>(reduced.quarters);
  const Double<T> above = {Select(odd, cosine.high, sine.high), Select(odd, cosine.low, sine.low)};
  const Double<T> below = {Select(odd, sine.high, cosine.high), Select(odd, sine.low, cosine.low)};
  const Double<T> q = Quotient(above, below);  // not by 0: no double is a multiple of a quarter turn but 0
  return FromBits<T>(ToBits(q.high + q.low) ^ (((reduced.quarters << 63) ^ ToBits(x)) & kSignBit));
}
template <class T>
ORVEX_INLINE T Tan(T x) {
  const T size = Abs(x);
  if (!All(size <= T(kMostTurned))) [[unlikely]] {
    if constexpr (kLaneCount<T> == 1) {
      return IsFinite(x) ? TanOf(ReduceHugeAngle(size), x) : NotANumber(x);
    } else {
      return LaneByLane<T>(&Tan, x);
    }
  }
  return TanOf(ReduceAngle(size), x);
}

}  // namespace orvex::detail::ORVEX_LEVEL
