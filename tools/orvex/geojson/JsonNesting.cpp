// JsonNesting - how deep a JSON text nests.
#include "geojson/JsonNesting.h"

#include <cstddef>
#include <string>

#include "Failure.h"

namespace orvex::tool {

namespace {

constexpr std::size_t kDeepest = 500;

/// Where the string that begins at `quote` ends: at its closing quote, or at the end of the text.
std::size_t StringEnd(std::string_view text, std::size_t quote) {
  std::size_t at = quote + 1;
  while (at < text.size() && text[at] != '"') at += text[at] == '\\' ? 2U : 1U;
  return at;
}

}  // namespace

void RefuseDeepNesting(std::string_view text) {
  std::size_t depth = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (c == '"') {
      at = StringEnd(text, at);
    } else if (c == '[' || c == '{') {
      if (++depth > kDeepest) {
        throw Failure("arrays and objects nest more than " + std::to_string(kDeepest) + " deep");
      }
    } else if ((c == ']' || c == '}') && depth > 0) {
      --depth;
    }
  }
}

}  // namespace orvex::tool
