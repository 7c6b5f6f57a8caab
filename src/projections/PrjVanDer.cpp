// PrjVanDer - Van der Grinten I, the world in a circle with circular meridians and parallels.
// Sphere only, of radius MajorRadius whatever the flattening.
// Source: Snyder, Map Projections - A Working Manual, USGS PP 1395 (1987), section 29. A point is found where its two
// circles meet, which avoids the closed forms' differences of large numbers near the axes. In units of pi R, with
// l = |dLon| / pi and t = tan(theta / 2), sin theta = |2 phi / pi|, the circles are
//   meridian  (x^2 + y^2) l + x (1 - l^2) - l = 0,
//   parallel  (x^2 + y^2) t^2 - y (1 + t^3) + t = 0.
#include "projections/Modules.h"

namespace orvex::detail {

namespace {

constexpr Site kForwardSite{"PrjVanDer", 220, 222};
constexpr Site kInverseSite{"PrjVanDer", 320, 322};

constexpr double kRounding = 1e-12;   // of the radius of the circle, and in radians beyond the antimeridian
constexpr double kTolerance = 1e-10;  // step in t; Newton's method has then converged to rounding
constexpr int kPasses = 60;           // seven do, but up to 28 within 10 m of the poles, where a pass halves the error

struct Constants {
  double R, lon0;

  explicit Constants(const PROJDATA& work) : R(work.MajorRadius), lon0(work.Lon0) {}
};

/// Difference in [-pi, pi]; a longitude on the antimeridian keeps its side.
double Difference(const Constants& c, double lon) {
  const double dLon = lon - c.lon0;
  return std::abs(dLon) <= kPi + kRounding ? std::clamp(dLon, -kPi, kPi) : std::remainder(dLon, kTwoPi);
}

/// t of a latitude, radians, 0 <= lat <= pi/2.
double ParallelOf(double lat) {
  const double sine = lat / kHalfPi, cosine = std::sqrt((kHalfPi - lat) / kHalfPi * (1 + sine));
  return sine / (1 + cosine);
}

Plot ForwardSphere(const Constants& c, PROJPOINT& p) {
  const double dLon = Difference(c, p.x), lat = std::min(std::abs(p.y), kHalfPi);
  if (lat == 0) {
    p = {c.R * dLon, 0};
    return Plot::Ok;
  }
  const double t = ParallelOf(lat);
  if (dLon == 0 || lat == kHalfPi) {
    p = {0, std::copysign(kPi * c.R * t, p.y)};
    return Plot::Ok;
  }
  // 1 - x^2 - y^2 = (1 - l^2) w makes x = l w and y linear in w: a quadratic A w^2 + B w = C remains, none of them
  // negative.
  const double l = std::abs(dLon) / kPi, D = (1 - l) * (1 + l);
  const double q = 1 - t + t * t, g = t / q, m = t / (1 + t) * D;  // g: height at which the parallel meets the circle
  const double A = l * l + Square(g * m);
  const double B = (1 - t) * (1 + t * t * (1 - t) * (1 + t)) / (q * q * (1 + t)) * D;
  const double C = Square(1 - t) * (1 + t * t) / (q * q);
  const double w = 2 * C / (B + std::sqrt(B * B + 4 * A * C));
  p = {std::copysign(kPi * c.R * l * w, dLon), std::copysign(kPi * c.R * g * (1 - m * w), p.y)};
  return Plot::Ok;
}

/// t of the parallel through a point of the upper right quadrant: (y - t) (1 - y t^2) = x^2 t^2, monotonic for 0 <= t
/// <= y. On the central meridian t = y.
double ParallelThrough(double x, double y) {
  double t = y;
  for (int pass = 0; pass < kPasses; ++pass) {
    const double u = 1 - y * t * t;
    const double slope = -u - 2 * t * (y * (y - t) + x * x);
    if (slope == 0) break;  // the pole
    const double delta = ((y - t) * u - Square(x * t)) / slope;
    t = std::clamp(t - delta, 0.0, y);
    if (std::abs(delta) <= kTolerance) break;
  }
  return t;
}

Plot InverseSphere(const Constants& c, PROJPOINT& p) {
  const double x = std::abs(p.x) / (kPi * c.R), y = std::abs(p.y) / (kPi * c.R);
  if (!(x * x + y * y <= 1 + kRounding)) return Plot::Unplottable;
  const double inside = (1 - y) * (1 + y) - x * x;
  const double l = x == 0 ? 0 : std::min(2 * x / (inside + std::hypot(inside, 2 * x)), 1.0);
  const double t = ParallelThrough(x, std::min(y, 1.0));
  p = {c.lon0 + std::copysign(kPi * l, p.x), std::copysign(kPi * t / (1 + t * t), p.y)};
  return Plot::Ok;
}

}  // namespace

bool PrjVanDer::Forward(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kForwardSite)) return false;
  return ConvertEach<ForwardSphere>(*work, pts, nPts, Constants(*work));
}

bool PrjVanDer::Inverse(PROJDATA* work, PROJPOINT* pts, int nPts) {
  if (!Ready(work, pts, nPts, kInverseSite)) return false;
  return ConvertEach<InverseSphere>(*work, pts, nPts, Constants(*work));
}

}  // namespace orvex::detail
