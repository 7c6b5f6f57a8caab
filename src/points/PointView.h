// PointView - where the x and the y of many points stand, whatever record or column holds them.
#pragma once

#include <cstddef>

namespace orvex::detail {

/// Point i has its coordinates at fromX[i * stride] and fromY[i * stride], and what becomes of it goes to x[i * stride]
/// and y[i * stride], the same place where points are converted in place. Points of a record have stride 2, columns 1.
/// Neither needs to be aligned: hosts pack their records.
struct PointView {
  double* x;
  double* y;
  std::ptrdiff_t stride;
  const double* fromX;
  const double* fromY;

  bool InPlace() const { return fromX == x && fromY == y; }

  // Always inlined, as all here: every instruction set has its own.
  [[gnu::always_inline]] void Get(int i, double& xi, double& yi) const {
    __builtin_memcpy(&xi, fromX + i * stride, sizeof xi);
    __builtin_memcpy(&yi, fromY + i * stride, sizeof yi);
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
  auto* const second = first == nullptr ? nullptr : first + 1;
  return {first, second, 2, first, second};
}

/// View of columns; of none where one of them is missing.
[[gnu::always_inline]] inline PointView ViewOf(const double* fromX, const double* fromY, double* x, double* y) {
  if (fromX == nullptr || fromY == nullptr || x == nullptr || y == nullptr) return {};
  return {x, y, 1, fromX, fromY};
}

/// Brings points to where the results go and answers their view there: for what takes several passes.
inline PointView BringOver(const PointView& points, int count) {
  for (int i = 0; !points.InPlace() && i < count; ++i) {
    double x, y;
    points.Get(i, x, y);
    points.Put(i, x, y);
  }
  return {points.x, points.y, points.stride, points.x, points.y};
}

}  // namespace orvex::detail
