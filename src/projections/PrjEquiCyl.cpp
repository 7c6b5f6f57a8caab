// PrjEquiCyl - Equidistant Cylindrical, true to scale on Lat1 and along all meridians.
// Sphere only, of radius MajorRadius whatever the flattening. Northings count from the equator.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 12-1, 12-2, inverse 12-5, 12-6.
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjEquiCyl", 189, 191};
constexpr Site kInverseSite{"PrjEquiCyl", 249, 251};

struct Constants {
  double a, lon0, cosLat1;
};

Constants Prepare(const PROJDATA& work) {
  return {work.MajorRadius, work.Lon0, std::cos(work.Lat1)};
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  p = {(p.x - c.lon0) * c.a * c.cosLat1, p.y * c.a};  // 12-1, 12-2
  return Plot::Ok;
}

Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  if (c.cosLat1 == 0) return Plot::Unplottable;
  p = {p.x / (c.cosLat1 * c.a) + c.lon0, p.y / c.a};  // 12-6, 12-5
  return Plot::Ok;
}

}  // namespace

bool PrjEquiCyl::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardSphere>(*work, pts, nPts, Prepare(*work));
}

bool PrjEquiCyl::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InverseSphere>(*work, pts, nPts, Prepare(*work));
}

}  // namespace orvex::detail
