// DoubleDouble - sums, products and quotients that keep what rounding drops, for the elementary functions.
#pragma once

#include "points/Lanes.h"

namespace orvex::detail::ORVEX_LEVEL {

/// A number as an unevaluated sum; low is at most about an ulp of high.
template <class T>
struct Double {
  T high, low;
};

/// The leading 26 bits: products of two such numbers are exact, and so are those with the 27 bits left out.
template <class T>
ORVEX_INLINE T High(T a) {
  return FromBits<T>(ToBits(a) & 0xfffffffff8000000);
}

/// a + b exactly, where |a| >= |b| or a is 0.
template <class T>
ORVEX_INLINE Double<T> SumOfOrdered(T a, Same<T> b) {
  const T sum = a + b;
  return {sum, (a - sum) + b};
}
/// a + b exactly.
template <class T>
ORVEX_INLINE Double<T> Sum(T a, Same<T> b) {
  const T sum = a + b, fromB = sum - a;
  return {sum, (a - (sum - fromB)) + (b - fromB)};
}
/// a * b exactly.
template <class T>
ORVEX_INLINE Double<T> Product(T a, Same<T> b) {
  const T aHigh = High(a), aLow = a - aHigh, bHigh = High(b), bLow = b - bHigh, product = a * b;
  return {product, ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow};
}
/// The quotient to some 100 bits, with one division. High has 26 bits.
template <class T>
ORVEX_INLINE Double<T> Quotient(T n, T d) {
  const T inverse = 1 / d, high = High(n * inverse), dHigh = High(d);
  return {high, ((n - high * dHigh) - high * (d - dHigh)) * inverse};
}
template <class T>
ORVEX_INLINE Double<T> Quotient(T n, Double<T> d) {
  const T inverse = 1 / d.high, high = High(n * inverse), dHigh = High(d.high);
  return {high, ((n - high * dHigh) - high * ((d.high - dHigh) + d.low)) * inverse};
}
template <class T>
ORVEX_INLINE Double<T> QuotientBy(T inverse, Double<T> n, Double<T> d) {
  const T high = High(n.high * inverse), dHigh = High(d.high);
  return {high, (((n.high - high * dHigh) - high * ((d.high - dHigh) + d.low)) + n.low) * inverse};
}
template <class T>
ORVEX_INLINE Double<T> Quotient(Double<T> n, Double<T> d) {
  return QuotientBy(1 / d.high, n, d);
}

/// c0 + c1 z + c2 z^2 + ..., four terms at a time: a chain of half as many steps as two at a time, for one product
/// more.
template <class T>
ORVEX_INLINE T Polynomial(T, T, T, double c0) {
  return T(c0);
}
template <class T>
ORVEX_INLINE T Polynomial(T z, T, T, double c0, double c1) {
  return c0 + c1 * z;
}
template <class T>
ORVEX_INLINE T Polynomial(T z, T z2, T, double c0, double c1, double c2) {
  return (c0 + c1 * z) + z2 * c2;
}
template <class T>
ORVEX_INLINE T Polynomial(T z, T z2, T, double c0, double c1, double c2, double c3) {
  return (c0 + c1 * z) + z2 * (c2 + c3 * z);
}
template <class T, class... More>
ORVEX_INLINE T Polynomial(T z, T z2, T z4, double c0, double c1, double c2, double c3, More... more) {
  return ((c0 + c1 * z) + z2 * (c2 + c3 * z)) + z4 * Polynomial(z, z2, z4, more...);
}
/// Two terms at a time.
template <class T>
ORVEX_INLINE T PolynomialByTwos(T z, T, double c0, double c1) {
  return c0 + c1 * z;
}
template <class T, class... More>
ORVEX_INLINE T PolynomialByTwos(T z, T z2, double c0, double c1, More... more) {
  return (c0 + c1 * z) + z2 * PolynomialByTwos(z, z2, more...);
}
template <class T, class... More>
ORVEX_INLINE T PolynomialOf(T z, More... more) {
  const T z2 = z * z;
  return Polynomial(z, z2, z2 * z2, more...);
}

// ---- the cold path ----

/// Runs the compiled function of one double over the lanes.
[[gnu::cold]] void EachLane(double (*function)(double), const double* x, double* result, int count);
[[gnu::cold]] void EachLane(double (*function)(double, double), const double* x, const double* y, double* result,
                            int count);

template <class T>
ORVEX_INLINE T LaneByLane(double (*function)(double), T x) {
  double lanes[kLaneCount<T>];
  Store(lanes, x);
  EachLane(function, lanes, lanes, kLaneCount<T>);
  return Load<T>(lanes);
}
template <class T>
ORVEX_INLINE T LaneByLane(double (*function)(double, double), T x, T y) {
  double lanes[kLaneCount<T>], others[kLaneCount<T>];
  Store(lanes, x);
  Store(others, y);
  EachLane(function, lanes, others, lanes, kLaneCount<T>);
  return Load<T>(lanes);
}

}  // namespace orvex::detail::ORVEX_LEVEL
