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
  double aT, e2T;
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

/// Geocentric coordinates, metres.
template <class T>
struct Geocentric {
  T X, Y, Z;
};

/// Of a place at a height over an ellipsoid, degrees.
template <class T>
ORVEX_INLINE Geocentric<T> ToGeocentric(double a, double e2, T lon, T lat, T height) {
  const auto [sinLambda, cosLambda] = SinCos(DegToRad(lon));
  const auto [sinPhi, cosPhi] = SinCos(DegToRad(lat));
  const T N = a / Sqrt(1 - e2 * (sinPhi * sinPhi)), level = (N + height) * cosPhi;
  return {level * cosLambda, level * sinLambda, (N * (1 - e2) + height) * sinPhi};
}

/// To the frame of the target.
template <class T>
ORVEX_INLINE Geocentric<T> Moved(const BursaWolf& c, const Geocentric<T>& p) {
  return {c.scale * (p.X - c.rz * p.Y + c.ry * p.Z) + c.dx, c.scale * (c.rz * p.X + p.Y - c.rx * p.Z) + c.dy,
          c.scale * (-c.ry * p.X + c.rx * p.Y + p.Z) + c.dz};
}

/// The inverse of that: (1 + r x)^-1 v = (v - r x v + r (r v)) / (1 + r^2).
template <class T>
ORVEX_INLINE Geocentric<T> MovedBack(const BursaWolf& c, const Geocentric<T>& p) {
  const double perScale = 1 / (c.scale * (1 + c.rx * c.rx + c.ry * c.ry + c.rz * c.rz));
  const T X = p.X - c.dx, Y = p.Y - c.dy, Z = p.Z - c.dz, along = c.rx * X + c.ry * Y + c.rz * Z;
  return {(X - (c.ry * Z - c.rz * Y) + c.rx * along) * perScale, (Y - (c.rz * X - c.rx * Z) + c.ry * along) * perScale,
          (Z - (c.rx * Y - c.ry * X) + c.rz * along) * perScale};
}

/// Bowring's latitude from the sine and cosine of a reduced one.
template <class T>
ORVEX_INLINE T Bowring(double oneMinusF, double e2a, T p, T Z, const SineCosine<T>& mu) {
  return Atan2(Z * oneMinusF + e2a * (mu.sine * mu.sine * mu.sine),
               oneMinusF * (p - e2a * (mu.cosine * mu.cosine * mu.cosine)));
}
template <class T>
ORVEX_INLINE T FirstLatitude(double oneMinusF, double e2a, T p, T Z) {
  const T r = Sqrt(p * p + Z * Z);
  return Bowring(oneMinusF, e2a, p, Z, OfArctangent(Z * (oneMinusF + e2a / r), p));
}

template <class T>
ORVEX_INLINE void Shift(const BursaWolf& c, Point<T>& point) {
  const Geocentric<T> to = Moved(c, ToGeocentric(c.aS, c.e2S, point.x + c.pmShift, point.y, T(0)));
  const T p = Sqrt(to.X * to.X + to.Y * to.Y);
  point = {RadToDeg(Atan2(to.Y, to.X)), RadToDeg(FirstLatitude(c.oneMinusF, c.e2a, p, to.Z))};
}

/// Latitude to rounding, radians: Bowring's formula twice more.
template <class T>
ORVEX_INLINE T ExactLatitude(double a, double f, T p, T Z) {
  const double oneMinusF = 1 - f, e2a = f * (2 - f) * a;
  T phi = FirstLatitude(oneMinusF, e2a, p, Z);
  for (int pass = 0; pass < 2; ++pass) {
    const auto [sine, cosine] = SinCos(phi);
    phi = Bowring(oneMinusF, e2a, p, Z, OfArctangent(oneMinusF * sine, cosine));
  }
  return phi;
}

template <class T>
ORVEX_INLINE void ShiftExactly(const BursaWolf& c, Point<T>& point) {
  const Geocentric<T> to = Moved(c, ToGeocentric(c.aS, c.e2S, point.x + c.pmShift, point.y, T(0)));
  const T p = Sqrt(to.X * to.X + to.Y * to.Y);
  point = {RadToDeg(Atan2(to.Y, to.X)), RadToDeg(ExactLatitude(c.aT, 1 - c.oneMinusF, p, to.Z))};
}

/// The inverse: the place over the target ellipsoid from which the frame leads back onto the source's own ellipsoid,
/// for the way there drops a height. Answers where one is found.
template <class T>
ORVEX_INLINE MaskOf<T> ShiftBack(const BursaWolf& c, Point<T>& point) {
  constexpr double kTolerance = 1e-7;  // metres of height; a nanometre of it moves nothing along the ground
  const double fS = c.e2S / (1 + Sqrt(1 - c.e2S));
  T height = T(0), lon = T(0), lat = T(0);
  Iteration<T> it(50);
  while (it.Goes()) {
    const Geocentric<T> from = MovedBack(c, ToGeocentric(c.aT, c.e2T, point.x, point.y, height));
    const T p = Sqrt(from.X * from.X + from.Y * from.Y), phi = ExactLatitude(c.aS, fS, p, from.Z);
    const auto [sine, cosine] = SinCos(phi);
    const T above = p * cosine + from.Z * sine - c.aS * Sqrt(1 - c.e2S * (sine * sine));
    it.Step(lon, RadToDeg(Atan2(from.Y, from.X)));
    it.Step(lat, RadToDeg(phi));
    it.Step(height, height - above / c.scale);
    it.Settle(Abs(above) <= T(kTolerance));
  }
  point = {lon - c.pmShift, lat};
  return it.Settled();
}

}  // namespace ORVEX_LEVEL

}  // namespace orvex::detail
