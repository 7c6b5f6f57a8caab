// MapSheet - a whole picture: the map with its title, labels, scale bar and legend.
#pragma once

#include <string>
#include <vector>

#include <orvex/projection.h>

namespace orvex::tool {

constexpr int kSmallestSheet = 50, kLargestSheet = 20000;  // pixels

struct MapOptions {
  std::string land, overlay, points, bounds, title, distortion;
  std::string landColor = "#d9ceb0", seaColor = "#dcecf5", scaleBar = "auto";
  std::vector<std::string> greatCircles;  ///< LON1,LAT1,LON2,LAT2 each
  double graticule = 15;                  ///< degrees, 0 for none
  double tissot = 0;                      ///< degrees between ellipses, 0 for none
  double grid = 0;                        ///< map units, 0 for none
  int width = 0, height = 0;              ///< pixels, 0 for what the other asks for
  bool labels = true, zone = true;
  bool stated = false;  ///< computed as hosts of the library get it, else exactly
};

/// The picture as SVG. Throws Failure for options that cannot be understood and shapes that cannot be read.
std::string DrawMap(PROJDATA record, const MapOptions& options);

}  // namespace orvex::tool
