// Modules - what every projection module defines for the table of conversions.
#pragma once

#include "points/Level.h"
#include "projections/Conversion.h"

namespace orvex::detail::ORVEX_LEVEL {

// clang-format off
namespace PrjAlbers  { ConvertFunction Forward, Inverse; }
namespace PrjAzimuth { ConvertFunction Forward, Inverse; }
namespace PrjBonne   { ConvertFunction Forward, Inverse; }
namespace PrjCassini { ConvertFunction Forward, Inverse; }
namespace PrjEckert4 { ConvertFunction Forward, Inverse; }
namespace PrjEckert6 { ConvertFunction Forward, Inverse; }
namespace PrjEquiCon { ConvertFunction Forward, Inverse; }
namespace PrjEquiCyl { ConvertFunction Forward, Inverse; }
namespace PrjGnom    { ConvertFunction Forward, Inverse; }
namespace PrjHotine  { ConvertFunction Forward, Inverse; }
namespace PrjLamAEA  { ConvertFunction Forward, Inverse; }
namespace PrjLambert { ConvertFunction Forward, Inverse; }
namespace PrjMerc    { ConvertFunction Forward, Inverse; }
namespace PrjMiller  { ConvertFunction Forward, Inverse; }
namespace PrjMolle   { ConvertFunction Forward, Inverse; }
namespace PrjOblMerc { ConvertFunction Forward, Inverse; }
namespace PrjOrtho   { ConvertFunction Forward, Inverse; }
namespace PrjPolar   { ConvertFunction Forward, Inverse; }
namespace PrjPolycon { ConvertFunction Forward, Inverse; }
namespace PrjRobStr  { ConvertFunction Forward, Inverse; }
namespace PrjRobin   { ConvertFunction Forward, Inverse; }
namespace PrjSinus   { ConvertFunction Forward, Inverse; }
namespace PrjTMerc   { ConvertFunction Forward, Inverse; }
namespace PrjUTM     { ConvertFunction Forward, Inverse; }
namespace PrjVanDer  { ConvertFunction Forward, Inverse; }
// clang-format on

}  // namespace orvex::detail::ORVEX_LEVEL
