// Systems - registered coordinate systems, from the table of the command-line host.
#include "Systems.h"

#include <cmath>
#include <numbers>
#include <optional>

#include "Record.h"
#include "systems/FindSystem.h"
#include "systems/SystemRecord.h"

namespace orvex::python {

namespace {

/// A map that is turned clockwise and moved after it was projected; the origin in metres.
std::array<double, 6> Plane(const tool::Turn& turn, double unit) {
  const double angle = turn.degrees * std::numbers::pi / 180, s = std::sin(angle), c = std::cos(angle);
  return {turn.x0 / unit, c, s, turn.y0 / unit, -s, c};
}

}  // namespace

System FindSystem(const std::string& text) {
  const tool::CoordinateSystem& found = tool::FindSystem(text);
  tool::SystemRecord made = tool::MakeSystemRecord(found);
  const tool::ReferenceDatum& datum = found.Datum();
  const tool::Area& area = found.AreaOfUse();
  const double unit = found.UnitOfAxes().factor;
  System system{found.code,
                std::string(found.name),
                "",
                std::nullopt,
                unit,
                datum.longitude,
                datum.frame,
                std::string(datum.name),
                datum.catalogue,
                {std::string(area.name), area.west, area.south, area.east, area.north},
                found.deprecated};
  if (!found.IsProjected()) return system;
  const double scale = made.record.Scale == 0 ? 1 : made.record.Scale;
  made.record.Scale = scale / unit;
  system.record = Record(made.record).Bytes();
  system.meridian = 0;
  if (made.turn) system.plane = Plane(*made.turn, unit);
  return system;
}

std::vector<SystemRow> SearchSystems(const std::string& text) {
  std::vector<SystemRow> rows;
  for (const tool::CoordinateSystem* system : tool::SearchSystems(text, std::nullopt)) {
    rows.push_back({system->code, std::string(system->name), system->IsProjected(),
                    std::string(system->AreaOfUse().name), system->deprecated});
  }
  return rows;
}

}  // namespace orvex::python
