// Table - the 29 rows of the projection table, row index = ProjType. The masks belong to the host.
#include <array>

#include "projections/Modules.h"

namespace orvex::detail {

namespace {

// clang-format off
#define ROW(module) module::Forward, module::Inverse, module::InDomain, module::OffsetSplit
constexpr std::array<ProjectionRow, 29> kRows{{
    {"Unprojected Lat/Long",                0x00, nullptr, nullptr, nullptr, nullptr},  //  0
    {"Mercator",                            0x2F, ROW(PrjMerc)},                        //  1
    {"Albers Equal Area Conic",             0x2F, ROW(PrjAlbers)},                      //  2
    {"Miller Cylindrical",                  0x2F, ROW(PrjMiller)},                      //  3
    {"Universal Transverse Mercator (UTM)", 0x1B, ROW(PrjUTM)},                         //  4
    {"Lambert Conformal Conic",             0x2F, ROW(PrjLambert)},                     //  5
    {"Stereographic",                       0x1B, ROW(PrjPolar)},                       //  6
    {"Orthographic",                        0x1B, ROW(PrjOrtho)},                       //  7
    {"Mollweide",                           0x3F, ROW(PrjMolle)},                       //  8
    {"State Plane 1927",                    0x3B, nullptr, nullptr, nullptr, nullptr},  //  9
    {"State Plane 1983",                    0x3B, nullptr, nullptr, nullptr, nullptr},  // 10
    {"Polyconic",                           0x1B, ROW(PrjPolycon)},                     // 11
    {"Hotine Oblique Mercator",             0x03, ROW(PrjHotine)},                      // 12
    {"Equidistant Cylindrical",             0x2F, ROW(PrjEquiCyl)},                     // 13
    {"Robinson",                            0x3F, ROW(PrjRobin)},                       // 14
    {"Van Der Grinten",                     0x3F, ROW(PrjVanDer)},                      // 15
    {"Cassini",                             0x3B, ROW(PrjCassini)},                     // 16
    {"Transverse Mercator",                 0x1B, ROW(PrjTMerc)},                       // 17
    {"Gauss-Kruger / Gauss Conformal",      0x1B, ROW(PrjTMerc)},                       // 18
    {"Sinusoidal",                          0x3F, ROW(PrjSinus)},                       // 19
    {"Lambert Azimuthal Equal Area",        0x3B, ROW(PrjLamAEA)},                      // 20
    {"Bonne",                               0x1B, ROW(PrjBonne)},                       // 21
    {"Robinson-Sterling",                   0x3F, ROW(PrjRobStr)},                      // 22
    {"Eckert IV",                           0x3F, ROW(PrjEckert4)},                     // 23
    {"Eckert VI",                           0x3F, ROW(PrjEckert6)},                     // 24
    {"Oblique Mercator",                    0x03, ROW(PrjOblMerc)},                     // 25
    {"Equidistant Conic",                   0x2F, ROW(PrjEquiCon)},                     // 26
    {"Gnomonic",                            0x1B, ROW(PrjGnom)},                        // 27
    {"Azimuthal Equidistant",               0x3F, ROW(PrjAzimuth)},                     // 28
}};
#undef ROW
// clang-format on

}  // namespace

std::span<const ProjectionRow, 29> ProjectionTable() {
  return kRows;
}

}  // namespace orvex::detail
