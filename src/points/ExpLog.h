// ExpLog - exponential and logarithm, power.
#pragma once

#include "points/DoubleDouble.h"

namespace orvex::detail::ORVEX_LEVEL {

inline constexpr double kLn2High = 0x1.62e42feep-1, kLn2Low = 0x1.a39ef35793c76p-33;  // the first with 32 bits
inline constexpr double kLog2E = 0x1.71547652b82fep+0;

double ColdExp(double x);
double ColdLog(double x);
double ColdLog1p(double x);
double ColdPow(double x, double y);
double Exp(double x);
double Log(double x);
double Log1p(double x);
double Pow(double x, double y);

// ---- exponential ----

/// What is left of an argument when k ln 2 is taken out: at most ln 2 / 2, as a sum.
template <class T>
struct ReducedExponent {
  T r, low;
  BitsOf<T> power;  // k + 2046 in the last 12 bits

  /// e^r - 1 - r - low
  ORVEX_INLINE T Tail() const {
    const T z = r * r;
    return z * Polynomial(r, z, z * z, 0x1.000000000000cp-1, 0x1.5555555555561p-3, 0x1.555555554fdf8p-5,
                          0x1.111111110d63cp-7, 0x1.6c16c1860bca9p-10, 0x1.a01a01bae2a17p-13, 0x1.a01995aaf1667p-16,
                          0x1.71dddfc93df18p-19, 0x1.28b10752f482ap-22, 0x1.af858df8a42c7p-26);
  }
  /// e^(r + low)
  ORVEX_INLINE T Plain() const { return 1 + (r + (low + Tail())); }
  /// 2^k, |k| <= 1022
  ORVEX_INLINE T Power() const { return FromBits<T>((power - 1023) << 52); }
  /// y 2^k in two steps, |k| <= 1076
  ORVEX_INLINE T Twice(T y) const {
    const BitsOf<T> half = power >> 1;
    return y * FromBits<T>(half << 52) * FromBits<T>((power - half) << 52);
  }
};
/// Of x + more, |x| <= 746, |more| below 2^-12 unless x is 0.
template <class T>
ORVEX_INLINE ReducedExponent<T> ReduceExponent(T x, Same<T> more) {
  constexpr double kWhole = 0x1.8p52 + 2046;
  const T shifted = x * kLog2E + kWhole, k = shifted - kWhole;
  const T high = x - k * kLn2High, low = more - k * kLn2Low, r = high + low;
  return {r, (high - r) + low, ToBits(shifted)};
}
template <class T>
ORVEX_INLINE ReducedExponent<T> ReduceExponent(T x) {
  constexpr double kWhole = 0x1.8p52 + 2046;
  const T shifted = x * kLog2E + kWhole, k = shifted - kWhole;
  const T high = x - k * kLn2High, low = k * kLn2Low, r = high - low;
  return {r, (high - r) - low, ToBits(shifted)};
}
inline constexpr double kMostExponent = 708;  // results up to there are finite and normal
template <class T>
ORVEX_INLINE T Exp(T x) {
  if (!All(Abs(x) <= T(kMostExponent))) [[unlikely]] {
    if constexpr (kLaneCount<T> == 1) {
      return ColdExp(x);
    } else {
      return LaneByLane<T>(&Exp, x);
    }
  }
  const ReducedExponent<T> reduced = ReduceExponent(x);
  return reduced.Plain() * reduced.Power();
}

// ---- logarithm ----

/// x = 2^k m with sqrt(1/2) <= m < sqrt(2), for a normal x.
template <class T>
struct Normalized {
  T k, m;
};
template <class T>
ORVEX_INLINE Normalized<T> Normalize(T x) {
  constexpr std::uint64_t kOne = 0x3ff0000000000000, kRootHalf = 0x3fe6a09e00000000, kWhole = 0x4330000000000000;
  const BitsOf<T> bits = ToBits(x), exponent = (bits + (kOne - kRootHalf)) >> 52;  // k + 1023
  return {FromBits<T>(exponent | kWhole) - (0x1p52 + 1023), FromBits<T>((bits - (exponent << 52)) + kOne)};
}
/// k ln 2 + ln(1 + f) + low, |f| <= 0.4143.
template <class T>
ORVEX_INLINE T LogOfReduced(T k, T f, T low) {
  const T s = f / (2 + f), z = s * s, half = 0.5 * f * f;
  const T R = z * PolynomialOf(z, 0x1.5555555555592p-1, 0x1.999999997ff58p-2, 0x1.24924941dc60dp-2,
                               0x1.c71c5218e11f5p-3, 0x1.74663bf27dcf1p-3, 0x1.39a2024d18ee6p-3, 0x1.2f02bc1b2f46bp-3);
  return k * kLn2High - ((half - (s * (half + R) + (low + k * kLn2Low))) - f);
}
template <class T>
ORVEX_INLINE MaskOf<T> IsPositiveNormal(T x) {
  return (x >= T(0x1p-1022)) & (x <= T(0x1.fffffffffffffp1023));
}
template <class T>
ORVEX_INLINE T Log(T x) {
  if (!All(IsPositiveNormal(x))) [[unlikely]] {
    if constexpr (kLaneCount<T> == 1) {
      return ColdLog(x);
    } else {
      return LaneByLane<T>(&Log, x);
    }
  }
  const Normalized<T> reduced = Normalize(x);
  return LogOfReduced(reduced.k, reduced.m - 1, T(0));
}
template <class T>
ORVEX_INLINE T Log1p(T x) {
  if (!All((x > T(-1)) & (x <= T(0x1p1000)))) [[unlikely]] {
    if constexpr (kLaneCount<T> == 1) {
      return ColdLog1p(x);
    } else {
      return LaneByLane<T>(&Log1p, x);
    }
  }
  const Double<T> u = Sum(T(1), x);
  const Normalized<T> reduced = Normalize(u.high);
  const Double<T> f = SumOfOrdered(reduced.m - 1, u.low * (reduced.m / u.high));  // the quotient is a power of two
  return CopySign(LogOfReduced(reduced.k, f.high, f.low * (1 - f.high)), x);
}

// ---- power ----

/// ln (2^k m) to about 65 bits; high has 26.
template <class T>
ORVEX_INLINE Double<T> LogAsSum(const Normalized<T>& x) {
  const T f = x.m - 1;
  const Double<T> s = Quotient(f, SumOfOrdered(T(2), f));
  // ln m = 2 s + 2/3 s^3 + s^5 Q(s^2). The first and the second are worked out in two parts: high parts of 26 bits, the
  // products of which are exact, and all the rest.
  constexpr double kTwoThirds = 0x1.5555555555555p-1, kTwoThirdsHigh = 0x1.5555554p-1;
  constexpr double kTwoThirdsRest = 0x1.5555555555555p-29;
  const T z = s.high * s.high, zLow = (s.high + s.high + s.low) * s.low, zHigh = High(z), zFull = z + zLow;
  const T cube = s.high * zHigh, cubeLow = s.high * ((z - zHigh) + zLow) + s.low * zFull, cubeHigh = High(cube);
  const T third = cubeHigh * kTwoThirdsHigh;
  const T thirdLow = cubeHigh * kTwoThirdsRest + ((cube - cubeHigh) + cubeLow) * kTwoThirds;
  const T Q = PolynomialOf(zFull, 0x1.9999999999b2fp-2, 0x1.2492492457f3bp-2, 0x1.c71c722d3df3dp-3,
                           0x1.745ce9f0b091fp-3, 0x1.3b1ee9bbbd7bbp-3, 0x1.0f801d53fe949p-3, 0x1.0e40debec2f19p-3);
  const Double<T> first = SumOfOrdered(x.k * kLn2High, 2 * s.high), second = SumOfOrdered(first.high, third);
  const T rest = ((s.high + s.low) * (zFull * zFull * Q) + thirdLow) + x.k * kLn2Low, high = High(second.high);
  return {high, ((second.high - high) + (first.low + second.low)) + (2 * s.low + rest)};
}
/// y ln x as a sum; the first part is exact.
template <class T>
ORVEX_INLINE Double<T> LogOfPower(const Normalized<T>& x, T y) {
  const Double<T> log = LogAsSum(x);
  const T yHigh = High(y);
  return {yHigh * log.high, yHigh * log.low + (y - yHigh) * (log.high + log.low)};
}
template <class T>
ORVEX_INLINE T Pow(T x, Same<T> y) {
  const Double<T> log = LogOfPower(Normalize(x), T(y));  // with anything it gives something
  if (!All(IsPositiveNormal(x) & (Abs(log.high) <= T(kMostExponent)))) [[unlikely]] {
    if constexpr (kLaneCount<T> == 1) {
      return ColdPow(x, y);
    } else {
      return LaneByLane<T>(&Pow, x, y);
    }
  }
  const ReducedExponent<T> reduced = ReduceExponent(log.high, log.low);
  return reduced.Plain() * reduced.Power();
}

}  // namespace orvex::detail::ORVEX_LEVEL
