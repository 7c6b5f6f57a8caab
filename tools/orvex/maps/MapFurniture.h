// MapFurniture - lines and marks that explain a map: graticule, grid, zones, scale bar, Tissot's ellipses.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "maps/MapDistortion.h"
#include "maps/MapGraticule.h"
#include "maps/MapLabels.h"
#include "maps/MapPainter.h"
#include "maps/MapSvg.h"

namespace orvex::tool {

/// What UTM and state plane zones have; all empty for other projections.
struct ZoneLines {
  std::vector<Points> borders, axes;  ///< axes: central meridian, standard parallels
};
ZoneLines LinesOfZone(const PROJDATA& record);
/// A UTM zone; state plane zones follow counties, which are not known here.
std::optional<Area> ZoneArea(const PROJDATA& record);
/// "Central meridian 15 E ..." for a zone, else empty.
std::string ZoneNote(const PROJDATA& record);

/// A scale bar of a round length.
struct ScaleBar {
  double length;  ///< tenths of a pixel
  std::string text;
};

/// Nothing where the scale differs by more than a tenth over the picture (unless wanted all the same: then that of the
/// middle) or the middle of the picture shows no place.
std::optional<ScaleBar> MeasureScale(CProjector& projector, MapPainter& painter, const DistortionMeter& meter,
                                     const Frame& frame, const Spot& size, bool always);
/// Answers where it ends on the right.
double AddScaleBar(MapSvg& svg, const ScaleBar& bar, double left, double bottom);

/// Lines of equal projected coordinates and their labels at the lower and left edge of the map.
struct ProjectedGrid {
  std::string lines;
  std::vector<Label> labels;
};
/// Throws Failure for a step that gives too many lines.
ProjectedGrid DrawGrid(const std::vector<Polyline>& outline, const Frame& frame, double step);

/// What small equal circles on the globe become, at the multiples of a step in degrees.
void AddTissot(MapSvg& svg, MapPainter& painter, const DistortionMeter& meter, const MapArea& area, double step);

}  // namespace orvex::tool
