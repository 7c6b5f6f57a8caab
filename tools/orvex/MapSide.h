// MapSide - the map coordinates of one side of a conversion: projection, unit, and the area that it is meant for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <orvex/projection.h>

#include "AreaWatch.h"

namespace orvex::tool {

/// Copies have library handles of their own and count points outside the area together.
class MapSide {
 public:
  /// `unit`: of the map coordinates, "" for metres; `stated`: compute as hosts of the library get it.
  MapSide(const PROJDATA& record, const std::string& unit, bool stated);

  /// Degrees to map coordinates and back, in place.
  void Project(std::vector<PROJPOINT>& points);
  void Unproject(std::vector<PROJPOINT>& points);

  /// Says how many points lay outside the area.
  void Report() const;

 private:
  CProjector m_projector;
  double m_metres = 1;  // in a unit
  std::optional<AreaWatch> m_watch;
};

}  // namespace orvex::tool
