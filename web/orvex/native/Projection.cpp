// Projection - projections by their parameters, conversion of points, clipping.
#include "Projection.h"

#include <algorithm>
#include <span>
#include <vector>

#include "Call.h"
#include "ProjectPoints.h"
#include "maps/MapDistortion.h"

namespace orvex::web {

namespace {

constexpr std::size_t kBlock = 1024;  // points; a block stays in the processor's fastest memory
constexpr int kWrapId = 0;            // of the one field that the catalogue does not have

/// The parameters that the next projection is made of.
PROJDATA& Draft() {
  static PROJDATA draft;
  return draft;
}

ProjDataType TypeOf(int id) {
  ProjDataType type{};
  if (!ProjParamInfo(id, nullptr, &type, nullptr, nullptr)) throw tool::Failure("there is no such parameter");
  return type;
}

template <class Stored>
void Store(int id, double value) {
  auto stored = static_cast<Stored>(value);
  ProjSetParam(&Draft(), id, &stored);
}

template <class Stored>
double Load(PROJDATA& record, int id) {
  Stored stored{};
  ProjGetParam(&record, id, &stored);
  return static_cast<double>(stored);
}

void Convert(Projection& projection, tool::Direction direction, std::span<PROJPOINT> points) {
  for (std::size_t first = 0; first < points.size(); first += kBlock) {
    const auto block = points.subspan(first, std::min(kBlock, points.size() - first));
    tool::ProjectPoints(projection.projector, direction, block);
    MarkUnplottable(block.data(), static_cast<int>(block.size()));
  }
}

bool ORVEX_CALL AddLine(void* /*user*/, int count, PROJPOINT* points) {
  Result().points.insert(Result().points.end(), points, points + count);
  Result().Finish();
  return true;
}

bool ORVEX_CALL AddRings(void* user, int parts, const int* counts, PROJPOINT* points) {
  for (int i = 0; i < parts; points += counts[i++]) AddLine(user, counts[i], points);
  return true;
}

}  // namespace
}  // namespace orvex::web

using namespace orvex;
using namespace orvex::web;

ORVEX_WEB void ow_draft_begin(int type) {
  Draft() = {};
  Draft().Type = static_cast<ProjType>(type);
}

ORVEX_WEB int ow_draft_set(int id, double value) {
  return Guarded(kFailed, [&] {
    if (id == kWrapId) {
      Draft().bWrapLon = value != 0;
      return kDone;
    }
    switch (TypeOf(id)) {
      case PDT_DOUBLE:
        Store<double>(id, value);
        break;
      case PDT_BOOL:
        Store<bool>(id, value);
        break;
      default:
        Store<std::int32_t>(id, value);
    }
    return kDone;
  });
}

/// The projection of the draft; null when it is refused.
ORVEX_WEB Projection* ow_projection_create(int exact) {
  return Guarded<Projection*>(nullptr, [&] {
    PROJDATA record = Draft();
    auto projection = std::make_unique<Projection>(record);
    if (!projection->projector.SetAccuracy(exact != 0 ? PA_EXACT : PA_STATED)) {
      throw tool::Failure("these parameters cannot be computed exactly; accuracy \"stated\" takes them");
    }
    return projection.release();
  });
}

ORVEX_WEB void ow_projection_delete(Projection* projection) {
  delete projection;
}

ORVEX_WEB double ow_projection_get(Projection* projection, int id) {
  return Guarded(0.0, [&] {
    PROJDATA& record = projection->record;
    if (id == kWrapId) return record.bWrapLon ? 1.0 : 0.0;
    switch (TypeOf(id)) {
      case PDT_DOUBLE:
        return Load<double>(record, id);
      case PDT_BOOL:
        return Load<bool>(record, id);
      default:
        return Load<std::int32_t>(record, id);
    }
  });
}

ORVEX_WEB int ow_projection_convert(Projection* projection, PROJPOINT* points, int count, int inverse) {
  return Guarded(kFailed, [&] {
    Convert(*projection, inverse != 0 ? tool::Direction::Inverse : tool::Direction::Forward,
            {points, static_cast<std::size_t>(count)});
    return kDone;
  });
}

/// 1, 0, or -1 when the projection has no domain.
ORVEX_WEB int ow_projection_holds(Projection* projection, double lon, double lat) {
  return Guarded(-1, [&] {
    const PROJPOINT place{lon, lat};
    return projection->projector.LLInProjection(&place) ? 1 : 0;
  });
}

/// Cuts a polyline (no counts) or a polygon of rings to the domain; the result is shapes in degrees.
ORVEX_WEB int ow_projection_clip(Projection* projection, const PROJPOINT* points, int count, const int* counts,
                                 int rings) {
  return Guarded(kFailed, [&] {
    Result().Clear();
    const CProjector& projector = projection->projector;
    const bool done = counts == nullptr ? projector.LLPreclipPolyline(nullptr, count, points, AddLine)
                                        : projector.LLPreclipPolygon(nullptr, rings, counts, points, AddRings, nullptr);
    if (!done) {
      throw tool::Failure("a shape has a coordinate that is not a finite number, or a part of fewer than 2 points");
    }
    return kDone;
  });
}
