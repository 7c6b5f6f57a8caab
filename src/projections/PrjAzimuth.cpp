// PrjAzimuth - Azimuthal Equidistant: distances and directions from the centre are true. Sphere only, every aspect.
// Centre Lat1/Lon0.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), forward 5-3, 22-4, 22-5, 25-1, 25-2 and
//   their polar and equatorial forms, inverse 20-14 to 20-18, 25-15.
// Fixed on purpose: centre and antipode, within 4.5e-5 radians, are refused in the oblique aspect and both plotted at
//   the origin in the equatorial one; the polar aspects refuse nothing; the inverse refuses the centre.
#include "math/Azimuthal.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjAzimuth {

namespace {

constexpr Site kForwardSite{"PrjAzimuth", 207, 209};
constexpr Site kInverseSite{"PrjAzimuth", 344, 346};

constexpr double kAspectDegrees = 0.00001;  // a centre this near to a pole or the equator has the special form
constexpr double kAxisTolerance = 1e-09;    // forward: |cos c| this near to 1 is the centre or its antipode
constexpr double kCentreRadius = 1e-08;     // inverse: map units about the origin that are refused

struct Constants {
  double R;
  AzimuthalCentre centre;
  double pole;  // kNorthPole or kSouthPole, 0 elsewhere
  bool equatorial;

  explicit Constants(const PROJDATA& work) : R(work.MajorRadius), centre(work.Lat1, work.Lon0) {
    pole = CentreNear(90) ? kNorthPole : CentreNear(-90) ? kSouthPole : 0;
    equatorial = CentreNear(0);
  }

  bool CentreNear(double latDeg) const { return Abs(RadToDeg(centre.lat) - latDeg) < kAspectDegrees; }
};

template <class T>
Plot<T> ForwardPolar(const Constants& c, Point<T>& p) {
  const T rho = c.R * (kHalfPi - c.pole * p.y);
  const auto [sinDlon, cosDlon] = SinCos(p.x - c.centre.lon);
  p = {rho * sinDlon, -c.pole * rho * cosDlon};
  return Plottable<T>();
}

template <class T>
MaskOf<T> OnAxis(const AzimuthalView<T>& view) {
  return Abs(Abs(view.cosC) - 1) < T(kAxisTolerance);
}

/// k = R c / sin c, 25-2, away from the axis; c from its sine and cosine, since the arccosine loses half the digits
/// towards centre and antipode.
template <class T>
T Stretch(const Constants& c, const AzimuthalView<T>& view, MaskOf<T> onAxis) {
  const T sinC = Sqrt(Square(view.east) + Square(view.north));
  return c.R * Atan2(sinC, view.cosC) / OneUnless<T>(!onAxis, sinC);
}

template <class T>
Plot<T> ForwardEquatorial(const Constants& c, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const AzimuthalView<T> view = c.centre.View(sinPhi, cosPhi, p.x);
  const MaskOf<T> onAxis = OnAxis(view);
  const T k = Select(onAxis, T(0), Stretch(c, view, onAxis));
  p = {k * view.east, k * sinPhi};
  return Plottable<T>();
}

template <class T>
Plot<T> ForwardOblique(const Constants& c, Point<T>& p) {
  const AzimuthalView<T> view = c.centre.View(p.y, p.x);
  const MaskOf<T> onAxis = OnAxis(view);
  const T k = Stretch(c, view, onAxis);
  p = {k * view.east, k * view.north};
  return !onAxis;
}

template <class T>
Plot<T> InversePolar(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  p = {WrapOnce(c.centre.lon + PolarLongitudeDifference(p.x, p.y, c.pole)),
       c.centre.Direction(p.x, p.y, rho, Arc<T>::Of(rho / c.R)).Latitude()};  // 25-15
  return !(rho < T(kCentreRadius));
}

template <class T>
Plot<T> InverseOblique(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const AzimuthalDirection<T> direction = c.centre.Direction(p.x, p.y, rho, Arc<T>::Of(rho / c.R));  // 25-15
  p = {WrapOnce(c.centre.lon + direction.LongitudeDifference()), direction.Latitude()};
  return !(rho < T(kCentreRadius));
}

// ---- exactly: the centre comes back; the antipode, a circle, is refused off the poles; nothing beyond that circle
// ----

/// The special form of the poles for these alone: a centre next to them is oblique.
Constants ExactConstants(const PROJDATA& work) {
  Constants c(work);
  c.pole = c.centre.lat == kHalfPi ? kNorthPole : c.centre.lat == -kHalfPi ? kSouthPole : 0;
  return c;
}

template <class T>
Plot<T> ForwardObliqueExact(const Constants& c, Point<T>& p) {
  const AzimuthalView<T> view = c.centre.View(p.y, p.x);
  const T sinC = Sqrt(Square(view.east) + Square(view.north));
  constexpr double kAntipode = 1e-15;  // sine of the arc between antipodes, by rounding
  const MaskOf<T> away = sinC > Select(view.cosC < T(0), T(kAntipode), T(0));
  const T k = Select(away, c.R * Atan2(sinC, view.cosC) / OneUnless<T>(away, sinC), T(c.R));
  p = {k * view.east, k * view.north};
  return away | (view.cosC > T(0));
}

template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> plottable = rho <= T(c.R * (kPi + kRim)), centre = rho == T(0);
  const T away = Select(centre, T(c.R), rho);
  const AzimuthalDirection<T> direction = c.centre.Direction(p.x, p.y, away, Arc<T>::Of(away / c.R));  // 25-15
  const T dlon = c.pole != 0 ? PolarLongitudeDifference(p.x, p.y, c.pole) : direction.LongitudeDifference();
  p = {Select(centre, T(0), dlon), Select(centre, T(c.centre.lat), direction.Latitude())};
  return plottable;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    const Constants exact = ExactConstants(*call.work);
    if (exact.pole != 0) {
      return ForwardExactly(call, kForwardSite, [&exact](auto& p) { return ForwardPolar(exact, p); });
    }
    return ForwardExactly(call, kForwardSite, [&exact](auto& p) { return ForwardObliqueExact(exact, p); });
  }
  const Constants c(*call.work);
  if (c.pole != 0) return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardPolar(c, p); });
  if (c.equatorial) return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardEquatorial(c, p); });
  return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardOblique(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite, [c = ExactConstants(*call.work)](auto& p) { return InverseExact(c, p); });
  }
  const Constants c(*call.work);
  if (c.pole != 0) return InverseEach(call, kInverseSite, [&c](auto& p) { return InversePolar(c, p); });
  return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseOblique(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return IsLatitude(work.Lat1);
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjAzimuth
