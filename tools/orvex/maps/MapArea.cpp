// MapArea - what of the globe a map shows, and how shapes have to be brought there.
#include "maps/MapArea.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <optional>

#include <orvex/zones.h>

#include "Failure.h"
#include "ProjectPoints.h"
#include "StatePlane.h"

namespace orvex::tool {

namespace {

constexpr double kMercatorLat = 85;  // the poles are infinitely far away
constexpr double kConicLat = 30;     // a conformal cone is opened up to this latitude beyond the equator
constexpr double kUtmLat = 84;
constexpr double kUtmReach = 20, kZoneReach = 12, kTransverseReach = 45;  // degrees about the central meridian
constexpr double kJustInside = 1e-3;                                      // degrees
constexpr double kSeam = 1e-7;                          // degrees either side of a meridian at which the map is torn
constexpr double kAntipode = 0.05, kCassiniEnd = 0.01;  // degrees about points that are stretched to lines
constexpr double kQuarter = 90, kObliqueReach = 45, kGnomonicReach = 60, kEquidistantReach = 170;

Bounds About(double lon, double reach, double south, double north) {
  return {lon - reach, south, lon + reach, north};
}

/// The band of half a turn either side of a meridian.
Bounds Band(double lon) {
  return About(lon, 180 - kSeam, -90, 90);
}

/// Cassini's hemisphere: a square between parallels and meridians of a globe whose north pole lies a quarter turn east.
std::unique_ptr<const Domain> CassiniSquare(double lon0, double lat0) {
  const double along = kQuarter - kJustInside, across = kQuarter - kCassiniEnd;
  return std::make_unique<TurnedBox>(Aspect::AboutOrigin(UnitVector(lon0, lat0), UnitVector(lon0 + kQuarter, 0)),
                                     Bounds{-along, -across, along, across});
}

/// The latitude at which the aposphere of an oblique map fits the ellipsoid.
double CentreLatitude(const PROJDATA& real) {
  return real.Type == PT_HOTINE ? real.Lat0 : (real.Lat1 + real.Lat2) / 2;
}

/// The strip along the line of an oblique map. The line is what the projection's own inverse makes of its axis.
void AddObliqueStrip(const PROJDATA& real, bool stated, MapArea& area) {
  PROJDATA plain = real;
  plain.xOrg = plain.yOrg = 0;
  plain.Scale = plain.K0 = 1;
  plain.bRotate = plain.bUOffset = false;
  CProjector projector = MakeProjector(plain, stated);
  PROJPOINT origin{0, 0}, further{real.MajorRadius, 0};
  ProjectPoint(projector, Direction::Inverse, origin);
  ProjectPoint(projector, Direction::Inverse, further);
  if (origin.x == DBL_MAX || further.x == DBL_MAX) throw Failure("the line of the projection is not determined");
  Aposphere sphere = Aposphere::Fit(std::sqrt(real.Flattening * (2 - real.Flattening)), CentreLatitude(real));
  sphere.lon0 = origin.x;
  const PROJPOINT from = sphere.To(origin), to = sphere.To(further);
  const Vector start = UnitVector(from.x, from.y), pole = Cross(start, UnitVector(to.x, to.y));
  const double along = 180 - kSeam, across = kObliqueReach - kJustInside;
  if (sphere.e != 0) {  // the aposphere is full before the globe is; what is left over would lie upon the rest
    area.domains.push_back(std::make_unique<Box>(About(origin.x, 180 / sphere.B - kSeam, -90, 90)));
  }
  area.domains.push_back(
      std::make_unique<TurnedBox>(Aspect::AboutOrigin(start, pole, sphere), Bounds{-along, -across, along, across}));
}

/// The largest part of the globe that makes sense on a map of this projection.
void AddDomains(const PROJDATA& real, bool stated, MapArea& area) {
  const double lon0 = real.Lon0;
  const auto add = [&](auto domain) { area.domains.push_back(std::move(domain)); };
  const auto cap = [&](double lat, double arc) { add(std::make_unique<Cap>(PROJPOINT{lon0, lat}, arc)); };
  const auto box = [&](const Bounds& bounds) { add(std::make_unique<Box>(bounds)); };
  switch (real.Type) {
    case PT_MERCATOR:
    case PT_MILLER:  // shows the poles, but its domain is open there
      return box(About(lon0, 180 - kSeam, -90 + kJustInside, 90 - kJustInside));
    case PT_TRANSVERSEMERCATOR:
    case PT_GAUSSKRUGER:
    case PT_UTM:
      return box(About(lon0, kTransverseReach - kSeam, -90, 90));
    case PT_ROBINSON:  // knows no central meridian
      return box(Band(0));
    case PT_STEREOGRAPHIC:
    case PT_ORTHOGRAPHIC:
      return cap(real.Lat0, kQuarter - kJustInside);
    case PT_CASSINI:
      return add(CassiniSquare(lon0, real.Lat0));
    case PT_GNOMONIC:
      return cap(real.Lat1, kGnomonicReach - kJustInside);
    case PT_AZIMUTHALEQUI:
      return cap(real.Lat1, kEquidistantReach - kJustInside);
    case PT_LAMBERTAZIMUTHAL:  // the whole globe; its antipode is the bounding circle
      return cap(real.Lat1, 180 - kAntipode);
    case PT_HOTINE:
    case PT_OBLIQUEMERCATOR:
      return AddObliqueStrip(real, stated, area);
    default:
      return box(Band(lon0));
  }
}

/// The part that is shown unless the user asks for another; nothing where it is the whole domain.
std::optional<Bounds> DefaultBounds(const PROJDATA& record, const PROJDATA& real) {
  const double lon0 = real.Lon0;
  if (IsStatePlane(record)) {
    return About(lon0, kZoneReach, std::max(-90.0, real.Lat0 - 6), std::min(90.0, real.Lat0 + 14));
  }
  switch (real.Type) {
    case PT_MERCATOR:
      return About(lon0, 180 - kSeam, -kMercatorLat, kMercatorLat);
    case PT_LAMBERT:
      return real.Lat1 + real.Lat2 >= 0 ? About(lon0, 180 - kSeam, -kConicLat, 90)
                                        : About(lon0, 180 - kSeam, -90, kConicLat);
    case PT_UTM:
      return About(lon0, kUtmReach, record.bSouth ? -80 : 0, record.bSouth ? 0 : kUtmLat);
    default:
      return std::nullopt;
  }
}

}  // namespace

PROJDATA Expanded(PROJDATA record) {
  if (IsStatePlane(record)) ProjGetStateZoneParams(&record);
  return record;
}

std::optional<Bounds> WithinTurn(Bounds box) {
  if (box.west - box.east >= 360) box.west -= 360;  // 300 to -90 degrees is -60 to 270
  if (box.east <= box.west) box.east += 360;
  const bool within = std::abs(box.west) <= 360 && box.east <= 360 + 180 && box.east > box.west;  // no NaN is
  if (!within || box.east - box.west > 360) return std::nullopt;
  box.east = std::min(box.east, box.west + 360 - 2 * kSeam);
  return box;
}

MapArea ChooseArea(const PROJDATA& record, const std::optional<Bounds>& bounds, bool stated) {
  if (record.Type == PT_LATLONG) throw Failure("\"Unprojected Lat/Long\" is no projection that can be drawn");
  const PROJDATA real = Expanded(record);
  MapArea area{{}, 0, real.MajorRadius * record.Scale};
  const std::optional<Bounds> part = bounds ? bounds : DefaultBounds(record, real);
  if (part) area.domains.push_back(std::make_unique<Box>(*part));
  const bool everyLongitude = real.Type == PT_EQUICYLINDRICAL;  // a part may lie anywhere on its strip
  if (!part || !everyLongitude) AddDomains(real, stated, area);
  area.frame = part ? 0 : area.domains.size() - 1;
  return area;
}

}  // namespace orvex::tool
