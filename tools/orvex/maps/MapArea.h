// MapArea - what of the globe a map shows, and how shapes have to be brought there.
#pragma once

#include <optional>
#include <string>

#include <orvex/projection.h>

#include "maps/MapShapes.h"

namespace orvex::tool {

/// How the map treats longitudes a full turn apart.
enum class Turn {
  Repeat,    ///< a band about the central meridian; the library repeats shapes that reach over its edge
  Periodic,  ///< the projection takes every longitude; its domain is cut out of the whole globe
  Box        ///< the map is cut to a box of longitudes here
};

struct MapArea {
  Turn turn;
  bool curved;                    ///< the edge of the domain is no meridian
  bool convex;                    ///< the whole domain is a convex figure on the map, its edge no simple line
  Bounds box;                     ///< drawn part, before the projection's own domain
  double meridian;                ///< western edge: shapes that wind round a pole are opened there
  double radius;                  ///< of the globe in map units
  std::optional<Points> outline;  ///< edge of the domain where it is a circle on the globe
};

/// The area for a projection, or what the user asked for as "W,S,E,N" (empty: the default). Throws Failure for a
/// projection that cannot be drawn.
MapArea ChooseArea(const PROJDATA& record, const std::string& bounds);

}  // namespace orvex::tool
