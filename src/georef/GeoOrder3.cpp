// GeoOrder3 - polynomials to the third order.
#include "georef/GeoOrder3.h"

#include "math/LeastSquares.h"

namespace orvex::detail {

namespace {

using Terms = double[PlaneFit::kMaxTerms];

void FillTerms(double u, double v, Terms& t) {
  const double values[] = {1, u, v, u * v, u * u, v * v, u * u * u, u * u * v, u * v * v, v * v * v};
  std::copy(std::begin(values), std::end(values), t);
}

// Nested form by powers of v. c holds the coefficients in the order of the terms.
template <OrderCode Order>
double Evaluate(const double* c, double u, double v) {
  if constexpr (Order == OrderCode::Affine) return c[0] + (c[1] * u + c[2] * v);
  if constexpr (Order == OrderCode::Bilinear) return c[0] + (c[1] * u + v * (c[2] + c[3] * u));
  if constexpr (Order == OrderCode::Second) return c[0] + (u * (c[1] + u * c[4]) + v * (c[2] + c[3] * u + v * c[5]));
  return c[0] +
         (u * (c[1] + u * (c[4] + u * c[6])) + v * (c[2] + u * (c[3] + u * c[7]) + v * (c[5] + u * c[8] + v * c[9])));
}

template <OrderCode Order>
void Forward(const PlaneFit& fit, GEOREFPOINT* pts, int n) {
  TransformEach(pts, n, [f = fit](const GEOREFPOINT& p) {
    const double u = f.frame.U(p.x), v = f.frame.V(p.y);
    return GEOREFPOINT{Evaluate<Order>(f.x, u, v), Evaluate<Order>(f.y, u, v)};
  });
}

}  // namespace

std::size_t TermCount(OrderCode order) {
  switch (order) {
    case OrderCode::Affine:
      return 3;
    case OrderCode::Bilinear:
      return 4;
    case OrderCode::Second:
      return 6;
    default:
      return 10;
  }
}

bool InitializeOrder3(OrderCode order, const Controls& controls, PlaneFit& fit) {
  TraceControls("RefInitializeOrder3\n", controls);
  const auto sourceBox = PlaneBox::Around(controls.source), destinationBox = PlaneBox::Around(controls.destination);
  const std::size_t n = controls.source.size(), terms = TermCount(order);
  if (!sourceBox || !destinationBox || n < terms) return false;
  fit.frame = PlaneFrame::PerAxis(*sourceBox);
  if (!fit.frame.Usable()) return false;
  const PlaneFrame to = PlaneFrame::Destination(*destinationBox);

  Matrix design(n, terms);
  std::vector<double> x(n), y(n);
  for (std::size_t i = 0; i < n; ++i) {
    Terms t;
    FillTerms(fit.frame.U(controls.source[i].x), fit.frame.V(controls.source[i].y), t);
    for (std::size_t j = 0; j < terms; ++j) design.Column(j)[i] = t[j];
    x[i] = to.U(controls.destination[i].x);
    y[i] = to.V(controls.destination[i].y);
  }
  const HouseholderQr qr(std::move(design), RankTolerance(*sourceBox, fit.frame));
  if (!qr.FullRank()) return false;
  qr.ApplyTransposed(x.data());
  qr.ApplyTransposed(y.data());
  qr.Solve(x.data(), fit.x);
  qr.Solve(y.data(), fit.y);
  for (std::size_t j = 0; j < terms; ++j) {
    fit.x[j] /= to.kx;
    fit.y[j] /= to.ky;
  }
  fit.x[0] += to.cx;
  fit.y[0] += to.cy;
  return true;
}

void Order3Forward(OrderCode order, const PlaneFit& fit, GEOREFPOINT* pts, int n) {
  switch (order) {
    case OrderCode::Affine:
      return Forward<OrderCode::Affine>(fit, pts, n);
    case OrderCode::Bilinear:
      return Forward<OrderCode::Bilinear>(fit, pts, n);
    case OrderCode::Second:
      return Forward<OrderCode::Second>(fit, pts, n);
    case OrderCode::Third:
      return Forward<OrderCode::Third>(fit, pts, n);
  }
}

}  // namespace orvex::detail
