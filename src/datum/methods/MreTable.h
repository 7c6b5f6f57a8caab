// MreTable - multiple regression equations from a local datum to WGS 84.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orvex::detail {

inline constexpr int kMreHighestPower = 9;

/// One term c U^i V^j.
struct MreTerm {
  std::uint8_t i, j;
  double c;
};

struct MreEquation {
  const MreTerm* terms;
  int count;

  template <std::size_t kCount>
  constexpr MreEquation(const MreTerm (&all)[kCount]) : terms(all), count(static_cast<int>(kCount)) {}
};

/// Equations of one datum: shifts in arcseconds as sums of terms in U = K (lat - latC) and V = K (lon - lonC), degrees.
struct MreDatum {
  int number;
  double latC, lonC, K;
  MreEquation lat, lon;
};

/// The equations of a datum; null when it has none.
const MreDatum* FindMre(int number);

}  // namespace orvex::detail
