// Fields - one line of a text table taken apart into its fields, which keep their places in the line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::tool {

/// Place of one field in its line, quotes and blanks included.
struct Field {
  std::size_t begin = 0, end = 0;
};

inline std::string_view Text(std::string_view line, const Field& field) {
  return line.substr(field.begin, field.end - field.begin);
}

/// Splits lines by one delimiter. ' ' stands for runs of blanks and tabs. Double quotes keep a field together.
class Splitter {
 public:
  explicit Splitter(char delimiter) : m_delimiter(delimiter) {}
  char Delimiter() const { return m_delimiter; }

  /// False for a quote that is not closed.
  bool Split(std::string_view line, std::vector<Field>& fields) const;

 private:
  bool SplitBlanks(std::string_view line, std::vector<Field>& fields) const;
  bool SplitDelimited(std::string_view line, std::vector<Field>& fields) const;

  char m_delimiter;
};

/// The field without its quotes, doubled quotes made single.
std::string Unquoted(std::string_view field);
/// The same text within quotes.
std::string Quoted(std::string_view text);

/// "tab", "blank" or one character; "" asks for a guess by the line, in which a decimal comma delimits nothing. Throws
/// Failure for anything else.
char ChooseDelimiter(const std::string& option, std::string_view line, bool decimalComma = false);

/// True for a field that does not start like a number.
bool LooksLikeName(std::string_view field);

/// True when every field of a first line that holds anything looks like a name.
bool IsHeaderLine(const std::vector<std::string>& fields);

/// True when a field is an angle, also one with a letter in front like a name: E013.5.
bool HoldsAngle(const std::vector<std::string>& fields);

/// True for lines that carry nothing: blank ones and comments, which start with '#'.
bool IsIdle(std::string_view line);

/// Takes the line end that a file from elsewhere may carry off the line; true when there was one.
bool TakeCarriageReturn(std::string& line);

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace orvex::tool
