// LevelTable - the elementary functions of one instruction set as plain functions over arrays, one for each width.
#pragma once

#include <cstddef>

namespace points_test {

/// Runs over a multiple of 16 numbers; y is read by functions of two arguments only.
using Run = void (*)(const double* x, const double* y, double* result, int count);

struct Width {
  const char* name;  // null ends the list; the first is the double
  Run run;
};
constexpr int kMostWidths = 6;
struct Function {
  const char* name;
  bool two;  // arguments
  Width widths[kMostWidths];
};
struct Level {
  const char* name;
  const Function* functions;
  std::size_t count;
};

// Each is there where it was compiled.
const Level& BaseLevel();
const Level& Avx2Level();
const Level& Avx512Level();

}  // namespace points_test
