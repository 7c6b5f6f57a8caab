// CoordinateReader - the coordinates of a table out of its fields.
#include "tables/CoordinateReader.h"

#include <algorithm>
#include <cmath>

#include "tables/Fields.h"

namespace orvex::tool {

namespace {

constexpr double kPole = 90;

/// The start of a text as a message can show it: control characters would disturb a terminal.
std::string Printable(const std::string& text) {
  std::string shown = text.substr(0, 40);
  std::replace_if(
      shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, '?');
  return text.size() > shown.size() ? shown + "..." : shown;
}

}  // namespace

bool CoordinateReader::Read(std::string_view field, std::size_t axis, double& value) const {
  const bool isLatitude = m_kind == Kind::Geographic && axis == 1;
  if (const std::optional<double> number = ParseNumber(field); number && m_commas != Commas::Decimal) {
    value = *number;  // nearly every field of nearly every table
  } else {
    const std::optional<Angle> angle = ReadField(field);
    if (!angle || (m_kind == Kind::Geographic && IsOtherAxis(angle->hemisphere, isLatitude))) return false;
    value = angle->degrees;
  }
  return !isLatitude || std::abs(value) <= kPole;
}

std::string CoordinateReader::Fault(std::string_view field, std::size_t axis) const {
  static constexpr const char* kNames[2][2] = {{"longitude", "latitude"}, {"x", "y"}};
  const auto& names = kNames[m_kind == Kind::Geographic ? 0 : 1];
  const std::string text = Unquoted(field), shown = names[axis] + (" \"" + Printable(text)) + "\"";
  if (const std::optional<Angle> angle = ReadField(field)) {
    if (BelongsElsewhere(field, axis)) {
      return shown + " has a letter of " + names[1 - axis] +
             "; say --order lat,lon, or name the columns with --x and --y";
    }
    return shown + " lies beyond the pole";
  }
  if (m_kind == Kind::Geographic && HasSignAndLetter(text)) {
    return "cannot read " + shown + ": a sign or a letter, not both";
  }
  const std::optional<std::string> plain = m_commas == Commas::Decimal ? std::nullopt : WithoutDecimalComma(text);
  const bool comma = plain && *plain != text && ReadAs(*plain, Blanks::WithLetterOnly);
  return "cannot read " + shown + (comma ? "; for decimal commas say --decimal-comma" : "");
}

bool CoordinateReader::BelongsElsewhere(std::string_view field, std::size_t axis) const {
  const std::optional<Angle> angle = ReadField(field);
  return angle && IsOtherAxis(angle->hemisphere, axis == 1);
}

std::optional<Angle> CoordinateReader::ReadField(std::string_view field) const {
  const std::string text = Unquoted(field);
  const bool quoted = text.size() < field.size();
  const Commas commas = m_commas == Commas::Quoted && !quoted ? Commas::Refused : m_commas;
  const std::optional<std::string> plain = WithDecimalPoint(text, commas, m_kind == Kind::Projected);
  return plain ? ReadAs(*plain, quoted ? Blanks::Allowed : Blanks::WithLetterOnly) : std::nullopt;
}

std::optional<Angle> CoordinateReader::ReadAs(std::string_view text, Blanks blanks) const {
  if (m_kind == Kind::Geographic) return ReadAngle(text, blanks);
  const std::optional<double> number = ParseNumber(text);
  if (!number) return std::nullopt;
  return Angle{*number, 0};
}

}  // namespace orvex::tool
