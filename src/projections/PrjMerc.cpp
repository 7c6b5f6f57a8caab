// PrjMerc - Mercator, true to scale at Lat0; northings count from the equator.
// Sphere (flattening exactly 0) and ellipsoid. Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987).
//   Sphere 7-1, 7-2, inverse 7-4, 7-5; ellipsoid 7-6, 7-7, inverse 7-9 to 7-12; scale by 7-8.
// Fixed on purpose: the ellipsoid inverse stops by PreviousEstimate and takes 2.71828 for the base of logarithms; the
//   sphere refuses the last latitude below the pole, the ellipsoid only what lies beyond it.
#include "math/IsometricLatitude.h"
#include "math/Iteration.h"
#include "math/MeridianArc.h"
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr const char* kSource = "PrjMerc";
constexpr Site kForwardSite{kSource, 225, 227};
constexpr Site kInverseSite{kSource, 379, 381};
constexpr int kZeroScaleLine = 442;

constexpr double kPoleLimit = 1.5707963267948963;      // radians, one step of a double below pi/2
constexpr double kTolerance = 1.1920928955078125e-06;  // radians: 7.6 m on the ground
constexpr double kNaturalBase = 2.71828;               // five decimals: must stay, see above

struct Constants {
  double a, lon0, e;
  double k;      // scale of the equator
  bool refused;  // no scale at Lat0
};

Constants PrepareSphere(const PROJDATA& work) {
  return {work.MajorRadius, work.Lon0, 0, std::cos(work.Lat0), false};
}

Constants PrepareEllipsoid(const PROJDATA& work) {
  const double e2 = EccentricitySquared(work.Flattening);
  const double w0 = 1 - e2 * Square(std::sin(work.Lat0));
  Constants c{work.MajorRadius, work.Lon0, std::sqrt(e2), 0, w0 <= 0};
  if (!c.refused) c.k = std::cos(work.Lat0) / std::sqrt(w0);  // 7-8 inverted
  return c;
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  if (!(std::fabs(p.y) < kPoleLimit)) return Plot::Unplottable;
  p = {(p.x - c.lon0) * c.a * c.k, IsometricLatitude(p.y, 0) * c.a * c.k};  // 7-1, 7-2
  return Plot::Ok;
}

Plot ForwardEllipsoid(const Constants& c, PROJPOINT& p) {
  if (c.refused || std::fabs(p.y) > kPoleLimit) return Plot::Unplottable;
  const double s = std::sin(p.y);
  // So close to a pole that the sine is 1, the logarithm of 7-7 has no finite value.
  if (1 - s == 0 || 1 + s == 0 || 1 + c.e * s == 0) return Plot::Unplottable;
  p = {(p.x - c.lon0) * c.a * c.k, IsometricLatitude(p.y, c.e) * c.a * c.k};  // 7-6, 7-7
  return Plot::Ok;
}

Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  const double radius = c.a * c.k;
  p = {p.x / radius + c.lon0, std::atan(std::sinh(p.y / radius))};  // 7-5, 7-4
  return Plot::Ok;
}

Plot InverseEllipsoid(const Constants& c, PROJPOINT& p) {
  if (c.refused) return Plot::Unplottable;
  if (c.k == 0) Assert(kSource, kZeroScaleLine);
  const double northing = p.y / c.k;
  const double t = std::pow(kNaturalBase, -northing / c.a);  // 7-10
  double lat = 0;
  if (!PreviousConformalEstimate(t, c.e, northing, kTolerance, lat)) return Plot::Unplottable;
  p = {p.x / c.k / c.a + c.lon0, lat};  // 7-12
  return Plot::Ok;
}

}  // namespace

bool PrjMerc::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  if (work->Flattening == 0) {
    return ConvertEach<ForwardSphere>(*work, pts, nPts, PrepareSphere(*work));
  }
  return ConvertEach<ForwardEllipsoid>(*work, pts, nPts, PrepareEllipsoid(*work));
}

bool PrjMerc::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  if (work->Flattening == 0) {
    return ConvertEach<InverseSphere>(*work, pts, nPts, PrepareSphere(*work));
  }
  return ConvertEach<InverseEllipsoid>(*work, pts, nPts, PrepareEllipsoid(*work));
}

}  // namespace orvex::detail
