// ObliqueMercator - the constants of the map, from the ellipsoid and from either way to give the central line.
#include "math/ObliqueMercator.h"

#include "math/MeridianArc.h"
#include "support/Flag.h"

namespace orvex::detail {

namespace {

constexpr double kIndefinite = 1e-12;  // radians: points so close to each other, or to being antipodes, give no line

/// The aposphere that fits the ellipsoid best at a latitude.
Aposphere Fit(const PROJDATA& rec, double centreLat) {
  Aposphere s{};
  s.valid = Abs(centreLat) < kHalfPi;
  s.e = Sqrt(EccentricitySquared(rec.Flattening));
  const double e2 = s.e * s.e, sinLat = Sin(centreLat), cosLat = Cos(centreLat);
  const double w = 1 - e2 * sinLat * sinLat;
  s.B = Sqrt(1 + e2 * Square(Square(cosLat)) / (1 - e2));  // 9-11
  s.R = rec.MajorRadius * rec.K0 * Sqrt(1 - e2) / w;       // 9-12 divided by B
  // 9-13 is D = sec chi, which says nothing near the equator; from it follows tan chi = tan lat sqrt((1 - e2) / w).
  const double opposite = sinLat * Sqrt(1 - e2), adjacent = cosLat * Sqrt(w), h = Hypot(opposite, adjacent);
  s.sinChi = opposite / h;
  s.cosChi = adjacent / h;
  s.C = Asinh(opposite / adjacent) - s.B * IsometricLatitude(centreLat, EccentricTerm(s.e));  // ln E of 9-14
  return s;
}

/// Line of an azimuth through a centre (Snyder's alternate B). Azimuths beyond +-90 degrees run against the line's
/// northward direction: u and v change signs. The natural origin is the node next to the centre.
ObliqueLine ThroughCentre(const Aposphere& sphere, double lon, double alpha) {
  const double sinAlpha = Sin(alpha), cosAlpha = Cos(alpha), sense = cosAlpha < 0 ? -1 : 1;
  ObliqueLine m{sphere.valid, true, sinAlpha, cosAlpha, 0, sphere, 0, 0, 0};
  // Right triangle of node, centre and the foot of the centre's meridian.
  m.centreU = sense * sphere.R * Atan2(sphere.sinChi, sphere.cosChi * Abs(cosAlpha));
  m.lambda0 = RemainderNearest(lon - Atan2(sense * sinAlpha * sphere.sinChi, Abs(cosAlpha)) / sphere.B, kTwoPi);
  m.sinGamma = sinAlpha * sphere.cosChi;  // Clairaut
  m.cosGamma = sense * Hypot(cosAlpha, sinAlpha * sphere.sinChi);
  return m;
}

/// Line through two points (alternate A), whatever their order, u growing northward or else eastward. The natural
/// origin is the node next to the points' mean meridian, the centre the point next to it whose latitude is the
/// aposphere's.
ObliqueLine ThroughPoints(const Aposphere& sphere, double lon1, double lat1, double lon2, double lat2) {
  ObliqueLine m{sphere.valid, false, 0, 1, 0, sphere, 0, 0, 1};
  if (!(Abs(lat1) <= kHalfPi && Abs(lat2) <= kHalfPi)) m.valid = false;
  const EccentricTerm eccentric(sphere.e);
  const auto conformal = [&](double lat) {
    return Atan(Sinh(sphere.B * IsometricLatitude(lat, eccentric) + sphere.C));
  };
  const double halfDifference = RemainderNearest(lon1 - lon2, kTwoPi) / 2, delta = sphere.B * halfDifference;
  const double chi1 = conformal(lat1), chi2 = conformal(lat2);
  // The line's pole: vector product of the points, longitudes counted from their mean meridian.
  double nx = Sin(delta) * Sin(chi1 + chi2);
  double ny = Cos(delta) * Sin(chi1 - chi2);
  double nz = -Sin(2 * delta) * Cos(chi1) * Cos(chi2);
  if (ny > 0 ||
      (ny == 0 && nz < 0)) {  // u grows northward, or eastward along a line that is symmetric to the mean meridian
    nx = -nx;
    ny = -ny;
    nz = -nz;
  }
  const double h = Hypot(nx, ny), n = Hypot(h, nz);
  if (!(n > kIndefinite)) m.valid = false;
  m.lambda0 = RemainderNearest(lon2 + halfDifference + Atan2(nx, Abs(ny)) / sphere.B, kTwoPi);
  m.sinGamma = nz / n;
  m.cosGamma = h / n;
  // The centre, where the line reaches its latitude; a line whose vertex it is may fall short by rounding.
  const double cosAlphaSquared = (m.cosGamma - sphere.sinChi) * (m.cosGamma + sphere.sinChi);
  m.onLine = cosAlphaSquared >= -kIndefinite;
  m.cosAlpha = Sqrt(cosAlphaSquared > 0 ? cosAlphaSquared : 0.0) / sphere.cosChi;
  m.sinAlpha = Clamp(m.sinGamma / sphere.cosChi, -1, 1);
  m.centreU = sphere.R * Atan2(sphere.sinChi, sphere.cosChi * m.cosAlpha);
  return m;
}

double Radians(double angle, AngleUnit unit) {
  return unit == AngleUnit::Radians ? angle : DegToRad(angle);
}

ObliqueLine ThroughPoints(const PROJDATA& rec, double centreLat, AngleUnit unit) {
  return ThroughPoints(Fit(rec, centreLat), Radians(rec.Lon1, unit), Radians(rec.Lat1, unit), Radians(rec.Lon2, unit),
                       Radians(rec.Lat2, unit));
}

ObliqueLine HotineLineOf(const PROJDATA& rec, AngleUnit unit) {
  const double centreLat = Radians(rec.Lat0, unit);
  return IsSet(rec.bUseAlpha) ? ThroughCentre(Fit(rec, centreLat), Radians(rec.Lon0, unit), Radians(rec.Alpha, unit))
                              : ThroughPoints(rec, centreLat, unit);
}

}  // namespace

HotineLine::HotineLine(const PROJDATA& rec, AngleUnit unit)
    : ObliqueLine(HotineLineOf(rec, unit)),
      usable(valid && (onLine || !(IsSet(rec.bRotate) || IsSet(rec.bUOffset)))),
      rotate(IsSet(rec.bRotate)),
      u0(IsSet(rec.bUOffset) ? centreU : 0) {}

TwoPointLine::TwoPointLine(const PROJDATA& rec, AngleUnit unit)
    : ObliqueLine(ThroughPoints(rec, (Radians(rec.Lat1, unit) + Radians(rec.Lat2, unit)) / 2, unit)) {}

bool NearLine(const ObliqueLine& line, double lon, double lat) {
  return line.valid && Abs(ObliqueMercator<ObliqueLine>(line).Locate(lon, lat).U) <= Sqrt(0.5);
}

}  // namespace orvex::detail
