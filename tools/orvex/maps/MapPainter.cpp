// MapPainter - shapes through the library's preclipping and projection into paths of a picture.
//
// Preclipping joins the pieces of a cut ring by a few points of the domain's edge. That is exact where the edge is a
// meridian. Where it is a circle on the globe, and where the map is torn (the far side of an oblique cylinder, the
// antipode), a ring is first divided into boxes until each lies clear of the edge or is small, so that the gaps are.
#include "maps/MapPainter.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <numbers>
#include <span>

#include "Failure.h"
#include "ProjectPoints.h"

namespace orvex::tool {

namespace {

constexpr double kStepDeg = 1;       // longest step of a shape before and after preclipping
constexpr double kSmallBoxDeg = 1;   // boxes on the domain's edge are not divided further
constexpr double kTornBoxDeg = 0.1;  // torn boxes are divided down to this and left out
constexpr double kLargeBoxDeg = 45;  // larger boxes are divided even when every sample is outside
constexpr int kSamples = 9;          // in each direction of a box ...
constexpr int kFewSamples = 3;       // ... and of a small one
constexpr double kFewSamplesDeg = 2;
constexpr double kTornStretch = 8;   // a step of the map that is this much longer than on the globe ...
constexpr double kTornLength = 0.2;  // ... and longer than this part of the radius is a tear
constexpr double kFlatness = 0.7;    // tenths of a pixel between a curve and its chord
constexpr int kDeepest = 10;

bool Plottable(const PROJPOINT& p) {
  return p.x != DBL_MAX && p.y != DBL_MAX;
}

double Distance(Spot a, Spot b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

/// Arc between two points on the globe, radians.
double Arc(const PROJPOINT& a, const PROJPOINT& b) {
  constexpr double kRadians = std::numbers::pi / 180;
  const double dLat = std::sin((b.y - a.y) / 2 * kRadians), dLon = std::sin((b.x - a.x) / 2 * kRadians);
  return 2 * std::asin(std::min(
                 1.0, std::sqrt(dLat * dLat + std::cos(a.y * kRadians) * std::cos(b.y * kRadians) * dLon * dLon)));
}

/// The convex hull of all points (Andrew's monotone chain).
std::vector<Spot> Hull(const Path& path) {
  std::vector<Spot> spots, hull;
  for (const auto& piece : path) spots.insert(spots.end(), piece.begin(), piece.end());
  std::sort(spots.begin(), spots.end(), [](Spot a, Spot b) { return a.x != b.x ? a.x < b.x : a.y < b.y; });
  const auto leftTurn = [](Spot a, Spot b, Spot c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x) > 0;
  };
  for (int chain = 0; chain < 2; ++chain) {
    const std::size_t start = hull.size();
    for (const Spot& spot : spots) {
      while (hull.size() >= start + 2 && !leftTurn(hull[hull.size() - 2], hull.back(), spot)) hull.pop_back();
      hull.push_back(spot);
    }
    std::reverse(spots.begin(), spots.end());
  }
  return hull;
}

}  // namespace

/// What the callbacks of preclipping work with.
class MapPainter::Collector {
 public:
  Collector(MapPainter& painter, Path& path) : m_painter(painter), m_path(path) {}

  static bool ORVEX_CALL Fill(void* user, int nParts, const int* counts, PROJPOINT* pts) {
    auto& self = *static_cast<Collector*>(user);
    for (int part = 0; part < nParts; pts += counts[part++]) {
      self.m_path.push_back(self.m_painter.Projected(pts, counts[part], nullptr));
    }
    return true;
  }

  static bool ORVEX_CALL Line(void* user, int nPts, PROJPOINT* pts) {
    auto& self = *static_cast<Collector*>(user);
    std::vector<Spot> last = self.m_painter.Projected(pts, nPts, &self.m_path);
    self.m_path.push_back(std::move(last));
    return true;
  }

 private:
  MapPainter& m_painter;
  Path& m_path;
};

MapPainter::MapPainter(CProjector& projector, const MapArea& area) : m_projector(projector), m_area(area) {}

/// The shape where the map needs it; the repetition across the edge of a band is left to the library.
std::vector<Points> MapPainter::Copies(const Points& points) const {
  const Bounds b = BoundsOf(points);
  std::vector<Points> copies;
  switch (m_area.turn) {
    case Turn::Periodic:
      copies.push_back(Moved(points, -360 * std::round((b.west + b.east) / 720)));
      break;
    case Turn::Repeat:
      copies.push_back(Moved(points, 360 * std::ceil((m_area.meridian - b.west) / 360)));
      break;
    case Turn::Box:
      for (double turns = std::ceil((m_area.box.west - b.east) / 360); b.west + 360 * turns < m_area.box.east;
           ++turns) {
        copies.push_back(Moved(points, 360 * turns));
      }
      break;
  }
  return copies;
}

Path MapPainter::Fill(const Shape& ring) {
  Path path;
  Bounds cut = m_area.box;
  if (m_area.turn != Turn::Box) {
    cut.west = -1000;
    cut.east = 1000;
  }
  if (!WindsRoundPole(ring)) {
    for (const Points& copy : Copies(ring.points)) FillPiece(CutRing(copy, cut), path);
    return path;
  }
  // Opened at the edge of the map; where it crosses that meridian more than once, parts belong to the other side.
  const Points opened = CloseAlongPole(ring.points, m_area.meridian);
  if (m_area.turn != Turn::Box) {
    cut.west = m_area.meridian;
    cut.east = m_area.meridian + 360;
  }
  for (const double dx : {-360.0, 0.0, 360.0}) FillPiece(CutRing(Moved(opened, dx), cut), path);
  return path;
}

void MapPainter::FillPiece(const Points& ring, Path& path) {
  if (ring.empty()) return;
  if (m_area.curved)
    Subdivide(ring, BoundsOf(ring), path);
  else
    Preclip(ring, path);
}

void MapPainter::Subdivide(const Points& ring, const Bounds& box, Path& path) {
  if (ring.empty()) return;
  const double width = box.east - box.west, height = box.north - box.south, size = std::max(width, height);
  const View view = Examine(box);
  if (view == View::Clean || (view == View::Mixed && size <= kSmallBoxDeg)) return Preclip(ring, path);
  if (view == View::Outside && size <= kLargeBoxDeg) return;
  if (view == View::Torn && size <= kTornBoxDeg) return;
  Bounds first = box, second = box;
  if (width >= height)
    first.east = second.west = (box.west + box.east) / 2;
  else
    first.north = second.south = (box.south + box.north) / 2;
  for (const Bounds& half : {first, second}) Subdivide(CutRing(ring, half), half, path);
}

MapPainter::View MapPainter::Examine(const Bounds& box) {
  const double width = box.east - box.west, height = box.north - box.south;
  const int side = std::max(width, height) > kFewSamplesDeg ? kSamples : kFewSamples, count = side * side;
  std::array<PROJPOINT, kSamples * kSamples> globe, map;
  int inside = 0;
  for (int i = 0; i < count; ++i) {
    const int column = i % side, row = i / side;
    const double u = column / (side - 1.0), v = row / (side - 1.0);
    const auto k = static_cast<std::size_t>(i);
    globe[k] = {box.west + u * width, box.south + v * height};
    map[k] = m_projector.LLInProjection(&globe[k]) ? globe[k] : PROJPOINT{DBL_MAX, DBL_MAX};
    inside += Plottable(map[k]);
  }
  if (inside == 0) return View::Outside;
  ProjectPoints(m_projector, Direction::Forward, std::span(map).first(static_cast<std::size_t>(count)));
  const auto tearBetween = [&](int i, int k) {
    const auto a = static_cast<std::size_t>(i), b = static_cast<std::size_t>(k);
    return Plottable(map[a]) && Plottable(map[b]) && IsTear(globe[a], map[a], globe[b], map[b]);
  };
  int plottable = 0;
  for (int i = 0; i < count; ++i) {
    plottable += Plottable(map[static_cast<std::size_t>(i)]);
    if ((i + 1) % side != 0 && tearBetween(i, i + 1)) return View::Torn;
    if (i + side < count && tearBetween(i, i + side)) return View::Torn;
  }
  if (plottable < inside) return View::Torn;
  return inside == count ? View::Clean : View::Mixed;
}

/// Whether the map is torn between two points: much farther apart there than on the globe.
bool MapPainter::IsTear(const PROJPOINT& a, const PROJPOINT& mapA, const PROJPOINT& b, const PROJPOINT& mapB) const {
  const double length = std::hypot(mapA.x - mapB.x, mapA.y - mapB.y) / m_area.radius;
  return length > kTornLength && length > kTornStretch * Arc(a, b);
}

void MapPainter::Preclip(const Points& ring, Path& path) {
  const Points dense = Densified(ring, kStepDeg);
  const int count = static_cast<int>(dense.size());
  Collector collector(*this, path);
  if (!m_projector.LLPreclipPolygon(&collector, 1, &count, dense.data(), Collector::Fill, nullptr)) {
    throw Failure("clipping a ring to the projection failed");
  }
}

Path MapPainter::Draw(const Shape& line) {
  Path path;
  Collector collector(*this, path);
  for (const Points& copy : Copies(line.points)) {
    Bounds cut = m_area.box;
    if (m_area.turn != Turn::Box) {
      cut.west = -1000;
      cut.east = 1000;
    }
    for (const Points& piece : CutLine(copy, cut)) {
      const Points dense = Densified(piece, kStepDeg);
      if (!m_projector.LLPreclipPolyline(&collector, static_cast<int>(dense.size()), dense.data(), Collector::Line)) {
        throw Failure("clipping a line to the projection failed");
      }
    }
  }
  return path;
}

Path MapPainter::FillArea() {
  if (m_area.outline) {
    std::vector<Spot>
        circle;  // dense as it is; between its points a line of longitude and latitude would not follow it
    for (const PROJPOINT& p : *m_area.outline) {
      const PROJPOINT map = Project(p);
      if (Plottable(map)) circle.push_back(m_frame.At(map));
    }
    return {circle};
  }
  const Bounds& b = m_area.box;
  Path area =
      Fill({true, {{b.west, b.south}, {b.east, b.south}, {b.east, b.north}, {b.west, b.north}, {b.west, b.south}}});
  return m_area.convex ? Path{Hull(area)} : area;
}

PROJPOINT MapPainter::Project(PROJPOINT p) {
  ProjectPoint(m_projector, Direction::Forward, p);
  return p;
}

/// A piece in the picture, bent as the projection bends it. Points that cannot be plotted are passed over. Where `torn`
/// is given, the piece is broken at tears of the map and all but the last part is added there.
std::vector<Spot> MapPainter::Projected(const PROJPOINT* pts, int nPts, std::vector<std::vector<Spot>>* torn) {
  const Points dense = Densified({pts, pts + nPts}, kStepDeg);
  std::vector<Spot> out;
  PROJPOINT before{}, mapBefore{};
  Spot last{};
  for (const PROJPOINT& p : dense) {
    const PROJPOINT map = Project(p);
    if (!Plottable(map)) continue;
    const Spot spot = m_frame.At(map);
    if (!out.empty()) {
      if (torn != nullptr && IsTear(before, mapBefore, p, map)) {
        torn->push_back(std::move(out));
        out.clear();
      } else {
        Bend(before, last, p, spot, 0, out);
      }
    }
    out.push_back(spot);
    before = p;
    mapBefore = map;
    last = spot;
  }
  return out;
}

/// Adds points between two until the curve is straight enough between neighbours.
void MapPainter::Bend(const PROJPOINT& a, Spot sa, const PROJPOINT& b, Spot sb, int depth, std::vector<Spot>& out) {
  if (depth == kDeepest) return;
  const PROJPOINT middle{(a.x + b.x) / 2, (a.y + b.y) / 2};
  const PROJPOINT map = Project(middle);
  if (!Plottable(map)) return;
  const Spot spot = m_frame.At(map);
  if (Distance(spot, {(sa.x + sb.x) / 2, (sa.y + sb.y) / 2}) < kFlatness) return;
  Bend(a, sa, middle, spot, depth + 1, out);
  out.push_back(spot);
  Bend(middle, spot, b, sb, depth + 1, out);
}

}  // namespace orvex::tool
