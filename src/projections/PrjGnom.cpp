// PrjGnom - Gnomonic, the sphere projected from its middle: azimuthal, every great circle is a straight line.
// Sphere only, every aspect. Centre Lat1/Lon0. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987),
//   forward 5-3, 22-3 to 22-5 and their polar and equatorial forms, inverse 20-14, 20-15, 22-16.
// Fixed on purpose: the south polar forward, which mirrors the map north to south and is not what the inverse undoes;
//   the domain test stops at 60 degrees of arc, while the forward goes on to anything short of 90.
#include "math/Azimuthal.h"
#include "projections/Modules.h"

namespace orvex::detail::PrjGnom {

namespace {

constexpr Site kForwardSite{"PrjGnom", 207, 209};
constexpr Site kInverseSite{"PrjGnom", 329, 331};

constexpr double kAspectDegrees = 0.0001;    // a centre this near to a pole or the equator has the special form
constexpr double kLeastCosDlon = 0.00001;    // equatorial aspect: nearer to 90 degrees of longitude y is not formed
constexpr double kCentreRadius = 0.0000001;  // inverse: map units about the origin that are the centre
constexpr double kDomainArc = 1.0471975511965976;  // 60 degrees

struct Constants {
  double R;
  AzimuthalCentre centre;

  explicit Constants(const PROJDATA& work) : R(work.MajorRadius), centre(work.Lat1, work.Lon0) {}

  bool CentreNear(double latDeg) const { return std::abs(RadToDeg(centre.lat) - latDeg) < kAspectDegrees; }
};

/// `pole`: kNorthPole or kSouthPole.
Plot ForwardPolar(const Constants& c, double pole, PROJPOINT& p) {
  const double sinPhi = std::sin(p.y), cosPhi = std::cos(p.y), dlon = p.x - c.centre.lon, cosDlon = std::cos(dlon);
  if (c.centre.sinLat * sinPhi + c.centre.cosLat * cosPhi * cosDlon <= 0) return Plot::Unplottable;
  // For the south both signs turn, though cot phi is negative there by itself: x comes out right, y mirrored.
  const double rho = pole * c.R * (cosPhi / sinPhi);
  p = {rho * std::sin(dlon), -rho * cosDlon};
  return Plot::Ok;
}

Plot ForwardEquatorial(const Constants& c, PROJPOINT& p) {
  const double dlon = p.x - c.centre.lon, cosDlon = std::cos(dlon);
  if (c.centre.View(p.y, p.x).cosC <= 0 || std::abs(cosDlon) < kLeastCosDlon) return Plot::Unplottable;
  p = {c.R * std::tan(dlon), c.R * std::tan(p.y) / cosDlon};
  return Plot::Ok;
}

Plot ForwardOblique(const Constants& c, PROJPOINT& p) {
  const AzimuthalView view = c.centre.View(p.y, p.x);
  if (view.cosC <= 0) return Plot::Unplottable;
  const double k = c.R / view.cosC;     // 22-3
  p = {k * view.east, k * view.north};  // 22-4, 22-5
  return Plot::Ok;
}

Plot InversePoint(const Constants& c, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (rho < kCentreRadius) {
    p = {WrapOnce(c.centre.lon), c.centre.lat};
    return Plot::Ok;
  }
  // 20-14 and 20-15 with tan c = rho/R, 22-16: the direction is that of the map point on the tangent plane.
  const AzimuthalDirection direction{c.R * c.centre.sinLat + p.y * c.centre.cosLat, p.x,
                                     c.R * c.centre.cosLat - p.y * c.centre.sinLat};
  p = {WrapOnce(c.centre.lon + direction.LongitudeDifference()), direction.Latitude()};
  return Plot::Ok;
}

}  // namespace

bool Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  const Constants c(*work);
  if (c.CentreNear(90)) {
    return ConvertEach(*work, pts, nPts, [&c](PROJPOINT& p) { return ForwardPolar(c, kNorthPole, p); });
  }
  if (c.CentreNear(-90)) {
    return ConvertEach(*work, pts, nPts, [&c](PROJPOINT& p) { return ForwardPolar(c, kSouthPole, p); });
  }
  if (c.CentreNear(0)) return ConvertEach<ForwardEquatorial>(*work, pts, nPts, c);
  return ConvertEach<ForwardOblique>(*work, pts, nPts, c);
}

bool Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InversePoint>(*work, pts, nPts, Constants(*work));
}

bool InDomain(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr && WithinArc(rec->Lat1, rec->Lon0, *point, std::cos(kDomainArc));
}

}  // namespace orvex::detail::PrjGnom
