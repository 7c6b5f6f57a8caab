// ZonedProjector - projects each point in the zone that it chooses.
#include "zones/ZonedProjector.h"

#include <cfloat>

namespace orvex::tool {

void ZonedProjector::Forward(std::vector<PROJPOINT>& points, std::vector<std::string>& labels) {
  labels.assign(points.size(), "");
  Groups groups;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (points[i].x == DBL_MAX || points[i].y == DBL_MAX) continue;
    ZoneChoice choice = m_grid->At(points[i]);
    labels[i] = std::move(choice.label);
    if (choice.zone) {
      groups[*choice.zone].push_back(i);
    } else {
      points[i] = {DBL_MAX, DBL_MAX};
    }
  }
  Project(Direction::Forward, points, groups);
}

void ZonedProjector::Inverse(std::vector<PROJPOINT>& points, const std::vector<std::string>& labels) {
  Groups groups;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (const std::optional<int> zone = m_grid->Parse(labels[i])) {
      groups[*zone].push_back(i);
    } else {
      points[i] = {DBL_MAX, DBL_MAX};
    }
  }
  Project(Direction::Inverse, points, groups);
}

void ZonedProjector::Project(Direction direction, std::vector<PROJPOINT>& points, const Groups& groups) {
  std::vector<PROJPOINT> group;
  for (const auto& [zone, places] : groups) {
    group.clear();
    for (const std::size_t place : places) group.push_back(points[place]);
    ProjectPoints(Projector(zone), direction, group);
    for (std::size_t i = 0; i < places.size(); ++i) points[places[i]] = group[i];
  }
}

CProjector& ZonedProjector::Projector(int zone) {
  const auto found = m_projectors.find(zone);
  if (found != m_projectors.end()) return found->second;
  return m_projectors.emplace(zone, MakeProjector(m_grid->Record(zone), m_stated)).first->second;
}

}  // namespace orvex::tool
