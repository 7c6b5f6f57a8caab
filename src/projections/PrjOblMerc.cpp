// PrjOblMerc - Oblique Mercator about the line through two points, sphere and ellipsoid. x counts along the line from
// its node next to the points' mean meridian, y to the left of it.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987). Sphere 9-1 to 9-8; the ellipsoid by Hotine's
//   method, p. 71-75, with the centre at the points' mean latitude. The sphere is its own aposphere, so one set of
//   formulas does.
#include "math/ObliqueMercator.h"
#include "projections/Modules.h"

namespace orvex::detail::PrjOblMerc {

namespace {

constexpr Site kForwardSite{"PrjOblMerc", 230, 232};
constexpr Site kInverseSite{"PrjOblMerc", 330, 332};

/// `radians` converts the record's angles: the driver's copy holds radians already, the domain test gets degrees.
template <class Radians>
ObliqueMercator Prepare(const PROJDATA& rec, Radians radians) {
  const double lat1 = radians(rec.Lat1), lat2 = radians(rec.Lat2);
  const Aposphere sphere(rec.MajorRadius, rec.Flattening, rec.K0, (lat1 + lat2) / 2);
  return ObliqueMercator::ThroughPoints(sphere, radians(rec.Lon1), lat1, radians(rec.Lon2), lat2);
}

ObliqueMercator Prepare(const PROJDATA& work) {
  return Prepare(work, [](double angle) { return angle; });
}

Plot ForwardPoint(const ObliqueMercator& line, PROJPOINT& p) {
  double u = 0, v = 0;
  if (!line.Forward(p.x, p.y, u, v)) return Plot::Unplottable;
  p = {u, -v};
  return Plot::Ok;
}

Plot InversePoint(const ObliqueMercator& line, PROJPOINT& p) {
  double lon = 0, lat = 0;
  if (!line.Inverse(p.x, -p.y, lon, lat)) return Plot::Unplottable;
  p = {lon, lat};
  return Plot::Ok;
}

}  // namespace

bool Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardPoint>(*work, pts, nPts, Prepare(*work));
}

bool Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InversePoint>(*work, pts, nPts, Prepare(*work));
}

bool InDomain(const PROJDATA* rec, const PROJPOINT* point) {
  if (rec == nullptr || point == nullptr) return false;
  return Prepare(*rec, DegToRad).NearLine(DegToRad(point->x), DegToRad(point->y));
}

}  // namespace orvex::detail::PrjOblMerc
