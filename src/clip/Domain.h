// Domain - where a projection is defined and when an object must be repeated, prepared once per call.
#pragma once

#include "projections/ProjectionTable.h"

namespace orvex::detail {

/// A projection's domain. State plane records are expanded and the table row is looked up once; a record without
/// operations asserts only when a question reaches them. Holds its own copy of the record.
class Domain {
 public:
  explicit Domain(const PROJDATA& handle);

  /// Whether a point (degrees) is within +-360, +-90 degrees and in the projection's domain.
  bool Contains(const PROJPOINT& point) const;
  /// Whether an object must be drawn again, moved by (dx, dy) degrees. The pointers are not null, nPts is not 0.
  bool OffsetSplit(const PROJPOINT* pts, unsigned nPts, double& dx, double& dy) const;

 private:
  PROJDATA m_record;
  const ProjectionRow* m_row;  // null: the zone is undefined or the type is outside the table
};

}  // namespace orvex::detail
