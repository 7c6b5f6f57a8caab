// InverseSearch - the place that a transform of the plane carries to a given one.
#include "georef/InverseSearch.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <utility>

#include "Failure.h"

namespace orvex::tool {

namespace {

constexpr double kStep = 1e-5;        // of the sources' extent: cuts off 1e-10 of a slope, and rounds off as much
constexpr double kTolerance = 1e-10;  // of the destinations' extent, as well as warps keep to their controls
constexpr double kRounding = 16 * DBL_EPSILON;
constexpr double kFolded = 1e-6;  // of the affine transform's determinant
constexpr double kFlat = 1e-9;    // of the square of how extents are enlarged
constexpr int kMostSteps = 60, kMostHalvings = 12;

double Extent(const std::vector<GEOREFPOINT>& points) {
  const auto byX = [](const GEOREFPOINT& a, const GEOREFPOINT& b) { return a.x < b.x; };
  const auto byY = [](const GEOREFPOINT& a, const GEOREFPOINT& b) { return a.y < b.y; };
  const auto [west, east] = std::minmax_element(points.begin(), points.end(), byX);
  const auto [south, north] = std::minmax_element(points.begin(), points.end(), byY);
  return std::max(east->x - west->x, north->y - south->y);
}

/// Either side of a place, along x and along y.
std::vector<GEOREFPOINT> CrossAbout(const GEOREFPOINT& place, double step) {
  const auto [x, y] = place;
  return {{x + step, y}, {x - step, y}, {x, y + step}, {x, y - step}};
}

GEOREFPOINT Sum(const GEOREFPOINT& a, const GEOREFPOINT& b) {
  return {a.x + b.x, a.y + b.y};
}

double Distance(const GEOREFPOINT& a, const GEOREFPOINT& b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

}  // namespace

InverseSearch::InverseSearch(Transform transform, TransformMethod line, const std::vector<GEOREFPOINT>& source,
                             const std::vector<GEOREFPOINT>& destination)
    : m_transform(std::move(transform)), m_step(kStep * Extent(source)), m_tolerance(kTolerance * Extent(destination)) {
  std::vector<GEOREFPOINT> from = source, to = destination;
  GEOREF record{};
  record.Method = line;
  record.nControls = static_cast<int>(source.size());
  record.pSrc = from.data();
  record.pDst = to.data();
  CGeorefTransform start(&record);
  const double span = Extent(source), most = Extent(destination) / span;
  m_from = m_to = source.front();
  std::vector<GEOREFPOINT> cross = CrossAbout(m_from, span);
  if (!start.Forward(&m_to, 1) || !start.Forward(cross.data(), static_cast<int>(cross.size()))) {
    throw Failure("the controls determine no affine transform to start the way back from");
  }
  m_start = Between(cross, span);
  if (!(std::abs(m_start.Determinant()) > kFlat * most * most)) {
    throw Failure("the destinations lie on one line: the transform has no inverse");
  }
}

GEOREFPOINT InverseSearch::Image(const GEOREFPOINT& place) {
  m_points.assign(1, place);
  m_transform(m_points);
  return m_points.front();
}

InverseSearch::Slopes InverseSearch::Between(const std::vector<GEOREFPOINT>& cross, double step) {
  const auto slope = [step](const GEOREFPOINT& ahead, const GEOREFPOINT& behind) {
    return GEOREFPOINT{(ahead.x - behind.x) / (2 * step), (ahead.y - behind.y) / (2 * step)};
  };
  return {slope(cross[0], cross[1]), slope(cross[2], cross[3])};
}

InverseSearch::Slopes InverseSearch::SlopesAt(const GEOREFPOINT& place) {
  m_points = CrossAbout(place, m_step);
  m_transform(m_points);
  return Between(m_points, m_step);
}

GEOREFPOINT InverseSearch::Slopes::Solve(const GEOREFPOINT& image) const {
  const double determinant = Determinant();
  return {(image.x * y.y - image.y * y.x) / determinant, (image.y * x.x - image.x * x.y) / determinant};
}

bool InverseSearch::IsFolded(const Slopes& slopes) const {
  return !(slopes.Determinant() / m_start.Determinant() > kFolded);
}

/// Goes on for as long as the image comes nearer: to the last digits.
std::optional<GEOREFPOINT> InverseSearch::Find(const GEOREFPOINT& target) {
  GEOREFPOINT place = Sum(m_from, m_start.Solve({target.x - m_to.x, target.y - m_to.y}));
  GEOREFPOINT image = Image(place);
  double error = Distance(image, target);
  bool nearer = true;
  for (int step = 0; step < kMostSteps && nearer; ++step) {
    const GEOREFPOINT way = SlopesAt(place).Solve({target.x - image.x, target.y - image.y});
    nearer = false;
    double part = 1;
    for (int halving = 0; halving <= kMostHalvings && !nearer; ++halving, part /= 2) {
      const GEOREFPOINT next = Sum(place, {part * way.x, part * way.y}), nextImage = Image(next);
      const double nextError = Distance(nextImage, target);
      nearer = nextError < error;
      if (!nearer) continue;
      place = next;
      image = nextImage;
      error = nextError;
    }
  }
  const double rounding = kRounding * (std::abs(target.x) + std::abs(target.y));
  if (!(error <= m_tolerance + rounding) || IsFolded(SlopesAt(place))) return std::nullopt;
  return place;
}

}  // namespace orvex::tool
