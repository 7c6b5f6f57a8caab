// MapShading - distortion as coloured bands over the map, with their legend.
#pragma once

#include <string>
#include <vector>

#include "maps/MapContour.h"
#include "maps/MapDistortion.h"
#include "maps/MapPainter.h"
#include "maps/MapSvg.h"

namespace orvex::tool {

/// What is shown: how much lengths, areas or angles change.
enum class DistortionKind { OfScale, OfArea, OfAngle };

/// "scale", "area" or "angle"; throws Failure for anything else.
DistortionKind ParseDistortion(const std::string& text);

class MapShading {
 public:
  /// Measures the distortion over a picture of that size, tenths of a pixel.
  MapShading(DistortionKind kind, const DistortionMeter& meter, CProjector& projector, MapPainter& painter,
             const Frame& frame, const Spot& size);

  /// Bands that fill the frame of the map; lines between them.
  void Paint(MapSvg& svg) const;
  /// Boxes with their limits, to the left of a place; `bottom` is that of the legend.
  void PaintLegend(MapSvg& svg, double right, double bottom) const;

 private:
  void ChooseLimits();
  std::string ColorOf(std::size_t band) const;

  DistortionKind m_kind;
  Field2D m_field;
  std::vector<double> m_limits;  ///< between bands; there is one band more
  double m_least = 0, m_most = 0;
};

}  // namespace orvex::tool
