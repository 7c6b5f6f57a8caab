// Listing - rows printed as aligned columns or as CSV.
#pragma once

#include <string>
#include <vector>

namespace orvex::tool {

struct Column {
  const char* name;
  int width;  ///< negative: to the left
};

/// Prints its rows as they come; of those without the words that are looked for, and that are not known by them as a
/// short name of their kind, nothing. Where nothing is left, it says so in the end.
class Listing {
 public:
  Listing(bool csv, const std::vector<std::string>& words, std::vector<Column> columns, const char* kind = "");
  ~Listing();
  Listing(const Listing&) = delete;
  Listing& operator=(const Listing&) = delete;

  void Add(const std::vector<std::string>& cells);

 private:
  void Print(const std::vector<std::string>& cells) const;

  bool m_csv;
  std::vector<Column> m_columns;
  std::vector<std::string> m_words;
  std::string m_kind, m_text;
  bool m_empty = true;
};

}  // namespace orvex::tool
