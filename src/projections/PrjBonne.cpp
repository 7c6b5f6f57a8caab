// PrjBonne - Bonne, sphere and ellipsoid. Lat1 is the standard parallel and the origin of y; it may be a southern one.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), p. 139-140, with 14-15, 3-21, 3-24 and 3-26.
// Equal area; every parallel is true to scale.
// Fixed on purpose: the meridian arc stops after three terms, 155 stands in its inverse where 3-26 has 151 (together up
// to 5 cm each way), and the longitude difference is wrapped whatever the record's flag says.
#include "math/AuxiliaryLatitudes.h"
#include "math/MeridianArc.h"
#include "projections/Exactly.h"
#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL::PrjBonne {

namespace {

constexpr const char* kSource = "PrjBonne";
constexpr Site kForwardSite{kSource, 221, 223};
constexpr Site kInverseSite{kSource, 421, 423};
constexpr int kApexSphere = 264;  // the forward formulas assert at the apex of the cone
constexpr int kApexEllipsoid = 371;

/// cos(lat) / sqrt(1 - e2 sin^2 lat): radius of a parallel in units of a, 14-15.
template <class T>
T RelativeParallel(double e2, T sinLat, T cosLat) {
  return cosLat / Sqrt(1 - e2 * (sinLat * sinLat));
}

/// The meridian arc without its last term: deliberate, see above.
MeridianArc ThreeTerms(MeridianArc arc) {
  arc.A6 = 0;
  return arc;
}

struct Constants {
  double a, e2, lat1, lon0;
  double cot1;         // sphere
  double sin1, K, M1;  // ellipsoid: K is the radius of the standard parallel, M1 its distance from the equator
  MeridianArc arc;
  FootpointLatitude footpoint;

  explicit Constants(const PROJDATA& work)
      : a(work.MajorRadius),
        e2(EccentricitySquared(work.Flattening)),
        lat1(work.Lat1),
        lon0(work.Lon0),
        cot1(1 / Tan(lat1)),
        sin1(Sin(lat1)),
        K(a * RelativeParallel(e2, sin1, Cos(lat1)) / sin1),
        arc(ThreeTerms(MeridianArc(a, e2))),
        footpoint(arc, e2, 155) {  // deliberate as well
    M1 = arc(lat1);
  }
};

template <class T>
Plot<T> ForwardSphere(const Constants& c, Point<T>& p) {
  const T rho = c.a * (c.cot1 + c.lat1 - p.y);
  const MaskOf<T> apex = rho == T(0);
  // Deliberate: it is the longitude that is tested.
  const MaskOf<T> plottable = c.lat1 == kHalfPi ? p.x != T(kHalfPi) : Yes<T>();
  const auto [sine, cosine] = SinCos(c.a * WrapOnce(p.x - c.lon0) * Cos(p.y) / OneUnless<T>(!apex, rho));
  p = {rho * sine, c.a * c.cot1 - rho * cosine};
  return {plottable, plottable & apex, kApexSphere};
}

template <class T>
Plot<T> ForwardEllipsoid(const Constants& c, Point<T>& p) {
  if (c.sin1 == 0) return Unplottable<T>();
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const T rho = c.K + c.M1 - c.arc.Length(p.y, sinPhi, cosPhi);
  const MaskOf<T> apex = rho == T(0);
  const auto [sine, cosine] =
      SinCos(c.a * RelativeParallel(c.e2, sinPhi, cosPhi) * WrapOnce(p.x - c.lon0) / OneUnless<T>(!apex, rho));
  p = {rho * sine, c.K - rho * cosine};
  return {Yes<T>(), apex, kApexEllipsoid};
}

template <class T>
struct Polar {
  T rho, angle;
};

/// Radius and angle of a point about the apex, `below` being the distance of the apex above it; negative radii in the
/// south.
template <class T>
Polar<T> AboutApex(const Constants& c, T x, T below) {
  const double sign = c.lat1 < 0 ? -1 : 1;
  return {sign * Sqrt(x * x + below * below), Atan2(sign * x, sign * below)};
}

template <class T>
Plot<T> InverseSphere(const Constants& c, Point<T>& p) {
  const auto [rho, angle] = AboutApex(c, p.x, c.a * c.cot1 - p.y);
  const T phi = c.cot1 + c.lat1 - rho / c.a, parallel = c.a * Cos(phi);
  const MaskOf<T> plottable = parallel != T(0);
  p = {WrapOnce(c.lon0 + rho * angle / OneUnless<T>(plottable, parallel)), phi};
  return plottable;
}

template <class T>
Plot<T> InverseEllipsoid(const Constants& c, Point<T>& p) {
  if (c.sin1 == 0) return Unplottable<T>();
  const T below = c.K - p.y;
  const auto [rho, angle] = AboutApex(c, p.x, below);
  const T phi = c.footpoint(c.K + c.M1 - rho);  // 3-26
  const auto [sinPhi, cosPhi] = SinCos(phi);
  const MaskOf<T> curved = !(1 - c.e2 * (sinPhi * sinPhi) <= T(0));
  const T m = RelativeParallel(c.e2, Select(curved, sinPhi, T(0)), cosPhi);
  const MaskOf<T> plottable = curved & (m != T(0)) & (below != T(0));
  p = {WrapOnce(c.lon0 + rho * angle / OneUnless<T>(m != T(0), c.a * m)), phi};
  return plottable;
}

// ---- exactly, sphere and ellipsoid ----
//
// Counted from the standard parallel instead of the apex, which lies far away where the parallel is near the equator.

struct ExactConstants {
  double a, e2, K, M1;
  Meridian meridian;

  explicit ExactConstants(const PROJDATA& work)
      : a(work.MajorRadius), e2(EccentricitySquared(work.Flattening)), meridian(a, work.Flattening) {
    const auto [sine, cosine] = SinCos(double(work.Lat1));
    K = Abs(double(work.Lat1)) == kHalfPi ? 0 : a * RelativeParallel(e2, sine, cosine) / sine;
    M1 = meridian.Length(double(work.Lat1));
  }
};

template <class T>
Plot<T> ForwardExact(const ExactConstants& c, Point<T>& p) {
  const auto [sinPhi, cosPhi] = SinCos(p.y);
  const T beyond = c.meridian.Length(p.y, sinPhi, cosPhi) - c.M1, rho = c.K - beyond;
  const T parallel = c.a * RelativeParallel(c.e2, sinPhi, cosPhi) * p.x;
  const auto [sine, cosine] = SinCos(parallel / OneUnless<T>(rho != T(0), rho) / 2);
  p = {rho * (2 * sine * cosine), beyond + rho * (2 * sine * sine)};
  return Plottable<T>();
}

template <class T>
Plot<T> InverseExact(const ExactConstants& c, Point<T>& p) {
  const double sign = c.M1 < 0 ? -1 : 1;
  const T below = c.K - p.y, rho = sign * Sqrt(p.x * p.x + below * below), sum = rho + c.K;
  const T nearer = (p.y * (2 * c.K - p.y) - p.x * p.x) / OneUnless<T>(sum != T(0), sum);  // K - rho
  const T angle = Atan2(sign * p.x, sign * below);
  const T length = c.M1 + nearer, phi = c.meridian.Latitude(length);
  const auto [sinPhi, cosPhi] = SinCos(phi);
  MaskOf<T> plottable = Abs(length) <= T(c.meridian.Quarter() + c.a * kRim);
  p = {AlongParallel(rho * angle / c.a, RelativeParallel(c.e2, sinPhi, cosPhi), plottable), phi};
  return plottable;
}

}  // namespace

bool Forward(const Conversion& call) {
  if (!Ready(call, kForwardSite)) return false;
  if (call.exact) {
    return ForwardExactly(call, kForwardSite,
                          [c = Remembered<ExactConstants>(call)](auto& p) { return ForwardExact(c, p); });
  }
  const Constants c = Remembered<Constants>(call);
  if (call.work->Flattening == 0) return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardSphere(c, p); });
  return ForwardEach(call, kForwardSite, [&c](auto& p) { return ForwardEllipsoid(c, p); });
}

bool Inverse(const Conversion& call) {
  if (!Ready(call, kInverseSite)) return false;
  if (call.exact) {
    return InverseExactly(call, kInverseSite,
                          [c = Remembered<ExactConstants>(call)](auto& p) { return InverseExact(c, p); });
  }
  const Constants c = Remembered<Constants>(call);
  if (call.work->Flattening == 0) return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseSphere(c, p); });
  return InverseEach(call, kInverseSite, [&c](auto& p) { return InverseEllipsoid(c, p); });
}

bool HasExactForm(const PROJDATA& work) {
  return work.Lat1 != 0 && IsLatitude(work.Lat1);
}

}  // namespace orvex::detail::ORVEX_LEVEL::PrjBonne
