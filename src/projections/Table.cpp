// Table - the 29 rows of the projection table, row index = ProjType. The masks belong to the host.
#include <array>

#include "projections/Modules.h"

namespace orvex::detail {

namespace {

// clang-format off
#define ROW(module) module::Forward, module::Inverse
constexpr std::array<ProjectionRow, 29> kRows{{
    {"Unprojected Lat/Long",                0x00, nullptr, nullptr,  nullptr,                 nullptr},               //  0
    {"Mercator",                            0x2F, ROW(PrjMerc),      InWorldBandBetweenPoles, CommonOffset},          //  1
    {"Albers Equal Area Conic",             0x2F, ROW(PrjAlbers),    InWorldBand,             CommonOffset},          //  2
    {"Miller Cylindrical",                  0x2F, ROW(PrjMiller),    InWorldBandBetweenPoles, CommonOffset},          //  3
    {"Universal Transverse Mercator (UTM)", 0x1B, ROW(PrjUTM),       PrjUTM::InDomain,        CommonOffset},          //  4
    {"Lambert Conformal Conic",             0x2F, ROW(PrjLambert),   InWorldBand,             CommonOffset},          //  5
    {"Stereographic",                       0x1B, ROW(PrjPolar),     InHemisphere,            NeverOffsetEvenEmpty},  //  6
    {"Orthographic",                        0x1B, ROW(PrjOrtho),     InHemisphere,            NeverOffsetEvenEmpty},  //  7
    {"Mollweide",                           0x3F, ROW(PrjMolle),     InWorldBand,             CommonOffset},          //  8
    {"State Plane 1927",                    0x3B, nullptr, nullptr,  nullptr,                 nullptr},               //  9
    {"State Plane 1983",                    0x3B, nullptr, nullptr,  nullptr,                 nullptr},               // 10
    {"Polyconic",                           0x1B, ROW(PrjPolycon),   InWorldBand,             CommonOffset},          // 11
    {"Hotine Oblique Mercator",             0x03, ROW(PrjHotine),    PrjHotine::InDomain,     NeverOffset},           // 12
    {"Equidistant Cylindrical",             0x2F, ROW(PrjEquiCyl),   Everywhere,              NeverOffset},           // 13
    {"Robinson",                            0x3F, ROW(PrjRobin),     PrjRobin::InDomain,      PrjRobin::OffsetSplit}, // 14
    {"Van Der Grinten",                     0x3F, ROW(PrjVanDer),    InWorldBand,             CommonOffset},          // 15
    {"Cassini",                             0x3B, ROW(PrjCassini),   InHemisphere,            NeverOffset},           // 16
    {"Transverse Mercator",                 0x1B, ROW(PrjTMerc),     PrjTMerc::InDomain,      CommonOffset},          // 17
    {"Gauss-Kruger / Gauss Conformal",      0x1B, ROW(PrjTMerc),     PrjTMerc::InDomain,      CommonOffset},          // 18
    {"Sinusoidal",                          0x3F, ROW(PrjSinus),     InWorldBand,             CommonOffset},          // 19
    {"Lambert Azimuthal Equal Area",        0x3B, ROW(PrjLamAEA),    Everywhere,              NeverOffset},           // 20
    {"Bonne",                               0x1B, ROW(PrjBonne),     InWorldBand,             CommonOffset},          // 21
    {"Robinson-Sterling",                   0x3F, ROW(PrjRobStr),    InWorldBand,             CommonOffset},          // 22
    {"Eckert IV",                           0x3F, ROW(PrjEckert4),   InWorldBand,             CommonOffset},          // 23
    {"Eckert VI",                           0x3F, ROW(PrjEckert6),   InWorldBand,             CommonOffset},          // 24
    {"Oblique Mercator",                    0x03, ROW(PrjOblMerc),   PrjOblMerc::InDomain,    NeverOffset},           // 25
    {"Equidistant Conic",                   0x2F, ROW(PrjEquiCon),   InWorldBand,             CommonOffset},          // 26
    {"Gnomonic",                            0x1B, ROW(PrjGnom),      PrjGnom::InDomain,       NeverOffsetEvenEmpty},  // 27
    {"Azimuthal Equidistant",               0x3F, ROW(PrjAzimuth),   PrjAzimuth::InDomain,    NeverOffset},           // 28
}};
#undef ROW
// clang-format on

}  // namespace

std::span<const ProjectionRow, 29> ProjectionTable() {
  return kRows;
}

}  // namespace orvex::detail
