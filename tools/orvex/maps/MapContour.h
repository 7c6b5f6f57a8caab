// MapContour - where a field of values on a grid exceeds a threshold, as closed curves.
#pragma once

#include <cstddef>
#include <vector>

#include "maps/MapPath.h"

namespace orvex::tool {

/// Values at the corners of square cells, row by row.
struct Field2D {
  std::size_t columns, rows;
  Spot origin;
  double cell;
  std::vector<double> values;

  double At(std::size_t column, std::size_t row) const { return values[row * columns + column]; }
};

/// The outlines of all places above the threshold, values between grid points by straight interpolation (marching
/// squares). They close along the border of the grid and count by the even-odd rule.
void TraceAbove(const Field2D& field, double threshold, Pen& pen);

}  // namespace orvex::tool
