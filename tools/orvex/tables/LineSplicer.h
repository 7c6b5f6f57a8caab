// LineSplicer - a line of a table with results in the place of its coordinates, or behind them.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "tables/Fields.h"

namespace orvex::tool {

/// The fields of x and y in a line.
using FieldPair = std::array<Field, 2>;

class LineSplicer {
 public:
  LineSplicer(char delimiter, bool keep) : m_delimiter(delimiter), m_keep(keep) {}

  /// Appends the line (without its end) and the results to a text. Without --keep the results replace the fields; both
  /// fields empty at one place say that the line has none, and it stays as it is.
  void Append(std::string& out, std::string_view line, const FieldPair& fields,
              const std::array<std::string, 2>& results) const;

 private:
  void AppendValue(std::string& out, const std::string& value) const;

  char m_delimiter;
  bool m_keep;
};

}  // namespace orvex::tool
