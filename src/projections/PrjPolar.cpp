// PrjPolar - Stereographic: azimuthal and conformal, circles stay circles on the sphere. Sphere and ellipsoid, every
// aspect. Centre Lat0/Lon0, scale K0 at the centre.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), sphere 5-3, 21-2 to 21-4, 21-15, 20-14 to
//   20-18; ellipsoid 3-1, 14-15, 15-9, 21-24 to 21-40; latitude by the series 3-5.
// Fixed on purpose: only the hemisphere about the centre is plotted; on the ellipsoid the oblique and equatorial
//   aspects refuse the north pole, the equatorial forward takes a centre within 1.2e-7 radians of the equator to lie on
//   it while the inverse does not, and the inverse refuses the centre; Lat1 and Lon1 of the working record receive the
//   centre.
#include "math/Azimuthal.h"
#include "math/MeridianArc.h"
#include "projections/Modules.h"

namespace orvex::detail::PrjPolar {

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
    if (std::abs(centre.lat - kHalfPi) <= kFloatEpsilon) pole = kNorthPole;
    if (std::abs(centre.lat + kHalfPi) <= kFloatEpsilon) pole = kSouthPole;
  }
};

// ---- sphere ----

/// Every aspect. In the hemisphere that is plotted the divisor 1 + cos c is never 0.
Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  const AzimuthalView view = c.centre.View(p.y, p.x);
  if (view.cosC < 0) return Plot::Unplottable;
  const double k = c.twoRk0 / (1 + view.cosC);  // 21-4
  p = {k * view.east, k * view.north};          // 21-2, 21-3
  return Plot::Ok;
}

AzimuthalDirection SphereDirection(const Constants& c, const PROJPOINT& p, double rho) {
  return c.centre.Direction(p.x, p.y, rho, Arc::WithHalfTangent(rho / c.twoRk0));  // 21-15
}

Plot InverseSpherePolar(const Constants& c, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (rho <= kFloatEpsilon) {
    p = {WrapOnce(c.centre.lon), c.centre.lat};
    return Plot::Ok;
  }
  p = {WrapOnce(c.centre.lon + PolarLongitudeDifference(p.x, p.y, c.pole)), SphereDirection(c, p, rho).Latitude()};
  return Plot::Ok;
}

Plot InverseSphereOblique(const Constants& c, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (rho <= kFloatEpsilon) {
    p = {WrapOnce(c.centre.lon), c.centre.lat};
    return Plot::Ok;
  }
  const AzimuthalDirection direction = SphereDirection(c, p, rho);
  if (direction.along == 0) return Plot::Unplottable;
  p = {WrapOnce(c.centre.lon + direction.LongitudeDifference()), direction.Latitude()};
  return Plot::Ok;
}

// ---- ellipsoid ----

/// ((1 - e sin phi) / (1 + e sin phi))^(e/2), what the ellipsoid adds to the conformal latitude.
double EllipsoidFactor(double e, double sinPhi) {
  return std::pow((1 - e * sinPhi) / (1 + e * sinPhi), e / 2);
}

/// Conformal latitude chi, 3-1. Without one: at the north pole, and at the south pole when e is 1.
struct ConformalLatitude {
  bool exists;
  double sinChi, cosChi;

  ConformalLatitude(double e, double sinPhi, double cosPhi)
      : exists(1 - sinPhi != 0 && 1 + e * sinPhi != 0), sinChi(0), cosChi(1) {
    if (!exists) return;
    // tan(pi/4 + phi/2), whose argument itself would lose digits towards the north pole.
    const double tangent = sinPhi > 0 ? (1 + sinPhi) / cosPhi : cosPhi / (1 - sinPhi);
    const double T = tangent * EllipsoidFactor(e, sinPhi);  // tan(pi/4 + chi/2)
    const double square = T * T;
    sinChi = (square - 1) / (square + 1);
    cosChi = 2 * T / (square + 1);
  }
};

struct EllipsoidConstants : Constants {
  double e2, e;
  double w1Squared;   // 1 - e^2 sin^2 phi1
  double polarScale;  // rho / t in the polar aspects, 21-33
  ConformalLatitude chi1;
  AzimuthalCentre conformalCentre;  // on the conformal sphere
  double obliqueScale;              // 2 a k0 m1 / cos chi1, 14-15

  explicit EllipsoidConstants(const PROJDATA& work)
      : Constants(work),
        e2(EccentricitySquared(work.Flattening)),
        e(std::sqrt(e2)),
        w1Squared(1 - e2 * Square(centre.sinLat)),
        polarScale(twoRk0 / std::sqrt(std::pow(1 + e, 1 + e) * std::pow(1 - e, 1 - e))),
        chi1(e, centre.sinLat, centre.cosLat),
        conformalCentre(centre),
        obliqueScale(twoRk0 * (centre.cosLat / std::sqrt(w1Squared)) / chi1.cosChi) {
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

/// Whether a point is refused before the aspects part: beyond the hemisphere, or w = 0, which only e = 1 brings about.
bool Refused(const EllipsoidConstants& c, const AzimuthalView& view, double sinPhi) {
  return view.cosC < 0 || 1 - c.e2 * sinPhi * sinPhi == 0;
}

Plot ForwardEllipsoidPolar(const EllipsoidConstants& c, PROJPOINT& p) {
  const double sinPhi = std::sin(p.y), dlon = p.x - c.centre.lon;
  if (Refused(c, c.centre.View(sinPhi, std::cos(p.y), p.x), sinPhi)) return Plot::Unplottable;
  // 15-9. In the hemisphere that is left the divisor 1 + e sin phi is at least 1, and so is the one in polarScale.
  const double t = std::tan(kQuarterPi - c.pole * p.y / 2) / EllipsoidFactor(c.e, c.pole * sinPhi);
  const double rho = c.polarScale * t;
  p = {rho * std::sin(dlon), -c.pole * rho * std::cos(dlon)};  // 21-30, 21-31
  return Plot::Ok;
}

Plot ForwardEllipsoidOblique(const EllipsoidConstants& c, PROJPOINT& p) {
  const double sinPhi = std::sin(p.y), cosPhi = std::cos(p.y);
  if (Refused(c, c.centre.View(sinPhi, cosPhi, p.x), sinPhi)) return Plot::Unplottable;
  const ConformalLatitude chi(c.e, sinPhi, cosPhi);
  if (!c.chi1.exists || !chi.exists) return Plot::Unplottable;
  const AzimuthalView view = c.conformalCentre.View(chi.sinChi, chi.cosChi, p.x);
  const double D = 1 + view.cosC;
  if (D == 0) return Plot::Unplottable;
  const double A = c.obliqueScale / D;  // 21-27
  p = {A * view.east, A * view.north};  // 21-24, 21-25
  return Plot::Ok;
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

  double operator()(double chi) const { return chi + SineSeries(std::sin(2 * chi), std::cos(2 * chi), c2, c4, c6, c8); }
};

Plot InverseEllipsoidPolar(const EllipsoidConstants& c, const ConformalSeries& series, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (c.w1Squared <= 0 || rho <= kFloatEpsilon) return Plot::Unplottable;
  const double chi = kHalfPi - 2 * std::atan(rho / c.polarScale);  // 7-13, 21-39
  p = {WrapOnce(c.centre.lon + PolarLongitudeDifference(p.x, p.y, c.pole)), c.pole * series(chi)};
  return Plot::Ok;
}

Plot InverseEllipsoidOblique(const EllipsoidConstants& c, const ConformalSeries& series, PROJPOINT& p) {
  const double rho = std::sqrt(p.x * p.x + p.y * p.y);
  if (c.w1Squared <= 0 || rho <= kFloatEpsilon || !c.chi1.exists) return Plot::Unplottable;
  const AzimuthalDirection direction =
      c.conformalCentre.Direction(p.x, p.y, rho, Arc::WithHalfTangent(rho / c.obliqueScale));  // 21-38
  if (direction.along == 0) return Plot::Unplottable;
  p = {WrapOnce(c.centre.lon + direction.LongitudeDifference()), series(direction.Latitude())};  // 21-36, 21-37
  return Plot::Ok;
}

}  // namespace

bool Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  KeepCentre(*work);
  if (work->Flattening == 0) {
    const Constants c(*work);
    return ConvertEach<ForwardSphere>(*work, pts, nPts, c);
  }
  EllipsoidConstants c(*work);
  if (c.pole != 0) return ConvertEach<ForwardEllipsoidPolar>(*work, pts, nPts, c);
  if (std::abs(c.centre.lat) <= kFloatEpsilon) c.PutCentreOnEquator();
  return ConvertEach<ForwardEllipsoidOblique>(*work, pts, nPts, c);
}

bool Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  KeepCentre(*work);
  if (work->Flattening == 0) {
    const Constants c(*work);
    if (c.pole != 0) return ConvertEach<InverseSpherePolar>(*work, pts, nPts, c);
    return ConvertEach<InverseSphereOblique>(*work, pts, nPts, c);
  }
  const EllipsoidConstants c(*work);
  const ConformalSeries series(c.e2);
  if (c.pole != 0) {
    return ConvertEach(*work, pts, nPts, [&](PROJPOINT& p) { return InverseEllipsoidPolar(c, series, p); });
  }
  return ConvertEach(*work, pts, nPts, [&](PROJPOINT& p) { return InverseEllipsoidOblique(c, series, p); });
}

}  // namespace orvex::detail::PrjPolar
