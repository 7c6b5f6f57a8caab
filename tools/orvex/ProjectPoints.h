// ProjectPoints - projecting points in place so that one of them cannot end the work on the others.
#pragma once

#include <span>

#include <orvex/projection.h>

namespace orvex::tool {

/// A projection that computes exactly, or `stated`: as hosts of the library get it. Throws shr::Exception for bad
/// parameters.
CProjector MakeProjector(PROJDATA record, bool stated);

enum class Direction { Forward, Inverse };

/// Projects a point in place. One at which the library reports an internal inconsistency (the pole of a Bonne map about
/// it) has no place on the map: it becomes DBL_MAX like any other such point.
void ProjectPoint(CProjector& projector, Direction direction, PROJPOINT& point);

/// The same for many points.
void ProjectPoints(CProjector& projector, Direction direction, std::span<PROJPOINT> points);

}  // namespace orvex::tool
