// StateZoneTable - the catalogue of state plane zones: names and codes.
#pragma once

#include <span>

#include "orvex/zones.h"

namespace orvex::detail {

struct StateZoneRow {
  int zone;      // StateZoneType
  int usgs;      // USGS zone code, 0 = none
  int posc1927;  // POSC (EPSG) number of the zone in the 1927 set, 0 = none
  int posc1983;  // and in the 1983 set
  const char* name;
};

/// The 142 rows, indexed by StateZoneType.
std::span<const StateZoneRow, SZ_NONE> StateZones();

/// The row of a zone; null outside the catalogue.
inline const StateZoneRow* FindStateZone(int zone) {
  return zone >= 0 && zone < SZ_NONE ? &StateZones()[static_cast<std::size_t>(zone)] : nullptr;
}

}  // namespace orvex::detail
