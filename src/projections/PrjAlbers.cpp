// PrjAlbers - Albers Equal Area Conic on two standard parallels.
// Sphere (flattening exactly 0) and ellipsoid. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987).
//   Sphere 14-1 to 14-6, inverse 14-8 to 14-11; ellipsoid 3-12, 14-12 to 14-15, inverse 14-19, 3-16, 14-9 to 14-11.
// The logarithm of 3-12 and 3-16 is written as an inverse hyperbolic tangent, which keeps its digits for a small e.
// Fixed on purpose: the ellipsoid inverse stops by PreviousEstimate; the inverse refuses a whole line through the apex.
#include "math/AuxiliaryLatitudes.h"
#include "math/Iteration.h"
#include "math/MeridianArc.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjAlbers {

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
  Constants(const PROJDATA& work, double eccentricity)
      : a(work.MajorRadius), lon0(work.Lon0), eccentric(eccentricity), e2(eccentricity * eccentricity) {}

  double a, lon0;
  EccentricTerm eccentric;
  double e2;
  double n = 0, C = 0, rho0 = 0;
  Cone cone = Cone::Usable;
};

/// Radius of the parallel with a given q, 14-12 (14-3 with q = 2 sin phi).
template <class T>
T Radius(const Constants& c, T q) {
  return c.a * Sqrt(c.C - c.n * q) / c.n;
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
  Constants c(work, 0);
  const double sin1 = Sin(work.Lat1);
  c.n = (sin1 + Sin(work.Lat2)) / 2;  // 14-6
  FinishCone(c, Square(Cos(work.Lat1)), 2 * sin1, 2 * Sin(work.Lat0));
  return c;
}

template <class T>
T W(const Constants& c, T sinPhi) {
  return 1 - c.e2 * (sinPhi * sinPhi);
}

/// Where q can be formed.
template <class T>
MaskOf<T> HasQ(const Constants& c, T sinPhi) {
  return (1 + c.eccentric.e * sinPhi != T(0)) & (W(c, sinPhi) != T(0));
}

/// q / (1 - e2), 3-12.
template <class T>
T RelativeQ(const Constants& c, T sinPhi) {
  return sinPhi / W(c, sinPhi) + c.eccentric.PerSquare(sinPhi);
}

template <class T>
T Q(const Constants& c, T sinPhi) {
  return (1 - c.e2) * RelativeQ(c, sinPhi);
}

/// Cone constant, 14-14 with sin phi2 - sin phi1 divided out, so that close parallels keep their digits.
double ConeConstant(const Constants& c, double sin1, double sin2) {
  const double product = c.e2 * sin1 * sin2, u = c.eccentric.e * (sin2 - sin1);
  return (sin1 + sin2) / (1 + product + W(c, sin1) * W(c, sin2) * Atanh(u / (1 - product)) / u);
}

/// Cone constant for a parallel counted on over a pole, 14-14 and 3-12 as printed: two such parallels may be one, or
/// symmetric about the equator (180 and 0, 270 and 90), and the rounding of these settles whether they make a cone.
/// False when both have the same q.
bool PrintedConeConstant(const Constants& c, const PROJDATA& work, double& n) {
  const double e = c.eccentric.e;
  const auto q = [&](double sinPhi) {
    return (1 - c.e2) * (sinPhi / W(c, sinPhi) - 1 / (2 * e) * Log((1 - e * sinPhi) / (1 + e * sinPhi)));
  };
  const auto m = [&](double phi) { return Cos(phi) / Sqrt(W(c, Sin(phi))); };
  const double q1 = q(Sin(work.Lat1)), q2 = q(Sin(work.Lat2));
  if (q1 - q2 == 0) return false;
  n = (Square(m(work.Lat1)) - Square(m(work.Lat2))) / (q2 - q1);
  return true;
}

Constants PrepareEllipsoid(const PROJDATA& work) {
  Constants c(work, Sqrt(EccentricitySquared(work.Flattening)));
  c.cone = Cone::Refused;
  const double sin0 = Sin(work.Lat0), sin1 = Sin(work.Lat1), sin2 = Sin(work.Lat2);
  if (!HasQ(c, sin0) || !HasQ(c, sin1) || !HasQ(c, sin2)) return c;
  const double q1 = Q(c, sin1);
  if (Abs(double(work.Lat1)) <= kHalfPi && Abs(double(work.Lat2)) <= kHalfPi) {
    if (q1 - Q(c, sin2) == 0) return c;
    c.n = ConeConstant(c, sin1, sin2);
  } else if (!PrintedConeConstant(c, work, c.n)) {
    return c;
  }
  c.cone = Cone::Usable;
  FinishCone(c, Square(Cos(work.Lat1)) / W(c, sin1), q1, Q(c, sin0));  // m by 14-15
  return c;
}

template <class T>
void Place(const Constants& c, T q, Point<T>& p) {
  const T rho = Radius(c, q);
  const auto [sine, cosine] = SinCos(c.n * (p.x - c.lon0));  // 14-4
  p = {rho * sine, c.rho0 - rho * cosine};                   // 14-1, 14-2
}

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  if (c.cone == Cone::Zero) return Impossible<T>(kForwardSphereLine);
  Place(c, 2 * Sin(p.y), p);
  return Plottable<T>();
}

template <class T>
Plot<T> ForwardEllipsoid(const Constants& c, Point<T>& p) {
  const T sinPhi = Sin(p.y);
  const MaskOf<T> plottable = HasQ(c, sinPhi);
  if (c.cone == Cone::Refused) return Unplottable<T>();
  if (c.cone == Cone::Zero) return {plottable, plottable, kForwardEllipsoidLine};
  Place(c, Q(c, sinPhi), p);
  return plottable;
}

template <class T>
struct Location {
  T lon, q;
  MaskOf<T> found;
};

/// Longitude and q of a place on the map; not found on the line through the apex that runs along x, also where x is not
/// 0.
template <class T>
Location<T> Locate(const Constants& c, const Point<T>& p) {
  const double sign = c.n > 0 ? 1 : -1;
  const T x = sign * p.x, d = sign * (c.rho0 - p.y);
  return {Atan2(x, d) / c.n + c.lon0,                         // 14-11, 14-9
          (c.C - (x * x + d * d) * Square(c.n / c.a)) / c.n,  // 14-10, 14-19
          d != T(0)};
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  if (c.cone == Cone::Zero) return Impossible<T>(kInverseSphereLine);
  const auto [lon, q, found] = Locate(c, p);
  p = {lon, ClampedAsin(q / 2)};  // 14-8
  return found;
}

template <class T>
Plot<T> InverseEllipsoid(const Constants& c, Point<T>& p) {
  if (c.cone == Cone::Refused) return Unplottable<T>();
  if (c.cone == Cone::Zero) return Impossible<T>(kInverseEllipsoidLine);
  const auto [lon, q, found] = Locate(c, p);
  const MaskOf<T> estimable = found & (Abs(q) <= T(2));  // else there is no first estimate, so no convergence
  const T first = Asin(Select(estimable, q / 2, T(0)));
  const T relativeQ = Select(estimable, q / (1 - c.e2), T(0)), slot = Select(estimable, p.y, T(0));
  const auto step = [&c, relativeQ](T phi, T& next) {
    const auto [sinPhi, cosPhi] = SinCos(phi);
    const T w = W(c, sinPhi), twoCosPhi = 2 * cosPhi;
    const MaskOf<T> possible = (twoCosPhi != T(0)) & HasQ(c, sinPhi);
    next = phi + w * w / OneUnless<T>(possible, twoCosPhi) * (relativeQ - RelativeQ(c, sinPhi));  // 3-16
    return possible;
  };
  T lat, newest;
  const MaskOf<T> settled = PreviousEstimate(first, slot, kTolerance, step, lat, newest);
  p = {lon, lat};
  return estimable & settled;
}

// ---- exactly, sphere and ellipsoid ----
//
// Counted from the parallel of the origin instead of the apex, so that flat cones, whose apex lies far away, keep their
// digits. In semi-major axes, root = n rho.

struct ExactCone : Constants {
  double q0, root0, poleQ;
  AuthalicLatitude authalic;
  bool usable;

  explicit ExactCone(const PROJDATA& work)
      : Constants(work.Flattening == 0 ? PrepareSphere(work) : PrepareEllipsoid(work)),
        q0(Q(*this, Sin(work.Lat0))),
        root0(Root(q0)),
        poleQ(Q(*this, 1.0)),
        authalic(work.Flattening),
        usable(cone == Cone::Usable && IsLatitude(work.Lat0) && IsLatitude(work.Lat1) && IsLatitude(work.Lat2) &&
               IsFinite(C)) {}

  template <class T>
  ORVEX_INLINE T Root(T q) const {
    const T square = C - n * q;
    return Sqrt(Select(square < T(0), T(0), square));
  }
};

template <class T>
Plot<T> ForwardExact(const ExactCone& c, Point<T>& p) {
  const T q = Q(c, Sin(p.y)), root = c.Root(q), sum = root + c.root0;
  const T drop = (q - c.q0) / OneUnless<T>(sum != T(0), sum);  // rho0 - rho
  const auto [sine, cosine] = SinCos(c.n * p.x / 2);
  const T rho = c.a * root / c.n;
  p = {rho * (2 * sine * cosine), c.a * drop + rho * (2 * sine * sine)};
  return Plottable<T>();
}

template <class T>
Plot<T> InverseExact(const ExactCone& c, Point<T>& p) {
  const T x = p.x / c.a, y = p.y / c.a, relative = (c.q0 + (2 * c.root0 * y - c.n * (x * x + y * y))) / c.poleQ;
  MaskOf<T> plottable = Abs(relative) <= T(1 + kRim);
  const T across = c.n * x, along = c.root0 - c.n * y, root = Sqrt(across * across + along * along);
  p = {AlongParallel(Atan2(across, along) / c.n * root, root, plottable),
       c.authalic.Latitude(Clamp(Select(plottable, relative, T(0)), -1, 1))};
  return plottable;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite, [c = ExactCone(*call.work)](auto& p) { return ForwardExact(c, p); });
  }
  if (call.work->Flattening == 0) {
    return ForwardEach(call, kForwardSite, [c = PrepareSphere(*call.work)](auto& p) { return ForwardSphere(c, p); });
  }
  return ForwardEach(call, kForwardSite,
                     [c = PrepareEllipsoid(*call.work)](auto& p) { return ForwardEllipsoid(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite, [c = ExactCone(*call.work)](auto& p) { return InverseExact(c, p); });
  }
  if (call.work->Flattening == 0) {
    return InverseEach(call, kInverseSite, [c = PrepareSphere(*call.work)](auto& p) { return InverseSphere(c, p); });
  }
  return InverseEach(call, kInverseSite,
                     [c = PrepareEllipsoid(*call.work)](auto& p) { return InverseEllipsoid(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return ExactCone(work).usable;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjAlbers
