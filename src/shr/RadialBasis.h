// RadialBasis - the radial functions of the warps, and their sums over weighted nodes near and far.
#pragma once

#include "points/PointLoop.h"
#include "shr/WarpPoints.h"

namespace orvex::detail::ORVEX_LEVEL {

using shr::detail::Basis;
using shr::detail::Node;
using shr::detail::WarpModel;

/// s: the length that the decaying functions are measured by. Each function is given the squared distance.
struct ThinPlate {
  template <class T>
  ORVEX_INLINE T operator()(T r2) const {
    const MaskOf<T> apart = r2 > T(0);
    return Select(apart, 0.5 * r2 * Log(OneUnless<T>(apart, r2)), T(0));
  }
};
struct NaturalCubic {
  template <class T>
  ORVEX_INLINE T operator()(T r2) const {
    return r2 * Sqrt(r2);
  }
};
struct Marcov {
  double s;
  template <class T>
  ORVEX_INLINE T operator()(T r2) const {
    const T t = Sqrt(r2) / s;
    return (1 + t) * Exp(-t);
  }
};
struct Exponential {
  double s;
  template <class T>
  ORVEX_INLINE T operator()(T r2) const {
    return Exp(-Sqrt(r2) / s);
  }
};
struct RationalQuadratic {
  double s;
  template <class T>
  ORVEX_INLINE T operator()(T r2) const {
    return 1 / (1 + r2 / (s * s));
  }
};

/// Calls `visit` with a radial function.
template <class Visitor>
ORVEX_INLINE auto VisitBasis(Basis basis, double s, const Visitor& visit) {
  switch (basis) {
    case Basis::ThinPlate:
      return visit(ThinPlate{});
    case Basis::NaturalCubic:
      return visit(NaturalCubic{});
    case Basis::Marcov:
      return visit(Marcov{s});
    case Basis::Exponential:
      return visit(Exponential{s});
    default:
      return visit(RationalQuadratic{s});
  }
}

/// Sum of the nodes' weights times `phi`, a function of the node.
template <class T, class Phi>
ORVEX_INLINE Point<T> WeightedSum(const WarpModel& warp, const Phi& phi) {
  Point<T> sum{T(0), T(0)};
  for (const Node* node = warp.nodes; node != warp.nodes + warp.count; ++node) {
    const T value = phi(*node);
    sum.x = sum.x + node->weightX * value;
    sum.y = sum.y + node->weightY * value;
  }
  return sum;
}

template <class T>
ORVEX_INLINE T SquaredDistance(const Node& node, T u, T v) {
  return Square(u - node.u) + Square(v - node.v);
}

// Beyond this radius the growing functions are summed by the expressions below. Nodes lie within 0.71 of the origin.
inline constexpr double kFar = 8;
// The decaying functions and their like do not change any more beyond this one; squares are still finite.
inline constexpr double kFarthest = 1e100;

/// ((1 + t) ln(1 + t) - t) / t^2.
template <class T>
ORVEX_INLINE T LogRemainder(T t) {
  const MaskOf<T> large = Abs(t) > T(0.01);
  const T series =
      1.0 / 2 - t * (1.0 / 6 - t * (1.0 / 12 - t * (1.0 / 20 - t * (1.0 / 30 - t * (1.0 / 42 - t * (1.0 / 56))))));
  return Select(large, ((1 + t) * Log1p(t) - t) / OneUnless<T>(large, t * t), series);
}

/// What is left of r^2 ln r and of r^3 for a node q seen from a point at radius R in the direction (cu, cv), once the
/// parts are taken off that are constant or linear in q: they cancel in the sum by the side conditions, but in floating
/// point only up to the rounding of numbers of the size of R^2 or R^3. With r^2 = R^2 (1 + t), T = R t.
template <class T>
struct FarNode {
  double q2;
  T t, Rt;

  ORVEX_INLINE FarNode(const Node& node, T R, T cu, T cv) : q2(node.u * node.u + node.v * node.v) {
    Rt = q2 / R - 2 * (cu * node.u + cv * node.v);
    t = Rt / R;
  }
  ORVEX_INLINE T ThinPlate(T logR) const { return 0.5 * (q2 * (2 * logR + 1) + Rt * Rt * LogRemainder(t)); }
  /// Divided by R.
  ORVEX_INLINE T NaturalCubic() const {
    const T root = Sqrt(1 + t), quotient = Rt / (root + 1);
    return quotient * quotient * (root + 0.5) + 1.5 * q2;
  }
};

/// The sum for points at a radius R beyond kFar.
template <class T>
ORVEX_INLINE Point<T> FarSum(const WarpModel& warp, T u, T v, T R) {
  const T cu = u / R, cv = v / R;
  if (warp.basis == Basis::ThinPlate) {
    const T logR = Log(R);
    return WeightedSum<T>(warp, [&](const Node& node) { return FarNode<T>(node, R, cu, cv).ThinPlate(logR); });
  }
  const Point<T> sum =
      WeightedSum<T>(warp, [&](const Node& node) { return FarNode<T>(node, R, cu, cv).NaturalCubic(); });
  return {R * sum.x, R * sum.y};
}

/// The sum of weights times radial functions at (u, v).
template <class T>
ORVEX_INLINE Point<T> RadialSum(const WarpModel& warp, T u, T v) {
  const T R = Hypot(u, v);
  const bool grows = warp.basis == Basis::ThinPlate || warp.basis == Basis::NaturalCubic;
  const MaskOf<T> far = grows ? R > T(kFar) : No<T>();
  const T shrink = Select(R > T(kFarthest), kFarthest / OneUnless<T>(R > T(kFarthest), R), T(1));
  const T pu = Select(far, T(0), u * shrink), pv = Select(far, T(0), v * shrink);
  Point<T> sum{T(0), T(0)};
  if (!All(far)) {
    sum = VisitBasis(warp.basis, warp.spacing, [&](const auto& basis) {
      return WeightedSum<T>(warp, [&, basis](const Node& node) { return basis(SquaredDistance(node, pu, pv)); });
    });
  }
  if (Any(far)) {
    const Point<T> beyond = FarSum(warp, Select(far, u, T(kFar)), Select(far, v, T(kFar)), Select(far, R, T(2 * kFar)));
    sum = {Select(far, beyond.x, sum.x), Select(far, beyond.y, sum.y)};
  }
  return sum;
}

/// Shepard's mean of the nodes' values (here the weights), by the inverse squared distance.
template <class T>
ORVEX_INLINE Point<T> InverseDistanceMean(const WarpModel& warp, T u, T v) {
  constexpr double kSamePlace = 1e-280;  // reciprocals of greater squares are finite
  const T R = Hypot(u, v), shrink = Select(R > T(kFarthest), kFarthest / OneUnless<T>(R > T(kFarthest), R), T(1));
  const T pu = u * shrink, pv = v * shrink;
  Point<T> sum{T(0), T(0)}, node{T(0), T(0)};
  T total = T(0);
  MaskOf<T> onNode = No<T>();
  for (const Node* n = warp.nodes; n != warp.nodes + warp.count; ++n) {
    const T r2 = SquaredDistance(*n, pu, pv);
    const MaskOf<T> here = (r2 < T(kSamePlace)) & !onNode;
    node = {Select(here, T(n->weightX), node.x), Select(here, T(n->weightY), node.y)};
    onNode = onNode | here;
    const T weight = 1 / OneUnless<T>(!(r2 < T(kSamePlace)), r2);
    sum = {sum.x + n->weightX * weight, sum.y + n->weightY * weight};
    total = total + weight;
  }
  return {Select(onNode, node.x, sum.x / total), Select(onNode, node.y, sum.y / total)};
}

/// The warp in normalised coordinates.
template <class T>
ORVEX_INLINE void Normalised(const WarpModel& warp, Point<T>& p) {
  const Point<T> bend =
      warp.basis == Basis::InverseDistance ? InverseDistanceMean(warp, p.x, p.y) : RadialSum(warp, p.x, p.y);
  const auto affine = [&p](const double* c) { return c[0] + (c[1] * p.x + c[2] * p.y); };
  p = {affine(warp.affineX) + bend.x, affine(warp.affineY) + bend.y};
}

}  // namespace orvex::detail::ORVEX_LEVEL
