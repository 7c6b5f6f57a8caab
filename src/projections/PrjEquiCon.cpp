// PrjEquiCon - Equidistant Conic on one or two standard parallels.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 14-1, 14-2, 14-4, 16-1 to 16-4;
//   inverse 14-9 to 14-11, 16-5.
#include "projections/CentralMeridian.h"
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjEquiCon", 224, 226};
constexpr Site kInverseSite{"PrjEquiCon", 323, 325};

constexpr double kOneParallel = 1e-06;  // radians: parallels closer than this count as one
constexpr double kLeastCone = 1e-07;    // a flatter cone is refused

struct Constants {
  double a;
  CentralMeridian meridian;
  double n, G, rho0;
  bool refused;
};

/// Cone constant, 16-4 as a product, which keeps its digits when the parallels lie close together.
double ConeConstant(double lat1, double lat2) {
  if (!(std::fabs(lat1 - lat2) >= kOneParallel)) return std::sin(lat1);
  const double half = (lat2 - lat1) / 2;
  return std::sin((lat1 + lat2) / 2) * std::sin(half) / half;
}

Constants Prepare(const PROJDATA& work) {
  Constants c{work.MajorRadius, CentralMeridian(work), ConeConstant(work.Lat1, work.Lat2), 0, 0, false};
  c.refused = std::fabs(c.n) < kLeastCone;
  if (c.refused) return c;
  c.G = std::cos(work.Lat1) / c.n + work.Lat1;  // 16-2
  c.rho0 = c.a * (c.G - work.Lat0);             // 16-3
  return c;
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  if (c.refused) return Plot::Unplottable;
  const double rho = c.a * (c.G - p.y), theta = c.n * c.meridian.Difference(p.x);  // 16-1, 14-4
  p = {rho * std::sin(theta), c.rho0 - rho * std::cos(theta)};                     // 14-1, 14-2
  return Plot::Ok;
}

Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  if (c.refused) return Plot::Unplottable;
  const double sign = c.n > 0 ? 1 : -1;
  const double x = sign * p.x, d = sign * (c.rho0 - p.y);
  const double rho = sign * std::sqrt(x * x + d * d);                         // 14-10
  p = {WrapOnce(std::atan2(x, d) / c.n + c.meridian.lon0), c.G - rho / c.a};  // 14-11, 14-9, 16-5
  return Plot::Ok;
}

}  // namespace

bool PrjEquiCon::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardSphere>(*work, pts, nPts, Prepare(*work));
}

bool PrjEquiCon::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InverseSphere>(*work, pts, nPts, Prepare(*work));
}

}  // namespace orvex::detail
