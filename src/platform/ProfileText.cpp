// ProfileText - the text of INI files: lines, sections and entries.
#include "platform/ProfileText.h"

#include <algorithm>
#include <optional>

#include "platform/LetterCase.h"

namespace orvex::platform {

namespace {

std::string_view Trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\v\f";
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == text.npos ? std::string_view() : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view Content(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  return Trim(line.substr(0, line.find('\0')));
}

std::optional<std::string_view> HeaderName(std::string_view line) {
  const std::string_view content = Content(line);
  const std::size_t close = content.find(']');
  if (!content.starts_with('[') || close == content.npos) return std::nullopt;
  return content.substr(1, close - 1);
}

}  // namespace

std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
  text.remove_prefix(line.size());
  return line;
}

std::string Entry(std::string_view line) {
  const std::string_view content = Content(line);
  if (content.empty() || content.front() == ';') return {};
  const std::size_t equals = content.find('=');
  if (equals == content.npos) return std::string(content);
  return std::string(Trim(content.substr(0, equals))) + '=' + std::string(Trim(content.substr(equals + 1)));
}

std::string_view KeyOf(std::string_view entry) {
  return entry.substr(0, entry.find('='));
}

Parts Split(std::string_view text, std::string_view section) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  std::string_view rest = text;
  if (rest.starts_with(kByteOrderMark)) rest.remove_prefix(kByteOrderMark.size());
  const auto position = [&] { return text.size() - rest.size(); };
  bool found = false;
  while (!rest.empty() && !found) {
    const auto name = HeaderName(TakeLine(rest));
    found = name && EqualIgnoringCase(*name, section);
  }
  const std::size_t begin = position();
  std::size_t end = begin;
  while (!rest.empty()) {
    if (HeaderName(TakeLine(rest))) break;
    end = position();
  }
  return {text.substr(0, begin), text.substr(begin, end - begin), text.substr(end), found};
}

}  // namespace orvex::platform
