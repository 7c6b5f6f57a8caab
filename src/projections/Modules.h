// Modules - what every projection module defines for the projection table: its conversions, and the domain and offset
// rules that it does not share with others.
#pragma once

#include "projections/Module.h"

namespace orvex::detail {

using ConvertFunction = bool(PROJDATA* work, PROJPOINT* pts, int nPts);
using DomainFunction = bool(const PROJDATA* rec, const PROJPOINT* point);
using OffsetFunction = bool(const PROJDATA* rec, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy);

// clang-format off
namespace PrjAlbers  { ConvertFunction Forward, Inverse; }
namespace PrjAzimuth { ConvertFunction Forward, Inverse; DomainFunction InDomain; }
namespace PrjBonne   { ConvertFunction Forward, Inverse; }
namespace PrjCassini { ConvertFunction Forward, Inverse; }
namespace PrjEckert4 { ConvertFunction Forward, Inverse; }
namespace PrjEckert6 { ConvertFunction Forward, Inverse; }
namespace PrjEquiCon { ConvertFunction Forward, Inverse; }
namespace PrjEquiCyl { ConvertFunction Forward, Inverse; }
namespace PrjGnom    { ConvertFunction Forward, Inverse; DomainFunction InDomain; }
namespace PrjHotine  { ConvertFunction Forward, Inverse; DomainFunction InDomain; }
namespace PrjLamAEA  { ConvertFunction Forward, Inverse; }
namespace PrjLambert { ConvertFunction Forward, Inverse; }
namespace PrjMerc    { ConvertFunction Forward, Inverse; }
namespace PrjMiller  { ConvertFunction Forward, Inverse; }
namespace PrjMolle   { ConvertFunction Forward, Inverse; }
namespace PrjOblMerc { ConvertFunction Forward, Inverse; DomainFunction InDomain; }
namespace PrjOrtho   { ConvertFunction Forward, Inverse; }
namespace PrjPolar   { ConvertFunction Forward, Inverse; }
namespace PrjPolycon { ConvertFunction Forward, Inverse; }
namespace PrjRobStr  { ConvertFunction Forward, Inverse; }
namespace PrjRobin   { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjSinus   { ConvertFunction Forward, Inverse; }
namespace PrjTMerc   { ConvertFunction Forward, Inverse; DomainFunction InDomain; }
namespace PrjUTM     { ConvertFunction Forward, Inverse; DomainFunction InDomain; }
namespace PrjVanDer  { ConvertFunction Forward, Inverse; }
// clang-format on

}  // namespace orvex::detail
