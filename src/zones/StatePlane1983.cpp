// StatePlane1983 - definitions of the 123 zones on the North American Datum 1983, row index = StateZoneType.
// Published as "State Plane Coordinate Systems, North American Datum 1983" (USGS, 1992), every zone cross-checked with
// the EPSG Dataset 10.076. Columns: projection, ellipsoid, Lon0, Lat0, Lat1, Lat2, Alpha, K0, false easting and
// northing in metres. Where registered definitions disagree:
//   Alaska 1          the centre's coordinates; recomputed from the false origin at the natural origin they agree to
//   1e-7 m. Kentucky North    parallels 38d58' and 37d58' (EPSG 2205), not the same one twice. Rhode Island      K0 = 1
//   - 1/160000 (EPSG 32130).
#include <array>

#include "zones/StatePlaneZone.h"

namespace orvex::detail {

namespace {

constexpr EllipsoidType kGrs1980 = ET_GRS_1980_IUGG_1980;

// clang-format off
constexpr std::array<StatePlaneZone, SZ_NONE> kZones{{
    {PT_UTM,     kGrs1980, "-85d50'",  "30d30'", "",       "",       "",                          0.99996,            200000,                 0},  //   0 Alabama East
    {PT_UTM,     kGrs1980, "-87d30'",  "30",     "",       "",       "",               0.9999333333333333,            600000,                 0},  //   1 Alabama West
    {PT_HOTINE,  kGrs1980, "-133d40'", "57",     "",       "",       "-36d52'11.6315",             0.9999, 818676.7344011233, 575097.6888751927},  //   2 Alaska 1
    {PT_UTM,     kGrs1980, "-142",     "54",     "",       "",       "",                           0.9999,            500000,                 0},  //   3 Alaska 2
    {PT_UTM,     kGrs1980, "-146",     "54",     "",       "",       "",                           0.9999,            500000,                 0},  //   4 Alaska 3
    {PT_UTM,     kGrs1980, "-150",     "54",     "",       "",       "",                           0.9999,            500000,                 0},  //   5 Alaska 4
    {PT_UTM,     kGrs1980, "-154",     "54",     "",       "",       "",                           0.9999,            500000,                 0},  //   6 Alaska 5
    {PT_UTM,     kGrs1980, "-158",     "54",     "",       "",       "",                           0.9999,            500000,                 0},  //   7 Alaska 6
    {PT_UTM,     kGrs1980, "-162",     "54",     "",       "",       "",                           0.9999,            500000,                 0},  //   8 Alaska 7
    {PT_UTM,     kGrs1980, "-166",     "54",     "",       "",       "",                           0.9999,            500000,                 0},  //   9 Alaska 8
    {PT_UTM,     kGrs1980, "-170",     "54",     "",       "",       "",                           0.9999,            500000,                 0},  //  10 Alaska 9
    {PT_LAMBERT, kGrs1980, "-176",     "51",     "53d50'", "51d50'", "",                                0,           1000000,                 0},  //  11 Alaska 10
    {PT_UTM,     kGrs1980, "-110d10'", "31",     "",       "",       "",                           0.9999,            213360,                 0},  //  12 Arizona East
    {PT_UTM,     kGrs1980, "-111d55'", "31",     "",       "",       "",                           0.9999,            213360,                 0},  //  13 Arizona Central
    {PT_UTM,     kGrs1980, "-113d45'", "31",     "",       "",       "",               0.9999333333333333,            213360,                 0},  //  14 Arizona West
    {PT_LAMBERT, kGrs1980, "-92",      "34d20'", "36d14'", "34d56'", "",                                0,            400000,                 0},  //  15 Arkansas North
    {PT_LAMBERT, kGrs1980, "-92",      "32d40'", "34d46'", "33d18'", "",                                0,            400000,            400000},  //  16 Arkansas South
    {PT_LAMBERT, kGrs1980, "-122",     "39d20'", "41d40'", "40",     "",                                0,           2000000,            500000},  //  17 California I
    {PT_LAMBERT, kGrs1980, "-122",     "37d40'", "39d50'", "38d20'", "",                                0,           2000000,            500000},  //  18 California II
    {PT_LAMBERT, kGrs1980, "-120d30'", "36d30'", "38d26'", "37d4'",  "",                                0,           2000000,            500000},  //  19 California III
    {PT_LAMBERT, kGrs1980, "-119",     "35d20'", "37d15'", "36",     "",                                0,           2000000,            500000},  //  20 California IV
    {PT_LAMBERT, kGrs1980, "-118",     "33d30'", "35d28'", "34d2'",  "",                                0,           2000000,            500000},  //  21 California V
    {PT_LAMBERT, kGrs1980, "-116d15'", "32d10'", "33d53'", "32d47'", "",                                0,           2000000,            500000},  //  22 California VI
    {},                                                                                                                                            //  23 California VII: not defined
    {PT_LAMBERT, kGrs1980, "-105d30'", "39d20'", "40d47'", "39d43'", "",                                0,       914401.8289,       304800.6096},  //  24 Colorado North
    {PT_LAMBERT, kGrs1980, "-105d30'", "37d50'", "39d45'", "38d27'", "",                                0,       914401.8289,       304800.6096},  //  25 Colorado Central
    {PT_LAMBERT, kGrs1980, "-105d30'", "36d40'", "38d26'", "37d14'", "",                                0,       914401.8289,       304800.6096},  //  26 Colorado South
    {PT_LAMBERT, kGrs1980, "-72d45'",  "40d50'", "41d52'", "41d12'", "",                                0,       304800.6096,       152400.3048},  //  27 Connecticut
    {PT_UTM,     kGrs1980, "-75d25'",  "38",     "",       "",       "",                         0.999995,            200000,                 0},  //  28 Delaware
    {PT_LAMBERT, kGrs1980, "-84d30'",  "29",     "30d45'", "29d35'", "",                                0,            600000,                 0},  //  29 Florida North
    {PT_UTM,     kGrs1980, "-81",      "24d20'", "",       "",       "",               0.9999411764705882,            200000,                 0},  //  30 Florida East
    {PT_UTM,     kGrs1980, "-82",      "24d20'", "",       "",       "",               0.9999411764705882,            200000,                 0},  //  31 Florida West
    {PT_UTM,     kGrs1980, "-82d10'",  "30",     "",       "",       "",                           0.9999,            200000,                 0},  //  32 Georgia East
    {PT_UTM,     kGrs1980, "-84d10'",  "30",     "",       "",       "",                           0.9999,            700000,                 0},  //  33 Georgia West
    {},                                                                                                                                            //  34 Guam Island: not defined
    {PT_UTM,     kGrs1980, "-155d30'", "18d50'", "",       "",       "",               0.9999666666666667,            500000,                 0},  //  35 Hawaii 1
    {PT_UTM,     kGrs1980, "-156d40'", "20d20'", "",       "",       "",               0.9999666666666667,            500000,                 0},  //  36 Hawaii 2
    {PT_UTM,     kGrs1980, "-158",     "21d10'", "",       "",       "",                          0.99999,            500000,                 0},  //  37 Hawaii 3
    {PT_UTM,     kGrs1980, "-159d30'", "21d50'", "",       "",       "",                          0.99999,            500000,                 0},  //  38 Hawaii 4
    {PT_UTM,     kGrs1980, "-160d10'", "21d40'", "",       "",       "",                                1,            500000,                 0},  //  39 Hawaii 5
    {PT_UTM,     kGrs1980, "-112d10'", "41d40'", "",       "",       "",               0.9999473684210526,            200000,                 0},  //  40 Idaho East
    {PT_UTM,     kGrs1980, "-114",     "41d40'", "",       "",       "",               0.9999473684210526,            500000,                 0},  //  41 Idaho Central
    {PT_UTM,     kGrs1980, "-115d45'", "41d40'", "",       "",       "",               0.9999333333333333,            800000,                 0},  //  42 Idaho West
    {PT_UTM,     kGrs1980, "-88d20'",  "36d40'", "",       "",       "",                         0.999975,            300000,                 0},  //  43 Illinois East
    {PT_UTM,     kGrs1980, "-90d10'",  "36d40'", "",       "",       "",               0.9999411764705882,            700000,                 0},  //  44 Illinois West
    {PT_UTM,     kGrs1980, "-85d40'",  "37d30'", "",       "",       "",               0.9999666666666667,            100000,            250000},  //  45 Indiana East
    {PT_UTM,     kGrs1980, "-87d5'",   "37d30'", "",       "",       "",               0.9999666666666667,            900000,            250000},  //  46 Indiana West
    {PT_LAMBERT, kGrs1980, "-93d30'",  "41d30'", "43d16'", "42d4'",  "",                                0,           1500000,           1000000},  //  47 Iowa North
    {PT_LAMBERT, kGrs1980, "-93d30'",  "40",     "41d47'", "40d37'", "",                                0,            500000,                 0},  //  48 Iowa South
    {PT_LAMBERT, kGrs1980, "-98",      "38d20'", "39d47'", "38d43'", "",                                0,            400000,                 0},  //  49 Kansas North
    {PT_LAMBERT, kGrs1980, "-98d30'",  "36d40'", "38d34'", "37d16'", "",                                0,            400000,            400000},  //  50 Kansas South
    {PT_LAMBERT, kGrs1980, "-84d15'",  "37d30'", "38d58'", "37d58'", "",                                0,            500000,                 0},  //  51 Kentucky North
    {PT_LAMBERT, kGrs1980, "-85d45'",  "36d20'", "37d56'", "36d44'", "",                                0,            500000,            500000},  //  52 Kentucky South
    {PT_LAMBERT, kGrs1980, "-92d30'",  "30d30'", "32d40'", "31d10'", "",                                0,           1000000,                 0},  //  53 Louisiana North
    {PT_LAMBERT, kGrs1980, "-91d20'",  "28d30'", "30d42'", "29d18'", "",                                0,           1000000,                 0},  //  54 Louisiana South
    {PT_LAMBERT, kGrs1980, "-91d20'",  "25d30'", "27d50'", "26d10'", "",                                0,           1000000,                 0},  //  55 Louisiana Offshore
    {PT_UTM,     kGrs1980, "-68d30'",  "43d40'", "",       "",       "",                           0.9999,            300000,                 0},  //  56 Maine East
    {PT_UTM,     kGrs1980, "-70d10'",  "42d50'", "",       "",       "",               0.9999666666666667,            900000,                 0},  //  57 Maine West
    {PT_LAMBERT, kGrs1980, "-77",      "37d40'", "39d27'", "38d18'", "",                                0,            400000,                 0},  //  58 Maryland
    {PT_LAMBERT, kGrs1980, "-71d30'",  "41",     "42d41'", "41d43'", "",                                0,            200000,            750000},  //  59 Massachusetts Mainland
    {PT_LAMBERT, kGrs1980, "-70d30'",  "41",     "41d29'", "41d17'", "",                                0,            500000,                 0},  //  60 Massachusetts Island
    {},                                                                                                                                            //  61 Michigan East (old): not defined
    {},                                                                                                                                            //  62 Michigan Central (old): not defined
    {},                                                                                                                                            //  63 Michigan West (old): not defined
    {PT_LAMBERT, kGrs1980, "-87",      "44d47'", "47d5'",  "45d29'", "",                                0,           8000000,                 0},  //  64 Michigan North
    {PT_LAMBERT, kGrs1980, "-84d22'",  "43d19'", "45d42'", "44d11'", "",                                0,           6000000,                 0},  //  65 Michigan Central
    {PT_LAMBERT, kGrs1980, "-84d22'",  "41d30'", "43d40'", "42d6'",  "",                                0,           4000000,                 0},  //  66 Michigan South
    {PT_LAMBERT, kGrs1980, "-93d6'",   "46d30'", "48d38'", "47d2'",  "",                                0,            800000,            100000},  //  67 Minnesota North
    {PT_LAMBERT, kGrs1980, "-94d15'",  "45",     "47d3'",  "45d37'", "",                                0,            800000,            100000},  //  68 Minnesota Central
    {PT_LAMBERT, kGrs1980, "-94",      "43",     "45d13'", "43d47'", "",                                0,            800000,            100000},  //  69 Minnesota South
    {PT_UTM,     kGrs1980, "-88d50'",  "29d30'", "",       "",       "",                          0.99995,            300000,                 0},  //  70 Missippippi East
    {PT_UTM,     kGrs1980, "-90d20'",  "29d30'", "",       "",       "",                          0.99995,            700000,                 0},  //  71 Missippippi West
    {PT_UTM,     kGrs1980, "-90d30'",  "35d50'", "",       "",       "",               0.9999333333333333,            250000,                 0},  //  72 Missouri East
    {PT_UTM,     kGrs1980, "-92d30'",  "35d50'", "",       "",       "",               0.9999333333333333,            500000,                 0},  //  73 Missouri Central
    {PT_UTM,     kGrs1980, "-94d30'",  "36d10'", "",       "",       "",               0.9999411764705882,            850000,                 0},  //  74 Missouri West
    {PT_LAMBERT, kGrs1980, "-109d30'", "44d15'", "49",     "45",     "",                                0,            600000,                 0},  //  75 Montana
    {},                                                                                                                                            //  76 Montana North: not defined
    {},                                                                                                                                            //  77 Montana Central: not defined
    {},                                                                                                                                            //  78 Montana South: not defined
    {PT_LAMBERT, kGrs1980, "-100",     "39d50'", "43",     "40",     "",                                0,            500000,                 0},  //  79 Nebraska
    {},                                                                                                                                            //  80 Nebraska North: not defined
    {},                                                                                                                                            //  81 Nebraska South: not defined
    {PT_UTM,     kGrs1980, "-115d35'", "34d45'", "",       "",       "",                           0.9999,            200000,           8000000},  //  82 Nevada East
    {PT_UTM,     kGrs1980, "-116d40'", "34d45'", "",       "",       "",                           0.9999,            500000,           6000000},  //  83 Nevada Central
    {PT_UTM,     kGrs1980, "-118d35'", "34d45'", "",       "",       "",                           0.9999,            800000,           4000000},  //  84 Nevada West
    {PT_UTM,     kGrs1980, "-71d40'",  "42d30'", "",       "",       "",               0.9999666666666667,            300000,                 0},  //  85 New Hampshire
    {PT_UTM,     kGrs1980, "-74d30'",  "38d50'", "",       "",       "",                           0.9999,            150000,                 0},  //  86 New Jersey
    {PT_UTM,     kGrs1980, "-104d20'", "31",     "",       "",       "",               0.9999090909090909,            165000,                 0},  //  87 New Mexico East
    {PT_UTM,     kGrs1980, "-106d15'", "31",     "",       "",       "",                           0.9999,            500000,                 0},  //  88 New Mexico Central
    {PT_UTM,     kGrs1980, "-107d50'", "31",     "",       "",       "",               0.9999166666666667,            830000,                 0},  //  89 New Mexico West
    {PT_UTM,     kGrs1980, "-74d30'",  "38d50'", "",       "",       "",                           0.9999,            150000,                 0},  //  90 New York East
    {PT_UTM,     kGrs1980, "-76d35'",  "40",     "",       "",       "",                        0.9999375,            250000,                 0},  //  91 New York Central
    {PT_UTM,     kGrs1980, "-78d35'",  "40",     "",       "",       "",                        0.9999375,            350000,                 0},  //  92 New York West
    {PT_LAMBERT, kGrs1980, "-74",      "40d10'", "41d2'",  "40d40'", "",                                0,            300000,                 0},  //  93 New York Long Island
    {PT_LAMBERT, kGrs1980, "-79",      "33d45'", "36d10'", "34d20'", "",                                0,         609601.22,                 0},  //  94 North Carolina
    {PT_LAMBERT, kGrs1980, "-100d30'", "47",     "48d44'", "47d26'", "",                                0,            600000,                 0},  //  95 North Dakota North
    {PT_LAMBERT, kGrs1980, "-100d30'", "45d40'", "47d29'", "46d11'", "",                                0,            600000,                 0},  //  96 North Dakota South
    {PT_LAMBERT, kGrs1980, "-82d30'",  "39d40'", "41d42'", "40d26'", "",                                0,            600000,                 0},  //  97 Ohio North
    {PT_LAMBERT, kGrs1980, "-82d30'",  "38",     "40d2'",  "38d44'", "",                                0,            600000,                 0},  //  98 Ohio South
    {PT_LAMBERT, kGrs1980, "-98",      "35",     "36d46'", "35d34'", "",                                0,            600000,                 0},  //  99 Oklahoma North
    {PT_LAMBERT, kGrs1980, "-98",      "33d20'", "35d14'", "33d56'", "",                                0,            600000,                 0},  // 100 Oklahoma South
    {PT_LAMBERT, kGrs1980, "-120d30'", "43d40'", "46",     "44d20'", "",                                0,           2500000,                 0},  // 101 Oregon North
    {PT_LAMBERT, kGrs1980, "-120d30'", "41d40'", "44",     "42d20'", "",                                0,           1500000,                 0},  // 102 Oregon South
    {PT_LAMBERT, kGrs1980, "-77d45'",  "40d10'", "41d57'", "40d53'", "",                                0,            600000,                 0},  // 103 Pennsylvania North
    {PT_LAMBERT, kGrs1980, "-77d45'",  "39d20'", "40d58'", "39d56'", "",                                0,            600000,                 0},  // 104 Pennsylvania South
    {PT_LAMBERT, kGrs1980, "-66d26'",  "17d50'", "18d26'", "18d2'",  "",                                0,            200000,            200000},  // 105 Puerto Rico and Virgin Islands (1983)
    {},                                                                                                                                            // 106 Puerto Rico and Virgin Islands (1927): not defined
    {},                                                                                                                                            // 107 Virgin Islands St. Croix (1927): not defined
    {PT_UTM,     kGrs1980, "-71d30'",  "41d5'",  "",       "",       "",                       0.99999375,            100000,                 0},  // 108 Rhode Island
    {},                                                                                                                                            // 109 American Samoa: not defined
    {PT_LAMBERT, kGrs1980, "-81",      "31d50'", "34d50'", "32d30'", "",                                0,            609600,                 0},  // 110 South Carolina
    {},                                                                                                                                            // 111 South Carolina North: not defined
    {},                                                                                                                                            // 112 South Carolina South: not defined
    {PT_LAMBERT, kGrs1980, "-100",     "43d50'", "45d41'", "44d25'", "",                                0,            600000,                 0},  // 113 South Dakota North
    {PT_LAMBERT, kGrs1980, "-100d20'", "42d20'", "44d24'", "42d50'", "",                                0,            600000,                 0},  // 114 South Dakota South
    {PT_LAMBERT, kGrs1980, "-86",      "34d20'", "36d25'", "35d15'", "",                                0,            600000,                 0},  // 115 Tennessee
    {PT_LAMBERT, kGrs1980, "-101d30'", "34",     "36d11'", "34d39'", "",                                0,            200000,           1000000},  // 116 Texas North
    {PT_LAMBERT, kGrs1980, "-98d30'",  "31d40'", "33d58'", "32d8'",  "",                                0,            600000,           2000000},  // 117 Texas North Central
    {PT_LAMBERT, kGrs1980, "-100d20'", "29d40'", "31d53'", "30d7'",  "",                                0,            700000,           3000000},  // 118 Texas Central
    {PT_LAMBERT, kGrs1980, "-99",      "27d50'", "30d17'", "28d23'", "",                                0,            600000,           4000000},  // 119 Texas South Central
    {PT_LAMBERT, kGrs1980, "-98d30'",  "25d40'", "27d50'", "26d10'", "",                                0,            300000,           5000000},  // 120 Texas South
    {PT_LAMBERT, kGrs1980, "-111d30'", "40d20'", "41d47'", "40d43'", "",                                0,            500000,           1000000},  // 121 Utah North
    {PT_LAMBERT, kGrs1980, "-111d30'", "38d20'", "40d39'", "39d1'",  "",                                0,            500000,           2000000},  // 122 Utah Central
    {PT_LAMBERT, kGrs1980, "-111d30'", "36d40'", "38d21'", "37d13'", "",                                0,            500000,           3000000},  // 123 Utah South
    {PT_UTM,     kGrs1980, "-72d30'",  "42d30'", "",       "",       "",               0.9999642857142857,            500000,                 0},  // 124 Vermont
    {PT_LAMBERT, kGrs1980, "-78d30'",  "37d40'", "39d12'", "38d2'",  "",                                0,           3500000,           2000000},  // 125 Virginia North
    {PT_LAMBERT, kGrs1980, "-78d30'",  "36d20'", "37d58'", "36d46'", "",                                0,           3500000,           1000000},  // 126 Virginia South
    {PT_LAMBERT, kGrs1980, "-120d50'", "47",     "48d44'", "47d30'", "",                                0,            500000,                 0},  // 127 Washington North
    {PT_LAMBERT, kGrs1980, "-120d30'", "45d20'", "47d20'", "45d50'", "",                                0,            500000,                 0},  // 128 Washington South
    {PT_LAMBERT, kGrs1980, "-79d30'",  "38d30'", "40d15'", "39",     "",                                0,            600000,                 0},  // 129 West Virginia North
    {PT_LAMBERT, kGrs1980, "-81",      "37",     "38d53'", "37d29'", "",                                0,            600000,                 0},  // 130 West Virginia South
    {PT_LAMBERT, kGrs1980, "-90",      "45d10'", "46d46'", "45d34'", "",                                0,            600000,                 0},  // 131 Wisconsin North
    {PT_LAMBERT, kGrs1980, "-90",      "43d50'", "45d30'", "44d15'", "",                                0,            600000,                 0},  // 132 Wisconsin Central
    {PT_LAMBERT, kGrs1980, "-90",      "42",     "44d4'",  "42d44'", "",                                0,            600000,                 0},  // 133 Wisconsin South
    {PT_UTM,     kGrs1980, "-105d10'", "40d30'", "",       "",       "",                        0.9999375,            200000,                 0},  // 134 Wyoming East
    {PT_UTM,     kGrs1980, "-107d20'", "40d30'", "",       "",       "",                        0.9999375,            400000,            100000},  // 135 Wyoming East Central
    {PT_UTM,     kGrs1980, "-108d45'", "40d30'", "",       "",       "",                        0.9999375,            600000,                 0},  // 136 Wyoming West Central
    {PT_UTM,     kGrs1980, "-110d5'",  "40d30'", "",       "",       "",                        0.9999375,            800000,            100000},  // 137 Wyoming West
    {},                                                                                                                                            // 138 Great Lakes Survey 1: not defined
    {},                                                                                                                                            // 139 Great Lakes Survey 2: not defined
    {},                                                                                                                                            // 140 Great Lakes Survey 3: not defined
    {},                                                                                                                                            // 141 Great Lakes Survey 4: not defined
}};
// clang-format on

}  // namespace

static_assert(CountDefined(kZones) == 123 && ZonesConsistent(kZones));

std::span<const StatePlaneZone, SZ_NONE> StatePlaneZones1983() {
  return kZones;
}

}  // namespace orvex::detail
