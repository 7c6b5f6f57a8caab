// GeoHelmert - similarity transform: scale, rotation, two shifts.
#pragma once

#include "georef/PlaneFit.h"

namespace orvex::detail {

/// Least-squares fit; the result uses the terms 1, u, v. False unless two source points differ and all points are
/// finite.
bool InitializeHelmert(const Controls& controls, PlaneFit& fit);

}  // namespace orvex::detail
