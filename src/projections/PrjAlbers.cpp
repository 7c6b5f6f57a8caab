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
// digits; and by the gap between q and its value at the pole that the cone opens away from, so that cones which touch
// it keep theirs. In semi-major axes, root = |n| rho.

struct ExactCone {
  EccentricTerm eccentric;
  double a, e2, n, side;  // side: of the pole next to the apex, 1 or -1
  double base;            // root^2 of that pole
  double gap0, root0, poleQ;
  AuthalicLatitude authalic;
  bool usable;

  explicit ExactCone(const PROJDATA& work)
      : eccentric(Sqrt(EccentricitySquared(work.Flattening))),
        a(work.MajorRadius),
        e2(EccentricitySquared(work.Flattening)),
        authalic(work.Flattening) {
    const Constants stated = work.Flattening == 0 ? PrepareSphere(work) : PrepareEllipsoid(work);
    usable = stated.cone == Cone::Usable && IsLatitude(work.Lat0) && IsLatitude(work.Lat1) && IsLatitude(work.Lat2);
    n = stated.n;
    side = n < 0 ? -1 : 1;
    poleQ = 1 + (1 - e2) * eccentric.PerSquare(1.0);
    // Either parallel tells the base; the one next to the pole tells it best.
    const double lat = side * work.Lat1 > side * work.Lat2 ? work.Lat1 : work.Lat2;
    const auto [sine, cosine] = SinCos(lat);
    const double m2 = Abs(lat) == kHalfPi ? 0 : Square(cosine) / (1 - e2 * Square(sine));  // 14-15
    base = m2 - side * n * Gap(lat, 0.0);
    gap0 = Gap(double(work.Lat0), 0.0);
    root0 = Root(gap0);
    usable = usable && IsFinite(base);
  }

  /// What q lacks of its value at the pole, for a latitude and what the latitude lacks: (1 - e2) times 3-12 there less
  /// here, the differences divided out.
  template <class T>
  ORVEX_INLINE T Gap(T lat, T latRest) const {
    constexpr double kHalfTurnRest = 3.061616997868383e-17;  // pi / 4 less its double
    const T half = Sin((kQuarterPi - side * lat / 2) + (kHalfTurnRest - side * latRest / 2));
    const T d = 2 * Square(half), s = 1 - d;  // s: sine of the latitude towards the pole
    const T u = d / (1 - e2 * s);
    return d * (1 + e2 * s) / (1 - e2 * (s * s)) + (1 - e2) * OfDifference(u);
  }

  template <class T>
  ORVEX_INLINE T Root(T gap) const {
    const T square = base + side * n * gap;
    return Sqrt(Select(square < T(0), T(0), square));
  }

 private:
  /// artanh(e u) / e.
  template <class T>
  ORVEX_INLINE T OfDifference(T u) const {
    return eccentric.e == 0 ? u : Atanh(eccentric.e * u) / eccentric.e;
  }
};

template <class T>
Plot<T> ForwardExact(const ExactCone& c, ExactPoint<T>& p) {
  const T gap = c.Gap(p.y, p.latRest), root = c.Root(gap), sum = root + c.root0;
  const T drop = c.side * (c.gap0 - gap) / OneUnless<T>(sum != T(0), sum);  // rho0 - rho
  const auto [sine, cosine] = SinCos(c.n * p.x / 2);
  const T rho = c.a * root / c.n;
  p.x = rho * (2 * sine * cosine);
  p.y = c.a * drop + rho * (2 * sine * sine);
  return Plottable<T>();
}

template <class T>
Plot<T> InverseExact(const ExactCone& c, Point<T>& p) {
  const T x = p.x / c.a, y = p.y / c.a, across = c.n * x, along = c.root0 - c.n * y;
  const T square = across * across + along * along, root = Sqrt(square);
  const T fromOrigin = c.gap0 - c.side * (2 * c.root0 * y - c.n * (x * x + y * y));
  const MaskOf<T> nearApex = square < T(c.root0 * c.root0 / 4);
  const T gap = Select(nearApex, (square - c.base) / (c.side * c.n), fromOrigin) / c.poleQ;
  MaskOf<T> plottable = (gap >= T(-kRim)) & (gap <= T(2 + kRim));
  p = {AlongParallel(Atan2(across, along) / c.n * root, root, plottable),
       c.side * c.authalic.LatitudeOfGap(Clamp(Select(plottable, gap, T(0)), 0, 2))};
  return plottable;
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
                     [c = Remembered<PrepareEllipsoid>(call)](auto& p) { return ForwardEllipsoid(c, p); });
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
                     [c = Remembered<PrepareEllipsoid>(call)](auto& p) { return InverseEllipsoid(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return ExactCone(work).usable;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjAlbers
