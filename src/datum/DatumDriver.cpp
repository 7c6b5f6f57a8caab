// DatumDriver - conversion of points from one datum to another by way of WGS 84.
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "datum/DatumCatalogue.h"
#include "datum/DatumPoint.h"
#include "datum/OrvexDatum.h"
#include "datum/grids/Nadcon.h"
#include "datum/grids/Ntv2.h"
#include "datum/methods/BursaWolf.h"
#include "datum/methods/Molodensky.h"
#include "datum/methods/Mre.h"
#include "math/Normalize.h"
#include "support/Errors.h"
#include "support/FpGuard.h"
#include "support/Log.h"

namespace orvex {

namespace detail {

namespace {

/// Lines that the assertions report.
enum Line : int {
  kLineNullPoints = 400,
  kLineBadCount = 401,
  kLineBadDatum = 410,
  kLineNoMemory = 420,
  kLineSourceUnknown = 430,
  kLineDestinationUnknown = 431,
  kLineSourceMethod = 432,
  kLineDestinationMethod = 433,
  kLineMolodensky = 440,
  kLineBursaWolf = 441,
  kLineRegression = 442,
  kLineMethod = 443
};

void Require(bool holds, Line line) {
  if (!holds) Assert(kDatumSource, line);
}

// ---- the two steps ----

/// Puts the record of a built-in datum in place of the step, or takes the caller's own step as it is, and completes its
/// ellipsoid. Asserts for a datum that cannot serve in this role.
void PrepareStep(DatumType datum, DatumRole role, DATUM2WGS84& step) {
  const bool isSource = role == DatumRole::Source;
  if (LookUpStep(datum, role, step)) {
    step.bInverse = !isSource;
  } else {
    Require(datum == DT_USER_DEFINED, isSource ? kLineSourceUnknown : kLineDestinationUnknown);
    Require(IsParametric(step.Method), isSource ? kLineSourceMethod : kLineDestinationMethod);
    ResolveEllipsoid(step);
  }
}

bool RunNadcon(DatumType datum, DATUMPOINT* pts, int n) {
  switch (datum) {
    case DT_NAD_1927_CONUS_NADCON:
      return ConvertNadcon("conus", pts, n);
    case DT_NAD_1927_PUERTO_RICO_AND_VIRGIN_ISLANDS_NADCON:
      return ConvertNadcon("prvi", pts, n);
    default:
      return true;
  }
}

bool RunNtv2(DATUMPOINT* pts, int n, Ntv2Direction direction) {
  const int result = ConvertNtv2(pts, n, direction);
  if (result == 0) return true;
  LogPrintf("NTV2 transform failure.\n");
  if (result == 5) ThrowError(kDatumSource, kLineMethod, kMsgNtv2Open);
  if (result == 6 || result == 7) ThrowError(kDatumSource, kLineMethod, kMsgNtv2Corrupt);
  return false;
}

bool RunStep(DatumType datum, DatumRole role, const DATUM2WGS84& step, DATUMPOINT* pts, int n) {
  const bool isSource = role == DatumRole::Source;
  switch (step.Method) {
    case DM_NOXFORM:
      return true;
    case DM_MOLODENSKY:
      Require(ConvertMolodensky(step, pts, n), kLineMolodensky);
      return true;
    case DM_BURSA:
      Require(ConvertBursaWolf(step, pts, n), kLineBursaWolf);
      return true;
    case DM_NTV2:
      return RunNtv2(pts, n, isSource ? Ntv2Direction::Forward : Ntv2Direction::Inverse);
    case DM_MRE:
      Require(isSource, kLineMethod);
      Require(ConvertMre(datum, pts, n), kLineRegression);
      return true;
    case DM_NADCON:
      Require(isSource, kLineMethod);
      return RunNadcon(datum, pts, n);
    default:
      Assert(kDatumSource, kLineMethod);
  }
}

// ---- what is done to every point before and after ----

/// The full turn taken off each point's longitude: x of the pair; zero-filled, on the C heap.
struct FreeMemory {
  void operator()(void* memory) const noexcept { std::free(memory); }
};
using Scratch = std::unique_ptr<DATUMPOINT[], FreeMemory>;

/// Marks both coordinates when one cannot be used.
DATUMPOINT Screened(const DATUMPOINT& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) ? p : DATUMPOINT{DBL_MAX, DBL_MAX};
}

/// Screens and normalises the points and brings their longitudes into -180 to 180. Answers whether any is unplottable.
bool Enter(DATUMPOINT* pts, DATUMPOINT* turns, int n) {
  bool unplottable = false;
  for (int i = 0; i < n; ++i) {
    DATUMPOINT p = Screened(pts[i]);
    unplottable |= IsUnplottable(p);
    p = {NormalizeLon(p.x), NormalizeLat(p.y)};
    if (p.x != DBL_MAX && std::fabs(p.x) > 180) {
      const double turn = std::copysign(360.0, p.x);
      turns[i].x = turn;
      p.x -= turn;
    }
    pts[i] = p;
  }
  return unplottable;
}

/// Screens the results, puts the full turns back and normalises once more. Answers whether any point is unplottable.
bool Leave(DATUMPOINT* pts, const DATUMPOINT* turns, int n) {
  bool unplottable = false;
  for (int i = 0; i < n; ++i) {
    DATUMPOINT p = Screened(pts[i]);
    unplottable |= IsUnplottable(p);
    if (p.x != DBL_MAX) p.x += turns[i].x;
    pts[i] = {NormalizeLon(p.x), NormalizeLat(p.y)};
  }
  return unplottable;
}

bool IsDatumOrCount(DatumType datum) {
  return static_cast<std::uint32_t>(datum) <= static_cast<std::uint32_t>(DT_COUNT);
}

}  // namespace

}  // namespace detail

using namespace detail;

bool DatConvertDatum(void* handle, DATUMPOINT* pts, int n) {
  const FpGuard guard;
  LogPrintf("DatConvertDatum(hDatum=%p, pPts=%p, nPts=%d)\n", handle, static_cast<void*>(pts), n);
  if (handle == nullptr) return false;
  Require(pts != nullptr, kLineNullPoints);
  Require(n >= 1, kLineBadCount);

  auto* record = static_cast<DATUMXFORM*>(handle);
  DATUMXFORM work = *record;
  Require(IsDatumOrCount(work.SrcDatum) && IsDatumOrCount(work.DestDatum), kLineBadDatum);
  const Scratch turns(static_cast<DATUMPOINT*>(std::calloc(static_cast<std::size_t>(n), sizeof(DATUMPOINT))));
  Require(turns != nullptr, kLineNoMemory);
  record->bUnplottable = false;
  if (work.SrcDatum == work.DestDatum && work.SrcDatum != DT_USER_DEFINED) return true;

  PrepareStep(work.SrcDatum, DatumRole::Source, work.Step1);
  PrepareStep(work.DestDatum, DatumRole::Destination, work.Step2);
  if (Enter(pts, turns.get(), n)) record->bUnplottable = true;
  LogPrintf("Initiating transform.\n");
  if (LogEnabled()) DumpXform(&work);
  if (!RunStep(work.SrcDatum, DatumRole::Source, work.Step1, pts, n)) return false;
  if (!RunStep(work.DestDatum, DatumRole::Destination, work.Step2, pts, n)) return false;
  if (Leave(pts, turns.get(), n)) record->bUnplottable = true;
  return true;
}

}  // namespace orvex
