// Coordinate - numbers and angles as text, in and out.
#pragma once

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

/// An angle: a plain number or any text that LatLonToDegrees reads; the typographic degree, minute and second signs
/// count too.
std::optional<double> ParseAngle(std::string_view text);

/// Appends a coordinate. `isLatitude` picks the hemisphere letters of degree-minute-second text.
void AppendCoordinate(std::string& out, double value, Kind kind, bool isLatitude, const Format& format);

}  // namespace orvex::tool
