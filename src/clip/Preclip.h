// Preclip - what the preclippers share: the source they report, and the guard around their own work.
#pragma once

#include <span>
#include <vector>

#include "orvex/clip.h"
#include "support/Errors.h"
#include "support/FpGuard.h"

namespace orvex::detail {

inline constexpr char kClipSource[] = "OrvexPClip";
inline constexpr int kNoMemoryLine = 302;  // a list of points or segments could not grow
inline constexpr char kTooFewPointsText[] = "CSEGLIST::AppendMultiple was called with less than 2 points!\n";

/// Runs a piece of the library's own work with the host's floating-point traps masked, and turns running out of memory
/// into message 20201. Callbacks are called outside of it: there the host has its own environment, and its exceptions
/// pass as they are.
template <class Work>
auto Guarded(Work work) {
  return WithinMemory(kClipSource, kNoMemoryLine, [&work] {
    const FpGuard guard;
    return work();
  });
}

/// A copy of points, moved.
inline std::vector<PROJPOINT> Moved(std::span<const PROJPOINT> pts, double dx, double dy) {
  std::vector<PROJPOINT> moved(pts.begin(), pts.end());
  for (PROJPOINT& p : moved) p = {p.x + dx, p.y + dy};
  return moved;
}

}  // namespace orvex::detail
