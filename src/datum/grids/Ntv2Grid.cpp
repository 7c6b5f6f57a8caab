// Ntv2Grid - choice of sub-grid and interpolation. Source: National Transformation Version 2, Developer's Guide
// (Geomatics Canada, Geodetic Survey Division).
#include "datum/grids/Ntv2Grid.h"

#include <algorithm>

namespace orvex::detail {

Ntv2Cell Ntv2Grid::CellAt(const Position& point, Hint& hint) const {
  std::size_t index = hint;
  if (index >= m_grids.size() || !m_grids[index].decisive || !m_grids[index].Holds(point)) {
    index = Find(point);
    if (index == kNone) return {};
    hint = index;
  }
  return m_grids[index].CellAt(point);
}

Ntv2Cell FindNtv2Cell(const Ntv2Step& step, double west, double north) {
  return step.grid->CellAt({west, north}, step.hint);
}

bool Ntv2Grid::ShiftAt(const Position& point, Hint& hint, Position& shift) const {
  const Ntv2Step step{this, hint};
  bool found = false;
  const auto [west, north] = detail::ShiftAt<double>(step, {point.west, point.north}, true, found);
  if (found) shift = {west, north};
  hint = step.hint;
  return found;
}

Ntv2Cell Ntv2Grid::SubGrid::CellAt(const Position& p) const {
  const double x = (p.west - east) * columnsPerRadian, y = (p.north - south) * rowsPerRadian;
  const std::int32_t c = std::min(static_cast<std::int32_t>(x), columns - 2);  // one less on a closing edge
  const std::int32_t r = std::min(static_cast<std::int32_t>(y), rows - 2);
  const Ntv2Node* southern =
      &nodes[static_cast<std::size_t>(r) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(c)];
  return {x - c, y - r, southern, southern + columns};
}

// Southern and eastern edges are a sub-grid's own; the closing edges count only where no other sub-grid takes the
// point.
std::size_t Ntv2Grid::FindIn(const Level& level, const Position& p) const {
  if (level.index) {
    const std::uint32_t place = level.index->First(p.west, p.north);
    return place == SubGridIndex::kNone ? kNone : level.members[place];
  }
  std::size_t closing = kNone;
  for (const std::uint32_t index : level.members) {
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
  struct Family {
    const std::vector<std::uint32_t>* members;
    const SubGrid* parent;
  };
  std::vector<Family> open{{&m_topLevel.members, nullptr}};
  while (!open.empty()) {
    const auto [members, parent] = open.back();
    open.pop_back();
    for (std::size_t place = 0; place < std::min(members->size(), kMostCompared); ++place) {
      SubGrid& g = m_grids[(*members)[place]];
      const bool inside = parent == nullptr || (g.south >= parent->south && g.north <= parent->north &&
                                                g.east >= parent->east && g.west <= parent->west);
      if (!inside || !ComesFirst(*members, place)) continue;
      if (g.children.members.empty()) {
        g.decisive = true;
      } else {
        open.push_back({&g.children.members, &g});
      }
    }
  }
}

void Ntv2Grid::MakeIndex(Level& level) const {
  constexpr std::size_t kMostSearched = 32;  // one after the other, which takes less time up to there
  if (level.members.size() <= kMostSearched) return;
  std::vector<SubGridLimits> limits;
  for (const std::uint32_t member : level.members) limits.push_back(m_grids[member]);
  level.index = std::make_unique<const SubGridIndex>(limits);
}

void Ntv2Grid::MakeIndexes() {
  MakeIndex(m_topLevel);
  for (SubGrid& g : m_grids) MakeIndex(g.children);
}

}  // namespace orvex::detail
