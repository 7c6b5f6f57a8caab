// PrjRobStr - Robinson-Sterling: Robinson's table by Stirling's central-difference formula to second differences.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, "The Robinson Projection - A Computation Algorithm", The American Cartographer 17 (1990).
// The formula is centred on the table row next below the latitude, so that every interval ends on both of its rows and
// the map is continuous. Below the equator the table is mirrored: lengths even, distances odd. The last interval, 85 to
// 90 degrees, is centred on 85 and ends on the row of the pole; nothing beyond the pole is needed.
#include "projections/CentralMeridian.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"
#include "projections/RobinsonTable.h"

namespace orvex::detail::ORVEX_LEVEL::PrjRobStr {

namespace {

constexpr Site kForwardSite{"PrjRobStr", 220, 222};
constexpr Site kInverseSite{"PrjRobStr", 320, 322};

constexpr double kInterval = kPi / 36;   // 5 degrees
constexpr double kTolerance = 1e-10;     // radians
constexpr int kPasses = 20;              // four do: the quadratics are nearly straight
constexpr double kPoleRounding = 1e-12;  // of the pole's distance; beyond it a point is outside

/// Stirling's formula over one interval: v0 + p (v+ - v-)/2 + p^2 (v+ - 2 v0 + v-)/2, p counted in intervals from the
/// row.
template <class T>
struct Quadratic {
  T v0, c1, c2;

  ORVEX_INLINE constexpr T operator()(T p) const { return v0 + (c1 + c2 * p) * p; }
  ORVEX_INLINE constexpr T Slope(T p) const { return c1 + 2 * c2 * p; }
};

struct Interval {
  Quadratic<double> length, distance;
};

struct Intervals {
  Interval rows[kRobinsonLastInterval + 1];
};

constexpr Quadratic<double> Central(double below, double v0, double above) {
  return {v0, (above - below) / 2, (above - 2 * v0 + below) / 2};
}

constexpr Intervals kIntervals = [] {
  Intervals intervals{};
  for (int i = 0; i <= kRobinsonLastInterval; ++i) {
    const RobinsonRow row = kRobinsonRowsPublished[i], above = kRobinsonRowsPublished[i + 1];
    const RobinsonRow below = i == 0 ? RobinsonRow{above.length, -above.distance} : kRobinsonRowsPublished[i - 1];
    intervals.rows[i] = {Central(below.length, row.length, above.length),
                         Central(below.distance, row.distance, above.distance)};
  }
  return intervals;
}();

struct Constants {
  double width, height;  // x = width length dLon, y = height distance
  CentralMeridian meridian;

  explicit Constants(const PROJDATA& work)
      : width(0.8487 * work.MajorRadius), height(1.3523 * work.MajorRadius), meridian(work) {}
};

/// One of the quadratics of each lane's row.
template <class T>
Quadratic<T> RowsOf(const int (&row)[kLaneCount<T>], Quadratic<double> Interval::*which) {
  return {Gather<T>([&](int lane) { return (kIntervals.rows[row[lane]].*which).v0; }),
          Gather<T>([&](int lane) { return (kIntervals.rows[row[lane]].*which).c1; }),
          Gather<T>([&](int lane) { return (kIntervals.rows[row[lane]].*which).c2; })};
}

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  const T lat = Abs(p.y) / kInterval;
  const T floor = Floor(lat);
  const T i = Select(floor < T(kRobinsonLastInterval), floor, T(kRobinsonLastInterval));
  int row[kLaneCount<T>];
  for (int lane = 0; lane < kLaneCount<T>; ++lane) row[lane] = static_cast<int>(Get(i, lane));
  const Quadratic<T> length = RowsOf<T>(row, &Interval::length), distance = RowsOf<T>(row, &Interval::distance);
  p = {c.width * length(lat - i) * c.meridian.Difference(p.x), CopySign(c.height * distance(lat - i), p.y)};
  return Plottable<T>();
}

/// Intervals beyond the row at which the distance is reached.
template <class T>
T SolveDistance(const Quadratic<T>& quadratic, T distance) {
  T p = (distance - quadratic.v0) / (quadratic.c1 + quadratic.c2);
  Iteration<T> it(kPasses);
  while (it.Goes()) {
    const T delta = (quadratic(p) - distance) / quadratic.Slope(p);
    it.Step(p, p - delta);
    it.Settle(Abs(delta) * kInterval <= T(kTolerance));
  }
  return p;
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  const T y = Abs(p.y / c.height);
  const MaskOf<T> plottable = y <= T(1 + kPoleRounding);
  const T reached = Select(plottable, Clamp(y, 0, 1), T(0));
  int row[kLaneCount<T>];
  for (int lane = 0; lane < kLaneCount<T>; ++lane) {
    row[lane] = RobinsonInterval(Get(reached, lane), [](int n) { return kIntervals.rows[n].distance.v0; });
  }
  const Quadratic<T> length = RowsOf<T>(row, &Interval::length), distance = RowsOf<T>(row, &Interval::distance);
  const T fraction = SolveDistance(distance, reached), below = Gather<T>([&row](int lane) { return row[lane]; });
  p = {c.meridian.lon0 + p.x / (c.width * length(fraction)),
       CopySign(Clamp((below + fraction) * kInterval, -kHalfPi, kHalfPi), p.y)};
  return plottable;
}

/// Exactly: nothing outside the map.
template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  Plot<T> plot = InverseSphere(c, p);
  const T lon = p.x - c.meridian.lon0;
  plot.plottable = plot.plottable & (Abs(lon) <= T(kPi + kRim));
  p.x = Clamp(lon, -kPi, kPi);
  return plot;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite, [c = Constants(*call.work)](auto& p) { return ForwardSphere(c, p); });
  }
  return ForwardEach(call, kForwardSite, [c = Constants(*call.work)](auto& p) { return ForwardSphere(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite, [c = Constants(*call.work)](auto& p) { return InverseExact(c, p); });
  }
  return InverseEach(call, kInverseSite, [c = Constants(*call.work)](auto& p) { return InverseSphere(c, p); });
}

bool HasExactForm(const PROJDATA&) {
  return true;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjRobStr
