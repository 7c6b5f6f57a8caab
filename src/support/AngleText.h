// AngleText - reads degree-minute-second text; at compile time as well, so that tables keep their angles as printed.
#pragma once

#include <cstdint>
#include <iterator>

#include "support/Text.h"

namespace orvex::detail {

/// Powers of ten that a double holds exactly.
inline constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                          1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// The number between two positions, for more digits than a double holds exactly.
double ParseLongNumber(const char* first, const char* last);

/// Reads digits with an optional fraction, whatever the locale, and moves past them. False, nothing moved, without a
/// digit.
constexpr bool ReadNumber(const char*& at, double& value) {
  constexpr std::uint64_t kRoomForOneMore = (std::uint64_t{1} << 53) / 10;
  std::uint64_t mantissa = 0;
  std::size_t decimals = 0;
  bool anyDigit = false, exact = true, inFraction = false;
  const char* p = at;
  for (; IsDigit(*p) || (*p == '.' && !inFraction); ++p) {
    if (*p == '.') {
      inFraction = true;
      continue;
    }
    anyDigit = true;
    decimals += inFraction ? 1 : 0;
    exact = exact && mantissa < kRoomForOneMore && decimals < std::size(kPowersOfTen);
    if (exact) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p - '0');
  }
  if (!anyDigit) return false;
  // Both operands are exact, so that the one division rounds correctly.
  value = exact ? static_cast<double>(mantissa) / kPowersOfTen[decimals] : ParseLongNumber(at, p);
  at = p;
  return true;
}

constexpr void SkipBlanks(const char*& at) {
  while (IsBlank(*at)) ++at;
}

constexpr void SkipOneBlank(const char*& at) {
  if (*at == ' ') ++at;
}

/// Reads what may follow the degree separator: minutes, and after their marker seconds.
constexpr void ReadMinutesAndSeconds(const char*& at, double& degrees) {
  double number = 0;
  SkipOneBlank(at);
  if (!ReadNumber(at, number)) return;
  degrees += number / 60;
  if (*at != '\'' && LowerAscii(*at) != 'm') return;  // minutes count without their marker, but end the angle
  ++at;
  SkipOneBlank(at);
  if (!ReadNumber(at, number)) return;
  degrees += number / 3600;
  if (*at == '"' || LowerAscii(*at) == 's') ++at;  // never a hemisphere: "10d5'3s" is north
}

/// The grammar of LatLonToDegrees. `degreeChar` is accepted besides 'd'; 0 accepts none.
constexpr bool ReadAngle(const char* at, double& degrees, char degreeChar) {
  SkipBlanks(at);
  bool negative = *at == '-';
  if (*at == '+' || *at == '-') ++at;
  if (!ReadNumber(at, degrees)) return false;
  const char separator = LowerAscii(*at);
  if (separator == 'd' || (separator != '\0' && separator == LowerAscii(degreeChar))) {
    ++at;
    ReadMinutesAndSeconds(at, degrees);
  }
  SkipOneBlank(at);
  const char hemisphere = LowerAscii(*at);
  if (hemisphere == 's' || hemisphere == 'w') negative = true;
  if (hemisphere == 'n' || hemisphere == 'e' || hemisphere == 's' || hemisphere == 'w') ++at;
  SkipBlanks(at);
  if (*at != '\0') return false;
  if (negative) degrees = -degrees;
  return true;
}

}  // namespace orvex::detail
