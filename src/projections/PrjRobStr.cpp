// PrjRobStr - Robinson-Sterling: Robinson's table by Stirling's central-difference formula to second differences.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, "The Robinson Projection - A Computation Algorithm", The American Cartographer 17 (1990).
// The formula is centred on the table row next below the latitude, so that every interval ends on both of its rows and
// the map is continuous. Below the equator the table is mirrored: lengths even, distances odd. The last interval, 85 to
// 90 degrees, is centred on 85 and ends on the row of the pole; nothing beyond the pole is needed.
#include "projections/CentralMeridian.h"
#include "projections/Modules.h"
#include "projections/RobinsonTable.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjRobStr", 220, 222};
constexpr Site kInverseSite{"PrjRobStr", 320, 322};

constexpr double kInterval = kPi / 36;   // 5 degrees
constexpr double kTolerance = 1e-10;     // radians
constexpr int kPasses = 20;              // four do: the quadratics are nearly straight
constexpr double kPoleRounding = 1e-12;  // of the pole's distance; beyond it a point is outside

/// Stirling's formula over one interval: v0 + p (v+ - v-)/2 + p^2 (v+ - 2 v0 + v-)/2, p counted in intervals from the
/// row.
struct Quadratic {
  double v0, c1, c2;

  constexpr double operator()(double p) const { return v0 + (c1 + c2 * p) * p; }
  constexpr double Slope(double p) const { return c1 + 2 * c2 * p; }
};

struct Interval {
  Quadratic length, distance;
};

constexpr auto kIntervals = [] {
  std::array<Interval, kRobinsonLastInterval + 1> intervals{};
  const auto central = [](double below, double v0, double above) {
    return Quadratic{v0, (above - below) / 2, (above - 2 * v0 + below) / 2};
  };
  for (std::size_t i = 0; i < intervals.size(); ++i) {
    const RobinsonRow row = kRobinsonRowsPublished[i], above = kRobinsonRowsPublished[i + 1];
    const RobinsonRow below = i == 0 ? RobinsonRow{above.length, -above.distance} : kRobinsonRowsPublished[i - 1];
    intervals[i] = {central(below.length, row.length, above.length),
                    central(below.distance, row.distance, above.distance)};
  }
  return intervals;
}();

struct Constants {
  double width, height;  // x = width length dLon, y = height distance
  CentralMeridian meridian;

  explicit Constants(const PROJDATA& work)
      : width(0.8487 * work.MajorRadius), height(1.3523 * work.MajorRadius), meridian(work) {}
};

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  const double lat = std::abs(p.y) / kInterval;
  const double i = std::min<double>(kRobinsonLastInterval, std::floor(lat));
  const Interval& interval = kIntervals[static_cast<std::size_t>(i)];
  p = {c.width * interval.length(lat - i) * c.meridian.Difference(p.x),
       std::copysign(c.height * interval.distance(lat - i), p.y)};
  return Plot::Ok;
}

/// Intervals beyond the row at which the distance is reached.
double SolveDistance(const Quadratic& quadratic, double distance) {
  double p = (distance - quadratic.v0) / (quadratic.c1 + quadratic.c2);
  for (int pass = 0; pass < kPasses; ++pass) {
    const double delta = (quadratic(p) - distance) / quadratic.Slope(p);
    p -= delta;
    if (std::abs(delta) * kInterval <= kTolerance) break;
  }
  return p;
}

Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  double distance = std::abs(p.y / c.height);
  if (!(distance <= 1 + kPoleRounding)) return Plot::Unplottable;
  distance = std::min(distance, 1.0);
  const int i =
      RobinsonInterval(distance, [](int row) { return kIntervals[static_cast<std::size_t>(row)].distance.v0; });
  const Interval& interval = kIntervals[static_cast<std::size_t>(i)];
  const double fraction = SolveDistance(interval.distance, distance);
  p = {c.meridian.lon0 + p.x / (c.width * interval.length(fraction)),
       std::copysign(std::min((i + fraction) * kInterval, kHalfPi), p.y)};
  return Plot::Ok;
}

}  // namespace

bool PrjRobStr::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardSphere>(*work, pts, nPts, Constants(*work));
}

bool PrjRobStr::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InverseSphere>(*work, pts, nPts, Constants(*work));
}

}  // namespace orvex::detail
