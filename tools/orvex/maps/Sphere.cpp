// Sphere - positions as vectors, and the globe turned so that the edge of a map follows its parallels and meridians.
#include "maps/Sphere.h"

namespace orvex::tool {

namespace {

Vector Unit(const Vector& v) {
  const double length = std::sqrt(Dot(v, v));
  return {v.x / length, v.y / length, v.z / length};
}

/// Some vector at right angles to a unit vector.
Vector Beside(const Vector& z) {
  return Unit(Cross(std::abs(z.z) < 0.9 ? Vector{0, 0, 1} : Vector{1, 0, 0}, z));
}

double IsometricLatitude(double lat, double e) {
  const double sine = std::sin(lat * kRadians);
  return std::atanh(sine) - e * std::atanh(e * sine);
}

double Secant(double tangent) {
  return std::sqrt(1 + tangent * tangent);
}

/// The other way, by Newton's method for the tangent of the latitude: two or three steps, where iterating the
/// definition takes six. Source: Karney, "Transverse Mercator with an accuracy of a few nanometers" (2011), equations
/// 19 to 21.
double LatitudeOf(double isometric, double e) {
  const double target = std::sinh(isometric), rest = 1 - e * e;
  double tangent = target / rest;
  constexpr int kSteps = 4;
  for (int i = 0; i < kSteps && std::isfinite(tangent); ++i) {
    const double secant = Secant(tangent), sigma = std::sinh(e * std::atanh(e * tangent / secant));
    const double conformal = tangent * Secant(sigma) - sigma * secant;
    const double step = (target - conformal) * (1 + rest * tangent * tangent) / (rest * secant * Secant(conformal));
    tangent += step;
    if (std::abs(step) <= 1e-12 * secant) break;  // the next step would be its square
  }
  return std::atan(tangent) / kRadians;
}

}  // namespace

Vector UnitVector(double lon, double lat) {
  const double cosLat = std::cos(lat * kRadians);
  return {cosLat * std::cos(lon * kRadians), cosLat * std::sin(lon * kRadians), std::sin(lat * kRadians)};
}

PROJPOINT PlaceOf(const Vector& v) {
  return {std::atan2(v.y, v.x) / kRadians, std::atan2(v.z, std::sqrt(v.x * v.x + v.y * v.y)) / kRadians};
}

Aposphere Aposphere::Fit(double e, double lat) {
  const double sine = std::sin(lat * kRadians), cosine = std::cos(lat * kRadians), e2 = e * e;
  Aposphere s;
  s.e = e;
  s.B = std::sqrt(1 + e2 * cosine * cosine * cosine * cosine / (1 - e2));
  const double tanChi = sine / cosine * std::sqrt((1 - e2) / (1 - e2 * sine * sine));
  s.C = std::asinh(tanChi) - s.B * IsometricLatitude(lat, e);
  return s;
}

PROJPOINT Aposphere::To(const PROJPOINT& p) const {
  const double lon = B * std::remainder(p.x - lon0, 360);
  if (e == 0) return {lon, p.y};
  return {lon, std::atan(std::sinh(B * IsometricLatitude(p.y, e) + C)) / kRadians};
}

Vector Aposphere::VectorOf(const PROJPOINT& p) const {
  if (e == 0) {
    const PROJPOINT s = To(p);
    return UnitVector(s.x, s.y);
  }
  const double lon = B * std::remainder(p.x - lon0, 360) * kRadians;
  // The sine of the latitude is the hyperbolic tangent of the isometric one.
  const double growth = std::exp(B * IsometricLatitude(p.y, e) + C);
  if (!(growth > 0) || !std::isfinite(growth)) return {0, 0, growth > 0 ? 1.0 : -1.0};
  const double cosLat = 2 / (growth + 1 / growth);
  return {cosLat * std::cos(lon), cosLat * std::sin(lon), (growth - 1 / growth) * cosLat / 2};
}

PROJPOINT Aposphere::PlaceOf(const Vector& v) const {
  const PROJPOINT s = tool::PlaceOf(v);
  const double lon = lon0 + s.x / B;
  if (e == 0) return {lon, s.y};
  return {lon, LatitudeOf((std::asinh(v.z / std::sqrt(v.x * v.x + v.y * v.y)) - C) / B, e)};
}

Aspect Aspect::AboutPole(const PROJPOINT& pole) {
  const Vector z = UnitVector(pole.x, pole.y);
  return AboutOrigin(Beside(z), z);
}

Aspect Aspect::AboutOrigin(const Vector& origin, const Vector& pole, const Aposphere& sphere) {
  const Vector y = Unit(Cross(pole, origin));
  return {sphere, Unit(origin), y, Unit(Cross(origin, y))};
}

Vector Aspect::To(const PROJPOINT& p) const {
  const Vector v = sphere.VectorOf(p);
  return {Dot(v, x), Dot(v, y), Dot(v, z)};
}

PROJPOINT Aspect::From(double lon, double lat) const {
  const Vector t = UnitVector(lon, lat);
  return sphere.PlaceOf(
      {t.x * x.x + t.y * y.x + t.z * z.x, t.x * x.y + t.y * y.y + t.z * z.y, t.x * x.z + t.y * y.z + t.z * z.z});
}

}  // namespace orvex::tool
