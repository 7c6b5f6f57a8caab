// PointView - where the x and the y of an array of points stand, whatever record or column holds them.
#pragma once

#include <cstddef>

namespace orvex::detail {

/// Point i has its coordinates at x[i * stride] and y[i * stride]. Points of a record have stride 2, columns 1. Neither
/// needs to be aligned: hosts pack their records.
struct PointView {
  double* x;
  double* y;
  std::ptrdiff_t stride;
};

/// View of an array of records { double x, y; }, packed or not. Always inlined: every instruction set has its own.
template <class Record>
[[gnu::always_inline]] inline PointView ViewOf(Record* records) {
  static_assert(sizeof(Record) == 2 * sizeof(double));
  auto* const first = reinterpret_cast<double*>(records);
  return {first, first == nullptr ? nullptr : first + 1, 2};
}

}  // namespace orvex::detail
