// ByPoint - projections that each point chooses by itself: UTM and state plane zones, references of the MGRS.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "commands/ProjectionOptions.h"
#include "tables/PointTable.h"
#include "zones/ZonedProjector.h"

namespace orvex::tool {

/// Whether a projection was named whose zone depends on the point.
bool IsByPoint(const ProjectionOptions& options);

/// Every copy has library handles of its own.
class PointGrid {
 public:
  /// Throws Failure for options that go with no zone by point.
  PointGrid(const ProjectionOptions& options, const std::optional<SideDatum>& datum, bool stated);

  /// The column that says the zone, or has the reference.
  LabelColumn Column() const;
  void Forward(std::vector<PROJPOINT>& points, std::vector<std::string>& labels);
  void Inverse(std::vector<PROJPOINT>& points, const std::vector<std::string>& labels);

 private:
  int m_mgrsDigits;  // -1: zones
  double m_metres;   // in a unit of the coordinates
  ZonedProjector m_projector;
};

/// orvex project with such a projection; answers the exit status.
int ProjectByPoint(const ProjectionOptions& options, bool inverse, bool stated, const TableOptions& table);

}  // namespace orvex::tool
