// Mre - datum shift by multiple regression equations.
#pragma once

#include <orvex/datum.h>

namespace orvex::detail {

/// Moves n points (degrees) in place from a regression datum (224 to 231) to WGS 84; points that hold DBL_MAX stay as
/// they are. Does nothing for any other datum. Always true.
bool ConvertMre(DatumType datum, DATUMPOINT* pts, int n);

}  // namespace orvex::detail
