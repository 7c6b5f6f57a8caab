// Molodensky - the standard (not the abridged) Molodensky shift at height 0.
// Source: DMA Technical Report 8350.2, Department of Defense World Geodetic System 1984, section 7.
// Fixed on purpose: with a prime meridian other than Greenwich the way back evaluates the shift at the longitude
// counted
//   from that meridian; nothing guards the longitude shift at the poles, where N cos(lat) is nearly 0.
#include "datum/methods/Molodensky.h"

#include <cmath>

#include "datum/DatumPoint.h"
#include "math/Angles.h"

namespace orvex::detail {

namespace {

constexpr double kSinArcsecond = 4.84813681109536e-06;

struct Constants {
  double dx, dy, dz, pmShift;
  double a, e2;       // source ellipsoid
  double meridional;  // a (1 - e2), the numerator of M
  double axisTerm;    // da e2 / a
  double aOverB, bOverA;
  double df;
};

Constants Prepare(const StepFrame& frame) {
  const auto [a, f] = frame.source;
  const double e2 = 2 * f - f * f, b = (1 - f) * a;
  return {
      .dx = frame.dx,
      .dy = frame.dy,
      .dz = frame.dz,
      .pmShift = frame.pmShift,
      .a = a,
      .e2 = e2,
      .meridional = a * (1 - e2),
      .axisTerm = (frame.target.a - a) * e2 / a,
      .aOverB = a / b,
      .bOverA = b / a,
      .df = frame.target.f - f,
  };
}

void Shift(const Constants& c, DATUMPOINT& p) {
  const double lambda = DegToRad(p.x + c.pmShift), phi = DegToRad(p.y);
  const double sinLambda = std::sin(lambda), cosLambda = std::cos(lambda);
  const double sinPhi = std::sin(phi), cosPhi = std::cos(phi);
  const double W = 1 - c.e2 * sinPhi * sinPhi, rootW = std::sqrt(W);
  const double N = c.a / rootW, M = c.meridional / (W * rootW);

  const double originShift = (-c.dx * cosLambda - c.dy * sinLambda) * sinPhi + c.dz * cosPhi;
  const double shapeShift = (c.axisTerm * N + c.df * (M * c.aOverB + N * c.bOverA)) * sinPhi * cosPhi;
  const double dPhi = (originShift + shapeShift) / (M * kSinArcsecond);
  const double dLambda = (-c.dx * sinLambda + c.dy * cosLambda) / (N * cosPhi * kSinArcsecond);

  p.x = RadToDeg(lambda) + dLambda / 60 / 60;
  p.y = RadToDeg(phi) + dPhi / 60 / 60;
}

}  // namespace

bool ConvertMolodensky(const DATUM2WGS84& step, DATUMPOINT* pts, int n) {
  const Constants c = Prepare(StepFrame(step));
  for (int i = 0; i < n; ++i) {
    DATUMPOINT p = pts[i];
    if (IsUnplottable(p)) continue;
    Shift(c, p);
    pts[i] = p;
  }
  return true;
}

}  // namespace orvex::detail
