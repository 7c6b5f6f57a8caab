// StatePlane1983 - definitions of the 123 zones on the North American Datum 1983, row index = StateZoneType.
// Published as "State Plane Coordinate Systems, North American Datum 1983" (USGS, 1992), every zone cross-checked with
// the EPSG Dataset 10.076. Angles as printed, west and south negative; false origins in metres.
#include <array>

#include "zones/StatePlaneZone.h"

namespace orvex::detail {

namespace {

constexpr EllipsoidType kGrs1980 = ET_GRS_1980_IUGG_1980;

// clang-format off
// Where registered definitions disagree:
//   Alaska 1          the centre's coordinates; recomputed from the false origin at the natural origin they agree to 1e-7 m.
//   Kentucky North    parallels 38d58' and 37d58' (EPSG 2205), not the same one twice.
//   Rhode Island      K0 = 1 - 1/160000 (EPSG 32130).
constexpr std::array<StatePlaneZone, SZ_NONE> kZones{{
    TransMerc(kGrs1980, "-85d50'",  "30d30'", 0.99996,            200000),          //   0 Alabama East
    TransMerc(kGrs1980, "-87d30'",  "30",     0.9999333333333333, 600000),          //   1 Alabama West
    Oblique(  kGrs1980, "-133d40'", "57",     "-36d52'11.6315", 0.9999, 818676.7344011233, 575097.6888751927),  //   2 Alaska 1
    TransMerc(kGrs1980, "-142",     "54",     0.9999,             500000),          //   3 Alaska 2
    TransMerc(kGrs1980, "-146",     "54",     0.9999,             500000),          //   4 Alaska 3
    TransMerc(kGrs1980, "-150",     "54",     0.9999,             500000),          //   5 Alaska 4
    TransMerc(kGrs1980, "-154",     "54",     0.9999,             500000),          //   6 Alaska 5
    TransMerc(kGrs1980, "-158",     "54",     0.9999,             500000),          //   7 Alaska 6
    TransMerc(kGrs1980, "-162",     "54",     0.9999,             500000),          //   8 Alaska 7
    TransMerc(kGrs1980, "-166",     "54",     0.9999,             500000),          //   9 Alaska 8
    TransMerc(kGrs1980, "-170",     "54",     0.9999,             500000),          //  10 Alaska 9
    Lambert(  kGrs1980, "-176",     "51",     "53d50'", "51d50'", 1000000),         //  11 Alaska 10
    TransMerc(kGrs1980, "-110d10'", "31",     0.9999,             213360),          //  12 Arizona East
    TransMerc(kGrs1980, "-111d55'", "31",     0.9999,             213360),          //  13 Arizona Central
    TransMerc(kGrs1980, "-113d45'", "31",     0.9999333333333333, 213360),          //  14 Arizona West
    Lambert(  kGrs1980, "-92",      "34d20'", "36d14'", "34d56'", 400000),          //  15 Arkansas North
    Lambert(  kGrs1980, "-92",      "32d40'", "34d46'", "33d18'", 400000, 400000),  //  16 Arkansas South
    Lambert(  kGrs1980, "-122",     "39d20'", "41d40'", "40",     2000000, 500000),  //  17 California I
    Lambert(  kGrs1980, "-122",     "37d40'", "39d50'", "38d20'", 2000000, 500000),  //  18 California II
    Lambert(  kGrs1980, "-120d30'", "36d30'", "38d26'", "37d4'",  2000000, 500000),  //  19 California III
    Lambert(  kGrs1980, "-119",     "35d20'", "37d15'", "36",     2000000, 500000),  //  20 California IV
    Lambert(  kGrs1980, "-118",     "33d30'", "35d28'", "34d2'",  2000000, 500000),  //  21 California V
    Lambert(  kGrs1980, "-116d15'", "32d10'", "33d53'", "32d47'", 2000000, 500000),  //  22 California VI
    Undefined(),                                                                    //  23 California VII
    Lambert(  kGrs1980, "-105d30'", "39d20'", "40d47'", "39d43'", 914401.8289, 304800.6096),  //  24 Colorado North
    Lambert(  kGrs1980, "-105d30'", "37d50'", "39d45'", "38d27'", 914401.8289, 304800.6096),  //  25 Colorado Central
    Lambert(  kGrs1980, "-105d30'", "36d40'", "38d26'", "37d14'", 914401.8289, 304800.6096),  //  26 Colorado South
    Lambert(  kGrs1980, "-72d45'",  "40d50'", "41d52'", "41d12'", 304800.6096, 152400.3048),  //  27 Connecticut
    TransMerc(kGrs1980, "-75d25'",  "38",     0.999995,           200000),          //  28 Delaware
    Lambert(  kGrs1980, "-84d30'",  "29",     "30d45'", "29d35'", 600000),          //  29 Florida North
    TransMerc(kGrs1980, "-81",      "24d20'", 0.9999411764705882, 200000),          //  30 Florida East
    TransMerc(kGrs1980, "-82",      "24d20'", 0.9999411764705882, 200000),          //  31 Florida West
    TransMerc(kGrs1980, "-82d10'",  "30",     0.9999,             200000),          //  32 Georgia East
    TransMerc(kGrs1980, "-84d10'",  "30",     0.9999,             700000),          //  33 Georgia West
    Undefined(),                                                                    //  34 Guam Island
    TransMerc(kGrs1980, "-155d30'", "18d50'", 0.9999666666666667, 500000),          //  35 Hawaii 1
    TransMerc(kGrs1980, "-156d40'", "20d20'", 0.9999666666666667, 500000),          //  36 Hawaii 2
    TransMerc(kGrs1980, "-158",     "21d10'", 0.99999,            500000),          //  37 Hawaii 3
    TransMerc(kGrs1980, "-159d30'", "21d50'", 0.99999,            500000),          //  38 Hawaii 4
    TransMerc(kGrs1980, "-160d10'", "21d40'", 1,                  500000),          //  39 Hawaii 5
    TransMerc(kGrs1980, "-112d10'", "41d40'", 0.9999473684210526, 200000),          //  40 Idaho East
    TransMerc(kGrs1980, "-114",     "41d40'", 0.9999473684210526, 500000),          //  41 Idaho Central
    TransMerc(kGrs1980, "-115d45'", "41d40'", 0.9999333333333333, 800000),          //  42 Idaho West
    TransMerc(kGrs1980, "-88d20'",  "36d40'", 0.999975,           300000),          //  43 Illinois East
    TransMerc(kGrs1980, "-90d10'",  "36d40'", 0.9999411764705882, 700000),          //  44 Illinois West
    TransMerc(kGrs1980, "-85d40'",  "37d30'", 0.9999666666666667, 100000, 250000),  //  45 Indiana East
    TransMerc(kGrs1980, "-87d5'",   "37d30'", 0.9999666666666667, 900000, 250000),  //  46 Indiana West
    Lambert(  kGrs1980, "-93d30'",  "41d30'", "43d16'", "42d4'",  1500000, 1000000),  //  47 Iowa North
    Lambert(  kGrs1980, "-93d30'",  "40",     "41d47'", "40d37'", 500000),          //  48 Iowa South
    Lambert(  kGrs1980, "-98",      "38d20'", "39d47'", "38d43'", 400000),          //  49 Kansas North
    Lambert(  kGrs1980, "-98d30'",  "36d40'", "38d34'", "37d16'", 400000, 400000),  //  50 Kansas South
    Lambert(  kGrs1980, "-84d15'",  "37d30'", "38d58'", "37d58'", 500000),          //  51 Kentucky North
    Lambert(  kGrs1980, "-85d45'",  "36d20'", "37d56'", "36d44'", 500000, 500000),  //  52 Kentucky South
    Lambert(  kGrs1980, "-92d30'",  "30d30'", "32d40'", "31d10'", 1000000),         //  53 Louisiana North
    Lambert(  kGrs1980, "-91d20'",  "28d30'", "30d42'", "29d18'", 1000000),         //  54 Louisiana South
    Lambert(  kGrs1980, "-91d20'",  "25d30'", "27d50'", "26d10'", 1000000),         //  55 Louisiana Offshore
    TransMerc(kGrs1980, "-68d30'",  "43d40'", 0.9999,             300000),          //  56 Maine East
    TransMerc(kGrs1980, "-70d10'",  "42d50'", 0.9999666666666667, 900000),          //  57 Maine West
    Lambert(  kGrs1980, "-77",      "37d40'", "39d27'", "38d18'", 400000),          //  58 Maryland
    Lambert(  kGrs1980, "-71d30'",  "41",     "42d41'", "41d43'", 200000, 750000),  //  59 Massachusetts Mainland
    Lambert(  kGrs1980, "-70d30'",  "41",     "41d29'", "41d17'", 500000),          //  60 Massachusetts Island
    Undefined(),                                                                    //  61 Michigan East (old)
    Undefined(),                                                                    //  62 Michigan Central (old)
    Undefined(),                                                                    //  63 Michigan West (old)
    Lambert(  kGrs1980, "-87",      "44d47'", "47d5'",  "45d29'", 8000000),         //  64 Michigan North
    Lambert(  kGrs1980, "-84d22'",  "43d19'", "45d42'", "44d11'", 6000000),         //  65 Michigan Central
    Lambert(  kGrs1980, "-84d22'",  "41d30'", "43d40'", "42d6'",  4000000),         //  66 Michigan South
    Lambert(  kGrs1980, "-93d6'",   "46d30'", "48d38'", "47d2'",  800000, 100000),  //  67 Minnesota North
    Lambert(  kGrs1980, "-94d15'",  "45",     "47d3'",  "45d37'", 800000, 100000),  //  68 Minnesota Central
    Lambert(  kGrs1980, "-94",      "43",     "45d13'", "43d47'", 800000, 100000),  //  69 Minnesota South
    TransMerc(kGrs1980, "-88d50'",  "29d30'", 0.99995,            300000),          //  70 Missippippi East
    TransMerc(kGrs1980, "-90d20'",  "29d30'", 0.99995,            700000),          //  71 Missippippi West
    TransMerc(kGrs1980, "-90d30'",  "35d50'", 0.9999333333333333, 250000),          //  72 Missouri East
    TransMerc(kGrs1980, "-92d30'",  "35d50'", 0.9999333333333333, 500000),          //  73 Missouri Central
    TransMerc(kGrs1980, "-94d30'",  "36d10'", 0.9999411764705882, 850000),          //  74 Missouri West
    Lambert(  kGrs1980, "-109d30'", "44d15'", "49",     "45",     600000),          //  75 Montana
    Undefined(),                                                                    //  76 Montana North
    Undefined(),                                                                    //  77 Montana Central
    Undefined(),                                                                    //  78 Montana South
    Lambert(  kGrs1980, "-100",     "39d50'", "43",     "40",     500000),          //  79 Nebraska
    Undefined(),                                                                    //  80 Nebraska North
    Undefined(),                                                                    //  81 Nebraska South
    TransMerc(kGrs1980, "-115d35'", "34d45'", 0.9999,             200000, 8000000),  //  82 Nevada East
    TransMerc(kGrs1980, "-116d40'", "34d45'", 0.9999,             500000, 6000000),  //  83 Nevada Central
    TransMerc(kGrs1980, "-118d35'", "34d45'", 0.9999,             800000, 4000000),  //  84 Nevada West
    TransMerc(kGrs1980, "-71d40'",  "42d30'", 0.9999666666666667, 300000),          //  85 New Hampshire
    TransMerc(kGrs1980, "-74d30'",  "38d50'", 0.9999,             150000),          //  86 New Jersey
    TransMerc(kGrs1980, "-104d20'", "31",     0.9999090909090909, 165000),          //  87 New Mexico East
    TransMerc(kGrs1980, "-106d15'", "31",     0.9999,             500000),          //  88 New Mexico Central
    TransMerc(kGrs1980, "-107d50'", "31",     0.9999166666666667, 830000),          //  89 New Mexico West
    TransMerc(kGrs1980, "-74d30'",  "38d50'", 0.9999,             150000),          //  90 New York East
    TransMerc(kGrs1980, "-76d35'",  "40",     0.9999375,          250000),          //  91 New York Central
    TransMerc(kGrs1980, "-78d35'",  "40",     0.9999375,          350000),          //  92 New York West
    Lambert(  kGrs1980, "-74",      "40d10'", "41d2'",  "40d40'", 300000),          //  93 New York Long Island
    Lambert(  kGrs1980, "-79",      "33d45'", "36d10'", "34d20'", 609601.22),       //  94 North Carolina
    Lambert(  kGrs1980, "-100d30'", "47",     "48d44'", "47d26'", 600000),          //  95 North Dakota North
    Lambert(  kGrs1980, "-100d30'", "45d40'", "47d29'", "46d11'", 600000),          //  96 North Dakota South
    Lambert(  kGrs1980, "-82d30'",  "39d40'", "41d42'", "40d26'", 600000),          //  97 Ohio North
    Lambert(  kGrs1980, "-82d30'",  "38",     "40d2'",  "38d44'", 600000),          //  98 Ohio South
    Lambert(  kGrs1980, "-98",      "35",     "36d46'", "35d34'", 600000),          //  99 Oklahoma North
    Lambert(  kGrs1980, "-98",      "33d20'", "35d14'", "33d56'", 600000),          // 100 Oklahoma South
    Lambert(  kGrs1980, "-120d30'", "43d40'", "46",     "44d20'", 2500000),         // 101 Oregon North
    Lambert(  kGrs1980, "-120d30'", "41d40'", "44",     "42d20'", 1500000),         // 102 Oregon South
    Lambert(  kGrs1980, "-77d45'",  "40d10'", "41d57'", "40d53'", 600000),          // 103 Pennsylvania North
    Lambert(  kGrs1980, "-77d45'",  "39d20'", "40d58'", "39d56'", 600000),          // 104 Pennsylvania South
    Lambert(  kGrs1980, "-66d26'",  "17d50'", "18d26'", "18d2'",  200000, 200000),  // 105 Puerto Rico and Virgin Islands (1983)
    Undefined(),                                                                    // 106 Puerto Rico and Virgin Islands (1927)
    Undefined(),                                                                    // 107 Virgin Islands St. Croix (1927)
    TransMerc(kGrs1980, "-71d30'",  "41d5'",  0.99999375,         100000),          // 108 Rhode Island
    Undefined(),                                                                    // 109 American Samoa
    Lambert(  kGrs1980, "-81",      "31d50'", "34d50'", "32d30'", 609600),          // 110 South Carolina
    Undefined(),                                                                    // 111 South Carolina North
    Undefined(),                                                                    // 112 South Carolina South
    Lambert(  kGrs1980, "-100",     "43d50'", "45d41'", "44d25'", 600000),          // 113 South Dakota North
    Lambert(  kGrs1980, "-100d20'", "42d20'", "44d24'", "42d50'", 600000),          // 114 South Dakota South
    Lambert(  kGrs1980, "-86",      "34d20'", "36d25'", "35d15'", 600000),          // 115 Tennessee
    Lambert(  kGrs1980, "-101d30'", "34",     "36d11'", "34d39'", 200000, 1000000),  // 116 Texas North
    Lambert(  kGrs1980, "-98d30'",  "31d40'", "33d58'", "32d8'",  600000, 2000000),  // 117 Texas North Central
    Lambert(  kGrs1980, "-100d20'", "29d40'", "31d53'", "30d7'",  700000, 3000000),  // 118 Texas Central
    Lambert(  kGrs1980, "-99",      "27d50'", "30d17'", "28d23'", 600000, 4000000),  // 119 Texas South Central
    Lambert(  kGrs1980, "-98d30'",  "25d40'", "27d50'", "26d10'", 300000, 5000000),  // 120 Texas South
    Lambert(  kGrs1980, "-111d30'", "40d20'", "41d47'", "40d43'", 500000, 1000000),  // 121 Utah North
    Lambert(  kGrs1980, "-111d30'", "38d20'", "40d39'", "39d1'",  500000, 2000000),  // 122 Utah Central
    Lambert(  kGrs1980, "-111d30'", "36d40'", "38d21'", "37d13'", 500000, 3000000),  // 123 Utah South
    TransMerc(kGrs1980, "-72d30'",  "42d30'", 0.9999642857142857, 500000),          // 124 Vermont
    Lambert(  kGrs1980, "-78d30'",  "37d40'", "39d12'", "38d2'",  3500000, 2000000),  // 125 Virginia North
    Lambert(  kGrs1980, "-78d30'",  "36d20'", "37d58'", "36d46'", 3500000, 1000000),  // 126 Virginia South
    Lambert(  kGrs1980, "-120d50'", "47",     "48d44'", "47d30'", 500000),          // 127 Washington North
    Lambert(  kGrs1980, "-120d30'", "45d20'", "47d20'", "45d50'", 500000),          // 128 Washington South
    Lambert(  kGrs1980, "-79d30'",  "38d30'", "40d15'", "39",     600000),          // 129 West Virginia North
    Lambert(  kGrs1980, "-81",      "37",     "38d53'", "37d29'", 600000),          // 130 West Virginia South
    Lambert(  kGrs1980, "-90",      "45d10'", "46d46'", "45d34'", 600000),          // 131 Wisconsin North
    Lambert(  kGrs1980, "-90",      "43d50'", "45d30'", "44d15'", 600000),          // 132 Wisconsin Central
    Lambert(  kGrs1980, "-90",      "42",     "44d4'",  "42d44'", 600000),          // 133 Wisconsin South
    TransMerc(kGrs1980, "-105d10'", "40d30'", 0.9999375,          200000),          // 134 Wyoming East
    TransMerc(kGrs1980, "-107d20'", "40d30'", 0.9999375,          400000, 100000),  // 135 Wyoming East Central
    TransMerc(kGrs1980, "-108d45'", "40d30'", 0.9999375,          600000),          // 136 Wyoming West Central
    TransMerc(kGrs1980, "-110d5'",  "40d30'", 0.9999375,          800000, 100000),  // 137 Wyoming West
    Undefined(),                                                                    // 138 Great Lakes Survey 1
    Undefined(),                                                                    // 139 Great Lakes Survey 2
    Undefined(),                                                                    // 140 Great Lakes Survey 3
    Undefined(),                                                                    // 141 Great Lakes Survey 4
}};
// clang-format on

}  // namespace

static_assert(CountDefined(kZones) == 123 && ZonesConsistent(kZones));

std::span<const StatePlaneZone, SZ_NONE> StatePlaneZones1983() {
  return kZones;
}

}  // namespace orvex::detail
