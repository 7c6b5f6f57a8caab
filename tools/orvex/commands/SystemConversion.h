// SystemConversion - orvex convert where a side is a registered coordinate system or has zones by point.
#pragma once

#include <string>

#include "commands/ProjectionOptions.h"
#include "tables/PointTable.h"

namespace orvex::tool {

/// One side of a conversion as it was named.
struct SideOptions {
  const std::string& system;  ///< code or name, "" for none
  const ProjectionOptions& projection;
  const std::string& datum;  ///< "" for none
  std::string name;          ///< "from" or "to"
};

struct SystemConversionOptions {
  const std::string& ini;  ///< file of custom datums, "" for none
  bool stated;             ///< compute as hosts of the library get it
};

/// Converts the table. A side without system, projection and datum is longitude and latitude, in degrees from
/// Greenwich, on the datum of the other one. Answers the exit status; throws Failure where the two sides lie on
/// different datums of which the catalogue lacks one, and for contradictions.
int ConvertSystems(const SideOptions& from, const SideOptions& to, const SystemConversionOptions& options,
                   const TableOptions& table);

}  // namespace orvex::tool
