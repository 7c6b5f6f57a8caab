// Area - whether a point lies within bounds.
#include <cmath>

#include "systems/SystemTable.h"

namespace orvex::tool {

bool Area::Contains(const PROJPOINT& point, double margin) const {
  constexpr double kMost = 1e12;  // degrees, whose turns are counted without loss
  if (!(point.y >= south - margin && point.y <= north + margin && std::fabs(point.x) <= kMost)) return false;
  const double width = (west <= east ? east - west : east - west + 360) + 2 * margin;
  double offset = point.x - (west - margin);
  offset -= 360 * static_cast<double>(static_cast<long long>(offset / 360));
  if (offset < 0) offset += 360;
  return offset <= width;
}

}  // namespace orvex::tool
