// Projective - the transform of a plane seen from somewhere else, with eight parameters.
// The direct linear transform after Hartley and Zisserman, Multiple View Geometry in Computer Vision, 2nd ed. (2004),
// sections 4.1 and 4.4; then Gauss and Newton on the distances themselves.
#include "georef/Projective.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <numbers>

#include "Failure.h"
#include "georef/LeastSquares.h"

namespace orvex::tool {

namespace {

constexpr std::size_t kUnknowns = 8;  // the ninth, w at the middle of the sources, is 1
constexpr double kHorizon = 1e-9;     // of w: nearer to the horizon than this no digits are left
constexpr double kSingular = 1e-10;   // of the determinant
constexpr int kMostSteps = 50;        // a few do
constexpr double kSettled = 1e-14;    // of the parameters

double Determinant(const Homography& h) {
  return h[0] * (h[4] * h[8] - h[5] * h[7]) - h[1] * (h[3] * h[8] - h[5] * h[6]) + h[2] * (h[3] * h[7] - h[4] * h[6]);
}

/// The inverse times the determinant; a factor does not matter but for its sign.
Homography Adjugate(const Homography& h) {
  return {h[4] * h[8] - h[5] * h[7], h[2] * h[7] - h[1] * h[8], h[1] * h[5] - h[2] * h[4],
          h[5] * h[6] - h[3] * h[8], h[0] * h[8] - h[2] * h[6], h[2] * h[3] - h[0] * h[5],
          h[3] * h[7] - h[4] * h[6], h[1] * h[6] - h[0] * h[7], h[0] * h[4] - h[1] * h[3]};
}

double Depth(const Homography& h, const GEOREFPOINT& p) {
  return h[6] * p.x + h[7] * p.y + h[8];
}

GEOREFPOINT Map(const Homography& h, const GEOREFPOINT& p) {
  const double w = Depth(h, p);
  return {(h[0] * p.x + h[1] * p.y + h[2]) / w, (h[3] * p.x + h[4] * p.y + h[5]) / w};
}

/// Adds what two equations say about a change of the parameters that moves the image of p by (dx, dy). With an image of
/// its own choice and w = 1 they are those of the direct linear transform.
void AddEquations(LinearSystem& system, const GEOREFPOINT& p, const GEOREFPOINT& image, double w, double dx,
                  double dy) {
  const double x = p.x / w, y = p.y / w, one = 1 / w;
  system.Add({x, y, one, 0, 0, 0, -x * image.x, -y * image.x}, dx);
  system.Add({0, 0, 0, x, y, one, -x * image.y, -y * image.y}, dy);
}

/// Without end where a point lies on the horizon or beyond it.
double SquaredErrors(const Homography& h, const std::vector<GEOREFPOINT>& source,
                     const std::vector<GEOREFPOINT>& destination) {
  double squares = 0;
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (!(Depth(h, source[i]) > kHorizon)) return DBL_MAX;
    const GEOREFPOINT image = Map(h, source[i]);
    squares += (image.x - destination[i].x) * (image.x - destination[i].x) +
               (image.y - destination[i].y) * (image.y - destination[i].y);
  }
  return squares;
}

[[noreturn]] void RefuseLine() {
  throw Failure(
      "the control points do not determine the transform: Projective needs four of which no three lie on one line, "
      "in the source and in the destination");
}

Homography DirectLinear(const std::vector<GEOREFPOINT>& source, const std::vector<GEOREFPOINT>& destination) {
  LinearSystem system(kUnknowns);
  for (std::size_t i = 0; i < source.size(); ++i) {
    AddEquations(system, source[i], destination[i], 1, destination[i].x, destination[i].y);
  }
  const auto solution = system.Solve();
  if (!solution) RefuseLine();
  Homography h{};
  std::copy(solution->begin(), solution->end(), h.begin());
  h[8] = 1;
  return h;
}

/// Steps as long as the squared errors become less.
void Refine(Homography& h, const std::vector<GEOREFPOINT>& source, const std::vector<GEOREFPOINT>& destination) {
  double errors = SquaredErrors(h, source, destination);
  for (int step = 0; step < kMostSteps; ++step) {
    LinearSystem system(kUnknowns);
    for (std::size_t i = 0; i < source.size(); ++i) {
      const GEOREFPOINT image = Map(h, source[i]);
      AddEquations(system, source[i], image, Depth(h, source[i]), destination[i].x - image.x,
                   destination[i].y - image.y);
    }
    const auto change = system.Solve();
    if (!change) return;
    Homography next = h;
    double largest = 0;
    for (std::size_t i = 0; i < kUnknowns; ++i) {
      next[i] += (*change)[i];
      largest = std::max(largest, std::abs((*change)[i]));
    }
    const double nextErrors = SquaredErrors(next, source, destination);
    if (!(nextErrors < errors)) return;
    h = next;
    errors = nextErrors;
    if (largest < kSettled) return;
  }
}

/// All of the points must lie before the horizon, and the planes must not collapse.
void CheckView(const Homography& h, const std::vector<GEOREFPOINT>& source) {
  const auto beyond = [&](const GEOREFPOINT& p) { return !(Depth(h, p) > kHorizon); };
  if (!(std::abs(Determinant(h)) > kSingular)) RefuseLine();
  if (std::any_of(source.begin(), source.end(), beyond)) {
    throw Failure("the control points lie on both sides of a horizon: they are no view of one plane");
  }
}

GEOREFPOINT MapBeforeHorizon(const Homography& h, const Centring& from, const Centring& to, const GEOREFPOINT& point) {
  if (point.x == DBL_MAX || point.y == DBL_MAX) return {DBL_MAX, DBL_MAX};
  const GEOREFPOINT p = from.In(point);
  const double largest = std::abs(h[6] * p.x) + std::abs(h[7] * p.y) + std::abs(h[8]);
  if (!(Depth(h, p) > kHorizon * largest)) return {DBL_MAX, DBL_MAX};
  const GEOREFPOINT image = to.Out(Map(h, p));
  return std::isfinite(image.x) && std::isfinite(image.y) ? image : GEOREFPOINT{DBL_MAX, DBL_MAX};
}

}  // namespace

/// The mean distance from the centre becomes the square root of 2.
Centring Centring::Of(const std::vector<GEOREFPOINT>& points) {
  Centring centring;
  const auto count = static_cast<double>(points.size());
  for (const GEOREFPOINT& p : points) {
    centring.centre.x += p.x / count;
    centring.centre.y += p.y / count;
  }
  double distance = 0;
  for (const GEOREFPOINT& p : points) distance += std::hypot(p.x - centring.centre.x, p.y - centring.centre.y) / count;
  if (!(distance > 0) || !std::isfinite(distance)) RefuseLine();
  centring.scale = std::numbers::sqrt2 / distance;
  return centring;
}

Projective::Projective(const std::vector<GEOREFPOINT>& source, const std::vector<GEOREFPOINT>& destination)
    : m_source(Centring::Of(source)), m_destination(Centring::Of(destination)) {
  std::vector<GEOREFPOINT> from, to;
  for (const GEOREFPOINT& p : source) from.push_back(m_source.In(p));
  for (const GEOREFPOINT& p : destination) to.push_back(m_destination.In(p));
  m_forward = DirectLinear(from, to);
  CheckView(m_forward, from);
  Refine(m_forward, from, to);
  CheckView(m_forward, from);
  m_inverse = Adjugate(m_forward);
  if (Determinant(m_forward) < 0) {
    for (double& value : m_inverse) value = -value;
  }
}

GEOREFPOINT Projective::Forward(const GEOREFPOINT& point) const {
  return MapBeforeHorizon(m_forward, m_source, m_destination, point);
}

GEOREFPOINT Projective::Inverse(const GEOREFPOINT& point) const {
  return MapBeforeHorizon(m_inverse, m_destination, m_source, point);
}

ProjectiveCoefficients Projective::Coefficients() const {
  const Homography& h = m_forward;
  const auto& centre = m_source.centre;
  const auto row = [&](double x, double y, double constant) {  // of centred sources as one of those as they are
    return std::array<double, 3>{constant - m_source.scale * (x * centre.x + y * centre.y), m_source.scale * x,
                                 m_source.scale * y};
  };
  ProjectiveCoefficients c{row(h[0], h[1], h[2]), row(h[3], h[4], h[5]), row(h[6], h[7], h[8])};
  for (std::size_t i = 0; i < 3; ++i) {
    c.a[i] = c.a[i] / m_destination.scale + m_destination.centre.x * c.w[i];
    c.b[i] = c.b[i] / m_destination.scale + m_destination.centre.y * c.w[i];
  }
  if (!(std::abs(c.w[0]) > kHorizon)) return c;
  const double unit = c.w[0];
  for (auto* const part : {&c.a, &c.b, &c.w}) {
    for (double& value : *part) value /= unit;
  }
  return c;
}

}  // namespace orvex::tool
