// Coordinate - numbers and angles as text.
#include "tables/Coordinate.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include <orvex/text.h>

namespace orvex::tool {

namespace {

std::string_view Trimmed(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

void ReplaceAll(std::string& text, std::string_view what, char by) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
    text.replace(at, what.size(), 1, by);
  }
}

/// The angle rounded to its seconds' decimals, so that none is written as 59'60". A hundredth of the last place is
/// added because the quotient may lie an ulp below a full minute.
double CarriedToSeconds(double degrees, int decimals) {
  const double units = std::abs(degrees) * 3600 * std::pow(10.0, decimals);
  constexpr double kExact = 1e13;  // beyond it doubles cannot tell the hundredths
  if (!(units < kExact)) return degrees;
  return std::copysign((std::round(units) + 0.01) / (3600 * std::pow(10.0, decimals)), degrees);
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
  text = Trimmed(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double value = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || rest != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<double> ParseAngle(std::string_view text) {
  if (const auto number = ParseNumber(text)) return number;
  constexpr std::size_t kLongestAngle = 100;
  text = Trimmed(text);
  if (text.empty() || text.size() > kLongestAngle || text.find('\0') != std::string_view::npos) return std::nullopt;
  std::string plain(text);
  ReplaceAll(plain, "\xC2\xB0", 'd');       // degree sign
  ReplaceAll(plain, "\xE2\x80\xB2", '\'');  // prime
  ReplaceAll(plain, "\xE2\x80\xB3", '"');   // double prime
  double degrees = 0;
  if (!LatLonToDegrees(plain.c_str(), &degrees, 0) || !std::isfinite(degrees)) return std::nullopt;
  return degrees;
}

void AppendCoordinate(std::string& out, double value, Kind kind, bool isLatitude, const Format& format) {
  const bool geographic = kind == Kind::Geographic;
  if (geographic && format.dms) {
    char text[260];
    const int decimals = format.decimals < 0 ? 4 : std::min(format.decimals, 15);
    DegreesToLatLon(text, CarriedToSeconds(value, decimals),
                    LLF_HEMISPHERE | LLF_ZEROPAD | (isLatitude ? LLF_LATITUDE : 0) | decimals, 'd', '\'', '"');
    out += text;
    return;
  }
  char text[400];  // the largest double has 309 digits
  const int decimals = format.decimals < 0 ? (geographic ? 9 : 4) : format.decimals;
  const auto [end, error] = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
  if (error != std::errc{}) return;
  const std::string_view written(text, static_cast<std::size_t>(end - text));
  const bool negativeZero = written.front() == '-' && written.find_first_not_of("-0.") == std::string_view::npos;
  out += negativeZero ? written.substr(1) : written;
}

}  // namespace orvex::tool
