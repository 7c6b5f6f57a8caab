// UtmGrid - UTM zones and UPS by point.
#include <cmath>

#include <orvex/zones.h>

#include "commands/Names.h"
#include "zones/ZoneGrid.h"

namespace orvex::tool {

namespace {

constexpr double kNorthEnd = 84, kSouthEnd = -80;  // degrees, of UTM

struct Exception {
  double south, north, west, east;
  int zone;
};

/// South-west Norway and Svalbard: their zones are wider than 6 degrees, their neighbours narrower or missing.
constexpr Exception kExceptions[] = {{56, 64, 3, 12, 32},
                                     {72, kNorthEnd, 0, 9, 31},
                                     {72, kNorthEnd, 9, 21, 33},
                                     {72, kNorthEnd, 21, 33, 35},
                                     {72, kNorthEnd, 33, 42, 37}};
class UtmGrid : public ZoneGrid {
 public:
  explicit UtmGrid(const PROJDATA& figure) : m_figure(figure) {}

  ZoneChoice At(const PROJPOINT& point) const override {
    const int zone = UtmZoneAt(point);
    return {zone, Label(zone)};
  }

  std::optional<int> Parse(std::string_view label) const override {
    const std::string text = Lower(label);
    if (text == "upsn") return kUpsNorth;
    if (text == "upss") return kUpsSouth;
    const std::size_t digits = text.find_first_not_of("0123456789");
    if (digits == std::string::npos || digits < 1 || digits > 2 || text.size() != digits + 1) return std::nullopt;
    const int zone = ParseInteger(text.substr(0, digits), "zone");
    if (zone < 1 || zone > 60 || (text.back() != 'n' && text.back() != 's')) return std::nullopt;
    return text.back() == 'n' ? zone : -zone;
  }

  PROJDATA Record(int zone) const override {
    PROJDATA record = m_figure;
    if (std::abs(zone) == kUpsNorth) {
      record.Type = PT_STEREOGRAPHIC;
      record.Lat0 = zone > 0 ? 90 : -90;
      record.K0 = 0.994;
      record.xOrg = record.yOrg = 2e6;
      return record;
    }
    record.Type = PT_UTM;
    record.Zone = std::abs(zone);
    record.bSouth = zone < 0;
    record.Lon0 = ProjUTMZoneNumberToLon(std::abs(zone));
    return record;
  }

 private:
  static std::string Label(int zone) {
    if (std::abs(zone) == kUpsNorth) return zone > 0 ? "UPSN" : "UPSS";
    return std::to_string(std::abs(zone)) + (zone > 0 ? 'N' : 'S');
  }

  PROJDATA m_figure;
};

}  // namespace

int UtmZoneAt(const PROJPOINT& point) {
  if (point.y >= kNorthEnd) return kUpsNorth;
  if (point.y < kSouthEnd) return kUpsSouth;
  double lon = std::fmod(point.x + 180, 360);
  if (lon < 0) lon += 360;
  lon -= 180;
  for (const Exception& e : kExceptions) {
    if (point.y >= e.south && point.y < e.north && lon >= e.west && lon < e.east) return e.zone;
  }
  const int zone = static_cast<int>(std::floor((lon + 180) / 6)) + 1;
  return point.y >= 0 ? zone : -zone;
}

std::unique_ptr<ZoneGrid> MakeUtmGrid(const PROJDATA& figure) {
  return std::make_unique<UtmGrid>(figure);
}

}  // namespace orvex::tool
