// ModuleCall - what the driver hands to a projection's module, without the steps before and behind it.
#pragma once

#include "points/PointView.h"
#include "projections/Conversion.h"

namespace orvex::test {

/// Radians on the geographic side, unscaled coordinates about the natural origin on the other.
inline detail::Conversion Call(PROJDATA* work, PROJPOINT* points, int count) {
  return {work, detail::ViewOf(points), count, nullptr};
}

}  // namespace orvex::test
