// TransverseMercator - closed forms on the sphere, series to the sixth power of the longitude difference on the
// ellipsoid. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987): sphere 8-1, 8-3, 8-6, 8-7;
// ellipsoid 3-21, 4-20, 8-9, 8-10, 8-12 to 8-15; inverse 7-19, 3-24, 3-26, 8-17 to 8-25.
#pragma once

#include "math/AuxiliaryLatitudes.h"
#include "projections/Exactly.h"

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

// ---- exactly, sphere and ellipsoid ----

/// Krueger's series between the map of the conformal sphere and that of the ellipsoid, to the eighth power of the third
/// flattening; the map's definition where they lose their digits, which is far from the meridian.
/// Source: Karney, "Transverse Mercator with an accuracy of a few nanometers", Journal of Geodesy 85 (2011).
class ExactTransverseMercator {
 public:
  explicit ExactTransverseMercator(const PROJDATA& work)
      : m_e2(EccentricitySquared(work.Flattening)),
        m_n(ThirdFlattening(work.Flattening)),
        m_toConformal(kConformalOfGeodetic, m_n),
        m_toGeodetic(kGeodeticOfConformal, m_n),
        m_toEllipsoid(kRectifyingOfConformal, m_n),
        m_toSphere(kConformalOfRectifying, m_n),
        m_scaledAxis(work.MajorRadius * work.K0),
        m_mostLon(MostLongitude(m_e2)) {
    const Meridian meridian(m_scaledAxis, work.Flattening);
    m_radius = meridian.Quarter() / kHalfPi;
    m_M0 = meridian.Length(double(work.Lat0));
    m_xi0 = m_M0 / m_radius;
    // What the series leave out, some 3.4 n^9 cosh 18 eta, stays below 2e-17.
    const double ninth = Square(Square(Square(m_n))) * m_n;
    m_mostEta = ninth == 0 ? kFarthest : Log(1.2e-17 / ninth) / 18;
    m_mostSine = m_n == 0 ? 1 : m_mostEta > 0 ? Sinh(m_mostEta) / Cosh(m_mostEta) : -1;
  }

  /// Longitudes from the meridian that the map covers, radians: all of a sphere; 80 degrees on an ellipsoid, or less on
  /// a fat one, where the map of the equator ends at (1 - e) quarter turns.
  static double MostLongitude(double e2) {
    if (e2 == 0) return kPi;
    const double end = (1 - Sqrt(e2)) * kHalfPi - DegToRad(1.0);
    return end < DegToRad(80.0) ? end : DegToRad(80.0);
  }

  template <class T>
  ORVEX_INLINE Plot<T> Forward(ExactPoint<T>& p) const {
    MaskOf<T> plottable = Abs(p.x) <= T(m_mostLon + kRim);
    const auto [sinPhi, cosPhi] = SinCos(p.y);
    const T toChi = m_n == 0 ? T(0) : m_toConformal(sinPhi, cosPhi);
    const auto [sinChi, cosChi] = m_n == 0 ? SineCosine<T>{sinPhi, cosPhi} : Turned(sinPhi, cosPhi, toChi);
    const auto [sinLon, cosLon] = SinCos(p.x);
    const T sine = cosChi * sinLon, along = cosChi * cosLon;  // sine: hyperbolic tangent of eta'
    const T cosine2 = sinChi * sinChi + along * along;        // 1 - sine^2
    const MaskOf<T> far = plottable & (Abs(sine) > T(m_mostSine));
    const MaskOf<T> near = (cosine2 > T(kAxisEnd)) & !far;
    plottable = plottable & (far | near);
    const T reciprocal = 1 / OneUnless<T>(near, cosine2);
    // xi' by what it adds to chi, which keeps the digits.
    const T versine = Select(cosLon < T(0), 1 - cosLon, sinLon * sinLon / (1 + Abs(cosLon)));
    const T toXi = Atan2(sinChi * cosChi * versine, sinChi * sinChi + cosChi * along);
    const T eta = Asinh(Select(near, sine, T(0)) * Sqrt(reciprocal));
    const Terms<T> terms =
        Series(m_toEllipsoid, 2 * sinChi * along * reciprocal, (along * along - sinChi * sinChi) * reciprocal,
               2 * sine * reciprocal, (1 + sine * sine) * reciprocal);
    const T lat = p.y, lon = p.x;
    p.x = m_radius * (eta + terms.east);
    p.y = m_radius * ((p.y - m_xi0) + (p.latRest + toChi + toXi + terms.north));
    if (Any(far)) DefineForward(far, lat, lon, p);
    return plottable;
  }

  template <class T>
  ORVEX_INLINE Plot<T> Inverse(Point<T>& p) const {
    const T xi = (p.y + m_M0) / m_radius, eta = p.x / m_radius;
    MaskOf<T> plottable = (Abs(xi) <= T((m_n == 0 ? kPi : kHalfPi) + kRim)) & (Abs(eta) < T(kFarthest));
    const MaskOf<T> far = plottable & (Abs(eta) > T(m_mostEta));
    const MaskOf<T> near = plottable & !far;
    const T safe = Select(near, eta, T(0));
    const auto [sinXi, cosXi] = SinCos(Select(plottable, xi, T(0)));
    const T sinhEta = Sinh(safe), coshEta = Sqrt(1 + sinhEta * sinhEta);
    const Terms<T> terms =
        Series(m_toSphere, 2 * sinXi * cosXi, 1 - 2 * sinXi * sinXi, 2 * sinhEta * coshEta, 1 + 2 * sinhEta * sinhEta);
    const auto [sine, turned] = Turned(sinXi, cosXi, terms.north);
    // On an ellipsoid the pole ends the map, by rounding a little before it.
    const T cosine = m_n == 0 ? turned : Select(turned < T(0), T(0), turned);
    const T by = terms.east, z = by * by;
    const T sinhBy = by * (1 + z * (1.0 / 6 + z * (1.0 / 120))),
            coshLess = z * (0.5 + z * (1.0 / 24 + z * (1.0 / 720)));
    const T sinh = sinhEta + (coshEta * sinhBy + sinhEta * coshLess), cosh2 = 1 + sinh * sinh;
    const T level = Sqrt(sinh * sinh + cosine * cosine);
    T lat = Atan2(sine, level);
    if (m_n != 0) lat = lat + m_toGeodetic.OfDouble(2 * sine * level / cosh2, 1 - 2 * sine * sine / cosh2);
    p = {Atan2(sinh, cosine), lat};
    if (Any(far)) DefineInverse(far, xi, eta, p);
    plottable = plottable & ((Abs(p.x) - m_mostLon) * level <= T(kLimitRounding));
    p.x = Clamp(p.x, -m_mostLon, m_mostLon);
    return plottable;
  }

 private:
  static constexpr double kAxisEnd = 1e-30;        // squared distance from the ends of the sphere's axis, by rounding
  static constexpr double kFarthest = 40;          // beyond, the map of the sphere is its axis' end to rounding
  static constexpr double kLimitRounding = 1e-11;  // along the parallel; the longitude limit is no edge of the map

  template <class T>
  struct Terms {
    T north, east;
  };

  /// Sums of c_k sin 2k xi cosh 2k eta and c_k cos 2k xi sinh 2k eta, by Clenshaw's recurrence in complex numbers; 0 on
  /// the sphere.
  template <class T>
  ORVEX_INLINE Terms<T> Series(const LatitudeSeries& series, T sin2Xi, T cos2Xi, T sinh2Eta, T cosh2Eta) const {
    if (m_n == 0) return {T(0), T(0)};
    const T re = 2 * cos2Xi * cosh2Eta, im = -2 * sin2Xi * sinh2Eta;  // 2 cos 2 zeta
    T aboveRe = T(0), aboveIm = T(0), bRe = T(series.c[kSeriesOrder - 1]), bIm = T(0);
    for (int k = kSeriesOrder - 2; k >= 0; --k) {
      const T nextRe = re * bRe - im * bIm - aboveRe + series.c[k], nextIm = re * bIm + im * bRe - aboveIm;
      aboveRe = bRe;
      aboveIm = bIm;
      bRe = nextRe;
      bIm = nextIm;
    }
    const T sineRe = sin2Xi * cosh2Eta, sineIm = cos2Xi * sinh2Eta;
    return {sineRe * bRe - sineIm * bIm, sineRe * bIm + sineIm * bRe};
  }

  /// By the definition, where the series do not do.
  template <class T>
  [[gnu::noinline, gnu::cold]] void DefineForward(MaskOf<T> far, T lat, T lon, ExactPoint<T>& p) const {
    for (int lane = 0; lane < kLaneCount<T>; ++lane) {
      if (!Get(far, lane)) continue;
      const TransversePlace place = TransverseMap(m_e2, {Get(lat, lane), Get(lon, lane)});
      Put(p.x, lane, m_scaledAxis * place.east);
      Put(p.y, lane, m_scaledAxis * place.north - m_M0);
    }
  }
  template <class T>
  [[gnu::noinline, gnu::cold]] void DefineInverse(MaskOf<T> far, T xi, T eta, Point<T>& p) const {
    const double axes = m_radius / m_scaledAxis;
    for (int lane = 0; lane < kLaneCount<T>; ++lane) {
      if (!Get(far, lane)) continue;
      const GeodeticPlace place = TransverseUnmap(m_e2, {Get(xi, lane) * axes, Get(eta, lane) * axes});
      Put(p.x, lane, place.lon);
      Put(p.y, lane, place.lat);
    }
  }

  double m_e2, m_n;
  LatitudeSeries m_toConformal, m_toGeodetic, m_toEllipsoid, m_toSphere;
  double m_scaledAxis, m_mostLon;
  double m_radius;  // of the sphere whose meridians are as long, scaled
  double m_M0, m_xi0, m_mostEta, m_mostSine;
};

/// Whether the map of the ellipsoid covers anything.
inline bool HasExactTransverseForm(const PROJDATA& work) {
  return IsLatitude(work.Lat0) && ExactTransverseMercator::MostLongitude(EccentricitySquared(work.Flattening)) > 0;
}

/// Forward of the modules that differ in their guards only.
template <TMGuards kGuards>
inline bool TransverseForward(const Conversion& call, const Site& site) {
  if (!Ready(call, site)) return false;
  if (call.exact) {
    return ForwardExactly(call, site,
                          [c = Remembered<ExactTransverseMercator>(call)](auto& p) { return c.Forward(p); });
  }
  const auto c = Remembered<TransverseMercator<kGuards>>(call);
  if (call.work->Flattening == 0) return ForwardEach(call, site, [&c](auto& p) { return c.ForwardSphere(p); });
  return ForwardEach(call, site, [&c](auto& p) { return c.ForwardEllipsoid(p); });
}

template <TMGuards kGuards>
inline bool TransverseInverse(const Conversion& call, const Site& site) {
  if (!Ready(call, site)) return false;
  if (call.exact) {
    return InverseExactly(call, site,
                          [c = Remembered<ExactTransverseMercator>(call)](auto& p) { return c.Inverse(p); });
  }
  const auto c = Remembered<TransverseMercator<kGuards>>(call);
  if (call.work->Flattening == 0) return InverseEach(call, site, [&c](auto& p) { return c.InverseSphere(p); });
  return InverseEach(call, site, [&c](auto& p) { return c.InverseEllipsoid(p); });
}

}  // namespace orvex::detail::ORVEX_LEVEL
