// AuxiliaryLatitudes - rectifying, authalic and conformal latitude and the ways between them, to rounding: by series in
// the third flattening n for every ellipsoid that is nearly a sphere, by the definitions for all others.
// Source: Karney, "On auxiliary latitudes", Survey Review (2022); the coefficients are made by a script of the project.
#pragma once

#include "math/Angles.h"
#include "math/FatEllipsoid.h"
#include "math/MeridianArc.h"

namespace orvex::detail::ORVEX_LEVEL {

#include "math/AuxiliarySeries.inc"

inline constexpr int kSeriesOrder = 8;

/// Beyond this third flattening (f = 0.02) what the series leave out could be seen.
inline constexpr double kMostN = 0.0102;

/// The third flattening of an ellipsoid of flattening f.
constexpr double ThirdFlattening(double f) {
  return f / (2 - f);
}

/// One latitude less another: a sum of c_k sin 2k t.
class LatitudeSeries {
 public:
  explicit LatitudeSeries(const double (&rows)[kSeriesOrder * (kSeriesOrder + 1) / 2], double n) {
    const double* row = rows;
    double power = n;
    for (int k = 0; k < kSeriesOrder; ++k, power *= n) {
      const int terms = kSeriesOrder - k;
      double sum = 0;
      for (int i = terms - 1; i >= 0; --i) sum = sum * n + row[i];
      c[k] = power * sum;
      row += terms;
    }
  }

  /// From sin 2t and cos 2t, by Clenshaw's recurrence.
  template <class T>
  ORVEX_INLINE T OfDouble(T sin2, T cos2) const {
    const T twoCos = 2 * cos2;
    T above = T(0), b = T(c[kSeriesOrder - 1]);
    for (int k = kSeriesOrder - 2; k >= 0; --k) {
      const T next = c[k] + twoCos * b - above;
      above = b;
      b = next;
    }
    return sin2 * b;
  }
  /// From sin t and cos t.
  template <class T>
  ORVEX_INLINE T operator()(T sinT, T cosT) const {
    return OfDouble(2 * sinT * cosT, 1 - 2 * sinT * sinT);
  }

  double c[kSeriesOrder];
};

/// Turns a direction by a small angle, 0.04 at most.
template <class T>
ORVEX_INLINE SineCosine<T> Turned(T sine, T cosine, T by) {
  const T z = by * by;
  const T sinBy = by * (1 - z * (1.0 / 6 - z * (1.0 / 120 - z * (1.0 / 5040))));
  const T versine = z * (0.5 - z * (1.0 / 24 - z * (1.0 / 720)));  // 1 - cos
  return {sine + (cosine * sinBy - sine * versine), cosine - (sine * sinBy + cosine * versine)};
}

/// Distances from the equator along a meridian, and where they end.
class Meridian {
 public:
  Meridian(double semiMajor, double f)
      : m_a(semiMajor),
        m_e2(EccentricitySquared(f)),
        m_n(ThirdFlattening(f)),
        m_radius(semiMajor * RectifyingRadius(m_n)),
        m_toRectifying(kRectifyingOfGeodetic, m_n),
        m_fromRectifying(kGeodeticOfRectifying, m_n),
        m_quarter(IsFat() ? semiMajor * FatArc(m_e2, kHalfPi) : m_radius * kHalfPi) {}

  /// Of a whole quadrant.
  double Quarter() const { return m_quarter; }

  template <class T>
  ORVEX_INLINE T Length(T phi, T sinPhi, T cosPhi) const {
    if (IsFat()) return EachOf(phi, [this](double each) { return m_a * FatArc(m_e2, each); });
    return m_radius * (phi + m_toRectifying(sinPhi, cosPhi));
  }
  double Length(double phi) const {
    const auto [sine, cosine] = SinCos(phi);
    return Length(phi, sine, cosine);
  }

  /// For lengths up to a quadrant; others become latitudes beyond the poles.
  template <class T>
  ORVEX_INLINE T Latitude(T length) const {
    if (IsFat()) return EachOf(length, [this](double each) { return FatFootpoint(m_e2, each / m_a); });
    const T mu = length / m_radius;
    const auto [sine, cosine] = SinCos(2 * mu);
    return mu + m_fromRectifying.OfDouble(sine, cosine);
  }

 private:
  bool IsFat() const { return m_n > kMostN; }

  /// Mean of the meridian's radii, in semi-major axes.
  static double RectifyingRadius(double n) {
    const double n2 = n * n;
    return (1 + n2 * (1.0 / 4 + n2 * (1.0 / 64 + n2 * (1.0 / 256 + n2 * (25.0 / 16384))))) / (1 + n);
  }

  double m_a, m_e2, m_n, m_radius;
  LatitudeSeries m_toRectifying, m_fromRectifying;
  double m_quarter;
};

/// Latitude of an authalic function q.
class AuthalicLatitude {
 public:
  explicit AuthalicLatitude(double f)
      : m_e2(EccentricitySquared(f)), m_n(ThirdFlattening(f)), m_series(kGeodeticOfAuthalic, m_n) {}

  /// From what q lacks of its value at the north pole, in units of it: 0 to 2.
  template <class T>
  ORVEX_INLINE T LatitudeOfGap(T gap) const {
    const T sine = 1 - gap, cosine = Sqrt(gap * (2 - gap)), xi = kHalfPi - 2 * Asin(Sqrt(gap / 2));
    if (m_n > kMostN) {
      const double e2 = m_e2;
      return EachOf(sine, [e2](double each) { return FatAuthalicLatitude(e2, each); });
    }
    return xi + m_series(sine, cosine);
  }

 private:
  double m_e2, m_n;
  LatitudeSeries m_series;
};

}  // namespace orvex::detail::ORVEX_LEVEL
