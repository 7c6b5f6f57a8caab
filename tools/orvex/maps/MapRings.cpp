// MapRings - joining points the short way round, and what lies inside of rings.
#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <memory>
#include <numeric>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>

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

/// Whether an edge crosses the meridian from a place to the north pole.
bool Crosses(const PROJPOINT& a, const PROJPOINT& b, const PROJPOINT& p) {
  if (a.y <= p.y && b.y <= p.y) return false;
  const double before = std::floor((a.x - p.x) / 360), after = std::floor((b.x - p.x) / 360);
  if (before == after) return false;
  const double x = p.x + 360 * std::max(before, after);
  return a.y + (x - a.x) / (b.x - a.x) * (b.y - a.y) > p.y;
}

bool HoldsNorthPole(const Points& ring) {
  double sum = 0;
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) sum += ring[i].y;
  return sum > 0 && WindsRoundPole(ring);
}

bool RingHolds(const Points& ring, const PROJPOINT& p) {
  bool odd = HoldsNorthPole(ring);
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) odd ^= Crosses(ring[i], ring[i + 1], p);
  return odd;
}

/// A ring that is asked for many places: its edges by the longitudes that they pass.
class IndexedRing {
 public:
  explicit IndexedRing(const Points& ring) : m_ring(ring), m_holdsPole(HoldsNorthPole(ring)) {
    double turns = 1;
    for (std::size_t i = 0; i + 1 < ring.size(); ++i) turns += std::abs(ring[i + 1].x - ring[i].x) / 360;
    const double edges = static_cast<double>(ring.size());
    m_edges.resize(static_cast<std::size_t>(
        std::clamp(4 * edges / turns, 1.0, edges)));  // together no more than some times the edges
    for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
      const auto [west, east] = std::minmax(ring[i].x, ring[i + 1].x);
      const auto last = std::min(Sector(east) + 1, Sector(west) + Count() - 2);  // one more on each side, for rounding
      for (auto sector = Sector(west) - 1; sector <= last; ++sector) At(sector).push_back(i);
    }
  }

  bool Holds(const PROJPOINT& p) {
    bool odd = m_holdsPole;
    for (const std::size_t i : At(Sector(p.x))) odd ^= Crosses(m_ring[i], m_ring[i + 1], p);
    return odd;
  }

 private:
  std::ptrdiff_t Count() const { return static_cast<std::ptrdiff_t>(m_edges.size()); }
  std::ptrdiff_t Sector(double lon) const {
    return static_cast<std::ptrdiff_t>(std::floor(lon / 360 * static_cast<double>(m_edges.size())));
  }
  std::vector<std::size_t>& At(std::ptrdiff_t sector) {
    return m_edges[static_cast<std::size_t>((sector % Count() + Count()) % Count())];
  }

  const Points& m_ring;
  bool m_holdsPole;
  std::vector<std::vector<std::size_t>> m_edges;
};

/// Finds the box added last that holds another one, moved by whole turns: a tree over all boxes, halved by their sides
/// in turn, whose nodes know what their boxes reach at most and which of them was added last.
class BoxTree {
 public:
  static constexpr double kInfinity = std::numeric_limits<double>::infinity();

  explicit BoxTree(const std::vector<Bounds>& boxes) : m_leaves(std::bit_ceil(std::max<std::size_t>(1, boxes.size()))) {
    for (const Bounds& box : boxes) m_boxes.push_back(NearGreenwich(box));
    m_reach.assign(2 * m_leaves, {kInfinity, kInfinity, -kInfinity, -kInfinity});
    m_last.assign(2 * m_leaves, 0);
    m_leafOf.resize(boxes.size());
    std::vector<std::size_t> order(boxes.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    Build(1, m_leaves, 0, order);
  }

  /// `place` counts from 1; 0 takes the box out again.
  void Add(std::size_t box, std::size_t place) {
    std::size_t node = m_leafOf[box];
    m_last[node] = place;
    while (node /= 2) m_last[node] = std::max(m_last[2 * node], m_last[2 * node + 1]);
  }

  /// The place of the last box that is accepted, 0 for none.
  template <class Accept>
  std::size_t Last(const Bounds& inner, Accept accept) const {
    std::size_t best = 0;
    Search(1, NearGreenwich(inner), best, accept);
    return best;
  }

 private:
  static Bounds Moved(const Bounds& box, double turn) {
    return {box.west + turn, box.south, box.east + turn, box.north};
  }

  /// Begins within a turn to the east.
  static Bounds NearGreenwich(const Bounds& box) {
    return std::isfinite(box.west) ? Moved(box, -360 * std::floor(box.west / 360)) : box;
  }

  /// As it is, or moved by a turn.
  static bool MayHold(const Bounds& reach, const Bounds& inner) {
    constexpr double kRounding = 1e-9;  // degrees; who accepts looks closely
    const double west = inner.west + kRounding, east = inner.east - kRounding;
    return reach.south <= inner.south && reach.north >= inner.north &&
           ((reach.west <= west && reach.east >= east) || (reach.west <= west + 360 && reach.east >= east + 360));
  }

  void Build(std::size_t node, std::size_t leaves, int side, std::span<std::size_t> boxes) {
    if (boxes.empty()) return;
    Bounds& reach = m_reach[node];
    for (const std::size_t i : boxes) {
      const Bounds& box = m_boxes[i];
      reach = {std::min(reach.west, box.west), std::min(reach.south, box.south), std::max(reach.east, box.east),
               std::max(reach.north, box.north)};
    }
    if (leaves == 1) {
      m_leafOf[boxes[0]] = node;
      return;
    }
    static constexpr double Bounds::*kSides[] = {&Bounds::west, &Bounds::south, &Bounds::east, &Bounds::north};
    const auto key = kSides[side];
    const std::size_t half = boxes.size() - boxes.size() / 2;
    std::nth_element(boxes.begin(), boxes.begin() + static_cast<std::ptrdiff_t>(half), boxes.end(),
                     [&](std::size_t i, std::size_t k) { return m_boxes[i].*key < m_boxes[k].*key; });
    Build(2 * node, leaves / 2, (side + 1) % 4, boxes.first(half));
    Build(2 * node + 1, leaves / 2, (side + 1) % 4, boxes.subspan(half));
  }

  template <class Accept>
  void Search(std::size_t node, const Bounds& inner, std::size_t& best, Accept accept) const {
    if (m_last[node] <= best || !MayHold(m_reach[node], inner)) return;
    if (node >= m_leaves) {
      if (accept(m_last[node])) best = m_last[node];
      return;
    }
    const std::size_t first = 2 * node + (m_last[2 * node] < m_last[2 * node + 1] ? 1 : 0);
    Search(first, inner, best, accept);
    Search(first ^ 1, inner, best, accept);
  }

  std::size_t m_leaves;
  std::vector<Bounds> m_boxes, m_reach;  ///< m_reach: what a node's boxes reach
  std::vector<std::size_t> m_last, m_leafOf;
};

/// Which ring lies in which.
class Nesting {
 public:
  explicit Nesting(const std::vector<Points>& rings) : m_rings(rings), m_indexed(rings.size()) {
    std::vector<Bounds> reaches;
    constexpr double kAny = BoxTree::kInfinity;
    for (const Points& ring : rings) {
      m_boxes.push_back(BoundsOf(ring));
      m_winds.push_back(WindsRoundPole(ring));
      reaches.push_back(m_winds.back() ? Bounds{-kAny, -kAny, kAny, kAny} : m_boxes.back());
    }
    m_tree.emplace(reaches);
  }

  /// Numbers of the rings, larger ones first: whatever holds a ring comes before it.
  std::vector<std::size_t> LargerFirst() const {
    std::vector<std::size_t> order(m_rings.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto size = [&](std::size_t i) {
      return (m_boxes[i].east - m_boxes[i].west) * (m_boxes[i].north - m_boxes[i].south);
    };
    std::stable_sort(order.begin(), order.end(), [&](std::size_t i, std::size_t k) { return size(i) > size(k); });
    return order;
  }

  /// The smallest of the rings added so far that a ring lies in.
  std::optional<std::size_t> InnermostAbout(std::size_t ring) {
    const std::size_t last = m_tree->Last(m_boxes[ring], [&](std::size_t place) {
      const std::size_t outer = m_added[place - 1];
      return BoxesNest(m_boxes[ring], m_boxes[outer], m_winds[outer]) && LiesIn(ring, outer);
    });
    return last > 0 ? std::optional(m_added[last - 1]) : std::nullopt;
  }

  void Add(std::size_t ring) {
    m_added.push_back(ring);
    const Points& points = m_rings[ring];
    const std::string_view bytes(reinterpret_cast<const char*>(points.data()), points.size() * sizeof points[0]);
    const auto [twin, isNew] = m_twins.try_emplace(bytes, ring);
    if (!isNew) m_tree->Add(std::exchange(twin->second, ring), 0);  // what lies in one of two equal rings lies in both
    m_tree->Add(ring, m_added.size());
  }

 private:
  bool LiesIn(std::size_t inner, std::size_t outer) {
    auto& indexed = m_indexed[outer];
    if (!indexed) indexed = std::make_unique<IndexedRing>(m_rings[outer]);
    const Points& points = m_rings[inner];
    const std::size_t step = std::max<std::size_t>(1, points.size() / kNestingProbes);
    for (std::size_t i = 0; i < points.size(); i += step) {
      if (!indexed->Holds(points[i])) return false;
    }
    return true;
  }

  const std::vector<Points>& m_rings;
  std::vector<Bounds> m_boxes;
  std::vector<bool> m_winds;
  std::vector<std::unique_ptr<IndexedRing>> m_indexed;
  std::optional<BoxTree> m_tree;
  std::unordered_map<std::string_view, std::size_t> m_twins;  ///< the last of those whose points are the same
  std::vector<std::size_t> m_added;                           ///< rings in their order
};

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
  constexpr std::size_t kHole = static_cast<std::size_t>(-1);
  Nesting nesting(rings);
  std::vector<Area> areas;
  std::vector<std::size_t> areaOf(rings.size(), kHole);
  for (const std::size_t ring : nesting.LargerFirst()) {
    const auto outer = nesting.InnermostAbout(ring);
    nesting.Add(ring);
    if (outer && areaOf[*outer] != kHole) {
      areas[areaOf[*outer]].push_back(rings[ring]);
    } else {
      areaOf[ring] = areas.size();
      areas.push_back({rings[ring]});
    }
  }
  return areas;
}

}  // namespace orvex::tool
