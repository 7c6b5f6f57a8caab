// PlaneFit - what the fits of polynomials to control points share.
#pragma once

#include <cstddef>
#include <span>

#include "georef/PlanePoints.h"
#include "math/PlaneBox.h"
#include "orvex/georef.h"

namespace orvex::detail {

/// The control points of a record: as many sources as destinations.
struct Controls {
  std::span<const GEOREFPOINT> source;
  std::span<const GEOREFPOINT> destination;
};

/// Logs the heading of a fit and its control points.
void TraceControls(const char* heading, const Controls& controls);

}  // namespace orvex::detail
