// PointTable - streams a text table and converts the two coordinate columns of each line; everything else passes
// through.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <orvex/projection.h>
#include <CLI/CLI.hpp>

#include "tables/Coordinate.h"

namespace orvex::tool {

/// How the table looks and what becomes of it.
struct TableOptions {
  std::string file = "-";    ///< "-": standard input
  std::string output = "-";  ///< "-": standard output
  std::string delimiter;     ///< "": by the first line; "," ";" "|" "tab" or "blank"
  std::string xColumn,
      yColumn;           ///< name or number from 1; "": lon/x/easting and lat/y/northing in a header, else 1 and 2
  bool keep = false;     ///< keep the input columns and append the results
  bool quiet = false;    ///< no summary, no progress
  bool geoJson = false;  ///< the file is GeoJSON whatever its name
  int sourceCode = 0, resultCode = 0;  ///< EPSG codes of the sides for GeoJSON, 0 where none is named
  Format format;
};

/// Adds the options above to a command.
void AddTableOptions(CLI::App& command, TableOptions& options);

/// Converts points in place; DBL_MAX in a point says that it could not be computed.
using Converter = std::function<void(std::vector<PROJPOINT>&)>;

/// Runs the table through the converter in blocks, so that a file of any size takes constant memory. Lines without two
/// readable coordinates are reported with their numbers and passed on with empty ones. Answers the exit status.
int ConvertTable(const TableOptions& options, Kind from, Kind to, const Converter& convert);

}  // namespace orvex::tool
