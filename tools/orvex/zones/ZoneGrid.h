// ZoneGrid - families of zones among which a point, or the text beside it, chooses.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <orvex/projection.h>

namespace orvex::tool {

/// What stands beside the coordinates of a point: a zone, or why there is none.
struct ZoneChoice {
  std::optional<int> zone;
  std::string label;
};

class ZoneGrid {
 public:
  virtual ~ZoneGrid() = default;
  /// The zone of a point in degrees.
  virtual ZoneChoice At(const PROJPOINT& point) const = 0;
  /// The zone that a label names.
  virtual std::optional<int> Parse(std::string_view label) const = 0;
  /// The projection of a zone.
  virtual PROJDATA Record(int zone) const = 0;
};

/// UTM zones with the exceptions of Norway and Svalbard; from 84 N on and beyond 80 S the polar maps of UPS. Labels:
/// "33N", "20S", "UPSN", "UPSS". The ellipsoid is that of the record.
std::unique_ptr<ZoneGrid> MakeUtmGrid(const PROJDATA& figure);

/// The state plane zones of one set, by the bounds of their areas. Labels are the names of the zones. Where bounds
/// overlap there is no choice, and the label names all zones in question.
std::unique_ptr<ZoneGrid> MakeStatePlaneGrid(ProjType set);

/// UTM zones are numbers from 1 to 60, negative ones in the south.
inline constexpr int kUpsNorth = 61, kUpsSouth = -61;

/// Zone of a point by its longitude and latitude in degrees.
int UtmZoneAt(const PROJPOINT& point);

}  // namespace orvex::tool
