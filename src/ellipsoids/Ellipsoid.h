// Ellipsoid - the catalogue of ellipsoids for the library's own use; what hosts call writes to the log.
#pragma once

#include <orvex/ellipsoid.h>

namespace orvex::detail {

/// Semi-major axis in metres and flattening f; 1 and 0 for the user-defined ellipsoid and outside the table.
double MajorRadiusOf(EllipsoidType type);
double FlatteningOf(EllipsoidType type);

/// Name of an ellipsoid with numbers of its own; null for the user-defined one and outside the table.
const char* EllipsoidName(EllipsoidType type);

/// The name as dumps of records show it: that of the user-defined ellipsoid is not known either.
inline const char* EllipsoidNameInDump(EllipsoidType type) {
  const char* const name = EllipsoidName(type);
  return name != nullptr ? name : "UNKNOWN";
}

/// Finds an ellipsoid by its whole name in the table, without regard to case; the user-defined one when there is none.
bool FindEllipsoid(const char* name, EllipsoidType& type);

}  // namespace orvex::detail
