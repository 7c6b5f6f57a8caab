// MapSide - the map coordinates of one side of a conversion.
#include "MapSide.h"

#include "ProjectPoints.h"
#include "Units.h"

namespace orvex::tool {

MapSide::MapSide(const PROJDATA& record, const std::string& unit, bool stated)
    : m_projector(MakeProjector(record, stated)), m_metres(MetresIn(unit)), m_watch(WatchProjection(record)) {}

void MapSide::Project(std::vector<PROJPOINT>& points) {
  if (m_watch) m_watch->Watch(points);
  ProjectPoints(m_projector, Direction::Forward, points);
  FromMetres(points, m_metres);
}

void MapSide::Unproject(std::vector<PROJPOINT>& points) {
  ToMetres(points, m_metres);
  ProjectPoints(m_projector, Direction::Inverse, points);
  if (m_watch) m_watch->Watch(points);
}

void MapSide::Report() const {
  if (m_watch) m_watch->Report();
}

}  // namespace orvex::tool
