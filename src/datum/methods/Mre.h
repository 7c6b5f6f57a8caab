// Mre - datum shift by multiple regression equations, from the datum to WGS 84 only.
// Source: DMA Technical Report 8350.2-B (1987).
#pragma once

#include "datum/methods/MreTable.h"
#include "points/PointLoop.h"

namespace orvex::detail::ORVEX_LEVEL {

/// Powers of one variable, each as the product of two halves.
template <class T>
struct MrePowers {
  T x[kMreHighestPower + 1];

  ORVEX_INLINE explicit MrePowers(T first) {
    x[0] = T(1);
    x[1] = first;
    for (int i = 2; i <= kMreHighestPower; ++i) x[i] = x[i / 2] * x[i - i / 2];
  }
};

template <class T>
ORVEX_INLINE T Evaluate(const MreEquation& equation, const MrePowers<T>& U, const MrePowers<T>& V) {
  T sum = T(0);
  for (const MreTerm* term = equation.terms; term != equation.terms + equation.count; ++term) {
    sum = sum + term->c * U.x[term->i] * V.x[term->j];
  }
  return sum;
}

template <class T>
ORVEX_INLINE void Shift(const MreDatum& datum, Point<T>& p) {
  constexpr double kArcsecondsPerDegree = 3600;
  const MrePowers<T> U((p.y - datum.latC) * datum.K), V((p.x - datum.lonC) * datum.K);
  p.x = p.x + Evaluate(datum.lon, U, V) / kArcsecondsPerDegree;
  p.y = p.y + Evaluate(datum.lat, U, V) / kArcsecondsPerDegree;
}

}  // namespace orvex::detail::ORVEX_LEVEL
