// GeoHelmert - similarity transform.
#include "georef/GeoHelmert.h"

#include <algorithm>
#include <cfloat>
#include <vector>

#include "math/LeastSquares.h"

namespace orvex::detail {

bool InitializeHelmert(const Controls& controls, PlaneFit& fit) {
  TraceControls("RefInitializeHelmert\n", controls);
  const auto sourceBox = PlaneBox::Around(controls.source), destinationBox = PlaneBox::Around(controls.destination);
  const std::size_t n = controls.source.size();
  if (!sourceBox || !destinationBox || n < 2) return false;
  fit.frame = PlaneFrame::Isotropic(*sourceBox);
  if (!fit.frame.Usable()) return false;
  const PlaneFrame to = PlaneFrame::Destination(*destinationBox);

  // X = tx + a u - b v, Y = ty + b u + a v: all X first, then all Y. The columns are a, b, tx, ty.
  Matrix design(2 * n, 4);
  std::vector<double> observed(2 * n);
  for (std::size_t i = 0; i < n; ++i) {
    const double u = fit.frame.U(controls.source[i].x), v = fit.frame.V(controls.source[i].y);
    design.Column(0)[i] = u;
    design.Column(1)[i] = -v;
    design.Column(2)[i] = 1;
    design.Column(0)[n + i] = v;
    design.Column(1)[n + i] = u;
    design.Column(3)[n + i] = 1;
    observed[i] = to.U(controls.destination[i].x);
    observed[n + i] = to.V(controls.destination[i].y);
  }
  // Two points that differ at all determine the transform, so only the rounding of the solution itself is allowed for.
  const HouseholderQr qr(std::move(design), 32 * DBL_EPSILON);
  if (!qr.FullRank()) return false;
  qr.ApplyTransposed(observed.data());
  double solution[4];
  qr.Solve(observed.data(), solution);
  const auto [a, b, tx, ty] = solution;
  const double x[] = {to.cx + tx / to.kx, a / to.kx, -b / to.kx}, y[] = {to.cy + ty / to.ky, b / to.ky, a / to.ky};
  std::copy(std::begin(x), std::end(x), fit.x);
  std::copy(std::begin(y), std::end(y), fit.y);
  return true;
}

}  // namespace orvex::detail
