// PlaneFit - a polynomial fitted in centred, scaled source coordinates, and the loop that runs points through a
// transform.
#pragma once

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <span>

#include "math/PlaneFrame.h"
#include "orvex/georef.h"

namespace orvex::detail {

/// X = sum of x[i] t[i](u, v), Y = sum of y[i] t[i](u, v); u, v are the frame's coordinates of a source point. The
/// terms t are 1, u, v, uv, u^2, v^2, u^3, u^2 v, u v^2, v^3, so that every order uses a beginning of the list.
struct PlaneFit {
  static constexpr std::size_t kMaxTerms = 10;

  PlaneFrame frame;
  double x[kMaxTerms];
  double y[kMaxTerms];
};

/// The control points of a record: as many sources as destinations.
struct Controls {
  std::span<const GEOREFPOINT> source;
  std::span<const GEOREFPOINT> destination;
};

/// Logs the heading of a fit and its control points.
void TraceControls(const char* heading, const Controls& controls);

/// What a point becomes, given its computed image: an unplottable point (DBL_MAX) stays as it is, and one whose image
/// is not finite becomes unplottable.
inline GEOREFPOINT Screened(const GEOREFPOINT& p, const GEOREFPOINT& image) {
  if (p.x == DBL_MAX || p.y == DBL_MAX) return p;
  return std::isfinite(image.x) && std::isfinite(image.y) ? image : GEOREFPOINT{DBL_MAX, DBL_MAX};
}

/// Runs `transform` (GEOREFPOINT -> GEOREFPOINT) over the points in place.
template <class Transform>
void TransformEach(GEOREFPOINT* pts, int n, Transform transform) {
  for (int i = 0; i < n; ++i) pts[i] = Screened(pts[i], transform(pts[i]));
}

}  // namespace orvex::detail
