// DatumCatalogue - step records of the built-in datums.
#pragma once

#include <orvex/datum.h>

namespace orvex::detail {

enum class DatumRole { Source, Destination };

/// Fills a step from the row of a built-in datum: bInverse false, radius and flattening from the ellipsoid table,
/// reserved bytes left alone. Every datum can be a source; NADCON and regression datums are refused as destinations.
/// False, nothing written, when there is no such row.
bool LookUpStep(DatumType datum, DatumRole role, DATUM2WGS84& step);

/// Radius and flattening of a step that names an ellipsoid of the table; one without (0) keeps its own.
void ResolveEllipsoid(DATUM2WGS84& step);

/// Whether a step of this method can be run from WGS 84 to the datum by its parameters alone.
constexpr bool IsParametric(DatumMethod method) {
  return method == DM_NOXFORM || method == DM_BURSA || method == DM_MOLODENSKY;
}

}  // namespace orvex::detail
