// CharConv - floating-point numbers from and to text by way of a C library that has no locale but "C" and rounds
// correctly (musl).
#include "support/CharConv.h"

#if defined(_LIBCPP_VERSION) && !defined(__cpp_lib_to_chars)

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace orvex::detail {

std::from_chars_result FromChars(const char* first, const char* last, double& value, std::chars_format format) {
  constexpr std::string_view kSpaceOrPlus = " \t\n\v\f\r+";  // strtod takes them
  const std::string_view text(first, static_cast<std::size_t>(last - first));
  const std::from_chars_result none{first, std::errc::invalid_argument};
  if (text.empty() || kSpaceOrPlus.find(text.front()) != std::string_view::npos) return none;
  std::string number(format == std::chars_format::fixed ? text.substr(0, text.find_first_of("eE")) : text);
  const bool hex = format == std::chars_format::hex;
  const std::size_t sign = number.front() == '-' ? 1 : 0, prefix = hex ? 2 : 0;
  if (hex) {
    number.insert(sign, "0x");
  } else if (number.compare(sign, 1, "0") == 0 && number.size() > sign + 1 && (number[sign + 1] | 32) == 'x') {
    number.resize(sign + 1);  // the zero before an x
  }
  char* end = nullptr;
  const double read = std::strtod(number.c_str(), &end);
  const auto length = static_cast<std::size_t>(end - number.c_str());
  if (length <= sign + prefix) return none;
  const char* const rest = first + (length - prefix);
  const std::string_view digits = std::string_view(number).substr(0, length);
  const bool infinite =
      std::isinf(read) && digits.find_first_of("nN") == std::string_view::npos;  // "inf" is no overflow
  const std::size_t exponent = digits.find_first_of(hex ? "pP" : "eE");
  const bool vanished = read == 0 && digits.substr(prefix, exponent - prefix).find_first_of("123456789abcdefABCDEF") !=
                                         std::string_view::npos;
  if (infinite || vanished) return {rest, std::errc::result_out_of_range};
  value = read;
  return {rest, std::errc{}};
}

std::to_chars_result ToChars(char* first, char* last, double value, std::chars_format format, int precision) {
  const auto room = static_cast<std::size_t>(last - first);
  const int length = std::snprintf(first, room, format == std::chars_format::fixed ? "%.*f" : "%.*g", precision, value);
  if (length < 0 || static_cast<std::size_t>(length) >= room) return {last, std::errc::value_too_large};
  return {first + length, std::errc{}};
}

}  // namespace orvex::detail

#endif
