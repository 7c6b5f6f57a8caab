// GeoCoeff - affine transforms given by six coefficients.
#include "georef/GeoCoeff.h"

#include <cmath>

namespace orvex::detail {

AffineCoefficients CoefficientsOf(const GEOREF& g) {
  AffineCoefficients result;
  for (std::size_t i = 0; i < result.c.size(); ++i) result.c[i] = g.Coeff[i];
  return result;
}

AffineCoefficients CoefficientsOf(const PlaneFit& fit) {
  const PlaneFrame& f = fit.frame;
  const auto row = [&f](const double* k) {
    const double byX = k[1] * f.kx, byY = k[2] * f.ky;
    return std::array{k[0] - (byX * f.cx + byY * f.cy), byX, byY};
  };
  const auto x = row(fit.x), y = row(fit.y);
  return {{x[0], x[1], x[2], y[0], y[1], y[2]}};
}

bool StoreCoefficients(const AffineCoefficients& coefficients, GEOREF& g) {
  for (const double c : coefficients.c) {
    if (!std::isfinite(c)) return false;
  }
  for (std::size_t i = 0; i < coefficients.c.size(); ++i) g.Coeff[i] = coefficients.c[i];
  return true;
}

PlaneFit PlaneOf(const AffineCoefficients& coefficients) {
  const auto& c = coefficients.c;
  return {{0, 0, 1, 1}, {c[0], c[1], c[2]}, {c[3], c[4], c[5]}};
}

std::array<GEOREFPOINT, 4> RasterCorners(int width, int height) {
  const double w = width, h = height;
  return {{{0, 0}, {w, 0}, {w, h}, {0, h}}};
}

}  // namespace orvex::detail
