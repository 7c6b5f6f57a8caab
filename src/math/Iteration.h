// Iteration - the stopping rule that several inverses share.
#pragma once

#include <cmath>

namespace orvex::detail {

/// Passes of the inverses' iterations; convergence in the last one counts as failure.
inline constexpr int kMaxPasses = 500;

/// Iterates a latitude from `first` until two estimates agree within `tolerance` (radians). `step(phi, next)` computes
/// the next estimate and answers false at a dead end. True with the latitude in `result`, false when nothing was found.
/// Two things are deliberate and must stay: the first test compares with whatever `slot` holds (the callers' northing),
/// and the result is the previous estimate, not the newest, so that it is only as good as the tolerance.
template <class Step>
bool PreviousEstimate(double first, double slot, double tolerance, Step step, double& result) {
  double phi = first, previous = slot;
  for (int passes = 0; passes < kMaxPasses; ++passes) {
    if (std::fabs(phi - previous) <= tolerance) {
      result = previous;
      return true;
    }
    double next = 0;
    if (!step(phi, next)) return false;
    previous = phi;
    phi = next;
  }
  return false;
}

}  // namespace orvex::detail
