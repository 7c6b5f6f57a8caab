// Common - what the benchmarks share: random inputs, fixed seed, and the time for a point as a counter.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include <orvex/orvex.h>

namespace orvex::bench {

inline std::mt19937_64& Engine() {
  static std::mt19937_64 engine(20240611);
  return engine;
}

inline double Between(double low, double high) {
  return std::uniform_real_distribution(low, high)(Engine());
}

/// Random points of a box.
template <class Point>
std::vector<Point> PointsIn(std::size_t count, double west, double east, double south, double north) {
  std::vector<Point> points(count);
  for (Point& p : points) p = {Between(west, east), Between(south, north)};
  return points;
}

/// Counter "each": the time for each of `perIteration` items.
inline void CountItems(benchmark::State& state, std::size_t perIteration) {
  state.counters["each"] = benchmark::Counter(
      static_cast<double>(perIteration), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// Runs `convert(points, count)` over copies of the points, which it converts in place. The copies are made outside the
/// time that is measured; an iteration is a thousand points or more, so that the clock does not weigh.
template <class Point, class Convert>
void MeasureInPlace(benchmark::State& state, const std::vector<Point>& points, std::size_t atOnce, Convert convert) {
  std::vector<Point> work;
  for (auto _ : state) {
    state.PauseTiming();
    work = points;
    state.ResumeTiming();
    for (std::size_t i = 0; i < work.size(); i += atOnce) convert(work.data() + i, static_cast<int>(atOnce));
    benchmark::DoNotOptimize(work.data());
    benchmark::ClobberMemory();
  }
  CountItems(state, points.size());
}

/// Arrays of `atOnce` points, as many as make about a thousand points in an iteration.
inline std::size_t TotalPoints(std::size_t atOnce) {
  return atOnce < 1000 ? 1000 / atOnce * atOnce : atOnce;
}

inline const std::vector<std::size_t>& Sizes() {
  static const std::vector<std::size_t> sizes{1, 16, 1000, 100000, 1000000};
  return sizes;
}

/// Called by main: each topic registers its benchmarks.
void RegisterProjections();
void RegisterDatums();
void RegisterZones();
void RegisterGeoref();
void RegisterPreclip();

}  // namespace orvex::bench
