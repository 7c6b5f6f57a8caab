// Points - coordinates where a host's arrays have them, and the blocks in which they are converted.
#include "Points.h"

#include <algorithm>
#include <cfloat>
#include <cstring>
#include <limits>

namespace orvex::python {

namespace {

void Copy(const Column& from, const Column& to, std::size_t count) {
  if (from.stride == 1 && to.stride == 1) {
    std::copy_n(from.first, count, to.first);
  } else {
    for (std::size_t i = 0; i < count; ++i) to[i] = from[i];
  }
}

bool Marked(double x, double y) {
  return x == DBL_MAX || y == DBL_MAX;
}

/// Whether one of the numbers is the marker. A vector at a time: on cheap projections the look at the results would
/// cost as much as the results.
bool HasMarker(const double* numbers, std::size_t count) {
  using Vector = double __attribute__((vector_size(16)));
  using Mask = long long __attribute__((vector_size(16)));
  constexpr Vector kMarker{DBL_MAX, DBL_MAX};
  Mask found[4]{};  // independent of each other, so that none waits for the one before
  std::size_t i = 0;
  for (; i + 8 <= count; i += 8) {
    Vector some[4];
    std::memcpy(some, numbers + i, sizeof some);
    for (int k = 0; k < 4; ++k) found[k] |= some[k] == kMarker;
  }
  const Mask any = (found[0] | found[1]) | (found[2] | found[3]);
  return (any[0] | any[1]) != 0 || std::find(numbers + i, numbers + count, DBL_MAX) != numbers + count;
}

bool HasMarker(const Block& block) {
  const Points& points = block.All();
  if (block.AreRecords()) return HasMarker(points.x.first, 2 * points.size);
  return HasMarker(points.x.first, points.size) || HasMarker(points.y.first, points.size);
}

}  // namespace

void Copy(const Points& from, const Points& to) {
  if (from.AreRecords() && to.AreRecords()) {
    std::copy_n(from.x.first, 2 * from.size, to.x.first);
  } else {
    Copy(from.x, to.x, from.size);
    Copy(from.y, to.y, from.size);
  }
}

void Copy(const Block& from, const Block& to) {
  if (!(from == to)) Copy(from.All(), to.All());
}

std::size_t Unmark(const Block& block) {
  if (!HasMarker(block)) return 0;
  std::size_t marked = 0;
  for (std::size_t i = 0; i < block.Size(); ++i) {
    if (!Marked(block.X(i), block.Y(i))) continue;
    block.X(i) = block.Y(i) = std::numeric_limits<double>::quiet_NaN();
    ++marked;
  }
  return marked;
}

}  // namespace orvex::python
