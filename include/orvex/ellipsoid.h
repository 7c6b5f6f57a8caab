/// \file
/// Reference ellipsoids: a fixed catalogue of 56.
#pragma once

#include <cstdint>

#include <orvex/export.h>

namespace orvex {

/// \addtogroup ellipsoid
/// \{

/// The ellipsoids. The value is the row of the table; 0 means that the caller gives radius and flattening himself.
enum EllipsoidType : std::int32_t {
  ET_USER_DEFINED = 0,                        ///< radius and flattening as the caller gives them
  ET_MERIT_1983 = 1,                          ///< MERIT 1983
  ET_SOVIET_GEODETIC_SYSTEM_85 = 2,           ///< Soviet Geodetic System 85
  ET_GRS_1980_IUGG_1980 = 3,                  ///< GRS 1980 / IUGG 1980
  ET_IAU_1976 = 4,                            ///< IAU 1976
  ET_AIRY_1830 = 5,                           ///< Airy 1830
  ET_APPL_PHYSICS_1965 = 6,                   ///< Appl. Physics. 1965
  ET_NAVAL_WEAPONS_LAB_1965 = 7,              ///< Naval Weapons Lab., 1965
  ET_MODIFIED_AIRY = 8,                       ///< Modified Airy
  ET_ANDRAE_1876_DEN_ICLND = 9,               ///< Andrae 1876 (Den., Iclnd.)
  ET_AUSTRALIAN_NATL_AND_S_AMER_1969 = 10,    ///< Australian Natl & S. Amer. 1969
  ET_GRS_67_IUGG_1967 = 11,                   ///< GRS 67(IUGG 1967)
  ET_BESSEL_1841 = 12,                        ///< Bessel 1841
  ET_BESSEL_1841_NAMIBIA = 13,                ///< Bessel 1841 (Namibia)
  ET_BESSEL_MODIFIED = 14,                    ///< Bessel Modified
  ET_CLARKE_1866 = 15,                        ///< Clarke 1866
  ET_CLARKE_1880_MOD = 16,                    ///< Clarke 1880 mod.
  ET_COMM_DES_POIDS_ET_MESURES_1799 = 17,     ///< Comm. des Poids et Mesures 1799
  ET_DELAMBRE_1810_BELGIUM = 18,              ///< Delambre 1810 (Belgium)
  ET_ENGELIS_1985 = 19,                       ///< Engelis 1985
  ET_EVEREST_1830 = 20,                       ///< Everest 1830
  ET_EVEREST_1948 = 21,                       ///< Everest 1948
  ET_EVEREST_1956 = 22,                       ///< Everest 1956
  ET_EVEREST_1969 = 23,                       ///< Everest 1969
  ET_EVEREST_BRUNEI = 24,                     ///< Everest - Brunei
  ET_EVEREST_SABAH_AND_SARAWAK = 25,          ///< Everest (Sabah & Sarawak)
  ET_EVEREST_PAKISTAN = 26,                   ///< Everest Pakistan
  ET_FISCHER_MERCURY_DATUM_1960 = 27,         ///< Fischer (Mercury Datum) 1960
  ET_MODIFIED_FISCHER_1960 = 28,              ///< Modified Fischer 1960
  ET_FISCHER_1968 = 29,                       ///< Fischer 1968
  ET_HELMERT_1906 = 30,                       ///< Helmert 1906
  ET_HOUGH = 31,                              ///< Hough
  ET_INDONESIAN_1974 = 32,                    ///< Indonesian 1974
  ET_INTERNATIONAL_1909_HAYFORD = 33,         ///< International 1909 (Hayford)
  ET_INTERNATIONAL_1924 = 34,                 ///< International 1924
  ET_KRASSOVSKY_1942 = 35,                    ///< Krassovsky, 1942
  ET_KAULA_1961 = 36,                         ///< Kaula 1961
  ET_LERCH_1979 = 37,                         ///< Lerch 1979
  ET_MAUPERTIUS_1738 = 38,                    ///< Maupertius 1738
  ET_NEW_INTERNATIONAL_1967 = 39,             ///< New International 1967
  ET_PLESSIS_1817_FRANCE = 40,                ///< Plessis 1817 (France)
  ET_SOUTHEAST_ASIA = 41,                     ///< Southeast Asia
  ET_STATE_PLANE_1927_MICHIGAN = 42,          ///< State Plane 1927, Michigan
  ET_WALBECK = 43,                            ///< Walbeck
  ET_WGS_60 = 44,                             ///< WGS 60
  ET_WGS_66 = 45,                             ///< WGS 66
  ET_WGS_72 = 46,                             ///< WGS 72
  ET_WGS_84 = 47,                             ///< WGS 84
  ET_STANDARD_SPHERE_OF_6370997_METERS = 48,  ///< Standard Sphere of 6370997 Meters
  ET_STANDARD_SPHERE_OF_ONE_UNIT = 49,        ///< Standard Sphere of One Unit
  ET_DNAG_SPHERE_6371204_METERS = 50,         ///< DNAG Sphere (6371204 meters)
  ET_CLARKE_1880_BENOIT = 51,                 ///< Clarke 1880 Benoit
  ET_CLARKE_1880_IGN = 52,                    ///< Clarke 1880 IGN
  ET_CLARKE_1880_RGS = 53,                    ///< Clarke 1880 RGS
  ET_CLARKE_1800_SGA_1922 = 54,               ///< Clarke 1800 SGA 1922
  ET_BESSEL_NGO_1948 = 55                     ///< Bessel NGO 1948
};

/// Name, semi-major axis (metres) and flattening f of an ellipsoid; each output may be null.
/// \param type        the ellipsoid
/// \param name        room for at least 80 characters
/// \param radius      receives the semi-major axis, metres
/// \param flattening  receives f, not 1/f
/// \returns whether the table has the ellipsoid. Type 0 copies "user-defined" into name, leaves the numbers alone and
/// returns false; outside the table nothing is written.
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

/// \}

}  // namespace orvex
