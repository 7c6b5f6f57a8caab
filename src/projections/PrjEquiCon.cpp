// PrjEquiCon - Equidistant Conic on one or two standard parallels.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), 14-1, 14-2, 14-4, 16-1 to 16-4;
//   inverse 14-9 to 14-11, 16-5.
#include "projections/CentralMeridian.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjEquiCon {

namespace {

constexpr Site kForwardSite{"PrjEquiCon", 224, 226};
constexpr Site kInverseSite{"PrjEquiCon", 323, 325};

constexpr double kOneParallel = 1e-06;  // radians: parallels closer than this count as one
constexpr double kLeastCone = 1e-07;    // a flatter cone is refused

/// Cone constant, 16-4 as a product, which keeps its digits when the parallels lie close together.
double ConeConstant(double lat1, double lat2) {
  if (!(Abs(lat1 - lat2) >= kOneParallel)) return Sin(lat1);
  const double half = (lat2 - lat1) / 2;
  return Sin((lat1 + lat2) / 2) * Sin(half) / half;
}

struct Constants {
  double a;
  CentralMeridian meridian;
  double n, G = 0, rho0 = 0;
  bool refused;

  explicit Constants(const PROJDATA& work)
      : a(work.MajorRadius), meridian(work), n(ConeConstant(work.Lat1, work.Lat2)), refused(Abs(n) < kLeastCone) {
    if (refused) return;
    G = Cos(work.Lat1) / n + work.Lat1;  // 16-2
    rho0 = a * (G - work.Lat0);          // 16-3
  }
};

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  if (c.refused) return Unplottable<T>();
  const T rho = c.a * (c.G - p.y), theta = c.n * c.meridian.Difference(p.x);  // 16-1, 14-4
  const auto [sine, cosine] = SinCos(theta);
  p = {rho * sine, c.rho0 - rho * cosine};  // 14-1, 14-2
  return Plottable<T>();
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  if (c.refused) return Unplottable<T>();
  const double sign = c.n > 0 ? 1 : -1;
  const T x = sign * p.x, d = sign * (c.rho0 - p.y);
  const T rho = sign * Sqrt(x * x + d * d);                              // 14-10
  p = {WrapOnce(Atan2(x, d) / c.n + c.meridian.lon0), c.G - rho / c.a};  // 14-11, 14-9, 16-5
  return Plottable<T>();
}

// ---- exactly: parallels however close, and counted from the parallel of the origin, so that flat cones keep their
// digits ----

struct ExactCone : Constants {
  double lat0;

  explicit ExactCone(const PROJDATA& work) : Constants(work), lat0(work.Lat0) {
    const double half = (work.Lat2 - work.Lat1) / 2;
    n = Sin((work.Lat1 + work.Lat2) / 2) * (half == 0 ? 1 : Sin(half) / half);
    refused = !(Abs(n) >= kLeastCone);
    if (refused) return;
    G = Cos(work.Lat1) / n + work.Lat1;
    rho0 = a * (G - lat0);
  }
};

template <class T>
Plot<T> ForwardExact(const ExactCone& c, Point<T>& p) {
  const T rho = c.a * (c.G - p.y);
  const auto [sine, cosine] = SinCos(c.n * p.x / 2);
  p = {rho * (2 * sine * cosine), c.a * (p.y - c.lat0) + rho * (2 * sine * sine)};
  return Plottable<T>();
}

template <class T>
Plot<T> InverseExact(const ExactCone& c, Point<T>& p) {
  const double sign = c.n > 0 ? 1 : -1;
  const T below = c.rho0 - p.y, rho = sign * Sqrt(p.x * p.x + below * below), sum = rho + c.rho0;
  const T beyond = (p.x * p.x + p.y * (p.y - 2 * c.rho0)) / OneUnless<T>(sum != T(0), sum);  // rho - rho0
  const T theta = Atan2(sign * p.x, sign * below), perRadian = rho * c.n / c.a;
  Plot<T> plot = Plottable<T>();
  p = {AlongParallel(theta / c.n * perRadian, perRadian, plot.plottable), c.lat0 - beyond / c.a};
  return plot;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite, [c = ExactCone(*call.work)](auto& p) { return ForwardExact(c, p); });
  }
  return ForwardEach(call, kForwardSite, [c = Constants(*call.work)](auto& p) { return ForwardSphere(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite, [c = ExactCone(*call.work)](auto& p) { return InverseExact(c, p); });
  }
  return InverseEach(call, kInverseSite, [c = Constants(*call.work)](auto& p) { return InverseSphere(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return !ExactCone(work).refused && IsLatitude(work.Lat0) && IsLatitude(work.Lat1) && IsLatitude(work.Lat2);
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjEquiCon
