// PrjUTM - Universal Transverse Mercator and the transverse Mercator state plane zones.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), p. 48-65; the equations stand with the
// shared formulas in math/TransverseMercator.h. Flattening 0 selects the closed forms on the sphere. Round trip on WGS
// 84: below 1 mm within 3 degrees of the central meridian, see docs/accuracy.md.
#include "math/TransverseMercator.h"

#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjUTM", 221, 223};
constexpr Site kInverseSite{"PrjUTM", 459, 461};
constexpr double kHalfBandDeg = 45;  // a transverse Mercator map is accepted this far from its central meridian

using Formulas = TransverseMercator<TMGuards::Utm>;

Formulas Prepare(const PROJDATA& work) {
  return {work.MajorRadius, work.Flattening, work.K0, work.Lat0, work.Lon0};
}

}  // namespace

bool PrjUTM::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return work->Flattening == 0 ? ConvertBy<&Formulas::ForwardSphere>(*work, pts, nPts, Prepare(*work))
                               : ConvertBy<&Formulas::ForwardEllipsoid>(*work, pts, nPts, Prepare(*work));
}

bool PrjUTM::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return work->Flattening == 0 ? ConvertBy<&Formulas::InverseSphere>(*work, pts, nPts, Prepare(*work))
                               : ConvertBy<&Formulas::InverseEllipsoid>(*work, pts, nPts, Prepare(*work));
}

bool PrjUTM::InDomain(const PROJDATA* rec, const PROJPOINT* point) {
  return InOpenBand(rec, point, kHalfBandDeg);
}

}  // namespace orvex::detail
