// BlockConverter - the lines of a block with their coordinates converted.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "tables/BlockReader.h"
#include "tables/Columns.h"
#include "tables/CoordinateReader.h"
#include "tables/Fields.h"
#include "tables/LineSplicer.h"
#include "tables/PointTable.h"

namespace orvex::tool {

inline constexpr std::uint64_t kMostComplaints = 100;  ///< that are shown one by one

struct Complaint {
  std::uint64_t line;
  std::string text;
};

struct BlockResult {
  std::string text;
  std::vector<Complaint> complaints;  ///< the first of them
  std::uint64_t complaintCount = 0, badLines = 0, unplottable = 0, converted = 0;
  std::uint64_t longLines = 0;  ///< with more columns than the layout knows
};

/// How a table looks by its first line.
struct Layout {
  Splitter splitter{','};
  ColumnPlaces columns{};
  std::size_t label = 0;  ///< column of the label that is read, if there is one
  std::size_t mostColumns = std::numeric_limits<std::size_t>::max();  ///< of a line; of a header between commas
};

/// Converts blocks one after the other. Several of them work beside each other, each with a Converter of its own.
class BlockConverter {
 public:
  BlockConverter(const TableOptions& options, Kind from, Kind to, const Layout& layout, LabelConverter convert);

  void Convert(const Block& block, BlockResult& result);

 private:
  /// A line that is not passed on as it is.
  struct PointLine {
    std::size_t begin, end;  ///< in the block, without line end
    PointFields fields;      ///< in the line; at its end when it is too short for them
    bool readable;
  };

  void ReadLine(std::string_view text, std::size_t begin, std::size_t end, std::uint64_t number);
  bool ReadCoordinates(PointFields& fields, std::string_view line, std::uint64_t number, PROJPOINT& point);
  bool ReadPoint(std::string_view line, PointFields& fields, std::uint64_t number);
  void WriteLines(std::string_view text);
  void WriteLine(std::string_view line, const PointLine& place, std::size_t& next);
  void Format(const PROJPOINT& point, const std::string& label);
  void Complain(std::uint64_t line, std::string text);

  const TableOptions& m_options;
  Kind m_to;
  Layout m_layout;
  CoordinateReader m_reader;
  LineSplicer m_splicer;
  LabelConverter m_convert;
  BlockResult* m_result = nullptr;
  std::vector<Field> m_fields;        // of the line being read
  std::vector<PointLine> m_lines;     // of the block
  std::vector<PROJPOINT> m_points;    // of the readable lines
  std::vector<std::string> m_labels;  // of the readable lines, when labels are read or written
  LineResults m_values;               // of the line being written
};

}  // namespace orvex::tool
