// PrjMolle - Mollweide, equal area in an ellipse; sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 31-1 to 31-5; the inverse solves the same.
#include "projections/CentralMeridian.h"
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjMolle", 219, 221};
constexpr Site kInverseSite{"PrjMolle", 334, 336};

constexpr double kStartNudge = 1e-07;  // radians; keeps the iteration off cos theta' = 1 at the equator
constexpr int kPasses = 499;           // one that settles in the 500th pass counts as not settled, on purpose

struct Constants {
  double width, height;  // x = width dLon cos theta, y = height sin theta
  CentralMeridian meridian;

  explicit Constants(const PROJDATA& work)
      : width(std::sqrt(8.0) / kPi * work.MajorRadius), height(std::sqrt(2.0) * work.MajorRadius), meridian(work) {}
};

/// theta' = 2 theta of theta' + sin theta' = pi sin phi by Newton's method, 31-4; false when it does not settle. A
/// cosine of exactly 1 never settles: that refuses the latitudes within 1e-8 radians north of -1e-7, where the nudged
/// start is 0.
bool SolveTheta(double phi, double& theta) {
  const double target = kPi * std::sin(phi);
  theta = std::abs(phi) < kStartNudge ? phi + kStartNudge : phi;
  for (int pass = 0; pass < kPasses; ++pass) {
    const double cosTheta = std::cos(theta);
    if (cosTheta == 1.0) return false;
    const double delta = -(theta + std::sin(theta) - target) / (cosTheta + 1);
    theta += delta;
    if (!(std::abs(delta) > kFloatEpsilon)) return true;
  }
  return false;
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  double theta;
  if (!SolveTheta(p.y, theta)) return Plot::Unplottable;
  theta *= 0.5;                                                                              // 31-5
  p = {c.width * c.meridian.Difference(p.x) * std::cos(theta), c.height * std::sin(theta)};  // 31-1, 31-2
  return Plot::Ok;
}

// The arcsines are not clamped: beyond the outline they are not numbers, and the point becomes unplottable downstream.
Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  const double theta = std::asin(p.y / c.height), cosTheta = std::cos(theta);
  if (cosTheta == 0) return Plot::Unplottable;
  p = {c.meridian.lon0 + p.x / (c.width * cosTheta), std::asin((2 * theta + std::sin(2 * theta)) / kPi)};
  return Plot::Ok;
}

}  // namespace

bool PrjMolle::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardSphere>(*work, pts, nPts, Constants(*work));
}

bool PrjMolle::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InverseSphere>(*work, pts, nPts, Constants(*work));
}

}  // namespace orvex::detail
