// Points - coordinates where a host's arrays have them, and the blocks in which they are converted.
#pragma once

#include <cstddef>
#include <span>

#include <orvex/projection.h>

namespace orvex::python {

/// One coordinate of many points; the stride is in doubles and may be 0 (one value for all) or negative.
struct Column {
  double* first;
  std::ptrdiff_t stride;

  double& operator[](std::size_t i) const { return first[static_cast<std::ptrdiff_t>(i) * stride]; }
};

/// Both coordinates of `size` points.
struct Points {
  Column x, y;
  std::size_t size;
};

/// Copies the points from `first` on into the block.
void Gather(const Points& from, std::size_t first, std::span<PROJPOINT> block);

/// Copies the block to the points from `first` on, with NaN in both coordinates (of the block, too) where the library
/// left its marker in one. Answers how many those are.
std::size_t Scatter(std::span<PROJPOINT> block, const Points& to, std::size_t first);

}  // namespace orvex::python
