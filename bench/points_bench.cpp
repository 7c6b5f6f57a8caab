// Elementary functions: nanoseconds for one number (the time of an item), in the width that each level's library uses,
// beside those of the runtime.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>
#include <vector>

#include "points/Arguments.h"
#include "points/Levels.h"

namespace {

using namespace points_test;

constexpr std::size_t kCount = 1024;  // two arrays and their result stay in the first cache

struct Case {
  const char* function;
  Draw x, y;
  double (*runtime)(double);
  double (*runtime2)(double, double);
};
const Case kCases[] = {
    {"SinCos", {Kind::Uniform, -3.2, 3.2}, {}, [](double x) { return std::sin(x) + std::cos(x); }, nullptr},
    {"Sin", {Kind::Uniform, -3.2, 3.2}, {}, std::sin, nullptr},
    {"Cos", {Kind::Uniform, -3.2, 3.2}, {}, std::cos, nullptr},
    {"Tan", {Kind::Uniform, -1.5, 1.5}, {}, std::tan, nullptr},
    {"Atan", {Kind::Uniform, -3, 3}, {}, std::atan, nullptr},
    {"Atan2", {Kind::Uniform, -1, 1}, {Kind::Uniform, -1, 1}, nullptr, std::atan2},
    {"Asin", {Kind::Uniform, -1, 1}, {}, std::asin, nullptr},
    {"Exp", {Kind::Uniform, -5, 5}, {}, std::exp, nullptr},
    {"Log", {Kind::Uniform, 0.01, 5}, {}, std::log, nullptr},
    {"Pow", {Kind::Uniform, 0.01, 5}, {Kind::Uniform, -3, 3}, nullptr, std::pow},
    {"Log1p", {Kind::Uniform, -0.5, 5}, {}, std::log1p, nullptr},
    {"Sinh", {Kind::Uniform, -3, 3}, {}, std::sinh, nullptr},
    {"Cosh", {Kind::Uniform, -3, 3}, {}, std::cosh, nullptr},
    {"Asinh", {Kind::Uniform, -5, 5}, {}, std::asinh, nullptr},
    {"Atanh", {Kind::Uniform, -1, 1}, {}, std::atanh, nullptr},
    {"Hypot", {Kind::Uniform, -1, 1}, {Kind::Uniform, -1, 1}, nullptr, std::hypot},
};

struct Arrays {
  Arguments arguments;
  std::vector<double> result;
  explicit Arrays(const Case& c)
      : arguments({c.function, "", 0, true, c.x, c.y}, kCount, 1), result(arguments.x.size()) {}
};
void Count(benchmark::State& state) {
  state.counters["ns"] = benchmark::Counter(
      static_cast<double>(kCount) * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
void RunLevel(benchmark::State& state, const Case& c, Run run) {
  Arrays arrays(c);
  for (auto _ : state) {
    run(arrays.arguments.x.data(), arrays.arguments.y.data(), arrays.result.data(), arrays.arguments.Count());
    benchmark::ClobberMemory();
  }
  Count(state);
}
void RunRuntime(benchmark::State& state, const Case& c) {
  Arrays arrays(c);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) {
      const double x = arrays.arguments.x[i];
      arrays.result[i] = c.runtime != nullptr ? c.runtime(x) : c.runtime2(x, arrays.arguments.y[i]);
    }
    benchmark::ClobberMemory();
  }
  Count(state);
}

const bool kRegistered = [] {
  for (const Case& c : kCases) {
    const std::string name = std::string("points/") + c.function + "/";
    benchmark::RegisterBenchmark((name + "runtime").c_str(), [&c](benchmark::State& state) { RunRuntime(state, c); });
    for (const Level& level : Levels()) {
      for (std::size_t i = 0; i < level.count; ++i) {
        if (std::string(level.functions[i].name) != c.function) continue;
        const Width* width = level.functions[i].widths;
        while (width[1].name != nullptr) ++width;
        benchmark::RegisterBenchmark((name + level.name).c_str(),
                                     [&c, run = width->run](benchmark::State& state) { RunLevel(state, c, run); });
      }
    }
  }
  return true;
}();

}  // namespace
