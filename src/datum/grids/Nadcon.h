// Nadcon - shifts from NAD 27 to NAD 83 by a pair of NADCON grid files beside the host's executable.
#pragma once

#include <orvex/datum.h>

namespace orvex::detail {

/// Shifts n points (degrees) in place by the files "<region>.LAS" and "<region>.LOS"; points outside the grid and
/// points that hold DBL_MAX stay as they are. Asserts from `DtmNadcon` when a file cannot be opened; false when the
/// grids cannot be used.
bool ConvertNadcon(const char* region, DATUMPOINT* pts, int n);

}  // namespace orvex::detail
