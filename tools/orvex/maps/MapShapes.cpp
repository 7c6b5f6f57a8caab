// MapShapes - rings and lines in longitude and latitude: reading, joining the short way round, cutting to a box.
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

/// One straight edge of a box: the side where sign * (coordinate - limit) >= 0 is kept.
struct Edge {
  bool ofLongitude;
  double limit;
  double sign;

  double Depth(const PROJPOINT& p) const { return sign * ((ofLongitude ? p.x : p.y) - limit); }

  PROJPOINT Crossing(const PROJPOINT& a, const PROJPOINT& b) const {
    const double t = Depth(a) / (Depth(a) - Depth(b));
    const PROJPOINT p{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
    return ofLongitude ? PROJPOINT{limit, p.y} : PROJPOINT{p.x, limit};
  }
};

std::vector<Edge> EdgesOf(const Bounds& box) {
  return {{true, box.west, 1}, {true, box.east, -1}, {false, box.south, 1}, {false, box.north, -1}};
}

/// Reads one shape file; keeps the line number for messages.
class Reader {
 public:
  Reader(std::istream& in, std::string name) : m_in(in), m_name(std::move(name)) {}

  void ReadAll(std::vector<Shape>& shapes) {
    std::string kind, count;
    while (NextPair(kind, count)) {
      kind = Lower(kind);
      if (kind != "ring" && kind != "line") Fail("expected \"ring N\" or \"line N\"");
      Shape shape{kind == "ring", {}};
      const int nPts = ParseInteger(count, m_name + ":" + std::to_string(m_line) + ": number of points");
      if (nPts < (shape.ring ? 3 : 2)) Fail("a ring has at least 3 points, a line at least 2");
      for (int i = 0; i < nPts; ++i) ReadPoint(shape.points);
      if (shape.ring) AddPoint(shape.points, shape.points.front());  // the short way home
      shapes.push_back(std::move(shape));
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

  static void AddPoint(Points& points, PROJPOINT p) {
    if (!points.empty()) p.x = points.back().x + std::remainder(p.x - points.back().x, 360);
    if (points.empty() || p.x != points.back().x || p.y != points.back().y) points.push_back(p);
  }

  std::istream& m_in;
  std::string m_name;
  int m_line = 0;
};

}  // namespace

std::vector<Shape> ReadShapes(const std::string& file) {
  std::vector<Shape> shapes;
  if (file.empty()) {
    for (const char* block : WorldOutlines()) {
      std::istringstream in(block);
      Reader(in, "world outlines").ReadAll(shapes);
    }
    return shapes;
  }
  std::ifstream in(file);
  if (!in) throw Failure("cannot open " + file);
  Reader(in, file).ReadAll(shapes);
  return shapes;
}

Bounds BoundsOf(const Points& points) {
  Bounds b{points[0].x, points[0].y, points[0].x, points[0].y};
  for (const PROJPOINT& p : points) {
    const double x = p.x, y = p.y;
    b = {std::min(b.west, x), std::min(b.south, y), std::max(b.east, x), std::max(b.north, y)};
  }
  return b;
}

Points Moved(Points points, double dx) {
  for (PROJPOINT& p : points) p.x += dx;
  return points;
}

bool WindsRoundPole(const Shape& shape) {
  return shape.ring && std::abs(shape.points.back().x - shape.points.front().x) > 180;
}

Points CloseAlongPole(const Points& ring, double meridian) {
  const double turn = ring.back().x - ring.front().x;
  Points once;  // from the meridian all the way round, and home along the pole
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    const double before = std::floor((ring[i].x - meridian) / 360),
                 after = std::floor((ring[i + 1].x - meridian) / 360);
    if (before == after) continue;
    const Edge cut{true, meridian + 360 * std::max(before, after), 1};
    const PROJPOINT crossing = cut.Crossing(ring[i], ring[i + 1]);
    once.push_back(crossing);
    once.insert(once.end(), ring.begin() + static_cast<std::ptrdiff_t>(i) + 1, ring.end());
    for (std::size_t k = 1; k <= i; ++k) once.push_back({ring[k].x + turn, ring[k].y});
    once.push_back({crossing.x + turn, crossing.y});
    break;
  }
  double sum = 0;
  for (const PROJPOINT& p : once) sum += p.y;
  const double pole = sum < 0 ? -90 : 90;
  once.push_back({once.back().x, pole});
  once.push_back({once.front().x, pole});
  once.push_back(once.front());
  const double first = once.front().x;
  return Moved(std::move(once), meridian - std::min(first, first + turn));
}

Points CutRing(Points ring, const Bounds& box) {
  for (const Edge& edge : EdgesOf(box)) {
    Points kept;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const PROJPOINT a = ring[i], b = ring[i + 1 < ring.size() ? i + 1 : 0];
      const bool inA = edge.Depth(a) >= 0, inB = edge.Depth(b) >= 0;
      if (inA) kept.push_back(a);
      if (inA != inB) kept.push_back(edge.Crossing(a, b));
    }
    ring.swap(kept);
    if (ring.size() < 3) return {};
  }
  const Bounds left = BoundsOf(ring);
  if (left.west == left.east || left.south == left.north) return {};  // touches the box only
  ring.push_back(ring.front());
  return ring;
}

std::vector<Points> CutLine(const Points& line, const Bounds& box) {
  std::vector<Points> pieces{line};
  for (const Edge& edge : EdgesOf(box)) {
    std::vector<Points> kept;
    for (const Points& piece : pieces) {
      bool open = false;
      for (std::size_t i = 0; i < piece.size(); ++i) {
        const bool in = edge.Depth(piece[i]) >= 0;
        if (i > 0 && in != (edge.Depth(piece[i - 1]) >= 0)) {
          if (in) kept.emplace_back();
          kept.back().push_back(edge.Crossing(piece[i - 1], piece[i]));
        } else if (in && !open) {
          kept.emplace_back();
        }
        if (in) kept.back().push_back(piece[i]);
        open = in;
      }
    }
    pieces.swap(kept);
  }
  std::erase_if(pieces, [](const Points& piece) { return piece.size() < 2; });
  return pieces;
}

Points Densified(const Points& points, double step) {
  Points dense;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    const PROJPOINT a = points[i], b = points[i + 1];
    const int n = std::max(1, static_cast<int>(std::ceil(std::max(std::abs(b.x - a.x), std::abs(b.y - a.y)) / step)));
    for (int k = 0; k < n; ++k) dense.push_back({a.x + (b.x - a.x) * k / n, a.y + (b.y - a.y) * k / n});
  }
  dense.push_back(points.back());
  return dense;
}

}  // namespace orvex::tool
