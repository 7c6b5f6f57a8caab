// Places - a place by other means than coordinates: text of angles, zones, references of the military grid.
#include <cmath>
#include <string>

#include <orvex/orvex.h>

#include "Call.h"
#include "ProjectPoints.h"
#include "zones/Mgrs.h"
#include "zones/ZoneGrid.h"

namespace orvex::web {

namespace {

constexpr int kTextSize = 260;

/// The projection of a zone of the grid on WGS 84.
CProjector ProjectorOf(int zone) {
  PROJDATA figure{};
  figure.Ellipsoid = ET_WGS_84;
  PROJDATA record = tool::MakeUtmGrid(figure)->Record(zone);
  CProjector projector(&record);
  projector.SetAccuracy(PA_EXACT);
  return projector;
}

const tool::ZoneGrid& StateZones(ProjType set) {
  static const auto of1927 = tool::MakeStatePlaneGrid(PT_STATEPLANE27),
                    of1983 = tool::MakeStatePlaneGrid(PT_STATEPLANE83);
  return set == PT_STATEPLANE27 ? *of1927 : *of1983;
}

}  // namespace
}  // namespace orvex::web

using namespace orvex;
using namespace orvex::web;

ORVEX_WEB int ow_angle_parse(const char* text, int degreeSign, double* degrees) {
  return Guarded(kFailed, [&] {
    if (!LatLonToDegrees(text, degrees, static_cast<char>(degreeSign)) || !std::isfinite(*degrees)) {
      throw tool::Failure("\"" + std::string(text) + "\" is not an angle");
    }
    return kDone;
  });
}

ORVEX_WEB const char* ow_angle_format(double degrees, int format, int degree, int minute, int second) {
  return Guarded<const char*>(nullptr, [&] {
    char text[kTextSize];
    if (!DegreesToLatLon(text, degrees, format, static_cast<char>(degree), static_cast<char>(minute),
                         static_cast<char>(second))) {
      throw tool::Failure("the angle cannot be written");
    }
    return Answer(text);
  });
}

/// 1 to 60, negative in the south; 61 and -61 for the polar maps.
ORVEX_WEB int ow_utm_zone(double lon, double lat) {
  return tool::UtmZoneAt({lon, lat});
}

/// The number of the zone or -1; the label is the text of the result.
ORVEX_WEB int ow_state_zone(int set, double lon, double lat) {
  return Guarded(-1, [&] {
    const tool::ZoneChoice choice = StateZones(static_cast<ProjType>(set)).At({lon, lat});
    Answer(choice.label);
    return choice.zone.value_or(-1);
  });
}

ORVEX_WEB const char* ow_result_text() {
  return ResultText().c_str();
}

ORVEX_WEB const char* ow_mgrs(double lon, double lat, int digits) {
  return Guarded<const char*>(nullptr, [&] {
    if (digits < 0 || digits > tool::kMostMgrsDigits) {
      throw tool::Failure("a reference has 0 to " + std::to_string(tool::kMostMgrsDigits) +
                          " digits for each coordinate");
    }
    PROJPOINT point{lon, lat};
    const int zone = tool::UtmZoneAt(point);
    CProjector projector = ProjectorOf(zone);
    tool::ProjectPoint(projector, tool::Direction::Forward, point);
    MarkUnplottable(&point, 1);
    return Answer(std::isnan(point.x) ? "" : tool::FormatMgrs({zone, point}, lat, digits));
  });
}

ORVEX_WEB int ow_from_mgrs(const char* text, PROJPOINT* place) {
  return Guarded(kFailed, [&] {
    const auto found = tool::ParseMgrs(text);
    if (!found) throw tool::Failure("\"" + std::string(text) + "\" is not a reference of the military grid");
    CProjector projector = ProjectorOf(found->zone);
    *place = found->point;
    tool::ProjectPoint(projector, tool::Direction::Inverse, *place);
    MarkUnplottable(place, 1);
    return kDone;
  });
}
