// DatumTable - 253 built-in datums in catalogue order, which is the order of every search; not sorted by number.
// Columns: number, POSC code (0 = none), name, method, ellipsoid; dx, dy, dz in metres; rx, ry, rz in arcseconds; k in
// parts per million; PMShift in degrees. What a row leaves out is 0.
#include "datum/DatumTable.h"

#include <array>
#include <cstdint>

namespace orvex::detail {

namespace {

// clang-format off
constexpr std::array<DatumRow, 253> kDatumRows{{
    {  1, 6269, "North American Datum 1983",                                 DM_MOLODENSKY,  3,     0,     0,     0},
    {  2, 6267, "North American Datum 1927",                                 DM_MOLODENSKY, 15,    -8,   160,   176},
    {  3, 6326, "World Geodetic System 1984",                                DM_MOLODENSKY, 47,     0,     0,     0},
    {  4, 6322, "World Geodetic System 1972",                                DM_MOLODENSKY, 46,     0,     0,     4},
    {  5, 6230, "European 1950 - Mean",                                      DM_MOLODENSKY, 34,   -87,   -98,  -121},
    {  6, 6291, "South American 1969",                                       DM_MOLODENSKY, 10,   -57,     1,   -41},
    {  7, 6301, "Tokyo",                                                     DM_MOLODENSKY, 12,  -148,   507,   685},
    {  8, 6201, "Adindan - Mean",                                            DM_MOLODENSKY, 16,  -166,   -15,   204},
    {  9,    0, "Adindan - Burkina Faso",                                    DM_MOLODENSKY, 16,  -118,   -14,   218},
    { 10,    0, "Adindan - Cameroon",                                        DM_MOLODENSKY, 16,  -134,    -2,   210},
    { 11,    0, "Adindan - Ethiopia",                                        DM_MOLODENSKY, 16,  -165,   -11,   206},
    { 12,    0, "Adindan - Mali",                                            DM_MOLODENSKY, 16,  -123,   -20,   220},
    { 13,    0, "Adindan - Senegal",                                         DM_MOLODENSKY, 16,  -128,   -18,   224},
    { 14, 6296, "Adindan - Sudan",                                           DM_MOLODENSKY, 16,  -161,   -14,   205},
    { 15, 6205, "Afgooye - Somalia",                                         DM_MOLODENSKY, 35,   -43,  -163,    45},
    { 16,    0, "Ain El Abd - Bahrain Island",                               DM_MOLODENSKY, 34,  -150,  -250,    -1},
    { 17,    0, "Ain El Abd - Saudi Arabia",                                 DM_MOLODENSKY, 34,  -143,  -236,     7},
    { 18,    0, "Anna 1 Astro 1965",                                         DM_MOLODENSKY, 10,  -491,   -22,   435},
    { 19,    0, "American Samoa Islands - 1962",                             DM_MOLODENSKY, 15,  -115,   118,   426},
    { 20,    0, "Antigua Island Astro 1943",                                 DM_MOLODENSKY, 16,  -270,    13,    62},
    { 21, 6209, "Arc 1950 - Mean",                                           DM_MOLODENSKY, 16,  -143,   -90,  -294},
    { 22,    0, "Arc 1950 - Botswana",                                       DM_MOLODENSKY, 16,  -138,  -105,  -289},
    { 23,    0, "Arc 1950 - Burundi",                                        DM_MOLODENSKY, 16,  -153,    -5,  -292},
    { 24,    0, "Arc 1950 - Lesotho",                                        DM_MOLODENSKY, 16,  -125,  -108,  -295},
    { 25,    0, "Arc 1950 - Malawi",                                         DM_MOLODENSKY, 16,  -161,   -73,  -317},
    { 26,    0, "Arc 1950 - Swaziland",                                      DM_MOLODENSKY, 16,  -134,  -105,  -295},
    { 27,    0, "Arc 1950 - Zaire",                                          DM_MOLODENSKY, 16,  -169,   -19,  -278},
    { 28,    0, "Arc 1950 - Zambia",                                         DM_MOLODENSKY, 16,  -147,   -74,  -283},
    { 29,    0, "Arc 1950 - Zimbabwe",                                       DM_MOLODENSKY, 16,  -142,   -96,  -293},
    { 30, 6210, "Arc 1960 - Mean",                                           DM_MOLODENSKY, 16,  -160,    -6,  -302},
    { 31,    0, "Ascension Island 1958",                                     DM_MOLODENSKY, 34,  -205,   107,    53},
    { 32,    0, "Astro Beacon 'E' 1945",                                     DM_MOLODENSKY, 34,   145,    75,   272},
    { 33,    0, "Astro B4 Sorol Atoll",                                      DM_MOLODENSKY, 34,   114,  -116,  -333},
    { 34,    0, "Astro Dos 71/4",                                            DM_MOLODENSKY, 34,  -320,   550,  -494},
    { 35,    0, "Astro Tern Island 1961",                                    DM_MOLODENSKY, 34,   114,  -116,  -333},
    { 36,    0, "Astronomic Station 1952",                                   DM_MOLODENSKY, 34,   124,  -234,   -25},
    { 37, 6202, "Australian Geodetic 1966",                                  DM_MOLODENSKY, 10,  -133,   -48,   148},
    { 38, 6203, "Australian Geodetic 1984",                                  DM_MOLODENSKY, 10,  -134,   -48,   149},
    { 39,    0, "Ayabelle Lighthouse",                                       DM_MOLODENSKY, 16,   -79,  -129,   145},
    { 40, 6313, "Belgium",                                                   DM_MOLODENSKY, 34,    81,   120,   129},
    { 41,    0, "Bellevue",                                                  DM_MOLODENSKY, 34,  -127,  -769,   472},
    { 42, 6216, "Bermuda 1957",                                              DM_MOLODENSKY, 15,   -73,   213,   296},
    { 43,    0, "Bissau",                                                    DM_MOLODENSKY, 34,  -173,   253,    27},
    { 44, 6218, "Bogota Observatory",                                        DM_MOLODENSKY, 34,   307,   304,  -318},
    { 45, 6219, "Bukit Rimpah - Bangka & Belitung Is.",                      DM_MOLODENSKY, 12,  -384,   664,   -48},
    { 46,    0, "Camp Area Astro - Antarctica",                              DM_MOLODENSKY, 34,  -104,  -129,   239},
    { 47, 6221, "Campo Inchausepe - Argentina",                              DM_MOLODENSKY, 34,  -148,   136,    90},
    { 48,    0, "Canton Astro 1966",                                         DM_MOLODENSKY, 34,   298,  -304,  -375},
    { 49, 6222, "Cape",                                                      DM_MOLODENSKY, 16,  -136,  -108,  -292},
    { 50,    0, "Cape Canaveral",                                            DM_MOLODENSKY, 15,    -2,   151,   181},
    { 51, 6223, "Carthage - Tunisia",                                        DM_MOLODENSKY, 16,  -263,     6,   431},
    { 52,    0, "Chatham 1971",                                              DM_MOLODENSKY, 34,   175,   -38,   113},
    { 53, 6224, "Chua Astro",                                                DM_MOLODENSKY, 34,  -134,   229,   -29},
    { 54, 6225, "Corrego Alegre - Brazil",                                   DM_MOLODENSKY, 34,  -206,   172,    -6},
    { 55,    0, "Czechoslovakia - Before 1993",                              DM_MOLODENSKY, 12,   589,    76,   480},
    { 56,    0, "Dabola",                                                    DM_MOLODENSKY, 16,   -83,    37,   124},
    { 57,    0, "Deception Island - Antarctica",                             DM_MOLODENSKY, 16,   260,    12,  -147},
    { 58,    0, "Djakarta - Sumatra",                                        DM_MOLODENSKY, 12,  -377,   681,   -50},
    { 59,    0, "DLx Portugal",                                              DM_MOLODENSKY, 34,  -303,   -62,   105},
    { 60,    0, "D73 Portugal",                                              DM_MOLODENSKY, 34,  -223,   110,    37},
    { 61,    0, "Dos 1968",                                                  DM_MOLODENSKY, 34,   230,  -199,  -752},
    { 62,    0, "Easter Island 1967",                                        DM_MOLODENSKY, 34,   211,   147,   111},
    { 63,    0, "Fahud",                                                     DM_MOLODENSKY, 16,  -346,    -1,  -224},
    { 64,    0, "European 1950 - W. Europe",                                 DM_MOLODENSKY, 34,   -87,   -96,  -120},
    { 65,    0, "European 1950 - UK/Ireland",                                DM_MOLODENSKY, 34,   -86,   -96,  -120},
    { 66,    0, "European 1950 - UK Only",                                   DM_MOLODENSKY, 34,   -86,   -96,  -120},
    { 67,    0, "European 1950 - Cyprus",                                    DM_MOLODENSKY, 34,  -104,  -101,  -140},
    { 68,    0, "European 1950 - Egypt",                                     DM_MOLODENSKY, 34,  -130,  -117,  -151},
    { 69,    0, "European 1950 - Iraq Israel Jordan etc.",                   DM_MOLODENSKY, 34,  -103,  -106,  -141},
    { 70,    0, "European 1950 - Iran",                                      DM_MOLODENSKY, 34,  -117,  -132,  -164},
    { 71,    0, "European 1950 - Greece",                                    DM_MOLODENSKY, 34,   -84,   -95,  -130},
    { 72,    0, "European 1950 - Sardinia",                                  DM_MOLODENSKY, 34,   -97,  -103,  -120},
    { 73,    0, "European 1950 - Sicily",                                    DM_MOLODENSKY, 34,   -97,   -88,  -135},
    { 74,    0, "European 1950 - Malta",                                     DM_MOLODENSKY, 34,  -107,   -88,  -149},
    { 75,    0, "European 1950 - Norway/Finland",                            DM_MOLODENSKY, 34,   -87,   -95,  -120},
    { 76,    0, "European 1950 - Port./Spain",                               DM_MOLODENSKY, 34,   -84,  -107,  -120},
    { 77,    0, "Eur. 1979 - Mean",                                          DM_MOLODENSKY, 34,   -86,   -98,  -119},
    { 78,    0, "European 1950 - Tunisia",                                   DM_MOLODENSKY, 34,  -112,   -77,  -145},
    { 79,    0, "Fort Thomas 1955",                                          DM_MOLODENSKY, 16,    -7,  -215,   225},
    { 80, 6233, "Gandajika  1970",                                           DM_MOLODENSKY, 34,  -133,  -321,    50},
    { 81, 6272, "Geodetic Datum 1949 - New Zealand",                         DM_MOLODENSKY, 34,    84,   -22,   209},
    { 82,    0, "Graciosa Base SW 1948",                                     DM_MOLODENSKY, 34,  -104,   167,   -38},
    { 83,    0, "Guam 1963",                                                 DM_MOLODENSKY, 15,   -99,  -251, 258.1},
    { 84,    0, "Gux 1 Astro",                                               DM_MOLODENSKY, 34,   252,  -209,  -751},
    { 85,    0, "Gunung Segara - Kalimantan Indonesia",                      DM_MOLODENSKY, 12,  -403,   684,    41},
    { 86, 6255, "Herat North - Afghanistan",                                 DM_MOLODENSKY, 34,  -333,  -222,   114},
    { 87,    0, "Hjorsey 1955 - Iceland",                                    DM_MOLODENSKY, 34,   -73,    46,   -86},
    { 88,    0, "Hong Kong 1963",                                            DM_MOLODENSKY, 34,  -156,  -271,  -189},
    { 89, 6236, "Hu-tzu-shan",                                               DM_MOLODENSKY, 34,  -637,  -549,  -203},
    { 90,    0, "Indian - Pakistan",                                         DM_MOLODENSKY, 26,   283,   682,   231},
    { 91,    0, "Indian - Bangladesh",                                       DM_MOLODENSKY, 20,   282,   726,   254},
    { 92,    0, "Indian - India Nepal",                                      DM_MOLODENSKY, 22,   295,   736,   257},
    { 93, 6239, "Indian 1954",                                               DM_MOLODENSKY, 20,   218,   816,   297},
    { 94,    0, "Indian 1954 Thailand",                                      DM_MOLODENSKY, 20,   217,   823,   299},
    { 95,    0, "Indian 1960 - Vietnam",                                     DM_MOLODENSKY, 20,   198,   881,   317},
    { 96,    0, "Indian 1960 - Con Son Island",                              DM_MOLODENSKY, 20,   182,   915,   344},
    { 97, 6240, "Indian 1975 - Thailand",                                    DM_MOLODENSKY, 20,   209,   818,   290},
    { 98, 6238, "Indonesian 1974",                                           DM_MOLODENSKY, 32,   -24,   -15,     5},
    { 99,    0, "Ireland 1965",                                              DM_MOLODENSKY,  8,   506,  -122,   611},
    {100,    0, "Ists 061 Astro 1968",                                       DM_MOLODENSKY, 34,  -794,   119,  -298},
    {101,    0, "Ists 073 Astro 1969",                                       DM_MOLODENSKY, 34,   208,  -435,  -229},
    {102,    0, "Johnston Island 1961",                                      DM_MOLODENSKY, 34,    89,   -79,  -202},
    {103, 6244, "Kandawala - Sri Lanka",                                     DM_MOLODENSKY, 20,   -97,   787,    86},
    {104,    0, "Kerguelen Island 1949",                                     DM_MOLODENSKY, 34,   145,  -187,   103},
    {105, 6245, "Kertau 1948 - West Malaysia & Singapore",                   DM_MOLODENSKY, 21,   -11,   851,     5},
    {106,    0, "Kusaie Astro 1951",                                         DM_MOLODENSKY, 34,   647,  1777, -1124},
    {107,    0, "L.C. 5 Astro 1961",                                         DM_MOLODENSKY, 15,    42,   124,   147},
    {108, 6250, "Leigon",                                                    DM_MOLODENSKY, 16,  -130,    29,   364},
    {109, 6251, "Liberia 1964",                                              DM_MOLODENSKY, 16,   -90,    40,    88},
    {110,    0, "Luzon - Philippines, except Mindanao Island",               DM_MOLODENSKY, 15,  -133,   -77,   -51},
    {111, 6253, "Luzon - Mindanao Island",                                   DM_MOLODENSKY, 15,  -133,   -79,   -72},
    {112, 6256, "Mahe 1971",                                                 DM_MOLODENSKY, 16,    41,  -220,  -134},
    {113,    0, "Marco Astro",                                               DM_MOLODENSKY, 34,  -289,  -124,    60},
    {114,    0, "Massawa - Eritrea",                                         DM_MOLODENSKY, 12,   639,   405,    60},
    {115, 6261, "Merchich - Morocco",                                        DM_MOLODENSKY, 52,    31,   146,    47},
    {116,    0, "Midway Astro 1961",                                         DM_MOLODENSKY, 34,   912,   -58,  1227},
    {117,    0, "Minna - Nigeria",                                           DM_MOLODENSKY, 16,   -92,   -93,   122},
    {118, 6263, "Minna - Cameroon",                                          DM_MOLODENSKY, 16,   -81,   -84,   115},
    {119,    0, "Montserrat Island Astro 1958",                              DM_MOLODENSKY, 16,   174,   359,   365},
    {120,    0, "Nahrwan - Masirah Island",                                  DM_MOLODENSKY, 16,  -247,  -148,   369},
    {121, 6270, "Nahrwan - U. Arab Emer.",                                   DM_MOLODENSKY, 16,  -249,  -156,   381},
    {122,    0, "Nahrwan - Saudi Arabia",                                    DM_MOLODENSKY, 16,  -243,  -192,   477},
    {123, 6271, "Naparima BWI",                                              DM_MOLODENSKY, 34,   -10,   375,   165},
    {124, 6267, "NAD 1927 - CONUS",                                          DM_MOLODENSKY, 15,    -8,   160,   176},
    {125,    0, "NAD 1927 - Western US",                                     DM_MOLODENSKY, 15,    -8,   159,   175},
    {126,    0, "NAD 1927 - Eastern US",                                     DM_MOLODENSKY, 15,    -9,   161,   179},
    {127,    0, "NAD 1927 - Alaska",                                         DM_MOLODENSKY, 15,    -5,   135,   172},
    {128,    0, "NAD 1927 - East of 180W - Aleutians",                       DM_MOLODENSKY, 15,    -2,   152,   149},
    {129,    0, "NAD 1927 - West of 180W - Aleutians",                       DM_MOLODENSKY, 15,     2,   204,   105},
    {130,    0, "NAD 1927 - Aleutian Islands",                               DM_MOLODENSKY, 15,    -2,     0,     4},
    {131,    0, "NAD 1927 - Bahamas",                                        DM_MOLODENSKY, 15,    -4,   154,   178},
    {132,    0, "NAD 1927 - Canada - Mean",                                  DM_MOLODENSKY, 15,   -10,   158,   187},
    {133,    0, "NAD 1927 - Canada - Alb/BC",                                DM_MOLODENSKY, 15,    -7,   162,   188},
    {134,    0, "NAD 1927 - Canada - Eastern",                               DM_MOLODENSKY, 15,   -22,   160,   190},
    {135,    0, "NAD 1927 - Canada - Man/Ont",                               DM_MOLODENSKY, 15,    -9,   157,   184},
    {136,    0, "NAD 1927 - Canada - NW/Sas.",                               DM_MOLODENSKY, 15,     4,   159,   188},
    {137,    0, "NAD 1927 - Canada - Yukon",                                 DM_MOLODENSKY, 15,    -7,   139,   181},
    {138,    0, "NAD 1927 - Canal Zone",                                     DM_MOLODENSKY, 15,     0,   125,   201},
    {139,    0, "NAD 1927 - Caribbean",                                      DM_MOLODENSKY, 15,    -3,   143,   183},
    {140,    0, "NAD 1927 - Central America",                                DM_MOLODENSKY, 15,     0,   125,   194},
    {141,    0, "NAD 1927 - Cuba",                                           DM_MOLODENSKY, 15,    -9,   152,   178},
    {142,    0, "NAD 1927 - Greenland",                                      DM_MOLODENSKY, 15,    11,   114,   195},
    {143,    0, "NAD 1927 - Hawaii",                                         DM_MOLODENSKY, 15,     1,     1,    -1},
    {144,    0, "NAD 1927 - Mexico",                                         DM_MOLODENSKY, 15,   -12,   130,   190},
    {145,    0, "NAD 1927 - San Salvador Island",                            DM_MOLODENSKY, 15,     1,   140,   165},
    {146,    0, "Netherlands",                                               DM_MOLODENSKY, 12,   593,    26,   478},
    {147, 6275, "NTF France - Paris Meridian",                               DM_MOLODENSKY, 34,   -83,   -96,  -113, 0, 0, 0, 0, 2.33722916666667},
    {148,    0, "NTF France - Greenwich Meridian",                           DM_MOLODENSKY, 52,  -168,   -60,   320},
    {149,    0, "Observatorio 1939",                                         DM_MOLODENSKY, 34,  -425,  -169,    81},
    {150, 6229, "Old Egyptian 1907 - Egypt",                                 DM_MOLODENSKY, 30,  -130,   110,   -13},
    {151,    0, "Old Hawaiian - Mean",                                       DM_MOLODENSKY, 15,    61,  -285,  -181},
    {152,    0, "Old Hawaiian - Hawaii",                                     DM_MOLODENSKY, 15,    89,  -279,  -183},
    {153,    0, "Old Hawaiian - Kauai",                                      DM_MOLODENSKY, 15,    45,  -290,  -172},
    {154,    0, "Old Hawaiian - Maui",                                       DM_MOLODENSKY, 15,    65,  -290,  -190},
    {155,    0, "Old Hawaiian - Oahu",                                       DM_MOLODENSKY, 15,    58,  -283,  -182},
    {156,    0, "Oman",                                                      DM_MOLODENSKY, 16,  -346,    -1,   224},
    {157,    0, "Ord. Surv. of Gr. Br. 1936",                                DM_MOLODENSKY,  5,   375,  -111,   431},
    {158,    0, "Ord. Surv. 1936 - Scotland-Shetland",                       DM_MOLODENSKY,  5,   384,  -111,   425},
    {159,    0, "Ord. Surv. 1936 - Wales",                                   DM_MOLODENSKY,  5,   370,  -108,   434},
    {160,    0, "Pico De Las Nieves",                                        DM_MOLODENSKY, 34,  -307,   -92,   127},
    {161,    0, "Pitcairn Astro 1967",                                       DM_MOLODENSKY, 34,  -185,   165,    42},
    {162,    0, "Porto Santo 1936",                                          DM_MOLODENSKY, 34,  -499,  -249,   314},
    {163,    0, "Point 58",                                                  DM_MOLODENSKY, 16,  -106,  -129,   165},
    {164, 6282, "Pointe Noire 1948",                                         DM_MOLODENSKY, 16,  -148,    51,  -291},
    {165, 6248, "Prov. S.A. 1956 - Mean",                                    DM_MOLODENSKY, 34,  -288,   175,  -376},
    {166,    0, "Prov. S.A. 1956 - Bolivia",                                 DM_MOLODENSKY, 34,  -270,   188,  -388},
    {167,    0, "Prov. S.A. 1956 - N. Chile",                                DM_MOLODENSKY, 34,  -270,   183,  -390},
    {168,    0, "Prov. S.A. 1956 - S. Chile",                                DM_MOLODENSKY, 34,  -305,   243,  -442},
    {169,    0, "Prov. S.A. 1956 - Colombia",                                DM_MOLODENSKY, 34,  -282,   169,  -371},
    {170,    0, "Prov. S.A. 1956 - Ecuador",                                 DM_MOLODENSKY, 34,  -278,   171,  -367},
    {171,    0, "Prov. S.A. 1956 - Guyana",                                  DM_MOLODENSKY, 34,  -298,   159,  -369},
    {172,    0, "Prov. S.A. 1956 - Peru",                                    DM_MOLODENSKY, 34,  -279,   175,  -379},
    {173,    0, "Prov. S.A. 1956 - Venez.",                                  DM_MOLODENSKY, 34,  -295,   173,  -371},
    {174,    0, "Prov. So. Chilean 1963",                                    DM_MOLODENSKY, 34,    16,   196,    93},
    {175,    0, "Puerto Rico",                                               DM_MOLODENSKY, 15,    11,    72,  -101},
    {176, 6284, "Pulkovo 1942 - Russia",                                     DM_MOLODENSKY, 35,    28,  -130,   -95},
    {177, 6285, "Qatar National",                                            DM_MOLODENSKY, 34,  -128,  -283,    22},
    {178, 6287, "Qornoq",                                                    DM_MOLODENSKY, 34,   164,   138,  -189},
    {179,    0, "Reunion",                                                   DM_MOLODENSKY, 34,    94,  -948, -1262},
    {180,    0, "Rome 1940",                                                 DM_MOLODENSKY, 34,  -225,   -65,     9},
    {244,    0, "S-42 Hungary",                                              DM_MOLODENSKY, 35,    28,  -121,   -77},
    {245,    0, "S-42 Poland",                                               DM_MOLODENSKY, 35,    23,  -124,   -82},
    {246,    0, "S-42 Czechoslovakia",                                       DM_MOLODENSKY, 35,    26,  -121,   -78},
    {247,    0, "S-42 Latvia",                                               DM_MOLODENSKY, 35,    24,  -124,   -82},
    {248,    0, "S-42 Kazakhstan",                                           DM_MOLODENSKY, 35,    15,  -130,   -84},
    {249,    0, "S-42 Albania",                                              DM_MOLODENSKY, 35,    24,  -130,   -92},
    {250,    0, "S-42 Romania",                                              DM_MOLODENSKY, 35,    28,  -121,   -77},
    {181,    0, "Santo DOS 1965",                                            DM_MOLODENSKY, 34,   170,    42,    84},
    {182,    0, "Sao Braz",                                                  DM_MOLODENSKY, 34,  -203,   141,    53},
    {183, 6292, "Sapper Hill 1943",                                          DM_MOLODENSKY, 34,  -355,    21,    72},
    {184, 6293, "Schwarzeck",                                                DM_MOLODENSKY, 13,   616,    97,  -251},
    {185,    0, "Selvagem Grande 1938",                                      DM_MOLODENSKY, 34,  -289,  -124,    60},
    {186,    0, "So. Amer. 1969 - Mean",                                     DM_MOLODENSKY, 10,   -57,     1,   -41},
    {187,    0, "So. Amer. 1969 - Argentina",                                DM_MOLODENSKY, 10,   -62,    -1,   -37},
    {188,    0, "So. Amer. 1969 - Bolivia",                                  DM_MOLODENSKY, 10,   -61,     2,   -48},
    {189,    0, "So. Amer. 1969 - Brazil",                                   DM_MOLODENSKY, 10,   -60,    -2,   -41},
    {190,    0, "So. Amer. 1969 - Chile",                                    DM_MOLODENSKY, 10,   -75,    -1,   -44},
    {191,    0, "So. Amer. 1969 - Colombia",                                 DM_MOLODENSKY, 10,   -44,     6,   -36},
    {192,    0, "So. Amer. 1969 - Ecuador",                                  DM_MOLODENSKY, 10,   -48,     3,   -44},
    {193,    0, "So. Amer. 1969 - Baltra",                                   DM_MOLODENSKY, 10,   -47,    26,   -42},
    {194,    0, "So. Amer. 1969 - Guyana",                                   DM_MOLODENSKY, 10,   -53,     3,   -47},
    {195,    0, "So. Amer. 1969 - Paraguay",                                 DM_MOLODENSKY, 10,   -61,     2,   -33},
    {196,    0, "So. Amer. 1969 - Peru",                                     DM_MOLODENSKY, 10,   -58,     0,   -44},
    {197,    0, "So. Amer. 1969 - Trinidad",                                 DM_MOLODENSKY, 10,   -45,    12,   -33},
    {198,    0, "So. Amer. 1969 - Venezuela",                                DM_MOLODENSKY, 10,   -45,     8,   -33},
    {199,    0, "South Asia",                                                DM_MOLODENSKY, 28,     7,   -10,   -26},
    {200,    0, "Southeast Base",                                            DM_MOLODENSKY, 34,  -499,  -249,   314},
    {201,    0, "Southwest Base - Azores",                                   DM_MOLODENSKY, 34,  -104,   167,   -38},
    {202, 6297, "Tananarive Observatory 1925 - Madagascar",                  DM_MOLODENSKY, 34,  -189,  -242,   -91},
    {203,    0, "Timbalai 1948 - Brunei",                                    DM_MOLODENSKY, 24,  -689,   691,   -46},
    {204,    0, "Tokyo - Mean",                                              DM_MOLODENSKY, 12,  -148,   507,   685},
    {205,    0, "Tokyo - Japan",                                             DM_MOLODENSKY, 12,  -148,   507,   685},
    {206,    0, "Tokyo - Korea",                                             DM_MOLODENSKY, 12,  -146,   507,   687},
    {207,    0, "Tokyo - Okinawa",                                           DM_MOLODENSKY, 12,  -158,   507,   676},
    {208,    0, "Tokyo - South Korea",                                       DM_MOLODENSKY, 12,  -146,   507,   687},
    {209,    0, "Tristan Astro 1968",                                        DM_MOLODENSKY, 34,  -632,   438,  -609},
    {210,    0, "Viti Levu 1916",                                            DM_MOLODENSKY, 16,    51,   391,   -36},
    {211,    0, "Wake-Eniwetok 1960",                                        DM_MOLODENSKY, 31,   102,    52,   -38},
    {212,    0, "Wake Island Astro 1952",                                    DM_MOLODENSKY, 34,   276,   -57,   149},
    {213, 6309, "Yacare - Uruguay",                                          DM_MOLODENSKY, 34,  -155,   171,    37},
    {214, 6311, "Zanderij - Suriname",                                       DM_MOLODENSKY, 34,  -265,   120,  -358},
    {215,    0, "World Geodetic System 1972 (Bursa-Wolf)",                   DM_BURSA,      46,        0,         0,       4.5,         0,         0,      0.554,        1},
    {216,    0, "DHDN-1 (Bursa-Wolf)",                                       DM_BURSA,      14,      591,        73,       410,      0.26,      0.05,      -2.43,      8.5},
    {217,    0, "DHDN (Bursa-Wolf)",                                         DM_BURSA,      14,      582,       105,       414,      1.04,      0.35,      -3.08,      8.3},
    {218,    0, "Australian Geodetic 1984 (Bursa-Wolf)",                     DM_BURSA,      10,     -116,    -50.47,    141.69,      0.23,      0.39,      0.344,    0.098},
    {219,    0, "ANS84 (Bursa-Wolf)",                                        DM_BURSA,      10,     -116,    -50.47,    141.69,      0.23,      0.39,      0.344,   0.0983},
    {220,    0, "MRT - Everest Modified (Bursa-Wolf)",                       DM_BURSA,      21,  379.776, -775.3837,   86.6093,   2.59671,   2.10214,  -12.11379,        0},
    {221,    0, "Switzerland - CH1903 (Bursa-Wolf)",                         DM_BURSA,      12,  660.077,    13.551,   369.344, -0.804816, -0.577692,  -0.952236,     5.66},
    {222,    0, "NTF France - Paris Meridian (Bursa-Wolf)",                  DM_BURSA,      16,     -168,       -60,       320,         0,         0,          0,        0, 2.33722916666667},
    {223,    0, "Pulkovo 1942 (Bursa-Wolf)",                                 DM_BURSA,      35,       27,      -135,     -84.5,         0,         0,      0.554,   0.2263},
    {236,    0, "Pulkovo 1942 - Hungary (Bursa-Wolf)",                       DM_BURSA,      35,       24,      -123,       -94,      0.02,     -0.25,       0.13,      1.1},
    {234,    0, "Krassovski 1940 - Estonia (Bursa-Wolf)",                    DM_BURSA,      35, 21.53219, -97.54127, -60.92546,  -1.01378,  -0.58117,    -0.2348,  -4.6121},
    {235,    0, "EUREF-89/GRS-80 (Bursa-Wolf)",                              DM_BURSA,       3,    0.055,    -0.541,    -0.185,   -0.0183,    0.0003,      0.007,   -0.014},
    {237,    0, "ITRF-90 (Bursa-Wolf)",                                      DM_BURSA,       3,     0.06,    -0.517,    -0.223,    0.0183,   -0.0003,      0.007,   -0.011},
    {238,    0, "Australian GDA-94/1992 (Bursa-Wolf)",                       DM_BURSA,       3,  -0.1605,   -0.0032,    0.0662, -0.002375,  0.001939,   0.001241, 0.003351},
    {239,    0, "Australian GDA-94/1994 (Bursa-Wolf)",                       DM_BURSA,       3,  -0.1432,   -0.0068,    0.0535,  0.000245,  0.003742,   0.003359, 0.003655},
    {240,    0, "Australian GDA-94/1996 (Bursa-Wolf)",                       DM_BURSA,       3,  -0.1259,   -0.0103,    0.0407,  0.002861,  0.005543,   0.005474, 0.003947},
    {241,    0, "Australian GDA-94/1998 (Bursa-Wolf)",                       DM_BURSA,       3,  -0.1086,   -0.0139,    0.0279,  0.005481,  0.007347,   0.007592, 0.004261},
    {242,    0, "Australian GDA-94/2000 (Bursa-Wolf)",                       DM_BURSA,       3,  -0.0913,   -0.0175,    0.0152,  0.008097,  0.009148,   0.008707, 0.004563},
    {243,    0, "Australian GDA-94/2002 (Bursa-Wolf)",                       DM_BURSA,       3,   -0.074,    -0.021,    0.0024,  0.010717,  0.010952,   0.011824, 0.004867},
    {251,    0, "Ocotepeque No Baricentrico 1990 - Costa Rica (Bursa-Wolf)", DM_BURSA,      15,     6.41,     49.05,     11.28,    1.5667,    0.5242,     6.9718,  -5.7649},
    {252, 6273, "NGO 1948",                                                  DM_BURSA,      14,    278.3,        93,     474.5,     7.889,      0.05,      -6.61,     6.21},
    {224,    0, "Australian Geodetic 1966 (MRE)",                            DM_MRE,        56},
    {225,    0, "Australian Geodetic 1984 (MRE)",                            DM_MRE,        56},
    {226,    0, "Campo Inchausepe - Argentina (MRE)",                        DM_MRE,        56},
    {227,    0, "Corrego Alegre - Brazil (MRE)",                             DM_MRE,        56},
    {228,    0, "European 1950 (MRE)",                                       DM_MRE,        56},
    {229, 6267, "NAD 1927 - CONUS (MRE)",                                    DM_MRE,        56},
    {230,    0, "NAD 1927 - Canada (MRE)",                                   DM_MRE,        56},
    {231,    0, "South American 1969 (MRE)",                                 DM_MRE,        56},
    {232,    0, "NAD 1927 - CONUS (NADCON)",                                 DM_NADCON,     56},
    {233, 6267, "NAD 1927 - Puerto Rico & Virgin Islands (NADCON)",          DM_NADCON,     56},
    {253,    0, "NAD 1927 - Canada (NTV2)",                                  DM_NTV2,       56},
}};
// clang-format on

constexpr std::uint8_t kNoRow = 255;

/// Row position of every datum number; kNoRow where there is none.
constexpr auto kRowOfNumber = [] {
  std::array<std::uint8_t, DT_COUNT> index{};
  index.fill(kNoRow);
  for (std::size_t i = 0; i < kDatumRows.size(); ++i) {
    index.at(static_cast<std::size_t>(kDatumRows[i].number)) = static_cast<std::uint8_t>(i);
  }
  return index;
}();

constexpr bool IsBuiltInNumber(int number) {
  return number > DT_USER_DEFINED && number < DT_COUNT;
}

/// 253 rows that fill 253 places have each number once.
constexpr bool EveryNumberOnce() {
  for (int number = 1; number < DT_COUNT; ++number) {
    if (kRowOfNumber[static_cast<std::size_t>(number)] == kNoRow) return false;
  }
  return kDatumRows.size() == DT_COUNT - 1;
}

constexpr std::size_t Length(const char* text) {
  std::size_t length = 0;
  while (text[length] != '\0') ++length;
  return length;
}

/// Parametric rows name an ellipsoid of the table and use only the parameters of their method; the others have neither.
constexpr bool IsSound(const DatumRow& row) {
  const bool shifted = row.dx != 0 || row.dy != 0 || row.dz != 0;
  const bool turned = row.rx != 0 || row.ry != 0 || row.rz != 0 || row.k != 0;
  const std::size_t length = Length(row.name);
  if (row.posc < 0 || length == 0 || length >= kDatumNameCapacity) return false;
  switch (row.method) {
    case DM_MOLODENSKY:
      return row.ellipsoid >= 1 && row.ellipsoid < kNoEllipsoid && !turned;
    case DM_BURSA:
      return row.ellipsoid >= 1 && row.ellipsoid < kNoEllipsoid;
    case DM_MRE:
      return row.number >= 224 && row.number <= 231 && row.ellipsoid == kNoEllipsoid && !shifted && !turned;
    case DM_NADCON:
      return (row.number == 232 || row.number == 233) && row.ellipsoid == kNoEllipsoid && !shifted && !turned;
    case DM_NTV2:
      return row.number == 253 && row.ellipsoid == kNoEllipsoid && !shifted && !turned;
    default:
      return false;
  }
}

constexpr bool EveryRowSound() {
  int meridians = 0;
  for (const DatumRow& row : kDatumRows) {
    if (!IsSound(row)) return false;
    if (row.pmShift != 0) ++meridians;
  }
  return meridians == 2;  // the two that count from Paris
}

static_assert(EveryNumberOnce() && EveryRowSound());

}  // namespace

std::span<const DatumRow> Datums() {
  return kDatumRows;
}

const DatumRow* FindDatum(int number) {
  if (!IsBuiltInNumber(number)) return nullptr;
  return &kDatumRows[kRowOfNumber[static_cast<std::size_t>(number)]];
}

}  // namespace orvex::detail
