// MapArea - what of the globe a map shows, and how shapes have to be brought there.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <orvex/projection.h>

#include "maps/MapDomain.h"

namespace orvex::tool {

struct MapArea {
  std::vector<std::unique_ptr<const Domain>> domains;  ///< what is drawn lies in all of them; cut in this order
  std::size_t frame;                                   ///< the domain whose edge, cut to those behind it, is the frame
  double radius;                                       ///< of the globe in map units
};

/// A zone as the projection that stands behind it.
PROJDATA Expanded(PROJDATA record);

/// Bounds as people give them, east counted on beyond 180 where it lies west of west; nothing where the longitudes do
/// not lie within one turn.
std::optional<Bounds> WithinTurn(Bounds box);

/// The area for a projection, or what the user asked for; `stated` as the projection is computed. Throws Failure for a
/// projection that cannot be drawn.
MapArea ChooseArea(const PROJDATA& record, const std::optional<Bounds>& bounds, bool stated);

}  // namespace orvex::tool
