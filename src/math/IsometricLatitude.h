// IsometricLatitude - isometric latitude on the ellipsoid and its inverse, to rounding for every flattening below 1.
#pragma once

#include "math/Angles.h"
#include "points/PointLoop.h"

namespace orvex::detail::ORVEX_LEVEL {

/// What the ellipsoid takes off the isometric latitude: e artanh(e sin phi).
class EccentricTerm {
 public:
  explicit EccentricTerm(double eccentricity) : e(eccentricity), e2(eccentricity * eccentricity) {}

  /// Whether the eccentricity is that of a planet, where short series do.
  bool IsEarthlike() const { return e2 <= kEarthlike; }

  template <class T>
  ORVEX_INLINE T operator()(T sinPhi) const {
    return IsEarthlike() ? e2 * Series(sinPhi) : e * AtanhOf(sinPhi);
  }
  /// The same divided by e^2, which may be too small to divide by.
  template <class T>
  ORVEX_INLINE T PerSquare(T sinPhi) const {
    return IsEarthlike() ? Series(sinPhi) : AtanhOf(sinPhi) / e;
  }

  /// Its hyperbolic sine.
  template <class T>
  ORVEX_INLINE T Sinh(T sinPhi) const {
    const T w = (*this)(sinPhi);
    if (!IsEarthlike()) return detail::ORVEX_LEVEL::Sinh(w);
    const T z = w * w;  // below 0.00008: three terms of the series do
    return w + w * z * ((1.0 / 120) * z + 1.0 / 6);
  }

  double e;

 private:
  /// artanh(e s); 0 at a pole when e is 1, which has no such value: callers refuse it.
  template <class T>
  ORVEX_INLINE T AtanhOf(T sinPhi) const {
    const T s = e * sinPhi;
    return Atanh(Select(Abs(s) < T(1), s, T(0)));
  }

  /// artanh(e s) / e by its series; what is left out is below 2^-54 of it.
  template <class T>
  ORVEX_INLINE T Series(T sinPhi) const {
    const T z = e2 * (sinPhi * sinPhi);
    T s = z * (1.0 / 15) + 1.0 / 13;
    s = s * z + 1.0 / 11;
    s = s * z + 1.0 / 9;
    s = s * z + 1.0 / 7;
    s = s * z + 1.0 / 5;
    s = s * z + 1.0 / 3;
    return sinPhi + sinPhi * (z * s);
  }

  static constexpr double kEarthlike = 0.0085;  // every ellipsoid of the catalogue lies below
  double e2;
};

/// psi = artanh(sin phi) - e artanh(e sin phi); Snyder 1987, 7-7 is its negative exponential. Finite for every double
/// phi.
template <class T>
ORVEX_INLINE T IsometricLatitude(T sinPhi, T cosPhi, const EccentricTerm& eccentric) {
  const T psi = CopySign(Log((1 + Abs(sinPhi)) / Abs(cosPhi)), sinPhi);
  return eccentric.e == 0 ? psi : psi - eccentric(sinPhi);
}
template <class T>
ORVEX_INLINE T IsometricLatitude(T phi, const EccentricTerm& eccentric) {
  const auto [sinPhi, cosPhi] = SinCos(phi);
  return IsometricLatitude(sinPhi, cosPhi, eccentric);
}

/// Latitude of an isometric latitude, by Newton's method on its tangent. Not settled for what is not finite.
template <class T>
ORVEX_INLINE MaskOf<T> LatitudeFromIsometric(T psi, const EccentricTerm& eccentric, T& phi) {
  constexpr double kPole = 40;        // every psi beyond has the pole as its nearest latitude
  constexpr double kRelative = 1e-9;  // of a step; convergence is quadratic, so the next one would be lost in rounding
  constexpr int kMostSteps = 50;      // two for flattenings like the earth's, seven for 0.99
  const double e = eccentric.e, e2m = 1 - e * e;
  const MaskOf<T> onEarth = Abs(psi) <= T(kPole);
  const T conformal = Sinh(Select(onEarth, psi, T(0)));  // tangent of the conformal latitude
  T tangent = conformal / e2m;
  Iteration<T> it(kMostSteps);
  while (e != 0 && it.Goes()) {
    const T secant = Sqrt(1 + tangent * tangent), shift = eccentric.Sinh(tangent / secant);
    const T estimate = tangent * Sqrt(1 + shift * shift) - shift * secant;
    const T slope = Sqrt(1 + estimate * estimate) * e2m * secant / (1 + e2m * (tangent * tangent));
    const T step = (conformal - estimate) / slope;
    it.Step(tangent, tangent + step);
    const T size = Abs(tangent);
    it.Settle(!(Abs(step) > kRelative * Select(size > T(1), size, T(1))));
  }
  phi = Select(onEarth, Atan(tangent), CopySign(T(kHalfPi), psi));
  return IsNumber(psi);
}

}  // namespace orvex::detail::ORVEX_LEVEL
