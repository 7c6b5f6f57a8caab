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

PROJPOINT Unmarked(PROJPOINT p) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const bool marked = p.x == DBL_MAX || p.y == DBL_MAX;
  return {marked ? kNaN : p.x, marked ? kNaN : p.y};
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

std::size_t Scatter(std::span<const PROJPOINT> block, const Points& to, std::size_t first) {
  const Points part = From(to, first);
  std::size_t missing = 0;
  const auto store = [&](const Column& x, const Column& y) {
    for (std::size_t i = 0; i < block.size(); ++i) {
      const PROJPOINT p = Unmarked(block[i]);
      missing += p.x != p.x;
      x[i] = p.x;
      y[i] = p.y;
    }
  };
  if (Plain(part)) {
    store({part.x.first, 1}, {part.y.first, 1});  // a stride that the compiler knows
  } else {
    store(part.x, part.y);
  }
  return missing;
}

}  // namespace orvex::python
