// System - what a georeference handle points to.
#pragma once

#include <cstdlib>
#include <memory>

#include "georef/PlaneFit.h"
#include "orvex/georef.h"
#include "shr/image_registration.h"

namespace orvex::detail {

/// One heap block of 472 bytes, zero-filled to begin with; the record stands first, the image registration object last.
struct alignas(8) System {
  GEOREF record;                          // its control arrays belong to the system
  PlaneFit fit;                           // methods 0 to 4
  shr::CImageRegistration* registration;  // owned; methods 6 to 11

  /// The system's own control points.
  Controls ControlPoints() const;
};
static_assert(sizeof(System) == 472);

/// Frees a system with all it owns.
struct SystemDeleter {
  void operator()(System* system) const;
};
using SystemPtr = std::unique_ptr<System, SystemDeleter>;

/// Dispatch by the record's method: fits the transform to the system's controls; false when they do not determine it or
/// the method is unknown. Throws std::bad_alloc.
bool FitSystem(System& system);

/// Dispatch by the record's method: transforms points in place.
bool Forward(const System& system, GEOREFPOINT* pts, int n);

}  // namespace orvex::detail
