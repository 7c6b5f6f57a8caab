// Modules - what every projection module defines for the table of conversions.
#pragma once

#include "points/Level.h"
#include "projections/Conversion.h"

namespace orvex::detail::ORVEX_LEVEL {

// clang-format off
namespace PrjAlbers  { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjAzimuth { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjBonne   { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjCassini { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjEckert4 { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjEckert6 { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjEquiCon { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjEquiCyl { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjGnom    { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjHotine  { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjLamAEA  { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjLambert { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjMerc    { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjMiller  { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjMolle   { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjOblMerc { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjOrtho   { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjPolar   { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjPolycon { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjRobStr  { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjRobin   { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjSinus   { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjTMerc   { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjUTM     { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
namespace PrjVanDer  { ConvertFunction Forward, Inverse; ExactFormTest HasExactForm; }
// clang-format on

}  // namespace orvex::detail::ORVEX_LEVEL
