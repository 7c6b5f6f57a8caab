// PrjRobin - Robinson by cubics through its table; a compromise, neither conformal nor equal area.
// Sphere only, of radius MajorRadius whatever the flattening. The table and its source stand in RobinsonTable.h.
// On purpose: the central meridian is always Greenwich, Lon0 is not read; the inverse works in single precision, which
// leaves it good to 2.1e-5 degrees.
#include "math/Angles.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"
#include "projections/RobinsonTable.h"

namespace orvex::detail::ORVEX_LEVEL::PrjRobin {

namespace {

constexpr Site kForwardSite{"PrjRobin", 273, 275};
constexpr Site kInverseSite{"PrjRobin", 343, 345};

constexpr double kWidth = 0.8487f;  // single precision values, widened
constexpr double kHeight = 1.3523f;
constexpr double kInterval = 0.0872664600610733;            // 5 degrees in radians,
constexpr double kIntervalsPerRadian = 11.459156036376953;  // and its inverse
constexpr double kRadiansPerDegreeSingle = 0.017453292f;
constexpr double kPoleMargin = 1.000001f;

constexpr double kTolerance = 1e-08;  // degrees
constexpr int kPasses = 50;           // four do for every input tried

struct Constants {
  double R;

  explicit Constants(const PROJDATA& work) : R(work.MajorRadius) {}
};

/// One cubic of the table for each lane.
template <class T>
struct Cubics {
  T v0, c1, c2, c3;

  ORVEX_INLINE T operator()(T d) const { return v0 + ((c3 * d + c2) * d + c1) * d; }
  /// The same in single precision, like everything computed with the cubics backwards.
  ORVEX_INLINE T Single(T d) const {
    const T sum = ToFloat(ToFloat(c3 * d) + c2);
    return ToFloat(v0 + ToFloat(ToFloat(ToFloat(sum * d) + c1) * d));
  }
};

template <class T, class Number>
Cubics<T> RowsOf(const RobinsonCubics<Number> (&table)[kRobinsonRows], const int (&row)[kLaneCount<T>],
                 RobinsonCubic<Number> RobinsonCubics<Number>::*which) {
  return {Gather<T>([&](int lane) { return (table[row[lane]].*which).v0; }),
          Gather<T>([&](int lane) { return (table[row[lane]].*which).c1; }),
          Gather<T>([&](int lane) { return (table[row[lane]].*which).c2; }),
          Gather<T>([&](int lane) { return (table[row[lane]].*which).c3; })};
}

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  const T lat = Abs(p.y);
  const T floor = Floor(lat * kIntervalsPerRadian);
  const T i = Select(floor < T(kRobinsonLastInterval), floor, T(kRobinsonLastInterval));
  int row[kLaneCount<T>];
  for (int lane = 0; lane < kLaneCount<T>; ++lane) row[lane] = static_cast<int>(Get(i, lane));
  const Cubics<T> length = RowsOf<T>(kRobinsonCubics, row, &RobinsonCubics<float>::length);
  const Cubics<T> distance = RowsOf<T>(kRobinsonCubics, row, &RobinsonCubics<float>::distance);
  const T d = (lat - i * kInterval) * kDegreesPerRadian;
  p = {kWidth * c.R * length(d) * p.x, CopySign(kHeight * c.R * distance(d), p.y)};
  return Plottable<T>();
}

/// Degrees into the interval at which the cubic, which ends at `end`, reaches Y. The iteration runs in double: in
/// single precision it would never settle on some inputs.
template <class T>
T SolveCubic(const Cubics<T>& cubic, T end, T Y) {
  T t = (Y - cubic.v0) * 5 / (end - cubic.v0);
  Iteration<T> it(kPasses);
  while (it.Goes()) {
    const T delta = (cubic(t) - Y) / ((3 * cubic.c3 * t + 2 * cubic.c2) * t + cubic.c1);
    it.Step(t, t - delta);
    it.Settle(Abs(delta) < T(kTolerance));
  }
  return t;
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  const T X = ToFloat(p.x / c.R / kWidth), Y = ToFloat(Abs(p.y / c.R / kHeight));
  const MaskOf<T> inside = Y < T(1), onPole = Y <= T(kPoleMargin);
  const T distance = Select(inside, Y, T(0));
  int row[kLaneCount<T>];
  for (int lane = 0; lane < kLaneCount<T>; ++lane) {
    row[lane] = RobinsonInterval(Get(distance, lane), [](int n) { return double(kRobinsonCubics[n].distance.v0); });
  }
  const Cubics<T> lengths = RowsOf<T>(kRobinsonCubics, row, &RobinsonCubics<float>::length);
  const T end = Gather<T>([&row](int lane) { return kRobinsonCubics[row[lane] + 1].distance.v0; });
  const T t = ToFloat(SolveCubic(RowsOf<T>(kRobinsonCubics, row, &RobinsonCubics<float>::distance), end, distance));
  const T phi = ToFloat(ToFloat(Gather<T>([&row](int lane) { return 5 * row[lane]; }) + t) * kRadiansPerDegreeSingle);
  const T pole = Select(p.y >= T(0), T(kHalfPi), T(-kHalfPi));
  // Beyond the poles the answer is 0, 0: deliberately plottable.
  const double polesLength = kRobinsonCubics[kRobinsonRows - 1].length.v0;
  p.x = Select(inside, ToFloat(X / lengths.Single(t)), Select(onPole, ToFloat(X / polesLength), T(0)));
  p.y = Select(inside, Select(p.y < T(0), -phi, phi), Select(onPole, pole, T(0)));
  return Plottable<T>();
}

// ---- exactly: the table as published, in double precision ----

constexpr double kExactWidth = 0.8487, kExactHeight = 1.3523;

template <class T>
Plot<T> ForwardExact(const Constants& c, Point<T>& p) {
  const T degrees = RadToDeg(Abs(p.y)), floor = Floor(degrees / 5);
  const T i = Select(floor < T(kRobinsonLastInterval), floor, T(kRobinsonLastInterval)), d = degrees - 5 * i;
  int row[kLaneCount<T>];
  for (int lane = 0; lane < kLaneCount<T>; ++lane) row[lane] = static_cast<int>(Get(i, lane));
  const T length = RowsOf<T>(kRobinsonSplines.rows, row, &RobinsonCubics<double>::length)(d);
  const T distance = RowsOf<T>(kRobinsonSplines.rows, row, &RobinsonCubics<double>::distance)(d);
  p = {kExactWidth * c.R * length * p.x, CopySign(kExactHeight * c.R * distance, p.y)};
  return Plottable<T>();
}

template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  const T height = Abs(p.y) / (kExactHeight * c.R);
  MaskOf<T> plottable = height <= T(1 + kRim);
  const T distance = Select(plottable, Clamp(height, 0, 1), T(0));
  int row[kLaneCount<T>];
  for (int lane = 0; lane < kLaneCount<T>; ++lane) {
    row[lane] = RobinsonInterval(Get(distance, lane), [](int n) { return kRobinsonSplines.rows[n].distance.v0; });
  }
  const Cubics<T> cubic = RowsOf<T>(kRobinsonSplines.rows, row, &RobinsonCubics<double>::distance);
  const T end = Gather<T>([&row](int lane) { return kRobinsonSplines.rows[row[lane] + 1].distance.v0; });
  const T d = SolveCubic(cubic, end, distance);
  const T length = RowsOf<T>(kRobinsonSplines.rows, row, &RobinsonCubics<double>::length)(d);
  const T degrees = Gather<T>([&row](int lane) { return 5 * row[lane]; }) + d;
  p = {AlongParallel(p.x / c.R, kExactWidth * length, plottable), CopySign(DegToRad(degrees), p.y)};
  return plottable;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite, [c = Constants(*call.work)](auto& p) { return ForwardExact(c, p); });
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

}  // namespace orvex::detail::ORVEX_LEVEL::PrjRobin
