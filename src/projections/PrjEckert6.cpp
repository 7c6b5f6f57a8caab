// PrjEckert6 - Eckert VI, equal area with sinusoidal meridians and pole lines half as long as the equator.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 32-4 to 32-6; the inverse solves the same.
// The last Newton step, up to 1.2e-6 radians, is not applied on purpose: forward results lie up to 11 m from the
// equations.
#include "projections/CentralMeridian.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjEckert6 {

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

  explicit Constants(const PROJDATA& work) : scale(work.MajorRadius / Sqrt(kTwoPlusPi)), meridian(work) {}
};

/// theta of theta + sin theta = (1 + pi/2) sin phi, 32-6, and its cosine. Whatever the last pass gives is taken.
template <class T>
MaskOf<T> SolveTheta(T phi, T& theta, T& cosTheta) {
  const auto [sinPhi, cosPhi] = SinCos(phi);
  const T target = kPoleSum * sinPhi, slope = 1 + cosPhi;
  const MaskOf<T> solvable = slope != T(0);
  theta = phi;
  cosTheta = cosPhi;
  T delta = -(phi + sinPhi - target) / OneUnless<T>(solvable, slope);
  Iteration<T> it(kPasses);
  while (it.Goes()) {
    it.Step(theta, theta + delta);
    const auto [sine, cosine] = SinCos(theta);
    cosTheta = cosine;
    it.Step(delta, -(sine + theta - target) / (cosine + 1));
    it.Settle(Abs(delta) <= T(kTolerance));  // deliberately without applying it
  }
  return solvable;
}

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  T theta, cosTheta;
  const MaskOf<T> plottable = SolveTheta(p.y, theta, cosTheta);
  p = {c.scale * c.meridian.Difference(p.x) * (1 + cosTheta), 2 * c.scale * theta};  // 32-4, 32-5
  return plottable;
}

// The arcsine is not clamped: beyond the pole lines it is not a number, and the point becomes unplottable downstream.
template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  const T theta = p.y / (2 * c.scale);
  const auto [sine, cosine] = SinCos(theta);
  const T width = 1 + cosine;
  const MaskOf<T> plottable = width != T(0);
  p = {c.meridian.lon0 + p.x / OneUnless<T>(plottable, c.scale * width), Asin((theta + sine) / kPoleSum)};
  return plottable;
}

// ---- exactly: the angle to rounding, nothing outside the map ----

template <class T>
Plot<T> ForwardExact(const Constants& c, Point<T>& p) {
  const T target = kPoleSum * Sin(p.y);
  T theta = p.y;
  Iteration<T> it(20);
  while (it.Goes()) {
    const auto [sine, cosine] = SinCos(theta);
    const T step = (theta + sine - target) / (1 + cosine);
    it.Step(theta, theta - step);
    it.Settle(Abs(step) <= T(1e-9));
  }
  p = {c.scale * p.x * (1 + Cos(theta)), 2 * c.scale * theta};
  return Plottable<T>();
}

template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  const T theta = p.y / (2 * c.scale);
  MaskOf<T> plottable = Abs(theta) <= T(kHalfPi + kRim);
  const auto [sine, cosine] = SinCos(theta);
  p = {AlongParallel(p.x / c.scale, 1 + cosine, plottable), ClampedAsin((theta + sine) / kPoleSum)};
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

}  // namespace orvex::detail::ORVEX_LEVEL::PrjEckert6
