// Mgrs - references of the Military Grid Reference System, in UTM zones and in the polar maps of UPS.
// Source: Defense Mapping Agency, The Universal Grids, TM 8358.1 (1990), chapter 3.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <orvex/projection.h>

namespace orvex::tool {

inline constexpr int kMostMgrsDigits = 11;  ///< for each coordinate: micrometres

/// A place on the grid: map coordinates in metres in a zone as UtmZoneAt counts them.
struct GridPlace {
  int zone;
  PROJPOINT point;
};

/// The reference of the square in which a place lies. `digits` for each coordinate: 5 for metres, 0 for the square of
/// 100 km. The latitude (degrees) tells the band. "" where the grid has no squares.
std::string FormatMgrs(const GridPlace& place, double latitude, int digits);

/// The centre of the square that a reference names; any case, blanks allowed. Nothing for a text that is none.
std::optional<GridPlace> ParseMgrs(std::string_view text);

}  // namespace orvex::tool
