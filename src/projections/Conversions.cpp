// Conversions - one table for each instruction set.
#include "projections/Conversions.h"

#include "projections/Modules.h"

namespace orvex::detail::ORVEX_LEVEL {

#define ROW(module) \
  { module::Forward, module::Inverse, module::HasExactForm }
// clang-format off
const ConversionTable kConversions{{
    {nullptr, nullptr, nullptr},  //  0
    ROW(PrjMerc),        //  1
    ROW(PrjAlbers),      //  2
    ROW(PrjMiller),      //  3
    ROW(PrjUTM),         //  4
    ROW(PrjLambert),     //  5
    ROW(PrjPolar),       //  6
    ROW(PrjOrtho),       //  7
    ROW(PrjMolle),       //  8
    {nullptr, nullptr, nullptr},  //  9
    {nullptr, nullptr, nullptr},  // 10
    ROW(PrjPolycon),     // 11
    ROW(PrjHotine),      // 12
    ROW(PrjEquiCyl),     // 13
    ROW(PrjRobin),       // 14
    ROW(PrjVanDer),      // 15
    ROW(PrjCassini),     // 16
    ROW(PrjTMerc),       // 17
    ROW(PrjTMerc),       // 18
    ROW(PrjSinus),       // 19
    ROW(PrjLamAEA),      // 20
    ROW(PrjBonne),       // 21
    ROW(PrjRobStr),      // 22
    ROW(PrjEckert4),     // 23
    ROW(PrjEckert6),     // 24
    ROW(PrjOblMerc),     // 25
    ROW(PrjEquiCon),     // 26
    ROW(PrjGnom),        // 27
    ROW(PrjAzimuth),     // 28
}};
// clang-format on
#undef ROW

}  // namespace orvex::detail::ORVEX_LEVEL
