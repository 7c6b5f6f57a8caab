// StatePlaneZone - definition of one state plane zone, with its angles as the publications print them.
#pragma once

#include <array>
#include <span>
#include <stdexcept>

#include "orvex/zones.h"
#include "support/AngleText.h"

namespace orvex::detail {

/// An angle given as degree-minute-second text and read by the compiler, as LatLonToDegrees reads it: bad text does not
/// compile, and expanding a zone costs no parsing.
struct DegreeText {
  double degrees = 0;

  constexpr DegreeText() = default;
  constexpr DegreeText(const char* text) {
    if (!ReadAngle(text, degrees, 'd')) throw std::invalid_argument("not an angle");
  }
};

struct StatePlaneZone {
  ProjType type = PT_UNDEFINED;  // PT_UTM, PT_LAMBERT, PT_HOTINE or PT_POLYCONIC; PT_UNDEFINED: not a zone of the set
  EllipsoidType ellipsoid = ET_USER_DEFINED;
  DegreeText lon0, lat0, lat1, lat2, alpha;
  double k0 = 0;    // 0 where the projection takes none
  double xOrg = 0;  // metres
  double yOrg = 0;
};

// One function for each kind of row. TransMerc stands for PT_UTM, which takes meridian, K0 and false origin as they are
// given.

constexpr StatePlaneZone TransMerc(EllipsoidType ellipsoid, DegreeText lon0, DegreeText lat0, double k0, double xOrg,
                                   double yOrg = 0) {
  return {PT_UTM, ellipsoid, lon0, lat0, {}, {}, {}, k0, xOrg, yOrg};
}

constexpr StatePlaneZone Lambert(EllipsoidType ellipsoid, DegreeText lon0, DegreeText lat0, DegreeText lat1,
                                 DegreeText lat2, double xOrg, double yOrg = 0) {
  return {PT_LAMBERT, ellipsoid, lon0, lat0, lat1, lat2, {}, 0, xOrg, yOrg};
}

constexpr StatePlaneZone Oblique(EllipsoidType ellipsoid, DegreeText lon0, DegreeText lat0, DegreeText alpha, double k0,
                                 double xOrg, double yOrg) {
  return {PT_HOTINE, ellipsoid, lon0, lat0, {}, {}, alpha, k0, xOrg, yOrg};
}

constexpr StatePlaneZone Polyconic(EllipsoidType ellipsoid, DegreeText lon0, DegreeText lat0, double xOrg,
                                   double yOrg) {
  return {PT_POLYCONIC, ellipsoid, lon0, lat0, {}, {}, {}, 0, xOrg, yOrg};
}

constexpr StatePlaneZone Undefined() {
  return {};
}

/// The definitions of a set, indexed by StateZoneType.
using StatePlaneSet = std::span<const StatePlaneZone, SZ_NONE>;
StatePlaneSet StatePlaneZones1927();
StatePlaneSet StatePlaneZones1983();

constexpr int CountDefined(StatePlaneSet zones) {
  int count = 0;
  for (const StatePlaneZone& zone : zones) count += zone.type != PT_UNDEFINED ? 1 : 0;
  return count;
}

/// Whether every definition has what its projection needs and lies where state plane zones do.
constexpr bool ZonesConsistent(StatePlaneSet zones) {
  for (const StatePlaneZone& z : zones) {
    if (z.type == PT_UNDEFINED) continue;
    const bool conic = z.type == PT_LAMBERT, scaled = z.type == PT_UTM || z.type == PT_HOTINE;
    if (conic != (z.lat1.degrees != z.lat2.degrees)) return false;
    if (scaled ? z.k0 < 0.9998 || z.k0 > 1 : z.k0 != 0) return false;
    if ((z.type == PT_HOTINE) != (z.alpha.degrees != 0)) return false;
    const bool inAmerica = z.lon0.degrees > -177 && z.lon0.degrees < -66 && z.lat0.degrees > 17 && z.lat0.degrees < 58;
    const bool inPacific = z.type == PT_POLYCONIC || z.lat0.degrees < 0;
    if (!inAmerica && !inPacific) return false;
  }
  return true;
}

}  // namespace orvex::detail
