// Controls - the control points of a georeference system, read from a table.
#pragma once

#include <string>
#include <vector>

#include <orvex/georef.h>

namespace orvex::tool {

struct Controls {
  std::vector<GEOREFPOINT> source, destination;
};

/// Reads a table of four columns: source x and y, destination x and y; a header, blank lines and comments ('#') are
/// passed over. Every bad line is reported on standard error with its number; then the whole file is refused by a
/// Failure.
Controls ReadControls(const std::string& file, const std::string& delimiter);

}  // namespace orvex::tool
