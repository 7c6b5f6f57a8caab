// MapPlaces - points with names, from a table.
#pragma once

#include <string>
#include <vector>

#include <orvex/projection.h>

namespace orvex::tool {

struct Place {
  PROJPOINT at;
  std::string name;
  std::string color;  ///< empty for the usual one
};

/// Reads a table of longitudes, latitudes and names: columns by the names of a header line, else the first three.
/// Throws Failure with file and line number for what cannot be read.
std::vector<Place> ReadPlaces(const std::string& file);

}  // namespace orvex::tool
