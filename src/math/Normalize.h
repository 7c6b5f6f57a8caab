// Normalize - longitudes modulo a full turn, latitudes folded back at the poles. Degrees.
#pragma once

#include <cfloat>

#include "points/Elementary.h"

namespace orvex::detail::ORVEX_LEVEL {

/// Whether a position needs no normalising: a longitude within a turn, a latitude between the poles.
template <class T>
ORVEX_INLINE MaskOf<T> IsOnGlobe(T lon, T lat) {
  return (Abs(lon) < T(360)) & (Abs(lat) <= T(90));
}

/// The remainder of x by 360 with the sign of x: -190 stays -190 and 370 becomes 10. Not finite becomes DBL_MAX, which
/// stays.
inline double NormalizeLon(double x) {
  if (Abs(x) < 360 || x == DBL_MAX) return x;
  return IsFinite(x) ? Remainder(x, 360.0) : DBL_MAX;
}

/// Folds a latitude back at the pole without moving the longitude, which is deliberate: 100 becomes 80. Not finite
/// becomes DBL_MAX, which stays.
inline double NormalizeLat(double y) {
  if (Abs(y) <= 90 || y == DBL_MAX) return y;
  if (!IsFinite(y)) return DBL_MAX;
  y = Remainder(y, 180.0);
  if (y > 90) return 180 - y;
  return y < -90 ? -180 - y : y;
}

/// Both for positions of which some need it.
template <class T>
[[gnu::noinline]] void NormalizeEach(T& lon, T& lat) {
  for (int i = 0; i < kLaneCount<T>; ++i) {
    Put(lon, i, NormalizeLon(Get(lon, i)));
    Put(lat, i, NormalizeLat(Get(lat, i)));
  }
}

}  // namespace orvex::detail::ORVEX_LEVEL
