// Columns - finds the two coordinate columns of a table by its first line.
#include "tables/Columns.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>

#include "Failure.h"
#include "commands/Names.h"
#include "tables/Fields.h"

namespace orvex::tool {

namespace {

constexpr std::string_view kLon[] = {"lon", "longitude", "long", "lng"}, kLat[] = {"lat", "latitude"};
constexpr std::string_view kX[] = {"x", "easting", "east", "e"}, kY[] = {"y", "northing", "north", "n"};

/// True for a name with more behind it: "lon (deg)", "x_m".
bool Extends(std::string_view column, std::string_view name) {
  if (name == "e" || name == "n" || column.size() <= name.size() || !column.starts_with(name)) return false;
  const char next = column[name.size()];
  return (next < 'a' || next > 'z') && (next < '0' || next > '9');
}

std::optional<std::size_t> Find(const std::vector<std::string>& columns, std::span<const std::string_view> usual) {
  for (const bool exact : {true, false}) {
    for (const std::string_view name : usual) {
      for (std::size_t i = 0; i < columns.size(); ++i) {
        if (exact ? columns[i] == name : Extends(columns[i], name)) return i;
      }
    }
  }
  return std::nullopt;
}

bool IsHeader(const TableOptions& options, Kind kind, const std::vector<std::string>& names) {
  const auto named = [&](const std::string& option) {
    return !option.empty() && LooksLikeName(option) &&
           std::find(names.begin(), names.end(), Lower(option)) != names.end();
  };
  return named(options.xColumn) || named(options.yColumn) || (Find(names, kLon) && Find(names, kLat)) ||
         (Find(names, kX) && Find(names, kY)) ||
         (IsHeaderLine(names) && !(kind == Kind::Geographic && HoldsAngle(names)));
}

/// True when --order puts y (latitude, northing) first; nothing without it.
std::optional<bool> YFirst(const TableOptions& options) {
  if (options.order.empty()) return std::nullopt;
  const std::string order = Lower(options.order);
  for (const char* xFirst : {"lon,lat", "x,y", "e,n"}) {
    if (order == xFirst) return false;
  }
  for (const char* yFirst : {"lat,lon", "y,x", "n,e"}) {
    if (order == yFirst) return true;
  }
  throw Failure("--order is lon,lat or lat,lon (x,y or y,x), not \"" + options.order + "\"");
}

std::size_t FromOption(const std::string& option, const std::vector<std::string>& names, bool header) {
  if (option.find_first_not_of("0123456789") != std::string::npos) {
    if (!header) throw Failure("the table has no header with a column \"" + option + "\"; use column numbers");
    return FindName(names, option, "column");
  }
  const int number = ParseInteger(option, "column");
  if (number < 1) throw Failure("columns are counted from 1");
  if (static_cast<std::size_t>(number) > names.size() && header) {
    throw Failure("the header has no column " + option);
  }
  return static_cast<std::size_t>(number - 1);
}

/// The column of the label: by its name, by --x where the label stands alone. Without a header the label alone is the
/// first column, and the one beside coordinates the last: there it is written.
std::size_t LabelPlace(const TableOptions& options, const std::vector<std::string>& names, bool header) {
  if (options.labelIn.use == Label::Alone && !options.xColumn.empty())
    return FromOption(options.xColumn, names, header);
  const std::string& name = options.labelIn.name;
  const auto named = std::find(names.begin(), names.end(), name);
  if (named != names.end()) {
    if (std::find(named + 1, names.end(), name) != names.end()) {
      throw Failure("the header has two columns \"" + name + "\"");
    }
    return static_cast<std::size_t>(named - names.begin());
  }
  if (header) throw Failure("the header has no column \"" + name + "\"");
  return options.labelIn.use == Label::Alone ? 0 : std::max<std::size_t>(names.size(), 3) - 1;
}

/// A second column of the name could not be told from the results; a label that they replace is none.
void RefuseSecondLabel(const TableOptions& options, const std::vector<std::string>& names, const Columns& columns) {
  if (options.labelOut.use == Label::None || !columns.header) return;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] != options.labelOut.name) continue;
    const bool isRead = options.labelIn.use != Label::None && i == columns.label;
    if (isRead && !options.keep) continue;
    throw Failure("the table has a column \"" + names[i] + "\" already, and the results would add another; " +
                  (isRead ? "leave --keep out" : "rename it"));
  }
}

/// A label that stands alone may look like a name, so that only its column's own name makes a header.
Columns ChooseLabelAlone(const TableOptions& options, const std::vector<std::string>& names) {
  Columns columns;
  const std::string& name = LooksLikeName(options.xColumn) ? Lower(options.xColumn) : options.labelIn.name;
  columns.header = std::find(names.begin(), names.end(), name) != names.end();
  columns.label = LabelPlace(options, names, columns.header);
  return columns;
}

Columns ChooseCoordinates(const TableOptions& options, Kind kind, const std::vector<std::string>& names) {
  Columns columns;
  columns.header = IsHeader(options, kind, names);
  const std::optional<bool> yFirst = YFirst(options);
  if (yFirst && !(options.xColumn.empty() && options.yColumn.empty())) {
    throw Failure("--order counts the first two columns; --x and --y say otherwise");
  }
  std::optional<std::size_t> x, y;
  if (columns.header) {
    const bool geographic = kind == Kind::Geographic && (Find(names, kLon) || Find(names, kLat));
    x = Find(names, geographic ? std::span<const std::string_view>(kLon) : kX);
    y = Find(names, geographic ? std::span<const std::string_view>(kLat) : kY);
  }
  if (yFirst && x && y && *yFirst != (*y < *x))
    throw Failure("the header names the columns in another order than --order");
  if (!x && !y && (!columns.header || (names.size() == 2 && yFirst))) {
    x = yFirst.value_or(false) ? 1 : 0;
    y = 1 - *x;
  }
  if (!options.xColumn.empty()) x = FromOption(options.xColumn, names, columns.header);
  if (!options.yColumn.empty()) y = FromOption(options.yColumn, names, columns.header);
  if (!x || !y) {
    throw Failure(std::string("the header does not tell the coordinate columns; name them with --x and --y") +
                  (names.size() == 2 ? ", or say --order lon,lat or --order lat,lon" : ""));
  }
  if (*x == *y) throw Failure("x and y are the same column");
  columns.place = {*x, *y};
  if (options.labelIn.use == Label::Beside) columns.label = LabelPlace(options, names, columns.header);
  return columns;
}

}  // namespace

Columns ChooseColumns(const TableOptions& options, Kind kind, const std::vector<std::string>& names) {
  const bool alone = options.labelIn.use == Label::Alone;
  const Columns columns = alone ? ChooseLabelAlone(options, names) : ChooseCoordinates(options, kind, names);
  RefuseSecondLabel(options, names, columns);
  return columns;
}

}  // namespace orvex::tool
