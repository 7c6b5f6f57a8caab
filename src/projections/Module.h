// Module - the contract of the projection modules, and everything they share: argument checks, the loop over the
// points, the marker, the domain tests and the offset rules. A module itself holds mathematics only.
#pragma once

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <span>

#include "math/Angles.h"
#include "orvex/projection.h"
#include "support/Errors.h"
#include "support/Flag.h"

namespace orvex::detail {

/// Forward: longitude/latitude in radians to unscaled coordinates about the natural origin, in place; inverse: the
/// other way. `work` is the driver's private record, its angles in radians. False only when the whole call fails.
using ConvertOperation = bool (*)(PROJDATA* work, PROJPOINT* pts, int nPts);
/// Whether a point (degrees) lies in the projection's domain; the record's angles are in degrees.
using DomainOperation = bool (*)(const PROJDATA* rec, const PROJPOINT* point);
/// Whether an object (degrees) must be drawn again, moved by (dx, dy) degrees.
using OffsetOperation = bool (*)(const PROJDATA* rec, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy);

/// One row of the projection table, indexed by ProjType. Rows without operations are never dispatched.
struct ProjectionRow {
  const char* name;
  unsigned mask;  // six bits for the host, opaque here
  ConvertOperation forward;
  ConvertOperation inverse;
  DomainOperation inDomain;
  OffsetOperation offsetSplit;
};

std::span<const ProjectionRow, 29> ProjectionTable();

/// The row of a type; null outside the table.
inline const ProjectionRow* FindRow(ProjType type) {
  const auto row = static_cast<std::size_t>(static_cast<std::uint32_t>(type));
  return row < ProjectionTable().size() ? &ProjectionTable()[row] : nullptr;
}

/// Where a module's argument checks report.
struct Site {
  const char* source;
  int nullPoints;
  int badCount;
};

/// Outcome of one point.
enum class Plot : bool { Unplottable = false, Ok = true };

/// The argument checks of every conversion: false for a null record; asserts for null points and counts below 1.
inline bool Ready(const PROJDATA* work, const PROJPOINT* pts, int nPts, const Site& site) {
  if (work == nullptr) return false;
  if (pts == nullptr) Assert(site.source, site.nullPoints);
  if (nPts < 1) Assert(site.source, site.badCount);
  return true;
}

inline bool IsUnplottable(const PROJPOINT& p) {
  return p.x == DBL_MAX || p.y == DBL_MAX;
}

/// Runs `operation` (PROJPOINT& -> Plot) over the points. Unplottable points are passed over; a point that the
/// operation refuses is marked and sets the record's result. Always true.
template <class PointOperation>
bool ConvertEach(PROJDATA& work, PROJPOINT* pts, int nPts, PointOperation operation) {
  bool anyUnplottable = false;
  for (int i = 0; i < nPts; ++i) {
    PROJPOINT p = pts[i];
    if (IsUnplottable(p)) continue;
    if (operation(p) == Plot::Unplottable) {
      p = {DBL_MAX, DBL_MAX};
      anyUnplottable = true;
    }
    pts[i] = p;
  }
  if (anyUnplottable) work.iResult = 1;
  return true;
}

/// The same with the operation as a function `Plot (const Constants&, PROJPOINT&)` of constants prepared once.
template <auto kOperation, class Constants>
bool ConvertEach(PROJDATA& work, PROJPOINT* pts, int nPts, const Constants& constants) {
  return ConvertEach(work, pts, nPts, [constants](PROJPOINT& p) { return kOperation(constants, p); });
}

/// The same for projections with two forms: the sphere's where the flattening is exactly 0.
template <auto kSphere, auto kEllipsoid, class Constants>
bool ConvertByForm(PROJDATA& work, PROJPOINT* pts, int nPts, const Constants& constants) {
  return work.Flattening == 0 ? ConvertEach<kSphere>(work, pts, nPts, constants)
                              : ConvertEach<kEllipsoid>(work, pts, nPts, constants);
}

/// The same with the operation as a member `bool (double& x, double& y) const` of a formula class that knows no
/// records.
template <auto kOperation, class Formulas>
bool ConvertBy(PROJDATA& work, PROJPOINT* pts, int nPts, const Formulas& formulas) {
  return ConvertEach(work, pts, nPts, [formulas](PROJPOINT& p) {
    double x = p.x, y = p.y;
    const bool plottable = (formulas.*kOperation)(x, y);
    p = {x, y};
    return plottable ? Plot::Ok : Plot::Unplottable;
  });
}

/// Domain test: the open band of longitudes Lon0 - halfWidth to Lon0 + halfWidth, degrees.
inline bool InOpenBand(const PROJDATA* rec, const PROJPOINT* point, double halfWidth) {
  return rec != nullptr && point != nullptr && rec->Lon0 - halfWidth < point->x && point->x < rec->Lon0 + halfWidth;
}

/// Domain test of most world maps: less than 180 degrees of longitude from Lon0.
inline bool InWorldBand(const PROJDATA* rec, const PROJPOINT* point) {
  return InOpenBand(rec, point, 180);
}

/// The same without the poles.
inline bool InWorldBandBetweenPoles(const PROJDATA* rec, const PROJPOINT* point) {
  return InWorldBand(rec, point) && -90 < point->y && point->y < 90;
}

/// Domain test of projections that take every point.
inline bool Everywhere(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr;
}

/// Offset rule about a central meridian (degrees): an object that touches or passes its western limit is repeated 360
/// degrees further east, else one that reaches the eastern limit 360 degrees further west.
inline bool OffsetAboutMeridian(double lon0, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy) {
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

/// The common offset rule, about Lon0.
inline bool CommonOffset(const PROJDATA* rec, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy) {
  return rec != nullptr && OffsetAboutMeridian(rec->Lon0, pts, nPts, dx, dy);
}

/// The offset rule of projections that never repeat an object.
inline bool NeverOffset(const PROJDATA* rec, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy) {
  if (rec != nullptr && pts != nullptr && nPts != 0 && dx != nullptr && dy != nullptr) {
    *dx = 0;
    *dy = 0;
  }
  return false;
}

/// The same, but an empty object gets its zero offsets as well.
inline bool NeverOffsetEvenEmpty(const PROJDATA* rec, const PROJPOINT* pts, unsigned, double* dx, double* dy) {
  return NeverOffset(rec, pts, 1, dx, dy);
}

/// Cosine of the arc between a centre and a point, angles in radians.
inline double CosineOfArc(double lat0, double lon0, double lat, double lon) {
  return std::sin(lat0) * std::sin(lat) + std::cos(lat0) * std::cos(lat) * std::cos(lon - lon0);
}

/// Domain test: within the arc whose cosine is `leastCosine` of the centre (degrees), the edge included.
inline bool WithinArc(double lat0Deg, double lon0Deg, const PROJPOINT& point, double leastCosine) {
  return CosineOfArc(DegToRad(lat0Deg), DegToRad(lon0Deg), DegToRad(point.y), DegToRad(point.x)) >= leastCosine;
}

/// Domain test: the hemisphere about the centre Lat0/Lon0, its edge included.
inline bool InHemisphere(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr && WithinArc(rec->Lat0, rec->Lon0, *point, 0);
}

}  // namespace orvex::detail
