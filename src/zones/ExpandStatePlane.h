// ExpandStatePlane - turns a state plane record into the zone's own projection.
#pragma once

#include "orvex/projection.h"

namespace orvex::detail {

/// Whether a type names one of the two sets of state plane zones.
constexpr bool IsStatePlane(ProjType type) {
  return type == PT_STATEPLANE27 || type == PT_STATEPLANE83;
}

/// Replaces the record's projection by that of its Zone: type, ellipsoid with radius and flattening, origin, parallels,
/// K0 and false origin (metres); for an oblique zone the azimuth and its three flags as well. What a zone does not give
/// is 0. False for a zone that the set does not define: origin, parallels, K0 and false origin are 0 then, the rest is
/// untouched. O(1), no parsing. A null record gives false.
bool ExpandStatePlane1927(PROJDATA* rec);
bool ExpandStatePlane1983(PROJDATA* rec);

/// Either of them by the record's Type; false, nothing changed, for a type that is no state plane type.
bool ExpandStatePlane(PROJDATA* rec);

}  // namespace orvex::detail
