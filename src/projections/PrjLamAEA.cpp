// PrjLamAEA - Lambert Azimuthal Equal Area. Sphere only, every aspect. Centre Lat1/Lon0.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), forward 24-2 to 24-4 and the polar forms
//   24-3 to 24-10, inverse 20-14 to 20-18, 24-16.
// Fixed on purpose: the forward plots the centre, the inverse refuses it; a map point beyond the limiting circle is
//   taken for the antipode; every point counts as inside the domain.
#include "math/Azimuthal.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjLamAEA {

namespace {

constexpr Site kForwardSite{"PrjLamAEA", 189, 191};
constexpr Site kInverseSite{"PrjLamAEA", 343, 345};

struct Constants {
  double R;
  AzimuthalCentre centre;
  double pole;  // kNorthPole or kSouthPole, 0 elsewhere; on exact equality

  explicit Constants(const PROJDATA& work) : R(work.MajorRadius), centre(work.Lat1, work.Lon0) {
    pole = centre.lat == kHalfPi ? kNorthPole : centre.lat == -kHalfPi ? kSouthPole : 0;
  }
};

template <class T>
Plot<T> ForwardPolar(const Constants& c, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const auto [sinDlon, cosDlon] = SinCos(p.x - c.centre.lon);
  const T rho = 2 * c.R * Sin(kQuarterPi - c.pole * p.y * 0.5);  // sin(pi/4 + phi/2) is cos(pi/4 - phi/2)
  p = {rho * sinDlon, -c.pole * rho * cosDlon};
  return 1 + (c.centre.sinLat * sinPhi + c.centre.cosLat * cosPhi * cosDlon) > T(0);
}

/// The oblique aspect, and the equatorial one: with sin phi1 = 0 and cos phi1 = 1 exactly its formulas are the same.
template <class T>
Plot<T> ForwardOblique(const Constants& c, Point<T>& p) {
  const AzimuthalView<T> view = c.centre.View(p.y, p.x);
  const T D = 1 + view.cosC;
  const MaskOf<T> plottable = D > T(0);
  // Beyond 90 degrees 1 + cos c cancels; sin^2 c / (1 - cos c) is the same and does not.
  const T sameD = Select(view.cosC < T(0), (Square(view.east) + Square(view.north)) / (1 + Abs(view.cosC)), D);
  const T k = c.R * Sqrt(2 / OneUnless<T>(plottable, sameD));  // 24-2
  p = {k * view.east, k * view.north};
  return plottable;
}

template <class T>
AzimuthalDirection<T> DirectionOf(const Constants& c, const Point<T>& p, T rho) {
  return c.centre.Direction(p.x, p.y, rho, Arc<T>::WithHalfSine(rho / (2 * c.R)));  // 24-16
}

template <class T>
Plot<T> InversePolar(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> plottable = (rho != T(0)) & (p.y != T(0));  // the whole line y = 0 is refused as well
  p = {WrapOnce(c.centre.lon + PolarLongitudeDifference(p.x, p.y, c.pole)), DirectionOf(c, p, rho).Latitude()};
  return plottable;
}

template <class T>
Plot<T> InverseOblique(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const AzimuthalDirection<T> direction = DirectionOf(c, p, rho);
  p = {WrapOnce(c.centre.lon + direction.LongitudeDifference()), direction.Latitude()};
  return (rho != T(0)) & (direction.along != T(0));
}

// ---- exactly: the centre comes back, nothing beyond the limiting circle ----

template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> plottable = rho <= T(2 * c.R * (1 + kRim)), centre = rho == T(0);
  const AzimuthalDirection<T> direction = DirectionOf(c, p, Select(centre, T(c.R), rho));
  const T dlon = c.pole != 0 ? PolarLongitudeDifference(p.x, p.y, c.pole) : direction.LongitudeDifference();
  p = {Select(centre, T(0), dlon), Select(centre, T(c.centre.lat), direction.Latitude())};
  return plottable;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  const Constants c(*call.work);
  if (call.exact) {
    if (c.pole != 0) return ForwardExactly(call, kForwardSite, [&c](auto& p) { return ForwardPolar(c, p); });
    return ForwardExactly(call, kForwardSite, [&c](auto& p) { return ForwardOblique(c, p); });
  }
  if (c.pole != 0) return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardPolar(c, p); });
  return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardOblique(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  const Constants c(*call.work);
  if (call.exact) return InverseExactly(call, kInverseSite, [&c](auto& p) { return InverseExact(c, p); });
  if (c.pole != 0) return InverseEach(call, kInverseSite, [&c](auto& p) { return InversePolar(c, p); });
  return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseOblique(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return IsLatitude(work.Lat1);
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjLamAEA
