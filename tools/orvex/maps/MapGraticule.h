// MapGraticule - meridians, parallels and Tissot's ellipses at the multiples of a step.
#pragma once

#include <vector>

#include "maps/MapDistortion.h"
#include "maps/MapPainter.h"

namespace orvex::tool {

/// The multiples of a step between two values.
std::vector<double> Multiples(double step, double least, double most);

/// Those of the graticule, degrees.
std::vector<double> Meridians(double step);
std::vector<double> Parallels(double step);
Points Meridian(double lon);
Points Parallel(double lat);

/// What small equal circles on the globe become, at the multiples of a step in degrees.
void DrawTissot(MapPainter& painter, const DistortionMeter& meter, const MapArea& area, double step, Pen& pen);

}  // namespace orvex::tool
