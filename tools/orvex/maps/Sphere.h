// Sphere - positions as vectors, and the globe turned so that the edge of a map follows its parallels and meridians.
#pragma once

#include <cmath>
#include <numbers>

#include <orvex/projection.h>

namespace orvex::tool {

constexpr double kRadians = std::numbers::pi / 180;

struct Vector {
  double x, y, z;
};

constexpr double Dot(const Vector& a, const Vector& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}
constexpr Vector Cross(const Vector& a, const Vector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
constexpr Vector Between(const Vector& a, const Vector& b, double t) {
  return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)};
}

/// The unit vector of a place, angles in degrees.
Vector UnitVector(double lon, double lat);
/// Longitude within half a turn of 0 and latitude, degrees, of a vector of any length but 0.
PROJPOINT PlaceOf(const Vector& v);

/// The sphere on which an ellipsoid is mapped conformally: longitude B (lon - lon0), isometric latitude B psi + C
/// (Snyder, Map Projections - A Working Manual, USGS PP 1395, 1987, 9-11 to 9-14).
struct Aposphere {
  double lon0 = 0, e = 0, B = 1, C = 0;

  /// The one that fits an ellipsoid of eccentricity e best at a latitude in degrees.
  static Aposphere Fit(double e, double lat);

  PROJPOINT To(const PROJPOINT& p) const;
  /// The unit vector of a place on the sphere.
  Vector VectorOf(const PROJPOINT& p) const;
  /// The place that lies in the direction of a unit vector.
  PROJPOINT PlaceOf(const Vector& v) const;
};

/// A globe with axes of its own: z towards its north pole, x towards its latitude 0 and longitude 0.
struct Aspect {
  Aposphere sphere;
  Vector x, y, z;

  /// With a place as the north pole.
  static Aspect AboutPole(const PROJPOINT& pole);
  /// With a place as origin of latitude and longitude, and the north pole in another direction.
  static Aspect AboutOrigin(const Vector& origin, const Vector& pole, const Aposphere& sphere = {});

  /// Vector in the frame of these axes.
  Vector To(const PROJPOINT& p) const;
  /// The place of turned longitude and latitude, degrees.
  PROJPOINT From(double lon, double lat) const;
};

}  // namespace orvex::tool
