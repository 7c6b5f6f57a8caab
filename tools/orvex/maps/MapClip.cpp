// MapClip - cutting lines and areas to a domain.
#include "maps/MapClip.h"

#include <algorithm>
#include <cmath>

namespace orvex::tool {

namespace {

constexpr double kEdgeStep = 45;  // positions between points of an edge, beside its corners
constexpr double kNowhere = -1;   // position of an end that is not on the edge

/// What of a line lies between two crossings.
struct Run {
  Points points;
  double start = kNowhere, end = kNowhere;

  bool Whole() const { return start == kNowhere && end == kNowhere; }
};

/// Follows a line edge by edge.
class Walker {
 public:
  explicit Walker(const Domain& domain) : m_domain(domain) {}

  std::vector<Run> Follow(const Points& line) {
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
      FollowEdge(line[i], line[i + 1]);
      if (m_inside) m_runs.back().points.push_back(line[i + 1]);
    }
    return std::move(m_runs);
  }

  /// The last run goes on as the first where the ring starts inside; a first point on the edge may be a crossing.
  std::vector<Run> FollowRing(const Points& ring) {
    std::vector<Run> runs = Follow(ring);
    if (m_startedInside && !m_inside) runs.front().start = m_domain.NearestPosition(ring.front());
    if (!m_startedInside && m_inside) runs.back().end = m_domain.NearestPosition(ring.back());
    if (!m_startedInside || !m_inside || runs.size() < 2) return runs;
    Run& last = runs.back();
    const double turn = ring.back().x - ring.front().x;
    for (std::size_t i = 1; i < runs.front().points.size(); ++i) {
      last.points.push_back({runs.front().points[i].x + turn, runs.front().points[i].y});
    }
    last.end = runs.front().end;
    runs.erase(runs.begin());
    return runs;
  }

 private:
  void FollowEdge(const PROJPOINT& a, const PROJPOINT& b) {
    if (!m_started) {
      m_started = true;
      m_startedInside = m_inside = m_domain.StartsInside(a, b);
      if (m_inside) m_runs.push_back({{a}});
    }
    bool inside = m_inside;
    m_crossings.clear();
    m_domain.Follow(a, b, inside, m_crossings);
    for (const Crossing& crossing : m_crossings) {
      if (!m_inside) m_runs.push_back({{}, crossing.position});
      m_runs.back().points.push_back(crossing.place);
      if (m_inside) m_runs.back().end = crossing.position;
      m_inside = !m_inside;
    }
  }

  const Domain& m_domain;
  bool m_started = false, m_startedInside = false, m_inside = false;
  std::vector<Crossing> m_crossings;
  std::vector<Run> m_runs;
};

/// One end of a run on the edge.
struct End {
  double position;
  std::size_t run;
  bool last;
};

/// Joins the ends of runs along the parts of the edge that lie inside of the area.
class Joiner {
 public:
  Joiner(const Area& area, const Domain& domain, std::vector<Run> runs)
      : m_area(area), m_domain(domain), m_runs(std::move(runs)) {}

  CutArea Join() {
    CollectEnds();
    if (m_ends.empty()) {
      const double length = m_domain.Length();
      if (EdgeIsInside(length / 7)) m_cut.outlines.push_back({{OutlinePart::kEdge, false, 0, length}});
    } else {
      LinkEnds();
      for (std::size_t i = 0; i < m_ends.size(); ++i) FollowLinks(i);
    }
    for (std::size_t i = 0; i < m_runs.size(); ++i) {
      if (m_runs[i].Whole()) m_cut.outlines.push_back({{i, false, 0, 0}});
      m_cut.runs.push_back(std::move(m_runs[i].points));
    }
    return std::move(m_cut);
  }

 private:
  void CollectEnds() {
    for (std::size_t i = 0; i < m_runs.size(); ++i) {
      if (m_runs[i].Whole()) continue;
      m_ends.push_back({m_runs[i].start, i, false});
      m_ends.push_back({m_runs[i].end, i, true});
    }
    std::sort(m_ends.begin(), m_ends.end(), [](const End& a, const End& b) { return a.position < b.position; });
  }

  bool EdgeIsInside(double position) const { return Holds(m_area, m_domain.EdgeAt(position)); }

  /// Position of the end behind, counted on beyond the full length.
  double Behind(std::size_t i) const {
    return i + 1 < m_ends.size() ? m_ends[i + 1].position : m_ends[0].position + m_domain.Length();
  }

  /// The edge is inside between every second pair of neighbours; which ones, the widest gap says most safely.
  void LinkEnds() {
    std::size_t widest = 0;
    for (std::size_t i = 1; i < m_ends.size(); ++i) {
      if (Behind(i) - m_ends[i].position > Behind(widest) - m_ends[widest].position) widest = i;
    }
    const bool inside = EdgeIsInside((m_ends[widest].position + Behind(widest)) / 2);
    m_linkedOn.resize(m_ends.size());
    m_other.resize(m_runs.size());
    for (std::size_t i = 0; i < m_ends.size(); ++i) {
      m_linkedOn[i] = inside == ((i + widest) % 2 == 0);
      m_other[m_ends[i].run][m_ends[i].last] = i;
    }
    m_done.resize(m_ends.size(), false);
  }

  /// The outline that leaves the run of an end at that end.
  void FollowLinks(std::size_t start) {
    if (m_done[start]) return;
    Outline outline;
    std::size_t end = start;
    do {
      const std::size_t n = m_ends.size(), next = m_linkedOn[end] ? (end + 1) % n : (end + n - 1) % n;
      m_done[end] = m_done[next] = true;
      const double from = m_ends[end].position;
      const double to = m_linkedOn[end] ? Behind(end)
                        : end > 0       ? m_ends[next].position
                                        : m_ends[next].position - m_domain.Length();
      outline.push_back({OutlinePart::kEdge, false, from, to});
      outline.push_back({m_ends[next].run, m_ends[next].last, 0, 0});
      end = m_other[m_ends[next].run][!m_ends[next].last];
    } while (!m_done[end]);
    m_cut.outlines.push_back(std::move(outline));
  }

  const Area& m_area;
  const Domain& m_domain;
  std::vector<Run> m_runs;
  std::vector<End> m_ends;
  std::vector<bool> m_linkedOn;  ///< the edge is inside behind this end, not before it
  std::vector<bool> m_done;
  std::vector<std::array<std::size_t, 2>> m_other;  ///< of a run, the numbers of its two ends
  CutArea m_cut;
};

void AppendShortWay(Points& points, const Points& more, bool reversed) {
  if (more.empty()) return;
  const PROJPOINT& first = reversed ? more.back() : more.front();
  const double turn = points.empty() ? 0 : 360 * std::round((points.back().x - first.x) / 360);
  for (std::size_t i = 0; i < more.size(); ++i) {
    const PROJPOINT& p = more[reversed ? more.size() - 1 - i : i];
    points.push_back({p.x + turn, p.y});
  }
}

}  // namespace

std::vector<Points> CutLine(const Points& line, const Domain& domain) {
  const bool closed = line.size() > 2 && line.front().x == line.back().x && line.front().y == line.back().y;
  std::vector<Points> pieces;
  for (Run& run : closed ? Walker(domain).FollowRing(line) : Walker(domain).Follow(line)) {
    pieces.push_back(std::move(run.points));
  }
  return pieces;
}

CutArea Cut(const Area& area, const Domain& domain) {
  std::vector<Run> runs;
  for (const Points& ring : area) {
    std::vector<Run> more = Walker(domain).FollowRing(ring);
    runs.insert(runs.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
  }
  return Joiner(area, domain, std::move(runs)).Join();
}

std::vector<double> Stretches(const Domain& domain, double from, double to) {
  std::vector<double> positions{from, to};
  for (const double corner : domain.Corners()) {  // those between the ends, which may count beyond the full length
    const double least = std::min(from, to), most = std::max(from, to), length = domain.Length();
    for (double at = corner + length * std::ceil((least - corner) / length); at < most; at += length) {
      if (at > least) positions.push_back(at);
    }
  }
  std::sort(positions.begin(), positions.end());
  if (from > to) std::reverse(positions.begin(), positions.end());
  return positions;
}

Points EdgePoints(const Domain& domain, double from, double to) {
  const std::vector<double> positions = Stretches(domain, from, to);
  Points points{domain.EdgeAt(from)};
  for (std::size_t i = 0; i + 1 < positions.size(); ++i) {
    const double step = positions[i + 1] - positions[i];
    const int n = std::max(1, static_cast<int>(std::ceil(std::abs(step) / kEdgeStep)));
    for (int k = 1; k <= n; ++k) points.push_back(domain.EdgeAt(positions[i] + step * k / n));
  }
  return points;
}

Area AsRings(const CutArea& cut, const Domain& domain) {
  Area area;
  for (const Outline& outline : cut.outlines) {
    Points ring;
    for (const OutlinePart& part : outline) {
      if (part.run == OutlinePart::kEdge)
        AppendShortWay(ring, EdgePoints(domain, part.from, part.to), false);
      else
        AppendShortWay(ring, cut.runs[part.run], part.reversed);
    }
    if (ring.size() < 3) continue;
    ring.push_back({ring.back().x + std::remainder(ring.front().x - ring.back().x, 360), ring.front().y});
    area.push_back(std::move(ring));
  }
  return area;
}

}  // namespace orvex::tool
