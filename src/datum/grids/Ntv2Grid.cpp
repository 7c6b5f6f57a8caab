// Ntv2Grid - choice of sub-grid and interpolation. Source: National Transformation Version 2, Developer's Guide
// (Geomatics Canada, Geodetic Survey Division).
#include "datum/grids/Ntv2Grid.h"

#include <algorithm>

namespace orvex::detail {

namespace {

constexpr double kRadiansPerSecond = kRadiansPerDegree / 3600;

}  // namespace

bool Ntv2Grid::ShiftAt(const Position& point, Hint& hint, Position& shift) const {
  std::size_t index = hint;
  if (index >= m_grids.size() || !m_grids[index].decisive || !m_grids[index].Holds(point)) {
    index = Find(point);
    if (index == kNone) return false;
    hint = index;
  }
  shift = m_grids[index].ShiftAt(point);
  return true;
}

Ntv2Grid::Position Ntv2Grid::SubGrid::ShiftAt(const Position& p) const {
  const double x = (p.west - east) * columnsPerRadian, y = (p.north - south) * rowsPerRadian;
  const std::int32_t c = std::min(static_cast<std::int32_t>(x), columns - 2);  // one less on a closing edge
  const std::int32_t r = std::min(static_cast<std::int32_t>(y), rows - 2);
  const double fx = x - c, fy = y - r;
  const Node* southern =
      &nodes[static_cast<std::size_t>(r) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(c)];
  const Node* northern = southern + columns;
  const auto bilinear = [fx, fy](double a, double b, double c0, double d) {
    return (a + (b - a) * fx + (c0 - a) * fy + (a - b - c0 + d) * fx * fy) * kRadiansPerSecond;
  };
  return {bilinear(southern[0].west, southern[1].west, northern[0].west, northern[1].west),
          bilinear(southern[0].north, southern[1].north, northern[0].north, northern[1].north)};
}

// Southern and eastern edges are a sub-grid's own; the closing edges count only where no other sub-grid takes the
// point.
std::size_t Ntv2Grid::FindIn(const std::vector<std::uint32_t>& level, const Position& p) const {
  std::size_t closing = kNone;
  for (const std::uint32_t index : level) {
    if (!m_grids[index].HoldsClosed(p)) continue;
    if (m_grids[index].Holds(p)) return index;
    if (closing == kNone) closing = index;
  }
  return closing;
}

// The densest sub-grid: from the top level down while a child holds the point.
std::size_t Ntv2Grid::Find(const Position& p) const {
  std::size_t found = FindIn(m_topLevel, p);
  for (std::size_t next = found; next != kNone; next = FindIn(m_grids[found].children, p)) found = next;
  return found;
}

// Whether no sub-grid that stands before it on its level shares a point with the one at `place`, edges aside.
bool Ntv2Grid::ComesFirst(const std::vector<std::uint32_t>& level, std::size_t place) const {
  const SubGrid& g = m_grids[level[place]];
  return std::none_of(level.begin(), level.begin() + static_cast<std::ptrdiff_t>(place), [&](std::uint32_t earlier) {
    const SubGrid& h = m_grids[earlier];
    return g.south < h.north && h.south < g.north && g.east < h.west && h.east < g.west;
  });
}

// A sub-grid without children is decisive when it lies inside its ancestors and neither it nor one of them overlaps a
// sibling before it in the file: a search from the top then ends there for every point it holds, so that it may be
// tried first.
void Ntv2Grid::MarkDecisive() {
  constexpr std::size_t kMostCompared =
      2000;  // a larger level is searched each time, so that no file takes long to load
  struct Level {
    const std::vector<std::uint32_t>* members;
    const SubGrid* parent;
  };
  std::vector<Level> open{{&m_topLevel, nullptr}};
  while (!open.empty()) {
    const auto [members, parent] = open.back();
    open.pop_back();
    for (std::size_t place = 0; place < std::min(members->size(), kMostCompared); ++place) {
      SubGrid& g = m_grids[(*members)[place]];
      const bool inside = parent == nullptr || (g.south >= parent->south && g.north <= parent->north &&
                                                g.east >= parent->east && g.west <= parent->west);
      if (!inside || !ComesFirst(*members, place)) continue;
      if (g.children.empty()) {
        g.decisive = true;
      } else {
        open.push_back({&g.children, &g});
      }
    }
  }
}

}  // namespace orvex::detail
