// RadialBasis - the radial functions of the warps, and their sums over weighted nodes near and far.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "shr/image_registration.h"

namespace shr::detail {

/// A control point in normalised coordinates, with the weights of both destination coordinates.
struct Node {
  double u, v;
  double weightX, weightY;
};

/// s: the length that the decaying functions are measured by. Each function is given the squared distance.
struct ThinPlate {
  double operator()(double r2) const { return r2 > 0 ? r2 * std::log(r2) / 2 : 0; }
};
struct NaturalCubic {
  double operator()(double r2) const { return r2 * std::sqrt(r2); }
};
struct Marcov {
  double s;
  double operator()(double r2) const {
    const double t = std::sqrt(r2) / s;
    return (1 + t) * std::exp(-t);
  }
};
struct Exponential {
  double s;
  double operator()(double r2) const { return std::exp(-std::sqrt(r2) / s); }
};
struct RationalQuadratic {
  double s;
  double operator()(double r2) const { return 1 / (1 + r2 / (s * s)); }
};

/// Calls `visit` with the radial function of a warping method 0 to 4.
template <class Visitor>
auto VisitBasis(WarpingMethod method, double s, Visitor visit) {
  switch (method) {
    case WM_THIN_PLATE:
      return visit(ThinPlate{});
    case WM_NATURAL_CUBIC:
      return visit(NaturalCubic{});
    case WM_MARCOV:
      return visit(Marcov{s});
    case WM_EXPONENTIAL:
      return visit(Exponential{s});
    default:
      return visit(RationalQuadratic{s});
  }
}

/// Sum of the nodes' weights times `phi`, a function of the node.
template <class Phi>
RPoint WeightedSum(const std::vector<Node>& nodes, Phi phi) {
  RPoint sum{0, 0};
  for (const Node& node : nodes) {
    const double value = phi(node);
    sum.x += node.weightX * value;
    sum.y += node.weightY * value;
  }
  return sum;
}

inline double SquaredDistance(const Node& node, double u, double v) {
  const double du = u - node.u, dv = v - node.v;
  return du * du + dv * dv;
}

// Beyond this radius the growing functions are summed by the expressions below. Nodes lie within 0.71 of the origin.
inline constexpr double kFar = 8;
// The decaying functions and their like do not change any more beyond this one; squares are still finite.
inline constexpr double kFarthest = 1e100;

/// ((1 + t) ln(1 + t) - t) / t^2.
inline double LogRemainder(double t) {
  if (std::fabs(t) > 0.01) return ((1 + t) * std::log1p(t) - t) / (t * t);
  return 1.0 / 2 - t * (1.0 / 6 - t * (1.0 / 12 - t * (1.0 / 20 - t * (1.0 / 30 - t * (1.0 / 42 - t / 56)))));
}

/// What is left of r^2 ln r and of r^3 for a node q seen from a point at radius R in the direction (cu, cv), once the
/// parts are taken off that are constant or linear in q: they cancel in the sum by the side conditions, but in floating
/// point only up to the rounding of numbers of the size of R^2 or R^3. With r^2 = R^2 (1 + t), T = R t.
struct FarNode {
  double q2, t, T;

  FarNode(const Node& node, double R, double cu, double cv) {
    q2 = node.u * node.u + node.v * node.v;
    T = q2 / R - 2 * (cu * node.u + cv * node.v);
    t = T / R;
  }
  double ThinPlate(double logR) const { return (q2 * (2 * logR + 1) + T * T * LogRemainder(t)) / 2; }
  /// Divided by R.
  double NaturalCubic() const {
    const double root = std::sqrt(1 + t), quotient = T / (root + 1);
    return quotient * quotient * (root + 0.5) + 1.5 * q2;
  }
};

/// The sum of weights times radial functions at (u, v).
inline RPoint RadialSum(WarpingMethod method, double s, const std::vector<Node>& nodes, double u, double v) {
  const double R = std::hypot(u, v);
  if (R > kFar && (method == WM_THIN_PLATE || method == WM_NATURAL_CUBIC)) {
    const double cu = u / R, cv = v / R, logR = std::log(R);
    if (method == WM_THIN_PLATE) {
      return WeightedSum(nodes, [=](const Node& node) { return FarNode(node, R, cu, cv).ThinPlate(logR); });
    }
    const RPoint sum = WeightedSum(nodes, [=](const Node& node) { return FarNode(node, R, cu, cv).NaturalCubic(); });
    return {R * sum.x, R * sum.y};
  }
  const double shrink = R > kFarthest ? kFarthest / R : 1;
  const double pu = u * shrink, pv = v * shrink;
  return VisitBasis(method, s, [&](const auto& basis) {
    return WeightedSum(nodes, [&, basis](const Node& node) { return basis(SquaredDistance(node, pu, pv)); });
  });
}

/// Shepard's mean of the nodes' values (here the weights), by the inverse squared distance.
inline RPoint InverseDistanceMean(const std::vector<Node>& nodes, double u, double v) {
  constexpr double kSamePlace = 1e-280;  // reciprocals of greater squares are finite
  const double R = std::hypot(u, v), shrink = R > kFarthest ? kFarthest / R : 1;
  const double pu = u * shrink, pv = v * shrink;
  RPoint sum{0, 0};
  double total = 0;
  for (const Node& node : nodes) {
    const double r2 = SquaredDistance(node, pu, pv);
    if (r2 < kSamePlace) return {node.weightX, node.weightY};
    const double weight = 1 / r2;
    sum.x += node.weightX * weight;
    sum.y += node.weightY * weight;
    total += weight;
  }
  return {sum.x / total, sum.y / total};
}

}  // namespace shr::detail
