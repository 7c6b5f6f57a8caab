// PrjPolycon - Polyconic (American polyconic), sphere and ellipsoid. Lat0 is the latitude of origin.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), p. 129-130, with the meridian arc of 3-21.
// Every parallel is true to scale, as is the central meridian.
// Fixed on purpose: the sphere's inverse delivers the estimate before the last one, and compares its first one with y.
#include "math/AuxiliaryLatitudes.h"
#include "math/Iteration.h"
#include "math/MeridianArc.h"
#include "projections/CentralMeridian.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjPolycon {

namespace {

constexpr Site kForwardSite{"PrjPolycon", 222, 224};
constexpr Site kInverseSite{"PrjPolycon", 453, 455};
constexpr double kSphereTolerance = kFloatEpsilon;          // radians
constexpr double kEllipsoidTolerance = 10 * kFloatEpsilon;  // radians

struct Constants {
  double a, e2, lat0;
  CentralMeridian meridian;
  MeridianArc arc;
  double M0;

  explicit Constants(const PROJDATA& work)
      : a(work.MajorRadius),
        e2(EccentricitySquared(work.Flattening)),
        lat0(work.Lat0),
        meridian(work),
        arc(a, e2),
        M0(arc(lat0)) {}
};

/// What a parallel that is not the equator adds to the origin of its circle: r sin E east and r (1 - cos E) north; the
/// latter without cancellation, near the equator r is a cotangent without bound.
template <class T>
Point<T> OnCircle(T radius, T E) {
  const auto [sine, cosine] = SinCos(E / 2);
  return {radius * (2 * sine * cosine), radius * (2 * (sine * sine))};
}

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  const T phi = p.y, dLon = c.meridian.Difference(p.x);
  const MaskOf<T> equator = phi == T(0);
  const auto [sinPhi, cosPhi] = SinCos(phi);
  const Point<T> arc = OnCircle(c.a * (cosPhi / OneUnless<T>(!equator, sinPhi)), dLon * sinPhi);
  p.x = Select(equator, c.a * dLon, arc.x);
  p.y = Select(equator, T(-c.a * c.lat0), c.a * (phi - c.lat0) + arc.y);
  return Plottable<T>();
}

template <class T, class AnyConstants>
Plot<T> ForwardEllipsoid(const AnyConstants& c, Point<T>& p) {
  const T phi = p.y, dLon = c.meridian.Difference(p.x);
  const auto [sinPhi, cosPhi] = SinCos(phi);
  const MaskOf<T> equator = phi == T(0);
  const T w = 1 - c.e2 * (sinPhi * sinPhi);
  const MaskOf<T> plottable = w > T(0);
  const T radius = c.a / Sqrt(OneUnless<T>(plottable, w)) * cosPhi / OneUnless<T>(!equator, sinPhi);
  const Point<T> arc = OnCircle(radius, dLon * sinPhi);
  p.x = Select(equator, c.a * dLon, arc.x);
  p.y = Select(equator, T(-c.M0), c.arc.Length(phi, sinPhi, cosPhi) - c.M0 + arc.y);
  return plottable;
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  const MaskOf<T> equator = p.y == T(-c.lat0 * c.a);
  const T A = p.y / c.a + c.lat0, B = Square(p.x / c.a) + A * A;
  const auto step = [A, B](T phi, T& next) {
    const T t = Tan(phi);
    const MaskOf<T> possible = t != T(0);
    const T divisor = (phi - A) / OneUnless<T>(possible, t) - 1;
    next = phi - (A * (phi * t + 1) - phi - 0.5 * (phi * phi + B) * t) / divisor;
    return possible & IsNumber(next);  // what is no number would not become one again
  };
  // The slot of the previous estimate starts with the northing, and the previous estimate is delivered: deliberate.
  T lat, newest;
  const T first = Select(equator, T(0), A), slot = Select(equator, T(0), p.y);
  const MaskOf<T> settled = PreviousEstimate(first, slot, kSphereTolerance, step, lat, newest);
  const auto [sinPhi, cosPhi] = SinCos(newest);
  const MaskOf<T> plottable = settled & (sinPhi != T(0));
  const T sine = Select(plottable, p.x * (sinPhi / cosPhi) / c.a, T(0));
  const T lon = Asin(sine) / OneUnless<T>(plottable, sinPhi);
  p = {Select(equator, p.x / c.a, lon) + c.meridian.lon0, Select(equator, T(0), lat)};
  return equator | plottable;
}

/// What the ellipsoid's inverse needs of a latitude.
template <class T>
struct Estimate {
  T phi, sinPhi, cosPhi, C;

  ORVEX_INLINE Estimate(MaskOf<T> where, const Estimate& a, const Estimate& b)
      : phi(Select(where, a.phi, b.phi)),
        sinPhi(Select(where, a.sinPhi, b.sinPhi)),
        cosPhi(Select(where, a.cosPhi, b.cosPhi)),
        C(Select(where, a.C, b.C)) {}

  ORVEX_INLINE Estimate(const Constants& c, T lat) : phi(lat) {
    const auto [sine, cosine] = SinCos(lat);
    sinPhi = sine;
    cosPhi = cosine;
    C = Sqrt(1 - c.e2 * (sine * sine)) * sine / cosine;
  }
};

/// One Newton step; A and B describe the point.
template <class T>
T NextLatitude(const Constants& c, T A, T B, const Estimate<T>& n) {
  const T sin2Phi = 2 * n.sinPhi * n.cosPhi, cos2Phi = 1 - 2 * n.sinPhi * n.sinPhi;
  const T cos4Phi = 2 * cos2Phi * cos2Phi - 1, cos6Phi = cos2Phi * (2 * cos4Phi - 1);
  const T C = n.C, Ma = c.arc.Length(n.phi, n.sinPhi, n.cosPhi) / c.a;
  const T dMa = c.arc.A0 - 2 * c.arc.A2 * cos2Phi + 4 * c.arc.A4 * cos4Phi - 6 * c.arc.A6 * cos6Phi;
  const T numerator = A * (C * Ma + 1) - Ma - 0.5 * (Ma * Ma + B) * C;
  const T denominator =
      c.e2 * sin2Phi * (Ma * Ma + B - 2 * A * Ma) / (4 * C) + (A - Ma) * (C * dMa - 2 / sin2Phi) - dMa;
  return n.phi - numerator / denominator;
}

template <class T>
Plot<T> InverseEllipsoid(const Constants& c, Point<T>& p) {
  const MaskOf<T> equator = p.y == T(-c.M0);
  const bool curved = 1 - c.e2 * Square(Sin(c.lat0)) > 0;
  const T A = (p.y + c.M0) / c.a, B = A * A + Square(p.x / c.a);
  const Estimate<T> idle(c, T(1));  // for lanes that are through: their own might be 0, which the step divides by
  Estimate<T> estimate(c, A);
  Iteration<T> it(kMaxPasses);
  it.GiveUp(equator);
  while (curved && it.Goes()) {
    const Estimate<T> next(c, NextLatitude(c, A, B, Estimate<T>(it.Running(), estimate, idle)));
    it.GiveUp(!IsFinite(next.phi));  // no further pass would end the loop
    const MaskOf<T> converged = Abs(next.phi - estimate.phi) <= T(kEllipsoidTolerance);
    estimate = Estimate<T>(it.Running(), next, estimate);
    it.Settle(converged);
  }
  const T sine = Select(it.Settled(), p.x * estimate.C / c.a, T(0));
  const T lon = Asin(sine) / OneUnless<T>(it.Settled(), estimate.sinPhi);
  p = {Select(equator, p.x / c.a, lon) + c.meridian.lon0, Select(equator, T(0), estimate.phi)};
  return equator | it.Settled();
}

// ---- exactly, sphere and ellipsoid ----

struct ExactConstants {
  double a, e2;
  CentralMeridian meridian;
  Meridian arc;
  double M0;

  explicit ExactConstants(const PROJDATA& work)
      : a(work.MajorRadius),
        e2(EccentricitySquared(work.Flattening)),
        meridian(work),
        arc(a, work.Flattening),
        M0(arc.Length(double(work.Lat0))) {}

  /// The meridian arc in semi-major axes.
  template <class T>
  ORVEX_INLINE T Relative(T phi, T sinPhi, T cosPhi) const {
    return arc.Length(phi, sinPhi, cosPhi) / a;
  }
};

/// The parallels are circles each of which lies within those nearer the equator, so that a point of the northern half
/// lies on one of them: where (X^2 + (A - M)^2) sin phi - 2 N (A - M) cos phi is 0. It is negative at the equator and
/// not at the pole, between which Newton's method is kept.
template <class T>
T ParallelThrough(const ExactConstants& c, T X, T A) {
  constexpr double kTolerance = 1e-15;  // radians
  T low = T(0), high = T(kHalfPi), phi = Select(A < T(kHalfPi), A, T(kHalfPi));
  Iteration<T> it(100);
  while (it.Goes()) {
    const auto [sinPhi, cosPhi] = SinCos(phi);
    const T w = 1 - c.e2 * (sinPhi * sinPhi), N = 1 / Sqrt(w), perCube = N / w;
    const T rest = A - c.Relative(phi, sinPhi, cosPhi), square = X * X + rest * rest;
    const T value = square * sinPhi - 2 * N * rest * cosPhi;
    const T slope = square * cosPhi - 2 * rest * (1 - c.e2) * perCube * sinPhi +
                    2 * cosPhi * ((1 - c.e2) * perCube * N - rest * c.e2 * sinPhi * cosPhi * perCube) +
                    2 * N * rest * sinPhi;
    const MaskOf<T> above = value > T(0);
    it.Step(high, Select(above, phi, high));
    it.Step(low, Select(above, low, phi));
    const T newton = phi - value / OneUnless<T>(slope != T(0), slope);
    const T next = Select((newton >= low) & (newton <= high), newton, (low + high) / 2);
    const T step = next - phi;
    it.Step(phi, next);
    it.Settle(Abs(step) <= T(kTolerance));
  }
  return phi;
}

template <class T>
Plot<T> InverseExact(const ExactConstants& c, Point<T>& p) {
  const T X = p.x / c.a, fromEquator = (p.y + c.M0) / c.a, A = Abs(fromEquator);
  MaskOf<T> plottable = (Abs(X) < T(10)) & (A < T(10));
  const MaskOf<T> curved = plottable & (A > T(0));
  const T phi = ParallelThrough(c, Select(curved, X, T(0)), Select(curved, A, T(1)));
  const auto [sinPhi, cosPhi] = SinCos(phi);
  const T N = 1 / Sqrt(1 - c.e2 * (sinPhi * sinPhi)), rest = A - c.Relative(phi, sinPhi, cosPhi);
  const T E = Atan2(X * sinPhi, N * cosPhi - rest * sinPhi), perRadian = Select(curved, N * cosPhi, T(1));
  const MaskOf<T> distinct = curved & (sinPhi != T(0));
  const T along = Select(distinct, perRadian * E / OneUnless<T>(distinct, sinPhi), X);
  p = {AlongParallel(along, perRadian, plottable), Select(curved, CopySign(phi, fromEquator), T(0))};
  return plottable;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite,
                          [c = Remembered<ExactConstants>(call)](auto& p) { return ForwardEllipsoid(c, p); });
  }
  const Constants c = Remembered<Constants>(call);
  if (call.work->Flattening == 0) return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardSphere(c, p); });
  return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardEllipsoid(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite,
                          [c = Remembered<ExactConstants>(call)](auto& p) { return InverseExact(c, p); });
  }
  const Constants c = Remembered<Constants>(call);
  if (call.work->Flattening == 0) return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseSphere(c, p); });
  return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseEllipsoid(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return IsLatitude(work.Lat0);
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjPolycon
