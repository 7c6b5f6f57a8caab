// Listing - rows printed as aligned columns or as CSV.
#include "commands/Listing.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <utility>

#include "Failure.h"
#include "commands/Names.h"
#include "tables/Fields.h"

namespace orvex::tool {

Listing::Listing(bool csv, const std::vector<std::string>& words, std::vector<Column> columns, const char* kind)
    : m_csv(csv), m_columns(std::move(columns)), m_kind(kind) {
  for (const std::string& text : words) {
    m_text += text;
    std::istringstream quoted(Lower(text));
    for (std::string word; quoted >> word;) m_words.push_back(word);
  }
  std::vector<std::string> names;
  for (const Column& column : m_columns) names.push_back(m_csv ? Lower(column.name) : column.name);
  Print(names);
}

Listing::~Listing() {
  if (m_empty && !m_words.empty()) Warn("nothing has all of these words");
}

void Listing::Add(const std::vector<std::string>& cells) {
  std::string row;
  for (const std::string& cell : cells) row += Lower(cell) + " ";
  const auto holds = [&](const std::string& word) { return row.find(word) != std::string::npos; };
  const auto isShort = [&](const std::string& cell) { return IsShortFor(m_text, cell, m_kind); };
  if (!std::all_of(m_words.begin(), m_words.end(), holds) && std::none_of(cells.begin(), cells.end(), isShort)) return;
  m_empty = false;
  Print(cells);
}

void Listing::Print(const std::vector<std::string>& cells) const {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const bool last = i + 1 == cells.size();
    if (m_csv) {
      const bool quote = cells[i].find_first_of(",\"") != std::string::npos;
      std::printf("%s%s", quote ? Quoted(cells[i]).c_str() : cells[i].c_str(), last ? "\n" : ",");
    } else if (last) {
      std::printf("%s\n", cells[i].c_str());
    } else {
      std::printf("%*s  ", m_columns[i].width, cells[i].c_str());
    }
  }
}

}  // namespace orvex::tool
