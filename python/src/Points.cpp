// Points - coordinates where a host's arrays have them, and the blocks in which they are converted.
#include "Points.h"

#include <cfloat>
#include <cstring>
#include <limits>

namespace orvex::python {

namespace {

constexpr std::ptrdiff_t kPair = 2;  // doubles from one point to the next where x and y take turns

bool Interleaved(const Points& points) {
  return points.x.stride == kPair && points.y.stride == kPair && points.y.first == points.x.first + 1;
}

bool Plain(const Points& points) {
  return points.x.stride == 1 && points.y.stride == 1;
}

Points From(const Points& points, std::size_t first) {
  return {{&points.x[first], points.x.stride}, {&points.y[first], points.y.stride}, points.size - first};
}

bool Marked(const PROJPOINT& p) {
  return (p.x == DBL_MAX) | (p.y == DBL_MAX);  // no branch, so that the compiler looks at several points at a time
}

std::size_t CountMarked(std::span<const PROJPOINT> block) {
  std::size_t count = 0;
  for (const PROJPOINT& p : block) count += Marked(p);
  return count;
}

void Store(std::span<const PROJPOINT> block, double* __restrict x, double* __restrict y) {
  for (std::size_t i = 0; i < block.size(); ++i) {
    x[i] = block[i].x;
    y[i] = block[i].y;
  }
}

}  // namespace

void Gather(const Points& from, std::size_t first, std::span<PROJPOINT> block) {
  const Points part = From(from, first);
  if (Interleaved(part)) {
    std::memcpy(block.data(), part.x.first, block.size_bytes());
  } else if (Plain(part)) {
    for (std::size_t i = 0; i < block.size(); ++i) block[i] = {part.x.first[i], part.y.first[i]};
  } else {
    for (std::size_t i = 0; i < block.size(); ++i) block[i] = {part.x[i], part.y[i]};
  }
}

std::size_t Scatter(std::span<PROJPOINT> block, const Points& to, std::size_t first) {
  const Points part = From(to, first);
  const std::size_t missing = CountMarked(block);
  if (missing > 0) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    for (PROJPOINT& p : block) {
      if (Marked(p)) p = {kNaN, kNaN};
    }
  }
  if (Interleaved(part)) {
    std::memcpy(part.x.first, block.data(), block.size_bytes());
  } else if (Plain(part)) {
    Store(block, part.x.first, part.y.first);
  } else {
    for (std::size_t i = 0; i < block.size(); ++i) {
      part.x[i] = block[i].x;
      part.y[i] = block[i].y;
    }
  }
  return missing;
}

}  // namespace orvex::python
