// CharConv - floating-point numbers from and to text, the same in every locale: std::from_chars and std::to_chars, also
// where the standard library has them for whole numbers only (older ones of LLVM, with which WebAssembly is built).
#pragma once

#include <charconv>
#include <system_error>

namespace orvex::detail {

#if defined(_LIBCPP_VERSION) && !defined(__cpp_lib_to_chars)

std::from_chars_result FromChars(const char* first, const char* last, double& value, std::chars_format format);
/// Formats fixed and general only.
std::to_chars_result ToChars(char* first, char* last, double value, std::chars_format format, int precision);

#else

inline std::from_chars_result FromChars(const char* first, const char* last, double& value, std::chars_format format) {
  return std::from_chars(first, last, value, format);
}

inline std::to_chars_result ToChars(char* first, char* last, double value, std::chars_format format, int precision) {
  return std::to_chars(first, last, value, format, precision);
}

#endif

}  // namespace orvex::detail
