// PrjGnom - Gnomonic, the sphere projected from its middle: azimuthal, every great circle is a straight line.
// Sphere only, every aspect. Centre Lat1/Lon0. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987),
//   forward 5-3, 22-3 to 22-5 and their polar and equatorial forms, inverse 20-14, 20-15, 22-16.
// Fixed on purpose: the south polar forward, which mirrors the map north to south and is not what the inverse undoes;
//   the domain test stops at 60 degrees of arc, while the forward goes on to anything short of 90.
#include "math/Azimuthal.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjGnom {

namespace {

constexpr Site kForwardSite{"PrjGnom", 207, 209};
constexpr Site kInverseSite{"PrjGnom", 329, 331};

constexpr double kAspectDegrees = 0.0001;    // a centre this near to a pole or the equator has the special form
constexpr double kLeastCosDlon = 0.00001;    // equatorial aspect: nearer to 90 degrees of longitude y is not formed
constexpr double kCentreRadius = 0.0000001;  // inverse: map units about the origin that are the centre

struct Constants {
  double R;
  AzimuthalCentre centre;

  explicit Constants(const PROJDATA& work) : R(work.MajorRadius), centre(work.Lat1, work.Lon0) {}

  bool CentreNear(double latDeg) const { return Abs(RadToDeg(centre.lat) - latDeg) < kAspectDegrees; }
};

/// `pole`: kNorthPole or kSouthPole.
template <class T>
Plot<T> ForwardPolar(const Constants& c, double pole, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const auto [sinDlon, cosDlon] = SinCos(p.x - c.centre.lon);
  const MaskOf<T> plottable = c.centre.sinLat * sinPhi + c.centre.cosLat * cosPhi * cosDlon > T(0);
  // For the south both signs turn, though cot phi is negative there by itself: x comes out right, y mirrored.
  const T rho = pole * c.R * (cosPhi / OneUnless<T>(plottable, sinPhi));
  p = {rho * sinDlon, -rho * cosDlon};
  return plottable;
}

template <class T>
Plot<T> ForwardEquatorial(const Constants& c, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const auto [sinDlon, cosDlon] = SinCos(p.x - c.centre.lon);
  const T cosC = c.centre.sinLat * sinPhi + c.centre.cosLat * cosPhi * cosDlon;
  const MaskOf<T> plottable = (cosC > T(0)) & !(Abs(cosDlon) < T(kLeastCosDlon));
  const T secant = 1 / OneUnless<T>(plottable, cosDlon);
  p = {c.R * sinDlon * secant, c.R * (sinPhi / OneUnless<T>(plottable, cosPhi)) * secant};
  return plottable;
}

template <class T>
Plot<T> ForwardOblique(const Constants& c, Point<T>& p) {
  const AzimuthalView<T> view = c.centre.View(p.y, p.x);
  const MaskOf<T> plottable = view.cosC > T(0);
  const T k = c.R / OneUnless<T>(plottable, view.cosC);  // 22-3
  p = {k * view.east, k * view.north};                   // 22-4, 22-5
  return plottable;
}

template <class T>
Plot<T> InversePoint(const Constants& c, Point<T>& p) {
  const MaskOf<T> centre = Sqrt(p.x * p.x + p.y * p.y) < T(kCentreRadius);
  // 20-14 and 20-15 with tan c = rho/R, 22-16: the direction is that of the map point on the tangent plane.
  const AzimuthalDirection<T> direction{c.R * c.centre.sinLat + p.y * c.centre.cosLat, p.x,
                                        c.R * c.centre.cosLat - p.y * c.centre.sinLat};
  p = {WrapOnce(Select(centre, T(c.centre.lon), c.centre.lon + direction.LongitudeDifference())),
       Select(centre, T(c.centre.lat), direction.Latitude())};
  return Plottable<T>();
}

// ---- exactly: one formula for every aspect, which the inverse undoes ----

Constants ExactConstants(const PROJDATA& work) {
  Constants c(work);
  if (Abs(c.centre.lat) == kHalfPi) c.centre.cosLat = 0;
  return c;
}

template <class T>
Plot<T> ForwardExact(const Constants& c, Point<T>& p) {
  constexpr double kLimb = 1e-15;  // cosine of 90 degrees of arc, by rounding
  const AzimuthalView<T> view = c.centre.View(p.y, p.x);
  const MaskOf<T> plottable = view.cosC > T(kLimb);
  ForwardOblique(c, p);
  return plottable;
}

template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  const AzimuthalDirection<T> direction{c.R * c.centre.sinLat + p.y * c.centre.cosLat, p.x,
                                        c.R * c.centre.cosLat - p.y * c.centre.sinLat};
  const MaskOf<T> centre = (p.x == T(0)) & (p.y == T(0));
  p = {Select(centre, T(0), direction.LongitudeDifference()), Select(centre, T(c.centre.lat), direction.Latitude())};
  return Plottable<T>();
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite, [c = ExactConstants(*call.work)](auto& p) { return ForwardExact(c, p); });
  }
  const Constants c(*call.work);
  constexpr double kPoles[] = {kNorthPole, kSouthPole};
  for (const double pole : kPoles) {
    if (!c.CentreNear(90 * pole)) continue;
    return ForwardEach(call, kForwardSite, [&c, pole](auto& p) { return ForwardPolar(c, pole, p); });
  }
  if (c.CentreNear(0)) return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardEquatorial(c, p); });
  return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardOblique(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite, [c = ExactConstants(*call.work)](auto& p) { return InverseExact(c, p); });
  }
  return InverseEach(call, kInverseSite, [c = Constants(*call.work)](auto& p) { return InversePoint(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return IsLatitude(work.Lat1);
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjGnom
