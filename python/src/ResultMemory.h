// ResultMemory - memory of large result arrays, kept for the next ones.
#pragma once

#include <pybind11/numpy.h>

#include <vector>

namespace orvex::python {

/// A new array of doubles, its values undefined. Where a program converts one chunk after the other and drops each
/// result, fresh pages from the system would cost as much as a cheap projection: memory of arrays that nobody uses any
/// more is kept, some 64 MB at most, and given to the next array of the same size. The interpreter's lock must be held.
pybind11::array_t<double> NewArray(const std::vector<pybind11::ssize_t>& shape);

}  // namespace orvex::python
