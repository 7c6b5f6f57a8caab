// Domain - where a projection is defined and when an object must be repeated, prepared once per call.
#include "clip/Domain.h"

#include "support/Errors.h"
#include "zones/ExpandStatePlane.h"

namespace orvex::detail {

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

}  // namespace orvex::detail
