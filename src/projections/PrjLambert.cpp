// PrjLambert - Lambert Conformal Conic with two standard parallels, sphere and ellipsoid.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987): sphere 14-1 to 14-4, 15-1 to 15-3, inverse
// 14-9 to 14-11, 15-5; ellipsoid 14-15, 15-7 to 15-10, inverse 7-9, 15-11. The ellipsoid's inverse is only as good as
// its stopping rule: up to 7.6 m, see docs/accuracy.md.
#include "math/Iteration.h"
#include "math/MeridianArc.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjLambert {

namespace {

constexpr Site kForwardSite{"PrjLambert", 219, 221};
constexpr Site kInverseSite{"PrjLambert", 520, 522};
constexpr int kZeroConeLine = 564;
constexpr double kLatitudeTolerance = 1.1920928955078125e-06;  // radians

/// ln(t2/t1)'s spherical part with its sign: ln tan(45 + phi2/2) - ln tan(45 + phi1/2), exact for parallels close
/// together.
double IsometricDifference(double phi1, double phi2) {
  return 2 * Atanh(Sin((phi2 - phi1) / 2) / Cos((phi2 + phi1) / 2));
}

/// ln cos phi1 - ln cos phi2, exact for parallels close together.
double LogCosineDifference(double phi1, double phi2) {
  return Log1p(2 * Sin((phi1 + phi2) / 2) * Sin((phi2 - phi1) / 2) / Cos(phi2));
}

/// Whether a standard parallel is a pole. The two differences above have no value there; plain logarithms do.
bool AnyIsPole(double phi1, double phi2) {
  constexpr double kPoleCosine = 1e-15;
  return Abs(Cos(phi1)) < kPoleCosine || Abs(Cos(phi2)) < kPoleCosine;
}

/// What the cone is on the record alone. A cone that cannot be used refuses every point, here `usable` false.
struct Cone {
  explicit Cone(double eccentricity) : factor(eccentricity) {}

  ConformalFactor factor;
  double n = 0, aF = 0, rho0 = 0, lon0 = 0;
  bool usable = false;
  bool zero = false;  // sphere: no cone constant; its inverse asserts, its forward refuses
};

Cone PrepareSphere(const PROJDATA& work) {
  const double lat1 = work.Lat1, lat2 = work.Lat2;
  Cone c(0);
  c.lon0 = work.Lon0;
  const double T1 = Tan(kQuarterPi + lat1 / 2);
  if (T1 == 0) return c;
  const bool pole = AnyIsPole(lat1, lat2);
  const double L = pole ? Log(Tan(kQuarterPi + lat2 / 2) / T1) : IsometricDifference(lat1, lat2);
  if (L == 0) return c;  // one standard parallel: there is no tangent cone here
  c.n = (pole ? Log(Cos(lat1) / Cos(lat2)) : LogCosineDifference(lat1, lat2)) / L;  // 15-3
  c.zero = c.n == 0;
  if (c.zero) return c;
  const double F = Pow(T1, c.n) * Cos(lat1) / c.n;  // 15-2
  const double P0 = Pow(Tan(kQuarterPi + work.Lat0 / 2), c.n);
  if (P0 == 0) return c;
  c.aF = work.MajorRadius * F;
  c.rho0 = c.aF / P0;  // 15-1a
  c.usable = true;
  return c;
}

/// Radius of the parallel with the given t; the far pole of a southern cone lies at the apex.
template <class T>
T Radius(const Cone& c, T t) {
  if (!(c.n < 0)) return c.aF * Pow(t, T(c.n));
  const MaskOf<T> apex = t == T(0);
  return Select(apex, T(0), c.aF * Pow(OneUnless<T>(!apex, t), T(c.n)));
}

/// t of 15-9 from half the colatitude: its sine and cosine give the tangent and the sine of the latitude.
template <class T>
T ConformalT(const Cone& c, T phi) {
  const auto [sine, cosine] = SinCos(kQuarterPi - phi / 2);
  return sine / cosine / c.factor(1 - 2 * (sine * sine));
}

/// `kNeedOrigin`: the inverse also refuses cones whose origin has no radius of curvature or whose F vanishes.
template <bool kNeedOrigin>
Cone PrepareEllipsoid(const PROJDATA& work) {
  const double lat0 = work.Lat0, lat1 = work.Lat1, lat2 = work.Lat2;
  const double e2 = EccentricitySquared(work.Flattening), e = Sqrt(e2);
  Cone c(e);
  c.lon0 = work.Lon0;
  const double sin0 = Sin(lat0), sin1 = Sin(lat1), sin2 = Sin(lat2);
  if (1 + e * sin0 == 0 || 1 + e * sin1 == 0 || 1 + e * sin2 == 0) return c;
  const double w1 = 1 - e2 * sin1 * sin1, w2 = 1 - e2 * sin2 * sin2;
  if (w1 <= 0 || w2 <= 0 || (kNeedOrigin && 1 - e2 * sin0 * sin0 <= 0)) return c;
  const double t0 = ConformalT(c, lat0), t1 = ConformalT(c, lat1);
  const double m1 = Cos(lat1) / Sqrt(w1);  // 14-15
  // ln t1 - ln t2 and ln m1 - ln m2, written so that nothing cancels between parallels half a degree apart.
  const bool pole = AnyIsPole(lat1, lat2);
  const double D = pole ? Log(t1) - Log(ConformalT(c, lat2))
                        : IsometricDifference(lat1, lat2) - e * Atanh(e * (sin2 - sin1) / (1 - e2 * sin1 * sin2));
  if (D == 0) return c;  // one standard parallel: there is no tangent cone here
  const double lnM = pole ? Log(m1) - Log(Cos(lat2) / Sqrt(w2))
                          : LogCosineDifference(lat1, lat2) - Log1p(e2 * Sin(lat2 - lat1) * Sin(lat2 + lat1) / w2) / 2;
  c.n = lnM / D;  // 15-8
  if (t1 == 0 && c.n < 0) return c;
  const double P1 = Pow(t1, c.n);
  if (P1 == 0) return c;
  const double F = m1 / (c.n * P1);  // 15-10
  if (kNeedOrigin && F == 0) return c;
  c.aF = work.MajorRadius * F;
  c.rho0 = Radius(c, t0);  // 15-7a
  c.usable = true;
  return c;
}

/// Polar to rectangular, 14-1 and 14-2. The longitude difference is not wrapped.
template <class T>
void FromPolar(const Cone& c, T rho, T lon, Point<T>& p) {
  const auto [sine, cosine] = SinCos(c.n * (lon - c.lon0));  // 14-4
  p = {rho * sine, c.rho0 - rho * cosine};
}

template <class T>
struct Polar {
  T rho, theta;
};

/// Rectangular to polar, 14-10 and 14-11; a southern cone opens the other way.
template <class T>
Polar<T> ToPolar(const Cone& c, const Point<T>& p) {
  const T dy = c.rho0 - p.y;
  const double sign = c.n < 0 ? -1 : 1;
  return {sign * Sqrt(p.x * p.x + dy * dy), Atan2(sign * p.x, sign * dy)};
}

template <class T>
Plot<T> ForwardSphere(const Cone& c, Point<T>& p) {
  if (!c.usable) return Unplottable<T>();
  const T tangent = Tan(kQuarterPi + p.y / 2);
  const MaskOf<T> apex = c.n < 0 ? tangent == T(0) : No<T>();  // of a southern cone: the power is infinite there
  const T P = Pow(OneUnless<T>(!apex, tangent), T(c.n));
  const MaskOf<T> plottable = P != T(0);
  FromPolar(c, Select(apex, T(0), c.aF / OneUnless<T>(plottable, P)), p.x, p);  // 15-1
  return plottable;
}

template <class T>
Plot<T> ForwardEllipsoid(const Cone& c, Point<T>& p) {
  if (!c.usable) return Unplottable<T>();
  const T s = c.factor.Eccentricity() * Sin(p.y);
  FromPolar(c, Radius(c, ConformalT(c, p.y)), p.x, p);  // 15-9, 15-7
  return (1 + s != T(0)) & !(1 - s * s <= T(0));
}

template <class T>
Plot<T> InverseSphere(const Cone& c, Point<T>& p) {
  if (c.zero) return Impossible<T>(kZeroConeLine);  // on purpose: the forward only refuses the points
  if (!c.usable) return Unplottable<T>();
  const auto [rho, theta] = ToPolar(c, p);
  const MaskOf<T> plottable = rho != T(0);
  const T t = Pow(Select(plottable, c.aF / OneUnless<T>(plottable, rho), T(1)), T(1 / c.n));
  p = {theta / c.n + c.lon0, 2 * Atan(t) - kHalfPi};  // 14-9, 15-5
  return plottable;
}

template <class T>
Plot<T> InverseEllipsoid(const Cone& c, Point<T>& p) {
  if (!c.usable) return Unplottable<T>();
  const auto [rho, theta] = ToPolar(c, p);
  const MaskOf<T> plottable = rho != T(0);
  const T t = Pow(Select(plottable, rho / c.aF, T(1)), T(1 / c.n));  // 15-11
  T phi;
  const MaskOf<T> settled = PreviousConformalEstimate(t, c.factor, p.y, kLatitudeTolerance, phi);
  p = {theta / c.n + c.lon0, phi};
  return plottable & settled;
}

// ---- exactly, sphere and ellipsoid ----
//
// Counted from the first standard parallel instead of the apex, so that flat cones, whose apex lies far away, keep
// their digits: rho = rho1 exp(-n (psi - psi1)), 15-7 by isometric latitudes psi.

struct ExactCone {
  EccentricTerm eccentric;
  double a, n, psi1, rho1;
  double shift;  // rho of the origin less rho1
  bool usable;

  explicit ExactCone(const PROJDATA& work)
      : eccentric(Sqrt(EccentricitySquared(work.Flattening))), a(work.MajorRadius), n(0), psi1(0), rho1(0), shift(0) {
    const double lat0 = work.Lat0, lat1 = work.Lat1, lat2 = work.Lat2;
    usable = IsLatitude(lat0) && Abs(lat1) < kHalfPi && Abs(lat2) < kHalfPi;
    if (!usable) return;
    const Cone cone = work.Flattening == 0 ? PrepareSphere(work) : PrepareEllipsoid<false>(work);
    n = cone.n;
    const auto [sine, cosine] = SinCos(lat1);
    psi1 = IsometricLatitude(lat1, eccentric);
    rho1 = a * cosine / Sqrt(1 - Square(eccentric.e * sine)) / n;
    const bool originIsPole = Abs(lat0) == kHalfPi;
    usable = n != 0 && IsFinite(rho1) && !(originIsPole && lat0 * n < 0);
    if (!usable) return;
    shift = originIsPole ? -rho1 : -Drop(n * (IsometricLatitude(lat0, eccentric) - psi1));
  }

  /// rho1 less rho, from u = n (psi - psi1).
  template <class T>
  ORVEX_INLINE T Drop(T u) const {
    return 2 * rho1 * Sinh(u / 2) * Exp(-u / 2);
  }
};

template <class T>
Plot<T> ForwardExact(const ExactCone& c, ExactPoint<T>& p) {
  constexpr double kApex = 700;  // u beyond which rho is nothing
  const MaskOf<T> pole = Abs(p.y) >= T(kHalfPi);
  const auto [sinPhi, cosPhi] = SinCosOfLatitude(p);
  const T psi = IsometricLatitude(sinPhi, OneUnless<T>(!pole, cosPhi), c.eccentric);
  const T u = Select(pole, T(kApex), Clamp(c.n * (psi - c.psi1), -kApex, kApex));
  const auto [sine, cosine] = SinCos(c.n * p.x / 2);
  const T rho = c.rho1 * Exp(-u), far = p.y * c.n;
  p.x = rho * (2 * sine * cosine);
  p.y = c.shift + (c.Drop(u) + rho * (2 * sine * sine));
  return !(pole & (far < T(0)));
}

template <class T>
Plot<T> InverseExact(const ExactCone& c, Point<T>& p) {
  const double sign = c.n < 0 ? -1 : 1;
  const T y = p.y - c.shift, below = c.rho1 - y;
  const T rho = sign * Sqrt(p.x * p.x + below * below), ratio = rho / c.rho1;
  const MaskOf<T> near = ratio > T(0.5), apex = ratio == T(0);
  const T change = (p.x * p.x + y * (y - 2 * c.rho1)) / (rho + c.rho1) / c.rho1;  // ratio - 1
  const T logarithm = Select(near, Log1p(Select(near, change, T(0))), Log(OneUnless<T>(!apex, ratio)));
  const T psi = Select(apex, CopySign(T(1000), T(c.n)), c.psi1 - logarithm / c.n);
  T lat;
  MaskOf<T> plottable = LatitudeFromIsometric(psi, c.eccentric, lat);
  const T theta = Atan2(sign * p.x, sign * below), perRadian = rho * c.n / c.a;
  p = {AlongParallel(theta / c.n * perRadian, perRadian, plottable), lat};
  return plottable & (sign * RadToDeg(lat) > T(-90));  // the pole away from the apex has no place
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite,
                          [c = Remembered<ExactCone>(call)](auto& p) { return ForwardExact(c, p); });
  }
  if (call.work->Flattening == 0) {
    return ForwardEach(call, kForwardSite,
                       [c = Remembered<PrepareSphere>(call)](auto& p) { return ForwardSphere(c, p); });
  }
  return ForwardEach(call, kForwardSite,
                     [c = Remembered<PrepareEllipsoid<false>>(call)](auto& p) { return ForwardEllipsoid(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite,
                          [c = Remembered<ExactCone>(call)](auto& p) { return InverseExact(c, p); });
  }
  if (call.work->Flattening == 0) {
    return InverseEach(call, kInverseSite,
                       [c = Remembered<PrepareSphere>(call)](auto& p) { return InverseSphere(c, p); });
  }
  return InverseEach(call, kInverseSite,
                     [c = Remembered<PrepareEllipsoid<true>>(call)](auto& p) { return InverseEllipsoid(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return ExactCone(work).usable;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjLambert
