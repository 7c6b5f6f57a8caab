// Listing - rows printed as aligned columns or as CSV.
#include "commands/Listing.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <utility>

#include "commands/Names.h"
#include "tables/Fields.h"

namespace orvex::tool {

Listing::Listing(bool csv, const std::vector<std::string>& words, std::vector<Column> columns)
    : m_csv(csv), m_columns(std::move(columns)) {
  for (const std::string& text : words) {
    std::istringstream quoted(Lower(text));
    for (std::string word; quoted >> word;) m_words.push_back(word);
  }
  std::vector<std::string> names;
  for (const Column& column : m_columns) names.push_back(m_csv ? Lower(column.name) : column.name);
  Print(names);
}

void Listing::Add(const std::vector<std::string>& cells) const {
  std::string row;
  for (const std::string& cell : cells) row += Lower(cell) + " ";
  const auto holds = [&](const std::string& word) { return row.find(word) != std::string::npos; };
  if (std::all_of(m_words.begin(), m_words.end(), holds)) Print(cells);
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
