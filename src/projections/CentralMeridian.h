// CentralMeridian - longitude differences of the projections that wrap them when the record asks for it.
#pragma once

#include "projections/Module.h"

namespace orvex::detail::ORVEX_LEVEL {

/// Longitudes counted from the central meridian, radians. Raw differences, so that a longitude beyond the outline stays
/// beyond it, unless the record asks for them to be wrapped.
struct CentralMeridian {
  double lon0;
  bool wrap;

  explicit CentralMeridian(const PROJDATA& work) : lon0(work.Lon0), wrap(IsSet(work.bWrapLon)) {}

  template <class T>
  ORVEX_INLINE T Difference(T lon) const {
    return wrap ? WrapOnce(lon - lon0) : lon - lon0;
  }
};

}  // namespace orvex::detail::ORVEX_LEVEL
