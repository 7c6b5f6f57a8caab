// MapRings - joining points the short way round, and what lies inside of rings.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <numeric>
#include <optional>
#include <unordered_map>

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

/// Finds the boxes that may hold a place. Each box is kept in the few cells that it meets of a grid whose cells are
/// about as large as the box.
class BoxIndex {
 public:
  void Add(std::size_t number, const Bounds& box) {
    const int level = LevelOf(std::max(box.east - box.west, box.north - box.south));
    m_levels[static_cast<std::size_t>(level)] = true;
    const std::int64_t west = Column(level, box.west),
                       east = std::min(Column(level, box.east), west + (1 << level) - 1);
    for (std::int64_t x = west; x <= east; ++x) {
      for (std::int64_t y = Row(level, box.south); y <= Row(level, box.north); ++y)
        m_cells[Key(level, x, y)].push_back(number);
    }
  }

  template <class Take>
  void Find(const PROJPOINT& p, Take take) const {
    for (int level = 0; level < kLevels; ++level) {
      if (!m_levels[static_cast<std::size_t>(level)]) continue;
      const auto cell = m_cells.find(Key(level, Column(level, p.x), Row(level, p.y)));
      if (cell == m_cells.end()) continue;
      for (const std::size_t number : cell->second) take(number);
    }
  }

 private:
  static constexpr int kLevels = 20;  // down to cells of 40 m

  static double CellSize(int level) { return std::ldexp(360.0, -level); }
  static int LevelOf(double size) {
    int level = 0;
    while (level + 1 < kLevels && CellSize(level + 1) >= size) ++level;
    return level;
  }
  static std::int64_t Column(int level, double lon) {
    return static_cast<std::int64_t>(std::floor(lon / CellSize(level)));
  }
  static std::int64_t Row(int level, double lat) {
    return static_cast<std::int64_t>(std::floor((lat + 90) / CellSize(level)));
  }
  static std::uint64_t Key(int level, std::int64_t column, std::int64_t row) {
    const std::uint64_t turn = std::uint64_t{1} << level;
    return (static_cast<std::uint64_t>(level) << 48) | ((static_cast<std::uint64_t>(column) & (turn - 1)) << 24) |
           static_cast<std::uint64_t>(row);
  }

  std::array<bool, kLevels> m_levels{};
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> m_cells;
};

/// Which ring lies in which.
class Nesting {
 public:
  explicit Nesting(const std::vector<Points>& rings) : m_rings(rings), m_indexed(rings.size()) {
    for (const Points& ring : rings) {
      m_boxes.push_back(BoundsOf(ring));
      m_winds.push_back(WindsRoundPole(ring));
    }
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
    std::vector<std::size_t> outer = m_winding;
    m_index.Find({m_boxes[ring].west, m_boxes[ring].south}, [&](std::size_t place) { outer.push_back(place); });
    std::sort(outer.begin(), outer.end(), std::greater<>());
    for (const std::size_t place : outer) {
      const std::size_t candidate = m_added[place];
      if (BoxesNest(m_boxes[ring], m_boxes[candidate], m_winds[candidate]) && LiesIn(ring, candidate)) return candidate;
    }
    return std::nullopt;
  }

  void Add(std::size_t ring) {
    if (m_winds[ring])
      m_winding.push_back(m_added.size());
    else
      m_index.Add(m_added.size(), m_boxes[ring]);
    m_added.push_back(ring);
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
  BoxIndex m_index;                             ///< of places in m_added
  std::vector<std::size_t> m_added, m_winding;  ///< rings in their order; places there of those that wind round a pole
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
