// PrjVanDer - Van der Grinten I, the world in a circle with circular meridians and parallels.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), section 29. A point is found where its two
// circles meet, which avoids the closed forms' differences of large numbers near the axes. In units of pi R, with
// l = |dLon| / pi and t = tan(theta / 2), sin theta = |2 phi / pi|, the circles are
//   meridian  (x^2 + y^2) l + x (1 - l^2) - l = 0,
//   parallel  (x^2 + y^2) t^2 - y (1 + t^3) + t = 0.
#include "math/Angles.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjVanDer {

namespace {

constexpr Site kForwardSite{"PrjVanDer", 220, 222};
constexpr Site kInverseSite{"PrjVanDer", 320, 322};

constexpr double kRounding = 1e-12;   // of the radius of the circle, and in radians beyond the antimeridian
constexpr double kTolerance = 1e-10;  // step in t; Newton's method has then converged to rounding
constexpr int kPasses = 60;           // seven do, but up to 28 within 10 m of the poles, where a pass halves the error

struct Constants {
  double R, lon0;

  explicit Constants(const PROJDATA& work) : R(work.MajorRadius), lon0(work.Lon0) {}
};

/// Difference in [-pi, pi]; a longitude on the antimeridian keeps its side.
template <class T>
T Difference(const Constants& c, T lon) {
  const T dLon = lon - c.lon0;
  const T turned = dLon - kTwoPi * Nearest(dLon / kTwoPi);  // exact: the difference is of a few turns at most
  return Select(Abs(dLon) <= T(kPi + kRounding), Clamp(dLon, -kPi, kPi), turned);
}

/// t of a latitude, radians, 0 <= lat <= pi/2.
template <class T>
T ParallelOf(T lat) {
  const T sine = lat / kHalfPi, cosine = Sqrt((kHalfPi - lat) / kHalfPi * (1 + sine));
  return sine / (1 + cosine);
}

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  const T dLon = Difference(c, p.x), lat = Clamp(Abs(p.y), 0, kHalfPi), t = ParallelOf(lat);
  const MaskOf<T> equator = lat == T(0), meridian = (dLon == T(0)) | (lat == T(kHalfPi));
  // 1 - x^2 - y^2 = (1 - l^2) w makes x = l w and y linear in w: a quadratic A w^2 + B w = C remains, none of them
  // negative.
  const T l = Abs(dLon) / kPi, D = (1 - l) * (1 + l);
  const T q = 1 - t + t * t, g = t / q, m = t / (1 + t) * D;  // g: height at which the parallel meets the circle
  const T A = l * l + Square(g * m);
  const T B = (1 - t) * (1 + t * t * (1 - t) * (1 + t)) / (q * q * (1 + t)) * D;
  const T C = Square(1 - t) * (1 + t * t) / (q * q);
  const T w = 2 * C / OneUnless<T>(!(equator | meridian), B + Sqrt(B * B + 4 * A * C));
  const T x = Select(meridian, T(0), CopySign(kPi * c.R * l * w, dLon));
  const T y = CopySign(Select(meridian, kPi * c.R * t, kPi * c.R * g * (1 - m * w)), p.y);
  p = {Select(equator, c.R * dLon, x), Select(equator, T(0), y)};
  return Plottable<T>();
}

/// t of the parallel through a point of the upper right quadrant: (y - t) (1 - y t^2) = x^2 t^2, monotonic for 0 <= t
/// <= y. On the central meridian t = y.
template <class T>
T ParallelThrough(T x, T y) {
  T t = y;
  Iteration<T> it(kPasses);
  while (it.Goes()) {
    const T u = 1 - y * t * t;
    const T slope = -u - 2 * t * (y * (y - t) + x * x);
    it.GiveUp(slope == T(0));  // the pole
    const T delta = ((y - t) * u - Square(x * t)) / OneUnless<T>(slope != T(0), slope);
    const T next = t - delta;
    it.Step(t, Select(next < T(0), T(0), Select(next > y, y, next)));
    it.Settle(Abs(delta) <= T(kTolerance));
  }
  return t;
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  T x = Abs(p.x) / (kPi * c.R), y = Abs(p.y) / (kPi * c.R);
  const MaskOf<T> plottable = x * x + y * y <= T(1 + kRounding);
  x = Select(plottable, x, T(0));
  y = Select(plottable, y, T(0));
  const T inside = (1 - y) * (1 + y) - x * x;
  const T l = 2 * x / OneUnless<T>(x != T(0), inside + Sqrt(inside * inside + 4 * x * x));
  const T t = ParallelThrough(x, Clamp(y, 0, 1));
  p = {c.lon0 + CopySign(kPi * Clamp(l, 0, 1), p.x), CopySign(kPi * t / (1 + t * t), p.y)};
  return plottable;
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
    return InverseExactly(call, kInverseSite, [c = Constants(*call.work)](auto& p) { return InverseSphere(c, p); });
  }
  return InverseEach(call, kInverseSite, [c = Constants(*call.work)](auto& p) { return InverseSphere(c, p); });
}

bool HasExactForm(const PROJDATA&) {
  return true;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjVanDer
