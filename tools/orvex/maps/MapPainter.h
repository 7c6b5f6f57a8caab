// MapPainter - shapes through the library's preclipping and projection into paths of a picture.
#pragma once

#include <vector>

#include <orvex/projection.h>

#include "maps/MapArea.h"
#include "maps/MapShapes.h"

namespace orvex::tool {

/// Position in the picture, y downwards, in tenths of a pixel.
struct Spot {
  double x, y;
};
using Path = std::vector<std::vector<Spot>>;  ///< open or closed pieces

/// From map units to the picture.
struct Frame {
  double scale = 1, x0 = 0, y0 = 0;

  Spot At(const PROJPOINT& p) const { return {x0 + scale * p.x, y0 - scale * p.y}; }
};

class MapPainter {
 public:
  MapPainter(CProjector& projector, const MapArea& area);

  void SetFrame(const Frame& frame) { m_frame = frame; }
  /// The inside of a ring.
  Path Fill(const Shape& ring);
  /// A line, or the outline of a ring.
  Path Draw(const Shape& line);
  /// The inside of all that the map shows.
  Path FillArea();

 private:
  enum class View { Clean, Mixed, Torn, Outside };
  class Collector;

  std::vector<Points> Copies(const Points& points) const;
  void FillPiece(const Points& ring, Path& path);
  void Subdivide(const Points& ring, const Bounds& box, Path& path);
  View Examine(const Bounds& box);
  bool IsTear(const PROJPOINT& a, const PROJPOINT& mapA, const PROJPOINT& b, const PROJPOINT& mapB) const;
  void Preclip(const Points& ring, Path& path);
  std::vector<Spot> Projected(const PROJPOINT* pts, int nPts, std::vector<std::vector<Spot>>* torn);
  PROJPOINT Project(PROJPOINT p);
  void Bend(const PROJPOINT& a, Spot sa, const PROJPOINT& b, Spot sb, int depth, std::vector<Spot>& out);

  CProjector& m_projector;
  const MapArea& m_area;
  Frame m_frame;
};

}  // namespace orvex::tool
