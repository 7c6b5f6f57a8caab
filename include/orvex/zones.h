/// \file
/// US state plane zones and UTM zones.
#pragma once

#include <cstdint>

#include <orvex/export.h>
#include <orvex/projection.h>

namespace orvex {

/// \addtogroup zones
/// \{

/// The state plane zones of both sets (1927 and 1983) in catalogue order; not every zone exists in both.
enum StateZoneType : std::int32_t {
  SZ_ALABAMA_EAST = 0,                           ///< Alabama East
  SZ_ALABAMA_WEST = 1,                           ///< Alabama West
  SZ_ALASKA_1 = 2,                               ///< Alaska 1
  SZ_ALASKA_2 = 3,                               ///< Alaska 2
  SZ_ALASKA_3 = 4,                               ///< Alaska 3
  SZ_ALASKA_4 = 5,                               ///< Alaska 4
  SZ_ALASKA_5 = 6,                               ///< Alaska 5
  SZ_ALASKA_6 = 7,                               ///< Alaska 6
  SZ_ALASKA_7 = 8,                               ///< Alaska 7
  SZ_ALASKA_8 = 9,                               ///< Alaska 8
  SZ_ALASKA_9 = 10,                              ///< Alaska 9
  SZ_ALASKA_10 = 11,                             ///< Alaska 10
  SZ_ARIZONA_EAST = 12,                          ///< Arizona East
  SZ_ARIZONA_CENTRAL = 13,                       ///< Arizona Central
  SZ_ARIZONA_WEST = 14,                          ///< Arizona West
  SZ_ARKANSAS_NORTH = 15,                        ///< Arkansas North
  SZ_ARKANSAS_SOUTH = 16,                        ///< Arkansas South
  SZ_CALIFORNIA_I = 17,                          ///< California I
  SZ_CALIFORNIA_II = 18,                         ///< California II
  SZ_CALIFORNIA_III = 19,                        ///< California III
  SZ_CALIFORNIA_IV = 20,                         ///< California IV
  SZ_CALIFORNIA_V = 21,                          ///< California V
  SZ_CALIFORNIA_VI = 22,                         ///< California VI
  SZ_CALIFORNIA_VII = 23,                        ///< California VII
  SZ_COLORADO_NORTH = 24,                        ///< Colorado North
  SZ_COLORADO_CENTRAL = 25,                      ///< Colorado Central
  SZ_COLORADO_SOUTH = 26,                        ///< Colorado South
  SZ_CONNECTICUT = 27,                           ///< Connecticut
  SZ_DELAWARE = 28,                              ///< Delaware
  SZ_FLORIDA_NORTH = 29,                         ///< Florida North
  SZ_FLORIDA_EAST = 30,                          ///< Florida East
  SZ_FLORIDA_WEST = 31,                          ///< Florida West
  SZ_GEORGIA_EAST = 32,                          ///< Georgia East
  SZ_GEORGIA_WEST = 33,                          ///< Georgia West
  SZ_GUAM_ISLAND = 34,                           ///< Guam Island
  SZ_HAWAII_1 = 35,                              ///< Hawaii 1
  SZ_HAWAII_2 = 36,                              ///< Hawaii 2
  SZ_HAWAII_3 = 37,                              ///< Hawaii 3
  SZ_HAWAII_4 = 38,                              ///< Hawaii 4
  SZ_HAWAII_5 = 39,                              ///< Hawaii 5
  SZ_IDAHO_EAST = 40,                            ///< Idaho East
  SZ_IDAHO_CENTRAL = 41,                         ///< Idaho Central
  SZ_IDAHO_WEST = 42,                            ///< Idaho West
  SZ_ILLINOIS_EAST = 43,                         ///< Illinois East
  SZ_ILLINOIS_WEST = 44,                         ///< Illinois West
  SZ_INDIANA_EAST = 45,                          ///< Indiana East
  SZ_INDIANA_WEST = 46,                          ///< Indiana West
  SZ_IOWA_NORTH = 47,                            ///< Iowa North
  SZ_IOWA_SOUTH = 48,                            ///< Iowa South
  SZ_KANSAS_NORTH = 49,                          ///< Kansas North
  SZ_KANSAS_SOUTH = 50,                          ///< Kansas South
  SZ_KENTUCKY_NORTH = 51,                        ///< Kentucky North
  SZ_KENTUCKY_SOUTH = 52,                        ///< Kentucky South
  SZ_LOUISIANA_NORTH = 53,                       ///< Louisiana North
  SZ_LOUISIANA_SOUTH = 54,                       ///< Louisiana South
  SZ_LOUISIANA_OFFSHORE = 55,                    ///< Louisiana Offshore
  SZ_MAINE_EAST = 56,                            ///< Maine East
  SZ_MAINE_WEST = 57,                            ///< Maine West
  SZ_MARYLAND = 58,                              ///< Maryland
  SZ_MASSACHUSETTS_MAINLAND = 59,                ///< Massachusetts Mainland
  SZ_MASSACHUSETTS_ISLAND = 60,                  ///< Massachusetts Island
  SZ_MICHIGAN_EAST_OLD = 61,                     ///< Michigan East (old)
  SZ_MICHIGAN_CENTRAL_OLD = 62,                  ///< Michigan Central (old)
  SZ_MICHIGAN_WEST_OLD = 63,                     ///< Michigan West (old)
  SZ_MICHIGAN_NORTH = 64,                        ///< Michigan North
  SZ_MICHIGAN_CENTRAL = 65,                      ///< Michigan Central
  SZ_MICHIGAN_SOUTH = 66,                        ///< Michigan South
  SZ_MINNESOTA_NORTH = 67,                       ///< Minnesota North
  SZ_MINNESOTA_CENTRAL = 68,                     ///< Minnesota Central
  SZ_MINNESOTA_SOUTH = 69,                       ///< Minnesota South
  SZ_MISSISSIPPI_EAST = 70,                      ///< Missippippi East
  SZ_MISSISSIPPI_WEST = 71,                      ///< Missippippi West
  SZ_MISSOURI_EAST = 72,                         ///< Missouri East
  SZ_MISSOURI_CENTRAL = 73,                      ///< Missouri Central
  SZ_MISSOURI_WEST = 74,                         ///< Missouri West
  SZ_MONTANA = 75,                               ///< Montana
  SZ_MONTANA_NORTH = 76,                         ///< Montana North
  SZ_MONTANA_CENTRAL = 77,                       ///< Montana Central
  SZ_MONTANA_SOUTH = 78,                         ///< Montana South
  SZ_NEBRASKA = 79,                              ///< Nebraska
  SZ_NEBRASKA_NORTH = 80,                        ///< Nebraska North
  SZ_NEBRASKA_SOUTH = 81,                        ///< Nebraska South
  SZ_NEVADA_EAST = 82,                           ///< Nevada East
  SZ_NEVADA_CENTRAL = 83,                        ///< Nevada Central
  SZ_NEVADA_WEST = 84,                           ///< Nevada West
  SZ_NEW_HAMPSHIRE = 85,                         ///< New Hampshire
  SZ_NEW_JERSEY = 86,                            ///< New Jersey
  SZ_NEW_MEXICO_EAST = 87,                       ///< New Mexico East
  SZ_NEW_MEXICO_CENTRAL = 88,                    ///< New Mexico Central
  SZ_NEW_MEXICO_WEST = 89,                       ///< New Mexico West
  SZ_NEW_YORK_EAST = 90,                         ///< New York East
  SZ_NEW_YORK_CENTRAL = 91,                      ///< New York Central
  SZ_NEW_YORK_WEST = 92,                         ///< New York West
  SZ_NEW_YORK_LONG_ISLAND = 93,                  ///< New York Long Island
  SZ_NORTH_CAROLINA = 94,                        ///< North Carolina
  SZ_NORTH_DAKOTA_NORTH = 95,                    ///< North Dakota North
  SZ_NORTH_DAKOTA_SOUTH = 96,                    ///< North Dakota South
  SZ_OHIO_NORTH = 97,                            ///< Ohio North
  SZ_OHIO_SOUTH = 98,                            ///< Ohio South
  SZ_OKLAHOMA_NORTH = 99,                        ///< Oklahoma North
  SZ_OKLAHOMA_SOUTH = 100,                       ///< Oklahoma South
  SZ_OREGON_NORTH = 101,                         ///< Oregon North
  SZ_OREGON_SOUTH = 102,                         ///< Oregon South
  SZ_PENNSYLVANIA_NORTH = 103,                   ///< Pennsylvania North
  SZ_PENNSYLVANIA_SOUTH = 104,                   ///< Pennsylvania South
  SZ_PUERTO_RICO_AND_VIRGIN_ISLANDS_1983 = 105,  ///< Puerto Rico and Virgin Islands (1983)
  SZ_PUERTO_RICO_AND_VIRGIN_ISLANDS_1927 = 106,  ///< Puerto Rico and Virgin Islands (1927)
  SZ_VIRGIN_ISLANDS_ST_CROIX_1927 = 107,         ///< Virgin Islands St. Croix (1927)
  SZ_RHODE_ISLAND = 108,                         ///< Rhode Island
  SZ_AMERICAN_SAMOA = 109,                       ///< American Samoa
  SZ_SOUTH_CAROLINA = 110,                       ///< South Carolina
  SZ_SOUTH_CAROLINA_NORTH = 111,                 ///< South Carolina North
  SZ_SOUTH_CAROLINA_SOUTH = 112,                 ///< South Carolina South
  SZ_SOUTH_DAKOTA_NORTH = 113,                   ///< South Dakota North
  SZ_SOUTH_DAKOTA_SOUTH = 114,                   ///< South Dakota South
  SZ_TENNESSEE = 115,                            ///< Tennessee
  SZ_TEXAS_NORTH = 116,                          ///< Texas North
  SZ_TEXAS_NORTH_CENTRAL = 117,                  ///< Texas North Central
  SZ_TEXAS_CENTRAL = 118,                        ///< Texas Central
  SZ_TEXAS_SOUTH_CENTRAL = 119,                  ///< Texas South Central
  SZ_TEXAS_SOUTH = 120,                          ///< Texas South
  SZ_UTAH_NORTH = 121,                           ///< Utah North
  SZ_UTAH_CENTRAL = 122,                         ///< Utah Central
  SZ_UTAH_SOUTH = 123,                           ///< Utah South
  SZ_VERMONT = 124,                              ///< Vermont
  SZ_VIRGINIA_NORTH = 125,                       ///< Virginia North
  SZ_VIRGINIA_SOUTH = 126,                       ///< Virginia South
  SZ_WASHINGTON_NORTH = 127,                     ///< Washington North
  SZ_WASHINGTON_SOUTH = 128,                     ///< Washington South
  SZ_WEST_VIRGINIA_NORTH = 129,                  ///< West Virginia North
  SZ_WEST_VIRGINIA_SOUTH = 130,                  ///< West Virginia South
  SZ_WISCONSIN_NORTH = 131,                      ///< Wisconsin North
  SZ_WISCONSIN_CENTRAL = 132,                    ///< Wisconsin Central
  SZ_WISCONSIN_SOUTH = 133,                      ///< Wisconsin South
  SZ_WYOMING_EAST = 134,                         ///< Wyoming East
  SZ_WYOMING_EAST_CENTRAL = 135,                 ///< Wyoming East Central
  SZ_WYOMING_WEST_CENTRAL = 136,                 ///< Wyoming West Central
  SZ_WYOMING_WEST = 137,                         ///< Wyoming West
  SZ_GREAT_LAKES_SURVEY_1 = 138,                 ///< Great Lakes Survey 1
  SZ_GREAT_LAKES_SURVEY_2 = 139,                 ///< Great Lakes Survey 2
  SZ_GREAT_LAKES_SURVEY_3 = 140,                 ///< Great Lakes Survey 3
  SZ_GREAT_LAKES_SURVEY_4 = 141,                 ///< Great Lakes Survey 4
  SZ_NONE = 142                                  ///< no zone
};

/// Name and USGS code of a zone; name becomes "" and the code 0 outside the catalogue. Each output may be null.
/// \param zone      the zone
/// \param name      room for at least 64 characters. The two Mississippi zones are spelt "Missippippi".
/// \param usgsCode  receives the code
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

/// \}

}  // namespace orvex
