// Molodensky - the standard (not the abridged) Molodensky shift at height 0.
// Source: DMA Technical Report 8350.2, Department of Defense World Geodetic System 1984, section 7.
// Fixed on purpose: with a prime meridian other than Greenwich the way back evaluates the shift at the longitude
// counted from that meridian; nothing guards the longitude shift at the poles, where N cos(lat) is nearly 0.
#pragma once

#include "math/Angles.h"
#include "points/PointLoop.h"

namespace orvex {
struct DATUM2WGS84;
}

namespace orvex::detail {

/// The constants of a step, whose radius and flattening must be filled in.
struct Molodensky {
  explicit Molodensky(const DATUM2WGS84& step);

  double dx, dy, dz, pmShift;
  double a, e2;           // source ellipsoid
  double perMeridional;   // 1 / (a (1 - e2)), the numerator of M
  double axisTerm;        // da e2
  double aOverB, bOverA;  // of the source ellipsoid
  double df;
};

namespace ORVEX_LEVEL {

/// From a longitude that counts from the datum's prime meridian to one that counts from Greenwich.
template <class T>
ORVEX_INLINE void Shift(const Molodensky& c, Point<T>& p) {
  constexpr double kSinArcsecond = 4.84813681109536e-06, kArcsecondsPerDegree = 3600;
  const T lambda = DegToRad(p.x + c.pmShift), phi = DegToRad(p.y);
  const auto [sinLambda, cosLambda] = SinCos(lambda);
  const auto [sinPhi, cosPhi] = SinCos(phi);
  const T W = 1 - c.e2 * (sinPhi * sinPhi), rootW = Sqrt(W), perRootW = 1 / rootW;
  const T nPerA = perRootW;  // N / a
  const T M = perRootW / (W * c.perMeridional), perM = W * rootW * c.perMeridional;

  const T originShift = (-c.dx * cosLambda - c.dy * sinLambda) * sinPhi + c.dz * cosPhi;
  const T shapeShift = (c.axisTerm * nPerA + c.df * (M * c.aOverB + c.a * nPerA * c.bOverA)) * (sinPhi * cosPhi);
  const T dPhi = (originShift + shapeShift) * perM;
  const T dLambda = (-c.dx * sinLambda + c.dy * cosLambda) * rootW / (c.a * cosPhi);

  p.x = RadToDeg(lambda) + dLambda / (kSinArcsecond * kArcsecondsPerDegree);
  p.y = RadToDeg(phi) + dPhi / (kSinArcsecond * kArcsecondsPerDegree);
}

/// The same, not for the poles, where the formula has no longitude, and for longitude shifts of more than half a turn.
template <class T>
ORVEX_INLINE MaskOf<T> ShiftExactly(const Molodensky& c, Point<T>& p) {
  const Point<T> from = p;
  Shift(c, p);
  return (Abs(from.y) < T(90)) & (Abs(p.x - from.x - c.pmShift) <= T(180));
}

/// The inverse, by fixed-point iteration. Answers where it settles.
template <class T>
ORVEX_INLINE MaskOf<T> ShiftBack(const Molodensky& c, Point<T>& p) {
  constexpr double kTolerance = 1e-12;  // degrees
  const Point<T> target = p;
  Point<T> from{p.x - c.pmShift, p.y};
  Iteration<T> it(50);
  while (it.Goes()) {
    Point<T> there = from;
    it.GiveUp(!ShiftExactly(c, there));
    const T x = target.x - there.x, y = target.y - there.y;
    it.Step(from.x, from.x + x);
    it.Step(from.y, from.y + y);
    it.Settle((Abs(x) <= T(kTolerance)) & (Abs(y) <= T(kTolerance)));
  }
  p = from;
  return it.Settled();
}

}  // namespace ORVEX_LEVEL

}  // namespace orvex::detail
