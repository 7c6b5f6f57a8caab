// ObliqueMercator - the constants of the map, from the ellipsoid and from either way to give the central line.
#include "math/ObliqueMercator.h"

#include <algorithm>

#include "math/MeridianArc.h"

namespace orvex::detail {

namespace {

constexpr double kIndefinite = 1e-12;  // radians: points so close to each other, or to being antipodes, give no line

}  // namespace

Aposphere::Aposphere(double semiMajor, double flattening, double k0, double centreLat)
    : valid(std::abs(centreLat) < kHalfPi), e(std::sqrt(EccentricitySquared(flattening))) {
  const double e2 = e * e, sinLat = std::sin(centreLat), cosLat = std::cos(centreLat);
  const double w = 1 - e2 * sinLat * sinLat;
  B = std::sqrt(1 + e2 * Square(Square(cosLat)) / (1 - e2));  // 9-11
  R = semiMajor * k0 * std::sqrt(1 - e2) / w;                 // 9-12 divided by B
  // 9-13 is D = sec chi, which says nothing near the equator; from it follows tan chi = tan lat sqrt((1 - e2) / w).
  const double opposite = sinLat * std::sqrt(1 - e2), adjacent = cosLat * std::sqrt(w),
               h = std::hypot(opposite, adjacent);
  sinChi = opposite / h;
  cosChi = adjacent / h;
  C = std::asinh(opposite / adjacent) - B * IsometricLatitude(centreLat, e);  // the logarithm of E in 9-14
}

ObliqueMercator ObliqueMercator::ThroughCentre(const Aposphere& sphere, double lon, double alpha) {
  const double sinAlpha = std::sin(alpha), cosAlpha = std::cos(alpha), sense = cosAlpha < 0 ? -1 : 1;
  ObliqueMercator m{sphere.valid, true, sinAlpha, cosAlpha, 0, sphere, 0, 0, 0};
  // Right triangle of node, centre and the foot of the centre's meridian.
  m.centreU = sense * sphere.R * std::atan2(sphere.sinChi, sphere.cosChi * std::abs(cosAlpha));
  m.lambda0 = std::remainder(lon - std::atan2(sense * sinAlpha * sphere.sinChi, std::abs(cosAlpha)) / sphere.B, kTwoPi);
  m.sinGamma = sinAlpha * sphere.cosChi;  // Clairaut
  m.cosGamma = sense * std::hypot(cosAlpha, sinAlpha * sphere.sinChi);
  return m;
}

ObliqueMercator ObliqueMercator::ThroughPoints(const Aposphere& sphere, double lon1, double lat1, double lon2,
                                               double lat2) {
  ObliqueMercator m{sphere.valid, false, 0, 1, 0, sphere, 0, 0, 1};
  if (!(std::abs(lat1) <= kHalfPi && std::abs(lat2) <= kHalfPi)) m.valid = false;
  const double halfDifference = std::remainder(lon1 - lon2, kTwoPi) / 2, delta = sphere.B * halfDifference;
  const double chi1 = std::atan(std::sinh(sphere.Isometric(lat1))), chi2 = std::atan(std::sinh(sphere.Isometric(lat2)));
  // The line's pole: vector product of the points, longitudes counted from their mean meridian.
  double nx = std::sin(delta) * std::sin(chi1 + chi2);
  double ny = std::cos(delta) * std::sin(chi1 - chi2);
  double nz = -std::sin(2 * delta) * std::cos(chi1) * std::cos(chi2);
  if (ny > 0 ||
      (ny == 0 && nz < 0)) {  // u grows northward, or eastward along a line that is symmetric to the mean meridian
    nx = -nx;
    ny = -ny;
    nz = -nz;
  }
  const double h = std::hypot(nx, ny), n = std::hypot(h, nz);
  if (!(n > kIndefinite)) m.valid = false;
  m.lambda0 = std::remainder(lon2 + halfDifference + std::atan2(nx, std::abs(ny)) / sphere.B, kTwoPi);
  m.sinGamma = nz / n;
  m.cosGamma = h / n;
  // The centre, where the line reaches its latitude; a line whose vertex it is may fall short by rounding.
  const double cosAlphaSquared = (m.cosGamma - sphere.sinChi) * (m.cosGamma + sphere.sinChi);
  m.onLine = cosAlphaSquared >= -kIndefinite;
  m.cosAlpha = std::sqrt(std::max(0.0, cosAlphaSquared)) / sphere.cosChi;
  m.sinAlpha = std::clamp(m.sinGamma / sphere.cosChi, -1.0, 1.0);
  m.centreU = sphere.R * std::atan2(sphere.sinChi, sphere.cosChi * m.cosAlpha);
  return m;
}

}  // namespace orvex::detail
