// MapShapes - areas and lines in longitude and latitude: reading, joining the short way round.
#include "maps/MapShapes.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include "Failure.h"
#include "commands/Names.h"
#include "tables/Coordinate.h"
#include "tables/Files.h"

namespace orvex::tool {

namespace {

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
    const auto lon = ParseLongitude(x), lat = ParseLatitude(y);
    if (!lon || !lat || std::abs(*lon) > 360) Fail("expected a longitude and a latitude");
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

Shapes ReadFineOutlines() {
  std::vector<Points> rings;
  for (const char* text : FineOutlines()) rings.push_back(Decoded(text));
  Shapes shapes(1);
  shapes[0].areas = Nested(std::move(rings));
  return shapes;
}

}  // namespace orvex::tool
