// LineSplicer - a line of a table with results in the place of its coordinates, or behind them.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "tables/Fields.h"
#include "tables/PointTable.h"

namespace orvex::tool {

/// The fields of x and y in a line, and of the label beside them where one is read.
using PointFields = std::array<Field, 3>;

/// The results of a line: x and y, and a label where the options ask for one.
struct LineResults {
  std::array<std::string, 2> coordinates;
  std::string label;
};

class LineSplicer {
 public:
  LineSplicer(char delimiter, const TableOptions& options)
      : m_delimiter(delimiter),
        m_keep(options.keep),
        m_replacesLabel(options.ReplacesLabel()),
        m_in(options.labelIn.use),
        m_out(options.labelOut.use) {}

  /// Appends the line (without its end) and the results to a text. Without --keep the results replace the fields (the
  /// first of them is the label where that stands alone); both fields empty at one place say that the line has none,
  /// and it stays as it is. A label beside the coordinates takes the place of the one that was read, or goes to the
  /// end.
  void Append(std::string& out, std::string_view line, const PointFields& fields, const LineResults& results) const;

 private:
  void AppendAll(std::string& out, std::string_view line, const LineResults& results) const;
  void ReplaceByLabel(std::string& out, std::string_view line, const PointFields& fields,
                      const LineResults& results) const;
  void ReplaceEach(std::string& out, std::string_view line, const PointFields& fields,
                   const LineResults& results) const;
  std::string_view WithoutDelimiter(std::string_view text) const;
  void AppendCoordinates(std::string& out, const LineResults& results) const;
  void AppendValue(std::string& out, const std::string& value) const;

  char m_delimiter;
  bool m_keep, m_replacesLabel;
  Label m_in, m_out;
};

}  // namespace orvex::tool
