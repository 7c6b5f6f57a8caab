// Driver - forward and inverse: everything that all projections have in common. Modules see radians and unscaled
// coordinates about their natural origin; screening, zone expansion, normalisation, false origin, scale and the result
// flag are here.
#include <algorithm>
#include <cfloat>
#include <cmath>

#include "math/Angles.h"
#include "math/Normalize.h"
#include "orvex/projection.h"
#include "projections/Module.h"
#include "support/Errors.h"
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

constexpr PROJPOINT kMarker{DBL_MAX, DBL_MAX};

/// Marks the points of which a coordinate is not finite; true when there were any.
bool Screen(PROJPOINT* pts, int nPts) {
  bool any = false;
  for (int i = 0; i < nPts; ++i) {
    if (std::isfinite(pts[i].x) && std::isfinite(pts[i].y)) continue;
    pts[i] = kMarker;
    any = true;
  }
  return any;
}

/// Applies an operation to every x and one to every y that is not the marker, each coordinate by itself.
template <class OnX, class OnY>
void ForEachCoordinate(PROJPOINT* pts, int nPts, OnX onX, OnY onY) {
  for (int i = 0; i < nPts; ++i) {
    const double x = pts[i].x, y = pts[i].y;
    pts[i].x = x == DBL_MAX ? x : onX(x);
    pts[i].y = y == DBL_MAX ? y : onY(y);
  }
}

/// Brings geographic coordinates (degrees) into range. A coordinate during whose reduction a trap that the host had
/// enabled would have fired becomes the marker: blocks are redone one by one when that happens.
void Normalize(PROJPOINT* pts, int nPts, FpGuard& guard) {
  constexpr int kBlock = 256;
  PROJPOINT original[kBlock];
  for (int begin = 0; begin < nPts; begin += kBlock) {
    PROJPOINT* block = pts + begin;
    const int count = std::min(kBlock, nPts - begin);
    std::copy_n(block, count, original);
    guard.Reset();
    for (int i = 0; i < count; ++i) block[i] = {NormalizeLon(block[i].x), NormalizeLat(block[i].y)};
    if (!guard.Fault()) continue;
    for (int i = 0; i < count; ++i) {
      guard.Reset();
      const double x = NormalizeLon(original[i].x);
      block[i].x = guard.Fault() ? DBL_MAX : x;
      guard.Reset();
      const double y = NormalizeLat(original[i].y);
      block[i].y = guard.Fault() ? DBL_MAX : y;
    }
  }
}

/// Expands a state plane record into its zone's projection, turns the record's angles into radians and finds the table
/// row.
const ProjectionRow& PrepareRecord(PROJDATA& work, const DriverSite& site) {
  if ((work.Type == PT_STATEPLANE27 || work.Type == PT_STATEPLANE83) && !ExpandStatePlane(&work)) {
    Assert("Orvex", site.badZone);
  }
  const ProjectionRow* row = FindRow(work.Type);
  if (row == nullptr || row->forward == nullptr) Assert("Orvex", site.noOperation);
  work.Lat0 = DegToRad(work.Lat0);
  work.Lon0 = DegToRad(work.Lon0);
  work.Lat1 = DegToRad(work.Lat1);
  work.Lon1 = DegToRad(work.Lon1);
  work.Lat2 = DegToRad(work.Lat2);
  work.Lon2 = DegToRad(work.Lon2);
  work.Lat3 = DegToRad(work.Lat3);
  work.Lon3 = DegToRad(work.Lon3);
  work.Alpha = DegToRad(work.Alpha);
  return *row;
}

/// Null handle: false. Bad points: assertion. Then clears the result, screens the points and takes the private copy.
bool Begin(PROJDATA* handle, PROJPOINT* pts, int nPts, const DriverSite& site, PROJDATA& work) {
  if (handle == nullptr) {
    LogPrintf("NULL hProj pointer!\n");
    return false;
  }
  if (pts == nullptr) Assert("Orvex", site.nullPoints);
  if (nPts < 1) Assert("Orvex", site.badCount);
  handle->iResult = Screen(pts, nPts) ? 1 : 0;
  work = *handle;
  if (FindRow(work.Type) == nullptr) Assert("Orvex", site.badType);
  return true;
}

/// Runs a module over the array. A fault counts as failure.
bool RunModule(ConvertOperation operation, PROJDATA& work, PROJDATA* handle, PROJPOINT* pts, int nPts, FpGuard& guard) {
  guard.Reset();
  const bool ok = operation(&work, pts, nPts);
  if (!guard.Fault()) return ok;
  handle->iResult = 1;
  return false;
}

void LogUnplottable(const PROJDATA* handle) {
  if (handle->iResult == 1) LogPrintf("  One or more unplottable points generated.\n");
}

}  // namespace

bool ORVEX_CALL ProjForward(void* hProj, PROJPOINT* pPts, int nPts) {
  LogPrintf("ProjForward(hProj=%p, pPts=%p, nPts=%d)\n", hProj, static_cast<void*>(pPts), nPts);
  auto* const handle = static_cast<PROJDATA*>(hProj);
  FpGuard guard;
  PROJDATA work;
  if (!Begin(handle, pPts, nPts, kForwardSite, work)) return false;
  if (work.Type == PT_LATLONG) return true;
  const ProjectionRow& row = PrepareRecord(work, kForwardSite);

  Normalize(pPts, nPts, guard);
  ForEachCoordinate(pPts, nPts, DegToRad, DegToRad);
  if (!RunModule(row.forward, work, handle, pPts, nPts, guard)) {
    LogPrintf("Forward projection function failed!\n");
    return false;
  }
  handle->iResult = work.iResult;  // still 1 when the screening above found something

  const double xOrg = work.xOrg, yOrg = work.yOrg, scale = work.Scale;
  if (xOrg != 0 || yOrg != 0) {
    ForEachCoordinate(
        pPts, nPts, [xOrg](double x) { return x + xOrg; }, [yOrg](double y) { return y + yOrg; });
  }
  if (scale != 1) {  // after the false origin on purpose: that is in unscaled units
    const auto scaled = [scale](double value) { return value * scale; };
    ForEachCoordinate(pPts, nPts, scaled, scaled);
  }
  if (Screen(pPts, nPts)) handle->iResult = 1;  // last, so that an origin or a scale beyond reason leaves no infinities
  LogUnplottable(handle);
  return true;
}

bool ORVEX_CALL ProjInverse(void* hProj, PROJPOINT* pPts, int nPts) {
  LogPrintf("ProjInverse(hProj=%p, pPts=%p, nPts=%d)\n", hProj, static_cast<void*>(pPts), nPts);
  auto* const handle = static_cast<PROJDATA*>(hProj);
  FpGuard guard;
  PROJDATA work;
  if (!Begin(handle, pPts, nPts, kInverseSite, work)) return false;
  if (work.Type == PT_LATLONG) return true;
  const ProjectionRow& row = PrepareRecord(work, kInverseSite);

  const double xOrg = work.xOrg, yOrg = work.yOrg, scale = work.Scale;
  if (scale != 1) {
    const auto unscaled = [scale](double value) { return value / scale; };
    ForEachCoordinate(pPts, nPts, unscaled, unscaled);
  }
  if (xOrg != 0 || yOrg != 0) {
    ForEachCoordinate(
        pPts, nPts, [xOrg](double x) { return x - xOrg; }, [yOrg](double y) { return y - yOrg; });
  }
  work.iResult = 0;  // unlike forward, on purpose: a point refused by the input screening does not count by itself
  if (!RunModule(row.inverse, work, handle, pPts, nPts, guard)) {
    LogPrintf("Inverse projection function failed!\n");
    return false;
  }
  handle->iResult = work.iResult;
  if (Screen(pPts, nPts)) handle->iResult = 1;
  ForEachCoordinate(pPts, nPts, RadToDeg, RadToDeg);
  Normalize(pPts, nPts, guard);
  LogUnplottable(handle);
  return true;
}

}  // namespace orvex
