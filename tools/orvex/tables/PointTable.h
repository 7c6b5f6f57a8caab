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
  std::string file = "-";                ///< "-": standard input
  std::vector<std::string> coordinates;  ///< on the command line, instead of a file
  std::string output = "-";              ///< "-": standard output
  std::string delimiter;                 ///< "": by the first line; "," ";" "|" "tab" or "blank"
  std::string xColumn, yColumn;  ///< name or number from 1; "": lon/x/easting and lat/y/northing in a header, else 1, 2
  std::string order;             ///< "lat,lon": which of the first two columns is which
  bool decimalComma = false;     ///< numbers have a decimal comma, in and out
  bool keep = false;             ///< keep the input columns and append the results
  bool quiet = false;            ///< no summary, no progress
  int threads = 0;               ///< 0: as many as there are processors
  Format format;
};

/// Adds the options above to a command.
void AddTableOptions(CLI::App& command, TableOptions& options);

/// Converts points in place; DBL_MAX in a point says that it could not be computed.
using Converter = std::function<void(std::vector<PROJPOINT>&)>;
/// Makes a converter for each thread: library handles are never shared.
using ConverterFactory = std::function<Converter()>;

/// Runs the table through converters in blocks, so that a file of any size takes constant memory. Lines without two
/// readable coordinates are reported with their numbers and passed on with empty ones. Answers the exit status.
int ConvertTable(const TableOptions& options, Kind from, Kind to, const ConverterFactory& makeConverter);

/// The same with one converter for all threads, which take turns with it.
int ConvertTable(const TableOptions& options, Kind from, Kind to, const Converter& convert);

}  // namespace orvex::tool
