// PrjHotine - Hotine Oblique Mercator, ellipsoid; flattening 0 runs the same formulas. The central line is given by a
// centre and an azimuth, or by two points and the latitude of the centre. Coordinates count along the line (u) and
// across it (v) from the natural origin on the aposphere's equator, or from the centre, and are turned to north on
// request. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), p. 71-75: 9-11 to 9-48.
#include "math/ObliqueMercator.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjHotine {

namespace {

constexpr Site kForwardSite{"PrjHotine", 230, 232};
constexpr Site kInverseSite{"PrjHotine", 430, 432};

using Constants = ObliqueMercator<HotineLine>;

template <class T>
Plot<T> ForwardPoint(const Constants& c, Point<T>& p) {
  if (!c.line.usable) return Unplottable<T>();
  T u, v;
  const MaskOf<T> plottable = c.Forward(p.x, p.y, u, v);
  u = u - c.line.u0;
  if (c.line.rotate) {
    p = {v * c.line.cosAlpha + u * c.line.sinAlpha, u * c.line.cosAlpha - v * c.line.sinAlpha};
  } else {
    p = {u, v};
  }
  return plottable;
}

template <class T>
Plot<T> InversePoint(const Constants& c, Point<T>& p) {
  if (!c.line.usable) return Unplottable<T>();
  const T u = c.line.rotate ? p.y * c.line.cosAlpha + p.x * c.line.sinAlpha : p.x;
  const T v = c.line.rotate ? p.x * c.line.cosAlpha - p.y * c.line.sinAlpha : p.y;
  return c.Inverse(u + c.line.u0, v, p.x, p.y);
}

/// Exactly: nothing so far across that it is the line's pole to rounding.
template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  const T v = c.line.rotate ? p.x * c.line.cosAlpha - p.y * c.line.sinAlpha : p.y;
  const MaskOf<T> near = Abs(v) <= T(kFarthestAcross * c.line.sphere.R);
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
  return Constants(work).line.usable && IsFinite(double(work.Lon0)) && IsFinite(double(work.Alpha));
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjHotine
