// EllipsoidTable - 56 rows, row index = EllipsoidType. a in metres; f is the stored flattening, not 1/f; code 0 = none.
#include "ellipsoids/EllipsoidTable.h"

namespace orvex::detail {

// Codes: POSC Epicentre / EPSG ellipsoid codes. The flattenings are stored as they are used, to the last digit.
// clang-format off
constexpr std::array<EllipsoidRow, 56> kEllipsoidRows{{
    {   0, 0,          0.0,                    0.0, "User Defined"                          },  //  0
    {   0, 0,    6378137.0,  0.0033528131778969143, "MERIT 1983"                            },  //  1
    {   0, 0,    6378136.0,  0.0033528131778969143, "Soviet Geodetic System 85"             },  //  2
    {7019, 0,    6378137.0,   0.003352810681182319, "GRS 1980 / IUGG 1980"                  },  //  3
    {   0, 0,    6378140.0,  0.0033528131778969143, "IAU 1976"                              },  //  4
    {7001, 0,  6377563.396,  0.0033408506414970775, "Airy 1830"                             },  //  5
    {   0, 0,    6378137.0,   0.003352891869237217, "Appl. Physics. 1965"                   },  //  6
    {   0, 0,    6378145.0,   0.003352891869237217, "Naval Weapons Lab., 1965"              },  //  7
    {7002, 0,  6377340.189,  0.0033408506414970775, "Modified Airy"                         },  //  8
    {   0, 0,   6377104.43,  0.0033333333333333335, "Andrae 1876 (Den., Iclnd.)"            },  //  9
    {7003, 0,    6378160.0,   0.003352891869237217, "Australian Natl & S. Amer. 1969"       },  // 10
    {   0, 0,    6378160.0,   0.003352923712996414, "GRS 67(IUGG 1967)"                     },  // 11
    {7004, 0,  6377397.155,   0.003342773182174806, "Bessel 1841"                           },  // 12
    {7006, 0,  6377483.865,   0.003342773182174806, "Bessel 1841 (Namibia)"                 },  // 13
    {7005, 0,  6377397.155,   0.003342773153666242, "Bessel Modified"                       },  // 14
    {7008, 0,    6378206.4,  0.0033900753040885176, "Clarke 1866"                           },  // 15
    {7010, 0,  6378249.145,   0.003407546283849287, "Clarke 1880 mod."                      },  // 16
    {   0, 0,    6375738.7,   0.002991414639983248, "Comm. des Poids et Mesures 1799"       },  // 17
    {   0, 0,    6376428.0,  0.0032102728731942215, "Delambre 1810 (Belgium)"               },  // 18
    {   0, 0,   6378136.05,   0.003352817674445427, "Engelis 1985"                          },  // 19
    {7015, 0,  6377276.345,   0.003324449296662885, "Everest 1830"                          },  // 20
    {   0, 0,  6377304.063,   0.003324449296662885, "Everest 1948"                          },  // 21
    {   0, 0,    6377301.0,   0.003324449296662885, "Everest 1956"                          },  // 22
    {   0, 0,    6377295.0,   0.003324449296662885, "Everest 1969"                          },  // 23
    {   0, 0,  6377298.556,   0.003324449296662885, "Everest - Brunei"                      },  // 24
    {   0, 0,    6377298.0,   0.003324449296662885, "Everest (Sabah & Sarawak)"             },  // 25
    {   0, 0,  6377309.613,   0.003324449296662885, "Everest Pakistan"                      },  // 26
    {   0, 0,    6378166.0,   0.003352329869259135, "Fischer (Mercury Datum) 1960"          },  // 27
    {   0, 0,    6378155.0,   0.003352329869259135, "Modified Fischer 1960"                 },  // 28
    {   0, 0,    6378150.0,   0.003352329869259135, "Fischer 1968"                          },  // 29
    {7020, 0,    6378200.0,   0.003352329869259135, "Helmert 1906"                          },  // 30
    {   0, 0,    6378270.0,   0.003367003367003367, "Hough"                                 },  // 31
    {7021, 0,    6378160.0,   0.003352925595228116, "Indonesian 1974"                       },  // 32
    {   0, 0,    6378388.0,   0.003367003367003367, "International 1909 (Hayford)"          },  // 33
    {7022, 0,    6378388.0,   0.003367003367003367, "International 1924"                    },  // 34
    {7024, 0,    6378245.0,   0.003352329869259135, "Krassovsky, 1942"                      },  // 35
    {   0, 0,    6378163.0,  0.0033530042918454937, "Kaula 1961"                            },  // 36
    {   0, 0,    6378139.0,  0.0033528131778969143, "Lerch 1979"                            },  // 37
    {   0, 0,    6397300.0,   0.005235602094240838, "Maupertius 1738"                       },  // 38
    {7023, 0,    6378157.5,   0.003352891869237217, "New International 1967"                },  // 39
    {7027, 0,    6376523.0,  0.0032400207361327114, "Plessis 1817 (France)"                 },  // 40
    {   0, 0,    6378155.0,   0.003352329869259135, "Southeast Asia"                        },  // 41
    {7009, 0,  6378450.047,  0.0033900753040885176, "State Plane 1927, Michigan"            },  // 42
    {   0, 0,    6376896.0,   0.003302728053372086, "Walbeck"                               },  // 43
    {   0, 0,    6378165.0,   0.003352329869259135, "WGS 60"                                },  // 44
    {   0, 0,    6378145.0,   0.003352891869237217, "WGS 66"                                },  // 45
    {   0, 0,    6378135.0,   0.003352779454167505, "WGS 72"                                },  // 46
    {7030, 0,    6378137.0,  0.0033528106647474805, "WGS 84"                                },  // 47
    {7035, 0,    6370997.0,                    0.0, "Standard Sphere of 6370997 Meters"     },  // 48
    {   0, 0,          1.0,                    0.0, "Standard Sphere of One Unit"           },  // 49
    {   0, 0,    6371204.0,                    0.0, "DNAG Sphere (6371204 meters)"          },  // 50
    {   0, 0,   6378300.79,  0.0034075470435755875, "Clarke 1880 Benoit"                    },  // 51
    {   0, 0,    6378249.2,   0.003407549520015647, "Clarke 1880 IGN"                       },  // 52
    {   0, 0,  6378249.145,   0.003407561378699334, "Clarke 1880 RGS"                       },  // 53
    {   0, 0,    6378249.2,   0.003407549999492275, "Clarke 1800 SGA 1922"                  },  // 54
    {   0, 0, 6377492.0176,  0.0033427731816160996, "Bessel NGO 1948"                       },  // 55
}};
// clang-format on

namespace {

constexpr bool CodesUniqueAndFlatteningInRange() {
  for (std::size_t i = 1; i < kEllipsoidRows.size(); ++i) {
    const EllipsoidRow& row = kEllipsoidRows[i];
    if (!(row.radius > 0 && row.flattening >= 0 && row.flattening < 0.01)) return false;
    for (std::size_t j = i + 1; j < kEllipsoidRows.size(); ++j) {
      if (row.posc != 0 && row.posc == kEllipsoidRows[j].posc) return false;
    }
  }
  return true;
}

}  // namespace

static_assert(CodesUniqueAndFlatteningInRange());
static_assert(kEllipsoidRows[ET_WGS_84].posc == 7030 && kEllipsoidRows[ET_STATE_PLANE_1927_MICHIGAN].posc == 7009);
static_assert(kEllipsoidRows[ET_STANDARD_SPHERE_OF_ONE_UNIT].radius == 1.0);

std::span<const EllipsoidRow, 56> Ellipsoids() {
  return kEllipsoidRows;
}

}  // namespace orvex::detail
