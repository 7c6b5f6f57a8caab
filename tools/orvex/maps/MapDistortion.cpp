// MapDistortion - how a projection enlarges and bends what is small: scale, area and angles about a place.
#include "maps/MapDistortion.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "ProjectPoints.h"
#include "maps/Sphere.h"

namespace orvex::tool {

namespace {

constexpr double kStep = 0.02;      // degrees of arc either way: differences err by less than 1e-6 of the scale
constexpr double kPolarLat = 89.9;  // beyond it directions mean little
constexpr double kJustMore = 1 + 1e-6;

bool Projected(CProjector& projector, PROJPOINT& p) {
  ProjectPoint(projector, Direction::Forward, p);
  return p.x != DBL_MAX && p.y != DBL_MAX;
}

/// Whether the projection heeds the flattening; many know a sphere only.
bool KnowsEllipsoid(PROJDATA record, const PROJPOINT& place) {
  CProjector given(&record);
  PROJPOINT onEllipsoid = place, onSphere = place;
  record.Ellipsoid = ET_USER_DEFINED;
  record.Flattening = 0;
  CProjector sphere(&record);
  if (!Projected(given, onEllipsoid) || !Projected(sphere, onSphere)) return true;
  return std::hypot(onEllipsoid.x - onSphere.x, onEllipsoid.y - onSphere.y) > 1;
}

}  // namespace

double Distortion::Angle() const {
  return 2 * std::asin((most - least) / (most + least)) / kRadians;
}

DistortionMeter::DistortionMeter(CProjector& projector, const PROJDATA& record)
    : m_projector(projector),
      m_radius(record.MajorRadius),
      m_e2(record.Flattening * (2 - record.Flattening)),
      m_scale(record.Scale),
      m_lon0(record.Lon0) {
  if (!KnowsEllipsoid(record, {record.Lon0 + 5, 40})) m_e2 = 0;
}

std::optional<Distortion> DistortionMeter::At(const PROJPOINT& place) const {
  if (std::abs(place.y) > kPolarLat) return std::nullopt;
  const double cosLat = std::cos(place.y * kRadians), sinLat = std::sin(place.y * kRadians);
  const double dLon = kStep / cosLat, w = 1 - m_e2 * sinLat * sinLat;
  // Both sides of the far meridian lie at both ends of the map: stay on one of them.
  const double most = 180 - kJustMore * dLon;
  const double lon = m_lon0 + std::clamp(std::remainder(place.x - m_lon0, 360), -most, most);
  PROJPOINT west{lon - dLon, place.y}, east{lon + dLon, place.y};
  PROJPOINT south{lon, place.y - kStep}, north{lon, place.y + kStep};
  for (PROJPOINT* p : {&west, &east, &south, &north}) {
    if (!Projected(m_projector, *p)) return std::nullopt;
  }
  const double length = 2 * kStep * kRadians * m_radius * m_scale;  // of both steps on a sphere
  const double along = length / std::sqrt(w), up = length * (1 - m_e2) / (w * std::sqrt(w));
  Distortion d{{(east.x - west.x) / along, (east.y - west.y) / along},
               {(north.x - south.x) / up, (north.y - south.y) / up},
               0,
               0};
  // Sum and difference of the axes (Snyder, Map Projections - A Working Manual, 1987, 4-12 and 4-13).
  const double h2 = d.north.x * d.north.x + d.north.y * d.north.y, k2 = d.east.x * d.east.x + d.east.y * d.east.y;
  const double area = std::abs(d.east.x * d.north.y - d.east.y * d.north.x);
  const double sum = std::sqrt(h2 + k2 + 2 * area), difference = std::sqrt(std::max(0.0, h2 + k2 - 2 * area));
  d.most = (sum + difference) / 2;
  d.least = (sum - difference) / 2;
  return d;
}

}  // namespace orvex::tool
