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

/// Name of a datum into room for kDatumNameCapacity characters; "" when there is none.
void CopyDatumName(DatumType datum, char* name);

/// Finds a datum by its whole name without regard to case; false, nothing written, when there is none.
bool FindDatumNamed(const char* name, DatumType* datum);

/// Method of a built-in datum; false for datum 0 and unknown numbers.
bool MethodOf(DatumType datum, DatumMethod* method);

/// Whether a built-in datum is run backwards by its parameters alone, which DatReversible answers.
bool IsReversible(DatumType datum);

/// Whether a step of this method can be run from WGS 84 to the datum by its parameters alone.
constexpr bool IsParametric(DatumMethod method) {
  return method == DM_NOXFORM || method == DM_BURSA || method == DM_MOLODENSKY;
}

}  // namespace orvex::detail
