// Coordinate - numbers and angles as text, in and out.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace orvex::tool {

/// What a pair of coordinates is: longitude and latitude in degrees, or easting and northing.
enum class Kind { Geographic, Projected };

/// How coordinates are written.
struct Format {
  int decimals = -1;  ///< -1: 9 for degrees, 4 for lengths
  bool dms = false;   ///< degrees, minutes and seconds with a hemisphere letter
};

/// A plain number (exponents allowed), whatever the locale; nothing left over, finite.
std::optional<double> ParseNumber(std::string_view text);

/// An angle as text gives it.
struct Angle {
  double degrees = 0;   ///< the hemisphere counted
  char hemisphere = 0;  ///< 'N', 'S', 'E', 'W', or 0 without a letter
};

/// What may stand between two numbers of an angle besides signs, letters and colons.
enum class Blanks { WithLetterOnly, Allowed };

/// An angle: a plain number, or degrees, minutes and seconds apart by d m s, ' ", colons or the typographic signs, with
/// a sign or a hemisphere letter (not both) in front or behind. Blanks alone keep numbers apart where they are allowed,
/// and anywhere when a letter makes clear that this is one angle. Minutes and seconds are below 60.
std::optional<Angle> ReadAngle(std::string_view text, Blanks blanks);

/// The degrees alone; blanks are allowed.
std::optional<double> ParseAngle(std::string_view text);

/// The same for one of the axes: nothing where a letter says that it is the other one, nor for latitudes beyond a pole.
std::optional<double> ParseLongitude(std::string_view text);
std::optional<double> ParseLatitude(std::string_view text);

/// True for what would be an angle if it had not a sign as well as a hemisphere letter: -13W.
bool HasSignAndLetter(std::string_view text);

/// Whether the letter belongs to the other axis.
bool IsOtherAxis(char hemisphere, bool isLatitude);

/// The text with its decimal comma as a point; nothing when it holds a point already or two commas.
std::optional<std::string> WithoutDecimalComma(std::string_view text);

/// What a comma within a number is.
enum class Commas {
  Refused,
  Quoted,  ///< the decimal comma where the number stands within quotes: between commas that is no delimiter
  Decimal
};

/// By the option for decimal commas and the delimiter of the table.
inline Commas CommasIn(bool decimalComma, char delimiter) {
  if (decimalComma) return Commas::Decimal;
  return delimiter == ',' ? Commas::Quoted : Commas::Refused;
}

/// A number with a decimal point; nothing where its comma cannot be the decimal one. Within quotes it stands between
/// digits, and a length like 691,052 is refused: there it may as well part the thousands.
std::optional<std::string> WithDecimalPoint(const std::string& text, Commas commas, bool isLength);

/// Appends a coordinate. `isLatitude` picks the hemisphere letters of degree-minute-second text.
void AppendCoordinate(std::string& out, double value, Kind kind, bool isLatitude, const Format& format);

/// Two places, "X1,Y1,X2,Y2", angles in any notation; nothing for other numbers of them, letters of
/// the other axis and latitudes beyond a pole.
std::optional<std::array<double, 4>> ParseTwoPlaces(const std::string& text);

}  // namespace orvex::tool
