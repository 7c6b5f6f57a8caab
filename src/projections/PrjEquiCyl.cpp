// PrjEquiCyl - Equidistant Cylindrical, true to scale on Lat1 and along all meridians.
// Sphere only, of radius MajorRadius whatever the flattening. Northings count from the equator.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 12-1, 12-2, inverse 12-5, 12-6.
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjEquiCyl {

namespace {

constexpr Site kForwardSite{"PrjEquiCyl", 189, 191};
constexpr Site kInverseSite{"PrjEquiCyl", 249, 251};

struct Constants {
  double a, lon0, cosLat1;

  explicit Constants(const PROJDATA& work) : a(work.MajorRadius), lon0(work.Lon0), cosLat1(Cos(work.Lat1)) {}
};

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  p = {(p.x - c.lon0) * c.a * c.cosLat1, p.y * c.a};  // 12-1, 12-2
  return Plottable<T>();
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  if (c.cosLat1 == 0) return Unplottable<T>();
  p = {p.x / (c.cosLat1 * c.a) + c.lon0, p.y / c.a};  // 12-6, 12-5
  return Plottable<T>();
}

/// Nothing outside the map.
template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  Plot<T> plot = Plottable<T>();
  p = {AlongParallel(p.x / c.a, T(c.cosLat1), plot.plottable), p.y / c.a};
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

bool HasExactForm(const PROJDATA& work) {
  return Abs(double(work.Lat1)) < kHalfPi;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjEquiCyl
