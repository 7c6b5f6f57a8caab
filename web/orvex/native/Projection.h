// Projection - a handle of the library as the module's functions share it.
#pragma once

#include <orvex/projection.h>

namespace orvex::web {

struct Projection {
  explicit Projection(PROJDATA& given) : projector(&given) { projector.GetInfo(&record); }

  CProjector projector;
  PROJDATA record{};  ///< as the library has completed it
};

}  // namespace orvex::web
