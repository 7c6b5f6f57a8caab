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

  explicit Layout(const std::vector<std::string>& header) : columns(header.size()) {
    on = Find(header, {"on", "enable", "enabled", "use"});
    const auto mapX = Find(header, {"mapx"}), mapY = Find(header, {"mapy"});
    const auto sourceX = Find(header, {"sourcex", "pixelx"}), sourceY = Find(header, {"sourcey", "pixely"});
    if (mapX && mapY && sourceX && sourceY) {
      places = {*sourceX, *sourceY, *mapX, *mapY};
      ofQgis = true;
      return;
    }
    name = Find(header, {"name", "id", "point", "label"});
    std::size_t next = 0;
    for (std::size_t i = 0; i < header.size() && next < kColumns; ++i) {
      if (i != name && i != on) places[next++] = i;
    }
    if (header.size() != kColumns + (name ? 1 : 0) + (on ? 1 : 0)) columns = kColumns;  // said for every line
  }
  Layout() = default;
};

Row ParseRow(const Layout& layout, const std::vector<std::string>& fields) {
  Row row;
  if (fields.size() != layout.columns) {
    row.fault = "has " + std::to_string(fields.size()) + " columns instead of " + std::to_string(layout.columns);
    return row;
  }
  for (std::size_t i = 0; i < kColumns; ++i) {
    const std::optional<double> value = ParseAngle(fields[layout.places[i]]);
    if (!value) {
      row.fault = "cannot read column " + std::to_string(layout.places[i] + 1);
      return row;
    }
    row.values[i] = *value;
  }
  return row;
}

bool IsOff(const Layout& layout, const std::vector<std::string>& fields) {
  if (!layout.on || *layout.on >= fields.size()) return false;
  const std::string text = Lower(fields[*layout.on]);
  return text == "0" || text == "no" || text == "off" || text == "false";
}

/// The lines of a table as unquoted fields.
class Reader {
 public:
  Reader(const std::string& file, std::string delimiter)
      : m_path(file), m_name(DisplayName(file)), m_delimiter(std::move(delimiter)) {
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
      if (!m_splitter) m_splitter.emplace(ChooseDelimiter(m_delimiter, line));
      closed = m_splitter->Split(line, m_places);
      fields.clear();
      for (const Field& place : m_places) fields.push_back(Unquoted(Text(line, place)));
      return true;
    }
    RequireEnd(m_path, *m_in);
    return false;
  }

  std::string Place() const { return m_name + ":" + std::to_string(m_number); }

  std::vector<std::string> fields;
  bool closed = true;  ///< no quote was left open

 private:
  std::string m_path, m_name, m_delimiter;
  std::ifstream m_file;
  std::istream* m_in = nullptr;
  std::optional<Splitter> m_splitter;
  std::vector<Field> m_places;
  std::size_t m_number = 0;
};

}  // namespace

Controls ReadControls(const std::string& file, const std::string& delimiter) {
  Controls controls;
  Reader reader(file, delimiter);
  std::size_t faults = 0, number = 0;
  Layout layout;
  for (bool first = true; reader.Next(); first = false) {
    if (first && reader.closed && IsHeaderLine(reader.fields)) {
      layout = Layout(reader.fields);
      continue;
    }
    ++number;
    if (reader.closed && IsOff(layout, reader.fields)) continue;
    Row row = ParseRow(layout, reader.fields);
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
