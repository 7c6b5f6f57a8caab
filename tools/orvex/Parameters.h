// Parameters - the parameters of projections with short names and units.
#pragma once

#include <string>
#include <vector>

#include <orvex/projection.h>

namespace orvex::tool {

/// One parameter as it is presented to people.
struct Parameter {
  int id;
  ProjDataType type;
  std::string name;       ///< catalogue name
  std::string shortName;  ///< as accepted by --set
  std::string unit;       ///< "degrees", "map units" ...; "" where there is none
};

/// All parameters of the catalogue that can be set, in the order of their ids.
const std::vector<Parameter>& Parameters();

/// Whether a projection takes the semi-major axis of its ellipsoid for the radius of a sphere.
bool IsOfTheSphere(ProjType type);

}  // namespace orvex::tool
