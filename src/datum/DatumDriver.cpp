// DatumDriver - conversion of points from one datum to another by way of WGS 84.
#include <algorithm>
#include <cfloat>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <vector>

#include "datum/DatumCatalogue.h"
#include "datum/DatumDump.h"
#include "datum/DatumSource.h"
#include "datum/DatumStep.h"
#include "datum/grids/Nadcon.h"
#include "datum/grids/Ntv2.h"
#include "datum/grids/Ntv2Shift.h"
#include "datum/methods/BursaWolf.h"
#include "datum/methods/Molodensky.h"
#include "datum/methods/Mre.h"
#include "support/Errors.h"
#include "support/ExactHandles.h"
#include "support/Flag.h"
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
  kLineNoCopy = 420,
  kLineSourceUnknown = 430,
  kLineDestinationUnknown = 431,
  kLineSourceMethod = 432,
  kLineDestinationMethod = 433,
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

/// A step of a conversion, with what it needs for the time of the call. Everything that can fail does so here, before a
/// point is touched.
class PreparedStep {
 public:
  /// False for a failure that raises nothing.
  bool Prepare(DatumType datum, DatumRole role, const DATUM2WGS84& stated, bool exact) {
    const bool isSource = role == DatumRole::Source;
    DATUM2WGS84 step = stated;
    const bool back = exact && IsSet(step.bInverse);
    if (exact) step.bInverse = false;  // the exact way back inverts the way there
    switch (step.Method) {
      case DM_NOXFORM:
        return true;
      case DM_MOLODENSKY:
        m_step = {!exact ? StepKind::Molodensky
                  : back ? StepKind::MolodenskyBack
                         : StepKind::ExactMolodensky,
                  &m_molodensky.emplace(step)};
        return true;
      case DM_BURSA:
        m_step = {!exact ? StepKind::BursaWolf
                  : back ? StepKind::BursaWolfBack
                         : StepKind::ExactBursaWolf,
                  &m_bursaWolf.emplace(step)};
        return true;
      case DM_NTV2:
        return PrepareNtv2(isSource ? StepKind::Ntv2Forward : StepKind::Ntv2Inverse);
      case DM_MRE:
        Require(isSource, kLineMethod);
        if (const MreDatum* equations = FindMre(datum)) m_step = {StepKind::Regression, equations};
        return true;
      case DM_NADCON:
        Require(isSource, kLineMethod);
        PrepareNadcon(datum, exact ? StepKind::ExactNadcon : StepKind::Nadcon);
        return true;
      default:
        Assert(kDatumSource, kLineMethod);
    }
  }

  const DatumStep& Step() const { return m_step; }

 private:
  void PrepareNadcon(DatumType datum, StepKind kind) {
    if (datum == DT_NAD_1927_CONUS_NADCON) m_nadcon.emplace("conus");
    if (datum == DT_NAD_1927_PUERTO_RICO_AND_VIRGIN_ISLANDS_NADCON) m_nadcon.emplace("prvi");
    if (m_nadcon) m_step = {kind, &*m_nadcon};
  }

  bool PrepareNtv2(StepKind kind) {
    const int result = LoadNtv2(m_grid);
    if (result == 0) {
      m_ntv2.grid = m_grid.get();
      m_step = {kind, &m_ntv2};
      return true;
    }
    LogPrintf("NTV2 transform failure.\n");
    if (result == 5) ThrowError(kDatumSource, kLineMethod, kMsgNtv2Open);
    if (result == 6 || result == 7) ThrowError(kDatumSource, kLineMethod, kMsgNtv2Corrupt);
    return false;
  }

  DatumStep m_step;
  std::optional<Molodensky> m_molodensky;
  std::optional<BursaWolf> m_bursaWolf;
  std::optional<NadconFiles> m_nadcon;
  std::shared_ptr<const Ntv2Grid> m_grid;
  Ntv2Step m_ntv2{};
};

/// What stands where the results go, to be put back when the conversion fails.
class Before {
 public:
  Before(const PointView& pts, int n) : m_pts{pts.x, pts.y, pts.stride, pts.x, pts.y} {
    m_places.resize(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) m_pts.Get(i, At(i).x, At(i).y);
  }
  void PutBack() {
    for (int i = 0; i < static_cast<int>(m_places.size()); ++i) m_pts.Put(i, At(i).x, At(i).y);
  }

 private:
  struct Place {
    double x, y;
  };
  Place& At(int i) { return m_places[static_cast<std::size_t>(i)]; }

  PointView m_pts;
  std::vector<Place> m_places;
};

/// Runs both steps over points. Parts of a NADCON grid are read on the way: what fails then leaves all points as they
/// were given.
bool ConvertOrPutBack(const PointView& pts, int n, const DatumStep& first, const DatumStep& second, bool exact) {
  const auto convert = [&] { return DatumOperationsFor(n).convert(pts, n, first, second, exact); };
  if (first.kind != StepKind::Nadcon && first.kind != StepKind::ExactNadcon) return convert();
  Before before = WithinMemory(kDatumSource, kLineNoCopy, [&] { return Before(pts, n); });
  try {
    return convert();
  } catch (...) {
    before.PutBack();
    throw;
  }
}

bool NeedsGrid(const DATUM2WGS84& step) {
  return step.Method == DM_NADCON || step.Method == DM_NTV2;
}

/// Whether a point is unplottable as it stands.
bool AnyUnplottable(const PointView& pts, int n) {
  for (int i = 0; i < n; ++i) {
    double x, y;
    pts.Get(i, x, y);
    if (!IsFinite(x) || !IsFinite(y) || x == DBL_MAX || y == DBL_MAX) return true;
  }
  return false;
}

/// Whether a user-defined step can be computed exactly.
bool IsExactStep(const DATUM2WGS84& given) {
  if (!IsParametric(given.Method)) return true;
  DATUM2WGS84 step = given;
  ResolveEllipsoid(step);
  const double numbers[] = {step.MajorRadius, step.Flattening, step.PMShift, step.dx, step.dy, step.dz};
  const double turns[] = {step.rx, step.ry, step.rz, step.k};
  const auto finite = [](double value) { return IsFinite(value); };
  if (!std::all_of(std::begin(numbers), std::end(numbers), finite)) return false;
  if (step.Method != DM_BURSA) return true;
  return std::all_of(std::begin(turns), std::end(turns), finite) && 1 + step.k * 1e-6 != 0;
}

bool IsDatumOrCount(DatumType datum) {
  return static_cast<std::uint32_t>(datum) <= static_cast<std::uint32_t>(DT_COUNT);
}

}  // namespace

bool HasExactForm(const DATUMXFORM& record) {
  return (record.SrcDatum != DT_USER_DEFINED || IsExactStep(record.Step1)) &&
         (record.DestDatum != DT_USER_DEFINED || IsExactStep(record.Step2));
}

}  // namespace detail

using namespace detail;

namespace {

bool Convert(void* handle, const PointView& pts, int n) {
  if (handle == nullptr) return false;
  Require(pts.x != nullptr, kLineNullPoints);
  Require(n >= 1, kLineBadCount);

  auto* record = static_cast<DATUMXFORM*>(handle);
  DATUMXFORM work = *record;
  Require(IsDatumOrCount(work.SrcDatum) && IsDatumOrCount(work.DestDatum), kLineBadDatum);
  record->bUnplottable = false;
  const bool exact = IsExact(handle);
  if (work.SrcDatum == work.DestDatum && work.SrcDatum != DT_USER_DEFINED) {
    if (exact) {
      record->bUnplottable = DatumOperationsFor(n).convert(pts, n, {}, {}, exact);
    } else {
      BringOver(pts, n);
    }
    return true;
  }

  PrepareStep(work.SrcDatum, DatumRole::Source, work.Step1);
  PrepareStep(work.DestDatum, DatumRole::Destination, work.Step2);
  // Told even where a grid then cannot be used; else it comes with the conversion.
  if (NeedsGrid(work.Step1) || NeedsGrid(work.Step2)) record->bUnplottable = AnyUnplottable(pts, n);
  LogPrintf("Initiating transform.\n");
  if (LogEnabled()) DumpXform(&work);
  PreparedStep first, second;
  if (!first.Prepare(work.SrcDatum, DatumRole::Source, work.Step1, exact)) return false;
  if (!second.Prepare(work.DestDatum, DatumRole::Destination, work.Step2, exact)) return false;
  if (ConvertOrPutBack(pts, n, first.Step(), second.Step(), exact)) record->bUnplottable = true;
  return true;
}

}  // namespace

bool DatConvertDatum(void* handle, DATUMPOINT* pts, int n) {
  const FpGuard guard;
  LogPrintf("DatConvertDatum(hDatum=%p, pPts=%p, nPts=%d)\n", handle, static_cast<void*>(pts), n);
  return Convert(handle, ViewOf(pts), n);
}

bool DatConvertColumns(void* handle, const double* fromLon, const double* fromLat, double* toLon, double* toLat,
                       int n) {
  const FpGuard guard;
  LogPrintf("DatConvertColumns(hDatum=%p, fromLon=%p, fromLat=%p, toLon=%p, toLat=%p, nPts=%d)\n", handle,
            static_cast<const void*>(fromLon), static_cast<const void*>(fromLat), static_cast<const void*>(toLon),
            static_cast<const void*>(toLat), n);
  return Convert(handle, ViewOf(fromLon, fromLat, toLon, toLat), n);
}

}  // namespace orvex
