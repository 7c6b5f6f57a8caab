// PrjCassini - Cassini, sphere only: flattening is not read. Lat0 and Lon0 are the origin.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 13-1 to 13-6.
// The central meridian and every great circle at right angles to it are true to scale.
// Fixed on purpose: the longitude difference is not wrapped; a quarter turn to either side counts as the pole's
//   meridian.
#include "math/Angles.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjCassini {

namespace {

constexpr Site kForwardSite{"PrjCassini", 199, 201};
constexpr Site kInverseSite{"PrjCassini", 310, 312};
constexpr double kThreeHalvesPi = 4.71238898038469;

struct Constants {
  double a, lat0, lon0;

  explicit Constants(const PROJDATA& work) : a(work.MajorRadius), lat0(work.Lat0), lon0(work.Lon0) {}
};

/// Arcsine of one component of a unit vector, from the other two as well: by itself it loses half the digits where it
/// is nearly 1, at the ends of the map and at the poles.
template <class T>
T ArcOfSine(T sine, T other1, T other2) {
  return Atan2(sine, Sqrt(other1 * other1 + other2 * other2));
}

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  const T phi = p.y, dLon = p.x - c.lon0, quarter = Abs(dLon);
  const auto [sinPhi, cosPhi] = SinCos(phi);
  const auto [sinLon, cosLon] = SinCos(dLon);
  const T B = cosPhi * sinLon;  // 13-5
  const MaskOf<T> onPoleMeridian = (Abs(phi) == T(kHalfPi)) | (quarter == T(kHalfPi)) | (quarter == T(kThreeHalvesPi));
  const T t = Select(onPoleMeridian, Select(phi < T(0), T(-kHalfPi), T(kHalfPi)), Atan2(sinPhi / cosPhi, cosLon));
  p = {c.a * ArcOfSine(B, sinPhi, cosPhi * cosLon), c.a * (t - c.lat0)};  // 13-1, 13-2
  return (onPoleMeridian | (cosLon != T(0))) & !(1 - B * B <= T(0));
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  const T D = p.y / c.a + c.lat0, x = p.x / c.a;  // 13-6
  const auto [sinX, cosX] = SinCos(x);
  const auto [sinD, cosD] = SinCos(D);
  const T lon = Atan2(sinX / cosX, cosD) + c.lon0;                 // 13-4
  p = {WrapOnce(lon), ArcOfSine(sinD * cosX, sinX, cosX * cosD)};  // 13-3
  return Plottable<T>();
}

// ---- exactly: the whole sphere but for the two ends of the map's axis ----

constexpr double kAxisEnd = 1e-30;  // squared distance from the axis' ends, by rounding

template <class T>
Plot<T> ForwardExact(const Constants& c, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const auto [sinLon, cosLon] = SinCos(p.x);
  const T B = cosPhi * sinLon, along = cosPhi * cosLon;
  p = {c.a * ArcOfSine(B, sinPhi, along), c.a * (Atan2(sinPhi, along) - c.lat0)};  // 13-1, 13-2
  return sinPhi * sinPhi + along * along > T(kAxisEnd);
}

template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  const T D = p.y / c.a + c.lat0, x = p.x / c.a;
  const MaskOf<T> plottable = (Abs(D) <= T(kPi + kRim)) & (Abs(x) <= T(kHalfPi + kRim));
  const auto [sinX, cosX] = SinCos(x);
  const auto [sinD, cosD] = SinCos(D);
  const T along = cosX * cosD;
  p = {Atan2(sinX, along), ArcOfSine(sinD * cosX, sinX, along)};  // 13-4, 13-3
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

bool HasExactForm(const PROJDATA& work) {
  return IsLatitude(work.Lat0);
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjCassini
