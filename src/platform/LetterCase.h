// LetterCase - comparison without regard to ASCII case, whatever the locale; at the bottom because INI files need it
// too.
#pragma once

#include <algorithm>
#include <string_view>

namespace orvex::platform {

constexpr char LowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

}  // namespace orvex::platform
