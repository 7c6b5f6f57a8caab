// PrjEckert4 - Eckert IV, equal area with pole lines half as long as the equator.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 32-1 to 32-3; the inverse solves the same.
// The last Newton step, up to 1.2e-6 radians, is not applied on purpose: forward results lie up to 10 m from the
// equations, 17 m at the poles.
#include "projections/CentralMeridian.h"
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjEckert4", 220, 222};
constexpr Site kInverseSite{"PrjEckert4", 327, 329};

constexpr double kPoleSum = 3.5707963267948966;        // 2 + pi/2
constexpr double kTolerance = 1.1920928955078125e-06;  // radians
constexpr int kPasses = 99;

struct Constants {
  double width, height;  // x = width dLon (1 + cos theta), y = height sin theta
  CentralMeridian meridian;

  explicit Constants(const PROJDATA& work)
      : width(0.4222382 * work.MajorRadius), height(1.3265004 * work.MajorRadius), meridian(work) {}
};

/// theta of theta + sin theta cos theta + 2 sin theta = (2 + pi/2) sin phi, 32-3. Whatever the last pass gives is
/// taken.
bool SolveTheta(double phi, double& theta) {
  const double target = kPoleSum * std::sin(phi);
  theta = phi / 2;
  double sine = std::sin(theta), cosine = std::cos(theta), slope = 2 * cosine * (1 + cosine);
  if (slope == 0) return false;
  double delta = -(theta + sine * cosine + 2 * sine - target) / slope;
  for (int pass = 0; pass < kPasses; ++pass) {
    theta += delta;
    sine = std::sin(theta);
    cosine = std::cos(theta);
    slope = 2 * cosine * (cosine + 1);
    delta = -(sine * cosine + theta + 2 * sine - target) / slope;
    if (std::abs(delta) <= kTolerance) break;  // deliberately without applying it
  }
  return true;
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  double theta;
  if (!SolveTheta(p.y, theta)) return Plot::Unplottable;
  p = {c.width * c.meridian.Difference(p.x) * (1 + std::cos(theta)), c.height * std::sin(theta)};  // 32-1, 32-2
  return Plot::Ok;
}

// The arcsines are not clamped: beyond the pole lines they are not numbers, and the point becomes unplottable
// downstream.
Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  const double sine = p.y / c.height, theta = std::asin(sine), cosine = std::cos(theta);
  const double d = c.width * (1 + cosine);
  if (d == 0) return Plot::Unplottable;
  p = {c.meridian.lon0 + p.x / d, std::asin((theta + sine * cosine + 2 * sine) / kPoleSum)};
  return Plot::Ok;
}

}  // namespace

bool PrjEckert4::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardSphere>(*work, pts, nPts, Constants(*work));
}

bool PrjEckert4::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InverseSphere>(*work, pts, nPts, Constants(*work));
}

}  // namespace orvex::detail
