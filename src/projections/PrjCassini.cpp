// PrjCassini - Cassini, sphere only: flattening is not read. Lat0 and Lon0 are the origin.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 13-1 to 13-6.
// The central meridian and every great circle at right angles to it are true to scale.
// Fixed on purpose: the longitude difference is not wrapped; a quarter turn to either side counts as the pole's
//   meridian.
#include "projections/Modules.h"

namespace orvex::detail::PrjCassini {

namespace {

constexpr Site kForwardSite{"PrjCassini", 199, 201};
constexpr Site kInverseSite{"PrjCassini", 310, 312};
constexpr double kThreeHalvesPi = 4.71238898038469;

struct Constants {
  double a, lat0, lon0;
};

Constants Prepare(const PROJDATA& work) {
  return {work.MajorRadius, work.Lat0, work.Lon0};
}

/// Arcsine of one component of a unit vector, from the other two as well: by itself it loses half the digits where it
/// is nearly 1, at the ends of the map and at the poles.
double ArcOfSine(double sine, double other1, double other2) {
  return std::atan2(sine, std::sqrt(other1 * other1 + other2 * other2));
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  const double phi = p.y, dLon = p.x - c.lon0, quarter = std::abs(dLon);
  const double sinPhi = std::sin(phi), cosPhi = std::cos(phi), cosLon = std::cos(dLon);
  const double B = cosPhi * std::sin(dLon);  // 13-5
  if (1 - B * B <= 0) return Plot::Unplottable;
  double t = phi < 0 ? -kHalfPi : kHalfPi;
  if (std::abs(phi) != kHalfPi && quarter != kHalfPi && quarter != kThreeHalvesPi) {
    if (cosLon == 0) return Plot::Unplottable;
    t = std::atan2(sinPhi / cosPhi, cosLon);
  }
  p = {c.a * ArcOfSine(B, sinPhi, cosPhi * cosLon), c.a * (t - c.lat0)};  // 13-1, 13-2
  return Plot::Ok;
}

Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  const double D = p.y / c.a + c.lat0, x = p.x / c.a;  // 13-6
  const double sinX = std::sin(x), cosX = std::cos(x), cosD = std::cos(D);
  const double lon = std::atan2(sinX / cosX, cosD) + c.lon0;              // 13-4
  p = {WrapOnce(lon), ArcOfSine(std::sin(D) * cosX, sinX, cosX * cosD)};  // 13-3
  return Plot::Ok;
}

}  // namespace

bool Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardSphere>(*work, pts, nPts, Prepare(*work));
}

bool Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InverseSphere>(*work, pts, nPts, Prepare(*work));
}

}  // namespace orvex::detail::PrjCassini
