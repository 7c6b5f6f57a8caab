// EllipsoidTable - the fixed catalogue of ellipsoids.
#pragma once

#include <array>
#include <span>

#include "orvex/ellipsoid.h"

namespace orvex::detail {

struct EllipsoidRow {
  int posc;           // POSC (EPSG) code, 0 = none
  int reserved;       // always 0
  double radius;      // semi-major axis, metres
  double flattening;  // f itself, 0 = sphere
  const char* name;
};

/// The 56 rows, indexed by EllipsoidType.
std::span<const EllipsoidRow, 56> Ellipsoids();

}  // namespace orvex::detail
