// PrjOrtho - Orthographic, the sphere seen from infinitely far away: azimuthal, true along circles about the centre.
// Sphere only, every aspect. Centre Lat0/Lon0. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987),
//   forward 5-3, 20-3, 20-4 and their polar forms, inverse 20-14 to 20-19.
// Fixed on purpose: the limiting circle itself is plotted; a map point beyond it is taken for the one on it; the
//   longitude of the inverse is not wrapped; the centre latitude is left in Lat1 of the working record.
#include "math/Azimuthal.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjOrtho {

namespace {

constexpr Site kForwardSite{"PrjOrtho", 199, 201};
constexpr Site kInverseSite{"PrjOrtho", 310, 312};

struct Constants {
  double R;
  AzimuthalCentre centre;
  double pole;      // kNorthPole or kSouthPole, 0 elsewhere; on exact equality
  double yCosPhi1;  // cos phi1 as y takes it: at a pole exactly 0

  explicit Constants(PROJDATA& work) : R(work.MajorRadius), centre(work.Lat0, work.Lon0) {
    work.Lat1 = work.Lat0;
    pole = centre.lat == kHalfPi ? kNorthPole : centre.lat == -kHalfPi ? kSouthPole : 0;
    yCosPhi1 = pole != 0 ? 0 : centre.cosLat;
  }
};

template <class T>
Plot<T> ForwardPoint(const Constants& c, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const auto [sinDlon, cosDlon] = SinCos(p.x - c.centre.lon);
  const T cosC = c.centre.sinLat * sinPhi + c.centre.cosLat * cosPhi * cosDlon;                    // 5-3
  p = {c.R * cosPhi * sinDlon, c.R * (c.yCosPhi1 * sinPhi - c.centre.sinLat * cosPhi * cosDlon)};  // 20-3, 20-4
  return !(cosC < T(0));
}

/// Direction of a map point that is not the centre.
template <class T>
AzimuthalDirection<T> DirectionOf(const Constants& c, const Point<T>& p, T rho) {
  return c.centre.Direction(p.x, p.y, rho, Arc<T>::WithSine(rho / c.R));  // 20-19
}

template <class T>
Plot<T> InversePolar(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> centre = rho <= T(kFloatEpsilon);
  const T away = Select(centre, T(c.R), rho);
  const T dlon = PolarLongitudeDifference(p.x, p.y, c.pole), lat = DirectionOf(c, p, away).Latitude();
  p = {Select(centre, T(c.centre.lon), c.centre.lon + dlon), Select(centre, T(c.centre.lat), lat)};
  return Plottable<T>();
}

template <class T>
Plot<T> InverseOblique(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> centre = rho <= T(kFloatEpsilon);
  const AzimuthalDirection<T> direction = DirectionOf(c, p, Select(centre, T(c.R), rho));
  p = {Select(centre, T(c.centre.lon), c.centre.lon + direction.LongitudeDifference()),
       Select(centre, T(c.centre.lat), direction.Latitude())};
  return centre | (direction.along != T(0));
}

// ---- exactly: the centre comes back, nothing beyond the limiting circle ----

template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> plottable = rho <= T(c.R * (1 + kRim)), centre = rho == T(0);
  const AzimuthalDirection<T> direction = DirectionOf(c, p, Select(centre, T(c.R), rho));
  p = {Select(centre, T(0), direction.LongitudeDifference()), Select(centre, T(c.centre.lat), direction.Latitude())};
  return plottable;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite, [c = Constants(*call.work)](auto& p) { return ForwardPoint(c, p); });
  }
  const Constants c(*call.work);
  return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardPoint(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite, [c = Constants(*call.work)](auto& p) { return InverseExact(c, p); });
  }
  const Constants c(*call.work);
  if (c.pole != 0) return InverseEach(call, kInverseSite, [&c](auto& p) { return InversePolar(c, p); });
  return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseOblique(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return IsLatitude(work.Lat0);
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjOrtho
