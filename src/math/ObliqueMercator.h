// ObliqueMercator - the oblique Mercator map of an ellipsoid: by Hotine's method it is first mapped conformally on a
// sphere (the aposphere) that fits it best at one latitude, and the sphere then by Mercator's map about a great circle.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), p. 66-75. The quantities are his; the
// formulas are written with the sphere's latitude chi and longitude B (lon - lambda0) instead of his S, T, U and V,
// which keeps full precision at the poles, at centres on the equator and along lines that cross no meridian at right
// angles but one.
#pragma once

#include "math/Angles.h"
#include "math/IsometricLatitude.h"
#include "orvex/projdata.h"

namespace orvex::detail {

/// The sphere on which the ellipsoid is mapped. Where `valid` is false the other values mean nothing.
struct Aposphere {
  bool valid;             ///< false for a centre at or beyond a pole
  double e;               ///< eccentricity of the ellipsoid
  double B, C;            ///< isometric latitude of the sphere = B psi + C; its longitude = B lon
  double R;               ///< radius times scale factor: Snyder's A / B
  double sinChi, cosChi;  ///< of the centre's latitude; 1 / cosChi is Snyder's D
};

/// The central line. It crosses the sphere's equator at the natural origin, longitude lambda0, with azimuth gamma0. u
/// is counted from there along the line, v at right angles to it, positive to the right of the direction of u.
struct ObliqueLine {
  bool valid;                          ///< whether the parameters determine a line; if not, no point can be computed
  bool onLine;                         ///< whether the line has a centre, so that the next three values mean something
  double sinAlpha, cosAlpha, centreU;  ///< azimuth of the line at the centre, and u of the centre
  Aposphere sphere;
  double lambda0, sinGamma, cosGamma;  ///< lambda0 within half a turn of 0
};

/// What a record says of its angles: radians in the driver's copy, degrees in a host's.
enum class AngleUnit { Radians, Degrees };

/// The line of the Hotine projection: through a centre with an azimuth, or through two points. Coordinates may count
/// from the centre and be turned to north.
struct HotineLine : ObliqueLine {
  explicit HotineLine(const PROJDATA& rec, AngleUnit unit = AngleUnit::Radians);

  bool usable;  ///< valid, and with a centre where one is needed
  bool rotate;
  double u0;
};

/// The line of the Oblique Mercator projection, through two points.
struct TwoPointLine : ObliqueLine {
  explicit TwoPointLine(const PROJDATA& rec, AngleUnit unit = AngleUnit::Radians);
};

/// Whether a point (radians) lies within 45 degrees of arc of the central line on the sphere.
bool NearLine(const ObliqueLine& line, double lon, double lat);

namespace ORVEX_LEVEL {

/// Distance across the line, in radii of the aposphere, from which on a place is the line's pole to rounding.
inline constexpr double kFarthestAcross = 37;

/// The map about a line.
template <class Line>
struct ObliqueMercator {
  Line line;
  EccentricTerm eccentric;

  explicit ObliqueMercator(const PROJDATA& rec) : line(rec), eccentric(line.sphere.e) {}
  explicit ObliqueMercator(const Line& prepared) : line(prepared), eccentric(line.sphere.e) {}

  /// Position (longitudes within a turn of 0) on the sphere in the frame of the line: towards the natural origin, along
  /// the line, towards the line's pole.
  template <class T>
  struct Vector {
    T X, Y, U;
  };
  template <class T>
  ORVEX_INLINE Vector<T> Locate(T lon, T lat) const {
    // Latitude chi of the sphere from its isometric latitude w: tanh w is its sine, 1 / cosh w its cosine.
    // Beyond 350 both are what they are there.
    const T w = line.sphere.B * IsometricLatitude(lat, eccentric) + line.sphere.C;
    const T E = Exp(Clamp(w, -350, 350)), square = E * E;
    const T half = 1 / (square + 1), cosChi = 2 * E * half, sinChi = (square - 1) * half;
    const auto [sine, cosine] = SinCos(line.sphere.B * WrapOnce(lon - line.lambda0));
    const T east = cosChi * sine;
    return {cosChi * cosine, sinChi * line.cosGamma + east * line.sinGamma,
            sinChi * line.sinGamma - east * line.cosGamma};
  }

  /// Not for the poles of the line and where there is no line.
  template <class T>
  ORVEX_INLINE MaskOf<T> Forward(T lon, T lat, T& u, T& v) const {
    u = v = T(0);
    if (!line.valid) return No<T>();
    const Vector<T> p = Locate(lon, lat);
    const T distance = Sqrt(p.X * p.X + p.Y * p.Y);
    const MaskOf<T> plottable = distance != T(0);
    u = line.sphere.R * Atan2(p.Y, p.X);
    v = -line.sphere.R * Asinh(p.U / OneUnless<T>(plottable, distance));  // = -R artanh U
    return plottable;
  }

  /// Not beyond the line's ends, half a turn from the natural origin, and where there is no line.
  template <class T>
  ORVEX_INLINE MaskOf<T> Inverse(T u, T v, T& lon, T& lat) const {
    constexpr double kRounding = 1e-9;  // radians; points of the seam may lie beyond it by rounding
    if (!line.valid) {
      lon = lat = T(0);
      return No<T>();
    }
    const T sigma = u / line.sphere.R, w = v / line.sphere.R;
    const MaskOf<T> plottable = Abs(sigma) <= T(kPi + kRounding);
    // Latitude of the map's own sphere from its isometric latitude w: 1 / cosh w is its cosine, tanh w its sine. Beyond
    // 350 both are what they are there.
    const T E = Exp(Clamp(w, -350, 350)), square = E * E, half = 1 / (square + 1);
    const T sech = 2 * E * half, U = (1 - square) * half;
    const auto [sine, cosine] = SinCos(Select(plottable, sigma, T(0)));
    const T X = sech * cosine, Y = sech * sine;
    const T east = Y * line.sinGamma - U * line.cosGamma, north = Y * line.cosGamma + U * line.sinGamma;
    lon = WrapOnce(line.lambda0 + Atan2(east, X) / line.sphere.B);
    const T isometric = Asinh(north / Sqrt(X * X + east * east));
    return plottable & LatitudeFromIsometric((isometric - line.sphere.C) / line.sphere.B, eccentric, lat);
  }
};

}  // namespace ORVEX_LEVEL

}  // namespace orvex::detail
