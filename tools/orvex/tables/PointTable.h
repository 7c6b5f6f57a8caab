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

/// A text of each point: the zone beside its coordinates, or a reference that stands for both of them, alone.
enum class Label { None, Beside, Alone };

struct LabelColumn {
  Label use = Label::None;
  std::string name = {};                                       ///< in the header
  std::function<bool(const std::string&)> readable = nullptr;  ///< of one that is read; none: any
};

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
  bool geoJson = false;          ///< the file is GeoJSON whatever its name
  LabelColumn labelIn, labelOut;
  int sourceCode = 0, resultCode = 0;  ///< EPSG codes of the sides for GeoJSON, 0 where none is named
  Format format;

  /// Whether a label that is written takes the place of the one that is read.
  bool ReplacesLabel() const { return !keep && labelIn.use == Label::Beside && labelOut.use == Label::Beside; }
};

/// Adds the options above to a command.
void AddTableOptions(CLI::App& command, TableOptions& options);

/// Converts points in place; DBL_MAX in a point says that it could not be computed.
using Converter = std::function<void(std::vector<PROJPOINT>&)>;
/// Makes a converter for each thread: library handles are never shared.
using ConverterFactory = std::function<Converter()>;

/// The same with the labels of the points, read and to be written.
using LabelConverter = std::function<void(std::vector<PROJPOINT>&, std::vector<std::string>&)>;
using LabelConverterFactory = std::function<LabelConverter()>;

/// Threads that the options ask for, or one for each processor.
int ThreadCount(const TableOptions& options);

/// Runs the table through converters in blocks, so that a file of any size takes constant memory. Lines without two
/// readable coordinates are reported with their numbers and passed on with empty ones. Answers the exit status.
int ConvertTable(const TableOptions& options, Kind from, Kind to, const ConverterFactory& makeConverter);

/// The same where the options name columns of labels.
int ConvertLabelledTable(const TableOptions& options, Kind from, Kind to, const LabelConverterFactory& makeConverter);

}  // namespace orvex::tool
