// PrjEckert6 - Eckert VI, equal area with sinusoidal meridians and pole lines half as long as the equator.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 32-4 to 32-6; the inverse solves the same.
// The last Newton step, up to 1.2e-6 radians, is not applied on purpose: forward results lie up to 11 m from the
// equations.
#include "projections/CentralMeridian.h"
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjEckert6", 220, 222};
constexpr Site kInverseSite{"PrjEckert6", 324, 326};

constexpr double kPoleSum = 2.5707963267948966;  // 1 + pi/2
constexpr double kTwoPlusPi = 5.141592653589793;
constexpr double kTolerance = 1.1920928955078125e-06;  // radians
constexpr int kPasses = 99;

struct Constants {
  double scale;  // x = scale dLon (1 + cos theta), y = 2 scale theta
  CentralMeridian meridian;

  explicit Constants(const PROJDATA& work) : scale(work.MajorRadius / std::sqrt(kTwoPlusPi)), meridian(work) {}
};

/// theta of theta + sin theta = (1 + pi/2) sin phi, 32-6. Whatever the last pass gives is taken.
bool SolveTheta(double phi, double& theta) {
  const double target = kPoleSum * std::sin(phi), slope = 1 + std::cos(phi);
  theta = phi;
  if (slope == 0) return false;
  double delta = -(phi + std::sin(phi) - target) / slope;
  for (int pass = 0; pass < kPasses; ++pass) {
    theta += delta;
    delta = -(std::sin(theta) + theta - target) / (std::cos(theta) + 1);
    if (std::abs(delta) <= kTolerance) break;  // deliberately without applying it
  }
  return true;
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  double theta;
  if (!SolveTheta(p.y, theta)) return Plot::Unplottable;
  p = {c.scale * c.meridian.Difference(p.x) * (1 + std::cos(theta)), 2 * c.scale * theta};  // 32-4, 32-5
  return Plot::Ok;
}

// The arcsine is not clamped: beyond the pole lines it is not a number, and the point becomes unplottable downstream.
Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  const double theta = p.y / (2 * c.scale), width = 1 + std::cos(theta);
  const double phi = std::asin((theta + std::sin(theta)) / kPoleSum);
  if (width == 0) return Plot::Unplottable;
  p = {c.meridian.lon0 + p.x / (c.scale * width), phi};
  return Plot::Ok;
}

}  // namespace

bool PrjEckert6::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardSphere>(*work, pts, nPts, Constants(*work));
}

bool PrjEckert6::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InverseSphere>(*work, pts, nPts, Constants(*work));
}

}  // namespace orvex::detail
