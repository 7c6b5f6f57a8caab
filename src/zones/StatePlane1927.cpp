// StatePlane1927 - definitions of the 134 zones on the North American Datum 1927, row index = StateZoneType.
// Published as "State Plane Coordinate Systems, North American Datum 1927" (USGS, 1992), every zone cross-checked with
// the EPSG Dataset 10.076. Angles as printed, west and south negative; false origins in metres
// (US survey foot = 1200/3937 m).
#include <array>

#include "zones/StatePlaneZone.h"

namespace orvex::detail {

namespace {

constexpr EllipsoidType kClarke1866 = ET_CLARKE_1866;
constexpr EllipsoidType kMichigan = ET_STATE_PLANE_1927_MICHIGAN;

// clang-format off
// Where registered definitions disagree:
//   Alaska 1          the centre's coordinates; recomputed from the false origin at the natural origin they agree to 1e-7 m.
//   California VII    northing 4160926.74 ft (EPSG 26799), not 416926.74 ft.
//   Long Island       2000000 ft, 100000 ft (EPSG 4456); Tennessee 2000000 ft, 100000 ft (EPSG 2204).
//   Pennsylvania S    northern parallel 40d58' (EPSG 4455), not 40d48'.
//   Rhode Island      K0 = 1 - 1/160000, unrounded.
//   Michigan (old)    Clarke 1866 itself; the three Lambert zones stand on the ellipsoid enlarged by 800 ft.
//   American Samoa    published with one parallel, 14d16' S; entered as two, 0.001 degree either side (scale within 2e-10).
//   Guam              polyconic with the published approximate constants.
constexpr std::array<StatePlaneZone, SZ_NONE> kZones{{
    TransMerc(kClarke1866, "-85d50'",  "30d30'", 0.99996,            152400.3048006096),    //   0 Alabama East
    TransMerc(kClarke1866, "-87d30'",  "30",     0.9999333333333333, 152400.3048006096),    //   1 Alabama West
    Oblique(  kClarke1866, "-133d40'", "57",     "-36d52'11.6315", 0.9999, 818585.5672270928, 575219.2451072643),  //   2 Alaska 1
    TransMerc(kClarke1866, "-142",     "54",     0.9999,             152400.3048006096),    //   3 Alaska 2
    TransMerc(kClarke1866, "-146",     "54",     0.9999,             152400.3048006096),    //   4 Alaska 3
    TransMerc(kClarke1866, "-150",     "54",     0.9999,             152400.3048006096),    //   5 Alaska 4
    TransMerc(kClarke1866, "-154",     "54",     0.9999,             152400.3048006096),    //   6 Alaska 5
    TransMerc(kClarke1866, "-158",     "54",     0.9999,             152400.3048006096),    //   7 Alaska 6
    TransMerc(kClarke1866, "-162",     "54",     0.9999,             213360.4267208534),    //   8 Alaska 7
    TransMerc(kClarke1866, "-166",     "54",     0.9999,             152400.3048006096),    //   9 Alaska 8
    TransMerc(kClarke1866, "-170",     "54",     0.9999,             182880.3657607315),    //  10 Alaska 9
    Lambert(  kClarke1866, "-176",     "51",     "53d50'", "51d50'", 914401.8288036576),    //  11 Alaska 10
    TransMerc(kClarke1866, "-110d10'", "31",     0.9999,             152400.3048006096),    //  12 Arizona East
    TransMerc(kClarke1866, "-111d55'", "31",     0.9999,             152400.3048006096),    //  13 Arizona Central
    TransMerc(kClarke1866, "-113d45'", "31",     0.9999333333333333, 152400.3048006096),    //  14 Arizona West
    Lambert(  kClarke1866, "-92",      "34d20'", "36d14'", "34d56'", 609601.2192024384),    //  15 Arkansas North
    Lambert(  kClarke1866, "-92",      "32d40'", "34d46'", "33d18'", 609601.2192024384),    //  16 Arkansas South
    Lambert(  kClarke1866, "-122",     "39d20'", "41d40'", "40",     609601.2192024384),    //  17 California I
    Lambert(  kClarke1866, "-122",     "37d40'", "39d50'", "38d20'", 609601.2192024384),    //  18 California II
    Lambert(  kClarke1866, "-120d30'", "36d30'", "38d26'", "37d4'",  609601.2192024384),    //  19 California III
    Lambert(  kClarke1866, "-119",     "35d20'", "37d15'", "36",     609601.2192024384),    //  20 California IV
    Lambert(  kClarke1866, "-118",     "33d30'", "35d28'", "34d2'",  609601.2192024384),    //  21 California V
    Lambert(  kClarke1866, "-116d15'", "32d10'", "33d53'", "32d47'", 609601.2192024384),    //  22 California VI
    Lambert(  kClarke1866, "-118d20'", "34d8'",  "34d25'", "33d52'", 1276106.450596901, 1268253.006858014),  //  23 California VII
    Lambert(  kClarke1866, "-105d30'", "39d20'", "40d47'", "39d43'", 609601.2192024384),    //  24 Colorado North
    Lambert(  kClarke1866, "-105d30'", "37d50'", "39d45'", "38d27'", 609601.2192024384),    //  25 Colorado Central
    Lambert(  kClarke1866, "-105d30'", "36d40'", "38d26'", "37d14'", 609601.2192024384),    //  26 Colorado South
    Lambert(  kClarke1866, "-72d45'",  "40d50'", "41d52'", "41d12'", 182880.3657607315),    //  27 Connecticut
    TransMerc(kClarke1866, "-75d25'",  "38",     0.999995,           152400.3048006096),    //  28 Delaware
    Lambert(  kClarke1866, "-84d30'",  "29",     "30d45'", "29d35'", 609601.2192024384),    //  29 Florida North
    TransMerc(kClarke1866, "-81",      "24d20'", 0.9999411764705882, 152400.3048006096),    //  30 Florida East
    TransMerc(kClarke1866, "-82",      "24d20'", 0.9999411764705882, 152400.3048006096),    //  31 Florida West
    TransMerc(kClarke1866, "-82d10'",  "30",     0.9999,             152400.3048006096),    //  32 Georgia East
    TransMerc(kClarke1866, "-84d10'",  "30",     0.9999,             152400.3048006096),    //  33 Georgia West
    Polyconic(kClarke1866, "144d44'55.50254", "13d28'20.87887", 50000, 50000),              //  34 Guam Island
    TransMerc(kClarke1866, "-155d30'", "18d50'", 0.9999666666666667, 152400.3048006096),    //  35 Hawaii 1
    TransMerc(kClarke1866, "-156d40'", "20d20'", 0.9999666666666667, 152400.3048006096),    //  36 Hawaii 2
    TransMerc(kClarke1866, "-158",     "21d10'", 0.99999,            152400.3048006096),    //  37 Hawaii 3
    TransMerc(kClarke1866, "-159d30'", "21d50'", 0.99999,            152400.3048006096),    //  38 Hawaii 4
    TransMerc(kClarke1866, "-160d10'", "21d40'", 1,                  152400.3048006096),    //  39 Hawaii 5
    TransMerc(kClarke1866, "-112d10'", "41d40'", 0.9999473684210526, 152400.3048006096),    //  40 Idaho East
    TransMerc(kClarke1866, "-114",     "41d40'", 0.9999473684210526, 152400.3048006096),    //  41 Idaho Central
    TransMerc(kClarke1866, "-115d45'", "41d40'", 0.9999333333333333, 152400.3048006096),    //  42 Idaho West
    TransMerc(kClarke1866, "-88d20'",  "36d40'", 0.999975,           152400.3048006096),    //  43 Illinois East
    TransMerc(kClarke1866, "-90d10'",  "36d40'", 0.9999411764705882, 152400.3048006096),    //  44 Illinois West
    TransMerc(kClarke1866, "-85d40'",  "37d30'", 0.9999666666666667, 152400.3048006096),    //  45 Indiana East
    TransMerc(kClarke1866, "-87d5'",   "37d30'", 0.9999666666666667, 152400.3048006096),    //  46 Indiana West
    Lambert(  kClarke1866, "-93d30'",  "41d30'", "43d16'", "42d4'",  609601.2192024384),    //  47 Iowa North
    Lambert(  kClarke1866, "-93d30'",  "40",     "41d47'", "40d37'", 609601.2192024384),    //  48 Iowa South
    Lambert(  kClarke1866, "-98",      "38d20'", "39d47'", "38d43'", 609601.2192024384),    //  49 Kansas North
    Lambert(  kClarke1866, "-98d30'",  "36d40'", "38d34'", "37d16'", 609601.2192024384),    //  50 Kansas South
    Lambert(  kClarke1866, "-84d15'",  "37d30'", "38d58'", "37d58'", 609601.2192024384),    //  51 Kentucky North
    Lambert(  kClarke1866, "-85d45'",  "36d20'", "37d56'", "36d44'", 609601.2192024384),    //  52 Kentucky South
    Lambert(  kClarke1866, "-92d30'",  "30d40'", "32d40'", "31d10'", 609601.2192024384),    //  53 Louisiana North
    Lambert(  kClarke1866, "-91d20'",  "28d40'", "30d42'", "29d18'", 609601.2192024384),    //  54 Louisiana South
    Lambert(  kClarke1866, "-91d20'",  "25d40'", "27d50'", "26d10'", 609601.2192024384),    //  55 Louisiana Offshore
    TransMerc(kClarke1866, "-68d30'",  "43d50'", 0.9999,             152400.3048006096),    //  56 Maine East
    TransMerc(kClarke1866, "-70d10'",  "42d50'", 0.9999666666666667, 152400.3048006096),    //  57 Maine West
    Lambert(  kClarke1866, "-77",      "37d50'", "39d27'", "38d18'", 243840.4876809754),    //  58 Maryland
    Lambert(  kClarke1866, "-71d30'",  "41",     "42d41'", "41d43'", 182880.3657607315),    //  59 Massachusetts Mainland
    Lambert(  kClarke1866, "-70d30'",  "41",     "41d29'", "41d17'", 60960.12192024384),    //  60 Massachusetts Island
    TransMerc(kClarke1866, "-83d40'",  "41d30'", 0.9999428571428571, 152400.3048006096),    //  61 Michigan East (old)
    TransMerc(kClarke1866, "-85d45'",  "41d30'", 0.9999090909090909, 152400.3048006096),    //  62 Michigan Central (old)
    TransMerc(kClarke1866, "-88d45'",  "41d30'", 0.9999090909090909, 152400.3048006096),    //  63 Michigan West (old)
    Lambert(  kMichigan,   "-87",      "44d47'", "47d5'",  "45d29'", 609601.2192024384),    //  64 Michigan North
    Lambert(  kMichigan,   "-84d20'",  "43d19'", "45d42'", "44d11'", 609601.2192024384),    //  65 Michigan Central
    Lambert(  kMichigan,   "-84d20'",  "41d30'", "43d40'", "42d6'",  609601.2192024384),    //  66 Michigan South
    Lambert(  kClarke1866, "-93d6'",   "46d30'", "48d38'", "47d2'",  609601.2192024384),    //  67 Minnesota North
    Lambert(  kClarke1866, "-94d15'",  "45",     "47d3'",  "45d37'", 609601.2192024384),    //  68 Minnesota Central
    Lambert(  kClarke1866, "-94",      "43",     "45d13'", "43d47'", 609601.2192024384),    //  69 Minnesota South
    TransMerc(kClarke1866, "-88d50'",  "29d40'", 0.99996,            152400.3048006096),    //  70 Missippippi East
    TransMerc(kClarke1866, "-90d20'",  "30d30'", 0.9999411764705882, 152400.3048006096),    //  71 Missippippi West
    TransMerc(kClarke1866, "-90d30'",  "35d50'", 0.9999333333333333, 152400.3048006096),    //  72 Missouri East
    TransMerc(kClarke1866, "-92d30'",  "35d50'", 0.9999333333333333, 152400.3048006096),    //  73 Missouri Central
    TransMerc(kClarke1866, "-94d30'",  "36d10'", 0.9999411764705882, 152400.3048006096),    //  74 Missouri West
    Undefined(),                                                                            //  75 Montana
    Lambert(  kClarke1866, "-109d30'", "47",     "48d43'", "47d51'", 609601.2192024384),    //  76 Montana North
    Lambert(  kClarke1866, "-109d30'", "45d50'", "47d53'", "46d27'", 609601.2192024384),    //  77 Montana Central
    Lambert(  kClarke1866, "-109d30'", "44",     "46d24'", "44d52'", 609601.2192024384),    //  78 Montana South
    Undefined(),                                                                            //  79 Nebraska
    Lambert(  kClarke1866, "-100",     "41d20'", "42d49'", "41d51'", 609601.2192024384),    //  80 Nebraska North
    Lambert(  kClarke1866, "-99d30'",  "39d40'", "41d43'", "40d17'", 609601.2192024384),    //  81 Nebraska South
    TransMerc(kClarke1866, "-115d35'", "34d45'", 0.9999,             152400.3048006096),    //  82 Nevada East
    TransMerc(kClarke1866, "-116d40'", "34d45'", 0.9999,             152400.3048006096),    //  83 Nevada Central
    TransMerc(kClarke1866, "-118d35'", "34d45'", 0.9999,             152400.3048006096),    //  84 Nevada West
    TransMerc(kClarke1866, "-71d40'",  "42d30'", 0.9999666666666667, 152400.3048006096),    //  85 New Hampshire
    TransMerc(kClarke1866, "-74d40'",  "38d50'", 0.999975,           609601.2192024384),    //  86 New Jersey
    TransMerc(kClarke1866, "-104d20'", "31",     0.9999090909090909, 152400.3048006096),    //  87 New Mexico East
    TransMerc(kClarke1866, "-106d15'", "31",     0.9999,             152400.3048006096),    //  88 New Mexico Central
    TransMerc(kClarke1866, "-107d50'", "31",     0.9999166666666667, 152400.3048006096),    //  89 New Mexico West
    TransMerc(kClarke1866, "-74d20'",  "40",     0.9999666666666667, 152400.3048006096),    //  90 New York East
    TransMerc(kClarke1866, "-76d35'",  "40",     0.9999375,          152400.3048006096),    //  91 New York Central
    TransMerc(kClarke1866, "-78d35'",  "40",     0.9999375,          152400.3048006096),    //  92 New York West
    Lambert(  kClarke1866, "-74",      "40d30'", "41d2'",  "40d40'", 609601.2192024384, 30480.06096012192),  //  93 New York Long Island
    Lambert(  kClarke1866, "-79",      "33d45'", "36d10'", "34d20'", 609601.2192024384),    //  94 North Carolina
    Lambert(  kClarke1866, "-100d30'", "47",     "48d44'", "47d26'", 609601.2192024384),    //  95 North Dakota North
    Lambert(  kClarke1866, "-100d30'", "45d40'", "47d29'", "46d11'", 609601.2192024384),    //  96 North Dakota South
    Lambert(  kClarke1866, "-82d30'",  "39d40'", "41d42'", "40d26'", 609601.2192024384),    //  97 Ohio North
    Lambert(  kClarke1866, "-82d30'",  "38",     "40d2'",  "38d44'", 609601.2192024384),    //  98 Ohio South
    Lambert(  kClarke1866, "-98",      "35",     "36d46'", "35d34'", 609601.2192024384),    //  99 Oklahoma North
    Lambert(  kClarke1866, "-98",      "33d20'", "35d14'", "33d56'", 609601.2192024384),    // 100 Oklahoma South
    Lambert(  kClarke1866, "-120d30'", "43d40'", "46",     "44d20'", 609601.2192024384),    // 101 Oregon North
    Lambert(  kClarke1866, "-120d30'", "41d40'", "44",     "42d20'", 609601.2192024384),    // 102 Oregon South
    Lambert(  kClarke1866, "-77d45'",  "40d10'", "41d57'", "40d53'", 609601.2192024384),    // 103 Pennsylvania North
    Lambert(  kClarke1866, "-77d45'",  "39d20'", "40d58'", "39d56'", 609601.2192024384),    // 104 Pennsylvania South
    Undefined(),                                                                            // 105 Puerto Rico and Virgin Islands (1983)
    Lambert(  kClarke1866, "-66d26'",  "17d50'", "18d26'", "18d2'",  152400.3048006096),    // 106 Puerto Rico and Virgin Islands (1927)
    Lambert(  kClarke1866, "-66d26'",  "17d50'", "18d26'", "18d2'",  152400.3048006096, 30480.06096012192),  // 107 Virgin Islands St. Croix (1927)
    TransMerc(kClarke1866, "-71d30'",  "41d5'",  0.99999375,         152400.3048006096),    // 108 Rhode Island
    Lambert(  kClarke1866, "-170",     "-14d16'", "-14d15'56.4", "-14d16'3.6", 152400.3048006096, 95169.31165862332),  // 109 American Samoa
    Undefined(),                                                                            // 110 South Carolina
    Lambert(  kClarke1866, "-81",      "33",     "34d58'", "33d46'", 609601.2192024384),    // 111 South Carolina North
    Lambert(  kClarke1866, "-81",      "31d50'", "33d40'", "32d20'", 609601.2192024384),    // 112 South Carolina South
    Lambert(  kClarke1866, "-100",     "43d50'", "45d41'", "44d25'", 609601.2192024384),    // 113 South Dakota North
    Lambert(  kClarke1866, "-100d20'", "42d20'", "44d24'", "42d50'", 609601.2192024384),    // 114 South Dakota South
    Lambert(  kClarke1866, "-86",      "34d40'", "36d25'", "35d15'", 609601.2192024384, 30480.06096012192),  // 115 Tennessee
    Lambert(  kClarke1866, "-101d30'", "34",     "36d11'", "34d39'", 609601.2192024384),    // 116 Texas North
    Lambert(  kClarke1866, "-97d30'",  "31d40'", "33d58'", "32d8'",  609601.2192024384),    // 117 Texas North Central
    Lambert(  kClarke1866, "-100d20'", "29d40'", "31d53'", "30d7'",  609601.2192024384),    // 118 Texas Central
    Lambert(  kClarke1866, "-99",      "27d50'", "30d17'", "28d23'", 609601.2192024384),    // 119 Texas South Central
    Lambert(  kClarke1866, "-98d30'",  "25d40'", "27d50'", "26d10'", 609601.2192024384),    // 120 Texas South
    Lambert(  kClarke1866, "-111d30'", "40d20'", "41d47'", "40d43'", 609601.2192024384),    // 121 Utah North
    Lambert(  kClarke1866, "-111d30'", "38d20'", "40d39'", "39d1'",  609601.2192024384),    // 122 Utah Central
    Lambert(  kClarke1866, "-111d30'", "36d40'", "38d21'", "37d13'", 609601.2192024384),    // 123 Utah South
    TransMerc(kClarke1866, "-72d30'",  "42d30'", 0.9999642857142857, 152400.3048006096),    // 124 Vermont
    Lambert(  kClarke1866, "-78d30'",  "37d40'", "39d12'", "38d2'",  609601.2192024384),    // 125 Virginia North
    Lambert(  kClarke1866, "-78d30'",  "36d20'", "37d58'", "36d46'", 609601.2192024384),    // 126 Virginia South
    Lambert(  kClarke1866, "-120d50'", "47",     "48d44'", "47d30'", 609601.2192024384),    // 127 Washington North
    Lambert(  kClarke1866, "-120d30'", "45d20'", "47d20'", "45d50'", 609601.2192024384),    // 128 Washington South
    Lambert(  kClarke1866, "-79d30'",  "38d30'", "40d15'", "39",     609601.2192024384),    // 129 West Virginia North
    Lambert(  kClarke1866, "-81",      "37",     "38d53'", "37d29'", 609601.2192024384),    // 130 West Virginia South
    Lambert(  kClarke1866, "-90",      "45d10'", "46d46'", "45d34'", 609601.2192024384),    // 131 Wisconsin North
    Lambert(  kClarke1866, "-90",      "43d50'", "45d30'", "44d15'", 609601.2192024384),    // 132 Wisconsin Central
    Lambert(  kClarke1866, "-90",      "42",     "44d4'",  "42d44'", 609601.2192024384),    // 133 Wisconsin South
    TransMerc(kClarke1866, "-105d10'", "40d40'", 0.9999411764705882, 152400.3048006096),    // 134 Wyoming East
    TransMerc(kClarke1866, "-107d20'", "40d40'", 0.9999411764705882, 152400.3048006096),    // 135 Wyoming East Central
    TransMerc(kClarke1866, "-108d45'", "40d40'", 0.9999411764705882, 152400.3048006096),    // 136 Wyoming West Central
    TransMerc(kClarke1866, "-110d5'",  "40d40'", 0.9999411764705882, 152400.3048006096),    // 137 Wyoming West
    Undefined(),                                                                            // 138 Great Lakes Survey 1
    Undefined(),                                                                            // 139 Great Lakes Survey 2
    Undefined(),                                                                            // 140 Great Lakes Survey 3
    Undefined(),                                                                            // 141 Great Lakes Survey 4
}};
// clang-format on

}  // namespace

static_assert(CountDefined(kZones) == 134 && ZonesConsistent(kZones));

std::span<const StatePlaneZone, SZ_NONE> StatePlaneZones1927() {
  return kZones;
}

}  // namespace orvex::detail
