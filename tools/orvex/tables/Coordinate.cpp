// Coordinate - numbers and angles as text.
#include "tables/Coordinate.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <sstream>

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

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// One to three digits that begin no fraction, a comma and three more.
bool MayPartThousands(std::string_view number) {
  if (number.starts_with('-') || number.starts_with('+')) number.remove_prefix(1);
  const std::size_t comma = number.find(',');
  return comma <= 3 && number.size() == comma + 4 && !number.starts_with('0');
}

/// Takes an angle's text apart.
class AngleScanner {
 public:
  explicit AngleScanner(std::string_view text) : m_text(text) {}

  std::optional<Angle> Scan(Blanks blanks) {
    Angle angle;
    const bool lettered = TakeHemisphere(angle);
    const bool negative = Next() == '-', hasSign = negative || Next() == '+';
    if (hasSign) m_text.remove_prefix(1);
    if (!TakeFields(angle.degrees)) return std::nullopt;
    SkipBlanks();
    if (!lettered) TakeHemisphere(angle);
    SkipBlanks();
    if (!m_text.empty() || (m_blanks && blanks == Blanks::WithLetterOnly && angle.hemisphere == 0)) return std::nullopt;
    if (hasSign && angle.hemisphere != 0) return std::nullopt;  // nobody can tell whether -13W lies in the east
    if (negative || angle.hemisphere == 'S' || angle.hemisphere == 'W') angle.degrees = -angle.degrees;
    return angle;
  }

 private:
  char Next() const { return m_text.empty() ? '\0' : m_text.front(); }

  bool SkipBlanks() {
    const std::size_t blanks = std::min(m_text.find_first_not_of(' '), m_text.size());
    m_text.remove_prefix(blanks);
    return blanks > 0;
  }

  bool TakeHemisphere(Angle& angle) {
    constexpr std::string_view kLetters = "NSEWnsew", kUpper = "NSEWNSEW";
    const std::size_t letter = m_text.empty() ? std::string_view::npos : kLetters.find(Next());
    if (letter == std::string_view::npos) return false;
    angle.hemisphere = kUpper[letter];
    m_text.remove_prefix(1);
    SkipBlanks();
    return true;
  }

  /// Up to three numbers; all but the last are whole, all but the first below 60.
  bool TakeFields(double& degrees) {
    constexpr double kParts[] = {1, 60, 3600};
    degrees = 0;
    for (std::size_t field = 0; field < 3; ++field) {
      double value = 0;
      bool whole = false;
      if (!TakeNumber(value, whole) || (field > 0 && value >= 60)) return false;
      degrees += value / kParts[field];
      if (!TakeSeparator(field)) return true;
      if (!IsDigit(Next()) && Next() != '.') return true;
      if (!whole) return false;
    }
    return true;
  }

  bool TakeNumber(double& value, bool& whole) {
    const std::size_t length = std::min(m_text.find_first_not_of("0123456789."), m_text.size());
    const std::string_view digits = m_text.substr(0, length);
    whole = digits.find('.') == std::string_view::npos;
    m_text.remove_prefix(length);
    const auto [rest, error] = std::from_chars(digits.data(), digits.data() + length, value, std::chars_format::fixed);
    return error == std::errc{} && rest == digits.data() + length;
  }

  /// What stands behind a number of the angle; false at its end.
  bool TakeSeparator(std::size_t field) {
    constexpr std::string_view kSeparators[] = {"dD:", "'mM:", "\""};
    if (m_text.empty()) return false;
    // An s ends the seconds where m ended the minutes; elsewhere it is the south.
    const bool letterS = field == 2 && ((Next() == 's' && m_minutes == 'm') || (Next() == 'S' && m_minutes == 'M'));
    if (letterS || kSeparators[field].find(Next()) != std::string_view::npos) {
      if (field == 1) m_minutes = Next();
      m_text.remove_prefix(1);
      SkipBlanks();
      return true;
    }
    if (!SkipBlanks() || !IsDigit(Next())) return false;
    m_blanks = true;
    return true;
  }

  std::string_view m_text;
  char m_minutes = 0;     // what ended the minutes
  bool m_blanks = false;  // blanks alone kept two numbers apart
};

constexpr int kMostDmsDecimals = 15;

void AppendTwoDigits(std::string& out, int number) {
  out += static_cast<char>('0' + number / 10);
  out += static_cast<char>('0' + number % 10);
}

/// 13d24'36.00"E: minutes and seconds of two digits, seconds that round to sixty carried.
void AppendSexagesimal(std::string& out, double value, bool isLatitude, int decimals) {
  const double degrees = std::abs(value), whole = std::floor(degrees), rest = (degrees - whole) * 60;
  int minutes = static_cast<int>(rest);
  char text[40];
  const auto write = [&](double seconds) {
    return std::to_chars(text, text + sizeof text, seconds, std::chars_format::fixed, decimals).ptr;
  };
  const char* end = write((rest - minutes) * 60);
  if (text[0] == '6' && text[1] == '0') {
    end = write(0);
    ++minutes;
  }
  const double carried = minutes == 60 ? whole + 1 : whole;
  if (minutes == 60) minutes = 0;
  out += std::to_string(static_cast<long long>(carried)) + "d";
  AppendTwoDigits(out, minutes);
  out += '\'';
  const std::string_view seconds(text, static_cast<std::size_t>(end - text));
  if (std::min(seconds.find('.'), seconds.size()) < 2) out += '0';
  out += seconds;
  out += '"';
  const bool zero = carried == 0 && minutes == 0 && seconds.find_first_not_of("0.") == std::string_view::npos;
  const bool negative = value < 0 && !zero;
  out += isLatitude ? (negative ? 'S' : 'N') : (negative ? 'W' : 'E');
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

std::optional<Angle> ReadAngle(std::string_view text, Blanks blanks) {
  if (const auto number = ParseNumber(text)) return Angle{*number, 0};
  constexpr std::size_t kLongestAngle = 100;
  text = Trimmed(text);
  if (text.empty() || text.size() > kLongestAngle) return std::nullopt;
  std::string plain(text);
  ReplaceAll(plain, "\xC2\xB0", 'd');       // degree sign
  ReplaceAll(plain, "\xE2\x80\xB2", '\'');  // prime
  ReplaceAll(plain, "\xE2\x80\xB3", '"');   // double prime
  return AngleScanner(plain).Scan(blanks);
}

std::optional<double> ParseAngle(std::string_view text) {
  const std::optional<Angle> angle = ReadAngle(text, Blanks::Allowed);
  return angle ? std::optional(angle->degrees) : std::nullopt;
}

std::optional<double> ParseLongitude(std::string_view text) {
  const auto angle = ReadAngle(text, Blanks::Allowed);
  if (!angle || IsOtherAxis(angle->hemisphere, false)) return std::nullopt;
  return angle->degrees;
}

std::optional<double> ParseLatitude(std::string_view text) {
  const auto angle = ReadAngle(text, Blanks::Allowed);
  if (!angle || IsOtherAxis(angle->hemisphere, true) || std::abs(angle->degrees) > 90) return std::nullopt;
  return angle->degrees;
}

bool HasSignAndLetter(std::string_view text) {
  const std::size_t sign = text.find_first_of("+-");
  if (sign == std::string_view::npos || sign > text.find_first_of("0123456789")) return false;
  std::string unsignedText(text);
  const std::optional<Angle> angle = ReadAngle(unsignedText.erase(sign, 1), Blanks::Allowed);
  return angle && angle->hemisphere != 0;
}

bool IsOtherAxis(char hemisphere, bool isLatitude) {
  return isLatitude ? hemisphere == 'E' || hemisphere == 'W' : hemisphere == 'N' || hemisphere == 'S';
}

std::optional<std::string> WithoutDecimalComma(std::string_view text) {
  std::string plain(text);
  if (plain.find('.') != std::string::npos) return std::nullopt;
  const std::size_t comma = plain.find(',');
  if (comma == std::string::npos) return plain;
  if (plain.find(',', comma + 1) != std::string::npos) return std::nullopt;
  plain[comma] = '.';
  return plain;
}

std::optional<std::string> WithDecimalPoint(const std::string& text, Commas commas, bool isLength) {
  if (commas == Commas::Refused) return text;
  if (commas == Commas::Quoted) {
    const std::size_t comma = text.find(',');
    if (comma == std::string::npos) return text;
    const bool between = comma > 0 && comma + 1 < text.size() && IsDigit(text[comma - 1]) && IsDigit(text[comma + 1]);
    if (!between || (isLength && MayPartThousands(Trimmed(text)))) return std::nullopt;
  }
  return WithoutDecimalComma(text);
}

void AppendCoordinate(std::string& out, double value, Kind kind, bool isLatitude, const Format& format) {
  const bool geographic = kind == Kind::Geographic;
  if (geographic && format.dms) {
    AppendSexagesimal(out, value, isLatitude, format.decimals < 0 ? 4 : std::min(format.decimals, kMostDmsDecimals));
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

std::optional<std::array<double, 4>> ParseTwoPlaces(const std::string& text) {
  std::array<double, 4> value{};
  std::istringstream in(text);
  std::size_t n = 0;
  for (std::string word; std::getline(in, word, ','); ++n) {
    const auto angle = n % 2 == 1 ? ParseLatitude(word) : ParseLongitude(word);
    if (n >= value.size() || !angle) return std::nullopt;
    value[n] = *angle;
  }
  return n == value.size() ? std::optional(value) : std::nullopt;
}

}  // namespace orvex::tool
