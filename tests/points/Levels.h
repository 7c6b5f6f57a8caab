// Levels - the levels that were compiled and that the machine can run.
#pragma once

#include <vector>

#include "LevelTable.h"

namespace points_test {

inline std::vector<Level> Levels() {
  std::vector<Level> levels{BaseLevel()};
#ifdef ORVEX_TEST_AVX2
  if (__builtin_cpu_supports("avx2")) levels.push_back(Avx2Level());
#endif
#ifdef ORVEX_TEST_AVX512
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl")) {
    levels.push_back(Avx512Level());
  }
#endif
  return levels;
}

}  // namespace points_test
