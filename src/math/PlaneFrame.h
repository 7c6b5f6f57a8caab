// PlaneFrame - centred, scaled coordinates of a set of points; every fit to control points is made in them.
#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <optional>
#include <span>

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

/// u = (x - cx) kx, v = (y - cy) ky: the origin is the centre of a box.
struct PlaneFrame {
  double cx, cy, kx, ky;

  double U(double x) const { return (x - cx) * kx; }
  double V(double y) const { return (y - cy) * ky; }
  /// False when a side of the box is too small to scale by.
  bool Usable() const { return std::isfinite(kx) && std::isfinite(ky); }

  /// One scale for both axes, so that distances stay distances: the larger side becomes 1.
  static PlaneFrame Isotropic(const PlaneBox& box) { return Scaled(box, 1 / box.Side(), 1 / box.Side()); }
  /// Both sides become 1.
  static PlaneFrame PerAxis(const PlaneBox& box) { return Scaled(box, 1 / box.Width(), 1 / box.Height()); }
  /// For destinations: isotropic, but a set that has shrunk to one point is taken as it is.
  static PlaneFrame Destination(const PlaneBox& box) {
    const PlaneFrame frame = Isotropic(box);
    return frame.Usable() ? frame : Scaled(box, 1, 1);
  }

 private:
  static PlaneFrame Scaled(const PlaneBox& box, double kx, double ky) {
    return {box.left + box.Width() / 2, box.bottom + box.Height() / 2, kx, ky};
  }
};

/// Rank tolerance of a fit in a frame's coordinates: coordinates far from zero carry rounding errors that are large in
/// terms of the box, so a line of points is straight up to those.
inline double RankTolerance(const PlaneBox& box, const PlaneFrame& frame) {
  const double x = std::max(std::fabs(box.left), std::fabs(box.right)) * frame.kx;
  const double y = std::max(std::fabs(box.bottom), std::fabs(box.top)) * frame.ky;
  return 32 * DBL_EPSILON * (1 + std::max(x, y));
}

}  // namespace orvex::detail
