// PrjSinus - Sinusoidal, equal area with true parallels; sphere and ellipsoid.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987): sphere 30-1, 30-2; ellipsoid 30-8, 30-9 with
// the meridian arc of 3-21 and, for the inverse, 3-24 to 3-26 with one term more.
#include "math/MeridianArc.h"
#include "projections/CentralMeridian.h"
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjSinus", 220, 222};
constexpr Site kInverseSite{"PrjSinus", 403, 405};

struct Constants {
  double a, e2;
  CentralMeridian meridian;
  MeridianArc arc;
  FootpointLatitude footpoint;
};

Constants Prepare(const PROJDATA& work) {
  const double a = work.MajorRadius, e2 = EccentricitySquared(work.Flattening);
  return {a, e2, CentralMeridian(work), MeridianArc(a, e2), FootpointLatitude(e2)};
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  p = {c.a * c.meridian.Difference(p.x) * std::cos(p.y), c.a * p.y};  // 30-1, 30-2
  return Plot::Ok;
}

Plot ForwardEllipsoid(const Constants& c, PROJPOINT& p) {
  const double sinPhi = std::sin(p.y), cosPhi = std::cos(p.y);
  const double w2 = 1 - c.e2 * sinPhi * sinPhi;
  if (w2 <= 0) return Plot::Unplottable;
  p = {c.a * c.meridian.Difference(p.x) * cosPhi / std::sqrt(w2), c.arc.Length(p.y, sinPhi, cosPhi)};  // 30-8, 30-9
  return Plot::Ok;
}

// Latitudes beyond the poles are let through: what lies outside the outline comes back as a position beyond the pole.
Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  const double phi = p.y / c.a, cosPhi = std::cos(phi);
  if (cosPhi == 0) return Plot::Unplottable;
  p = {c.meridian.lon0 + p.x / (c.a * cosPhi), phi};
  return Plot::Ok;
}

Plot InverseEllipsoid(const Constants& c, PROJPOINT& p) {
  const double phi = c.footpoint(c.arc.Mu(p.y)), sinPhi = std::sin(phi), cosPhi = std::cos(phi);
  if (cosPhi == 0) return Plot::Unplottable;
  p = {c.meridian.lon0 + p.x * std::sqrt(1 - c.e2 * sinPhi * sinPhi) / (c.a * cosPhi), phi};
  return Plot::Ok;
}

}  // namespace

bool PrjSinus::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertByForm<ForwardSphere, ForwardEllipsoid>(*work, pts, nPts, Prepare(*work));
}

bool PrjSinus::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertByForm<InverseSphere, InverseEllipsoid>(*work, pts, nPts, Prepare(*work));
}

}  // namespace orvex::detail
