// PrjHotine - Hotine Oblique Mercator, ellipsoid; flattening 0 runs the same formulas. The central line is given by a
// centre and an azimuth, or by two points and the latitude of the centre. Coordinates count along the line (u) and
// across it (v) from the natural origin on the aposphere's equator, or from the centre, and are turned to north on
// request. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), p. 71-75: 9-11 to 9-48.
#include "math/ObliqueMercator.h"
#include "projections/Modules.h"

namespace orvex::detail::PrjHotine {

namespace {

constexpr Site kForwardSite{"PrjHotine", 230, 232};
constexpr Site kInverseSite{"PrjHotine", 430, 432};

struct Constants {
  ObliqueMercator line;
  bool valid, rotate;
  double u0;
};

/// `radians` converts the record's angles: the driver's copy holds radians already, the domain test gets degrees.
template <class Radians>
Constants Prepare(const PROJDATA& rec, Radians radians) {
  const double lat0 = radians(rec.Lat0);
  const Aposphere sphere(rec.MajorRadius, rec.Flattening, rec.K0, lat0);
  const ObliqueMercator line = IsSet(rec.bUseAlpha)
                                   ? ObliqueMercator::ThroughCentre(sphere, radians(rec.Lon0), radians(rec.Alpha))
                                   : ObliqueMercator::ThroughPoints(sphere, radians(rec.Lon1), radians(rec.Lat1),
                                                                    radians(rec.Lon2), radians(rec.Lat2));
  const bool needsCentre = IsSet(rec.bRotate) || IsSet(rec.bUOffset);
  return {line, line.valid && (line.onLine || !needsCentre), IsSet(rec.bRotate),
          IsSet(rec.bUOffset) ? line.centreU : 0};
}

Constants Prepare(const PROJDATA& work) {
  return Prepare(work, [](double angle) { return angle; });
}

Plot ForwardPoint(const Constants& c, PROJPOINT& p) {
  double u = 0, v = 0;
  if (!c.valid || !c.line.Forward(p.x, p.y, u, v)) return Plot::Unplottable;
  u -= c.u0;
  p = c.rotate ? PROJPOINT{v * c.line.cosAlpha + u * c.line.sinAlpha, u * c.line.cosAlpha - v * c.line.sinAlpha}
               : PROJPOINT{u, v};
  return Plot::Ok;
}

Plot InversePoint(const Constants& c, PROJPOINT& p) {
  if (!c.valid) return Plot::Unplottable;
  const double u = c.rotate ? p.y * c.line.cosAlpha + p.x * c.line.sinAlpha : p.x;
  const double v = c.rotate ? p.x * c.line.cosAlpha - p.y * c.line.sinAlpha : p.y;
  double lon = 0, lat = 0;
  if (!c.line.Inverse(u + c.u0, v, lon, lat)) return Plot::Unplottable;
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
  const Constants c = Prepare(*rec, DegToRad);
  return c.valid && c.line.NearLine(DegToRad(point->x), DegToRad(point->y));
}

}  // namespace orvex::detail::PrjHotine
