// TransverseMercator - closed forms on the sphere, series to the sixth power of the longitude difference on the
// ellipsoid. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987): sphere 8-1, 8-3, 8-6, 8-7;
// ellipsoid 3-21, 4-20, 8-9, 8-10, 8-12 to 8-15; inverse 7-19, 3-24, 3-26, 8-17 to 8-25.
#pragma once

#include "math/MeridianArc.h"
#include "projections/Module.h"

namespace orvex::detail::ORVEX_LEVEL {

/// Which of two sets of refusals applies. They differ on purpose.
enum class TMGuards { General, Utm };

/// Angles in radians, lengths in the unit of the semi-major axis.
template <TMGuards kGuards>
class TransverseMercator {
 public:
  explicit TransverseMercator(const PROJDATA& work)
      : m_a(work.MajorRadius),
        m_k0(work.K0),
        m_lat0(work.Lat0),
        m_lon0(work.Lon0),
        m_e2(EccentricitySquared(work.Flattening)),
        m_ep2(m_e2 / (1 - m_e2)),
        m_arc(m_a, m_e2),
        m_footpoint(m_arc, m_e2),
        m_M0(m_arc(m_lat0)) {}

  template <class T>
  ORVEX_INLINE Plot<T> ForwardSphere(Point<T>& p) const {
    const T dLon = p.x - m_lon0, phi = p.y;
    const auto [sinPhi, cosPhi] = SinCos(phi);
    const auto [sinDLon, cosDLon] = SinCos(dLon);
    const T B = sinDLon * cosPhi;  // 8-5
    const MaskOf<T> quarter = (Abs(phi) == T(kHalfPi)) | (Abs(dLon) == T(kHalfPi));
    const MaskOf<T> plottable = (B != T(1)) & (quarter | (cosDLon != T(0)));
    // One argument on purpose: beyond a quarter turn the northing folds back.
    const T adjacent = cosPhi * cosDLon;
    const T arctangent = Atan2(Select(adjacent < T(0), -sinPhi, sinPhi), Abs(adjacent));
    const T t = Select(quarter, Select(phi >= T(0), T(kHalfPi), T(-kHalfPi)), arctangent);
    p.x = 0.5 * m_a * m_k0 * Log((1 + B) / OneUnless<T>(B != T(1), 1 - B));  // 8-1
    p.y = m_a * m_k0 * (t - m_lat0);                                         // 8-3
    return plottable;
  }

  template <class T>
  ORVEX_INLINE Plot<T> ForwardEllipsoid(Point<T>& p) const {
    const T phi = p.y;
    const auto [sinPhi, cosPhi] = SinCos(phi);
    const T M = m_arc.Length(phi, sinPhi, cosPhi);
    const MaskOf<T> pole = Abs(phi) == T(kHalfPi);
    const T w = 1 - m_e2 * (sinPhi * sinPhi);
    const T N = m_a / Sqrt(w);  // 4-20
    const T tanPhi = sinPhi / cosPhi;
    const T t2 = tanPhi * tanPhi;           // 8-13
    const T C = m_ep2 * (cosPhi * cosPhi);  // 8-14
    const T A = (p.x - m_lon0) * cosPhi;    // 8-15
    const T A2 = A * A;
    const T x =
        m_k0 * N * A * (1 + A2 * ((1 - t2 + C) / 6 + A2 * (5 - 18 * t2 + t2 * t2 + 72 * C - 58 * m_ep2) / 120));  // 8-9
    const T y = m_k0 * (M - m_M0 +
                        N * tanPhi * A2 *
                            (0.5 + A2 * ((5 - t2 + 9 * C + 4 * C * C) / 24 +
                                         A2 * (61 - 58 * t2 + t2 * t2 + 600 * C - 330 * m_ep2) / 720)));  // 8-10
    p.x = Select(pole, T(0), x);
    p.y = Select(pole, (M - m_M0) * m_k0, y);
    return kGuards == TMGuards::Utm ? pole | !(w < T(0)) : Yes<T>();
  }

  template <class T>
  ORVEX_INLINE Plot<T> InverseSphere(Point<T>& p) const {
    if (m_a * m_k0 == 0) return Unplottable<T>();
    const T D = p.y / (m_a * m_k0) + m_lat0;  // 8-8
    const T xs = p.x / (m_a * m_k0);
    const auto [sinD, cosD] = SinCos(D);
    p.y = ClampedAsin(sinD / Cosh(xs));  // 8-6
    // 8-7, one argument: within a quarter turn of the meridian.
    p.x = m_lon0 + Atan(Sinh(xs) / OneUnless<T>(cosD != T(0), cosD));
    return cosD != T(0);
  }

  template <class T>
  ORVEX_INLINE Plot<T> InverseEllipsoid(Point<T>& p) const {
    if ((kGuards == TMGuards::General && m_k0 == 0) || m_a * m_k0 == 0 || m_a * (1 - m_e2) == 0) {
      return Unplottable<T>();
    }
    const T phi1 = m_footpoint(m_M0 + p.y / m_k0);  // 8-20, 7-19, 3-26
    const auto [sinPhi, cosPhi] = SinCos(phi1);
    const T secPhi = 1 / cosPhi, tanPhi = sinPhi * secPhi;
    const T C = m_ep2 * (cosPhi * cosPhi), t2 = tanPhi * tanPhi;  // 8-21, 8-22
    const T w = 1 - m_e2 * (sinPhi * sinPhi);
    const T D = p.x * Sqrt(w) / (m_a * m_k0), D2 = D * D;  // 8-25 with 8-23
    p.y =
        phi1 - tanPhi * w / (1 - m_e2) * D2 *  // N / R of 8-23 and 8-24 is w / (1 - e2)
                   (0.5 - D2 * ((5 + 3 * t2 + 10 * C - 4 * C * C - 9 * m_ep2) / 24 -
                                D2 * (61 + 90 * t2 + 298 * C + 45 * t2 * t2 - 252 * m_ep2 - 3 * C * C) / 720));  // 8-17
    p.x = m_lon0 + D *
                       (1 - D2 * ((1 + 2 * t2 + C) / 6 -
                                  D2 * (5 - 2 * C + 28 * t2 - 3 * C * C + 8 * m_ep2 + 24 * t2 * t2) / 120)) *
                       secPhi;  // 8-18
    return w > T(0);
  }

 private:
  double m_a, m_k0, m_lat0, m_lon0, m_e2, m_ep2;
  MeridianArc m_arc;
  FootpointLatitude m_footpoint;
  double m_M0;
};

/// Forward of the modules that differ in their guards only.
template <TMGuards kGuards>
inline bool TransverseForward(const Conversion& call, const Site& site) {
  if (!Ready(call, site)) return false;
  const TransverseMercator<kGuards> c(*call.work);
  if (call.work->Flattening == 0) return ForwardEach(call, site, [&c](auto& p) { return c.ForwardSphere(p); });
  return ForwardEach(call, site, [&c](auto& p) { return c.ForwardEllipsoid(p); });
}

template <TMGuards kGuards>
inline bool TransverseInverse(const Conversion& call, const Site& site) {
  if (!Ready(call, site)) return false;
  const TransverseMercator<kGuards> c(*call.work);
  if (call.work->Flattening == 0) return InverseEach(call, site, [&c](auto& p) { return c.InverseSphere(p); });
  return InverseEach(call, site, [&c](auto& p) { return c.InverseEllipsoid(p); });
}

}  // namespace orvex::detail::ORVEX_LEVEL
