// Georeferencing: the fit against the number of controls, and a point by each method.
#include <cmath>

#include "Common.h"

namespace orvex::bench {

namespace {

constexpr std::size_t kPoints = 1000;

GEOREF MakeRecord(TransformMethod method, int controls) {
  GEOREF g{};
  g.Method = method;
  RefAllocControls(&g, controls);
  for (int i = 0; i < controls; ++i) {
    const double x = Between(0, 4000), y = Between(0, 3000);
    g.pSrc[i] = {x, y};
    g.pDst[i] = {4e5 + 10 * x + y + 3 * std::sin(x / 500), 5e6 + x - 10 * y + 3 * std::cos(y / 500)};
  }
  const double coefficients[6] = {4e5, 10, 1, 5e6, 1, -10};
  for (std::size_t i = 0; i < 6; ++i) g.Coeff[i] = coefficients[i];
  return g;
}

void Fit(benchmark::State& state, TransformMethod method, int controls) {
  GEOREF g = MakeRecord(method, controls);
  for (auto _ : state) {
    void* const handle = RefCreateSystem(&g);
    benchmark::DoNotOptimize(handle);
    RefDeleteSystem(handle);
  }
  CountItems(state, 1);
  RefFreeControls(&g);
}

void Transform(benchmark::State& state, TransformMethod method, int controls) {
  GEOREF g = MakeRecord(method, controls);
  void* const handle = RefCreateSystem(&g);
  MeasureInPlace(state, PointsIn<GEOREFPOINT>(kPoints, 0, 4000, 0, 3000), kPoints,
                 [=](GEOREFPOINT* pts, int n) { RefForward(handle, pts, n); });
  RefDeleteSystem(handle);
  RefFreeControls(&g);
}

}  // namespace

void RegisterGeoref() {
  for (int m = RM_HELMERT; m < RM_NONE; ++m) {
    const auto method = static_cast<TransformMethod>(m);
    for (const int controls : {10, 100, 500}) {
      const std::string suffix = "|" + std::to_string(controls);
      if (method != RM_AFFINECOEFFICIENTS) {
        benchmark::RegisterBenchmark((RefMethodName(method) + ("|fit" + suffix)).c_str(),
                                     [=](benchmark::State& state) { Fit(state, method, controls); });
      }
      benchmark::RegisterBenchmark((RefMethodName(method) + ("|point" + suffix)).c_str(),
                                   [=](benchmark::State& state) { Transform(state, method, controls); });
    }
  }
}

}  // namespace orvex::bench
