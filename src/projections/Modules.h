// Modules - the four operations that every projection module defines, for the projection table.
#pragma once

#include "projections/Module.h"

namespace orvex::detail {

using ConvertFunction = bool(PROJDATA* work, PROJPOINT* pts, int nPts);
using DomainFunction = bool(const PROJDATA* rec, const PROJPOINT* point);
using OffsetFunction = bool(const PROJDATA* rec, const PROJPOINT* pts, unsigned nPts, double* dx, double* dy);

// clang-format off
namespace PrjAlbers   { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjAzimuth  { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjBonne    { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjCassini  { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjEckert4  { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjEckert6  { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjEquiCon  { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjEquiCyl  { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjGnom     { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjHotine   { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjLamAEA   { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjLambert  { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjMerc     { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjMiller   { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjMolle    { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjOblMerc  { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjOrtho    { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjPolar    { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjPolycon  { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjRobin    { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjRobStr   { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjSinus    { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjTMerc    { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjUTM      { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
namespace PrjVanDer   { ConvertFunction Forward, Inverse; DomainFunction InDomain; OffsetFunction OffsetSplit; }
// clang-format on

}  // namespace orvex::detail
