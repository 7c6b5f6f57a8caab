// GeoOrder3 - polynomials to the third order.
#include "georef/GeoOrder3.h"

#include <algorithm>
#include <vector>

#include "math/LeastSquares.h"

namespace orvex::detail {

namespace {

using Terms = double[PlaneFit::kMaxTerms];

void FillTerms(double u, double v, Terms& t) {
  const double values[] = {1, u, v, u * v, u * u, v * v, u * u * u, u * u * v, u * v * v, v * v * v};
  std::copy(std::begin(values), std::end(values), t);
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

}  // namespace orvex::detail
