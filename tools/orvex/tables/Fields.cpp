// Fields - one line of a text table taken apart into its fields.
#include "tables/Fields.h"

#include <algorithm>

#include "Failure.h"
#include "tables/Coordinate.h"

namespace orvex::tool {

namespace {

/// Follows a line of delimited fields: what is within quotes. A quote opens a field only at its start: 45d30'15" is a
/// number with a seconds sign. In a field that begins with one, every quote counts, so that doubled ones cancel out.
class Quotes {
 public:
  bool Open() const { return m_open; }

  void Take(char c) {
    if (c == '"' && (m_quoted || !m_started)) {
      m_quoted = true;
      m_open = !m_open;
    }
    m_started = m_started || c != ' ';
  }
  void NextField() { *this = {}; }

 private:
  bool m_started = false, m_quoted = false, m_open = false;
};

/// The delimiter that occurs most often outside quotes; blanks when there is none.
char GuessDelimiter(std::string_view line, bool decimalComma) {
  constexpr std::string_view kCandidates = ",;\t|";
  std::size_t counts[kCandidates.size()]{};
  Quotes quotes;  // as if every candidate delimited
  for (const char c : line) {
    const std::size_t candidate = kCandidates.find(c);
    if (candidate != std::string_view::npos && !quotes.Open()) {
      ++counts[candidate];
      quotes.NextField();
    } else {
      quotes.Take(c);
    }
  }
  if (decimalComma) counts[0] = 0;
  const auto* const most = std::max_element(std::begin(counts), std::end(counts));
  return *most == 0 ? ' ' : kCandidates[static_cast<std::size_t>(most - counts)];
}

/// The end of a blank-separated field. Quotes keep blanks together when the closing one ends the field; any other quote
/// is a sign of seconds or a part of some text.
std::size_t BlankFieldEnd(std::string_view line, std::size_t begin) {
  if (line[begin] == '"') {
    for (std::size_t at = line.find('"', begin + 1); at != std::string_view::npos; at = line.find('"', at + 1)) {
      if (at + 1 == line.size() || line[at + 1] == ' ' || line[at + 1] == '\t') return at + 1;
    }
  }
  return std::min(line.find_first_of(" \t", begin), line.size());
}

}  // namespace

bool Splitter::Split(std::string_view line, std::vector<Field>& fields) const {
  fields.clear();
  return m_delimiter == ' ' ? SplitBlanks(line, fields) : SplitDelimited(line, fields);
}

bool Splitter::SplitBlanks(std::string_view line, std::vector<Field>& fields) const {
  for (std::size_t begin = line.find_first_not_of(" \t"); begin != std::string_view::npos;) {
    const std::size_t end = BlankFieldEnd(line, begin);
    fields.push_back({begin, end});
    begin = line.find_first_not_of(" \t", end);
  }
  return true;
}

bool Splitter::SplitDelimited(std::string_view line, std::vector<Field>& fields) const {
  std::size_t begin = 0;
  Quotes quotes;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == m_delimiter && !quotes.Open()) {
      fields.push_back({begin, i});
      begin = i + 1;
      quotes.NextField();
    } else {
      quotes.Take(line[i]);
    }
  }
  fields.push_back({begin, line.size()});
  return !quotes.Open();
}

std::string Unquoted(std::string_view field) {
  const std::size_t first = field.find_first_not_of(' '), last = field.find_last_not_of(' ');
  if (first == std::string_view::npos || field[first] != '"' || field[last] != '"' || first == last) {
    return std::string(field);
  }
  std::string text;
  for (std::size_t i = first + 1; i < last; ++i) {
    text += field[i];
    if (field[i] == '"' && field[i + 1] == '"') ++i;
  }
  return text;
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + "\"";
}

char ChooseDelimiter(const std::string& option, std::string_view line, bool decimalComma) {
  if (option.empty()) return GuessDelimiter(line, decimalComma);
  if (option == "tab") return '\t';
  if (option == "blank") return ' ';
  if (option.size() == 1 && option != "\"") return option[0];
  throw Failure("the delimiter must be one character, tab or blank");
}

bool LooksLikeName(std::string_view field) {
  const std::size_t first = field.find_first_not_of(" \t\"");
  return first != std::string_view::npos && std::string_view("0123456789+-.*").find(field[first]) == std::string::npos;
}

bool IsHeaderLine(const std::vector<std::string>& fields) {
  bool any = false;
  for (const std::string& field : fields) {
    if (field.find_first_not_of(" \t") == std::string::npos) continue;
    if (!LooksLikeName(field)) return false;
    any = true;
  }
  return any;
}

bool HoldsAngle(const std::vector<std::string>& fields) {
  return std::any_of(fields.begin(), fields.end(),
                     [](const std::string& field) { return ParseAngle(field) || HasSignAndLetter(field); });
}

bool IsIdle(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t");
  return first == std::string_view::npos || line[first] == '#';
}

bool TakeCarriageReturn(std::string& line) {
  if (line.empty() || line.back() != '\r') return false;
  line.pop_back();
  return true;
}

}  // namespace orvex::tool
