// PrjRobin - Robinson by cubics through its table; a compromise, neither conformal nor equal area.
// Sphere only, of radius MajorRadius whatever the flattening. The table and its source stand in RobinsonTable.h.
// On purpose: the central meridian is always Greenwich, Lon0 is not read; the inverse works in single precision, which
// leaves it good to 2.1e-5 degrees.
#include "projections/Modules.h"
#include "projections/RobinsonTable.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjRobin", 273, 275};
constexpr Site kInverseSite{"PrjRobin", 343, 345};

constexpr double kWidth = 0.8487f;  // single precision values, widened
constexpr double kHeight = 1.3523f;
constexpr double kInterval = 0.0872664600610733;            // 5 degrees in radians,
constexpr double kIntervalsPerRadian = 11.459156036376953;  // and its inverse
constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr float kRadiansPerDegree = 0.017453292f;
constexpr float kPoleMargin = 1.000001f;

constexpr double kTolerance = 1e-08;  // degrees
constexpr int kPasses = 50;           // four do for every input tried

struct Constants {
  double R;
};

Constants Prepare(const PROJDATA& work) {
  return {work.MajorRadius};
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  const double lat = std::abs(p.y);
  const double i = std::min<double>(kRobinsonLastInterval, std::floor(lat * kIntervalsPerRadian));
  const double d = (lat - i * kInterval) * kDegreesPerRadian;
  const RobinsonCubics& row = kRobinsonCubics[static_cast<std::size_t>(i)];
  p = {kWidth * c.R * row.length(d) * p.x, std::copysign(kHeight * c.R * row.distance(d), p.y)};
  return Plot::Ok;
}

/// Degrees into the interval at which the cubic reaches Y. The iteration runs in double: in single precision it would
/// never settle on some inputs.
float SolveCubic(const RobinsonCubic& cubic, const RobinsonCubic& next, float Y) {
  const double v0 = cubic.v0, c1 = cubic.c1, c2 = cubic.c2, c3 = cubic.c3;
  double t = (Y - v0) * 5 / (next.v0 - v0);
  for (int pass = 0; pass < kPasses; ++pass) {
    const double delta = (cubic(t) - Y) / ((3 * c3 * t + 2 * c2) * t + c1);
    t -= delta;
    if (std::abs(delta) < kTolerance) break;
  }
  return static_cast<float>(t);
}

Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  const auto X = static_cast<float>(p.x / c.R / kWidth), Y = static_cast<float>(std::abs(p.y / c.R / kHeight));
  if (Y < 1) {
    const int i =
        RobinsonInterval(Y, [](int row) { return kRobinsonCubics[static_cast<std::size_t>(row)].distance.v0; });
    const auto row = static_cast<std::size_t>(i);
    const RobinsonCubics& cubics = kRobinsonCubics[row];
    const float t = SolveCubic(cubics.distance, kRobinsonCubics[row + 1].distance, Y);
    const float phi = (5 * static_cast<float>(i) + t) * kRadiansPerDegree;
    p = {X / cubics.length(t), p.y < 0 ? -phi : phi};
  } else if (Y <= kPoleMargin) {
    p = {X / kRobinsonCubics.back().length.v0, p.y >= 0 ? kHalfPi : -kHalfPi};
  } else {
    p = {0, 0};  // deliberately plottable
  }
  return Plot::Ok;
}

}  // namespace

bool PrjRobin::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardSphere>(*work, pts, nPts, Prepare(*work));
}

bool PrjRobin::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InverseSphere>(*work, pts, nPts, Prepare(*work));
}

bool PrjRobin::InDomain(const PROJDATA* rec, const PROJPOINT* point) {
  return rec != nullptr && point != nullptr && -180 < point->x && point->x < 180;
}

bool PrjRobin::OffsetSplit(const PROJDATA* rec, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy) {
  return rec != nullptr && OffsetAboutMeridian(0, pts, nPts, dx, dy);
}

}  // namespace orvex::detail
