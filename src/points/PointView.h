// PointView - where the x and the y of many points stand, whatever record or column holds them.
#pragma once

#include <cstddef>

namespace orvex::detail {

/// Point i has its coordinates at x[i * stride] and y[i * stride]. Points of a record have stride 2, columns 1. Neither
/// needs to be aligned: hosts pack their records.
struct PointView {
  double* x;
  double* y;
  std::ptrdiff_t stride;

  // Always inlined, as all here: every instruction set has its own.
  [[gnu::always_inline]] void Get(int i, double& xi, double& yi) const {
    __builtin_memcpy(&xi, x + i * stride, sizeof xi);
    __builtin_memcpy(&yi, y + i * stride, sizeof yi);
  }
  [[gnu::always_inline]] void Put(int i, double xi, double yi) const {
    __builtin_memcpy(x + i * stride, &xi, sizeof xi);
    __builtin_memcpy(y + i * stride, &yi, sizeof yi);
  }
};

/// View of an array of records { double x, y; }, packed or not.
template <class Record>
[[gnu::always_inline]] inline PointView ViewOf(Record* records) {
  static_assert(sizeof(Record) == 2 * sizeof(double));
  auto* const first = reinterpret_cast<double*>(records);
  return {first, first == nullptr ? nullptr : first + 1, 2};
}

/// View of two columns; of none where one of them is missing.
[[gnu::always_inline]] inline PointView ViewOf(double* x, double* y) {
  if (x == nullptr || y == nullptr) return {nullptr, nullptr, 1};
  return {x, y, 1};
}

}  // namespace orvex::detail
