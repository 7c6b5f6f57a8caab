// PrjMiller - Miller Cylindrical, a compromise that shows the poles.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 11-1, 11-2, inverse 11-6, 11-7,
//   with ln tan(pi/4 + u/2) = asinh(tan u), exact at the equator.
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjMiller", 226, 228};
constexpr Site kInverseSite{"PrjMiller", 293, 295};

struct Constants {
  double a, lon0;
};

Constants Prepare(const PROJDATA& work) {
  return {work.MajorRadius, work.Lon0};
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  p = {(p.x - c.lon0) * c.a, std::asinh(std::tan(0.8 * p.y)) * c.a / 0.8};  // 11-1, 11-2
  return Plot::Ok;
}

Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  p = {p.x / c.a + c.lon0, std::atan(std::sinh(0.8 * p.y / c.a)) / 0.8};  // 11-7, 11-6
  return Plot::Ok;
}

}  // namespace

bool PrjMiller::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardSphere>(*work, pts, nPts, Prepare(*work));
}

bool PrjMiller::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InverseSphere>(*work, pts, nPts, Prepare(*work));
}

}  // namespace orvex::detail
