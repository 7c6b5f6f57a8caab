// StatePlane1927 - definitions of the 134 zones on the North American Datum 1927, row index = StateZoneType.
// Published as "State Plane Coordinate Systems, North American Datum 1927" (USGS, 1992), every zone cross-checked with
// the EPSG Dataset 10.076. Columns: projection, ellipsoid, Lon0, Lat0, Lat1, Lat2, Alpha, K0, false easting and
// northing in metres (US survey foot = 1200/3937 m). Where registered definitions disagree:
//   Alaska 1          the centre's coordinates; recomputed from the false origin at the natural origin they agree to
//   1e-7 m. California VII    northing 4160926.74 ft (EPSG 26799), not 416926.74 ft. Long Island       2000000 ft,
//   100000 ft (EPSG 4456); Tennessee 2000000 ft, 100000 ft (EPSG 2204). Pennsylvania S    northern parallel 40d58'
//   (EPSG 4455), not 40d48'. Rhode Island      K0 = 1 - 1/160000, unrounded. Michigan (old)    Clarke 1866 itself; the
//   three Lambert zones stand on the ellipsoid enlarged by 800 ft. American Samoa    published with one parallel,
//   14d16' S; entered as two, 0.001 degree either side (scale within 2e-10). Guam              polyconic with the
//   published approximate constants.
#include <array>

#include "zones/StatePlaneZone.h"

namespace orvex::detail {

namespace {

constexpr EllipsoidType kClarke1866 = ET_CLARKE_1866;
constexpr EllipsoidType kMichigan = ET_STATE_PLANE_1927_MICHIGAN;

// clang-format off
constexpr std::array<StatePlaneZone, SZ_NONE> kZones{{
    {PT_UTM,       kClarke1866, "-85d50'",         "30d30'",         "",            "",           "",                          0.99996, 152400.3048006096,                 0},  //   0 Alabama East
    {PT_UTM,       kClarke1866, "-87d30'",         "30",             "",            "",           "",               0.9999333333333333, 152400.3048006096,                 0},  //   1 Alabama West
    {PT_HOTINE,    kClarke1866, "-133d40'",        "57",             "",            "",           "-36d52'11.6315",             0.9999, 818585.5672270928, 575219.2451072643},  //   2 Alaska 1
    {PT_UTM,       kClarke1866, "-142",            "54",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //   3 Alaska 2
    {PT_UTM,       kClarke1866, "-146",            "54",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //   4 Alaska 3
    {PT_UTM,       kClarke1866, "-150",            "54",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //   5 Alaska 4
    {PT_UTM,       kClarke1866, "-154",            "54",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //   6 Alaska 5
    {PT_UTM,       kClarke1866, "-158",            "54",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //   7 Alaska 6
    {PT_UTM,       kClarke1866, "-162",            "54",             "",            "",           "",                           0.9999, 213360.4267208534,                 0},  //   8 Alaska 7
    {PT_UTM,       kClarke1866, "-166",            "54",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //   9 Alaska 8
    {PT_UTM,       kClarke1866, "-170",            "54",             "",            "",           "",                           0.9999, 182880.3657607315,                 0},  //  10 Alaska 9
    {PT_LAMBERT,   kClarke1866, "-176",            "51",             "53d50'",      "51d50'",     "",                                0, 914401.8288036576,                 0},  //  11 Alaska 10
    {PT_UTM,       kClarke1866, "-110d10'",        "31",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //  12 Arizona East
    {PT_UTM,       kClarke1866, "-111d55'",        "31",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //  13 Arizona Central
    {PT_UTM,       kClarke1866, "-113d45'",        "31",             "",            "",           "",               0.9999333333333333, 152400.3048006096,                 0},  //  14 Arizona West
    {PT_LAMBERT,   kClarke1866, "-92",             "34d20'",         "36d14'",      "34d56'",     "",                                0, 609601.2192024384,                 0},  //  15 Arkansas North
    {PT_LAMBERT,   kClarke1866, "-92",             "32d40'",         "34d46'",      "33d18'",     "",                                0, 609601.2192024384,                 0},  //  16 Arkansas South
    {PT_LAMBERT,   kClarke1866, "-122",            "39d20'",         "41d40'",      "40",         "",                                0, 609601.2192024384,                 0},  //  17 California I
    {PT_LAMBERT,   kClarke1866, "-122",            "37d40'",         "39d50'",      "38d20'",     "",                                0, 609601.2192024384,                 0},  //  18 California II
    {PT_LAMBERT,   kClarke1866, "-120d30'",        "36d30'",         "38d26'",      "37d4'",      "",                                0, 609601.2192024384,                 0},  //  19 California III
    {PT_LAMBERT,   kClarke1866, "-119",            "35d20'",         "37d15'",      "36",         "",                                0, 609601.2192024384,                 0},  //  20 California IV
    {PT_LAMBERT,   kClarke1866, "-118",            "33d30'",         "35d28'",      "34d2'",      "",                                0, 609601.2192024384,                 0},  //  21 California V
    {PT_LAMBERT,   kClarke1866, "-116d15'",        "32d10'",         "33d53'",      "32d47'",     "",                                0, 609601.2192024384,                 0},  //  22 California VI
    {PT_LAMBERT,   kClarke1866, "-118d20'",        "34d8'",          "34d25'",      "33d52'",     "",                                0, 1276106.450596901, 1268253.006858014},  //  23 California VII
    {PT_LAMBERT,   kClarke1866, "-105d30'",        "39d20'",         "40d47'",      "39d43'",     "",                                0, 609601.2192024384,                 0},  //  24 Colorado North
    {PT_LAMBERT,   kClarke1866, "-105d30'",        "37d50'",         "39d45'",      "38d27'",     "",                                0, 609601.2192024384,                 0},  //  25 Colorado Central
    {PT_LAMBERT,   kClarke1866, "-105d30'",        "36d40'",         "38d26'",      "37d14'",     "",                                0, 609601.2192024384,                 0},  //  26 Colorado South
    {PT_LAMBERT,   kClarke1866, "-72d45'",         "40d50'",         "41d52'",      "41d12'",     "",                                0, 182880.3657607315,                 0},  //  27 Connecticut
    {PT_UTM,       kClarke1866, "-75d25'",         "38",             "",            "",           "",                         0.999995, 152400.3048006096,                 0},  //  28 Delaware
    {PT_LAMBERT,   kClarke1866, "-84d30'",         "29",             "30d45'",      "29d35'",     "",                                0, 609601.2192024384,                 0},  //  29 Florida North
    {PT_UTM,       kClarke1866, "-81",             "24d20'",         "",            "",           "",               0.9999411764705882, 152400.3048006096,                 0},  //  30 Florida East
    {PT_UTM,       kClarke1866, "-82",             "24d20'",         "",            "",           "",               0.9999411764705882, 152400.3048006096,                 0},  //  31 Florida West
    {PT_UTM,       kClarke1866, "-82d10'",         "30",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //  32 Georgia East
    {PT_UTM,       kClarke1866, "-84d10'",         "30",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //  33 Georgia West
    {PT_POLYCONIC, kClarke1866, "144d44'55.50254", "13d28'20.87887", "",            "",           "",                                0,             50000,             50000},  //  34 Guam Island
    {PT_UTM,       kClarke1866, "-155d30'",        "18d50'",         "",            "",           "",               0.9999666666666667, 152400.3048006096,                 0},  //  35 Hawaii 1
    {PT_UTM,       kClarke1866, "-156d40'",        "20d20'",         "",            "",           "",               0.9999666666666667, 152400.3048006096,                 0},  //  36 Hawaii 2
    {PT_UTM,       kClarke1866, "-158",            "21d10'",         "",            "",           "",                          0.99999, 152400.3048006096,                 0},  //  37 Hawaii 3
    {PT_UTM,       kClarke1866, "-159d30'",        "21d50'",         "",            "",           "",                          0.99999, 152400.3048006096,                 0},  //  38 Hawaii 4
    {PT_UTM,       kClarke1866, "-160d10'",        "21d40'",         "",            "",           "",                                1, 152400.3048006096,                 0},  //  39 Hawaii 5
    {PT_UTM,       kClarke1866, "-112d10'",        "41d40'",         "",            "",           "",               0.9999473684210526, 152400.3048006096,                 0},  //  40 Idaho East
    {PT_UTM,       kClarke1866, "-114",            "41d40'",         "",            "",           "",               0.9999473684210526, 152400.3048006096,                 0},  //  41 Idaho Central
    {PT_UTM,       kClarke1866, "-115d45'",        "41d40'",         "",            "",           "",               0.9999333333333333, 152400.3048006096,                 0},  //  42 Idaho West
    {PT_UTM,       kClarke1866, "-88d20'",         "36d40'",         "",            "",           "",                         0.999975, 152400.3048006096,                 0},  //  43 Illinois East
    {PT_UTM,       kClarke1866, "-90d10'",         "36d40'",         "",            "",           "",               0.9999411764705882, 152400.3048006096,                 0},  //  44 Illinois West
    {PT_UTM,       kClarke1866, "-85d40'",         "37d30'",         "",            "",           "",               0.9999666666666667, 152400.3048006096,                 0},  //  45 Indiana East
    {PT_UTM,       kClarke1866, "-87d5'",          "37d30'",         "",            "",           "",               0.9999666666666667, 152400.3048006096,                 0},  //  46 Indiana West
    {PT_LAMBERT,   kClarke1866, "-93d30'",         "41d30'",         "43d16'",      "42d4'",      "",                                0, 609601.2192024384,                 0},  //  47 Iowa North
    {PT_LAMBERT,   kClarke1866, "-93d30'",         "40",             "41d47'",      "40d37'",     "",                                0, 609601.2192024384,                 0},  //  48 Iowa South
    {PT_LAMBERT,   kClarke1866, "-98",             "38d20'",         "39d47'",      "38d43'",     "",                                0, 609601.2192024384,                 0},  //  49 Kansas North
    {PT_LAMBERT,   kClarke1866, "-98d30'",         "36d40'",         "38d34'",      "37d16'",     "",                                0, 609601.2192024384,                 0},  //  50 Kansas South
    {PT_LAMBERT,   kClarke1866, "-84d15'",         "37d30'",         "38d58'",      "37d58'",     "",                                0, 609601.2192024384,                 0},  //  51 Kentucky North
    {PT_LAMBERT,   kClarke1866, "-85d45'",         "36d20'",         "37d56'",      "36d44'",     "",                                0, 609601.2192024384,                 0},  //  52 Kentucky South
    {PT_LAMBERT,   kClarke1866, "-92d30'",         "30d40'",         "32d40'",      "31d10'",     "",                                0, 609601.2192024384,                 0},  //  53 Louisiana North
    {PT_LAMBERT,   kClarke1866, "-91d20'",         "28d40'",         "30d42'",      "29d18'",     "",                                0, 609601.2192024384,                 0},  //  54 Louisiana South
    {PT_LAMBERT,   kClarke1866, "-91d20'",         "25d40'",         "27d50'",      "26d10'",     "",                                0, 609601.2192024384,                 0},  //  55 Louisiana Offshore
    {PT_UTM,       kClarke1866, "-68d30'",         "43d50'",         "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //  56 Maine East
    {PT_UTM,       kClarke1866, "-70d10'",         "42d50'",         "",            "",           "",               0.9999666666666667, 152400.3048006096,                 0},  //  57 Maine West
    {PT_LAMBERT,   kClarke1866, "-77",             "37d50'",         "39d27'",      "38d18'",     "",                                0, 243840.4876809754,                 0},  //  58 Maryland
    {PT_LAMBERT,   kClarke1866, "-71d30'",         "41",             "42d41'",      "41d43'",     "",                                0, 182880.3657607315,                 0},  //  59 Massachusetts Mainland
    {PT_LAMBERT,   kClarke1866, "-70d30'",         "41",             "41d29'",      "41d17'",     "",                                0, 60960.12192024384,                 0},  //  60 Massachusetts Island
    {PT_UTM,       kClarke1866, "-83d40'",         "41d30'",         "",            "",           "",               0.9999428571428571, 152400.3048006096,                 0},  //  61 Michigan East (old)
    {PT_UTM,       kClarke1866, "-85d45'",         "41d30'",         "",            "",           "",               0.9999090909090909, 152400.3048006096,                 0},  //  62 Michigan Central (old)
    {PT_UTM,       kClarke1866, "-88d45'",         "41d30'",         "",            "",           "",               0.9999090909090909, 152400.3048006096,                 0},  //  63 Michigan West (old)
    {PT_LAMBERT,   kMichigan,   "-87",             "44d47'",         "47d5'",       "45d29'",     "",                                0, 609601.2192024384,                 0},  //  64 Michigan North
    {PT_LAMBERT,   kMichigan,   "-84d20'",         "43d19'",         "45d42'",      "44d11'",     "",                                0, 609601.2192024384,                 0},  //  65 Michigan Central
    {PT_LAMBERT,   kMichigan,   "-84d20'",         "41d30'",         "43d40'",      "42d6'",      "",                                0, 609601.2192024384,                 0},  //  66 Michigan South
    {PT_LAMBERT,   kClarke1866, "-93d6'",          "46d30'",         "48d38'",      "47d2'",      "",                                0, 609601.2192024384,                 0},  //  67 Minnesota North
    {PT_LAMBERT,   kClarke1866, "-94d15'",         "45",             "47d3'",       "45d37'",     "",                                0, 609601.2192024384,                 0},  //  68 Minnesota Central
    {PT_LAMBERT,   kClarke1866, "-94",             "43",             "45d13'",      "43d47'",     "",                                0, 609601.2192024384,                 0},  //  69 Minnesota South
    {PT_UTM,       kClarke1866, "-88d50'",         "29d40'",         "",            "",           "",                          0.99996, 152400.3048006096,                 0},  //  70 Missippippi East
    {PT_UTM,       kClarke1866, "-90d20'",         "30d30'",         "",            "",           "",               0.9999411764705882, 152400.3048006096,                 0},  //  71 Missippippi West
    {PT_UTM,       kClarke1866, "-90d30'",         "35d50'",         "",            "",           "",               0.9999333333333333, 152400.3048006096,                 0},  //  72 Missouri East
    {PT_UTM,       kClarke1866, "-92d30'",         "35d50'",         "",            "",           "",               0.9999333333333333, 152400.3048006096,                 0},  //  73 Missouri Central
    {PT_UTM,       kClarke1866, "-94d30'",         "36d10'",         "",            "",           "",               0.9999411764705882, 152400.3048006096,                 0},  //  74 Missouri West
    {},                                                                                                                                                                         //  75 Montana: not defined
    {PT_LAMBERT,   kClarke1866, "-109d30'",        "47",             "48d43'",      "47d51'",     "",                                0, 609601.2192024384,                 0},  //  76 Montana North
    {PT_LAMBERT,   kClarke1866, "-109d30'",        "45d50'",         "47d53'",      "46d27'",     "",                                0, 609601.2192024384,                 0},  //  77 Montana Central
    {PT_LAMBERT,   kClarke1866, "-109d30'",        "44",             "46d24'",      "44d52'",     "",                                0, 609601.2192024384,                 0},  //  78 Montana South
    {},                                                                                                                                                                         //  79 Nebraska: not defined
    {PT_LAMBERT,   kClarke1866, "-100",            "41d20'",         "42d49'",      "41d51'",     "",                                0, 609601.2192024384,                 0},  //  80 Nebraska North
    {PT_LAMBERT,   kClarke1866, "-99d30'",         "39d40'",         "41d43'",      "40d17'",     "",                                0, 609601.2192024384,                 0},  //  81 Nebraska South
    {PT_UTM,       kClarke1866, "-115d35'",        "34d45'",         "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //  82 Nevada East
    {PT_UTM,       kClarke1866, "-116d40'",        "34d45'",         "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //  83 Nevada Central
    {PT_UTM,       kClarke1866, "-118d35'",        "34d45'",         "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //  84 Nevada West
    {PT_UTM,       kClarke1866, "-71d40'",         "42d30'",         "",            "",           "",               0.9999666666666667, 152400.3048006096,                 0},  //  85 New Hampshire
    {PT_UTM,       kClarke1866, "-74d40'",         "38d50'",         "",            "",           "",                         0.999975, 609601.2192024384,                 0},  //  86 New Jersey
    {PT_UTM,       kClarke1866, "-104d20'",        "31",             "",            "",           "",               0.9999090909090909, 152400.3048006096,                 0},  //  87 New Mexico East
    {PT_UTM,       kClarke1866, "-106d15'",        "31",             "",            "",           "",                           0.9999, 152400.3048006096,                 0},  //  88 New Mexico Central
    {PT_UTM,       kClarke1866, "-107d50'",        "31",             "",            "",           "",               0.9999166666666667, 152400.3048006096,                 0},  //  89 New Mexico West
    {PT_UTM,       kClarke1866, "-74d20'",         "40",             "",            "",           "",               0.9999666666666667, 152400.3048006096,                 0},  //  90 New York East
    {PT_UTM,       kClarke1866, "-76d35'",         "40",             "",            "",           "",                        0.9999375, 152400.3048006096,                 0},  //  91 New York Central
    {PT_UTM,       kClarke1866, "-78d35'",         "40",             "",            "",           "",                        0.9999375, 152400.3048006096,                 0},  //  92 New York West
    {PT_LAMBERT,   kClarke1866, "-74",             "40d30'",         "41d2'",       "40d40'",     "",                                0, 609601.2192024384, 30480.06096012192},  //  93 New York Long Island
    {PT_LAMBERT,   kClarke1866, "-79",             "33d45'",         "36d10'",      "34d20'",     "",                                0, 609601.2192024384,                 0},  //  94 North Carolina
    {PT_LAMBERT,   kClarke1866, "-100d30'",        "47",             "48d44'",      "47d26'",     "",                                0, 609601.2192024384,                 0},  //  95 North Dakota North
    {PT_LAMBERT,   kClarke1866, "-100d30'",        "45d40'",         "47d29'",      "46d11'",     "",                                0, 609601.2192024384,                 0},  //  96 North Dakota South
    {PT_LAMBERT,   kClarke1866, "-82d30'",         "39d40'",         "41d42'",      "40d26'",     "",                                0, 609601.2192024384,                 0},  //  97 Ohio North
    {PT_LAMBERT,   kClarke1866, "-82d30'",         "38",             "40d2'",       "38d44'",     "",                                0, 609601.2192024384,                 0},  //  98 Ohio South
    {PT_LAMBERT,   kClarke1866, "-98",             "35",             "36d46'",      "35d34'",     "",                                0, 609601.2192024384,                 0},  //  99 Oklahoma North
    {PT_LAMBERT,   kClarke1866, "-98",             "33d20'",         "35d14'",      "33d56'",     "",                                0, 609601.2192024384,                 0},  // 100 Oklahoma South
    {PT_LAMBERT,   kClarke1866, "-120d30'",        "43d40'",         "46",          "44d20'",     "",                                0, 609601.2192024384,                 0},  // 101 Oregon North
    {PT_LAMBERT,   kClarke1866, "-120d30'",        "41d40'",         "44",          "42d20'",     "",                                0, 609601.2192024384,                 0},  // 102 Oregon South
    {PT_LAMBERT,   kClarke1866, "-77d45'",         "40d10'",         "41d57'",      "40d53'",     "",                                0, 609601.2192024384,                 0},  // 103 Pennsylvania North
    {PT_LAMBERT,   kClarke1866, "-77d45'",         "39d20'",         "40d58'",      "39d56'",     "",                                0, 609601.2192024384,                 0},  // 104 Pennsylvania South
    {},                                                                                                                                                                         // 105 Puerto Rico and Virgin Islands (1983): not defined
    {PT_LAMBERT,   kClarke1866, "-66d26'",         "17d50'",         "18d26'",      "18d2'",      "",                                0, 152400.3048006096,                 0},  // 106 Puerto Rico and Virgin Islands (1927)
    {PT_LAMBERT,   kClarke1866, "-66d26'",         "17d50'",         "18d26'",      "18d2'",      "",                                0, 152400.3048006096, 30480.06096012192},  // 107 Virgin Islands St. Croix (1927)
    {PT_UTM,       kClarke1866, "-71d30'",         "41d5'",          "",            "",           "",                       0.99999375, 152400.3048006096,                 0},  // 108 Rhode Island
    {PT_LAMBERT,   kClarke1866, "-170",            "-14d16'",        "-14d15'56.4", "-14d16'3.6", "",                                0, 152400.3048006096, 95169.31165862332},  // 109 American Samoa
    {},                                                                                                                                                                         // 110 South Carolina: not defined
    {PT_LAMBERT,   kClarke1866, "-81",             "33",             "34d58'",      "33d46'",     "",                                0, 609601.2192024384,                 0},  // 111 South Carolina North
    {PT_LAMBERT,   kClarke1866, "-81",             "31d50'",         "33d40'",      "32d20'",     "",                                0, 609601.2192024384,                 0},  // 112 South Carolina South
    {PT_LAMBERT,   kClarke1866, "-100",            "43d50'",         "45d41'",      "44d25'",     "",                                0, 609601.2192024384,                 0},  // 113 South Dakota North
    {PT_LAMBERT,   kClarke1866, "-100d20'",        "42d20'",         "44d24'",      "42d50'",     "",                                0, 609601.2192024384,                 0},  // 114 South Dakota South
    {PT_LAMBERT,   kClarke1866, "-86",             "34d40'",         "36d25'",      "35d15'",     "",                                0, 609601.2192024384, 30480.06096012192},  // 115 Tennessee
    {PT_LAMBERT,   kClarke1866, "-101d30'",        "34",             "36d11'",      "34d39'",     "",                                0, 609601.2192024384,                 0},  // 116 Texas North
    {PT_LAMBERT,   kClarke1866, "-97d30'",         "31d40'",         "33d58'",      "32d8'",      "",                                0, 609601.2192024384,                 0},  // 117 Texas North Central
    {PT_LAMBERT,   kClarke1866, "-100d20'",        "29d40'",         "31d53'",      "30d7'",      "",                                0, 609601.2192024384,                 0},  // 118 Texas Central
    {PT_LAMBERT,   kClarke1866, "-99",             "27d50'",         "30d17'",      "28d23'",     "",                                0, 609601.2192024384,                 0},  // 119 Texas South Central
    {PT_LAMBERT,   kClarke1866, "-98d30'",         "25d40'",         "27d50'",      "26d10'",     "",                                0, 609601.2192024384,                 0},  // 120 Texas South
    {PT_LAMBERT,   kClarke1866, "-111d30'",        "40d20'",         "41d47'",      "40d43'",     "",                                0, 609601.2192024384,                 0},  // 121 Utah North
    {PT_LAMBERT,   kClarke1866, "-111d30'",        "38d20'",         "40d39'",      "39d1'",      "",                                0, 609601.2192024384,                 0},  // 122 Utah Central
    {PT_LAMBERT,   kClarke1866, "-111d30'",        "36d40'",         "38d21'",      "37d13'",     "",                                0, 609601.2192024384,                 0},  // 123 Utah South
    {PT_UTM,       kClarke1866, "-72d30'",         "42d30'",         "",            "",           "",               0.9999642857142857, 152400.3048006096,                 0},  // 124 Vermont
    {PT_LAMBERT,   kClarke1866, "-78d30'",         "37d40'",         "39d12'",      "38d2'",      "",                                0, 609601.2192024384,                 0},  // 125 Virginia North
    {PT_LAMBERT,   kClarke1866, "-78d30'",         "36d20'",         "37d58'",      "36d46'",     "",                                0, 609601.2192024384,                 0},  // 126 Virginia South
    {PT_LAMBERT,   kClarke1866, "-120d50'",        "47",             "48d44'",      "47d30'",     "",                                0, 609601.2192024384,                 0},  // 127 Washington North
    {PT_LAMBERT,   kClarke1866, "-120d30'",        "45d20'",         "47d20'",      "45d50'",     "",                                0, 609601.2192024384,                 0},  // 128 Washington South
    {PT_LAMBERT,   kClarke1866, "-79d30'",         "38d30'",         "40d15'",      "39",         "",                                0, 609601.2192024384,                 0},  // 129 West Virginia North
    {PT_LAMBERT,   kClarke1866, "-81",             "37",             "38d53'",      "37d29'",     "",                                0, 609601.2192024384,                 0},  // 130 West Virginia South
    {PT_LAMBERT,   kClarke1866, "-90",             "45d10'",         "46d46'",      "45d34'",     "",                                0, 609601.2192024384,                 0},  // 131 Wisconsin North
    {PT_LAMBERT,   kClarke1866, "-90",             "43d50'",         "45d30'",      "44d15'",     "",                                0, 609601.2192024384,                 0},  // 132 Wisconsin Central
    {PT_LAMBERT,   kClarke1866, "-90",             "42",             "44d4'",       "42d44'",     "",                                0, 609601.2192024384,                 0},  // 133 Wisconsin South
    {PT_UTM,       kClarke1866, "-105d10'",        "40d40'",         "",            "",           "",               0.9999411764705882, 152400.3048006096,                 0},  // 134 Wyoming East
    {PT_UTM,       kClarke1866, "-107d20'",        "40d40'",         "",            "",           "",               0.9999411764705882, 152400.3048006096,                 0},  // 135 Wyoming East Central
    {PT_UTM,       kClarke1866, "-108d45'",        "40d40'",         "",            "",           "",               0.9999411764705882, 152400.3048006096,                 0},  // 136 Wyoming West Central
    {PT_UTM,       kClarke1866, "-110d5'",         "40d40'",         "",            "",           "",               0.9999411764705882, 152400.3048006096,                 0},  // 137 Wyoming West
    {},                                                                                                                                                                         // 138 Great Lakes Survey 1: not defined
    {},                                                                                                                                                                         // 139 Great Lakes Survey 2: not defined
    {},                                                                                                                                                                         // 140 Great Lakes Survey 3: not defined
    {},                                                                                                                                                                         // 141 Great Lakes Survey 4: not defined
}};
// clang-format on

}  // namespace

static_assert(CountDefined(kZones) == 134 && ZonesConsistent(kZones));

std::span<const StatePlaneZone, SZ_NONE> StatePlaneZones1927() {
  return kZones;
}

}  // namespace orvex::detail
