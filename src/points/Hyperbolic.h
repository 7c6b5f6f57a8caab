// Hyperbolic - hyperbolic sine and cosine, inverse hyperbolic sine and tangent.
#pragma once

#include "points/ExpLog.h"

namespace orvex::detail::ORVEX_LEVEL {

double ColdAsinh(double x);
double ColdAtanh(double x);
double Asinh(double x);
double Atanh(double x);

/// Halves of hyperbolic sine and cosine, as sums.
template <class T>
struct HalfHyperbolic {
  Double<T> sine, cosine;
};
/// 0 <= x <= 710.5. With x = k ln 2 + r, sinh x = (2^k C + 2^k S - 2^-k C + 2^-k S) / 2, C = cosh r, S = sinh r.
template <class T>
ORVEX_INLINE HalfHyperbolic<T> HalfHyperbolicOf(T x) {
  constexpr double kWhole = 0x1.8p52 + 1021, kMost = 100;  // 2^-100 counts for nothing beside 2^100
  const T shifted = x * kLog2E + kWhole, k = shifted - kWhole;
  const T high = x - k * kLn2High, low = k * kLn2Low, r = high - low, c = (high - r) - low;
  const T a = FromBits<T>(ToBits(shifted) << 52);                                     // 2^(k-2)
  const T b = FromBits<T>(ToBits(kWhole - Select(k > T(kMost), T(kMost), k)) << 52);  // 2^(-k-2)
  const T z = r * r, z2 = z * z, z4 = z2 * z2;
  const T S = c + r * z *
                      Polynomial(z, z2, z4, 0x1.5555555555559p-3, 0x1.111111110f652p-7, 0x1.a01a01b0053f1p-13,
                                 0x1.71ddf80a073e6p-19, 0x1.af5f36d38b2p-26);
  const T C = 0.5 * z + z2 * Polynomial(z, z2, z4, 0x1.5555555555558p-5, 0x1.6c16c16c1500fp-10, 0x1.a01a01ad74edap-16,
                                        0x1.27e4cc2ca9f16p-22, 0x1.1f8bab6649ab8p-29);
  // Each the largest parts first, the products by powers of two being exact.
  const Double<T> difference = SumOfOrdered(a, -b), sum = SumOfOrdered(a, b);
  const T ar = a * r, br = b * r;
  const Double<T> rSum = SumOfOrdered(ar, br), rDifference = SumOfOrdered(ar, -br);
  const Double<T> sine = SumOfOrdered(difference.high, rSum.high), cosine = SumOfOrdered(sum.high, rDifference.high);
  const T sineLow = (sum.high * S + difference.high * C) + (difference.low + rSum.low);
  const T cosineLow = (difference.high * S + sum.high * C) + (sum.low + rDifference.low);
  return {{sine.high, sine.low + sineLow}, {cosine.high, cosine.low + cosineLow}};
}

template <class T>
ORVEX_INLINE T Sinh(T x) {
  const T size = Abs(x);
  const HalfHyperbolic<T> half = HalfHyperbolicOf(Select(size > T(710.5), T(710.5), size));
  const T sine = 2 * (half.sine.high + half.sine.low);
  return FlipSign(Select(size < T(0x1p-28), size, sine), x);
}
template <class T>
ORVEX_INLINE T Cosh(T x) {
  const T size = Abs(x);
  const HalfHyperbolic<T> half = HalfHyperbolicOf(Select(size > T(710.5), T(710.5), size));
  return 2 * (half.cosine.high + half.cosine.low);
}
// ---- inverses ----

/// atanh t - t, |t| <= 0.2001.
template <class T>
ORVEX_INLINE T AtanhTail(T t) {
  const T z = t * t;
  return t * z *
         PolynomialOf(z, 0x1.5555555555777p-2, 0x1.99999998f0626p-3, 0x1.249249b26f469p-3, 0x1.c71c012e18e52p-4,
                      0x1.7474ec1cca4cep-4, 0x1.38520f4dcc57bp-4, 0x1.3ac489bcbdb9fp-4);
}
/// The power of two that brings a quotient to about 1, within 0.66 and 1.51, and its exponent.
template <class T>
struct PowerOfTwo {
  T k, power;
};
template <class T>
ORVEX_INLINE PowerOfTwo<T> PowerNear(T n, T d) {
  constexpr std::uint64_t kOne = 0x3ff0000000000000, kHalf = 0x0008000000000000, kWhole = 0x4330000000000000;
  const BitsOf<T> exponent = ((ToBits(n) - ToBits(d)) + (kOne + kHalf)) >> 52;  // k + 1023
  return {FromBits<T>(exponent | kWhole) - (0x1p52 + 1023), FromBits<T>(exponent << 52)};
}

/// ln(x + sqrt(1 + x^2)), by s = (N - 2^k) / (N + 2^k) with N = x + sqrt(1 + x^2); s = x / (1 + sqrt(1 + x^2)) for k =
/// 0.
template <class T>
ORVEX_INLINE T Asinh(T x) {
  const T size = Abs(x);
  if (!All(size <= T(0x1p300))) [[unlikely]] {
    if constexpr (kLaneCount<T> == 1) {
      return ColdAsinh(x);
    } else {
      return LaneByLane<T>(&Asinh, x);
    }
  }
  const Double<T> square = Product(size, size), under = Sum(T(1), square.high);
  const T w = Sqrt(under.high), wHigh = High(w), wRest = w - wHigh;
  const T rest = ((under.high - wHigh * wHigh) - 2 * wHigh * wRest) - wRest * wRest;
  const PowerOfTwo<T> power = PowerNear(w + size, T(1));
  const MaskOf<T> far = power.k > T(0);
  const Double<T> n = Sum(Where(far, w - power.power), size), d = Sum(w + Where(far, size), power.power);
  // One division gives both inverses: that of the divisor, and that of w for the error of the root.
  const T inverse = 1 / (d.high * w), wLow = 0.5 * (rest + (under.low + square.low)) * (d.high * inverse);
  const T nLow = n.low + Where(far, wLow);
  const Double<T> q = QuotientBy(w * inverse, Double<T>{2 * n.high, 2 * nLow}, Double<T>{d.high, d.low + wLow});
  const Double<T> sum = SumOfOrdered(power.k * kLn2High, q.high);
  const T t = 0.5 * (q.high + q.low);
  return FlipSign(sum.high + (sum.low + ((q.low + 2 * AtanhTail(t)) + power.k * kLn2Low)), x);
}
/// ln((1 + x) / (1 - x)) / 2; infinite at 1, not a number beyond.
template <class T>
ORVEX_INLINE T Atanh(T x) {
  const T size = Abs(x);
  if (!All(size < T(1))) [[unlikely]] {
    if constexpr (kLaneCount<T> == 1) {
      return ColdAtanh(x);
    } else {
      return LaneByLane<T>(&Atanh, x);
    }
  }
  const Double<T> above = SumOfOrdered(T(1), size), below = SumOfOrdered(T(1), -size);
  const PowerOfTwo<T> power = PowerNear(above.high, below.high);
  const T scaled = below.high * power.power, scaledLow = below.low * power.power;
  const Double<T> n = SumOfOrdered(above.high - scaled, above.low - scaledLow), d = Sum(above.high, scaled);
  const Double<T> q = Quotient(n, Double<T>{d.high, d.low + (above.low + scaledLow)});
  const Double<T> sum = SumOfOrdered(power.k * (0.5 * kLn2High), q.high);
  return FlipSign(sum.high + (sum.low + ((q.low + AtanhTail(q.high + q.low)) + power.k * (0.5 * kLn2Low))), x);
}

}  // namespace orvex::detail::ORVEX_LEVEL
