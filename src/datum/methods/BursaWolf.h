// BursaWolf - seven-parameter shift between geocentric frames, position-vector rotations, height 0.
// Sources: EPSG Guidance Note 7-2, method 9606; geodetic latitude by Bowring, "The accuracy of geodetic latitude and
//   height equations", Survey Review 28 (1985), in one evaluation: off by at most 1.4e-11 degrees near the ellipsoid.
// Fixed on purpose: the way back is the forward formula with negated parameters and reciprocal scale, in the same
//   order. It misses the exact inverse by products of the rotations with the shift and with each other.
#pragma once

#include "math/Angles.h"
#include "points/PointLoop.h"

namespace orvex {
struct DATUM2WGS84;
}

namespace orvex::detail {

/// The constants of a step, whose radius and flattening must be filled in.
struct BursaWolf {
  explicit BursaWolf(const DATUM2WGS84& step);

  double dx, dy, dz, pmShift;
  double rx, ry, rz;  // radians
  double scale;
  double aS, e2S;         // source ellipsoid
  double oneMinusF, e2a;  // target ellipsoid
};

namespace ORVEX_LEVEL {

/// Sine and cosine of atan2(y, x): by division where the hypotenuse is of ordinary size, else by way of the angle.
template <class T>
ORVEX_INLINE SineCosine<T> OfArctangent(T y, T x) {
  const T hypotenuse = Sqrt(y * y + x * x);
  const MaskOf<T> ordinary = (hypotenuse > T(1e-100)) & (hypotenuse < T(1e100));
  const T reciprocal = 1 / OneUnless<T>(ordinary, hypotenuse);
  SineCosine<T> result{y * reciprocal, x * reciprocal};
  if (!All(ordinary)) {
    const auto [sine, cosine] = SinCos(Atan2(y, x));
    result = {Select(ordinary, result.sine, sine), Select(ordinary, result.cosine, cosine)};
  }
  return result;
}

template <class T>
ORVEX_INLINE void Shift(const BursaWolf& c, Point<T>& point) {
  const auto [sinLambda, cosLambda] = SinCos(DegToRad(point.x + c.pmShift));
  const auto [sinPhi, cosPhi] = SinCos(DegToRad(point.y));
  const T N = c.aS / Sqrt(1 - c.e2S * (sinPhi * sinPhi));
  const T X = N * cosPhi * cosLambda, Y = N * cosPhi * sinLambda, Z = N * (1 - c.e2S) * sinPhi;
  const T X2 = c.scale * (X - c.rz * Y + c.ry * Z) + c.dx;
  const T Y2 = c.scale * (c.rz * X + Y - c.rx * Z) + c.dy;
  const T Z2 = c.scale * (-c.ry * X + c.rx * Y + Z) + c.dz;
  // Back to geodetic on the target ellipsoid.
  const T p = Sqrt(X2 * X2 + Y2 * Y2), r = Sqrt(p * p + Z2 * Z2);
  const auto [sinMu, cosMu] = OfArctangent(Z2 * (c.oneMinusF + c.e2a / r), p);
  const T phi =
      Atan2(Z2 * c.oneMinusF + c.e2a * (sinMu * sinMu * sinMu), c.oneMinusF * (p - c.e2a * (cosMu * cosMu * cosMu)));
  point = {RadToDeg(Atan2(Y2, X2)), RadToDeg(phi)};
}

}  // namespace ORVEX_LEVEL

}  // namespace orvex::detail
