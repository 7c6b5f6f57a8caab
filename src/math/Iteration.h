// Iteration - the stopping rule that several inverses share.
#pragma once

#include "math/IsometricLatitude.h"

namespace orvex::detail::ORVEX_LEVEL {

/// Passes of the inverses' iterations; convergence in the last one counts as failure.
inline constexpr int kMaxPasses = 500;

/// Iterates a latitude from `first` until two estimates agree within `tolerance` (radians). `step(phi, next)` computes
/// the next estimate and answers where there is one. Answers where it has settled, with the latitude in `result`.
/// Two things are deliberate and must stay: the first test compares with whatever `slot` holds (the callers' northing),
/// and the result is the previous estimate, not the newest, so that it is only as good as the tolerance.
template <class T, class StepOperation>
ORVEX_INLINE MaskOf<T> PreviousEstimate(T first, T slot, double tolerance, const StepOperation& step, T& result,
                                        T& newest) {
  T phi = first, previous = slot;
  Iteration<T> it(kMaxPasses - 1);
  it.Settle(Abs(phi - previous) <= T(tolerance));
  while (it.Goes()) {
    T next;
    it.GiveUp(!step(phi, next));
    it.Step(previous, phi);
    it.Step(phi, next);
    it.Settle(Abs(phi - previous) <= T(tolerance));
  }
  result = previous;
  newest = phi;
  return it.Settled();
}

/// ((1 - e sin phi) / (1 + e sin phi))^(e/2), what the ellipsoid adds to the conformal latitude.
class ConformalFactor {
 public:
  explicit ConformalFactor(double eccentricity) : m_eccentric(eccentricity) {}

  double Eccentricity() const { return m_eccentric.e; }
  const EccentricTerm& Eccentric() const { return m_eccentric; }

  template <class T>
  ORVEX_INLINE T operator()(T sinPhi) const {
    const T w = -m_eccentric(sinPhi);
    if (!m_eccentric.IsEarthlike()) return Exp(w);
    T s = w * (1.0 / 720) + 1.0 / 120;  // the exponential of less than 0.0085
    s = s * w + 1.0 / 24;
    s = s * w + 1.0 / 6;
    s = s * w + 0.5;
    return 1 + (w + w * w * s);
  }

 private:
  EccentricTerm m_eccentric;
};

/// The same for Snyder's 7-9, phi = pi/2 - 2 atan(t ((1 - e sin phi) / (1 + e sin phi))^(e/2)), from 7-11 on. It runs
/// in q = tan(pi/4 - phi/2), of which sin phi and the difference of two latitudes are rational functions.
template <class T>
ORVEX_INLINE MaskOf<T> PreviousConformalEstimate(T t, const ConformalFactor& factor, T slot, double tolerance,
                                                 T& result) {
  constexpr double kFarSouth = 1e150;  // beyond it the latitude does not change, and squares would overflow
  t = Select(t > T(kFarSouth), T(kFarSouth), t);
  const MaskOf<T> atOnce = Abs((kHalfPi - 2 * Atan(t)) - slot) <= T(tolerance);
  T q = t;
  Iteration<T> it(kMaxPasses - 1);
  it.Settle(atOnce);
  while (it.Goes()) {
    const T sinPhi = 2 / (1 + q * q) - 1;
    it.GiveUp(1 + factor.Eccentricity() * sinPhi == T(0));
    const T next = t * factor(sinPhi);
    it.Settle(Abs(next - q) <= tolerance / 2 * (1 + q * next));  // before the step: the previous estimate is delivered
    it.Step(q, next);
  }
  result = Select(atOnce, slot, kHalfPi - 2 * Atan(q));
  return it.Settled();
}

}  // namespace orvex::detail::ORVEX_LEVEL
