// Domains - domain tests and offset rules of the projection table.
#include "projections/Domains.h"

#include <cfloat>

#include "math/Angles.h"
#include "math/ObliqueMercator.h"

namespace orvex::detail {

namespace {

constexpr double kGnomonicArc = 1.0471975511965976;     // 60 degrees
constexpr double kEquidistantArc = 2.9670597283903604;  // 170 degrees

/// The open band of longitudes lon0 - halfWidth to lon0 + halfWidth.
bool InOpenBand(double lon0, double halfWidth, const PROJPOINT& point) {
  return lon0 - halfWidth < point.x && point.x < lon0 + halfWidth;
}

/// Within the arc whose cosine is `leastCosine` of the centre, the edge included.
bool WithinArc(double lat0Deg, double lon0Deg, const PROJPOINT& point, double leastCosine) {
  const double lat0 = DegToRad(lat0Deg), lon0 = DegToRad(lon0Deg);
  const double lat = DegToRad(double(point.y)), lon = DegToRad(double(point.x));
  return Sin(lat0) * Sin(lat) + Cos(lat0) * Cos(lat) * Cos(lon - lon0) >= leastCosine;
}

bool OffsetAbout(double lon0, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy) {
  if (pts == nullptr || nPts == 0 || dx == nullptr || dy == nullptr) return false;
  *dx = 0;
  *dy = 0;
  double least = DBL_MAX, greatest = -DBL_MAX;
  for (unsigned i = 0; i < nPts; ++i) {
    const double x = pts[i].x;
    if (x < least) least = x;
    if (x > greatest) greatest = x;
  }
  if (least <= lon0 - 180) {
    *dx = 360;
    return true;
  }
  if (greatest >= lon0 + 180) {
    *dx = -360;
    return true;
  }
  return false;
}

}  // namespace

bool InWorldBand(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr && InOpenBand(rec->Lon0, 180, *point);
}

bool InWorldBandBetweenPoles(const PROJDATA* rec, const PROJPOINT* point) {
  return InWorldBand(rec, point) && -90 < point->y && point->y < 90;
}

bool InGreenwichBand(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr && InOpenBand(0, 180, *point);
}

bool InTransverseBand(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr && InOpenBand(rec->Lon0, 45, *point);
}

bool Everywhere(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr;
}

bool InHemisphere(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr && WithinArc(rec->Lat0, rec->Lon0, *point, 0);
}

bool InGnomonicArc(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr && WithinArc(rec->Lat1, rec->Lon0, *point, Cos(kGnomonicArc));
}

bool InEquidistantArc(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr && WithinArc(rec->Lat1, rec->Lon0, *point, Cos(kEquidistantArc));
}

bool NearHotineLine(const PROJDATA* rec, const PROJPOINT* point) {
  if (rec == nullptr || point == nullptr) return false;
  const HotineLine line(*rec, AngleUnit::Degrees);
  return line.usable && NearLine(line, DegToRad(double(point->x)), DegToRad(double(point->y)));
}

bool NearTwoPointLine(const PROJDATA* rec, const PROJPOINT* point) {
  if (rec == nullptr || point == nullptr) return false;
  const TwoPointLine line(*rec, AngleUnit::Degrees);
  return NearLine(line, DegToRad(double(point->x)), DegToRad(double(point->y)));
}

bool CommonOffset(const PROJDATA* rec, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy) {
  return rec != nullptr && OffsetAbout(rec->Lon0, pts, nPts, dx, dy);
}

bool GreenwichOffset(const PROJDATA* rec, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy) {
  return rec != nullptr && OffsetAbout(0, pts, nPts, dx, dy);
}

bool NeverOffset(const PROJDATA* rec, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy) {
  if (rec != nullptr && pts != nullptr && nPts != 0 && dx != nullptr && dy != nullptr) {
    *dx = 0;
    *dy = 0;
  }
  return false;
}

bool NeverOffsetEvenEmpty(const PROJDATA* rec, const PROJPOINT* pts, unsigned, double* dx, double* dy) {
  return NeverOffset(rec, pts, 1, dx, dy);
}

}  // namespace orvex::detail
