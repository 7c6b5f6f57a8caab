// MapText - text in the picture.
#include "maps/MapText.h"

#include <algorithm>

namespace orvex::tool {

namespace {

/// Length of the UTF-8 sequence at the start of the text; 0 when it is none.
std::size_t SequenceLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  }
  return length;
}

/// Width of a character by its first byte, in units of the size: a wide sans-serif font's, rounded up.
double CharacterWidth(std::string_view character) {
  const char c = character[0];
  if (character.size() >= 3) return 1;  // East Asian scripts
  if (character.size() == 2) return 0.68;
  if (std::string_view("ijl.,:;'|!").find(c) != std::string_view::npos) return 0.34;
  if (std::string_view("ft r()[]/-\"").find(c) != std::string_view::npos) return 0.42;
  if (std::string_view("mwMW@%").find(c) != std::string_view::npos) return 1;
  return c >= 'A' && c <= 'Z' ? 0.72 : 0.64;
}

std::string_view FirstCharacter(std::string_view text) {
  return text.substr(0, std::max<std::size_t>(SequenceLength(text), 1));
}

/// As many characters from the start as the width takes, one at least.
std::string_view Fitting(std::string_view text, double size, double width) {
  std::size_t length = 0;
  while (length < text.size()) {
    const std::size_t next = length + FirstCharacter(text.substr(length)).size();
    if (length > 0 && TextWidth(text.substr(0, next), size) > width) break;
    length = next;
  }
  return text.substr(0, length);
}

}  // namespace

std::string EscapedXml(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t length = SequenceLength(text);
    const char c = text[0];
    if (length == 0)
      out += '?';
    else if (c == '&')
      out += "&amp;";
    else if (c == '<')
      out += "&lt;";
    else if (c == '>')
      out += "&gt;";
    else if (c == '"')
      out += "&quot;";
    else if (length == 1 && static_cast<unsigned char>(c) < ' ')
      out += ' ';
    else
      out += text.substr(0, length);
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return out;
}

double TextWidth(std::string_view text, double size) {
  double width = 0;
  while (!text.empty()) {
    const std::string_view character = FirstCharacter(text);
    width += CharacterWidth(character) * size;
    text.remove_prefix(character.size());
  }
  return width;
}

std::vector<std::string> Wrapped(std::string_view text, double size, double width) {
  std::vector<std::string> lines;
  std::string line;
  const auto finish = [&] {
    if (!line.empty()) lines.push_back(std::move(line));
    line.clear();
  };
  while (!text.empty()) {
    std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(word.size() + 1, text.size()));
    if (!line.empty() && TextWidth(line + " " + std::string(word), size) > width) finish();
    while (TextWidth(word, size) > width) {
      const std::string_view part = Fitting(word, size, width);
      if (part.size() == word.size()) break;
      line = part;
      finish();
      word.remove_prefix(part.size());
    }
    if (!line.empty()) line += ' ';
    line += word;
  }
  finish();
  return lines;
}

}  // namespace orvex::tool
