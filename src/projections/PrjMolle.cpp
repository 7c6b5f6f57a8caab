// PrjMolle - Mollweide, equal area in an ellipse; sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 31-1 to 31-5; the inverse solves the same.
#include "projections/CentralMeridian.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjMolle {

namespace {

constexpr Site kForwardSite{"PrjMolle", 219, 221};
constexpr Site kInverseSite{"PrjMolle", 334, 336};

constexpr double kStartNudge = 1e-07;  // radians; keeps the iteration off cos theta' = 1 at the equator
constexpr int kPasses = 499;           // one that settles in the 500th pass counts as not settled, on purpose

struct Constants {
  double width, height;  // x = width dLon cos theta, y = height sin theta
  CentralMeridian meridian;

  explicit Constants(const PROJDATA& work)
      : width(Sqrt(8.0) / kPi * work.MajorRadius), height(Sqrt(2.0) * work.MajorRadius), meridian(work) {}
};

/// theta' = 2 theta of theta' + sin theta' = pi sin phi by Newton's method, 31-4; answers where it settles. A cosine of
/// exactly 1 never does: that refuses the latitudes within 1e-8 radians north of -1e-7, where the nudged start is 0.
template <class T>
MaskOf<T> SolveTheta(T phi, T& theta) {
  const T target = kPi * Sin(phi);
  theta = Select(Abs(phi) < T(kStartNudge), phi + kStartNudge, phi);
  Iteration<T> it(kPasses);
  while (it.Goes()) {
    const auto [sine, cosine] = SinCos(theta);
    it.GiveUp(cosine == T(1));
    const T delta = -(theta + sine - target) / (cosine + 1);
    it.Step(theta, theta + delta);
    it.Settle(!(Abs(delta) > T(kFloatEpsilon)));
  }
  return it.Settled();
}

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  T theta;
  const MaskOf<T> plottable = SolveTheta(p.y, theta);
  const auto [sine, cosine] = SinCos(0.5 * theta);                       // 31-5
  p = {c.width * c.meridian.Difference(p.x) * cosine, c.height * sine};  // 31-1, 31-2
  return plottable;
}

// The arcsines are not clamped: beyond the outline they are not numbers, and the point becomes unplottable downstream.
template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  const T sine = p.y / c.height, theta = Asin(sine), cosTheta = Cos(theta);
  const MaskOf<T> plottable = cosTheta != T(0);
  p = {c.meridian.lon0 + p.x / (c.width * OneUnless<T>(plottable, cosTheta)), Asin((2 * theta + Sin(2 * theta)) / kPi)};
  return plottable;
}

// ---- exactly ----
//
// By u = pi - theta' and the colatitude c: u - sin u = 2 pi sin^2(c / 2), which keeps its digits at the poles.

/// u - sin u.
template <class T>
T ArcLessSine(T u, T sine) {
  const T z = u * u;
  const T series =
      u * z *
      (1.0 / 6 -
       z * (1.0 / 120 -
            z * (1.0 / 5040 -
                 z * (1.0 / 362880 - z * (1.0 / 39916800 - z * (1.0 / 6227020800.0 - z * (1.0 / 1307674368000.0)))))));
  return Select(u < T(1), series, u - sine);
}

template <class T>
T SolveKepler(T target) {
  const T t = Pow(6 * target, T(1.0 / 3)), z = t * t;
  T u = t * (1 + z * (1.0 / 60 + z * (1.0 / 1400 + z * (1.0 / 25200 + z * (43.0 / 17248000)))));
  Iteration<T> it(20);
  while (it.Goes()) {
    const T sine = Sin(u), slope = 2 * Square(Sin(u / 2));
    const MaskOf<T> open = slope != T(0);
    it.GiveUp(!open);
    const T step = (ArcLessSine(u, sine) - target) / OneUnless<T>(open, slope);
    it.Step(u, u - step);
    it.Settle(Abs(step) <= 1e-9 * u);
  }
  return u;
}

template <class T>
Plot<T> ForwardExact(const Constants& c, ExactPoint<T>& p) {
  const auto [sine, cosine] = SinCos(SolveKepler(2 * kPi * Square(Sin(Colatitude(p) / 2))) / 2);
  p.x = c.width * p.x * sine;
  p.y = CopySign(c.height * cosine, p.y);
  return Plottable<T>();
}

template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  const T height = p.y / c.height;
  MaskOf<T> plottable = Abs(height) <= T(1 + kRim);
  const T cosine = Clamp(Abs(height), 0, 1), ofHeight = Sqrt((1 - cosine) * (1 + cosine));
  // At the very poles the height tells no more of the angle than that the point is on the map.
  const T least = Abs(p.x) / (c.width * kPi), rim = PoleRim(ofHeight) / kPi;
  const T sine = Select((least > ofHeight) & (least <= ofHeight + rim), least, ofHeight), u = 2 * Atan2(sine, cosine);
  const T half = Sqrt(ArcLessSine(u, 2 * sine * cosine) / kTwoPi);
  p = {AlongParallel(p.x / c.width, sine, plottable), CopySign(kHalfPi - 2 * Asin(half), p.y)};
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

}  // namespace orvex::detail::ORVEX_LEVEL::PrjMolle
