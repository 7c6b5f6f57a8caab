// Normalize - longitudes modulo a full turn, latitudes folded back at the poles. Degrees.
#pragma once

#include <cfloat>
#include <cmath>

namespace orvex::detail {

/// fmod(x, 360): the sign stays, so -190 stays -190 and 370 becomes 10. Not finite becomes DBL_MAX, which stays.
inline double NormalizeLon(double x) {
  if (std::fabs(x) < 360 || x == DBL_MAX) return x;
  return std::isfinite(x) ? std::fmod(x, 360.0) : DBL_MAX;
}

/// Folds a latitude back at the pole without moving the longitude, which is deliberate: 100 becomes 80. Not finite
/// becomes DBL_MAX, which stays.
inline double NormalizeLat(double y) {
  if (std::fabs(y) <= 90 || y == DBL_MAX) return y;
  if (!std::isfinite(y)) return DBL_MAX;
  y = std::fmod(y, 180.0);
  if (y > 90) return 180 - y;
  return y < -90 ? -180 - y : y;
}

}  // namespace orvex::detail
