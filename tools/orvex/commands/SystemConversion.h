// SystemConversion - orvex convert where at least one side is a registered coordinate system.
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

/// Converts the table. A side without system, projection and datum is longitude and latitude, in degrees from
/// Greenwich, on the datum of the other one. Answers the exit status; throws Failure where the two sides lie on
/// different datums of which the catalogue lacks one, and for contradictions.
int ConvertSystems(const SideOptions& from, const SideOptions& to, const std::string& ini, const TableOptions& table);

}  // namespace orvex::tool
