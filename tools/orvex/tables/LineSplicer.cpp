// LineSplicer - a line of a table with results in the place of its coordinates, or behind them.
#include "tables/LineSplicer.h"

namespace orvex::tool {

void LineSplicer::Append(std::string& out, std::string_view line, const FieldPair& fields,
                         const std::array<std::string, 2>& results) const {
  if (m_keep) {
    out += line;
    for (const std::string& result : results) {
      out += m_delimiter;
      AppendValue(out, result);
    }
    return;
  }
  if (fields[0].begin == fields[1].begin) {
    out += line;
    return;
  }
  const std::size_t first = fields[0].begin < fields[1].begin ? 0 : 1, second = 1 - first;
  out += line.substr(0, fields[first].begin);
  AppendValue(out, results[first]);
  out += line.substr(fields[first].end, fields[second].begin - fields[first].end);
  AppendValue(out, results[second]);
  out += line.substr(fields[second].end);
}

void LineSplicer::AppendValue(std::string& out, const std::string& value) const {
  if (m_delimiter == ' ') {
    out += value.empty() ? "*" : value;  // an empty field would move the columns
  } else if (value.find('"') != std::string::npos || value.find(m_delimiter) != std::string::npos) {
    out += Quoted(value);
  } else {
    out += value;
  }
}

}  // namespace orvex::tool
