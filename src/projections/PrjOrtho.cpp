// PrjOrtho - Orthographic, the sphere seen from infinitely far away: azimuthal, true along circles about the centre.
// Sphere only, every aspect. Centre Lat0/Lon0. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987),
//   forward 5-3, 20-3, 20-4 and their polar forms, inverse 20-14 to 20-19.
// Fixed on purpose: the limiting circle itself is plotted; a map point beyond it is taken for the one on it; the
//   longitude of the inverse is not wrapped; the centre latitude is left in Lat1 of the working record.
#include "math/Azimuthal.h"
#include "projections/Modules.h"

namespace orvex::detail::PrjOrtho {

namespace {

constexpr Site kForwardSite{"PrjOrtho", 199, 201};
constexpr Site kInverseSite{"PrjOrtho", 310, 312};

struct Constants {
  double R;
  AzimuthalCentre centre;
  double pole;      // kNorthPole or kSouthPole, 0 elsewhere; on exact equality
  double yCosPhi1;  // cos phi1 as y takes it: at a pole exactly 0

  explicit Constants(PROJDATA& work) : R(work.MajorRadius), centre(work.Lat0, work.Lon0) {
    work.Lat1 = work.Lat0;
    pole = centre.lat == kHalfPi ? kNorthPole : centre.lat == -kHalfPi ? kSouthPole : 0;
    yCosPhi1 = pole != 0 ? 0 : centre.cosLat;
  }
};

Plot ForwardPoint(const Constants& c, PROJPOINT& p) {
  const double sinPhi = std::sin(p.y), cosPhi = std::cos(p.y);
  const double sinDlon = std::sin(p.x - c.centre.lon), cosDlon = std::cos(p.x - c.centre.lon);
  const double cosC = c.centre.sinLat * sinPhi + c.centre.cosLat * cosPhi * cosDlon;  // 5-3
  if (cosC < 0) return Plot::Unplottable;
  p = {c.R * cosPhi * sinDlon, c.R * (c.yCosPhi1 * sinPhi - c.centre.sinLat * cosPhi * cosDlon)};  // 20-3, 20-4
  return Plot::Ok;
}

/// Direction of a map point that is not the centre.
AzimuthalDirection DirectionOf(const Constants& c, const PROJPOINT& p, double rho) {
  return c.centre.Direction(p.x, p.y, rho, Arc::WithSine(rho / c.R));  // 20-19
}

Plot InversePolar(const Constants& c, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (rho <= kFloatEpsilon) {
    p = {c.centre.lon, c.centre.lat};
    return Plot::Ok;
  }
  p = {c.centre.lon + PolarLongitudeDifference(p.x, p.y, c.pole), DirectionOf(c, p, rho).Latitude()};
  return Plot::Ok;
}

Plot InverseOblique(const Constants& c, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (rho <= kFloatEpsilon) {
    p = {c.centre.lon, c.centre.lat};
    return Plot::Ok;
  }
  const AzimuthalDirection direction = DirectionOf(c, p, rho);
  if (direction.along == 0) return Plot::Unplottable;
  p = {c.centre.lon + direction.LongitudeDifference(), direction.Latitude()};
  return Plot::Ok;
}

}  // namespace

bool Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardPoint>(*work, pts, nPts, Constants(*work));
}

bool Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  const Constants c(*work);
  if (c.pole != 0) return ConvertEach<InversePolar>(*work, pts, nPts, c);
  return ConvertEach<InverseOblique>(*work, pts, nPts, c);
}

}  // namespace orvex::detail::PrjOrtho
