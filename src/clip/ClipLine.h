// ClipLine - the boundary search along a segment, and a line cut to a domain.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "clip/Domain.h"

namespace orvex::detail {

/// Which ends of a segment lie inside the domain.
enum class Ends { Both, None, Start, End, SearchFailed };

/// Looks where a segment from a to b crosses the domain's edge; `inA` and `inB` say whether its ends lie inside.
/// `crossing` is set for Start and End: a point inside, within 0.001 degree of the edge in either coordinate.
/// SearchFailed when the end outside is not finite.
Ends FindCrossing(const Domain& domain, const PROJPOINT& a, bool inA, const PROJPOINT& b, bool inB,
                  PROJPOINT& crossing);

/// Lines of at least two points each: the points of all lines one after the other.
class Lines {
 public:
  std::size_t Count() const { return m_ends.size(); }
  std::span<PROJPOINT> operator[](std::size_t line) {
    return {m_points.data() + Begin(line), m_points.data() + m_ends[line]};
  }
  std::span<const PROJPOINT> operator[](std::size_t line) const {
    return {m_points.data() + Begin(line), m_points.data() + m_ends[line]};
  }
  void Clear() {
    m_points.clear();
    m_ends.clear();
  }
  void Reserve(std::size_t points) { m_points.reserve(points); }
  /// Adds points to the line at the end, which Finish closes.
  void Add(const PROJPOINT& point) { m_points.push_back(point); }
  void Add(std::span<const PROJPOINT> points) { m_points.insert(m_points.end(), points.begin(), points.end()); }
  void Finish() { m_ends.push_back(m_points.size()); }

 private:
  std::size_t Begin(std::size_t line) const { return line == 0 ? 0 : m_ends[line - 1]; }

  std::vector<PROJPOINT> m_points;
  std::vector<std::size_t> m_ends;
};

enum class ClipResult { Ok, TooFewPoints, SearchFailed };

/// Fills `pieces`, which is empty, with the pieces of a line that lie in the domain: maximal runs of surviving
/// segments, in order, cut ends included. A segment of which both ends are outside is dropped as a whole. One pass;
/// each point is tested once. A failure is logged.
ClipResult ClipLine(const Domain& domain, const PROJPOINT* pts, int nPts, Lines& pieces);

}  // namespace orvex::detail
