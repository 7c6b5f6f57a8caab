// StepFrame - what the parametric steps share: the two ellipsoids of a step.
#pragma once

#include <orvex/datum.h>

#include "ellipsoids/Ellipsoid.h"
#include "support/Flag.h"

namespace orvex::detail {

/// Semi-major axis in metres and flattening f.
struct Ellipsoid {
  double a, f;
};

/// Where a parametric step begins and ends, and which way its origin shift (metres) and prime meridian (degrees) count.
struct StepFrame {
  Ellipsoid source, target;
  double dx, dy, dz;
  double pmShift;

  explicit StepFrame(const DATUM2WGS84& step)
      : source{step.MajorRadius, step.Flattening},
        target{MajorRadiusOf(ET_WGS_84), FlatteningOf(ET_WGS_84)},
        dx(step.dx),
        dy(step.dy),
        dz(step.dz),
        pmShift(step.PMShift) {
    if (!IsSet(step.bInverse)) return;
    const Ellipsoid datum = source;
    source = target;
    target = datum;
    dx = -dx;
    dy = -dy;
    dz = -dz;
    pmShift = -pmShift;
  }
};

}  // namespace orvex::detail
