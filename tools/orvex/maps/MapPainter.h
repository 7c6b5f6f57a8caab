// MapPainter - lines and areas cut to the map, projected, and drawn as the projection bends them.
#pragma once

#include <optional>
#include <vector>

#include <orvex/projection.h>

#include "maps/MapArea.h"
#include "maps/MapClip.h"
#include "maps/MapPath.h"

namespace orvex::tool {

class MapPainter {
 public:
  MapPainter(CProjector& projector, const MapArea& area) : m_projector(projector), m_area(area) {}

  void SetFrame(const Frame& frame) { m_frame = frame; }
  const Frame& CurrentFrame() const { return m_frame; }
  /// What of an area is on the map.
  void Fill(const Area& area, Pen& pen);
  /// What of a line, or of the outline of a ring, is on the map.
  void Draw(const Points& line, Pen& pen);
  /// Where a place is in the picture; nothing when the map does not show it.
  std::optional<Spot> Locate(const PROJPOINT& place);
  /// All that the map shows.
  void FillAll(Pen& pen);

 private:
  /// A point of a curve: of longitude and latitude, or of the edge of a domain.
  struct Sample {
    PROJPOINT place;
    double position;
  };
  class Curve;

  void FillWithin(const Area& area, std::size_t number, Pen& pen);
  void FillCut(const CutArea& cut, const Domain& domain, Pen& pen);
  void DrawPoints(const Points& points, bool reversed, const Domain& domain, Pen& pen);
  void DrawEdge(const Domain& domain, double from, double to, Pen& pen);

  CProjector& m_projector;
  const MapArea& m_area;
  Frame m_frame;
};

}  // namespace orvex::tool
