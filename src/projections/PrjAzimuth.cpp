// PrjAzimuth - Azimuthal Equidistant: distances and directions from the centre are true. Sphere only, every aspect.
// Centre Lat1/Lon0.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), forward 5-3, 22-4, 22-5, 25-1, 25-2 and
//   their polar and equatorial forms, inverse 20-14 to 20-18, 25-15.
// Fixed on purpose: centre and antipode, within 4.5e-5 radians, are refused in the oblique aspect and both plotted at
//   the origin in the equatorial one; the polar aspects refuse nothing; the inverse refuses the centre.
#include "math/Azimuthal.h"
#include "projections/Modules.h"

namespace orvex::detail::PrjAzimuth {

namespace {

constexpr Site kForwardSite{"PrjAzimuth", 207, 209};
constexpr Site kInverseSite{"PrjAzimuth", 344, 346};

constexpr double kAspectDegrees = 0.00001;         // a centre this near to a pole or the equator has the special form
constexpr double kAxisTolerance = 1e-09;           // forward: |cos c| this near to 1 is the centre or its antipode
constexpr double kCentreRadius = 1e-08;            // inverse: map units about the origin that are refused
constexpr double kDomainArc = 2.9670597283903604;  // 170 degrees

struct Constants {
  double R;
  AzimuthalCentre centre;
  double pole;  // kNorthPole or kSouthPole, 0 elsewhere
  bool equatorial;

  explicit Constants(const PROJDATA& work) : R(work.MajorRadius), centre(work.Lat1, work.Lon0) {
    pole = CentreNear(90) ? kNorthPole : CentreNear(-90) ? kSouthPole : 0;
    equatorial = CentreNear(0);
  }

  bool CentreNear(double latDeg) const { return std::abs(RadToDeg(centre.lat) - latDeg) < kAspectDegrees; }
};

Plot ForwardPolar(const Constants& c, PROJPOINT& p) {
  const double rho = c.R * (kHalfPi - c.pole * p.y), dlon = p.x - c.centre.lon;
  p = {rho * std::sin(dlon), -c.pole * rho * std::cos(dlon)};
  return Plot::Ok;
}

bool OnAxis(const AzimuthalView& view) {
  return std::abs(std::abs(view.cosC) - 1) < kAxisTolerance;
}

/// k = R c / sin c, 25-2; c from its sine and cosine, since the arccosine loses half the digits towards centre and
/// antipode.
double Stretch(const Constants& c, const AzimuthalView& view) {
  const double sinC = std::sqrt(Square(view.east) + Square(view.north));
  return c.R * std::atan2(sinC, view.cosC) / sinC;
}

Plot ForwardEquatorial(const Constants& c, PROJPOINT& p) {
  const double sinPhi = std::sin(p.y);
  const AzimuthalView view = c.centre.View(sinPhi, std::cos(p.y), p.x);
  const double k = OnAxis(view) ? 0 : Stretch(c, view);
  p = {k * view.east, k * sinPhi};
  return Plot::Ok;
}

Plot ForwardOblique(const Constants& c, PROJPOINT& p) {
  const AzimuthalView view = c.centre.View(p.y, p.x);
  if (OnAxis(view)) return Plot::Unplottable;
  const double k = Stretch(c, view);
  p = {k * view.east, k * view.north};
  return Plot::Ok;
}

Plot InversePolar(const Constants& c, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (rho < kCentreRadius) return Plot::Unplottable;
  p = {WrapOnce(c.centre.lon + PolarLongitudeDifference(p.x, p.y, c.pole)),
       c.centre.Direction(p.x, p.y, rho, Arc::Of(rho / c.R)).Latitude()};  // 25-15
  return Plot::Ok;
}

Plot InverseOblique(const Constants& c, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (rho < kCentreRadius) return Plot::Unplottable;
  const AzimuthalDirection direction = c.centre.Direction(p.x, p.y, rho, Arc::Of(rho / c.R));  // 25-15
  p = {WrapOnce(c.centre.lon + direction.LongitudeDifference()), direction.Latitude()};
  return Plot::Ok;
}

}  // namespace

bool Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  const Constants c(*work);
  if (c.pole != 0) return ConvertEach<ForwardPolar>(*work, pts, nPts, c);
  if (c.equatorial) return ConvertEach<ForwardEquatorial>(*work, pts, nPts, c);
  return ConvertEach<ForwardOblique>(*work, pts, nPts, c);
}

bool Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  const Constants c(*work);
  if (c.pole != 0) return ConvertEach<InversePolar>(*work, pts, nPts, c);
  return ConvertEach<InverseOblique>(*work, pts, nPts, c);
}

bool InDomain(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr && WithinArc(rec->Lat1, rec->Lon0, *point, std::cos(kDomainArc));
}

}  // namespace orvex::detail::PrjAzimuth
