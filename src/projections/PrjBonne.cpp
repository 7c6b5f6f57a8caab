// PrjBonne - Bonne, sphere and ellipsoid. Lat1 is the standard parallel and the origin of y; it may be a southern one.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), p. 139-140, with 14-15, 3-21, 3-24 and 3-26.
// Equal area; every parallel is true to scale.
// Fixed on purpose: the meridian arc stops after three terms, 155 stands in its inverse where 3-26 has 151 (together up
// to 5 cm each way), and the longitude difference is wrapped whatever the record's flag says.
#include "math/MeridianArc.h"
#include "projections/Modules.h"

namespace orvex::detail::PrjBonne {

namespace {

constexpr const char* kSource = "PrjBonne";
constexpr Site kForwardSite{kSource, 221, 223};
constexpr Site kInverseSite{kSource, 421, 423};
constexpr int kApexSphere = 264;  // the forward formulas assert at the apex of the cone
constexpr int kApexEllipsoid = 371;

struct Constants {
  double a, e2, lat1, lon0;
  double cot1;         // sphere
  double sin1, K, M1;  // ellipsoid: K is the radius of the standard parallel, M1 its distance from the equator
  MeridianArc arc;
  FootpointLatitude footpoint;
};

/// cos(lat) / sqrt(1 - e2 sin^2 lat): radius of a parallel in units of a, 14-15.
double RelativeParallel(double e2, double lat) {
  return std::cos(lat) / std::sqrt(1 - e2 * Square(std::sin(lat)));
}

Constants Prepare(const PROJDATA& work) {
  const double a = work.MajorRadius, e2 = EccentricitySquared(work.Flattening), lat1 = work.Lat1, sin1 = std::sin(lat1);
  MeridianArc arc(a, e2);
  arc.A6 = 0;  // deliberate, see above; so is 155
  return {a,
          e2,
          lat1,
          work.Lon0,
          1 / std::tan(lat1),
          sin1,
          a * RelativeParallel(e2, lat1) / sin1,
          arc(lat1),
          arc,
          FootpointLatitude(e2, 155)};
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  if (p.x == kHalfPi && c.lat1 == kHalfPi) return Plot::Unplottable;  // deliberate: it is the longitude that is tested
  const double rho = c.a * (c.cot1 + c.lat1 - p.y);
  if (rho == 0) Assert(kSource, kApexSphere);
  const double E = c.a * WrapOnce(p.x - c.lon0) * std::cos(p.y) / rho;
  p = {rho * std::sin(E), c.a * c.cot1 - rho * std::cos(E)};
  return Plot::Ok;
}

Plot ForwardEllipsoid(const Constants& c, PROJPOINT& p) {
  if (c.sin1 == 0) return Plot::Unplottable;
  const double rho = c.K + c.M1 - c.arc(p.y);
  if (rho == 0) Assert(kSource, kApexEllipsoid);
  const double E = c.a * RelativeParallel(c.e2, p.y) * WrapOnce(p.x - c.lon0) / rho;
  p = {rho * std::sin(E), c.K - rho * std::cos(E)};
  return Plot::Ok;
}

/// Radius and angle of a point about the apex, `below` being the distance of the apex above it; negative radii in the
/// south.
struct Polar {
  double rho, angle;
};
Polar AboutApex(const Constants& c, double x, double below) {
  const double rho = std::sqrt(x * x + below * below);
  return c.lat1 < 0 ? Polar{-rho, std::atan2(-x, -below)} : Polar{rho, std::atan2(x, below)};
}

Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  const auto [rho, angle] = AboutApex(c, p.x, c.a * c.cot1 - p.y);
  const double phi = c.cot1 + c.lat1 - rho / c.a, parallel = c.a * std::cos(phi);
  if (parallel == 0) return Plot::Unplottable;
  p = {WrapOnce(c.lon0 + rho * angle / parallel), phi};
  return Plot::Ok;
}

Plot InverseEllipsoid(const Constants& c, PROJPOINT& p) {
  if (c.sin1 == 0) return Plot::Unplottable;
  const double below = c.K - p.y;
  const auto [rho, angle] = AboutApex(c, p.x, below);
  const double phi = c.footpoint(c.arc.Mu(c.K + c.M1 - rho));  // 3-26
  if (1 - c.e2 * Square(std::sin(phi)) <= 0) return Plot::Unplottable;
  const double m = RelativeParallel(c.e2, phi);
  if (m == 0 || below == 0) return Plot::Unplottable;
  p = {WrapOnce(c.lon0 + rho * angle / (c.a * m)), phi};
  return Plot::Ok;
}

}  // namespace

bool Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertByForm<ForwardSphere, ForwardEllipsoid>(*work, pts, nPts, Prepare(*work));
}

bool Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertByForm<InverseSphere, InverseEllipsoid>(*work, pts, nPts, Prepare(*work));
}

}  // namespace orvex::detail::PrjBonne
