// BursaWolf - seven-parameter datum shift.
#pragma once

#include <orvex/datum.h>

namespace orvex::detail {

/// Moves n points (degrees) in place between the step's datum and WGS 84; points that hold DBL_MAX stay as they are. A
/// count below 1 does nothing. Always true. The step's radius and flattening must be filled in.
bool ConvertBursaWolf(const DATUM2WGS84& step, DATUMPOINT* pts, int n);

}  // namespace orvex::detail
