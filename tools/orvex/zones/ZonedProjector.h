// ZonedProjector - projects each point in the zone that it chooses.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <orvex/projection.h>

#include "ProjectPoints.h"
#include "zones/ZoneGrid.h"

namespace orvex::tool {

/// `stated`: computed as hosts of the library get it, else exactly. Every copy has library handles of its own for a
/// thread of its own.
class ZonedProjector {
 public:
  ZonedProjector(std::shared_ptr<const ZoneGrid> grid, bool stated) : m_grid(std::move(grid)), m_stated(stated) {}

  const std::shared_ptr<const ZoneGrid>& SharedGrid() const { return m_grid; }

  /// Projects every point in its zone; `labels` becomes the zones' labels. Points without zone become DBL_MAX.
  void Forward(std::vector<PROJPOINT>& points, std::vector<std::string>& labels);

  /// Converts back by the labels. A point whose label names no zone becomes DBL_MAX.
  void Inverse(std::vector<PROJPOINT>& points, const std::vector<std::string>& labels);

 private:
  using Groups = std::map<int, std::vector<std::size_t>>;  // places of the points of a zone

  void Project(Direction direction, std::vector<PROJPOINT>& points, const Groups& groups);
  CProjector& Projector(int zone);

  std::shared_ptr<const ZoneGrid> m_grid;
  bool m_stated;
  std::map<int, CProjector> m_projectors;
};

}  // namespace orvex::tool
