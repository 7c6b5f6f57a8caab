// MapRings - joining points the short way round, and what lies inside of rings.
#include <algorithm>
#include <cmath>

#include "Failure.h"
#include "maps/MapShapes.h"
#include "maps/Sphere.h"

namespace orvex::tool {

namespace {

constexpr double kOpposite = 1e-9;          // radians
constexpr std::size_t kNestingProbes = 16;  // points of a ring that have to lie inside another one

/// Whether the box of a ring, moved by whole turns, may lie in another one's.
bool BoxesNest(const Bounds& inner, const Bounds& outer, bool outerWinds) {
  if (inner.south < outer.south && !outerWinds) return false;
  if (inner.north > outer.north && !outerWinds) return false;
  if (outerWinds) return true;
  const double turn = 360 * std::ceil((outer.west - inner.west) / 360);
  return inner.east + turn <= outer.east;
}

/// Counts the crossings of the meridian from the place to the north pole.
bool RingHolds(const Points& ring, const PROJPOINT& p) {
  bool odd = false;
  double sum = 0;
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    const PROJPOINT a = ring[i], b = ring[i + 1];
    sum += a.y;
    if (a.y <= p.y && b.y <= p.y) continue;
    const double before = std::floor((a.x - p.x) / 360), after = std::floor((b.x - p.x) / 360);
    if (before == after) continue;
    const double x = p.x + 360 * std::max(before, after);
    if (a.y + (x - a.x) / (b.x - a.x) * (b.y - a.y) > p.y) odd = !odd;
  }
  return odd != (sum > 0 && WindsRoundPole(ring));
}

bool LiesIn(const Points& inner, const Points& outer) {
  const std::size_t step = std::max<std::size_t>(1, inner.size() / kNestingProbes);
  for (std::size_t i = 0; i < inner.size(); i += step) {
    if (!RingHolds(outer, inner[i])) return false;
  }
  return true;
}

}  // namespace

void AddPoint(Points& points, PROJPOINT p) {
  if (!points.empty()) p.x = points.back().x + std::remainder(p.x - points.back().x, 360);
  if (points.empty() || p.x != points.back().x || p.y != points.back().y) points.push_back(p);
}

void AddGreatCircle(Points& points, const PROJPOINT& to) {
  const PROJPOINT from = points.back();
  const Vector a = UnitVector(from.x, from.y), b = UnitVector(to.x, to.y), normal = Cross(a, b);
  const double sine = std::sqrt(Dot(normal, normal)), arc = std::atan2(sine, Dot(a, b));
  if (sine < kOpposite && arc > 1) throw Failure("no single great circle joins two opposite points");
  const int n = std::max(1, static_cast<int>(std::ceil(arc / kRadians)));  // a point each degree
  for (int k = 1; k < n; ++k) {
    const double u = std::sin(arc * (n - k) / n), v = std::sin(arc * k / n);
    AddPoint(points, PlaceOf({u * a.x + v * b.x, u * a.y + v * b.y, u * a.z + v * b.z}));
  }
  AddPoint(points, to);
}

Bounds BoundsOf(const Points& points) {
  Bounds b{points[0].x, points[0].y, points[0].x, points[0].y};
  for (const PROJPOINT& p : points) {
    const double x = p.x, y = p.y;
    b = {std::min(b.west, x), std::min(b.south, y), std::max(b.east, x), std::max(b.north, y)};
  }
  return b;
}

bool WindsRoundPole(const Points& ring) {
  return std::llround((ring.back().x - ring.front().x) / 360) % 2 != 0;
}

bool Holds(const Area& area, const PROJPOINT& p) {
  bool odd = false;
  for (const Points& ring : area) odd ^= RingHolds(ring, p);
  return odd;
}

std::vector<Area> Nested(std::vector<Points> rings) {
  std::vector<Bounds> boxes;
  std::vector<std::size_t> order;
  for (const Points& ring : rings) {
    order.push_back(boxes.size());
    boxes.push_back(BoundsOf(ring));
  }
  const auto size = [&](std::size_t i) { return (boxes[i].east - boxes[i].west) * (boxes[i].north - boxes[i].south); };
  std::stable_sort(order.begin(), order.end(), [&](std::size_t i, std::size_t k) { return size(i) > size(k); });
  constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  std::vector<Area> areas;
  std::vector<std::size_t> areaOf(rings.size(), kNone);  // of those that are no holes
  std::vector<bool> winds;
  for (const Points& ring : rings) winds.push_back(WindsRoundPole(ring));
  for (std::size_t n = 0; n < order.size(); ++n) {
    const std::size_t ring = order[n];
    std::size_t depth = 0, innermost = kNone;
    for (std::size_t m = 0; m < n; ++m) {
      const std::size_t outer = order[m];
      if (!BoxesNest(boxes[ring], boxes[outer], winds[outer]) || !LiesIn(rings[ring], rings[outer])) continue;
      ++depth;
      innermost = outer;
    }
    if (depth % 2 == 1 && areaOf[innermost] != kNone) {
      areas[areaOf[innermost]].push_back(rings[ring]);
    } else {
      areaOf[ring] = areas.size();
      areas.push_back({rings[ring]});
    }
  }
  return areas;
}

}  // namespace orvex::tool
