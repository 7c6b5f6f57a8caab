// Reference ellipsoids: a fixed catalogue of 56.
#pragma once

#include <cstdint>

#include <orvex/export.h>

namespace orvex {

/// The ellipsoids. The value is the row of the table; 0 means that the caller gives radius and flattening himself.
enum EllipsoidType : std::int32_t {
  ET_USER_DEFINED = 0,
  ET_MERIT_1983 = 1,
  ET_SOVIET_GEODETIC_SYSTEM_85 = 2,
  ET_GRS_1980_IUGG_1980 = 3,
  ET_IAU_1976 = 4,
  ET_AIRY_1830 = 5,
  ET_APPL_PHYSICS_1965 = 6,
  ET_NAVAL_WEAPONS_LAB_1965 = 7,
  ET_MODIFIED_AIRY = 8,
  ET_ANDRAE_1876_DEN_ICLND = 9,
  ET_AUSTRALIAN_NATL_AND_S_AMER_1969 = 10,
  ET_GRS_67_IUGG_1967 = 11,
  ET_BESSEL_1841 = 12,
  ET_BESSEL_1841_NAMIBIA = 13,
  ET_BESSEL_MODIFIED = 14,
  ET_CLARKE_1866 = 15,
  ET_CLARKE_1880_MOD = 16,
  ET_COMM_DES_POIDS_ET_MESURES_1799 = 17,
  ET_DELAMBRE_1810_BELGIUM = 18,
  ET_ENGELIS_1985 = 19,
  ET_EVEREST_1830 = 20,
  ET_EVEREST_1948 = 21,
  ET_EVEREST_1956 = 22,
  ET_EVEREST_1969 = 23,
  ET_EVEREST_BRUNEI = 24,
  ET_EVEREST_SABAH_AND_SARAWAK = 25,
  ET_EVEREST_PAKISTAN = 26,
  ET_FISCHER_MERCURY_DATUM_1960 = 27,
  ET_MODIFIED_FISCHER_1960 = 28,
  ET_FISCHER_1968 = 29,
  ET_HELMERT_1906 = 30,
  ET_HOUGH = 31,
  ET_INDONESIAN_1974 = 32,
  ET_INTERNATIONAL_1909_HAYFORD = 33,
  ET_INTERNATIONAL_1924 = 34,
  ET_KRASSOVSKY_1942 = 35,
  ET_KAULA_1961 = 36,
  ET_LERCH_1979 = 37,
  ET_MAUPERTIUS_1738 = 38,
  ET_NEW_INTERNATIONAL_1967 = 39,
  ET_PLESSIS_1817_FRANCE = 40,
  ET_SOUTHEAST_ASIA = 41,
  ET_STATE_PLANE_1927_MICHIGAN = 42,
  ET_WALBECK = 43,
  ET_WGS_60 = 44,
  ET_WGS_66 = 45,
  ET_WGS_72 = 46,
  ET_WGS_84 = 47,
  ET_STANDARD_SPHERE_OF_6370997_METERS = 48,
  ET_STANDARD_SPHERE_OF_ONE_UNIT = 49,
  ET_DNAG_SPHERE_6371204_METERS = 50,
  ET_CLARKE_1880_BENOIT = 51,
  ET_CLARKE_1880_IGN = 52,
  ET_CLARKE_1880_RGS = 53,
  ET_CLARKE_1800_SGA_1922 = 54,
  ET_BESSEL_NGO_1948 = 55
};

/// Name, semi-major axis (metres) and flattening f of an ellipsoid; each output may be null.
///   name  room for at least 80 characters
/// Type 0 copies "user-defined" into name, leaves the numbers alone and returns false; outside the table nothing is
/// written.
ORVEX_API bool ORVEX_CALL EllipsoidInfo(EllipsoidType type, char* name, double* radius, double* flattening);

/// Semi-major axis in metres; 1.0 for type 0 and outside the table.
ORVEX_API double ORVEX_CALL EllipsoidRadius(EllipsoidType type);

/// Flattening f (not 1/f), 0 for a sphere; 0.0 for type 0 and outside the table.
ORVEX_API double ORVEX_CALL EllipsoidFlattening(EllipsoidType type);

/// Finds an ellipsoid by its whole name without regard to ASCII case; the first match wins. Not found: *type is 0.
/// False for null pointers, nothing written.
ORVEX_API bool ORVEX_CALL EllipsoidFromName(EllipsoidType* type, const char* name);

/// Finds an ellipsoid by its POSC (EPSG) code. For 7010 to 7014 and 7034, and for 7015 to 7018, a code that no row
/// carries stores the nearest ellipsoid ("Clarke 1880 mod.", "Everest 1830") and still returns false; any other unknown
/// code, and 0, returns false and writes nothing. `type` may be null.
ORVEX_API bool ORVEX_CALL EllipsoidFromPOSCNumber(int posc, EllipsoidType* type);

/// POSC code of an ellipsoid; false, nothing written, when it has none. `posc` may be null.
ORVEX_API bool ORVEX_CALL EllipsoidToPOSCNumber(EllipsoidType type, int* posc);

}  // namespace orvex
