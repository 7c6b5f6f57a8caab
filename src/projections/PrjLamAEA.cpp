// PrjLamAEA - Lambert Azimuthal Equal Area. Sphere only, every aspect. Centre Lat1/Lon0.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), forward 24-2 to 24-4 and the polar forms
//   24-3 to 24-10, inverse 20-14 to 20-18, 24-16.
// Fixed on purpose: the forward plots the centre, the inverse refuses it; a map point beyond the limiting circle is
//   taken for the antipode; every point counts as inside the domain.
#include "math/Azimuthal.h"
#include "projections/Modules.h"

namespace orvex::detail::PrjLamAEA {

namespace {

constexpr Site kForwardSite{"PrjLamAEA", 189, 191};
constexpr Site kInverseSite{"PrjLamAEA", 343, 345};

struct Constants {
  double R;
  AzimuthalCentre centre;
  double pole;  // kNorthPole or kSouthPole, 0 elsewhere; on exact equality

  explicit Constants(const PROJDATA& work) : R(work.MajorRadius), centre(work.Lat1, work.Lon0) {
    pole = centre.lat == kHalfPi ? kNorthPole : centre.lat == -kHalfPi ? kSouthPole : 0;
  }
};

Plot ForwardPolar(const Constants& c, PROJPOINT& p) {
  const double dlon = p.x - c.centre.lon;
  if (1 + c.centre.View(p.y, p.x).cosC <= 0) return Plot::Unplottable;
  const double rho = 2 * c.R * std::sin(kQuarterPi - c.pole * p.y * 0.5);  // sin(pi/4 + phi/2) is cos(pi/4 - phi/2)
  p = {rho * std::sin(dlon), -c.pole * rho * std::cos(dlon)};
  return Plot::Ok;
}

/// The oblique aspect, and the equatorial one: with sin phi1 = 0 and cos phi1 = 1 exactly its formulas are the same.
Plot ForwardOblique(const Constants& c, PROJPOINT& p) {
  const AzimuthalView view = c.centre.View(p.y, p.x);
  const double D = 1 + view.cosC;
  if (D <= 0) return Plot::Unplottable;
  // Beyond 90 degrees 1 + cos c cancels; sin^2 c / (1 - cos c) is the same and does not.
  const double sameD = view.cosC < 0 ? (Square(view.east) + Square(view.north)) / (1 - view.cosC) : D;
  const double k = c.R * std::sqrt(2 / sameD);  // 24-2
  p = {k * view.east, k * view.north};
  return Plot::Ok;
}

AzimuthalDirection DirectionOf(const Constants& c, const PROJPOINT& p, double rho) {
  return c.centre.Direction(p.x, p.y, rho, Arc::WithHalfSine(rho / (2 * c.R)));  // 24-16
}

Plot InversePolar(const Constants& c, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (rho == 0 || p.y == 0) return Plot::Unplottable;  // the whole line y = 0 as well
  p = {WrapOnce(c.centre.lon + PolarLongitudeDifference(p.x, p.y, c.pole)), DirectionOf(c, p, rho).Latitude()};
  return Plot::Ok;
}

Plot InverseOblique(const Constants& c, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (rho == 0) return Plot::Unplottable;
  const AzimuthalDirection direction = DirectionOf(c, p, rho);
  if (direction.along == 0) return Plot::Unplottable;
  p = {WrapOnce(c.centre.lon + direction.LongitudeDifference()), direction.Latitude()};
  return Plot::Ok;
}

}  // namespace

bool Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  const Constants c(*work);
  if (c.pole != 0) return ConvertEach<ForwardPolar>(*work, pts, nPts, c);
  return ConvertEach<ForwardOblique>(*work, pts, nPts, c);
}

bool Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  const Constants c(*work);
  if (c.pole != 0) return ConvertEach<InversePolar>(*work, pts, nPts, c);
  return ConvertEach<InverseOblique>(*work, pts, nPts, c);
}

}  // namespace orvex::detail::PrjLamAEA
