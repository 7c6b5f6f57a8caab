// Map - what it takes to draw a map: shapes cut along the exact edge of what it shows, projected and bent.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>

#include "Call.h"
#include "Projection.h"
#include "maps/MapArea.h"
#include "maps/MapDistortion.h"
#include "maps/MapGraticule.h"
#include "maps/MapPainter.h"

namespace orvex::web {

namespace {

using tool::Frame;
using tool::Spot;

constexpr double kTenths = 10;  // a picture is measured in tenths of a pixel

/// The record with the figure that it is computed on.
PROJDATA FigureOf(const PROJDATA& record) {
  PROJDATA figure = tool::Expanded(record);
  figure.Type = record.Type;
  return figure;
}

/// Collects what is drawn, in map units.
class PathsPen final : public tool::Pen {
 public:
  PathsPen(const Frame& frame, Paths& paths) : m_frame(frame), m_paths(paths) {}

  void Add(const Spot& spot) override { m_paths.points.push_back(m_frame.From(spot)); }
  void Finish(bool /*closed*/) override { m_paths.Finish(); }

 private:
  const Frame& m_frame;
  Paths& m_paths;
};

/// Shapes as the caller gave them, and as rings that end where they start.
struct Shapes {
  std::vector<tool::Points> lines;
  tool::Area rings;
};

tool::Points Joined(const PROJPOINT* first, const PROJPOINT* last) {
  tool::Points points;
  for (const PROJPOINT* p = first; p != last; ++p) {
    if (!std::isfinite(p->x) || !(std::abs(p->y) <= 90)) {
      throw tool::Failure("a shape has a coordinate that is not a finite number, or a latitude beyond a pole");
    }
    tool::AddPoint(points, *p);
  }
  return points;
}

class Map {
 public:
  Map(const Projection& projection, const std::optional<tool::Bounds>& bounds)
      : m_projector(projection.projector),
        m_area(tool::ChooseArea(projection.record, bounds, m_projector.Accuracy() == PA_STATED)),
        m_painter(m_projector, m_area),
        m_meter(m_projector, FigureOf(projection.record)) {
    // A part of this map may lie anywhere on its endless strip; exactly computed, longitudes would be brought back.
    if (projection.record.Type == PT_EQUICYLINDRICAL) m_projector.SetAccuracy(PA_STATED);
    Measure();
  }
  Map(const Map&) = delete;
  Map& operator=(const Map&) = delete;

  void SetPixel(double pixel) {
    if (!(pixel > 0) || !std::isfinite(pixel)) throw tool::Failure("the size of a pixel must be greater than zero");
    m_painter.SetFrame({kTenths / pixel, 0, 0});
  }

  /// West, south, east, north in map units.
  const tool::Bounds& Box() const { return m_box; }

  template <class Work>
  void Draw(Work work) {
    DrawTo(Result(), work);
  }
  /// The edge that the box was measured by serves every picture that shows no more detail.
  void DrawEdge() {
    if (m_painter.CurrentFrame().scale > m_edgeScale) MakeEdge();
    Result() = m_edge;
  }
  void DrawTissot(double step) {
    Draw([&](auto& painter, auto& pen) { tool::DrawTissot(painter, m_meter, m_area, step, pen); });
  }

  std::optional<PROJPOINT> Locate(const PROJPOINT& place) {
    const auto spot = m_painter.Locate(place);
    if (!spot) return std::nullopt;
    return m_painter.CurrentFrame().From(*spot);
  }

 private:
  template <class Work>
  void DrawTo(Paths& paths, Work work) {
    paths.Clear();
    PathsPen pen(m_painter.CurrentFrame(), paths);
    work(m_painter, pen);
  }
  void MakeEdge() {
    DrawTo(m_edge, [](auto& painter, auto& pen) { painter.FillAll(pen); });
    m_edgeScale = m_painter.CurrentFrame().scale;
  }

  void Measure() {
    constexpr double kDraft = 1e4;  // tenths of a pixel for the globe's radius
    m_painter.SetFrame({kDraft / m_area.radius, 0, 0});
    MakeEdge();
    constexpr double kNone = std::numeric_limits<double>::infinity();
    m_box = {kNone, kNone, -kNone, -kNone};
    for (const PROJPOINT& p : m_edge.points) {
      m_box = {std::min(m_box.west, p.x), std::min(m_box.south, p.y), std::max(m_box.east, p.x),
               std::max(m_box.north, p.y)};
    }
    if (!(m_box.east > m_box.west) || !(m_box.north > m_box.south)) {
      throw tool::Failure("nothing of the area lies in the projection's domain");
    }
  }

  CProjector m_projector;
  tool::MapArea m_area;
  tool::MapPainter m_painter;
  tool::DistortionMeter m_meter;
  tool::Bounds m_box{};
  Paths m_edge;
  double m_edgeScale = 0;  ///< of the frame that the edge is bent for
};

template <class Work>
int Draw(Map* map, Work work) {
  return Guarded(kFailed, [&] {
    map->Draw(work);
    return kDone;
  });
}

void CheckStep(double step, double least) {
  if (!(step >= least && step <= 180))
    throw tool::Failure("the step must be from " + std::to_string(least) + " to 180 degrees");
}

}  // namespace
}  // namespace orvex::web

using namespace orvex;
using namespace orvex::web;

/// `bounds`: west, south, east, north, or null for the usual part.
ORVEX_WEB Map* ow_map_create(const Projection* projection, const double* bounds) {
  return Guarded<Map*>(nullptr, [&] {
    std::optional<tool::Bounds> box;
    if (bounds != nullptr) {
      if (!(bounds[1] < bounds[3])) throw tool::Failure("bounds are west, south, east, north with south below north");
      box = tool::WithinTurn({bounds[0], bounds[1], bounds[2], bounds[3]});
      if (!box) throw tool::Failure("bounds: the longitudes must lie within one turn");
    }
    return std::make_unique<Map>(*projection, box).release();
  });
}

ORVEX_WEB void ow_map_delete(Map* map) {
  delete map;
}

/// Writes west, south, east, north in map units.
ORVEX_WEB void ow_map_box(const Map* map, double* box) {
  const tool::Bounds& b = map->Box();
  box[0] = b.west, box[1] = b.south, box[2] = b.east, box[3] = b.north;
}

ORVEX_WEB int ow_map_set_pixel(Map* map, double pixel) {
  return Guarded(kFailed, [&] {
    map->SetPixel(pixel);
    return kDone;
  });
}

ORVEX_WEB int ow_map_edge(Map* map) {
  return Guarded(kFailed, [&] {
    map->DrawEdge();
    return kDone;
  });
}

ORVEX_WEB int ow_map_graticule(Map* map, double step) {
  return Draw(map, [step](auto& painter, auto& pen) {
    CheckStep(step, 0.1);
    for (const double degrees : tool::Meridians(step)) painter.Draw(tool::Meridian(degrees), pen);
    for (const double degrees : tool::Parallels(step)) painter.Draw(tool::Parallel(degrees), pen);
  });
}

ORVEX_WEB int ow_map_fill(Map* map, const Shapes* shapes) {
  return Draw(map, [shapes](auto& painter, auto& pen) { painter.Fill(shapes->rings, pen); });
}

ORVEX_WEB int ow_map_lines(Map* map, const Shapes* shapes) {
  return Draw(map, [shapes](auto& painter, auto& pen) {
    for (const tool::Points& line : shapes->lines) painter.Draw(line, pen);
  });
}

ORVEX_WEB int ow_map_tissot(Map* map, double step) {
  return Guarded(kFailed, [&] {
    CheckStep(step, 1);
    map->DrawTissot(step);
    return kDone;
  });
}

/// Replaces a place by where it is on the map; 1 when the map shows it, 0 when not, -1 for a failure.
ORVEX_WEB int ow_map_locate(Map* map, PROJPOINT* place) {
  return Guarded(-1, [&] {
    const auto found = map->Locate(*place);
    if (found) *place = *found;
    return found ? 1 : 0;
  });
}

/// `starts` has one entry more than there are shapes.
ORVEX_WEB Shapes* ow_shapes_create(const PROJPOINT* points, const std::int32_t* starts, int count) {
  return Guarded<Shapes*>(nullptr, [&] {
    auto shapes = std::make_unique<Shapes>();
    for (int i = 0; i < count; ++i) {
      tool::Points line = Joined(points + starts[i], points + starts[i + 1]);
      if (line.size() < 2) continue;
      tool::Points ring = line;
      tool::AddPoint(ring, ring.front());  // the short way home
      if (ring.size() > 3) shapes->rings.push_back(std::move(ring));
      shapes->lines.push_back(std::move(line));
    }
    return shapes.release();
  });
}

ORVEX_WEB void ow_shapes_delete(Shapes* shapes) {
  delete shapes;
}

/// Writes six values for each place: scales along meridian and parallel, area scale, largest change of an angle, the
/// semi-axes of the indicatrix; not a number where there is nothing to measure.
ORVEX_WEB int ow_distortion(const Projection* projection, const PROJPOINT* places, int count, double* values) {
  return Guarded(kFailed, [&] {
    if (projection->record.Type == PT_LATLONG)
      throw tool::Failure("\"Unprojected Lat/Long\" is no map to be distorted");
    CProjector projector = projection->projector;
    const tool::DistortionMeter meter(projector, FigureOf(projection->record));
    for (int i = 0; i < count; ++i, values += 6) {
      std::fill(values, values + 6, std::numeric_limits<double>::quiet_NaN());
      if (!std::isfinite(places[i].x) || !std::isfinite(places[i].y)) continue;
      const auto d = meter.At(places[i]);
      if (!d) continue;
      values[0] = std::hypot(d->north.x, d->north.y);
      values[1] = std::hypot(d->east.x, d->east.y);
      values[2] = d->Area();
      values[3] = d->Angle();
      values[4] = d->most;
      values[5] = d->least;
    }
    return kDone;
  });
}
