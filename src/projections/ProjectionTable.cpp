// ProjectionTable - the 29 rows of the projection table, row index = ProjType. The masks belong to the host.
#include "projections/ProjectionTable.h"

#include <array>

#include "points/Levels.h"
#include "projections/Conversions.h"

namespace orvex::detail {

ORVEX_AT_EVERY_LEVEL(ConversionTable, kConversions)

namespace {

// clang-format off
#define ROW(type) {type, false}, {type, true}
constexpr std::array<ProjectionRow, kProjectionCount> kRows{{
    {"Unprojected Lat/Long",                0x00, nullptr, nullptr, nullptr,                 nullptr},               //  0
    {"Mercator",                            0x2F, ROW(1),           InWorldBandBetweenPoles, CommonOffset},          //  1
    {"Albers Equal Area Conic",             0x2F, ROW(2),           InWorldBand,             CommonOffset},          //  2
    {"Miller Cylindrical",                  0x2F, ROW(3),           InWorldBandBetweenPoles, CommonOffset},          //  3
    {"Universal Transverse Mercator (UTM)", 0x1B, ROW(4),           InTransverseBand,        CommonOffset},          //  4
    {"Lambert Conformal Conic",             0x2F, ROW(5),           InWorldBand,             CommonOffset},          //  5
    {"Stereographic",                       0x1B, ROW(6),           InHemisphere,            NeverOffsetEvenEmpty},  //  6
    {"Orthographic",                        0x1B, ROW(7),           InHemisphere,            NeverOffsetEvenEmpty},  //  7
    {"Mollweide",                           0x3F, ROW(8),           InWorldBand,             CommonOffset},          //  8
    {"State Plane 1927",                    0x3B, nullptr, nullptr, nullptr,                 nullptr},               //  9
    {"State Plane 1983",                    0x3B, nullptr, nullptr, nullptr,                 nullptr},               // 10
    {"Polyconic",                           0x1B, ROW(11),          InWorldBand,             CommonOffset},          // 11
    {"Hotine Oblique Mercator",             0x03, ROW(12),          NearHotineLine,          NeverOffset},           // 12
    {"Equidistant Cylindrical",             0x2F, ROW(13),          Everywhere,              NeverOffset},           // 13
    {"Robinson",                            0x3F, ROW(14),          InGreenwichBand,         GreenwichOffset},       // 14
    {"Van Der Grinten",                     0x3F, ROW(15),          InWorldBand,             CommonOffset},          // 15
    {"Cassini",                             0x3B, ROW(16),          InHemisphere,            NeverOffset},           // 16
    {"Transverse Mercator",                 0x1B, ROW(17),          InTransverseBand,        CommonOffset},          // 17
    {"Gauss-Kruger / Gauss Conformal",      0x1B, ROW(18),          InTransverseBand,        CommonOffset},          // 18
    {"Sinusoidal",                          0x3F, ROW(19),          InWorldBand,             CommonOffset},          // 19
    {"Lambert Azimuthal Equal Area",        0x3B, ROW(20),          Everywhere,              NeverOffset},           // 20
    {"Bonne",                               0x1B, ROW(21),          InWorldBand,             CommonOffset},          // 21
    {"Robinson-Sterling",                   0x3F, ROW(22),          InWorldBand,             CommonOffset},          // 22
    {"Eckert IV",                           0x3F, ROW(23),          InWorldBand,             CommonOffset},          // 23
    {"Eckert VI",                           0x3F, ROW(24),          InWorldBand,             CommonOffset},          // 24
    {"Oblique Mercator",                    0x03, ROW(25),          NearTwoPointLine,        NeverOffset},           // 25
    {"Equidistant Conic",                   0x2F, ROW(26),          InWorldBand,             CommonOffset},          // 26
    {"Gnomonic",                            0x1B, ROW(27),          InGnomonicArc,           NeverOffsetEvenEmpty},  // 27
    {"Azimuthal Equidistant",               0x3F, ROW(28),          InEquidistantArc,        NeverOffset},           // 28
}};
#undef ROW
// clang-format on

}  // namespace

std::span<const ProjectionRow, kProjectionCount> ProjectionTable() {
  return kRows;
}

bool ConvertOperation::operator()(const Conversion& call) const {
  const ConversionRow& row = AtLevelFor<ORVEX_LEVELS_OF(kConversions)>(call.count).rows[m_row];
  return (m_inverse ? row.inverse : row.forward)(call);
}

bool ConvertOperation::HasExactForm(const PROJDATA& work) const {
  return base::kConversions.rows[m_row].hasExactForm(work);
}

}  // namespace orvex::detail
