// MapShapes - areas and lines in longitude and latitude: reading, joining the short way round.
#include "maps/MapShapes.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include "Failure.h"
#include "commands/Names.h"
#include "tables/Coordinate.h"

namespace orvex::tool {

namespace {

constexpr std::size_t kNestingProbes = 16;  // points of a ring that have to lie inside another one

/// Reads one shape file; keeps the line number for messages.
class Reader {
 public:
  Reader(std::istream& in, std::string name) : m_in(in), m_name(std::move(name)) {}

  void ReadAll(std::vector<Points>& rings, std::vector<Points>& lines) {
    std::string kind, count;
    while (NextPair(kind, count)) {
      kind = Lower(kind);
      if (kind != "ring" && kind != "line") Fail("expected \"ring N\" or \"line N\"");
      const bool ring = kind == "ring";
      const int nPts = ParseInteger(count, m_name + ":" + std::to_string(m_line) + ": number of points");
      if (nPts < (ring ? 3 : 2)) Fail("a ring has at least 3 points, a line at least 2");
      Points points;
      for (int i = 0; i < nPts; ++i) ReadPoint(points);
      if (ring) AddPoint(points, points.front());  // the short way home
      if (points.size() >= (ring ? 3U : 2U)) (ring ? rings : lines).push_back(std::move(points));
    }
  }

 private:
  [[noreturn]] void Fail(const std::string& what) const {
    throw Failure(m_name + ":" + std::to_string(m_line) + ": " + what);
  }

  bool NextPair(std::string& first, std::string& second) {
    std::string text;
    while (std::getline(m_in, text)) {
      ++m_line;
      std::replace(text.begin(), text.end(), ',', ' ');
      std::istringstream words(text.substr(0, text.find('#')));
      std::string more;
      if (!(words >> first)) continue;
      if (!(words >> second) || (words >> more)) Fail("expected two words");
      return true;
    }
    return false;
  }

  void ReadPoint(Points& points) {
    std::string x, y;
    if (!NextPair(x, y)) Fail("the file ends inside a shape");
    const auto lon = ParseAngle(x), lat = ParseAngle(y);
    if (!lon || !lat || std::abs(*lon) > 360 || std::abs(*lat) > 90) Fail("expected a longitude and a latitude");
    AddPoint(points, {*lon, *lat});
  }

  std::istream& m_in;
  std::string m_name;
  int m_line = 0;
};

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

Shapes ReadShapes(const std::string& file) {
  std::vector<Points> rings, lines;
  if (file.empty()) {
    for (const char* block : WorldOutlines()) {
      std::istringstream in(block);
      Reader(in, "world outlines").ReadAll(rings, lines);
    }
  } else {
    std::ifstream in(file);
    if (!in) throw Failure("cannot open " + file);
    Reader(in, file).ReadAll(rings, lines);
  }
  return {Nested(std::move(rings)), std::move(lines)};
}

void AddPoint(Points& points, PROJPOINT p) {
  if (!points.empty()) p.x = points.back().x + std::remainder(p.x - points.back().x, 360);
  if (points.empty() || p.x != points.back().x || p.y != points.back().y) points.push_back(p);
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
