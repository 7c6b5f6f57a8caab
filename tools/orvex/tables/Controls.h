// Controls - the control points of a georeference system, read from a table.
#pragma once

#include <string>
#include <vector>

#include <orvex/georef.h>

namespace orvex::tool {

struct Controls {
  std::vector<GEOREFPOINT> source, destination;
  std::vector<std::string> names;    ///< of the points; empty when the table has none
  std::vector<std::size_t> numbers;  ///< of the points among those of the table, from 1, those that are off counted
  bool rowsUp = false;               ///< the source's y are rows of a raster, negative below its upper edge
};

/// Reads a table of four columns: source x and y, destination x and y, or as the names of a header order them; blank
/// lines and comments ('#') are passed over. Columns of a header called name (id, point) and on (enable, enabled, use)
/// may come besides, points that are off (0, no, off, false) are left out. The .points files of QGIS are known by their
/// header; they count the rows of rasters upwards. Every bad line is reported on standard error with its number; then
/// the whole file is refused by a Failure.
Controls ReadControls(const std::string& file, const std::string& delimiter, bool decimalComma);

}  // namespace orvex::tool
