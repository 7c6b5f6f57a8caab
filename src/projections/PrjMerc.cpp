// PrjMerc - Mercator, true to scale at Lat0; northings count from the equator.
// Sphere (flattening exactly 0) and ellipsoid. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987).
//   Sphere 7-1, 7-2, inverse 7-4, 7-5; ellipsoid 7-6, 7-7, inverse 7-9 to 7-12; scale by 7-8.
// Fixed on purpose: the ellipsoid inverse stops by PreviousEstimate and takes 2.71828 for the base of logarithms; the
//   sphere refuses the last latitude below the pole, the ellipsoid only what lies beyond it.
#include "math/Iteration.h"
#include "math/MeridianArc.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjMerc {

namespace {

constexpr const char* kSource = "PrjMerc";
constexpr Site kForwardSite{kSource, 225, 227};
constexpr Site kInverseSite{kSource, 379, 381};
constexpr int kZeroScaleLine = 442;

constexpr double kPoleLimit = 1.5707963267948963;      // radians, one step of a double below pi/2
constexpr double kTolerance = 1.1920928955078125e-06;  // radians: 7.6 m on the ground
constexpr double kLogOfBase = 0.999999327347282;       // of 2.71828, five decimals of e: must stay, see above

struct Constants {
  double a, lon0;
  ConformalFactor factor;
  double k = 0;          // scale of the equator
  bool refused = false;  // no scale at Lat0

  explicit Constants(const PROJDATA& work)
      : a(work.MajorRadius), lon0(work.Lon0), factor(Sqrt(EccentricitySquared(work.Flattening))) {
    const double w0 = 1 - EccentricitySquared(work.Flattening) * Square(Sin(work.Lat0));
    refused = w0 <= 0;
    if (!refused) k = Cos(work.Lat0) / Sqrt(w0);  // 7-8 inverted; on the sphere w0 is 1
  }
};

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  const MaskOf<T> plottable = Abs(p.y) < T(kPoleLimit);
  p = {(p.x - c.lon0) * c.a * c.k, IsometricLatitude(p.y, c.factor.Eccentric()) * (c.a * c.k)};  // 7-1, 7-2
  return plottable;
}

template <class T>
Plot<T> ForwardEllipsoid(const Constants& c, Point<T>& p) {
  if (c.refused) return Unplottable<T>();
  const auto [s, cosPhi] = SinCos(p.y);
  // So close to a pole that the sine is 1, the logarithm of 7-7 has no finite value.
  const MaskOf<T> plottable =
      (Abs(p.y) <= T(kPoleLimit)) & (1 - s != T(0)) & (1 + s != T(0)) & (1 + c.factor.Eccentricity() * s != T(0));
  p = {(p.x - c.lon0) * c.a * c.k, IsometricLatitude(s, cosPhi, c.factor.Eccentric()) * (c.a * c.k)};  // 7-6, 7-7
  return plottable;
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  const double radius = c.a * c.k;
  p = {p.x / radius + c.lon0, Atan(Sinh(p.y / radius))};  // 7-5, 7-4
  return Plottable<T>();
}

template <class T>
Plot<T> InverseEllipsoid(const Constants& c, Point<T>& p) {
  if (c.refused) return Unplottable<T>();
  if (c.k == 0) return Impossible<T>(kZeroScaleLine);
  const T northing = p.y / c.k;
  const T t = Exp(-northing / c.a * kLogOfBase);  // 7-10
  T lat;
  const MaskOf<T> plottable = PreviousConformalEstimate(t, c.factor, northing, kTolerance, lat);
  p = {p.x / c.k / c.a + c.lon0, lat};  // 7-12
  return plottable;
}

// ---- exactly: nothing of what is fixed above ----

template <class T>
Plot<T> ForwardExact(const Constants& c, ExactPoint<T>& p) {
  const MaskOf<T> plottable = Abs(p.y) < T(kHalfPi);
  const auto [sine, cosine] = SinCosOfLatitude(p);
  p.x = p.x * (c.a * c.k);
  p.y = IsometricLatitude(sine, OneUnless<T>(plottable, cosine), c.factor.Eccentric()) * (c.a * c.k);
  return plottable;
}

template <class T>
Plot<T> InverseExact(const Constants& c, Point<T>& p) {
  T lat;
  MaskOf<T> plottable = LatitudeFromIsometric(p.y / (c.a * c.k), c.factor.Eccentric(), lat);
  p = {AlongParallel(p.x / c.a, T(c.k), plottable), lat};
  return plottable & (Abs(RadToDeg(lat)) < T(90));  // so far north or south that it is the pole, which has no place
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  const Constants c(*call.work);
  if (call.exact) return ForwardExactly(call, kForwardSite, [&c](auto& p) { return ForwardExact(c, p); });
  if (call.work->Flattening == 0) return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardSphere(c, p); });
  return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardEllipsoid(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  const Constants c(*call.work);
  if (call.exact) return InverseExactly(call, kInverseSite, [&c](auto& p) { return InverseExact(c, p); });
  if (call.work->Flattening == 0) return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseSphere(c, p); });
  return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseEllipsoid(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return Abs(double(work.Lat0)) < kHalfPi;
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjMerc
