// Controls - the control points of a georeference system, read from a table.
#include "tables/Controls.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iostream>
#include <optional>

#include "Failure.h"
#include "commands/Names.h"
#include "tables/Coordinate.h"
#include "tables/Fields.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

constexpr std::size_t kColumns = 4;

/// The numbers of one line, or what is wrong with it.
struct Row {
  std::array<double, kColumns> values{};
  std::string fault;
};

/// What the name of a column says of it.
struct Meaning {
  std::optional<std::size_t> axis;  ///< 0: x, 1: y
  std::optional<std::size_t> side;  ///< 0: source, 1: destination
};

/// "northing", "y", "dest_x", "sourceY", "x2"; nothing for names that say nothing.
Meaning MeaningOf(const std::string& column) {
  static constexpr std::string_view kAxes[2][10] = {
      {"x", "e", "east", "easting", "lon", "long", "longitude", "col", "column", "pixel"},
      {"y", "n", "north", "northing", "lat", "latitude", "row", "line"}};
  static constexpr std::string_view kSides[2][3] = {{"source", "src", "from"}, {"destination", "dest", "dst"}};
  std::string name;
  for (const char c : Lower(column)) {
    if (c >= 'a' && c <= 'z') name += c;
  }
  Meaning meaning;
  for (std::size_t side = 0; side < 2; ++side) {
    for (const std::string_view word : kSides[side]) {
      if (meaning.side || !name.starts_with(word)) continue;
      meaning.side = side;
      name.erase(0, word.size());
    }
  }
  for (std::size_t axis = 0; axis < 2 && !name.empty(); ++axis) {
    if (std::find(std::begin(kAxes[axis]), std::end(kAxes[axis]), name) != std::end(kAxes[axis])) meaning.axis = axis;
  }
  return meaning;
}

/// Which column holds what.
struct Layout {
  std::array<std::size_t, kColumns> places{0, 1, 2, 3};  // source x and y, destination x and y
  std::optional<std::size_t> name, on;
  std::size_t columns = kColumns;
  bool ofQgis = false;

  /// The first column with one of the names.
  static std::optional<std::size_t> Find(const std::vector<std::string>& header,
                                         std::initializer_list<std::string_view> names) {
    for (std::size_t i = 0; i < header.size(); ++i) {
      if (std::find(names.begin(), names.end(), Lower(header[i])) != names.end()) return i;
    }
    return std::nullopt;
  }

  explicit Layout(const std::vector<std::string>& header)
      : on(Find(header, {"on", "enable", "enabled", "use"})), columns(header.size()) {
    const auto mapX = Find(header, {"mapx"}), mapY = Find(header, {"mapy"});
    const auto sourceX = Find(header, {"sourcex", "pixelx"}), sourceY = Find(header, {"sourcey", "pixely"});
    if (mapX && mapY && sourceX && sourceY) {
      places = {*sourceX, *sourceY, *mapX, *mapY};
      ofQgis = true;
      return;
    }
    name = Find(header, {"name", "id", "point", "label"});
    if (columns != kColumns + (name ? 1 : 0) + (on ? 1 : 0)) {
      if (columns >= kColumns) RefuseColumns();
      *this = {};  // a title
      return;
    }
    std::size_t next = 0;
    for (std::size_t i = 0; i < columns; ++i) {
      if (i != name && i != on) places[next++] = i;
    }
    OrderByNames(header);
  }
  Layout() = default;

  [[noreturn]] void RefuseColumns() const {
    throw Failure(
        "the header has " + std::to_string(columns) +
        " columns; controls have source x and y, destination x and y, and may have a name and on beside them");
  }

  /// Source before destination and x before y, unless the names say another order.
  void OrderByNames(const std::vector<std::string>& header) {
    std::array<Meaning, kColumns> meanings;
    std::transform(places.begin(), places.end(), meanings.begin(),
                   [&](std::size_t place) { return MeaningOf(header[place]); });
    const bool sides = std::all_of(meanings.begin(), meanings.end(), [](const Meaning& m) { return m.side; });
    std::array<std::optional<std::size_t>, kColumns> ordered;
    for (std::size_t i = 0; i < kColumns; ++i) {
      const bool axes = meanings[i].axis && meanings[i ^ 1].axis;  // of both columns of the pair
      const std::size_t side = sides ? *meanings[i].side : i / 2, axis = axes ? *meanings[i].axis : i % 2;
      std::optional<std::size_t>& place = ordered[2 * side + axis];
      if (place) throw Failure("the header does not tell source x and y, destination x and y apart");
      place = places[i];
    }
    std::transform(ordered.begin(), ordered.end(), places.begin(), [](const auto& place) { return *place; });
  }
};

/// A comma in a field between commas stood within quotes. A control may be a length on either side.
std::optional<double> ParseControl(const std::string& field, Commas commas) {
  const std::optional<std::string> plain = WithDecimalPoint(field, commas, true);
  return plain ? ParseAngle(*plain) : std::nullopt;
}

Row ParseRow(const Layout& layout, const std::vector<std::string>& fields, Commas commas) {
  Row row;
  if (fields.size() != layout.columns) {
    row.fault = "has " + std::to_string(fields.size()) + " columns instead of " + std::to_string(layout.columns);
    return row;
  }
  for (std::size_t i = 0; i < kColumns; ++i) {
    const std::optional<double> value = ParseControl(fields[layout.places[i]], commas);
    if (!value) {
      row.fault = "cannot read column " + std::to_string(layout.places[i] + 1);
      return row;
    }
    row.values[i] = *value;
  }
  return row;
}

/// Whether a point is on; nothing for a word that does not say it.
std::optional<bool> IsOn(const Layout& layout, const std::vector<std::string>& fields) {
  if (!layout.on || *layout.on >= fields.size()) return true;
  const std::string text = Lower(fields[*layout.on]);
  for (const std::string_view on : {"1", "yes", "y", "true", "on"}) {
    if (text == on) return true;
  }
  for (const std::string_view off : {"0", "no", "n", "false", "off"}) {
    if (text == off) return false;
  }
  return std::nullopt;
}

/// The lines of a table as unquoted fields.
class Reader {
 public:
  Reader(const std::string& file, std::string delimiter, bool decimalComma)
      : m_path(file), m_name(DisplayName(file)), m_delimiter(std::move(delimiter)), m_decimalComma(decimalComma) {
    if (file != "-") OpenInput(file, m_file);
    m_in = file == "-" ? &std::cin : &m_file;
  }

  /// The next line that carries something; false at the end.
  bool Next() {
    for (std::string line; std::getline(*m_in, line);) {
      ++m_number;
      TakeCarriageReturn(line);
      if (m_number == 1 && line.starts_with(kByteOrderMark)) line.erase(0, kByteOrderMark.size());
      if (IsIdle(line)) continue;
      if (!m_splitter) m_splitter.emplace(ChooseDelimiter(m_delimiter, line, m_decimalComma));
      closed = m_splitter->Split(line, m_places);
      fields.clear();
      for (const Field& place : m_places) fields.push_back(Unquoted(Text(line, place)));
      return true;
    }
    RequireEnd(m_path, *m_in);
    return false;
  }

  Commas CommasInFields() const { return CommasIn(m_decimalComma, m_splitter->Delimiter()); }
  std::string Place() const { return m_name + ":" + std::to_string(m_number); }

  std::vector<std::string> fields;
  bool closed = true;  ///< no quote was left open

 private:
  std::string m_path, m_name, m_delimiter;
  bool m_decimalComma;
  std::ifstream m_file;
  std::istream* m_in = nullptr;
  std::optional<Splitter> m_splitter;
  std::vector<Field> m_places;
  std::size_t m_number = 0;
};

}  // namespace

Controls ReadControls(const std::string& file, const std::string& delimiter, bool decimalComma) {
  Controls controls;
  Reader reader(file, delimiter, decimalComma);
  std::size_t faults = 0, number = 0;
  Layout layout;
  for (bool first = true; reader.Next(); first = false) {
    if (first && reader.closed && IsHeaderLine(reader.fields)) {
      layout = Layout(reader.fields);
      continue;
    }
    ++number;
    const std::optional<bool> on = IsOn(layout, reader.fields);
    if (reader.closed && on == false) continue;
    Row row = ParseRow(layout, reader.fields, reader.CommasInFields());
    if (!on) row.fault = "\"" + reader.fields[*layout.on] + "\" is neither on nor off: say yes or no, 1 or 0";
    if (!reader.closed) row.fault = "a quote is not closed";
    if (row.fault.empty()) {
      controls.source.push_back({row.values[0], row.values[1]});
      controls.destination.push_back({row.values[2], row.values[3]});
      controls.numbers.push_back(number);
      if (layout.name) controls.names.push_back(reader.fields[*layout.name]);
    } else {
      std::cerr << "orvex: " << reader.Place() << ": " << row.fault << "\n";
      ++faults;
    }
  }
  if (faults > 0) {
    throw Failure(DisplayName(file) + ": " + std::to_string(faults) +
                  " bad lines; each needs source x and y, destination x and y");
  }
  if (controls.source.empty()) throw Failure(DisplayName(file) + " holds no control points");
  controls.rowsUp = layout.ofQgis && std::all_of(controls.source.begin(), controls.source.end(),
                                                 [](const GEOREFPOINT& p) { return p.y <= 0; });
  return controls;
}

}  // namespace orvex::tool
