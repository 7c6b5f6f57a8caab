// InProjection - the domain tests: points inside, objects wholly outside, objects to be repeated.
#include "clip/Domain.h"
#include "clip/Preclip.h"
#include "support/Log.h"
#include "zones/ExpandStatePlane.h"

namespace orvex {

namespace detail {
namespace {

// Positions that failed assertions report, in source Orvex.
struct DispatchSite {
  int badZone1927, badZone1983, noOperation;
};
constexpr DispatchSite kInProjectionSite{1383, 1366, 1392};
constexpr DispatchSite kOffsetSite{1498, 1481, 1507};

constexpr double kMostLonDeg = 360, kMostLatDeg = 90;

/// A record that is still a state plane record here has an undefined zone.
[[noreturn]] void NoOperation(ProjType type, const DispatchSite& site) {
  Assert("Orvex", type == PT_STATEPLANE27   ? site.badZone1927
                  : type == PT_STATEPLANE83 ? site.badZone1983
                                            : site.noOperation);
}

}  // namespace

Domain::Domain(const PROJDATA& handle) : m_record(handle), m_row(nullptr) {
  if (IsStatePlane(handle.Type)) {
    PROJDATA zone{};  // only the zone counts, whatever else the record holds
    zone.Type = handle.Type;
    zone.Zone = handle.Zone;
    if (!ExpandStatePlane(&zone)) return;
    m_record = zone;
  }
  m_row = FindRow(m_record.Type);
}

bool Domain::Contains(const PROJPOINT& point) const {
  const bool onGlobe =  // false for NaN
      -kMostLonDeg <= point.x && point.x <= kMostLonDeg && -kMostLatDeg <= point.y && point.y <= kMostLatDeg;
  if (!onGlobe) return false;
  if (m_row == nullptr || m_row->inDomain == nullptr) NoOperation(m_record.Type, kInProjectionSite);
  return m_row->inDomain(&m_record, &point);
}

bool Domain::OffsetSplit(const PROJPOINT* pts, unsigned nPts, double& dx, double& dy) const {
  if (m_row == nullptr || m_row->offsetSplit == nullptr) NoOperation(m_record.Type, kOffsetSite);
  return m_row->offsetSplit(&m_record, pts, nPts, &dx, &dy);
}

}  // namespace detail

using detail::Domain;
using detail::FpGuard;

bool ORVEX_CALL ProjLLInProjection(void* hProj, const PROJPOINT* pPt) {
  detail::LogPrintf("ProjLLInProjection(hProj=%p, pPt=%p)\n", hProj, static_cast<const void*>(pPt));
  if (hProj == nullptr || pPt == nullptr) return false;
  const FpGuard guard;
  return Domain(*static_cast<const PROJDATA*>(hProj)).Contains(*pPt);
}

bool ORVEX_CALL ProjLLInProjection(void* hProj, int nPts, const PROJPOINT* pPts) {
  detail::LogPrintf("ProjLLInProjection(hProj=%p, nPts=%d, pPts=%p)\n", hProj, nPts, static_cast<const void*>(pPts));
  if (hProj == nullptr || pPts == nullptr || nPts < 1) return true;
  const FpGuard guard;
  const Domain domain(*static_cast<const PROJDATA*>(hProj));
  for (int i = 0; i < nPts; ++i) {
    if (domain.Contains(pPts[i])) return false;  // on purpose: the question is whether all of it is outside
  }
  return true;
}

bool ORVEX_CALL ProjLLOffsetSplitObject(void* hProj, const PROJPOINT* pPts, unsigned int nPts, double* pdx,
                                        double* pdy) {
  detail::LogPrintf("ProjLLOffsetSplitObject(hProj=%p, pPts=%p, nPts=%u, pdx=%p, pdy=%p)\n", hProj,
                    static_cast<const void*>(pPts), nPts, static_cast<void*>(pdx), static_cast<void*>(pdy));
  if (hProj == nullptr || pPts == nullptr || nPts == 0 || pdx == nullptr || pdy == nullptr) return false;
  const FpGuard guard;
  return Domain(*static_cast<const PROJDATA*>(hProj)).OffsetSplit(pPts, nPts, *pdx, *pdy);
}

}  // namespace orvex
