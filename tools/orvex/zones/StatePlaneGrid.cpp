// StatePlaneGrid - state plane zones by point, as far as the bounds of their areas tell.
#include <algorithm>
#include <vector>

#include <orvex/zones.h>

#include "commands/Names.h"
#include "systems/FindSystem.h"
#include "zones/ZoneGrid.h"

namespace orvex::tool {

namespace {

class StatePlaneGrid : public ZoneGrid {
 public:
  explicit StatePlaneGrid(ProjType set) : m_set(set) {
    for (int zone = 0; zone < SZ_NONE; ++zone) {
      int code = 0;
      if (!ProjStateZoneToPOSCNumber(set, static_cast<StateZoneType>(zone), &code)) continue;
      char name[80];
      ProjGetStateZoneInfo(static_cast<StateZoneType>(zone), name, nullptr);
      if (const CoordinateSystem* system = FindCode(code)) m_zones.push_back({zone, name, &system->AreaOfUse()});
    }
  }

  ZoneChoice At(const PROJPOINT& point) const override {
    ZoneChoice choice;
    int candidates = 0;
    for (const Zone& zone : m_zones) {
      if (!zone.area->Contains(point)) continue;
      choice.label += (candidates++ == 0 ? "" : " or ") + zone.name;
      choice.zone = zone.number;
    }
    if (candidates != 1) choice.zone.reset();
    return choice;
  }

  std::optional<int> Parse(std::string_view label) const override {
    const auto found = std::find_if(m_zones.begin(), m_zones.end(),
                                    [&](const Zone& zone) { return Lower(zone.name) == Lower(label); });
    return found == m_zones.end() ? std::nullopt : std::optional<int>(found->number);
  }

  PROJDATA Record(int zone) const override {
    PROJDATA record{};
    record.Type = m_set;
    record.Zone = zone;
    record.Ellipsoid = m_set == PT_STATEPLANE27 ? ET_CLARKE_1866 : ET_GRS_1980_IUGG_1980;
    return record;
  }

 private:
  struct Zone {
    int number;
    std::string name;
    const Area* area;
  };

  ProjType m_set;
  std::vector<Zone> m_zones;
};

}  // namespace

std::unique_ptr<ZoneGrid> MakeStatePlaneGrid(ProjType set) {
  return std::make_unique<StatePlaneGrid>(set);
}

}  // namespace orvex::tool
