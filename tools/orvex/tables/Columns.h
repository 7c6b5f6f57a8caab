// Columns - finds the two coordinate columns of a table by its first line.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "tables/PointTable.h"

namespace orvex::tool {

/// Places of x and y among the fields of a line, from 0.
using ColumnPlaces = std::array<std::size_t, 2>;

struct Columns {
  ColumnPlaces place{};
  std::size_t label = 0;  ///< of the label that is read, if there is one
  bool header = false;    ///< the first line holds names
};

/// `names`: the first line's fields, lower case and without quotes. Columns are taken from the options, else by the
/// names that a header usually has for this kind of coordinates, else they are the first two of a table without header,
/// or of two columns whose order an option tells. Throws Failure rather than guess.
Columns ChooseColumns(const TableOptions& options, Kind kind, const std::vector<std::string>& names);

}  // namespace orvex::tool
