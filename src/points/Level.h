// Level - the instruction set that a source is compiled for, as a namespace. Sources of the point core are compiled
// once for each: `base` with what every processor of the target has (SSE2, NEON, SIMD128), `avx2` and `avx512` on x86.
// All other sources see the names of `base` as their own.
#pragma once

#ifndef ORVEX_LEVEL
#define ORVEX_LEVEL base
#endif

namespace orvex::detail {
namespace base {}
using namespace base;
}  // namespace orvex::detail
