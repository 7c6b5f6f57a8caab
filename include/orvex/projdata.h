/// \file
/// The records of the map projections: parameters and points.
#pragma once

#include <cstddef>
#include <cstdint>

#include <orvex/ellipsoid.h>

namespace orvex {

/// \addtogroup projdata
/// \{

/// The projections. The value is the row of the projection table; any integer may be cast to the type.
enum ProjType : std::int32_t {
  PT_LATLONG = 0,              ///< Unprojected Lat/Long
  PT_MERCATOR = 1,             ///< Mercator
  PT_ALBERS = 2,               ///< Albers Equal Area Conic
  PT_MILLER = 3,               ///< Miller Cylindrical
  PT_UTM = 4,                  ///< Universal Transverse Mercator (UTM)
  PT_LAMBERT = 5,              ///< Lambert Conformal Conic
  PT_STEREOGRAPHIC = 6,        ///< Stereographic
  PT_ORTHOGRAPHIC = 7,         ///< Orthographic
  PT_MOLLWEIDE = 8,            ///< Mollweide
  PT_STATEPLANE27 = 9,         ///< State Plane 1927
  PT_STATEPLANE83 = 10,        ///< State Plane 1983
  PT_POLYCONIC = 11,           ///< Polyconic
  PT_HOTINE = 12,              ///< Hotine Oblique Mercator
  PT_EQUICYLINDRICAL = 13,     ///< Equidistant Cylindrical
  PT_ROBINSON = 14,            ///< Robinson
  PT_VANDERGRINTEN = 15,       ///< Van Der Grinten
  PT_CASSINI = 16,             ///< Cassini
  PT_TRANSVERSEMERCATOR = 17,  ///< Transverse Mercator
  PT_GAUSSKRUGER = 18,         ///< Gauss-Kruger / Gauss Conformal
  PT_SINUSOIDAL = 19,          ///< Sinusoidal
  PT_LAMBERTAZIMUTHAL = 20,    ///< Lambert Azimuthal Equal Area
  PT_BONNE = 21,               ///< Bonne
  PT_ROBINSONSTERLING = 22,    ///< Robinson-Sterling
  PT_ECKERT4 = 23,             ///< Eckert IV
  PT_ECKERT6 = 24,             ///< Eckert VI
  PT_OBLIQUEMERCATOR = 25,     ///< Oblique Mercator
  PT_EQUICONIC = 26,           ///< Equidistant Conic
  PT_GNOMONIC = 27,            ///< Gnomonic
  PT_AZIMUTHALEQUI = 28,       ///< Azimuthal Equidistant
  PT_UNDEFINED = 999           ///< "undefined": has a name, but no table row
};

#pragma pack(push, 1)

/// Projection parameters: byte-packed, 396 bytes, copied whole. Zero-fill it, then set what the projection uses
/// (ProjEnumParam lists it). Angles in decimal degrees. A field may lie on an odd address: copy it before taking a
/// reference.
struct PROJDATA {
  ProjType Type;               ///< 0: the projection
  double Scale;                ///< 4: factor on every projected coordinate, after the false origin is added; 0 means 1
  double xOrg;                 ///< 12: false easting, unscaled map units
  double yOrg;                 ///< 20: false northing, unscaled map units
  double Lat0;                 ///< 28: central latitude
  double Lon0;                 ///< 36: central longitude
  double Lat1;                 ///< 44: first standard parallel
  double Lat2;                 ///< 52: second standard parallel
  double Lat3;                 ///< 60: third latitude
  double Lon1;                 ///< 68: first longitude
  double Lon2;                 ///< 76: second longitude
  double Lon3;                 ///< 84: third longitude
  double K0;                   ///< 92: scale factor at the centre; 0 means 1 (0.9996 for UTM)
  bool bSouth;                 ///< 100: UTM: southern hemisphere, false northing 10000000
  std::int32_t Zone;           ///< 101: StateZoneType for state plane; kept for the caller for UTM, which follows Lon0
  bool bUseAlpha;              ///< 105: oblique: centre and azimuth Alpha instead of two points
  double Alpha;                ///< 106: azimuth of the central line at the centre, degrees east of north; beyond
                               ///< +-90 the line of the opposite azimuth, run the other way
  bool bRotate;                ///< 114: oblique: rotate u/v to x/y
  bool bUOffset;               ///< 115: oblique: count u from the centre instead of from the natural origin
  EllipsoidType Ellipsoid;     ///< 116: 0: radius and flattening as given below, else both are filled from the table
  double MajorRadius;          ///< 120: semi-major axis, metres
  double Flattening;           ///< 128: flattening f, 0 <= f < 1 (not 1/f); 0 selects spherical formulas
  std::int32_t iResult;        ///< 136: 1 when the last call left unplottable points, else 0
  bool bWrapLon;               ///< 140: some projections then wrap the longitude difference into +-180; set by the host
  std::uint8_t Reserved[255];  ///< 141: carried along, never read
};

/// One point: longitude and latitude in decimal degrees, or easting and northing in map units. Both fields are DBL_MAX
/// when the point is unplottable; test by equality.
struct PROJPOINT {
  double x;  ///< longitude (degrees, east positive) or easting
  double y;  ///< latitude (degrees, north positive) or northing
};

#pragma pack(pop)

static_assert(sizeof(PROJDATA) == 396 && sizeof(PROJPOINT) == 16);
static_assert(offsetof(PROJDATA, Lat0) == 28 && offsetof(PROJDATA, K0) == 92 && offsetof(PROJDATA, bSouth) == 100);
static_assert(offsetof(PROJDATA, Zone) == 101 && offsetof(PROJDATA, Alpha) == 106 &&
              offsetof(PROJDATA, Ellipsoid) == 116);
static_assert(offsetof(PROJDATA, iResult) == 136 && offsetof(PROJDATA, bWrapLon) == 140 &&
              offsetof(PROJDATA, Reserved) == 141);

/// \}

}  // namespace orvex
