// LatLonText - latitudes and longitudes from and to degree-minute-second text, the same in every locale.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

#include "orvex/text.h"
#include "support/AngleText.h"
#include "support/CharConv.h"
#include "support/FpGuard.h"
#include "support/Log.h"

namespace orvex {

namespace detail {

double ParseLongNumber(const char* first, const char* last) {
  double value = 0;
  if (FromChars(first, last, value, std::chars_format::fixed).ec == std::errc::result_out_of_range) {
    const bool tooSmall = std::all_of(first, std::find(first, last, '.'), [](char c) { return c == '0'; });
    value = tooSmall ? 0 : std::numeric_limits<double>::infinity();
  }
  return value;
}

namespace {

constexpr std::size_t kTextCapacity = 260;

/// Appends to the caller's buffer, always terminated and never beyond its capacity.
class BoundedText {
 public:
  explicit BoundedText(char* text) : m_at(text), m_last(text + kTextCapacity - 1) { *m_at = '\0'; }

  void Append(std::string_view piece) {
    const auto length = std::min(piece.size(), static_cast<std::size_t>(m_last - m_at));
    m_at = std::copy_n(piece.data(), length, m_at);
    *m_at = '\0';
  }
  void Append(char c) {
    if (c != '\0') Append(std::string_view(&c, 1));
  }
  void AppendIf(bool condition, char c) {
    if (condition) Append(c);
  }
  /// As "%g" (general, precision 6) or "%.*f" (fixed), padded on the left with zeros.
  void AppendNumber(double value, std::chars_format format, int precision, std::size_t width) {
    char digits[352];  // DBL_MAX with 15 decimals takes 325
    const char* end = ToChars(digits, digits + sizeof digits, value, format, precision).ptr;
    const auto length = static_cast<std::size_t>(end - digits);
    for (std::size_t i = length; i < width; ++i) Append(std::isfinite(value) ? '0' : ' ');
    Append({digits, length});
  }
  void AppendWhole(double value, std::size_t width = 0) { AppendNumber(value, std::chars_format::general, 6, width); }

 private:
  char* m_at;
  char* m_last;
};

/// The whole part of a number that is not negative; what is infinite or no number stays. std::trunc is a call of the
/// runtime where neither the compiler nor the processor has a way of its own.
double WholePart(double v) {
  return v < 0x1p53 ? static_cast<double>(static_cast<std::int64_t>(v)) : v;
}

/// The fields of an angle that is not negative, with their separators.
void AppendFields(BoundedText& text, double v, int format, char degSep, char minSep, char secSep) {
  const int decimals = format & LLF_DECIMALS;
  const bool pad = (format & LLF_ZEROPAD) != 0, blanks = (format & LLF_BLANKS) != 0;
  const auto appendLast = [&](double value, bool padded) {
    text.AppendNumber(value, std::chars_format::fixed, decimals, padded ? static_cast<std::size_t>(decimals) + 3 : 0);
  };
  if ((format & LLF_DECIMALDEGREES) != 0) {
    appendLast(v, false);
    return;
  }
  const double degrees = WholePart(v), minutes = (v - degrees) * 60;
  text.AppendWhole(degrees);
  text.Append(degSep);
  text.AppendIf(blanks, ' ');
  if ((format & LLF_DECIMALMINUTES) != 0) {
    appendLast(minutes, pad);
    text.Append(minSep);
    return;
  }
  const double wholeMinutes = WholePart(minutes);
  text.AppendWhole(wholeMinutes, pad ? 2 : 0);
  text.Append(minSep);
  text.AppendIf(blanks, ' ');
  appendLast((minutes - wholeMinutes) * 60, pad);  // rounding is not carried: 60.00 may appear
  text.Append(secSep);
}

}  // namespace
}  // namespace detail

bool LatLonToDegrees(const char* text, double* degrees, char degreeChar) {
  const detail::FpGuard guard;
  detail::LogPrintf("LatLonToDegrees(text=\"%s\", degrees=%p, degreeChar=%d)\n", detail::LogText(text),
                    static_cast<void*>(degrees), degreeChar);
  return text != nullptr && degrees != nullptr && detail::ReadAngle(text, *degrees, degreeChar);
}

bool DegreesToLatLon(char* text, double degrees, int format, char degSep, char minSep, char secSep) {
  const detail::FpGuard guard;
  detail::LogPrintf("DegreesToLatLon(text=%p, degrees=%f, format=%d, degSep=%d, minSep=%d, secSep=%d)\n",
                    static_cast<void*>(text), degrees, format, degSep, minSep, secSep);
  if (text == nullptr) return false;
  detail::BoundedText out(text);
  const bool plus = (format & LLF_PLUSSIGN) != 0, column = (format & LLF_SIGNCOLUMN) != 0;
  if (plus && column) return false;
  const bool negative = degrees < 0;
  out.AppendIf(plus && !negative, '+');
  out.AppendIf((format & LLF_MINUSSIGN) != 0 && negative, '-');
  out.AppendIf(column && !negative, ' ');
  detail::AppendFields(out, std::fabs(degrees), format, degSep, minSep, secSep);
  if ((format & LLF_HEMISPHERE) != 0) {
    out.AppendIf((format & LLF_BLANKS) != 0, ' ');
    const bool latitude = (format & LLF_LATITUDE) != 0;
    out.Append(latitude ? (negative ? 'S' : 'N') : (negative ? 'W' : 'E'));
  }
  return true;
}

}  // namespace orvex
