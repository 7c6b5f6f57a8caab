// TransverseMercator - closed forms on the sphere, series to the sixth power of the longitude difference on the
// ellipsoid. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987): sphere 8-1, 8-3, 8-6, 8-7;
// ellipsoid 3-21, 4-20, 8-9, 8-10, 8-12 to 8-15; inverse 7-19, 3-24, 3-26, 8-17 to 8-25.
#pragma once

#include <algorithm>
#include <cmath>

#include "math/Angles.h"
#include "math/MeridianArc.h"

namespace orvex::detail {

/// Which of two sets of refusals applies. They differ on purpose.
enum class TMGuards { General, Utm };

/// Angles in radians, lengths in the unit of the semi-major axis. The operations convert (x, y) in place and answer
/// whether the point can be plotted; x and y are undefined when it cannot.
template <TMGuards kGuards>
class TransverseMercator {
 public:
  TransverseMercator(double a, double f, double k0, double lat0, double lon0)
      : m_a(a), m_k0(k0), m_lat0(lat0), m_lon0(lon0), m_e2(EccentricitySquared(f)), m_arc(a, m_e2), m_footpoint(m_e2) {
    m_ep2 = m_e2 / (1 - m_e2);
    m_M0 = m_arc(lat0);
  }

  bool ForwardSphere(double& x, double& y) const {
    const double dLon = x - m_lon0, phi = y;
    const double B = std::sin(dLon) * std::cos(phi);  // 8-5
    if (B == 1) return false;
    double t = 0;
    if (std::fabs(phi) == kHalfPi || std::fabs(dLon) == kHalfPi) {
      t = phi >= 0 ? kHalfPi : -kHalfPi;
    } else {
      const double cosDLon = std::cos(dLon);
      if (cosDLon == 0) return false;
      t = std::atan(std::tan(phi) / cosDLon);  // one argument on purpose: beyond a quarter turn the northing folds back
    }
    x = 0.5 * m_a * m_k0 * std::log((1 + B) / (1 - B));  // 8-1
    y = m_a * m_k0 * (t - m_lat0);                       // 8-3
    return true;
  }

  bool ForwardEllipsoid(double& x, double& y) const {
    const double phi = y, sinPhi = std::sin(phi), cosPhi = std::cos(phi);
    const double M = m_arc.Length(phi, sinPhi, cosPhi);
    if (std::fabs(phi) == kHalfPi) {
      x = 0;
      y = (M - m_M0) * m_k0;
      return true;
    }
    const double w = 1 - m_e2 * sinPhi * sinPhi;
    if (kGuards == TMGuards::Utm && w < 0) return false;
    const double N = m_a / std::sqrt(w);  // 4-20
    const double tanPhi = sinPhi / cosPhi;
    const double T = tanPhi * tanPhi;          // 8-13
    const double C = m_ep2 * cosPhi * cosPhi;  // 8-14
    const double A = (x - m_lon0) * cosPhi;    // 8-15
    const double A2 = A * A;
    x = m_k0 * N * A * (1 + A2 * ((1 - T + C) / 6 + A2 * (5 - 18 * T + T * T + 72 * C - 58 * m_ep2) / 120));  // 8-9
    y = m_k0 * (M - m_M0 +
                N * tanPhi * A2 *
                    (0.5 + A2 * ((5 - T + 9 * C + 4 * C * C) / 24 +
                                 A2 * (61 - 58 * T + T * T + 600 * C - 330 * m_ep2) / 720)));  // 8-10
    return true;
  }

  bool InverseSphere(double& x, double& y) const {
    if (m_a * m_k0 == 0) return false;
    const double D = y / (m_a * m_k0) + m_lat0;  // 8-8
    const double xs = x / (m_a * m_k0);
    const double cosD = std::cos(D);
    if (cosD == 0) return false;
    y = ClampedAsin(std::sin(D) / std::cosh(xs));  // 8-6
    x = m_lon0 + std::atan(std::sinh(xs) / cosD);  // 8-7, one argument: within a quarter turn of the meridian
    return true;
  }

  bool InverseEllipsoid(double& x, double& y) const {
    if (kGuards == TMGuards::General && m_k0 == 0) return false;
    const double phi1 = m_footpoint(m_arc.Mu(m_M0 + y / m_k0));  // 8-20, 7-19, 3-26
    const double sinPhi = std::sin(phi1), cosPhi = std::cos(phi1), tanPhi = sinPhi / cosPhi;
    const double C = m_ep2 * cosPhi * cosPhi, T = tanPhi * tanPhi;  // 8-21, 8-22
    const double w = 1 - m_e2 * sinPhi * sinPhi;
    if (w <= 0) return false;
    const double rootW = std::sqrt(w);
    const double N = m_a / rootW;                     // 8-23
    const double R = m_a * (1 - m_e2) / (w * rootW);  // 8-24
    if (N * m_k0 == 0 || R == 0) return false;
    const double D = x / (N * m_k0), D2 = D * D;  // 8-25
    y = phi1 - N * tanPhi / R * D2 *
                   (0.5 - D2 * ((5 + 3 * T + 10 * C - 4 * C * C - 9 * m_ep2) / 24 -
                                D2 * (61 + 90 * T + 298 * C + 45 * T * T - 252 * m_ep2 - 3 * C * C) / 720));  // 8-17
    x = m_lon0 +
        D * (1 - D2 * ((1 + 2 * T + C) / 6 - D2 * (5 - 2 * C + 28 * T - 3 * C * C + 8 * m_ep2 + 24 * T * T) / 120)) /
            cosPhi;  // 8-18
    return true;
  }

 private:
  double m_a, m_k0, m_lat0, m_lon0, m_e2;
  double m_ep2 = 0, m_M0 = 0;
  MeridianArc m_arc;
  FootpointLatitude m_footpoint;
};

}  // namespace orvex::detail
