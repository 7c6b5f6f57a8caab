// PrjEckert4 - Eckert IV, equal area with pole lines half as long as the equator.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 32-1 to 32-3; the inverse solves the same.
// The last Newton step, up to 1.2e-6 radians, is not applied on purpose: forward results lie up to 10 m from the
// equations, 17 m at the poles.
#include "projections/CentralMeridian.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjEckert4 {

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

/// theta of theta + sin theta cos theta + 2 sin theta = (2 + pi/2) sin phi, 32-3, by its sine and cosine. Whatever the
/// last pass gives is taken.
template <class T>
MaskOf<T> SolveTheta(T phi, SineCosine<T>& angle) {
  const T target = kPoleSum * Sin(phi);
  T theta = phi / 2;
  angle = SinCos(theta);
  const T slope = 2 * angle.cosine * (1 + angle.cosine);
  const MaskOf<T> solvable = slope != T(0);
  T delta = -(theta + angle.sine * angle.cosine + 2 * angle.sine - target) / OneUnless<T>(solvable, slope);
  Iteration<T> it(kPasses);
  while (it.Goes()) {
    it.Step(theta, theta + delta);
    angle = SinCos(theta);
    const auto [sine, cosine] = angle;
    it.Step(delta, -(sine * cosine + theta + 2 * sine - target) / (2 * cosine * (cosine + 1)));
    it.Settle(Abs(delta) <= T(kTolerance));  // deliberately without applying it
  }
  return solvable;
}

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  SineCosine<T> theta;
  const MaskOf<T> plottable = SolveTheta(p.y, theta);
  p = {c.width * c.meridian.Difference(p.x) * (1 + theta.cosine), c.height * theta.sine};  // 32-1, 32-2
  return plottable;
}

// The arcsines are not clamped: beyond the pole lines they are not numbers, and the point becomes unplottable
// downstream.
template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  const T sine = p.y / c.height, theta = Asin(sine), cosine = Cos(theta);
  const T d = c.width * (1 + cosine);
  const MaskOf<T> plottable = d != T(0);
  p = {c.meridian.lon0 + p.x / OneUnless<T>(plottable, d), Asin((theta + sine * cosine + 2 * sine) / kPoleSum)};
  return plottable;
}

// ---- exactly: all digits of the constants, angles to rounding ----
//
// By delta = pi/2 - theta and the colatitude c: delta - sin delta cos delta + 2 (1 - cos delta) = (2 + pi/2) (1 - sin
// phi), which keeps its digits at the poles.

struct ExactConstants {
  double a, width = 0.4222382003157712, height = 1.3265004281770023;  // 2 / sqrt(pi (4 + pi)), 2 sqrt(pi / (4 + pi))

  explicit ExactConstants(const PROJDATA& work) : a(work.MajorRadius) {}
};

template <class T>
T ToPoleLine(T colatitude) {
  const T target = kPoleSum * 2 * Square(Sin(colatitude / 2));
  T delta = colatitude * (1.3362 - 0.2141 * colatitude);  // right at both ends
  Iteration<T> it(20);
  while (it.Goes()) {
    const auto [sine, cosine] = SinCos(delta);
    const T slope = 2 * sine * (1 + sine), versine = 2 * Square(Sin(delta / 2));
    const MaskOf<T> open = slope != T(0);
    it.GiveUp(!open);
    const T step = (delta - sine * cosine + 2 * versine - target) / OneUnless<T>(open, slope);
    it.Step(delta, delta - step);
    it.Settle(Abs(step) <= 1e-9 * delta);
  }
  return delta;
}

template <class T>
Plot<T> ForwardExact(const ExactConstants& c, ExactPoint<T>& p) {
  const T colatitude = Colatitude(p);
  const auto [sine, cosine] = SinCos(ToPoleLine(colatitude));
  p.x = c.a * c.width * p.x * (1 + sine);  // 32-1, 32-2
  p.y = CopySign(c.a * c.height * cosine, p.y);
  return Plottable<T>();
}

template <class T>
Plot<T> InverseExact(const ExactConstants& c, Point<T>& p) {
  const T height = p.y / (c.a * c.height);
  MaskOf<T> plottable = Abs(height) <= T(1 + kRim);
  const T cosine = Clamp(Abs(height), 0, 1), sine = Sqrt((1 - cosine) * (1 + cosine)), delta = Atan2(sine, cosine);
  const T rest = (delta - sine * cosine) + 2 * Square(sine) / (1 + cosine);  // (2 + pi/2) (1 - sin phi)
  const T half = Sqrt(rest / (2 * kPoleSum));
  p = {AlongParallel(p.x / c.a, c.width * (1 + sine), plottable, PoleRim(sine)),
       CopySign(kHalfPi - 2 * Asin(half), p.y)};
  return plottable;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite, [c = ExactConstants(*call.work)](auto& p) { return ForwardExact(c, p); });
  }
  return ForwardEach(call, kForwardSite, [c = Constants(*call.work)](auto& p) { return ForwardSphere(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite, [c = ExactConstants(*call.work)](auto& p) { return InverseExact(c, p); });
  }
  return InverseEach(call, kInverseSite, [c = Constants(*call.work)](auto& p) { return InverseSphere(c, p); });
}

bool HasExactForm(const PROJDATA&) {
  return true;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjEckert4
