// PlaneBox - the box around a set of points, and what it tells about a fit to them.
#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <optional>
#include <span>

#include "math/PlaneFrame.h"

namespace orvex::detail {

/// The box around a set of points, with finite sides.
struct PlaneBox {
  double left, right, bottom, top;

  double Width() const { return right - left; }
  double Height() const { return top - bottom; }
  double Side() const { return std::max(Width(), Height()); }

  /// None for an empty set, a coordinate that is not finite or marks an unplottable point (DBL_MAX), or a box too large
  /// for its sides to be finite.
  template <class Point>
  static std::optional<PlaneBox> Around(std::span<const Point> points) {
    if (points.empty()) return std::nullopt;
    PlaneBox box{points[0].x, points[0].x, points[0].y, points[0].y};
    for (const Point& p : points) {
      if (!(std::fabs(p.x) < DBL_MAX && std::fabs(p.y) < DBL_MAX)) return std::nullopt;
      box.left = std::min(box.left, p.x);
      box.right = std::max(box.right, p.x);
      box.bottom = std::min(box.bottom, p.y);
      box.top = std::max(box.top, p.y);
    }
    if (!std::isfinite(box.Width()) || !std::isfinite(box.Height())) return std::nullopt;
    return box;
  }
};

/// Rank tolerance of a fit in a frame's coordinates: coordinates far from zero carry rounding errors that are large in
/// terms of the box, so a line of points is straight up to those.
double RankTolerance(const PlaneBox& box, const PlaneFrame& frame);

}  // namespace orvex::detail
