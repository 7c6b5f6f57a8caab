// PrjOblMerc - Oblique Mercator about the line through two points, sphere and ellipsoid. x counts along the line from
// its node next to the points' mean meridian, y to the left of it.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987). Sphere 9-1 to 9-8; the ellipsoid by Hotine's
//   method, p. 71-75, with the centre at the points' mean latitude. The sphere is its own aposphere, so one set of
//   formulas does.
#include "math/ObliqueMercator.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjOblMerc {

namespace {

constexpr Site kForwardSite{"PrjOblMerc", 230, 232};
constexpr Site kInverseSite{"PrjOblMerc", 330, 332};

using Constants = ObliqueMercator<TwoPointLine>;

template <class T>
Plot<T> ForwardPoint(const Constants& c, Point<T>& p) {
  T u, v;
  const MaskOf<T> plottable = c.Forward(p.x, p.y, u, v);
  p = {u, -v};
  return plottable;
}

template <class T>
Plot<T> InversePoint(const Constants& c, Point<T>& p) {
  return c.Inverse(T(p.x), -p.y, p.x, p.y);
}

/// Exactly: nothing so far across that it is the line's pole to rounding.
template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  const MaskOf<T> near = Abs(p.y) <= T(kFarthestAcross * c.line.sphere.R);
  const Plot<T> plot = InversePoint(c, p);
  return plot.plottable & near;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite,
                          [c = Remembered<Constants>(call)](auto& p) { return ForwardPoint(c, p); });
  }
  return ForwardEach(call, kForwardSite, [c = Remembered<Constants>(call)](auto& p) { return ForwardPoint(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite,
                          [c = Remembered<Constants>(call)](auto& p) { return InverseExact(c, p); });
  }
  return InverseEach(call, kInverseSite, [c = Remembered<Constants>(call)](auto& p) { return InversePoint(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return Constants(work).line.valid;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjOblMerc
