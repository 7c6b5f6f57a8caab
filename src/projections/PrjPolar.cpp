// PrjPolar - Stereographic: azimuthal and conformal, circles stay circles on the sphere. Sphere and ellipsoid, every
// aspect. Centre Lat0/Lon0, scale K0 at the centre.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), sphere 5-3, 21-2 to 21-4, 21-15, 20-14 to
//   20-18; ellipsoid 3-1, 14-15, 15-9, 21-24 to 21-40; latitude by the series 3-5.
// Fixed on purpose: only the hemisphere about the centre is plotted; on the ellipsoid the oblique and equatorial
//   aspects refuse the north pole, the equatorial forward takes a centre within 1.2e-7 radians of the equator to lie on
//   it while the inverse does not, and the inverse refuses the centre; Lat1 and Lon1 of the working record receive the
//   centre.
#include "math/Azimuthal.h"
#include "math/Iteration.h"
#include "math/MeridianArc.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjPolar {

namespace {

constexpr Site kForwardSite{"PrjPolar", 197, 199};
constexpr Site kInverseSite{"PrjPolar", 645, 647};

/// Copies the centre to where this module has always kept it.
void KeepCentre(PROJDATA& work) {
  work.Lat1 = work.Lat0;
  work.Lon1 = work.Lon0;
}

struct Constants {
  AzimuthalCentre centre;
  double pole;  // kNorthPole or kSouthPole, 0 elsewhere
  double twoRk0;

  explicit Constants(const PROJDATA& work)
      : centre(work.Lat0, work.Lon0), pole(0), twoRk0(2 * work.MajorRadius * work.K0) {
    if (Abs(centre.lat - kHalfPi) <= kFloatEpsilon) pole = kNorthPole;
    if (Abs(centre.lat + kHalfPi) <= kFloatEpsilon) pole = kSouthPole;
  }
};

// ---- sphere ----

/// Every aspect. In the hemisphere that is plotted the divisor 1 + cos c is never 0.
template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  const AzimuthalView<T> view = c.centre.View(p.y, p.x);
  const MaskOf<T> plottable = !(view.cosC < T(0));
  const T k = c.twoRk0 / (1 + Abs(view.cosC));  // 21-4
  p = {k * view.east, k * view.north};          // 21-2, 21-3
  return plottable;
}

template <class T>
AzimuthalDirection<T> SphereDirection(const Constants& c, const Point<T>& p, T rho) {
  return c.centre.Direction(p.x, p.y, rho, Arc<T>::WithHalfTangent(rho / c.twoRk0));  // 21-15
}

template <class T>
Plot<T> InverseSpherePolar(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> centre = rho <= T(kFloatEpsilon);
  const T dlon = PolarLongitudeDifference(p.x, p.y, c.pole), away = Select(centre, T(c.twoRk0), rho);
  p = {WrapOnce(Select(centre, T(c.centre.lon), c.centre.lon + dlon)),
       Select(centre, T(c.centre.lat), SphereDirection(c, p, away).Latitude())};
  return Plottable<T>();
}

template <class T>
Plot<T> InverseSphereOblique(const Constants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> centre = rho <= T(kFloatEpsilon);
  const AzimuthalDirection<T> direction = SphereDirection(c, p, Select(centre, T(c.twoRk0), rho));
  p = {WrapOnce(Select(centre, T(c.centre.lon), c.centre.lon + direction.LongitudeDifference())),
       Select(centre, T(c.centre.lat), direction.Latitude())};
  return centre | (direction.along != T(0));
}

// ---- ellipsoid ----

/// Sine and cosine of the conformal latitude chi, 3-1. Without one: at the north pole, and at the south pole when e is
/// 1.
template <class T>
struct ConformalLatitude {
  MaskOf<T> exists;
  T sinChi, cosChi;

  ORVEX_INLINE ConformalLatitude(const ConformalFactor& factor, T sinPhi, T cosPhi)
      : exists((1 - sinPhi != T(0)) & (1 + factor.Eccentricity() * sinPhi != T(0))) {
    // tan(pi/4 + phi/2), whose argument itself would lose digits towards the north pole.
    const MaskOf<T> north = sinPhi > T(0);
    const T nearOne = 1 + Abs(sinPhi);
    const T tangent = Select(north, nearOne, cosPhi) / Select(north, cosPhi, nearOne);
    const T t = tangent * factor(sinPhi), square = t * t;  // tan(pi/4 + chi/2)
    sinChi = Select(exists, (square - 1) / (square + 1), T(0));
    cosChi = Select(exists, 2 * t / (square + 1), T(1));
  }
};

struct EllipsoidConstants : Constants {
  double e2, e;
  ConformalFactor factor;
  double w1Squared;   // 1 - e^2 sin^2 phi1
  double polarScale;  // rho / t in the polar aspects, 21-33
  ConformalLatitude<double> chi1;
  AzimuthalCentre conformalCentre;  // on the conformal sphere
  double obliqueScale;              // 2 a k0 m1 / cos chi1, 14-15

  explicit EllipsoidConstants(const PROJDATA& work)
      : Constants(work),
        e2(EccentricitySquared(work.Flattening)),
        e(Sqrt(e2)),
        factor(e),
        w1Squared(1 - e2 * Square(centre.sinLat)),
        polarScale(twoRk0 / Sqrt(Pow(1 + e, 1 + e) * Pow(1 - e, 1 - e))),
        chi1(factor, centre.sinLat, centre.cosLat),
        conformalCentre(centre),
        obliqueScale(pole != 0 ? 0 : twoRk0 * (centre.cosLat / Sqrt(w1Squared)) / chi1.cosChi) {
    conformalCentre.sinLat = chi1.sinChi;
    conformalCentre.cosLat = chi1.cosChi;
  }

  /// The equatorial form of 21-24 to 21-29: as the oblique one with chi1 = 0 and m1 = 1 exactly.
  void PutCentreOnEquator() {
    conformalCentre.sinLat = 0;
    conformalCentre.cosLat = 1;
    obliqueScale = twoRk0;
  }
};

/// Where a point is not refused before the aspects part: within the hemisphere, and w > 0, which only e = 1 breaks.
template <class T>
MaskOf<T> Accepted(const EllipsoidConstants& c, T cosC, T sinPhi) {
  return (1 - c.e2 * (sinPhi * sinPhi) != T(0)) & !(cosC < T(0));
}

template <class T>
Plot<T> ForwardEllipsoidPolar(const EllipsoidConstants& c, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const auto [sinDlon, cosDlon] = SinCos(p.x - c.centre.lon);
  const T cosC = c.centre.sinLat * sinPhi + c.centre.cosLat * cosPhi * cosDlon;
  // 15-9. In the hemisphere that is left the divisor 1 + e sin phi is at least 1, and so is the one in polarScale.
  const auto [sineHalf, cosineHalf] = SinCos(kQuarterPi - c.pole * p.y / 2);
  const T rho = c.polarScale * (sineHalf / cosineHalf) / c.factor(c.pole * sinPhi);
  p = {rho * sinDlon, -c.pole * rho * cosDlon};  // 21-30, 21-31
  return Accepted(c, cosC, sinPhi);
}

template <class T>
Plot<T> ForwardEllipsoidOblique(const EllipsoidConstants& c, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const ConformalLatitude<T> chi(c.factor, sinPhi, cosPhi);
  if (!c.chi1.exists) return Unplottable<T>();
  const auto [sinDlon, cosDlon] = SinCos(p.x - c.centre.lon);
  const T cosC = c.centre.sinLat * sinPhi + c.centre.cosLat * cosPhi * cosDlon;
  const AzimuthalCentre& centre = c.conformalCentre;
  const T D = 1 + (centre.sinLat * chi.sinChi + centre.cosLat * chi.cosChi * cosDlon);
  const MaskOf<T> plottable = Accepted(c, cosC, sinPhi) & chi.exists & (D != T(0));
  const T A = c.obliqueScale / OneUnless<T>(plottable, D);  // 21-27
  p = {A * (chi.cosChi * sinDlon),
       A * (centre.cosLat * chi.sinChi - centre.sinLat * chi.cosChi * cosDlon)};  // 21-24, 21-25
  return plottable;
}

/// Geodetic from conformal latitude by the series 3-5.
struct ConformalSeries {
  double c2, c4, c6, c8;

  explicit ConformalSeries(double e2) {
    const double e4 = e2 * e2, e6 = e4 * e2, e8 = e4 * e4;
    c2 = e2 / 2 + 5 * e4 / 24 + e6 / 12 + 13 * e8 / 360;
    c4 = 7 * e4 / 48 + 29 * e6 / 240 + 811 * e8 / 11520;
    c6 = 7 * e6 / 120 + 81 * e8 / 1120;
    c8 = 4279 * e8 / 161280;
  }

  template <class T>
  ORVEX_INLINE T operator()(T chi) const {
    const auto [sine, cosine] = SinCos(2 * chi);
    return chi + SineSeries(sine, cosine, c2, c4, c6, c8);
  }
};

template <class T>
Plot<T> InverseEllipsoidPolar(const EllipsoidConstants& c, const ConformalSeries& series, Point<T>& p) {
  if (c.w1Squared <= 0) return Unplottable<T>();
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const T chi = kHalfPi - 2 * Atan(rho / c.polarScale);  // 7-13, 21-39
  p = {WrapOnce(c.centre.lon + PolarLongitudeDifference(p.x, p.y, c.pole)), c.pole * series(chi)};
  return !(rho <= T(kFloatEpsilon));
}

template <class T>
Plot<T> InverseEllipsoidOblique(const EllipsoidConstants& c, const ConformalSeries& series, Point<T>& p) {
  if (c.w1Squared <= 0 || !c.chi1.exists) return Unplottable<T>();
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> away = !(rho <= T(kFloatEpsilon));
  const Arc<T> arc = Arc<T>::WithHalfTangent(OneUnless<T>(away, rho / c.obliqueScale));  // 21-38
  const AzimuthalDirection<T> direction = c.conformalCentre.Direction(p.x, p.y, rho, arc);
  p = {WrapOnce(c.centre.lon + direction.LongitudeDifference()), series(direction.Latitude())};  // 21-36, 21-37
  return away & (direction.along != T(0));
}

// ---- exactly: every pole and centre is plotted, the conformal latitude is inverted to rounding ----

/// The poles' own form for these alone: a centre next to them is oblique.
struct ExactConstants : EllipsoidConstants {
  explicit ExactConstants(const PROJDATA& work) : EllipsoidConstants(work) {
    pole = centre.lat == kHalfPi ? kNorthPole : centre.lat == -kHalfPi ? kSouthPole : 0;
    const double parallel = centre.cosLat / Sqrt(w1Squared);
    const SineCosine<double> chi = Conformal(centre.sinLat, centre.cosLat);
    conformalCentre.sinLat = chi.sine;
    conformalCentre.cosLat = chi.cosine;
    obliqueScale = twoRk0 * (pole != 0 ? 1 : parallel / chi.cosine);
  }

  /// Sine and cosine of the conformal latitude, by the isometric one.
  template <class T>
  ORVEX_INLINE SineCosine<T> Conformal(T sinPhi, T cosPhi) const {
    // tan(pi/4 - chi/2) for the hemisphere of the pole next to it.
    const T t = cosPhi / (1 + Abs(sinPhi)) * Exp(factor.Eccentric()(Abs(sinPhi))), square = t * t;
    return {CopySign((1 - square) / (1 + square), sinPhi), 2 * t / (1 + square)};
  }
};

template <class T>
Plot<T> ForwardExactPolar(const ExactConstants& c, ExactPoint<T>& p) {
  const MaskOf<T> plottable = c.pole * p.y >= T(0);
  const auto [sineHalf, cosineHalf] = SinCos(Colatitude(p) / 2);
  const auto [sinDlon, cosDlon] = SinCos(p.x);
  const T rho = c.polarScale * (sineHalf / cosineHalf) * Exp(c.factor.Eccentric()(Abs(Sin(p.y))));  // 15-9
  p.x = rho * sinDlon;
  p.y = -c.pole * rho * cosDlon;
  return plottable;
}

template <class T>
Plot<T> ForwardExactOblique(const ExactConstants& c, ExactPoint<T>& p) {
  const auto [sinPhi, cosPhi] = SinCosOfLatitude(p);
  const auto [sinChi, cosChi] = c.Conformal(sinPhi, cosPhi);
  const auto [sinDlon, cosDlon] = SinCos(p.x);
  const AzimuthalCentre& centre = c.conformalCentre;
  const T cosC = c.centre.sinLat * sinPhi + c.centre.cosLat * cosPhi * cosDlon;
  const T D = 1 + (centre.sinLat * sinChi + centre.cosLat * cosChi * cosDlon);
  const MaskOf<T> plottable = (D > T(0)) & !(cosC < T(0));
  const T A = c.obliqueScale / OneUnless<T>(plottable, D);  // 21-27
  p.x = A * (cosChi * sinDlon);
  p.y = A * (centre.cosLat * sinChi - centre.sinLat * cosChi * cosDlon);  // 21-24, 21-25
  return plottable;
}

/// Geodetic latitude of a direction on the conformal sphere.
template <class T>
MaskOf<T> LatitudeOf(const ExactConstants& c, const AzimuthalDirection<T>& direction, T& lat) {
  const T level = Sqrt(direction.across * direction.across + direction.along * direction.along);
  const MaskOf<T> pole = level == T(0);
  const T psi = Asinh(direction.up / OneUnless<T>(!pole, level));
  const MaskOf<T> found = LatitudeFromIsometric(psi, c.factor.Eccentric(), lat);
  lat = Select(pole, CopySign(T(kHalfPi), direction.up), lat);
  return found;
}

template <class T>
Plot<T> InverseExactPolar(const ExactConstants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> away = rho != T(0);
  T lat;
  const MaskOf<T> found =
      LatitudeFromIsometric(-Log(OneUnless<T>(away, rho / c.polarScale)), c.factor.Eccentric(), lat);
  p = {Select(away, PolarLongitudeDifference(p.x, p.y, c.pole), T(0)), c.pole * Select(away, lat, T(kHalfPi))};
  return found & (lat >= T(-kRim));
}

template <class T>
Plot<T> InverseExactOblique(const ExactConstants& c, Point<T>& p) {
  const T rho = Sqrt(p.x * p.x + p.y * p.y);
  const MaskOf<T> away = rho != T(0);
  const Arc<T> arc = Arc<T>::WithHalfTangent(OneUnless<T>(away, rho / c.obliqueScale));  // 21-38
  const AzimuthalDirection<T> direction = c.conformalCentre.Direction(p.x, p.y, OneUnless<T>(away, rho), arc);
  T lat;
  const MaskOf<T> found = LatitudeOf(c, direction, lat);
  p = {Select(away, direction.LongitudeDifference(), T(0)), Select(away, lat, T(c.centre.lat))};
  return found & (c.centre.View(p.y, p.x).cosC >= T(-kRim));  // the hemisphere, as forward
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  KeepCentre(*call.work);
  if (call.exact) {
    const ExactConstants c = Remembered<ExactConstants>(call);
    if (c.pole != 0) return ForwardExactly(call, kForwardSite, [&c](auto& p) { return ForwardExactPolar(c, p); });
    return ForwardExactly(call, kForwardSite, [&c](auto& p) { return ForwardExactOblique(c, p); });
  }
  if (call.work->Flattening == 0) {
    return ForwardEach(call, kForwardSite, [c = Remembered<Constants>(call)](auto& p) { return ForwardSphere(c, p); });
  }
  EllipsoidConstants c = Remembered<EllipsoidConstants>(call);
  if (c.pole != 0) return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardEllipsoidPolar(c, p); });
  if (Abs(c.centre.lat) <= kFloatEpsilon) c.PutCentreOnEquator();
  return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardEllipsoidOblique(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  KeepCentre(*call.work);
  if (call.exact) {
    const ExactConstants c = Remembered<ExactConstants>(call);
    if (c.pole != 0) return InverseExactly(call, kInverseSite, [&c](auto& p) { return InverseExactPolar(c, p); });
    return InverseExactly(call, kInverseSite, [&c](auto& p) { return InverseExactOblique(c, p); });
  }
  if (call.work->Flattening == 0) {
    const Constants c = Remembered<Constants>(call);
    if (c.pole != 0) return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseSpherePolar(c, p); });
    return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseSphereOblique(c, p); });
  }
  const EllipsoidConstants c = Remembered<EllipsoidConstants>(call);
  const ConformalSeries series(c.e2);
  if (c.pole != 0) {
    return InverseEach(call, kInverseSite, [&](auto& p) { return InverseEllipsoidPolar(c, series, p); });
  }
  return InverseEach(call, kInverseSite, [&](auto& p) { return InverseEllipsoidOblique(c, series, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return IsLatitude(work.Lat0);
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjPolar
