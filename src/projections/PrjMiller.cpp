// PrjMiller - Miller Cylindrical, a compromise that shows the poles.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 11-1, 11-2, inverse 11-6, 11-7,
//   with ln tan(pi/4 + u/2) = asinh(tan u), exact at the equator.
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjMiller {

namespace {

constexpr Site kForwardSite{"PrjMiller", 226, 228};
constexpr Site kInverseSite{"PrjMiller", 293, 295};

struct Constants {
  double a, lon0;

  explicit Constants(const PROJDATA& work) : a(work.MajorRadius), lon0(work.Lon0) {}
};

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  p = {(p.x - c.lon0) * c.a, Asinh(Tan(0.8 * p.y)) * (c.a / 0.8)};  // 11-1, 11-2
  return Plottable<T>();
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  p = {p.x / c.a + c.lon0, Atan(Sinh(0.8 * p.y / c.a)) / 0.8};  // 11-7, 11-6
  return Plottable<T>();
}

/// Nothing outside the map.
template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  Plot<T> plot = Plottable<T>();
  const T x = AlongParallel(p.x / c.a, T(1), plot.plottable);
  InverseSphere(c, p);
  p.x = x;
  return plot;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  const Constants c(*call.work);
  if (call.exact) return ForwardExactly(call, kForwardSite, [&c](auto& p) { return ForwardSphere(c, p); });
  return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardSphere(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  const Constants c(*call.work);
  if (call.exact) return InverseExactly(call, kInverseSite, [&c](auto& p) { return InverseExact(c, p); });
  return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseSphere(c, p); });
}

bool HasExactForm(const PROJDATA&) {
  return true;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjMiller
