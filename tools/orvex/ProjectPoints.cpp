// ProjectPoints - projecting points in place so that one of them cannot end the work on the others.
#include "ProjectPoints.h"

#include <algorithm>
#include <cfloat>
#include <vector>

#include <shr/exception.h>

#include "Failure.h"

namespace orvex::tool {

namespace {

constexpr int kInconsistency = 20200;

/// False when a point raised the inconsistency; the points then hold anything.
bool Convert(CProjector& projector, Direction direction, std::span<PROJPOINT> points) {
  const int count = static_cast<int>(points.size());
  try {
    const bool done = direction == Direction::Forward ? projector.Forward(points.data(), count)
                                                      : projector.Inverse(points.data(), count);
    if (!done) throw Failure("the projection failed");
    return true;
  } catch (const shr::Exception& e) {
    if (e.MessageId() != kInconsistency) throw;
    return false;
  }
}

}  // namespace

CProjector MakeProjector(PROJDATA record, bool stated) {
  CProjector projector(&record);
  if (!stated && !projector.SetAccuracy(PA_EXACT)) {
    Warn("the parameters have no exact projection; computed as with --stated");
  }
  return projector;
}

void ProjectPoint(CProjector& projector, Direction direction, PROJPOINT& point) {
  if (!Convert(projector, direction, {&point, 1})) point = {DBL_MAX, DBL_MAX};
}

void ProjectPoints(CProjector& projector, Direction direction, std::span<PROJPOINT> points) {
  if (points.empty()) return;
  const std::vector<PROJPOINT> given(points.begin(), points.end());
  if (Convert(projector, direction, points)) return;
  std::copy(given.begin(), given.end(), points.begin());
  for (PROJPOINT& point : points) ProjectPoint(projector, direction, point);
}

}  // namespace orvex::tool
