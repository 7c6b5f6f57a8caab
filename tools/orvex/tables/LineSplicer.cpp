// LineSplicer - a line of a table with results in the place of its coordinates, or behind them.
#include "tables/LineSplicer.h"

namespace orvex::tool {

void LineSplicer::Append(std::string& out, std::string_view line, const FieldPair& fields,
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
  } else {
    ReplacePair(out, line, fields, results);
  }
  if (m_out != Label::Beside) return;
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
void LineSplicer::ReplacePair(std::string& out, std::string_view line, const FieldPair& fields,
                              const LineResults& results) const {
  const std::size_t first = fields[0].begin < fields[1].begin ? 0 : 1, second = 1 - first;
  const bool alone = m_out == Label::Alone;
  const std::string_view between = line.substr(fields[first].end, fields[second].begin - fields[first].end);
  out += line.substr(0, fields[first].begin);
  AppendValue(out, alone ? results.label : results.coordinates[first]);
  out += alone ? WithoutDelimiter(between) : between;
  if (!alone) AppendValue(out, results.coordinates[second]);
  out += line.substr(fields[second].end);
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
