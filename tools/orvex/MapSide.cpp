// MapSide - the map coordinates of one side of a conversion.
#include "MapSide.h"

#include <cfloat>

#include "Failure.h"
#include "ProjectPoints.h"
#include "Units.h"

namespace orvex::tool {

namespace {

/// Marked points stay marked.
template <class Change>
void ChangeLive(std::vector<PROJPOINT>& points, Change change) {
  for (PROJPOINT& p : points) {
    if (p.x != DBL_MAX && p.y != DBL_MAX) p = {change(p.x), change(p.y)};
  }
}

}  // namespace

MapSide::MapSide(PROJDATA record, const std::string& unit, bool stated)
    : m_projector(&record), m_metres(unit.empty() ? 1 : FindUnit(unit).metres), m_watch(WatchProjection(record)) {
  if (!stated && !m_projector.SetAccuracy(PA_EXACT)) {
    Warn("the parameters have no exact projection; computed as with --stated");
  }
}

void MapSide::Project(std::vector<PROJPOINT>& points) {
  if (m_watch) m_watch->Watch(points);
  ProjectPoints(m_projector, Direction::Forward, points);
  if (m_metres != 1) ChangeLive(points, [this](double length) { return length / m_metres; });
}

void MapSide::Unproject(std::vector<PROJPOINT>& points) {
  if (m_metres != 1) ChangeLive(points, [this](double length) { return length * m_metres; });
  ProjectPoints(m_projector, Direction::Inverse, points);
  if (m_watch) m_watch->Watch(points);
}

void MapSide::Report() const {
  if (m_watch) m_watch->Report();
}

}  // namespace orvex::tool
