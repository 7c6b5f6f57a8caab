// Levels - the choice of the instruction set.
#include "points/Levels.h"

#include <atomic>
#include <cstring>

#include "platform/Platform.h"

namespace orvex::detail {

namespace {

constexpr const char* kNames[] = {"base", "avx2", "avx512"};

Level Highest() noexcept {
#if defined(ORVEX_X86_LEVELS)
  __builtin_cpu_init();
#endif
#if defined(ORVEX_AVX512_LEVEL)
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl")) {
    return Level::Avx512;
  }
#endif
#if defined(ORVEX_X86_LEVELS)
  if (__builtin_cpu_supports("avx2")) return Level::Avx2;
#endif
  return Level::Base;
}

Level Wanted() noexcept {
  const char* name = platform::Environment("ORVEX_LEVEL");
  for (int i = 0; name != nullptr && i < 3; ++i) {
    if (std::strcmp(name, kNames[i]) == 0) return static_cast<Level>(i);
  }
  return Level::Avx512;
}

Level AtMost(Level level, Level most) noexcept {
  return level < most ? level : most;
}

std::atomic<Level> active{AtMost(Wanted(), Highest())};

}  // namespace

Level HighestLevel() noexcept {
  static const Level highest = Highest();
  return highest;
}

Level ActiveLevel() noexcept {
  return active.load(std::memory_order_relaxed);
}

void SetLevel(Level level) noexcept {
  active.store(AtMost(level, HighestLevel()), std::memory_order_relaxed);
}

}  // namespace orvex::detail
