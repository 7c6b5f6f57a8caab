// MapArea - what of the globe a map shows, and how shapes have to be brought there.
#include "maps/MapArea.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>

#include <orvex/zones.h>

#include "Failure.h"
#include "StatePlane.h"
#include "tables/Coordinate.h"

namespace orvex::tool {

namespace {

constexpr double kRadians = std::numbers::pi / 180;
constexpr double kMercatorLat = 85;  // the poles are infinitely far away
constexpr double kConicLat = 30;     // a conformal cone is opened up to this latitude beyond the equator
constexpr double kUtmLat = 84;
constexpr double kUtmReach = 20, kZoneReach = 12;  // degrees about the central meridian
constexpr double kJustInside = 1e-3;               // degrees

/// The circle on the globe around a centre, all angles in degrees.
Points Circle(double lat0, double lon0, double arc) {
  Points circle;
  const double sinLat = std::sin(lat0 * kRadians), cosLat = std::cos(lat0 * kRadians);
  const double sinArc = std::sin(arc * kRadians), cosArc = std::cos(arc * kRadians);
  for (double azimuth = 0; azimuth <= 360; azimuth += 0.5) {
    const double cosAz = std::cos(azimuth * kRadians), sinAz = std::sin(azimuth * kRadians);
    const double east = sinArc * sinAz, ahead = cosArc * cosLat - sinArc * cosAz * sinLat;
    const double north = cosArc * sinLat + sinArc * cosAz * cosLat;
    circle.push_back(
        {lon0 + std::atan2(east, ahead) / kRadians, std::atan2(north, std::hypot(east, ahead)) / kRadians});
  }
  return circle;
}

Bounds ParseBounds(const std::string& text) {
  double value[4];
  std::istringstream in(text);
  std::string word;
  int n = 0;
  for (; std::getline(in, word, ','); ++n) {
    const auto angle = ParseAngle(word);
    if (n >= 4 || !angle) throw Failure("--bounds takes W,S,E,N in degrees, not \"" + text + "\"");
    value[n] = *angle;
  }
  if (n != 4 || value[1] >= value[3] || std::abs(value[1]) > 90 || std::abs(value[3]) > 90) {
    throw Failure("--bounds takes W,S,E,N in degrees with S below N, not \"" + text + "\"");
  }
  Bounds box{value[0], value[1], value[2], value[3]};
  if (box.east <= box.west) box.east += 360;
  if (std::abs(box.west) > 360 || box.east > 360 + 180 || box.east - box.west > 360) {
    throw Failure("--bounds: the longitudes must lie within one turn");
  }
  return box;
}

Bounds About(double lon, double reach, double south, double north) {
  return {lon - reach, south, lon + reach, north};
}

/// A zone as the projection that stands behind it.
PROJDATA Expanded(PROJDATA record) {
  if (IsStatePlane(record)) ProjGetStateZoneParams(&record);
  return record;
}

}  // namespace

MapArea ChooseArea(const PROJDATA& record, const std::string& bounds) {
  if (record.Type == PT_LATLONG) throw Failure("\"Unprojected Lat/Long\" is no projection that can be drawn");
  const PROJDATA real = Expanded(record);
  const double lon0 = real.Lon0;
  MapArea area{Turn::Repeat, false, false, About(lon0, 180, -90, 90), lon0 - 180, real.MajorRadius * record.Scale, {}};
  switch (real.Type) {
    case PT_MERCATOR:
      area.box = About(lon0, 180, -kMercatorLat, kMercatorLat);
      break;
    case PT_MILLER:  // shows the poles, but its domain is open there
      area.box = About(lon0, 180, -90 + kJustInside, 90 - kJustInside);
      break;
    case PT_LAMBERT:
      if (real.Lat1 + real.Lat2 >= 0)
        area.box.south = -kConicLat;
      else
        area.box.north = kConicLat;
      break;
    case PT_TRANSVERSEMERCATOR:
    case PT_GAUSSKRUGER:
      area.box = About(lon0, 45, -90, 90);
      break;
    case PT_UTM:
      area.turn = Turn::Box;
      area.box = About(lon0, kUtmReach, record.bSouth ? -80 : 0, record.bSouth ? 0 : kUtmLat);
      break;
    case PT_ROBINSON:  // knows no central meridian
      area.box = About(0, 180, -90, 90);
      area.meridian = -180;
      break;
    case PT_EQUICYLINDRICAL:  // takes every longitude and would go on beyond the world's edge
      area.turn = Turn::Box;
      area.box = About(lon0, 180 - 1e-6, -90, 90);
      break;
    case PT_STEREOGRAPHIC:
    case PT_ORTHOGRAPHIC:
    case PT_CASSINI:
      area.turn = Turn::Periodic;
      area.outline = Circle(real.Lat0, lon0, 90 - kJustInside);
      break;
    case PT_GNOMONIC:
      area.turn = Turn::Periodic;
      area.outline = Circle(real.Lat1, lon0, 60 - kJustInside);
      break;
    case PT_AZIMUTHALEQUI:
      area.turn = Turn::Periodic;
      area.outline = Circle(real.Lat1, lon0, 170 - kJustInside);
      break;
    case PT_LAMBERTAZIMUTHAL:  // the whole globe; its antipode is the bounding circle
      area.turn = Turn::Periodic;
      area.outline = Circle(real.Lat1, lon0, 180 - 0.05);
      if (real.Lat1 > 89.9) area.box.south = -89.95;
      if (real.Lat1 < -89.9) area.box.north = 89.95;
      break;
    case PT_HOTINE:
    case PT_OBLIQUEMERCATOR:  // a strip along a great circle: a rectangle on the map
      area.turn = Turn::Periodic;
      area.convex = true;
      area.box = About(0, 180, -90, 90);
      area.meridian = -180;
      break;
    default:
      break;
  }
  area.curved = area.turn == Turn::Periodic;
  if (bounds.empty() && !IsStatePlane(record)) return area;
  area.turn = Turn::Box;
  area.outline.reset();
  area.convex = false;
  area.box = bounds.empty() ? About(lon0, kZoneReach, std::max(-90.0, real.Lat0 - 6), std::min(90.0, real.Lat0 + 14))
                            : ParseBounds(bounds);
  return area;
}

}  // namespace orvex::tool
