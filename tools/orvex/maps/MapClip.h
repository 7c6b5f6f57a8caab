// MapClip - cutting lines and areas to a domain. An area that the edge cuts is closed along the edge itself: where the
// edge runs inside of the area follows from the order of the crossings along it, so that it does not matter how often a
// ring crosses it, itself or other rings.
#pragma once

#include <vector>

#include "maps/MapDomain.h"
#include "maps/MapShapes.h"

namespace orvex::tool {

/// The parts of a line that lie in the domain, in its order. A ring that lies in it as a whole stays closed; one that
/// starts inside has no end there.
std::vector<Points> CutLine(const Points& line, const Domain& domain);

/// A part of an outline: a run of points, either way round, or a stretch of the domain's edge.
struct OutlinePart {
  static constexpr std::size_t kEdge = static_cast<std::size_t>(-1);
  std::size_t run;  ///< number of the run, or kEdge
  bool reversed;
  double from, to;  ///< positions along the edge
};
using Outline = std::vector<OutlinePart>;

/// What of an area lies in a domain; the outlines are closed and count by the even-odd rule.
struct CutArea {
  std::vector<Points> runs;
  std::vector<Outline> outlines;
};

CutArea Cut(const Area& area, const Domain& domain);

/// A part of the edge divided at its corners.
std::vector<double> Stretches(const Domain& domain, double from, double to);
/// The edge of a domain as points; exact for a Box.
Points EdgePoints(const Domain& domain, double from, double to);
/// The area again as rings.
Area AsRings(const CutArea& cut, const Domain& domain);

}  // namespace orvex::tool
