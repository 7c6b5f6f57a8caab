// GeoCoeff - affine transforms given by six coefficients, in the order that rasters use everywhere.
#pragma once

#include <array>

#include "georef/PlaneFit.h"

namespace orvex::detail {

/// X = c[0] + x c[1] + y c[2], Y = c[3] + x c[4] + y c[5].
struct AffineCoefficients {
  std::array<double, 6> c;

  GEOREFPOINT operator()(const GEOREFPOINT& p) const {
    return {c[0] + (p.x * c[1] + p.y * c[2]), c[3] + (p.x * c[4] + p.y * c[5])};
  }
};

/// The coefficients of a record, and of a fit with the terms 1, u, v.
AffineCoefficients CoefficientsOf(const GEOREF& g);
AffineCoefficients CoefficientsOf(const PlaneFit& fit);

/// False, nothing stored, when one of them is not finite.
bool StoreCoefficients(const AffineCoefficients& coefficients, GEOREF& g);

/// The same as a polynomial of the order Affine, in source coordinates as they are.
PlaneFit PlaneOf(const AffineCoefficients& coefficients);

/// Corners of a raster, in the order in which they become control points.
std::array<GEOREFPOINT, 4> RasterCorners(int width, int height);

}  // namespace orvex::detail
