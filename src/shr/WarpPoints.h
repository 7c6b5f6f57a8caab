// WarpPoints - a fitted warp, ready to run over points.
#pragma once

#include "math/PlaneFrame.h"
#include "points/Level.h"
#include "points/PointView.h"

namespace shr::detail {

/// A control point in normalised coordinates, with the weights of both destination coordinates.
struct Node {
  double u, v;
  double weightX, weightY;
};

/// The radial functions, numbered as the warping methods are.
enum class Basis : int { ThinPlate = 0, NaturalCubic, Marcov, Exponential, RationalQuadratic, InverseDistance };

/// An affine map in normalised coordinates plus weighted radial functions of the nodes.
struct WarpModel {
  Basis basis;
  orvex::detail::PlaneFrame from, to;  // normalised source and destination coordinates
  double spacing;                      // s, in normalised units
  double affineX[3], affineY[3];       // of 1, u, v
  const Node* nodes;
  int count;
};

}  // namespace shr::detail

namespace shr {
class CImageRegistration;
}

namespace orvex::detail {

/// The registration's door for the rest of the library.
struct WarpAccess {
  /// As Transform, for points of which some may hold the marker, which stay; what has no finite image is marked.
  static void TransformScreened(const shr::CImageRegistration& registration, const PointView& points, int count);
};

using WarpTransform = void(const PointView& points, int count, const shr::detail::WarpModel& warp);

struct WarpOperations {
  WarpTransform* transform;   ///< whatever comes out stands
  WarpTransform* screened;    ///< markers stay, what has no finite image is marked
  WarpTransform* normalised;  ///< from and to normalised coordinates
};

namespace ORVEX_LEVEL {
extern const WarpOperations kWarpOperations;
}

}  // namespace orvex::detail
