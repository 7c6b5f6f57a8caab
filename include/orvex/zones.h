// US state plane zones and UTM zones.
#pragma once

#include <cstdint>

#include <orvex/export.h>
#include <orvex/projection.h>

namespace orvex {

/// The state plane zones of both sets (1927 and 1983) in catalogue order; not every zone exists in both.
enum StateZoneType : std::int32_t {
  SZ_ALABAMA_EAST = 0,
  SZ_ALABAMA_WEST = 1,
  SZ_ALASKA_1 = 2,
  SZ_ALASKA_2 = 3,
  SZ_ALASKA_3 = 4,
  SZ_ALASKA_4 = 5,
  SZ_ALASKA_5 = 6,
  SZ_ALASKA_6 = 7,
  SZ_ALASKA_7 = 8,
  SZ_ALASKA_8 = 9,
  SZ_ALASKA_9 = 10,
  SZ_ALASKA_10 = 11,
  SZ_ARIZONA_EAST = 12,
  SZ_ARIZONA_CENTRAL = 13,
  SZ_ARIZONA_WEST = 14,
  SZ_ARKANSAS_NORTH = 15,
  SZ_ARKANSAS_SOUTH = 16,
  SZ_CALIFORNIA_I = 17,
  SZ_CALIFORNIA_II = 18,
  SZ_CALIFORNIA_III = 19,
  SZ_CALIFORNIA_IV = 20,
  SZ_CALIFORNIA_V = 21,
  SZ_CALIFORNIA_VI = 22,
  SZ_CALIFORNIA_VII = 23,
  SZ_COLORADO_NORTH = 24,
  SZ_COLORADO_CENTRAL = 25,
  SZ_COLORADO_SOUTH = 26,
  SZ_CONNECTICUT = 27,
  SZ_DELAWARE = 28,
  SZ_FLORIDA_NORTH = 29,
  SZ_FLORIDA_EAST = 30,
  SZ_FLORIDA_WEST = 31,
  SZ_GEORGIA_EAST = 32,
  SZ_GEORGIA_WEST = 33,
  SZ_GUAM_ISLAND = 34,
  SZ_HAWAII_1 = 35,
  SZ_HAWAII_2 = 36,
  SZ_HAWAII_3 = 37,
  SZ_HAWAII_4 = 38,
  SZ_HAWAII_5 = 39,
  SZ_IDAHO_EAST = 40,
  SZ_IDAHO_CENTRAL = 41,
  SZ_IDAHO_WEST = 42,
  SZ_ILLINOIS_EAST = 43,
  SZ_ILLINOIS_WEST = 44,
  SZ_INDIANA_EAST = 45,
  SZ_INDIANA_WEST = 46,
  SZ_IOWA_NORTH = 47,
  SZ_IOWA_SOUTH = 48,
  SZ_KANSAS_NORTH = 49,
  SZ_KANSAS_SOUTH = 50,
  SZ_KENTUCKY_NORTH = 51,
  SZ_KENTUCKY_SOUTH = 52,
  SZ_LOUISIANA_NORTH = 53,
  SZ_LOUISIANA_SOUTH = 54,
  SZ_LOUISIANA_OFFSHORE = 55,
  SZ_MAINE_EAST = 56,
  SZ_MAINE_WEST = 57,
  SZ_MARYLAND = 58,
  SZ_MASSACHUSETTS_MAINLAND = 59,
  SZ_MASSACHUSETTS_ISLAND = 60,
  SZ_MICHIGAN_EAST_OLD = 61,
  SZ_MICHIGAN_CENTRAL_OLD = 62,
  SZ_MICHIGAN_WEST_OLD = 63,
  SZ_MICHIGAN_NORTH = 64,
  SZ_MICHIGAN_CENTRAL = 65,
  SZ_MICHIGAN_SOUTH = 66,
  SZ_MINNESOTA_NORTH = 67,
  SZ_MINNESOTA_CENTRAL = 68,
  SZ_MINNESOTA_SOUTH = 69,
  SZ_MISSISSIPPI_EAST = 70,
  SZ_MISSISSIPPI_WEST = 71,
  SZ_MISSOURI_EAST = 72,
  SZ_MISSOURI_CENTRAL = 73,
  SZ_MISSOURI_WEST = 74,
  SZ_MONTANA = 75,
  SZ_MONTANA_NORTH = 76,
  SZ_MONTANA_CENTRAL = 77,
  SZ_MONTANA_SOUTH = 78,
  SZ_NEBRASKA = 79,
  SZ_NEBRASKA_NORTH = 80,
  SZ_NEBRASKA_SOUTH = 81,
  SZ_NEVADA_EAST = 82,
  SZ_NEVADA_CENTRAL = 83,
  SZ_NEVADA_WEST = 84,
  SZ_NEW_HAMPSHIRE = 85,
  SZ_NEW_JERSEY = 86,
  SZ_NEW_MEXICO_EAST = 87,
  SZ_NEW_MEXICO_CENTRAL = 88,
  SZ_NEW_MEXICO_WEST = 89,
  SZ_NEW_YORK_EAST = 90,
  SZ_NEW_YORK_CENTRAL = 91,
  SZ_NEW_YORK_WEST = 92,
  SZ_NEW_YORK_LONG_ISLAND = 93,
  SZ_NORTH_CAROLINA = 94,
  SZ_NORTH_DAKOTA_NORTH = 95,
  SZ_NORTH_DAKOTA_SOUTH = 96,
  SZ_OHIO_NORTH = 97,
  SZ_OHIO_SOUTH = 98,
  SZ_OKLAHOMA_NORTH = 99,
  SZ_OKLAHOMA_SOUTH = 100,
  SZ_OREGON_NORTH = 101,
  SZ_OREGON_SOUTH = 102,
  SZ_PENNSYLVANIA_NORTH = 103,
  SZ_PENNSYLVANIA_SOUTH = 104,
  SZ_PUERTO_RICO_AND_VIRGIN_ISLANDS_1983 = 105,
  SZ_PUERTO_RICO_AND_VIRGIN_ISLANDS_1927 = 106,
  SZ_VIRGIN_ISLANDS_ST_CROIX_1927 = 107,
  SZ_RHODE_ISLAND = 108,
  SZ_AMERICAN_SAMOA = 109,
  SZ_SOUTH_CAROLINA = 110,
  SZ_SOUTH_CAROLINA_NORTH = 111,
  SZ_SOUTH_CAROLINA_SOUTH = 112,
  SZ_SOUTH_DAKOTA_NORTH = 113,
  SZ_SOUTH_DAKOTA_SOUTH = 114,
  SZ_TENNESSEE = 115,
  SZ_TEXAS_NORTH = 116,
  SZ_TEXAS_NORTH_CENTRAL = 117,
  SZ_TEXAS_CENTRAL = 118,
  SZ_TEXAS_SOUTH_CENTRAL = 119,
  SZ_TEXAS_SOUTH = 120,
  SZ_UTAH_NORTH = 121,
  SZ_UTAH_CENTRAL = 122,
  SZ_UTAH_SOUTH = 123,
  SZ_VERMONT = 124,
  SZ_VIRGINIA_NORTH = 125,
  SZ_VIRGINIA_SOUTH = 126,
  SZ_WASHINGTON_NORTH = 127,
  SZ_WASHINGTON_SOUTH = 128,
  SZ_WEST_VIRGINIA_NORTH = 129,
  SZ_WEST_VIRGINIA_SOUTH = 130,
  SZ_WISCONSIN_NORTH = 131,
  SZ_WISCONSIN_CENTRAL = 132,
  SZ_WISCONSIN_SOUTH = 133,
  SZ_WYOMING_EAST = 134,
  SZ_WYOMING_EAST_CENTRAL = 135,
  SZ_WYOMING_WEST_CENTRAL = 136,
  SZ_WYOMING_WEST = 137,
  SZ_GREAT_LAKES_SURVEY_1 = 138,
  SZ_GREAT_LAKES_SURVEY_2 = 139,
  SZ_GREAT_LAKES_SURVEY_3 = 140,
  SZ_GREAT_LAKES_SURVEY_4 = 141,
  SZ_NONE = 142  ///< no zone
};

/// Name and USGS code of a zone; name becomes "" and the code 0 outside the catalogue. Each output may be null.
///   name  room for at least 64 characters. The two Mississippi zones are spelt "Missippippi".
ORVEX_API void ORVEX_CALL ProjGetStateZoneInfo(StateZoneType zone, char* name, int* usgsCode);
/// Finds a zone by its whole name without regard to ASCII case. Not found: *zone is SZ_NONE. False for a null or empty
/// name.
ORVEX_API bool ORVEX_CALL ProjGetStateZoneFromName(StateZoneType* zone, const char* name);
/// Finds the first zone with a USGS code (0 finds the first zone that has none). Not found: *zone is SZ_NONE. False for
/// a null pointer or a negative code, nothing written.
ORVEX_API bool ORVEX_CALL ProjGetStateZoneFromUSGSCode(StateZoneType* zone, int code);
/// Finds a zone by its POSC (EPSG) number and tells the zone set: PT_STATEPLANE27 or PT_STATEPLANE83. Not
/// found: false, nothing written. Outputs may be null.
ORVEX_API bool ORVEX_CALL ProjGetStateZoneFromPOSCNumber(int posc, ProjType* type, StateZoneType* zone);
/// POSC number of a zone in one of the two sets; false when it has none. `posc` may be null.
ORVEX_API bool ORVEX_CALL ProjStateZoneToPOSCNumber(ProjType type, StateZoneType zone, int* posc);
/// Replaces a state plane record by the zone's own projection: type, ellipsoid with radius and flattening, origin,
/// parallels, K0 and false origin (metres). On failure (no state plane type, no such zone in the set) Zone becomes
/// SZ_NONE.
ORVEX_API void ORVEX_CALL ProjGetStateZoneParams(PROJDATA* pData);

/// Layouts of UTM zone names.
enum UTMZoneNameFormat : std::int32_t {
  UTMZN_SHORT = 0,    ///< "Zone 33N"
  UTMZN_LETTERS = 1,  ///< "Zone 33N (012E to 018E)"
  UTMZN_SIGNED = 2    ///< "Zone 33N (+12 to +18)"; three digits from 100 on
};

/// Writes a zone's name. Any integer zone is taken modulo 60. False, nothing written, for a null name, an unknown
/// format or when text and terminator do not fit into nameLen characters.
ORVEX_API bool ORVEX_CALL ProjUTMZoneNumberToName(int zone, bool south, char* name, int nameLen,
                                                  UTMZoneNameFormat format);
/// Reads the first number in a text as a zone ("Zone 33N", "UTM 10S", "-1"), modulo 60, and an 's' after it as south.
/// `zone` and `south` may be null. False when there is no number.
ORVEX_API bool ORVEX_CALL ProjUTMZoneNameToNumber(const char* name, int* zone, bool* south);
/// Zone of a longitude in degrees. The longitude is truncated towards zero first, so -0.5 lies in zone 31.
ORVEX_API int ORVEX_CALL ProjUTMLonToZoneNumber(double lon);
/// Central meridian of a zone in degrees; any integer zone is taken modulo 60.
ORVEX_API double ORVEX_CALL ProjUTMZoneNumberToLon(int zone);

}  // namespace orvex
