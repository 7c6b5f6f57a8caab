// ZoneAreas - of the registered coordinate systems those of the state plane zones alone, for their areas of use. They
// are picked while this is compiled, so that the module carries no others.
#include <algorithm>
#include <array>
#include <iterator>

#include "systems/FindSystem.h"

namespace orvex::tool {

namespace {

using enum Axes;

#define ORVEX_AREA(...) {__VA_ARGS__},
#define ORVEX_SYSTEM(...) {__VA_ARGS__},

constexpr Area kAllAreas[] = {
#include "systems/table/Areas.def"
};
constexpr CoordinateSystem kAllSystems[] = {
#include "systems/table/Systems.def"
};

/// The registry's numbers of the zones of 1927 and 1983; a few of other systems among them do no harm.
constexpr bool MayBeZone(const CoordinateSystem& system) {
  return (system.code >= 26700 && system.code < 27000) || (system.code >= 32000 && system.code < 32200);
}

constexpr std::size_t CountZones() {
  std::size_t count = 0;
  for (const CoordinateSystem& system : kAllSystems) count += MayBeZone(system) ? 1 : 0;
  return count;
}

struct Zones {
  std::array<CoordinateSystem, CountZones()> systems{};
  std::array<Area, CountZones()> areas{};
};

constexpr Zones PickZones() {
  Zones zones;
  std::size_t place = 0;
  for (const CoordinateSystem& system : kAllSystems) {
    if (!MayBeZone(system)) continue;
    zones.areas[place] = kAllAreas[system.areaPlace];
    zones.areas[place].name = {};
    zones.systems[place] = system;
    zones.systems[place].name = {};
    zones.systems[place].areaPlace = static_cast<short>(place);
    ++place;
  }
  return zones;
}

constexpr Zones kZones = PickZones();

}  // namespace

const Area& CoordinateSystem::AreaOfUse() const {
  return kZones.areas[static_cast<std::size_t>(areaPlace)];
}

const CoordinateSystem* FindCode(int code) {
  const auto found = std::find_if(kZones.systems.begin(), kZones.systems.end(),
                                  [code](const CoordinateSystem& system) { return system.code == code; });
  return found != kZones.systems.end() ? &*found : nullptr;
}

}  // namespace orvex::tool
