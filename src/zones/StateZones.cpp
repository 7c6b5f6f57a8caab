// StateZones - lookups in the catalogue of state plane zones.
#include "support/FirstMatch.h"
#include "support/Log.h"
#include "support/Text.h"
#include "zones/ExpandStatePlane.h"
#include "zones/StateZoneTable.h"

namespace orvex {

namespace detail {
namespace {

constexpr std::size_t kNameCapacity = 64;

/// First zone whose row meets the condition, in catalogue order; SZ_NONE when there is none.
template <class Condition>
StateZoneType FirstZone(Condition condition) {
  const StateZoneRow* row = FirstMatch(StateZones(), condition);
  return row != nullptr ? static_cast<StateZoneType>(row->zone) : SZ_NONE;
}

}  // namespace
}  // namespace detail

using detail::LogPrintf;
using detail::LogText;
using detail::StateZoneRow;

void ProjGetStateZoneInfo(StateZoneType zone, char* name, int* usgsCode) {
  LogPrintf("ProjGetStateZoneInfo(zone=%d, name=%p, usgsCode=%p)\n", static_cast<int>(zone), static_cast<void*>(name),
            static_cast<void*>(usgsCode));
  const StateZoneRow* row = detail::FindStateZone(zone);
  if (name != nullptr) detail::CopyText(name, row != nullptr ? row->name : "", detail::kNameCapacity);
  if (usgsCode != nullptr) *usgsCode = row != nullptr ? row->usgs : 0;
}

bool ProjGetStateZoneFromName(StateZoneType* zone, const char* name) {
  LogPrintf("ProjGetStateZoneFromName(zone=%p, name=\"%s\")\n", static_cast<void*>(zone), LogText(name));
  if (zone == nullptr || name == nullptr || *name == '\0') return false;
  *zone = detail::FirstZone([name](const StateZoneRow& row) { return detail::EqualIgnoringCase(row.name, name); });
  return *zone != SZ_NONE;
}

bool ProjGetStateZoneFromUSGSCode(StateZoneType* zone, int code) {
  LogPrintf("ProjGetStateZoneFromUSGSCode(zone=%p, code=%d)\n", static_cast<void*>(zone), code);
  if (zone == nullptr || code < 0) return false;
  *zone = detail::FirstZone([code](const StateZoneRow& row) { return row.usgs == code; });
  return *zone != SZ_NONE;
}

bool ProjGetStateZoneFromPOSCNumber(int posc, ProjType* type, StateZoneType* zone) {
  LogPrintf("ProjGetStateZoneFromPOSCNumber(posc=%d, type=%p, zone=%p)\n", posc, static_cast<void*>(type),
            static_cast<void*>(zone));
  if (posc == 0) return false;
  const StateZoneType found =
      detail::FirstZone([posc](const StateZoneRow& row) { return row.posc1927 == posc || row.posc1983 == posc; });
  const StateZoneRow* row = detail::FindStateZone(found);
  if (row == nullptr) return false;
  if (type != nullptr) *type = row->posc1927 == posc ? PT_STATEPLANE27 : PT_STATEPLANE83;
  if (zone != nullptr) *zone = found;
  return true;
}

bool ProjStateZoneToPOSCNumber(ProjType type, StateZoneType zone, int* posc) {
  LogPrintf("ProjStateZoneToPOSCNumber(type=%d, zone=%d, posc=%p)\n", static_cast<int>(type), static_cast<int>(zone),
            static_cast<void*>(posc));
  const StateZoneRow* row = detail::FindStateZone(zone);
  if (row == nullptr || !detail::IsStatePlane(type)) return false;
  const int number = type == PT_STATEPLANE27 ? row->posc1927 : row->posc1983;
  if (number == 0) return false;
  if (posc != nullptr) *posc = number;
  return true;
}

void ProjGetStateZoneParams(PROJDATA* pData) {
  LogPrintf("ProjGetStateZoneParams(pData=%p)\n", static_cast<void*>(pData));
  if (pData == nullptr) return;
  const bool inCatalogue = detail::FindStateZone(pData->Zone) != nullptr;
  if (!inCatalogue || !detail::ExpandStatePlane(pData)) pData->Zone = SZ_NONE;
}

}  // namespace orvex
