// PrjLambert - Lambert Conformal Conic with two standard parallels, sphere and ellipsoid.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987): sphere 14-1 to 14-4, 15-1 to 15-3, inverse
// 14-9 to 14-11, 15-5; ellipsoid 14-15, 15-7 to 15-10, inverse 7-9, 15-11. The ellipsoid's inverse is only as good as
// its stopping rule: up to 7.6 m, see docs/accuracy.md.
#include "math/Iteration.h"
#include "math/MeridianArc.h"
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjLambert", 219, 221};
constexpr Site kInverseSite{"PrjLambert", 520, 522};
constexpr int kZeroConeLine = 564;
constexpr double kLatitudeTolerance = 1.1920928955078125e-06;  // radians

/// t of 15-9, and its two dead ends.
double ConformalT(double phi, double e) {
  const double s = e * std::sin(phi);
  return std::tan(kQuarterPi - phi / 2) / std::pow((1 - s) / (1 + s), e / 2);
}

/// ln(t2/t1)'s spherical part with its sign: ln tan(45 + phi2/2) - ln tan(45 + phi1/2), exact for parallels close
/// together.
double IsometricDifference(double phi1, double phi2) {
  return 2 * std::atanh(std::sin((phi2 - phi1) / 2) / std::cos((phi2 + phi1) / 2));
}

/// ln cos phi1 - ln cos phi2, exact for parallels close together.
double LogCosineDifference(double phi1, double phi2) {
  return std::log1p(2 * std::sin((phi1 + phi2) / 2) * std::sin((phi2 - phi1) / 2) / std::cos(phi2));
}

/// Whether a standard parallel is a pole. The two differences above have no value there; plain logarithms do.
bool AnyIsPole(double phi1, double phi2) {
  constexpr double kPoleCosine = 1e-15;
  return std::fabs(std::cos(phi1)) < kPoleCosine || std::fabs(std::cos(phi2)) < kPoleCosine;
}

/// The cosine, to the last bit at the poles too: there the 32-bit runtime's falls short by 3e-5 of it, and the
/// logarithms of such cosines carry that into the cone.
double ParallelCosine(double phi) {
  constexpr double kCosineOfHalfPi = 6.123233995736766e-17;  // kHalfPi is that much less than a right angle
  return std::fabs(phi) == kHalfPi ? kCosineOfHalfPi : std::cos(phi);
}

/// What the cone is on the record alone. A cone that cannot be used refuses every point, here `usable` false.
struct Cone {
  double e = 0, n = 0, aF = 0, rho0 = 0, lon0 = 0;
  bool usable = false;
  bool zero = false;  // sphere: no cone constant; its inverse asserts, its forward refuses
};

Cone PrepareSphere(const PROJDATA& work) {
  const double lat1 = work.Lat1, lat2 = work.Lat2;
  Cone c;
  c.lon0 = work.Lon0;
  const double T1 = std::tan(kQuarterPi + lat1 / 2);
  if (T1 == 0) return c;
  const bool pole = AnyIsPole(lat1, lat2);
  const double L = pole ? std::log(std::tan(kQuarterPi + lat2 / 2) / T1) : IsometricDifference(lat1, lat2);
  if (L == 0) return c;  // one standard parallel: there is no tangent cone here
  c.n = (pole ? std::log(ParallelCosine(lat1) / ParallelCosine(lat2)) : LogCosineDifference(lat1, lat2)) / L;  // 15-3
  c.zero = c.n == 0;
  if (c.zero) return c;
  const double F = std::pow(T1, c.n) * ParallelCosine(lat1) / c.n;  // 15-2
  const double P0 = std::pow(std::tan(kQuarterPi + work.Lat0 / 2), c.n);
  if (P0 == 0) return c;
  c.aF = work.MajorRadius * F;
  c.rho0 = c.aF / P0;  // 15-1a
  c.usable = true;
  return c;
}

/// Radius of the parallel with the given t; the far pole of a southern cone lies at the apex.
double Radius(const Cone& c, double t) {
  return t == 0 && c.n < 0 ? 0 : c.aF * std::pow(t, c.n);
}

/// `needOrigin`: the inverse also refuses cones whose origin has no radius of curvature or whose F vanishes.
Cone PrepareEllipsoid(const PROJDATA& work, bool needOrigin) {
  const double lat0 = work.Lat0, lat1 = work.Lat1, lat2 = work.Lat2;
  const double e2 = EccentricitySquared(work.Flattening);
  Cone c;
  c.e = std::sqrt(e2);
  c.lon0 = work.Lon0;
  const double sin0 = std::sin(lat0), sin1 = std::sin(lat1), sin2 = std::sin(lat2);
  if (1 + c.e * sin0 == 0 || 1 + c.e * sin1 == 0 || 1 + c.e * sin2 == 0) return c;
  const double w1 = 1 - e2 * sin1 * sin1, w2 = 1 - e2 * sin2 * sin2;
  if (w1 <= 0 || w2 <= 0 || (needOrigin && 1 - e2 * sin0 * sin0 <= 0)) return c;
  const double t0 = ConformalT(lat0, c.e), t1 = ConformalT(lat1, c.e);
  const double m1 = ParallelCosine(lat1) / std::sqrt(w1);  // 14-15
  // ln t1 - ln t2 and ln m1 - ln m2, written so that nothing cancels between parallels half a degree apart.
  const bool pole = AnyIsPole(lat1, lat2);
  const double D =
      pole ? std::log(t1) - std::log(ConformalT(lat2, c.e))
           : IsometricDifference(lat1, lat2) - c.e * std::atanh(c.e * (sin2 - sin1) / (1 - e2 * sin1 * sin2));
  if (D == 0) return c;  // one standard parallel: there is no tangent cone here
  const double lnM =
      pole ? std::log(m1) - std::log(ParallelCosine(lat2) / std::sqrt(w2))
           : LogCosineDifference(lat1, lat2) - std::log1p(e2 * std::sin(lat2 - lat1) * std::sin(lat2 + lat1) / w2) / 2;
  c.n = lnM / D;  // 15-8
  if (t1 == 0 && c.n < 0) return c;
  const double P1 = std::pow(t1, c.n);
  if (P1 == 0) return c;
  const double F = m1 / (c.n * P1);  // 15-10
  if (needOrigin && F == 0) return c;
  c.aF = work.MajorRadius * F;
  c.rho0 = Radius(c, t0);  // 15-7a
  c.usable = true;
  return c;
}

/// Polar to rectangular, 14-1 and 14-2. The longitude difference is not wrapped.
void FromPolar(const Cone& c, double rho, double lon, PROJPOINT& p) {
  const double theta = c.n * (lon - c.lon0);  // 14-4
  p = {rho * std::sin(theta), c.rho0 - rho * std::cos(theta)};
}

/// Rectangular to polar, 14-10 and 14-11; a southern cone opens the other way.
void ToPolar(const Cone& c, const PROJPOINT& p, double& rho, double& theta) {
  const double dy = c.rho0 - p.y;
  const double sign = c.n < 0 ? -1 : 1;
  theta = std::atan2(sign * p.x, sign * dy);
  rho = sign * std::sqrt(p.x * p.x + dy * dy);
}

Plot ForwardSphere(const Cone& c, PROJPOINT& p) {
  if (!c.usable) return Plot::Unplottable;
  const double P = std::pow(std::tan(kQuarterPi + p.y / 2), c.n);
  if (P == 0) return Plot::Unplottable;
  FromPolar(c, c.aF / P, p.x, p);  // 15-1
  return Plot::Ok;
}

Plot ForwardEllipsoid(const Cone& c, PROJPOINT& p) {
  const double s = c.e * std::sin(p.y);
  if (!c.usable || 1 + s == 0 || 1 - s * s <= 0) return Plot::Unplottable;
  const double t = std::tan(kQuarterPi - p.y / 2) / std::pow((1 - s) / (1 + s), c.e / 2);  // 15-9
  FromPolar(c, Radius(c, t), p.x, p);                                                      // 15-7
  return Plot::Ok;
}

Plot InverseSphere(const Cone& c, PROJPOINT& p) {
  if (c.zero) Assert("PrjLambert", kZeroConeLine);  // on purpose: the forward only refuses the points
  if (!c.usable) return Plot::Unplottable;
  double rho = 0, theta = 0;
  ToPolar(c, p, rho, theta);
  if (rho == 0) return Plot::Unplottable;
  p = {theta / c.n + c.lon0, 2 * std::atan(std::pow(c.aF / rho, 1 / c.n)) - kHalfPi};  // 14-9, 15-5
  return Plot::Ok;
}

Plot InverseEllipsoid(const Cone& c, PROJPOINT& p) {
  if (!c.usable) return Plot::Unplottable;
  double rho = 0, theta = 0;
  ToPolar(c, p, rho, theta);
  if (rho == 0) return Plot::Unplottable;
  const double t = std::pow(rho / c.aF, 1 / c.n);  // 15-11
  double phi = 0;
  if (!PreviousConformalEstimate(t, c.e, p.y, kLatitudeTolerance, phi)) return Plot::Unplottable;
  p = {theta / c.n + c.lon0, phi};
  return Plot::Ok;
}

}  // namespace

bool PrjLambert::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  if (work->Flattening == 0) {
    return ConvertEach<ForwardSphere>(*work, pts, nPts, PrepareSphere(*work));
  }
  return ConvertEach<ForwardEllipsoid>(*work, pts, nPts, PrepareEllipsoid(*work, false));
}

bool PrjLambert::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  if (work->Flattening == 0) {
    return ConvertEach<InverseSphere>(*work, pts, nPts, PrepareSphere(*work));
  }
  return ConvertEach<InverseEllipsoid>(*work, pts, nPts, PrepareEllipsoid(*work, true));
}

}  // namespace orvex::detail
