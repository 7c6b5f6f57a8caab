// LineSplicer - a line of a table with results in the place of its coordinates, or behind them.
#include "tables/LineSplicer.h"

#include <algorithm>
#include <span>

namespace orvex::tool {

void LineSplicer::Append(std::string& out, std::string_view line, const PointFields& fields,
                         const LineResults& results) const {
  if (m_keep) {
    AppendAll(out, line, results);
    return;
  }
  if (fields[0].begin == fields[1].begin) {
    out += line;
    return;
  }
  if (m_in == Label::Alone) {
    out += line.substr(0, fields[0].begin);
    if (m_out == Label::Alone) {
      AppendValue(out, results.label);
    } else {
      AppendCoordinates(out, results);
    }
    out += line.substr(fields[0].end);
  } else if (m_out == Label::Alone) {
    ReplaceByLabel(out, line, fields, results);
  } else {
    ReplaceEach(out, line, fields, results);
  }
  if (m_out != Label::Beside || m_replacesLabel) return;
  out += m_delimiter;
  AppendValue(out, results.label);
}

void LineSplicer::AppendAll(std::string& out, std::string_view line, const LineResults& results) const {
  out += line;
  if (m_out != Label::Alone) {
    out += m_delimiter;
    AppendCoordinates(out, results);
  }
  if (m_out == Label::None) return;
  out += m_delimiter;
  AppendValue(out, results.label);
}

/// A label alone takes the place of the first field; the second one goes.
void LineSplicer::ReplaceByLabel(std::string& out, std::string_view line, const PointFields& fields,
                                 const LineResults& results) const {
  const auto [first, second] =
      std::minmax(fields[0], fields[1], [](const Field& a, const Field& b) { return a.begin < b.begin; });
  out += line.substr(0, first.begin);
  AppendValue(out, results.label);
  out += WithoutDelimiter(line.substr(first.end, second.begin - first.end));
  out += line.substr(second.end);
}

/// The fields by their results, in the order of the line. A label that could not be read has no field and stays.
void LineSplicer::ReplaceEach(std::string& out, std::string_view line, const PointFields& fields,
                              const LineResults& results) const {
  struct Replacement {
    Field field;
    const std::string* value;
  };
  Replacement all[] = {
      {fields[0], results.coordinates.data()}, {fields[1], &results.coordinates[1]}, {fields[2], &results.label}};
  const std::size_t count = m_replacesLabel && fields[2].begin < fields[2].end ? 3 : 2;
  const auto replacements = std::span(all).first(count);
  std::ranges::sort(replacements, {}, [](const Replacement& each) { return each.field.begin; });
  std::size_t written = 0;
  for (const auto& [field, value] : replacements) {
    out += line.substr(written, field.begin - written);
    AppendValue(out, *value);
    written = field.end;
  }
  out += line.substr(written);
}

/// The text without the delimiter at its end.
std::string_view LineSplicer::WithoutDelimiter(std::string_view text) const {
  if (m_delimiter != ' ') return text.substr(0, text.size() - 1);
  const std::size_t last = text.find_last_not_of(" \t");
  return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

void LineSplicer::AppendCoordinates(std::string& out, const LineResults& results) const {
  AppendValue(out, results.coordinates[0]);
  out += m_delimiter;
  AppendValue(out, results.coordinates[1]);
}

void LineSplicer::AppendValue(std::string& out, const std::string& value) const {
  if (m_delimiter == ' ') {
    const bool blanks = value.find(' ') != std::string::npos;
    out += value.empty() ? "*" : blanks ? Quoted(value) : value;  // an empty field would move the columns
  } else if (value.find('"') != std::string::npos || value.find(m_delimiter) != std::string::npos) {
    out += Quoted(value);
  } else {
    out += value;
  }
}

}  // namespace orvex::tool
