// Listing - rows printed as aligned columns or as CSV.
#pragma once

#include <string>
#include <vector>

namespace orvex::tool {

struct Column {
  const char* name;
  int width;  ///< negative: to the left
};

/// Prints its rows as they come; of those without the words that are looked for nothing.
class Listing {
 public:
  Listing(bool csv, const std::vector<std::string>& words, std::vector<Column> columns);
  void Add(const std::vector<std::string>& cells) const;

 private:
  void Print(const std::vector<std::string>& cells) const;

  bool m_csv;
  std::vector<Column> m_columns;
  std::vector<std::string> m_words;
};

}  // namespace orvex::tool
