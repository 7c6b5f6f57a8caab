// MapShapes - areas and lines in longitude and latitude: reading, joining the short way round.
#include "maps/MapShapes.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include "Failure.h"
#include "commands/Names.h"
#include "maps/Sphere.h"
#include "tables/Coordinate.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

constexpr double kOpposite = 1e-9;          // radians
constexpr std::size_t kNestingProbes = 16;  // points of a ring that have to lie inside another one

/// Reads one shape file; keeps the line number for messages.
class Reader {
 public:
  Reader(std::istream& in, std::string name) : m_in(in), m_name(std::move(name)) {}

  void ReadAll(std::vector<Points>& rings, std::vector<Points>& lines) {
    std::string kind, count;
    while (NextPair(kind, count)) {
      kind = Lower(kind);
      if (kind != "ring" && kind != "line" && kind != "arc") Fail("expected \"ring N\", \"line N\" or \"arc N\"");
      const bool ring = kind == "ring";
      const int nPts = ParseInteger(count, m_name + ":" + std::to_string(m_line) + ": number of points");
      if (nPts < (ring ? 3 : 2)) Fail("a ring has at least 3 points, a line at least 2");
      Points points;
      for (int i = 0; i < nPts; ++i) ReadPoint(points, kind == "arc");
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

  void ReadPoint(Points& points, bool greatCircle) {
    std::string x, y;
    if (!NextPair(x, y)) Fail("the file ends inside a shape");
    const auto lon = ParseAngle(x), lat = ParseAngle(y);
    if (!lon || !lat || std::abs(*lon) > 360 || std::abs(*lat) > 90) Fail("expected a longitude and a latitude");
    if (!greatCircle || points.empty()) return AddPoint(points, {*lon, *lat});
    try {
      AddGreatCircle(points, {*lon, *lat});
    } catch (const Failure& failure) {
      Fail(failure.what());
    }
  }

  std::istream& m_in;
  std::string m_name;
  int m_line = 0;
};

/// The next number of a ring of the fine outlines.
long NextNumber(const char*& text) {
  long value = 0;
  for (int shift = 0;; shift += 5) {
    const long group = *text++ - 63;
    value |= (group & 31) << shift;
    if (group < 32) break;
  }
  return value % 2 == 0 ? value / 2 : -(value + 1) / 2;
}

Points Decoded(const char* text) {
  constexpr double kUnit = 1e-3;  // degrees
  Points points;
  long x = 0, y = 0;
  while (*text != '\0') {
    x += NextNumber(text);
    y += NextNumber(text);
    points.push_back({kUnit * static_cast<double>(x), kUnit * static_cast<double>(y)});
  }
  AddPoint(points, points.front());
  return points;
}

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
    std::ifstream in;
    OpenInput(file, in);
    Reader(in, file).ReadAll(rings, lines);
    RequireEnd(file, in);
  }
  Shapes shapes(1);
  shapes[0].areas = Nested(std::move(rings));
  shapes[0].lines = std::move(lines);
  return shapes;
}

void AddPoint(Points& points, PROJPOINT p) {
  if (!points.empty()) p.x = points.back().x + std::remainder(p.x - points.back().x, 360);
  if (points.empty() || p.x != points.back().x || p.y != points.back().y) points.push_back(p);
}

Shapes ReadFineOutlines() {
  std::vector<Points> rings;
  for (const char* text : FineOutlines()) rings.push_back(Decoded(text));
  Shapes shapes(1);
  shapes[0].areas = Nested(std::move(rings));
  return shapes;
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
