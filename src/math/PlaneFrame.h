// PlaneFrame - centred, scaled coordinates of a set of points; every fit to control points is made in them.
#pragma once

namespace orvex::detail {

struct PlaneBox;

/// u = (x - cx) kx, v = (y - cy) ky: the origin is the centre of a box.
struct PlaneFrame {
  double cx, cy, kx, ky;

  template <class T>
  [[gnu::always_inline]] T U(T x) const {
    return (x - cx) * kx;
  }
  template <class T>
  [[gnu::always_inline]] T V(T y) const {
    return (y - cy) * ky;
  }
  /// False when a side of the box is too small to scale by.
  bool Usable() const;

  /// One scale for both axes, so that distances stay distances: the larger side becomes 1.
  static PlaneFrame Isotropic(const PlaneBox& box);
  /// Both sides become 1.
  static PlaneFrame PerAxis(const PlaneBox& box);
  /// For destinations: isotropic, but a set that has shrunk to one point is taken as it is.
  static PlaneFrame Destination(const PlaneBox& box);
};

}  // namespace orvex::detail
