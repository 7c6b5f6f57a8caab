// MapPainter - lines and areas cut to the map, projected, and drawn as the projection bends them.
#include "maps/MapPainter.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "ProjectPoints.h"

namespace orvex::tool {

namespace {

constexpr double kStep = 5;        // degrees between the points of a curve before it is bent
constexpr double kEdgeStep = 0.5;  // the same along the edge of a domain
constexpr double kFlatness = 0.7;  // tenths of a pixel between a curve and its chord
constexpr int kDeepest = 10;       // halvings of a step
constexpr std::size_t kBatch = 256;

bool Plottable(const PROJPOINT& p) {
  return p.x != DBL_MAX && p.y != DBL_MAX;
}

}  // namespace

/// Projects the samples of a curve, many at a time, and adds more where it bends. Samples that cannot be plotted are
/// passed over.
class MapPainter::Curve {
 public:
  /// Along the edge of `domain`, or straight in longitude and latitude.
  Curve(MapPainter& painter, const Domain& domain, bool edge, Pen& pen)
      : m_projector(painter.m_projector), m_frame(painter.m_frame), m_domain(domain), m_edge(edge), m_pen(pen) {}

  void Add(const Sample& sample) {
    m_samples.push_back(sample);
    if (m_samples.size() >= kBatch) Flush();
  }

  void Flush() {
    if (m_samples.empty()) return;
    std::vector<Node> nodes = Projected(m_samples);
    for (std::size_t i = 0; i + 1 < nodes.size(); ++i) nodes[i].bent = nodes[i].plottable && nodes[i + 1].plottable;
    for (int depth = 0; depth < kDeepest && Refine(nodes); ++depth) {
    }
    for (std::size_t i = m_first ? 0 : 1; i < nodes.size(); ++i) {
      if (nodes[i].plottable) m_pen.Add(nodes[i].spot);
    }
    m_first = false;
    m_samples.erase(m_samples.begin(), m_samples.end() - 1);
  }

 private:
  struct Node {
    Sample sample;
    Spot spot;
    bool plottable;
    bool bent;  ///< the curve may bend between here and the next node
  };

  Sample Middle(const Sample& a, const Sample& b) const {
    const double position = (a.position + b.position) / 2;
    if (m_edge) return {m_domain.EdgeAt(position), position};
    return {{(a.place.x + b.place.x) / 2, (a.place.y + b.place.y) / 2}, position};
  }

  std::vector<Node> Projected(const std::vector<Sample>& samples) const {
    Points points;
    points.reserve(samples.size());
    for (const Sample& s : samples) points.push_back(m_domain.Brought(s.place));
    ProjectPoints(m_projector, Direction::Forward, points);
    std::vector<Node> nodes;
    nodes.reserve(samples.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
      nodes.push_back({samples[i], m_frame.At(points[i]), Plottable(points[i]), false});
    }
    return nodes;
  }

  /// Puts a node in the middle wherever the curve bends; false when it does nowhere any more.
  bool Refine(std::vector<Node>& nodes) const {
    std::vector<Sample> samples;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (nodes[i].bent) samples.push_back(Middle(nodes[i].sample, nodes[i + 1].sample));
    }
    if (samples.empty()) return false;
    const std::vector<Node> middles = Projected(samples);
    std::vector<Node> refined;
    refined.reserve(nodes.size() + middles.size());
    auto middle = middles.begin();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      refined.push_back(nodes[i]);
      if (!nodes[i].bent) continue;
      const Node added = *middle++;
      const Spot a = nodes[i].spot, b = nodes[i + 1].spot;
      const bool bent = added.plottable && Distance(added.spot, {(a.x + b.x) / 2, (a.y + b.y) / 2}) >= kFlatness;
      refined.back().bent = bent;
      if (!bent) continue;
      refined.push_back(added);
      refined.back().bent = true;
    }
    nodes = std::move(refined);
    return true;
  }

  CProjector& m_projector;
  const Frame& m_frame;
  const Domain& m_domain;
  bool m_edge, m_first = true;
  Pen& m_pen;
  std::vector<Sample> m_samples;
};

void MapPainter::Fill(const Area& area, Pen& pen) {
  FillWithin(area, 0, pen);
}

/// What of an area lies in the domains from the one of that number on.
void MapPainter::FillWithin(const Area& area, std::size_t number, Pen& pen) {
  const Domain& domain = *m_area.domains[number];
  const CutArea cut = Cut(area, domain);
  if (number + 1 < m_area.domains.size())
    FillWithin(AsRings(cut, domain), number + 1, pen);
  else
    FillCut(cut, domain, pen);
}

void MapPainter::FillCut(const CutArea& cut, const Domain& domain, Pen& pen) {
  for (const Outline& outline : cut.outlines) {
    for (const OutlinePart& part : outline) {
      if (part.run == OutlinePart::kEdge)
        DrawEdge(domain, part.from, part.to, pen);
      else
        DrawPoints(cut.runs[part.run], part.reversed, domain, pen);
    }
    pen.Finish(true);
  }
}

void MapPainter::Draw(const Points& line, Pen& pen) {
  std::vector<Points> pieces{line};
  for (const auto& domain : m_area.domains) {
    std::vector<Points> cut;
    for (const Points& piece : pieces) {
      std::vector<Points> more = CutLine(piece, *domain);
      std::move(more.begin(), more.end(), std::back_inserter(cut));
    }
    pieces = std::move(cut);
  }
  for (const Points& piece : pieces) {
    DrawPoints(piece, false, *m_area.domains.back(), pen);
    pen.Finish(false);
  }
}

std::optional<Spot> MapPainter::Locate(const PROJPOINT& place) {
  for (const auto& domain : m_area.domains) {
    if (!domain->StartsInside(place, place)) return std::nullopt;
  }
  PROJPOINT map = m_area.domains.back()->Brought(place);
  ProjectPoint(m_projector, Direction::Forward, map);
  if (!Plottable(map)) return std::nullopt;
  return m_frame.At(map);
}

void MapPainter::FillAll(Pen& pen) {
  const Domain& outer = *m_area.domains[m_area.frame];
  CutArea all;
  all.outlines.push_back({{OutlinePart::kEdge, false, 0, outer.Length()}});
  if (m_area.frame + 1 < m_area.domains.size())
    FillWithin(AsRings(all, outer), m_area.frame + 1, pen);
  else
    FillCut(all, outer, pen);
}

void MapPainter::DrawPoints(const Points& points, bool reversed, const Domain& domain, Pen& pen) {
  Curve curve(*this, domain, false, pen);
  const auto at = [&](std::size_t i) { return points[reversed ? points.size() - 1 - i : i]; };
  curve.Add({at(0), 0});
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    const PROJPOINT a = at(i), b = at(i + 1);
    const int n = std::max(1, static_cast<int>(std::ceil(std::max(std::abs(b.x - a.x), std::abs(b.y - a.y)) / kStep)));
    for (int k = 1; k < n; ++k) curve.Add({{a.x + (b.x - a.x) * k / n, a.y + (b.y - a.y) * k / n}, 0});
    curve.Add({b, 0});
  }
  curve.Flush();
}

void MapPainter::DrawEdge(const Domain& domain, double from, double to, Pen& pen) {
  Curve curve(*this, domain, true, pen);
  const std::vector<double> stretches = Stretches(domain, from, to);
  curve.Add({domain.EdgeAt(from), from});
  for (std::size_t i = 0; i + 1 < stretches.size(); ++i) {
    const double step = stretches[i + 1] - stretches[i];
    const int n = std::max(1, static_cast<int>(std::ceil(std::abs(step) / kEdgeStep)));
    for (int k = 1; k <= n; ++k) {
      const double position = stretches[i] + step * k / n;
      curve.Add({domain.EdgeAt(position), position});
    }
  }
  curve.Flush();
}

}  // namespace orvex::tool
