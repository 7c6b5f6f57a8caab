// StateZoneTable - 142 rows, row index = StateZoneType: zone, USGS code, POSC numbers of 1927 and 1983, name; 0 = none.
#include "zones/StateZoneTable.h"

#include <array>

namespace orvex::detail {

namespace {

// Names and codes are interface values; "Missippippi" is spelt so on purpose.
// clang-format off
constexpr std::array<StateZoneRow, SZ_NONE> kStateZones{{
    {  0,  101, 26729, 26929, "Alabama East"                         },
    {  1,  102, 26730, 26930, "Alabama West"                         },
    {  2, 5001, 26731, 26931, "Alaska 1"                             },
    {  3, 5002, 26732, 26932, "Alaska 2"                             },
    {  4, 5003, 26733, 26933, "Alaska 3"                             },
    {  5, 5004, 26734, 26934, "Alaska 4"                             },
    {  6, 5005, 26735, 26935, "Alaska 5"                             },
    {  7, 5006, 26736, 26936, "Alaska 6"                             },
    {  8, 5007, 26737, 26937, "Alaska 7"                             },
    {  9, 5008, 26738, 26938, "Alaska 8"                             },
    { 10, 5009, 26739, 26939, "Alaska 9"                             },
    { 11, 5010, 26740, 26940, "Alaska 10"                            },
    { 12,  201, 26748, 26948, "Arizona East"                         },
    { 13,  202, 26749, 26949, "Arizona Central"                      },
    { 14,  203, 26750, 26950, "Arizona West"                         },
    { 15,  301, 26751, 26951, "Arkansas North"                       },
    { 16,  302, 26752, 26952, "Arkansas South"                       },
    { 17,  401, 26741, 26941, "California I"                         },
    { 18,  402, 26742, 26942, "California II"                        },
    { 19,  403, 26743, 26943, "California III"                       },
    { 20,  404, 26744, 26944, "California IV"                        },
    { 21,  405, 26745, 26945, "California V"                         },
    { 22,  406, 26746, 26946, "California VI"                        },
    { 23,  407, 26747,     0, "California VII"                       },
    { 24,  501, 26753, 26953, "Colorado North"                       },
    { 25,  502, 26754, 26954, "Colorado Central"                     },
    { 26,  503, 26755, 26955, "Colorado South"                       },
    { 27,  600, 26756, 26956, "Connecticut"                          },
    { 28,  700, 26757, 26957, "Delaware"                             },
    { 29,  903, 26760, 26960, "Florida North"                        },
    { 30,  901, 26758, 26958, "Florida East"                         },
    { 31,  902, 26759, 26959, "Florida West"                         },
    { 32, 1001, 26766, 26966, "Georgia East"                         },
    { 33, 1002, 26767, 26967, "Georgia West"                         },
    { 34, 5400,     0,     0, "Guam Island"                          },
    { 35, 5101, 26761, 26961, "Hawaii 1"                             },
    { 36, 5102, 26762, 26962, "Hawaii 2"                             },
    { 37, 5103, 26763, 26963, "Hawaii 3"                             },
    { 38, 5104, 26764, 26964, "Hawaii 4"                             },
    { 39, 5105, 26765, 26965, "Hawaii 5"                             },
    { 40, 1101, 26768, 26968, "Idaho East"                           },
    { 41, 1102, 26769, 26969, "Idaho Central"                        },
    { 42, 1103, 26770, 26970, "Idaho West"                           },
    { 43, 1201, 26771, 26971, "Illinois East"                        },
    { 44, 1202, 26772, 26972, "Illinois West"                        },
    { 45, 1301, 26773, 26973, "Indiana East"                         },
    { 46, 1302, 26774, 26974, "Indiana West"                         },
    { 47, 1401, 26775, 26975, "Iowa North"                           },
    { 48, 1402, 26776, 26976, "Iowa South"                           },
    { 49, 1501, 26777, 26977, "Kansas North"                         },
    { 50, 1502, 26778, 26978, "Kansas South"                         },
    { 51, 1601, 26779, 26979, "Kentucky North"                       },
    { 52, 1602, 26780, 26980, "Kentucky South"                       },
    { 53, 1701, 26781, 26981, "Louisiana North"                      },
    { 54, 1702, 26782, 26982, "Louisiana South"                      },
    { 55, 1703,     0,     0, "Louisiana Offshore"                   },
    { 56, 1801, 26783, 26983, "Maine East"                           },
    { 57, 1802, 26784, 26984, "Maine West"                           },
    { 58, 1900, 26785, 26985, "Maryland"                             },
    { 59, 2001, 26786, 26986, "Massachusetts Mainland"               },
    { 60, 2002, 26787, 26987, "Massachusetts Island"                 },
    { 61, 2101, 26801,     0, "Michigan East (old)"                  },
    { 62, 2102, 26802,     0, "Michigan Central (old)"               },
    { 63, 2103, 26803,     0, "Michigan West (old)"                  },
    { 64, 2111, 26788, 26988, "Michigan North"                       },
    { 65, 2112, 26789, 26989, "Michigan Central"                     },
    { 66, 2113, 26790, 26990, "Michigan South"                       },
    { 67, 2201, 26791, 26991, "Minnesota North"                      },
    { 68, 2202, 26792, 26992, "Minnesota Central"                    },
    { 69, 2203, 26793, 26993, "Minnesota South"                      },
    { 70, 2301, 26794, 26994, "Missippippi East"                     },
    { 71, 2302, 26795, 26995, "Missippippi West"                     },
    { 72, 2401, 26796, 26996, "Missouri East"                        },
    { 73, 2402, 26797, 26997, "Missouri Central"                     },
    { 74, 2403, 26798, 26998, "Missouri West"                        },
    { 75, 2500,     0, 32100, "Montana"                              },
    { 76, 2501, 32001,     0, "Montana North"                        },
    { 77, 2502, 32002,     0, "Montana Central"                      },
    { 78, 2503, 32003,     0, "Montana South"                        },
    { 79, 2600,     0, 32104, "Nebraska"                             },
    { 80, 2601, 32005,     0, "Nebraska North"                       },
    { 81, 2602, 32006,     0, "Nebraska South"                       },
    { 82, 2701, 32007, 32107, "Nevada East"                          },
    { 83, 2702, 32008, 32108, "Nevada Central"                       },
    { 84, 2703, 32009, 32109, "Nevada West"                          },
    { 85, 2800, 32010, 32110, "New Hampshire"                        },
    { 86, 2900, 32011, 32111, "New Jersey"                           },
    { 87, 3001, 32012, 32112, "New Mexico East"                      },
    { 88, 3002, 32013, 32113, "New Mexico Central"                   },
    { 89, 3003, 32014, 32114, "New Mexico West"                      },
    { 90, 3101, 32015, 32115, "New York East"                        },
    { 91, 3102, 32016, 32116, "New York Central"                     },
    { 92, 3103, 32017, 32117, "New York West"                        },
    { 93, 3104, 32018, 32118, "New York Long Island"                 },
    { 94, 3200, 32019, 32119, "North Carolina"                       },
    { 95, 3301, 32020, 32120, "North Dakota North"                   },
    { 96, 3302, 32021, 32121, "North Dakota South"                   },
    { 97, 3401, 32022, 32122, "Ohio North"                           },
    { 98, 3402, 32023, 32123, "Ohio South"                           },
    { 99, 3501, 32024, 32124, "Oklahoma North"                       },
    {100, 3502, 32025, 32125, "Oklahoma South"                       },
    {101, 3601, 32026, 32126, "Oregon North"                         },
    {102, 3602, 32027, 32127, "Oregon South"                         },
    {103, 3701, 32028, 32128, "Pennsylvania North"                   },
    {104, 3702, 32029, 32129, "Pennsylvania South"                   },
    {105, 5200,     0, 32161, "Puerto Rico and Virgin Islands (1983)"},
    {106, 5201, 32059,     0, "Puerto Rico and Virgin Islands (1927)"},
    {107, 5202, 32060,     0, "Virgin Islands St. Croix (1927)"      },
    {108, 3800, 32030, 32130, "Rhode Island"                         },
    {109, 5300,     0,     0, "American Samoa"                       },
    {110, 3900,     0, 32133, "South Carolina"                       },
    {111, 3901, 32031,     0, "South Carolina North"                 },
    {112, 3902, 32033,     0, "South Carolina South"                 },
    {113, 4001, 32034, 32134, "South Dakota North"                   },
    {114, 4002, 32035, 32135, "South Dakota South"                   },
    {115, 4100, 32036, 32136, "Tennessee"                            },
    {116, 4201, 32037, 32137, "Texas North"                          },
    {117, 4202, 32038, 32138, "Texas North Central"                  },
    {118, 4203, 32039, 32139, "Texas Central"                        },
    {119, 4204, 32040, 32140, "Texas South Central"                  },
    {120, 4205, 32041, 32141, "Texas South"                          },
    {121, 4301, 32042, 32142, "Utah North"                           },
    {122, 4302, 32043, 32143, "Utah Central"                         },
    {123, 4303, 32044, 32144, "Utah South"                           },
    {124, 4400, 32045, 32145, "Vermont"                              },
    {125, 4501, 32046, 32146, "Virginia North"                       },
    {126, 4502, 32047, 32147, "Virginia South"                       },
    {127, 4601, 32048, 32148, "Washington North"                     },
    {128, 4602, 32049, 32149, "Washington South"                     },
    {129, 4701, 32050, 32150, "West Virginia North"                  },
    {130, 4702, 32051, 32151, "West Virginia South"                  },
    {131, 4801, 32052, 32152, "Wisconsin North"                      },
    {132, 4802, 32053, 32153, "Wisconsin Central"                    },
    {133, 4803, 32054, 32154, "Wisconsin South"                      },
    {134, 4901, 32055, 32155, "Wyoming East"                         },
    {135, 4902, 32056, 32156, "Wyoming East Central"                 },
    {136, 4903, 32057, 32157, "Wyoming West Central"                 },
    {137, 4904, 32058, 32158, "Wyoming West"                         },
    {138,    0,     0,     0, "Great Lakes Survey 1"                 },
    {139,    0,     0,     0, "Great Lakes Survey 2"                 },
    {140,    0,     0,     0, "Great Lakes Survey 3"                 },
    {141,    0,     0,     0, "Great Lakes Survey 4"                 },
}};
// clang-format on

constexpr bool IndexedByZoneWithUniqueCodes() {
  for (std::size_t i = 0; i < kStateZones.size(); ++i) {
    const StateZoneRow& row = kStateZones[i];
    if (row.zone != static_cast<int>(i)) return false;
    for (std::size_t j = 0; j < i; ++j) {
      const StateZoneRow& other = kStateZones[j];
      if (row.usgs != 0 && row.usgs == other.usgs) return false;
      if (row.posc1927 != 0 && row.posc1927 == other.posc1927) return false;
      if (row.posc1983 != 0 && row.posc1983 == other.posc1983) return false;
    }
  }
  return true;
}

}  // namespace

static_assert(IndexedByZoneWithUniqueCodes());
static_assert(kStateZones[SZ_ALABAMA_EAST].posc1927 == 26729 && kStateZones[SZ_WYOMING_WEST].posc1983 == 32158);

std::span<const StateZoneRow, SZ_NONE> StateZones() {
  return kStateZones;
}

}  // namespace orvex::detail
