/// \file
/// Image registration: warps that carry every control point of one plane exactly to its partner in another.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <orvex/export.h>

namespace orvex::detail {
struct WarpAccess;
}

namespace shr {

/// \addtogroup image_registration
/// \{

/// A point of either plane.
struct RPoint {
  double x;  ///< first coordinate
  double y;  ///< second coordinate
};

/// A growable list of points. Running out of memory throws shr::Exception with id 20201.
class ORVEX_API RPoints {
 public:
  RPoints();                                     ///< empty
  RPoints(const RPoints& other);                 ///< deep copy
  RPoints(RPoints&& other) noexcept;             ///< takes the other's points
  RPoints& operator=(const RPoints& other);      ///< deep copy
  RPoints& operator=(RPoints&& other) noexcept;  ///< takes the other's points
  ~RPoints();                                    ///< frees the points

  void Append(const RPoint& point);  ///< appends a copy
  /// Points in the list.
  int Count() const { return static_cast<int>(m_points.size()); }
  /// The index is not checked.
  const RPoint& operator[](int index) const { return m_points[static_cast<std::size_t>(index)]; }

 private:
  std::vector<RPoint> m_points;
};

/// How the plane between the control points is bent. r is the distance from a control point in units of the larger side
/// of the source set's box, s the mean distance of the controls from their nearest neighbours, in the same units.
enum WarpingMethod : std::int32_t {
  WM_NONE = -1,               ///< no warp: what Calibrate answers when it fails
  WM_THIN_PLATE = 0,          ///< r^2 ln r
  WM_NATURAL_CUBIC = 1,       ///< r^3
  WM_MARCOV = 2,              ///< (1 + r/s) e^(-r/s)
  WM_EXPONENTIAL = 3,         ///< e^(-r/s)
  WM_RATIONAL_QUADRATIC = 4,  ///< 1 / (1 + (r/s)^2)
  WM_INVERSE_DISTANCE = 5     ///< Shepard's inverse distance squared on the residuals of the least-squares affine map
};

/// A warp fitted to two sets of control points. One object must not be used from two threads at once.
class ORVEX_API CImageRegistration {
 public:
  CImageRegistration();
  ~CImageRegistration();
  CImageRegistration(const CImageRegistration&) = delete;
  CImageRegistration& operator=(const CImageRegistration&) = delete;

  /// Fits the warp that carries src[i] to dst[i]. Needs at least 3 distinct, non-collinear source points, sets of equal
  /// length, and coordinates that are finite and not DBL_MAX. Solves a dense system: time grows with the cube of the
  /// number of points, memory with its square. Returns `method`, or WM_NONE when the points do not determine the warp.
  /// Throws shr::Exception with id 20201 when there is no memory for the system.
  WarpingMethod Calibrate(const RPoints& src, const RPoints& dst, WarpingMethod method);

  /// The warped position of a point. Before a successful Calibrate the point is returned as it is.
  RPoint Transform(const RPoint& pt) const;
  /// The same for `count` points in place; quicker than one by one.
  void Transform(RPoint* pts, int count) const;

 private:
  friend struct orvex::detail::WarpAccess;
  struct State;
  std::unique_ptr<State> m_state;
};

/// \}

}  // namespace shr
