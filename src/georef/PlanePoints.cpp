// PlanePoints - evaluation of polynomials, once for each instruction set.
#include "georef/PlanePoints.h"

#include "points/PointLoop.h"

namespace orvex::detail::ORVEX_LEVEL {

namespace {

// Nested form by powers of v. c holds the coefficients in the order of the terms.
template <OrderCode kOrder, class T>
T Evaluate(const double* c, T u, T v) {
  if constexpr (kOrder == OrderCode::Affine) return c[0] + (c[1] * u + c[2] * v);
  if constexpr (kOrder == OrderCode::Bilinear) return c[0] + (c[1] * u + v * (c[2] + c[3] * u));
  if constexpr (kOrder == OrderCode::Second) {
    return c[0] + (u * (c[1] + u * c[4]) + v * (c[2] + c[3] * u + v * c[5]));
  }
  if constexpr (kOrder == OrderCode::Third) {
    return c[0] +
           (u * (c[1] + u * (c[4] + u * c[6])) + v * (c[2] + u * (c[3] + u * c[7]) + v * (c[5] + u * c[8] + v * c[9])));
  }
}

template <OrderCode kOrder>
void Transform(const PointView& points, int count, const PlaneFit& fit) {
  const auto operation = [f = fit](auto& p) {
    const auto u = f.frame.U(p.x), v = f.frame.V(p.y);
    p = {Evaluate<kOrder>(f.x, u, v), Evaluate<kOrder>(f.y, u, v)};
    return Plottable<decltype(p.x + 0)>();
  };
  ConvertPoints(points, count, ScreenedImages{}, operation, "OrvexGeoRef");
}

void TransformByOrder(const PointView& points, int count, OrderCode order, const PlaneFit& fit) {
  switch (order) {
    case OrderCode::Affine:
      return Transform<OrderCode::Affine>(points, count, fit);
    case OrderCode::Bilinear:
      return Transform<OrderCode::Bilinear>(points, count, fit);
    case OrderCode::Second:
      return Transform<OrderCode::Second>(points, count, fit);
    case OrderCode::Third:
      return Transform<OrderCode::Third>(points, count, fit);
  }
}

}  // namespace

const PlaneOperations kPlaneOperations{TransformByOrder};

}  // namespace orvex::detail::ORVEX_LEVEL
