// SystemRecord - a registered coordinate system's projection as the library computes it.
#pragma once

#include <optional>
#include <string>

#include <orvex/projection.h>

#include "systems/SystemTable.h"

namespace orvex::tool {

/// Where a rectified oblique map is not turned by the azimuth of its line but by another angle.
struct Turn {
  double degrees;  ///< beyond the record's own, clockwise
  double x0, y0;   ///< false origin, added after the turn, metres
};

/// Longitudes of the record count from Greenwich, its map units are metres.
struct SystemRecord {
  PROJDATA record{};
  std::optional<Turn> turn;
};

/// The record of a projected system. Throws Failure with the reason where the library cannot represent it.
SystemRecord MakeSystemRecord(const CoordinateSystem& system);

/// Why the library cannot represent a system, "" when it can.
std::string WhyNotRepresented(const CoordinateSystem& system);

}  // namespace orvex::tool
