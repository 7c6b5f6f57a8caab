// Text - small helpers for texts.
#pragma once

#include <cstddef>
#include <cstdio>

#include "platform/LetterCase.h"

namespace orvex::detail {

using platform::EqualIgnoringCase;
using platform::LowerAscii;

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
