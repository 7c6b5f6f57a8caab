// PlanePoints - polynomials of the plane, ready to run over points.
#pragma once

#include "math/PlaneFrame.h"
#include "points/Level.h"
#include "points/PointView.h"

namespace orvex::detail {

/// X = sum of x[i] t[i](u, v), Y = sum of y[i] t[i](u, v); u, v are the frame's coordinates of a source point. The
/// terms t are 1, u, v, uv, u^2, v^2, u^3, u^2 v, u v^2, v^3, so that every order uses a beginning of the list.
struct PlaneFit {
  static constexpr int kMaxTerms = 10;

  PlaneFrame frame;
  double x[kMaxTerms];
  double y[kMaxTerms];
};

enum class OrderCode : int {
  Bilinear = 0,  ///< 1, x, y, xy
  Affine = 1,    ///< 1, x, y
  Second = 2,    ///< all terms to degree 2
  Third = 3      ///< all terms to degree 3
};

/// Transforms points in place. What holds a marker stays, and what has no finite image is marked.
using PlaneTransform = void(const PointView& points, int count, OrderCode order, const PlaneFit& fit);

struct PlaneOperations {
  PlaneTransform* transform;
};

namespace ORVEX_LEVEL {
extern const PlaneOperations kPlaneOperations;
}

/// By the instruction set in use.
void TransformPlane(const PointView& points, int count, OrderCode order, const PlaneFit& fit);

}  // namespace orvex::detail
