// PrjAlbers - Albers Equal Area Conic on two standard parallels.
// Sphere (flattening exactly 0) and ellipsoid. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987).
//   Sphere 14-1 to 14-6, inverse 14-8 to 14-11; ellipsoid 3-12, 14-12 to 14-15, inverse 14-19, 3-16, 14-9 to 14-11.
// The logarithm of 3-12 and 3-16 is written as an inverse hyperbolic tangent, which keeps its digits for a small e.
// Fixed on purpose: the ellipsoid inverse stops by PreviousEstimate; the inverse refuses a whole line through the apex.
#include "math/Iteration.h"
#include "math/MeridianArc.h"
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr const char* kSource = "PrjAlbers";
constexpr Site kForwardSite{kSource, 219, 221};
constexpr Site kInverseSite{kSource, 442, 444};
// Lines that report a cone constant of zero (standard parallels symmetric about the equator).
constexpr int kForwardSphereLine = 250, kForwardEllipsoidLine = 380;
constexpr int kInverseSphereLine = 476, kInverseEllipsoidLine = 628;

constexpr double kTolerance = 1.1920928955078125e-06;  // radians: 7.6 m on the ground

/// What the record alone allows; told to the host at the first live point.
enum class Cone { Usable, Refused, Zero };

struct Constants {
  double a, lon0, e, e2;
  double n, C, rho0;
  Cone cone;
};

/// Radius of the parallel with a given q, 14-12 (14-3 with q = 2 sin phi).
double Radius(const Constants& c, double q) {
  return c.a * std::sqrt(c.C - c.n * q) / c.n;
}

/// Completes the constants once n is known.
void FinishCone(Constants& c, double m1Squared, double q1, double q0) {
  if (c.n == 0) {
    c.cone = Cone::Zero;
    return;
  }
  c.C = m1Squared + c.n * q1;  // 14-13, 14-5
  c.rho0 = Radius(c, q0);
}

Constants PrepareSphere(const PROJDATA& work) {
  Constants c{work.MajorRadius, work.Lon0, 0, 0, 0, 0, 0, Cone::Usable};
  const double sin1 = std::sin(work.Lat1);
  c.n = (sin1 + std::sin(work.Lat2)) / 2;  // 14-6
  FinishCone(c, Square(std::cos(work.Lat1)), 2 * sin1, 2 * std::sin(work.Lat0));
  return c;
}

double W(const Constants& c, double sinPhi) {
  return 1 - c.e2 * sinPhi * sinPhi;
}

/// Whether q can be formed at a latitude.
bool HasQ(const Constants& c, double sinPhi) {
  return 1 + c.e * sinPhi != 0 && W(c, sinPhi) != 0;
}

double Q(const Constants& c, double sinPhi) {
  return (1 - c.e2) * (sinPhi / W(c, sinPhi) + std::atanh(c.e * sinPhi) / c.e);  // 3-12
}

/// Cone constant, 14-14 with sin phi2 - sin phi1 divided out, so that close parallels keep their digits.
double ConeConstant(const Constants& c, double sin1, double sin2) {
  const double product = c.e2 * sin1 * sin2, u = c.e * (sin2 - sin1);
  return (sin1 + sin2) / (1 + product + W(c, sin1) * W(c, sin2) * std::atanh(u / (1 - product)) / u);
}

/// Cone constant for a parallel counted on over a pole, 14-14 and 3-12 as printed: two such parallels may be one, or
/// symmetric about the equator (180 and 0, 270 and 90), and the rounding of these settles whether they make a cone.
/// False when both have the same q.
bool PrintedConeConstant(const Constants& c, const PROJDATA& work, double& n) {
  const auto q = [&c](double sinPhi) {
    return (1 - c.e2) * (sinPhi / W(c, sinPhi) - 1 / (2 * c.e) * std::log((1 - c.e * sinPhi) / (1 + c.e * sinPhi)));
  };
  const auto m = [&c](double phi) { return std::cos(phi) / std::sqrt(W(c, std::sin(phi))); };
  const double q1 = q(std::sin(work.Lat1)), q2 = q(std::sin(work.Lat2));
  if (q1 - q2 == 0) return false;
  n = (Square(m(work.Lat1)) - Square(m(work.Lat2))) / (q2 - q1);
  return true;
}

Constants PrepareEllipsoid(const PROJDATA& work) {
  const double e2 = EccentricitySquared(work.Flattening);
  Constants c{work.MajorRadius, work.Lon0, std::sqrt(e2), e2, 0, 0, 0, Cone::Refused};
  const double sin0 = std::sin(work.Lat0), sin1 = std::sin(work.Lat1), sin2 = std::sin(work.Lat2);
  if (!HasQ(c, sin0) || !HasQ(c, sin1) || !HasQ(c, sin2)) return c;
  const double q1 = Q(c, sin1);
  if (std::fabs(work.Lat1) <= kHalfPi && std::fabs(work.Lat2) <= kHalfPi) {
    if (q1 - Q(c, sin2) == 0) return c;
    c.n = ConeConstant(c, sin1, sin2);
  } else if (!PrintedConeConstant(c, work, c.n)) {
    return c;
  }
  c.cone = Cone::Usable;
  FinishCone(c, Square(std::cos(work.Lat1)) / W(c, sin1), q1, Q(c, sin0));  // m by 14-15
  return c;
}

void Place(const Constants& c, double q, PROJPOINT& p) {
  const double rho = Radius(c, q), theta = c.n * (p.x - c.lon0);  // 14-4
  p = {rho * std::sin(theta), c.rho0 - rho * std::cos(theta)};    // 14-1, 14-2
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  if (c.cone == Cone::Zero) Assert(kSource, kForwardSphereLine);
  Place(c, 2 * std::sin(p.y), p);
  return Plot::Ok;
}

Plot ForwardEllipsoid(const Constants& c, PROJPOINT& p) {
  const double sinPhi = std::sin(p.y);
  if (!HasQ(c, sinPhi) || c.cone == Cone::Refused) return Plot::Unplottable;
  if (c.cone == Cone::Zero) Assert(kSource, kForwardEllipsoidLine);
  Place(c, Q(c, sinPhi), p);
  return Plot::Ok;
}

/// Longitude and q of a place on the map; false on the line through the apex that runs along x, also where x is not 0.
bool Locate(const Constants& c, const PROJPOINT& p, double& lon, double& q) {
  const double sign = c.n > 0 ? 1 : -1;
  const double x = sign * p.x, d = sign * (c.rho0 - p.y);
  if (d == 0) return false;
  lon = std::atan2(x, d) / c.n + c.lon0;                  // 14-11, 14-9
  q = (c.C - (x * x + d * d) * Square(c.n / c.a)) / c.n;  // 14-10, 14-19
  return true;
}

Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  if (c.cone == Cone::Zero) Assert(kSource, kInverseSphereLine);
  double lon = 0, q = 0;
  if (!Locate(c, p, lon, q)) return Plot::Unplottable;
  p = {lon, ClampedAsin(q / 2)};  // 14-8
  return Plot::Ok;
}

Plot InverseEllipsoid(const Constants& c, PROJPOINT& p) {
  if (c.cone == Cone::Refused) return Plot::Unplottable;
  if (c.cone == Cone::Zero) Assert(kSource, kInverseEllipsoidLine);
  double lon = 0, q = 0;
  if (!Locate(c, p, lon, q)) return Plot::Unplottable;
  if (!(std::fabs(q) <= 2)) return Plot::Unplottable;  // no first estimate, so no convergence
  const auto step = [&c, qSphere = q / (1 - c.e2)](double phi, double& next) {
    const double sinPhi = std::sin(phi), twoCosPhi = 2 * std::cos(phi), w = W(c, sinPhi);
    if (twoCosPhi == 0 || !HasQ(c, sinPhi)) return false;
    next = phi + w * w / twoCosPhi * (qSphere - sinPhi / w - std::atanh(c.e * sinPhi) / c.e);  // 3-16
    return true;
  };
  double lat = 0;
  if (!PreviousEstimate(std::asin(q / 2), p.y, kTolerance, step, lat)) return Plot::Unplottable;
  p = {lon, lat};
  return Plot::Ok;
}

}  // namespace

bool PrjAlbers::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  if (work->Flattening == 0) {
    return ConvertEach<ForwardSphere>(*work, pts, nPts, PrepareSphere(*work));
  }
  return ConvertEach<ForwardEllipsoid>(*work, pts, nPts, PrepareEllipsoid(*work));
}

bool PrjAlbers::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  if (work->Flattening == 0) {
    return ConvertEach<InverseSphere>(*work, pts, nPts, PrepareSphere(*work));
  }
  return ConvertEach<InverseEllipsoid>(*work, pts, nPts, PrepareEllipsoid(*work));
}

}  // namespace orvex::detail
