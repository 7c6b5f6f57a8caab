// PrjSinus - Sinusoidal, equal area with true parallels; sphere and ellipsoid.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987): sphere 30-1, 30-2; ellipsoid 30-8, 30-9 with
// the meridian arc of 3-21 and, for the inverse, 3-24 to 3-26 with one term more.
#include "math/AuxiliaryLatitudes.h"
#include "projections/CentralMeridian.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjSinus {

namespace {

constexpr Site kForwardSite{"PrjSinus", 220, 222};
constexpr Site kInverseSite{"PrjSinus", 403, 405};

struct Constants {
  double a, e2;
  CentralMeridian meridian;
  MeridianArc arc;
  FootpointLatitude footpoint;

  explicit Constants(const PROJDATA& work)
      : a(work.MajorRadius), e2(EccentricitySquared(work.Flattening)), meridian(work), arc(a, e2), footpoint(arc, e2) {}
};

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  p = {c.a * c.meridian.Difference(p.x) * Cos(p.y), c.a * p.y};  // 30-1, 30-2
  return Plottable<T>();
}

template <class T>
Plot<T> ForwardEllipsoid(const Constants& c, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const T w2 = 1 - c.e2 * (sinPhi * sinPhi);
  const MaskOf<T> plottable = !(w2 <= T(0));
  p = {c.a * c.meridian.Difference(p.x) * cosPhi / Sqrt(OneUnless<T>(plottable, w2)),
       c.arc.Length(p.y, sinPhi, cosPhi)};  // 30-8, 30-9
  return plottable;
}

// Latitudes beyond the poles are let through: what lies outside the outline comes back as a position beyond the pole.
template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  const T phi = p.y / c.a, cosPhi = Cos(phi);
  const MaskOf<T> plottable = cosPhi != T(0);
  p = {c.meridian.lon0 + p.x / OneUnless<T>(plottable, c.a * cosPhi), phi};
  return plottable;
}

template <class T>
Plot<T> InverseEllipsoid(const Constants& c, Point<T>& p) {
  const T phi = c.footpoint(p.y);
  const auto [sinPhi, cosPhi] = SinCos(phi);
  const MaskOf<T> plottable = cosPhi != T(0);
  p = {c.meridian.lon0 + p.x * Sqrt(1 - c.e2 * (sinPhi * sinPhi)) / OneUnless<T>(plottable, c.a * cosPhi), phi};
  return plottable;
}

// ---- exactly, sphere and ellipsoid: arcs to rounding, nothing outside the map ----

struct ExactConstants {
  double a, e2;
  Meridian meridian;

  explicit ExactConstants(const PROJDATA& work)
      : a(work.MajorRadius), e2(EccentricitySquared(work.Flattening)), meridian(a, work.Flattening) {}

  /// Length of a parallel per radian of longitude, in semi-major axes.
  template <class T>
  ORVEX_INLINE T Parallel(T sinPhi, T cosPhi) const {
    return cosPhi / Sqrt(1 - e2 * (sinPhi * sinPhi));
  }
};

template <class T>
Plot<T> ForwardExact(const ExactConstants& c, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  p = {c.a * p.x * c.Parallel(sinPhi, cosPhi), c.meridian.Length(p.y, sinPhi, cosPhi)};  // 30-8, 30-9
  return Plottable<T>();
}

template <class T>
Plot<T> InverseExact(const ExactConstants& c, Point<T>& p) {
  MaskOf<T> plottable = Abs(p.y) <= T(c.meridian.Quarter() + c.a * kRim);
  const T phi = c.meridian.Latitude(Select(plottable, p.y, T(0)));
  const auto [sinPhi, cosPhi] = SinCos(phi);
  p = {AlongParallel(p.x / c.a, c.Parallel(sinPhi, cosPhi), plottable), phi};
  return plottable;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite,
                          [c = Remembered<ExactConstants>(call)](auto& p) { return ForwardExact(c, p); });
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

bool HasExactForm(const PROJDATA&) {
  return true;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjSinus
