// Text - small helpers for NUL-terminated texts.
#pragma once

#include <cstddef>
#include <cstdio>

namespace orvex::detail {

constexpr char LowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whole-text comparison with ASCII case folding, whatever the locale.
constexpr bool EqualIgnoringCase(const char* a, const char* b) {
  for (; *a != '\0' && LowerAscii(*a) == LowerAscii(*b); ++a, ++b) {
  }
  return LowerAscii(*a) == LowerAscii(*b);
}

/// Copies a text with its terminator into a buffer of the given capacity, cut when it does not fit.
inline void CopyText(char* target, const char* text, std::size_t capacity) {
  std::snprintf(target, capacity, "%s", text);
}

constexpr bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace orvex::detail
