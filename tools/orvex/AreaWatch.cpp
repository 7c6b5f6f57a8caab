// AreaWatch - counts the points that lie outside the area for which a zone, a projection or a datum is meant.
#include "AreaWatch.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include <orvex/zones.h>

#include "Failure.h"
#include "RegressionArea.h"
#include "StatePlane.h"

namespace orvex::tool {

namespace {

using Box = NamedBox;

// Extents of the zones of each state in the EPSG registry; the first match in the zone's name counts. Great Lakes and
// Guam by the map.
constexpr Box kStates[] = {{"Alabama", -88.48, 30.14, -84.89, 35.02},
                           {"Alaska", -187.58, 51.3, -129.99, 71.4},
                           {"American Samoa", -171.1, -14.6, -168.1, -11.0},
                           {"Arizona", -114.81, 31.33, -109.04, 37.01},
                           {"Arkansas", -94.62, 33.01, -89.64, 36.5},
                           {"California", -124.45, 32.53, -114.12, 42.01},
                           {"Colorado", -109.06, 36.98, -102.04, 41.01},
                           {"Connecticut", -73.73, 40.98, -71.78, 42.05},
                           {"Delaware", -75.8, 38.44, -74.97, 39.85},
                           {"Florida", -87.63, 24.41, -79.97, 31.01},
                           {"Georgia", -85.61, 30.36, -80.77, 35.01},
                           {"Great Lakes", -93.2, 40.4, -74, 50.7},
                           {"Guam", 144.58, 13.18, 145.01, 13.7},
                           {"Hawaii", -160.3, 18.87, -154.74, 22.29},
                           {"Idaho", -117.24, 41.99, -111.04, 49.01},
                           {"Illinois", -91.52, 36.98, -87.02, 42.51},
                           {"Indiana", -88.06, 37.77, -84.78, 41.77},
                           {"Iowa", -96.65, 40.37, -90.14, 43.51},
                           {"Kansas", -102.06, 36.99, -94.58, 40.01},
                           {"Kentucky", -89.57, 36.49, -81.95, 39.15},
                           {"Louisiana", -94.05, 27.82, -87.76, 33.03},
                           {"Maine", -71.09, 43.04, -66.91, 47.47},
                           {"Maryland", -79.49, 37.97, -74.97, 39.73},
                           {"Massachusetts", -73.5, 41.19, -69.86, 42.89},
                           {"Michigan", -90.42, 41.69, -82.13, 48.32},
                           {"Minnesota", -97.22, 43.49, -89.49, 49.38},
                           {"Missippippi", -91.65, 30.01, -88.09, 35.01},  // as the catalogue spells it
                           {"Missouri", -95.77, 35.98, -89.1, 40.61},
                           {"Montana", -116.07, 44.35, -104.04, 49.01},
                           {"Nebraska", -104.06, 39.99, -95.3, 43.01},
                           {"Nevada", -120, 34.99, -114.03, 42},
                           {"New Hampshire", -72.56, 42.69, -70.63, 45.31},
                           {"New Jersey", -75.6, 38.87, -73.88, 41.36},
                           {"New Mexico", -109.06, 31.33, -102.99, 37},
                           {"New York", -79.77, 40.47, -71.8, 45.02},
                           {"North Carolina", -84.33, 33.83, -75.38, 36.59},
                           {"North Dakota", -104.07, 45.93, -96.55, 49.01},
                           {"Ohio", -84.83, 38.4, -80.51, 42.33},
                           {"Oklahoma", -103, 33.62, -94.42, 37.01},
                           {"Oregon", -124.6, 41.98, -116.47, 46.26},
                           {"Pennsylvania", -80.53, 39.71, -74.7, 42.53},
                           {"Puerto Rico", -68.49, 14.92, -63.88, 21.86},
                           {"Rhode Island", -71.85, 41.13, -71.08, 42.02},
                           {"South Carolina", -83.36, 32.05, -78.52, 35.21},
                           {"South Dakota", -104.07, 42.48, -96.43, 45.95},
                           {"Tennessee", -90.31, 34.98, -81.65, 36.68},
                           {"Texas", -106.66, 25.83, -93.41, 36.5},
                           {"Utah", -114.05, 36.99, -109.04, 42.01},
                           {"Vermont", -73.44, 42.72, -71.5, 45.03},
                           {"Virgin Islands", -65.1, 17.6, -64.5, 18.5},
                           {"Virginia", -83.68, 36.54, -75.31, 39.46},
                           {"Washington", -124.79, 45.54, -116.91, 49.05},
                           {"West Virginia", -82.65, 37.2, -77.72, 40.64},
                           {"Wisconsin", -92.89, 42.48, -86.25, 47.31},
                           {"Wyoming", -111.06, 40.99, -104.05, 45.01}};
constexpr double kStateMargin = 1;  // degrees

bool IsMarked(const PROJPOINT& point) {
  return point.x == DBL_MAX || point.y == DBL_MAX;
}

bool IsWithin(const Box& box, double margin, const PROJPOINT& point) {
  const double middle = (box.west + box.east) / 2;
  return std::abs(std::remainder(point.x - middle, 360)) <= (box.east - box.west) / 2 + margin &&
         point.y >= box.south - margin && point.y <= box.north + margin;
}

/// A counter of the live points that do not pass a test.
template <class Test>
AreaWatch::Counter CountUnless(Test inside) {
  return [inside](const std::vector<PROJPOINT>& points) {
    return static_cast<std::uint64_t>(std::count_if(
        points.begin(), points.end(), [&](const PROJPOINT& point) { return !IsMarked(point) && !inside(point); }));
  };
}

AreaWatch WatchUtm(const PROJDATA& record) {
  constexpr double kHalfZone = 3, kBeyond = 3.5, kSouth = -80, kNorth = 84, kPolarMargin = 0.5;
  char name[40] = "the UTM zone";
  const int zone = ProjUTMLonToZoneNumber(record.Lon0);
  if (ProjUTMZoneNumberToLon(zone) == record.Lon0) {
    ProjUTMZoneNumberToName(zone, record.bSouth, name, sizeof name, UTMZN_SHORT);
  }
  const double lon0 = record.Lon0;
  return {std::string("UTM ") + name + ": more than 3.5 degrees beyond it, or half a degree beyond 80 S or 84 N",
          CountUnless([lon0](const PROJPOINT& p) {
            return std::abs(std::remainder(p.x - lon0, 360)) <= kHalfZone + kBeyond && p.y >= kSouth - kPolarMargin &&
                   p.y <= kNorth + kPolarMargin;
          })};
}

std::optional<AreaWatch> WatchState(const PROJDATA& record) {
  char name[80];
  ProjGetStateZoneInfo(static_cast<StateZoneType>(+record.Zone), name, nullptr);
  const std::string zone = name;
  const auto* const state =
      std::find_if(std::begin(kStates), std::end(kStates), [&](const Box& box) { return zone.starts_with(box.name); });
  if (state == std::end(kStates)) return std::nullopt;
  return AreaWatch("the state of the zone \"" + zone + "\"",
                   CountUnless([box = *state](const PROJPOINT& p) { return IsWithin(box, kStateMargin, p); }));
}

/// The projections of less than the world; what they show beyond their domain is of no use.
bool HasDomain(ProjType type) {
  switch (type) {
    case PT_TRANSVERSEMERCATOR:
    case PT_GAUSSKRUGER:
    case PT_CASSINI:
    case PT_STEREOGRAPHIC:
    case PT_GNOMONIC:
    case PT_LAMBERTAZIMUTHAL:
    case PT_AZIMUTHALEQUI:
    case PT_HOTINE:
    case PT_OBLIQUEMERCATOR:
      return true;
    default:
      return false;
  }
}

/// Converts copies of the points by the grid alone and counts those that stay where they are.
AreaWatch::Counter CountUnshifted(DatumType datum) {
  DATUMXFORM xform{};
  xform.SrcDatum = datum;
  xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  return [probe = CDatumTransform(&xform)](const std::vector<PROJPOINT>& points) mutable {
    constexpr double kStill = 1e-12;  // degrees: the way through radians costs an ulp
    std::vector<DATUMPOINT> shifted;
    for (const PROJPOINT& point : points) {
      if (!IsMarked(point)) shifted.push_back({point.x, point.y});
    }
    const std::vector<DATUMPOINT> given = shifted;
    if (!given.empty()) probe.Convert(shifted.data(), static_cast<int>(shifted.size()));
    std::uint64_t still = 0;
    for (std::size_t i = 0; i < given.size(); ++i) {
      still += std::abs(shifted[i].x - given[i].x) < kStill && std::abs(shifted[i].y - given[i].y) < kStill;
    }
    return still;
  };
}

}  // namespace

AreaWatch::AreaWatch(std::string area, Counter counter)
    : m_area(std::move(area)),
      m_counter(std::move(counter)),
      m_outside(std::make_shared<std::atomic<std::uint64_t>>(0)) {}

void AreaWatch::Watch(const std::vector<PROJPOINT>& points) {
  if (const std::uint64_t outside = m_counter(points); outside > 0) *m_outside += outside;
}

void WarnOfPointsOutside(std::uint64_t outside, const std::string& area) {
  if (outside == 0) return;
  Warn(std::to_string(outside) + (outside == 1 ? " point lies outside " : " points lie outside ") + area);
}

std::optional<AreaWatch> WatchProjection(const PROJDATA& record) {
  if (record.Type == PT_UTM) return WatchUtm(record);
  if (IsStatePlane(record)) return WatchState(record);
  if (!HasDomain(record.Type)) return std::nullopt;
  PROJDATA copy = record;
  const double lon0 = record.Lon0;
  return AreaWatch("the domain of the projection", CountUnless([projector = CProjector(&copy), lon0](PROJPOINT p) {
                     p.x = lon0 + std::remainder(p.x - lon0, 360);
                     return projector.LLInProjection(&p);
                   }));
}

std::optional<AreaWatch> WatchDatum(DatumType datum) {
  if (const std::optional<Box> area = RegressionArea(datum)) {
    return AreaWatch(std::string(area->name) + ", for which the datum's regression equations hold",
                     CountUnless([box = *area](const PROJPOINT& p) { return IsWithin(box, 0, p); }));
  }
  DatumMethod method{};
  DatGetDatumMethod(datum, &method);
  if (method != DM_NADCON && method != DM_NTV2) return std::nullopt;
  return AreaWatch("every grid of the datum and are not shifted", CountUnshifted(datum));
}

}  // namespace orvex::tool
