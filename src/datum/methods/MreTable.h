// MreTable - multiple regression equations from a local datum to WGS 84.
#pragma once

#include <cstdint>
#include <span>

namespace orvex::detail {

inline constexpr int kMreHighestPower = 9;

/// One term c U^i V^j.
struct MreTerm {
  std::uint8_t i, j;
  double c;
};

/// Equations of one datum: shifts in arcseconds as sums of terms in U = K (lat - latC) and V = K (lon - lonC), degrees.
struct MreDatum {
  int number;
  double latC, lonC, K;
  std::span<const MreTerm> lat, lon;
};

/// The equations of a datum; null when it has none.
const MreDatum* FindMre(int number);

}  // namespace orvex::detail
