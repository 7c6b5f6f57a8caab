// BursaWolf - seven-parameter shift between geocentric frames, position-vector rotations, height 0.
// Sources: EPSG Guidance Note 7-2, method 9606; geodetic latitude by Bowring, "The accuracy of geodetic latitude and
//   height equations", Survey Review 28 (1985), in one evaluation: off by at most 1.4e-11 degrees near the ellipsoid.
// Fixed on purpose: the way back is the forward formula with negated parameters and reciprocal scale, in the same
//   order. It misses the exact inverse by products of the rotations with the shift and with each other.
#include "datum/methods/BursaWolf.h"

#include <cmath>

#include "datum/DatumPoint.h"
#include "math/Angles.h"
#include "support/Flag.h"

namespace orvex::detail {

namespace {

struct Constants {
  double dx, dy, dz, pmShift;
  double rx, ry, rz;  // radians
  double scale;
  double aS, e2S, oneMinusE2S;  // source ellipsoid
  double oneMinusF, e2a;        // target ellipsoid
};

constexpr double ArcsecondsToRad(double arcseconds) {
  return arcseconds / 60 / 60 * kPi / 180;
}

Constants Prepare(const DATUM2WGS84& step) {
  const StepFrame frame(step);
  const double sign = IsSet(step.bInverse) ? -1 : 1, factor = 1 + step.k * 1e-6;
  const auto [aS, fS] = frame.source;
  const auto [aT, fT] = frame.target;
  return {
      .dx = frame.dx,
      .dy = frame.dy,
      .dz = frame.dz,
      .pmShift = frame.pmShift,
      .rx = ArcsecondsToRad(sign * step.rx),
      .ry = ArcsecondsToRad(sign * step.ry),
      .rz = ArcsecondsToRad(sign * step.rz),
      .scale = IsSet(step.bInverse) ? 1 / factor : factor,
      .aS = aS,
      .e2S = (2 - fS) * fS,
      .oneMinusE2S = 1 - (2 - fS) * fS,
      .oneMinusF = 1 - fT,
      .e2a = fT * (2 - fT) * aT,
  };
}

struct SineCosine {
  double sine, cosine;
};

/// Sine and cosine of atan2(y, x): by division where the hypotenuse is of ordinary size, else by way of the angle.
SineCosine OfArctangent(double y, double x) {
  const double hypotenuse = std::sqrt(y * y + x * x);
  if (hypotenuse > 1e-100 && hypotenuse < 1e100) return {y / hypotenuse, x / hypotenuse};
  const double angle = std::atan2(y, x);
  return {std::sin(angle), std::cos(angle)};
}

constexpr double Cube(double x) {
  return x * x * x;
}

/// Geocentric position on the target ellipsoid to longitude and latitude, degrees.
DATUMPOINT ToGeodetic(const Constants& c, double X, double Y, double Z) {
  const double p = std::sqrt(X * X + Y * Y), r = std::sqrt(p * p + Z * Z);
  const auto [sinMu, cosMu] = OfArctangent(Z * (c.oneMinusF + c.e2a / r), p);
  const double phi = std::atan2(Z * c.oneMinusF + c.e2a * Cube(sinMu), c.oneMinusF * (p - c.e2a * Cube(cosMu)));
  return {RadToDeg(std::atan2(Y, X)), RadToDeg(phi)};
}

DATUMPOINT Shift(const Constants& c, const DATUMPOINT& point) {
  const double lambda = DegToRad(point.x + c.pmShift), phi = DegToRad(point.y);
  const double sinPhi = std::sin(phi), cosPhi = std::cos(phi);
  const double N = c.aS / std::sqrt(1 - c.e2S * sinPhi * sinPhi);
  const double X = N * cosPhi * std::cos(lambda), Y = N * cosPhi * std::sin(lambda), Z = N * c.oneMinusE2S * sinPhi;
  return ToGeodetic(c, c.scale * (X - c.rz * Y + c.ry * Z) + c.dx,  //
                    c.scale * (c.rz * X + Y - c.rx * Z) + c.dy,     //
                    c.scale * (-c.ry * X + c.rx * Y + Z) + c.dz);
}

}  // namespace

bool ConvertBursaWolf(const DATUM2WGS84& step, DATUMPOINT* pts, int n) {
  const Constants c = Prepare(step);
  for (int i = 0; i < n; ++i) {
    const DATUMPOINT p = pts[i];
    if (!IsUnplottable(p)) pts[i] = Shift(c, p);
  }
  return true;
}

}  // namespace orvex::detail
