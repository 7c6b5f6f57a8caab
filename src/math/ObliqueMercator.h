// ObliqueMercator - the oblique Mercator map of an ellipsoid: by Hotine's method it is first mapped conformally on a
// sphere (the aposphere) that fits it best at one latitude, and the sphere then by Mercator's map about a great circle.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), p. 66-75. The quantities are his; the
// formulas are written with the sphere's latitude chi and longitude B (lon - lambda0) instead of his S, T, U and V,
// which keeps full precision at the poles, at centres on the equator and along lines that cross no meridian at right
// angles but one.
#pragma once

#include <cmath>

#include "math/Angles.h"
#include "math/IsometricLatitude.h"

namespace orvex::detail {

/// The sphere on which the ellipsoid is mapped. Where `valid` is false the other values mean nothing.
struct Aposphere {
  bool valid;             ///< false for a centre at or beyond a pole
  double e;               ///< eccentricity of the ellipsoid
  double B, C;            ///< isometric latitude of the sphere = B psi + C; its longitude = B lon
  double R;               ///< radius times scale factor: Snyder's A / B
  double sinChi, cosChi;  ///< of the centre's latitude; 1 / cosChi is Snyder's D

  Aposphere(double semiMajor, double flattening, double k0, double centreLat);

  double Isometric(double lat) const { return B * IsometricLatitude(lat, e) + C; }
};

/// The map. Its central line crosses the sphere's equator at the natural origin, longitude lambda0, with azimuth
/// gamma0. u is counted from there along the line, v at right angles to it, positive to the right of the direction of
/// u.
struct ObliqueMercator {
  bool valid;                          ///< whether the parameters determine a line; if not, no point can be computed
  bool onLine;                         ///< whether the line has a centre, so that the next three values mean something
  double sinAlpha, cosAlpha, centreU;  ///< azimuth of the line at the centre, and u of the centre
  Aposphere sphere;
  double lambda0, sinGamma, cosGamma;  ///< lambda0 within half a turn of 0

  /// Line of an azimuth through a centre (Snyder's alternate B). Azimuths beyond +-90 degrees run against the line's
  /// northward direction: u and v change signs. The natural origin is the node next to the centre.
  static ObliqueMercator ThroughCentre(const Aposphere& sphere, double lon, double alpha);
  /// Line through two points (alternate A), whatever their order, u growing northward or else eastward. The natural
  /// origin is the node next to the points' mean meridian, the centre the point next to it whose latitude is the
  /// aposphere's.
  static ObliqueMercator ThroughPoints(const Aposphere& sphere, double lon1, double lat1, double lon2, double lat2);

  /// Position (longitudes within a turn of 0) on the sphere in the frame of the line: towards the natural origin, along
  /// the line, towards the line's pole.
  struct Vector {
    double X, Y, U;
  };
  Vector Locate(double lon, double lat) const {
    const double w = sphere.Isometric(lat), cosChi = 1 / std::cosh(w), sinChi = std::tanh(w);
    const double Lambda = sphere.B * WrapOnce(lon - lambda0);
    const double east = cosChi * std::sin(Lambda);
    return {cosChi * std::cos(Lambda), sinChi * cosGamma + east * sinGamma, sinChi * sinGamma - east * cosGamma};
  }

  /// Whether a point lies within 45 degrees of arc of the central line on the sphere.
  bool NearLine(double lon, double lat) const { return valid && std::abs(Locate(lon, lat).U) <= std::sqrt(0.5); }

  /// False for the poles of the line and where there is no line.
  bool Forward(double lon, double lat, double& u, double& v) const {
    if (!valid) return false;
    const Vector p = Locate(lon, lat);
    const double distance = std::sqrt(p.X * p.X + p.Y * p.Y);
    if (distance == 0) return false;
    u = sphere.R * std::atan2(p.Y, p.X);
    v = -sphere.R * std::asinh(p.U / distance);  // = -R artanh U
    return true;
  }

  /// False beyond the line's ends, half a turn from the natural origin, and where there is no line.
  bool Inverse(double u, double v, double& lon, double& lat) const {
    constexpr double kRounding = 1e-9;  // radians; points of the seam may lie beyond it by rounding
    const double sigma = u / sphere.R, w = v / sphere.R;
    if (!valid || !(std::abs(sigma) <= kPi + kRounding)) return false;
    const double sech = 1 / std::cosh(w), U = -std::tanh(w), X = sech * std::cos(sigma), Y = sech * std::sin(sigma);
    const double east = Y * sinGamma - U * cosGamma, north = Y * cosGamma + U * sinGamma;
    lon = WrapOnce(lambda0 + std::atan2(east, X) / sphere.B);
    const double isometric = std::asinh(north / std::sqrt(X * X + east * east));
    return LatitudeFromIsometric((isometric - sphere.C) / sphere.B, sphere.e, lat);
  }
};

}  // namespace orvex::detail
