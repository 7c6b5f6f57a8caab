// Driver - forward and inverse: everything that all projections have in common. The record is prepared here; what is
// done to each point around a module's formula (screening, normalisation, radians, false origin, scale) travels with
// the call, so that a point is loaded and stored once.
#include <algorithm>
#include <cfloat>
#include <iterator>

#include "math/Angles.h"
#include "math/Normalize.h"
#include "orvex/projection.h"
#include "projections/ProjectionTable.h"
#include "support/Errors.h"
#include "support/ExactHandles.h"
#include "support/FpGuard.h"
#include "support/Log.h"
#include "zones/ExpandStatePlane.h"

namespace orvex {

namespace {

using namespace detail;

// Positions that failed assertions report.
struct DriverSite {
  int nullPoints, badCount, badType, badZone, noOperation;
};
constexpr DriverSite kForwardSite{1102, 1104, 1126, 1136, 1143};
constexpr DriverSite kInverseSite{1230, 1232, 1254, 1264, 1271};

/// Marks the points of which a coordinate is not finite; true when there were any.
bool Screen(const PointView& pts, int nPts) {
  bool any = false;
  for (int i = 0; i < nPts; ++i) {
    double x, y;
    pts.Get(i, x, y);
    if (IsFinite(x) && IsFinite(y)) continue;
    pts.Put(i, DBL_MAX, DBL_MAX);
    any = true;
  }
  return any;
}

/// Applies an operation to every coordinate that is not the marker, each by itself.
template <class OnX, class OnY>
void ForEachCoordinate(const PointView& pts, int nPts, OnX onX, OnY onY) {
  for (int i = 0; i < nPts; ++i) {
    double x, y;
    pts.Get(i, x, y);
    pts.Put(i, x == DBL_MAX ? x : onX(x), y == DBL_MAX ? y : onY(y));
  }
}

/// Expands a state plane record into its zone's projection and finds the table row. Null where there is none, with the
/// line that is to be reported.
const ProjectionRow* PrepareRecord(PROJDATA& work, const DriverSite& site, int& line) {
  line = site.badType;
  if (FindRow(work.Type) == nullptr) return nullptr;
  line = site.badZone;
  if (IsStatePlane(work.Type) && !ExpandStatePlane(&work)) return nullptr;
  line = site.noOperation;
  const ProjectionRow* row = FindRow(work.Type);
  return row == nullptr || row->forward == nullptr ? nullptr : row;
}

/// Turns the record's angles into radians.
void AnglesToRadians(PROJDATA& work) {
  work.Lat0 = DegToRad(double(work.Lat0));
  work.Lon0 = DegToRad(double(work.Lon0));
  work.Lat1 = DegToRad(double(work.Lat1));
  work.Lon1 = DegToRad(double(work.Lon1));
  work.Lat2 = DegToRad(double(work.Lat2));
  work.Lon2 = DegToRad(double(work.Lon2));
  work.Lat3 = DegToRad(double(work.Lat3));
  work.Lon3 = DegToRad(double(work.Lon3));
  work.Alpha = DegToRad(double(work.Alpha));
}

/// Exact computation counts longitudes from the central meridian in degrees, before anything is rounded: takes it out
/// of the record, and answers it. Oblique maps have longitudes of their own in the record, and Robinson's map always
/// counts from Greenwich.
double TakeCentralMeridian(PROJDATA& work) {
  if (work.Type == PT_HOTINE || work.Type == PT_OBLIQUEMERCATOR || work.Type == PT_ROBINSON) return 0;
  const double lon0 = work.Lon0;
  work.Lon0 = 0;
  return lon0;
}

/// Null handle: false. Bad points: assertion.
bool CheckArguments(const PROJDATA* handle, const PointView& pts, int nPts, const DriverSite& site) {
  if (handle == nullptr) {
    LogPrintf("NULL hProj pointer!\n");
    return false;
  }
  if (pts.x == nullptr) Assert("Orvex", site.nullPoints);
  if (nPts < 1) Assert("Orvex", site.badCount);
  return true;
}

// ---- hosts with traps ----
//
// A host that has enabled floating-point traps is told where one would have fired, so each stage is one pass over the
// points and is looked at by itself.

/// Brings a coordinate into range; the marker when a trap would have fired.
template <class Operation>
double NormalizeGuarded(double value, FpGuard& guard, Operation normalize) {
  guard.Reset();
  const double result = normalize(value);
  return guard.Fault() ? DBL_MAX : result;
}

void NormalizeGuarded(const PointView& pts, int nPts, FpGuard& guard) {
  for (int i = 0; i < nPts; ++i) {
    double x, y;
    pts.Get(i, x, y);
    x = NormalizeGuarded(x, guard, NormalizeLon);
    pts.Put(i, x, NormalizeGuarded(y, guard, NormalizeLat));
  }
}

/// A fault counts as failure.
bool RunGuarded(const ConvertOperation& operation, PROJDATA& work, PROJDATA* handle, const PointView& pts, int nPts,
                FpGuard& guard) {
  guard.Reset();
  const bool ok = operation(Conversion{&work, pts, nPts, nullptr});
  if (!guard.Fault()) return ok;
  handle->iResult = 1;
  return false;
}

bool ForwardGuarded(const ProjectionRow& row, PROJDATA& work, PROJDATA* handle, const PointView& pts, int nPts,
                    FpGuard& guard) {
  AnglesToRadians(work);
  handle->iResult = Screen(pts, nPts) ? 1 : 0;
  work.iResult = handle->iResult;
  NormalizeGuarded(pts, nPts, guard);
  ForEachCoordinate(pts, nPts, DegToRad<double>, DegToRad<double>);
  if (!RunGuarded(row.forward, work, handle, pts, nPts, guard)) return false;
  handle->iResult = work.iResult;
  const double xOrg = work.xOrg, yOrg = work.yOrg, scale = work.Scale;
  if (xOrg != 0 || yOrg != 0) {
    ForEachCoordinate(
        pts, nPts, [xOrg](double x) { return x + xOrg; }, [yOrg](double y) { return y + yOrg; });
  }
  const auto scaled = [scale](double value) { return value * scale; };
  ForEachCoordinate(pts, nPts, scaled, scaled);
  if (Screen(pts, nPts)) handle->iResult = 1;
  return true;
}

bool InverseGuarded(const ProjectionRow& row, PROJDATA& work, PROJDATA* handle, const PointView& pts, int nPts,
                    FpGuard& guard) {
  AnglesToRadians(work);
  Screen(pts, nPts);
  const double xOrg = work.xOrg, yOrg = work.yOrg, scale = work.Scale;
  if (scale != 1) {
    const auto unscaled = [scale](double value) { return value / scale; };
    ForEachCoordinate(pts, nPts, unscaled, unscaled);
  }
  if (xOrg != 0 || yOrg != 0) {
    ForEachCoordinate(
        pts, nPts, [xOrg](double x) { return x - xOrg; }, [yOrg](double y) { return y - yOrg; });
  }
  if (!RunGuarded(row.inverse, work, handle, pts, nPts, guard)) return false;
  handle->iResult = work.iResult;
  if (Screen(pts, nPts)) handle->iResult = 1;
  ForEachCoordinate(pts, nPts, RadToDeg<double>, RadToDeg<double>);
  NormalizeGuarded(pts, nPts, guard);
  return true;
}

// ---- all others ----

bool Run(const ConvertOperation& operation, PROJDATA& work, PROJDATA* handle, const PointView& pts, int nPts,
         bool exact) {
  const DriverSteps steps{work.xOrg, work.yOrg, work.Scale, exact ? TakeCentralMeridian(work) : 0};
  AnglesToRadians(work);
  const bool ok = operation(Conversion{&work, pts, nPts, &steps, exact});
  handle->iResult = work.iResult;
  return ok;
}

using GuardedRun = bool(const ProjectionRow& row, PROJDATA& work, PROJDATA* handle, const PointView& pts, int nPts,
                        FpGuard& guard);

/// Both directions; only screening for the projection that is none.
bool Convert(PROJDATA* handle, const PointView& pts, int nPts, const DriverSite& site,
             ConvertOperation ProjectionRow::*direction, GuardedRun* guarded, const char* failure) {
  FpGuard guard;
  if (!CheckArguments(handle, pts, nPts, site)) return false;
  handle->iResult = 0;
  PROJDATA work = *handle;
  int line = 0;
  const ProjectionRow* row = work.Type == PT_LATLONG ? nullptr : PrepareRecord(work, site, line);
  if (row == nullptr) {
    handle->iResult = Screen(BringOver(pts, nPts), nPts) ? 1 : 0;
    if (work.Type == PT_LATLONG) return true;
    Assert("Orvex", line);
  }
  // Exact computation decides by itself what has no answer: no trap of the host has a say in it.
  const bool exact = IsExact(handle);
  const bool ok = guard.HostTraps() && !exact ? guarded(*row, work, handle, BringOver(pts, nPts), nPts, guard)
                                              : Run(row->*direction, work, handle, pts, nPts, exact);
  if (!ok) {
    LogPrintf("%s", failure);
    return false;
  }
  if (handle->iResult == 1) LogPrintf("  One or more unplottable points generated.\n");
  return true;
}

bool Forward(void* hProj, const PointView& pts, int nPts) {
  return Convert(static_cast<PROJDATA*>(hProj), pts, nPts, kForwardSite, &ProjectionRow::forward, ForwardGuarded,
                 "Forward projection function failed!\n");
}

bool Inverse(void* hProj, const PointView& pts, int nPts) {
  return Convert(static_cast<PROJDATA*>(hProj), pts, nPts, kInverseSite, &ProjectionRow::inverse, InverseGuarded,
                 "Inverse projection function failed!\n");
}

/// Whether the record has an exact form.
bool HasExactForm(PROJDATA work) {
  if (work.Type == PT_LATLONG) return true;
  int line = 0;
  const ProjectionRow* row = PrepareRecord(work, kForwardSite, line);
  if (row == nullptr) return false;
  const double lengths[] = {work.MajorRadius, work.Flattening, work.K0, work.Scale, work.xOrg, work.yOrg};
  if (!std::all_of(std::begin(lengths), std::end(lengths), IsFinite<double>)) return false;
  if (!IsFinite(TakeCentralMeridian(work))) return false;
  AnglesToRadians(work);
  return row->forward.HasExactForm(work);
}

}  // namespace

bool ORVEX_CALL ProjSetAccuracy(void* hProj, ProjAccuracy accuracy) {
  LogPrintf("ProjSetAccuracy(hProj=%p, accuracy=%d)\n", hProj, static_cast<int>(accuracy));
  if (hProj == nullptr || (accuracy != PA_STATED && accuracy != PA_EXACT)) return false;
  const FpGuard guard;
  if (accuracy == PA_EXACT && !HasExactForm(*static_cast<const PROJDATA*>(hProj))) return false;
  return SetExact(hProj, accuracy == PA_EXACT);
}

ProjAccuracy ORVEX_CALL ProjGetAccuracy(void* hProj) {
  LogPrintf("ProjGetAccuracy(hProj=%p)\n", hProj);
  return IsExact(hProj) ? PA_EXACT : PA_STATED;
}

bool ORVEX_CALL ProjForward(void* hProj, PROJPOINT* pPts, int nPts) {
  LogPrintf("ProjForward(hProj=%p, pPts=%p, nPts=%d)\n", hProj, static_cast<void*>(pPts), nPts);
  return Forward(hProj, ViewOf(pPts), nPts);
}

bool ORVEX_CALL ProjInverse(void* hProj, PROJPOINT* pPts, int nPts) {
  LogPrintf("ProjInverse(hProj=%p, pPts=%p, nPts=%d)\n", hProj, static_cast<void*>(pPts), nPts);
  return Inverse(hProj, ViewOf(pPts), nPts);
}

bool ORVEX_CALL ProjForwardColumns(void* hProj, const double* lon, const double* lat, double* x, double* y, int nPts) {
  LogPrintf("ProjForwardColumns(hProj=%p, lon=%p, lat=%p, x=%p, y=%p, nPts=%d)\n", hProj, static_cast<const void*>(lon),
            static_cast<const void*>(lat), static_cast<const void*>(x), static_cast<const void*>(y), nPts);
  return Forward(hProj, ViewOf(lon, lat, x, y), nPts);
}

bool ORVEX_CALL ProjInverseColumns(void* hProj, const double* x, const double* y, double* lon, double* lat, int nPts) {
  LogPrintf("ProjInverseColumns(hProj=%p, x=%p, y=%p, lon=%p, lat=%p, nPts=%d)\n", hProj, static_cast<const void*>(x),
            static_cast<const void*>(y), static_cast<const void*>(lon), static_cast<const void*>(lat), nPts);
  return Inverse(hProj, ViewOf(x, y, lon, lat), nPts);
}

}  // namespace orvex
