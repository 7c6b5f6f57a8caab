// Preclipping of wavy rings all over the world, for a map of a hemisphere and one of the world, by number of points.
#include <cmath>

#include "Common.h"
#include "support/Forms.h"

namespace orvex::bench {

namespace {

constexpr int kRings = 100;

/// Rings of `pointsPerRing` points with shores like islands, 2 to 14 degrees across; some reach over the antimeridian
/// and over the edge of the hemisphere.
std::vector<PROJPOINT> MakeRings(int pointsPerRing) {
  std::vector<PROJPOINT> pts;
  for (int ring = 0; ring < kRings; ++ring) {
    const double lon = Between(-190, 190), lat = Between(-70, 70), radius = Between(1, 7), phase = Between(0, 6);
    for (int i = 0; i < pointsPerRing; ++i) {
      const double t = 6.283185307179586 * (i % (pointsPerRing - 1)) / (pointsPerRing - 1);
      const double r = radius * (1 + 0.2 * std::sin(7 * t + phase) + 0.05 * std::sin(40 * t));
      pts.push_back({lon + r * std::cos(t), lat + r * std::sin(t)});
    }
  }
  return pts;
}

bool TakeFill(void* user, int parts, const int*, PROJPOINT* pts) {
  benchmark::DoNotOptimize(pts);
  *static_cast<int*>(user) += parts;
  return true;
}

bool TakeLine(void* user, int count, PROJPOINT* pts) {
  benchmark::DoNotOptimize(pts);
  *static_cast<int*>(user) += count;
  return true;
}

void Measure(benchmark::State& state, const char* parameters, ProjType type, bool polygon, int pointsPerRing) {
  PROJDATA rec = test::Record(type, parameters);
  void* const handle = ProjCreateProjection(&rec);
  const std::vector<PROJPOINT> pts = MakeRings(pointsPerRing);
  for (auto _ : state) {
    int delivered = 0;
    for (int ring = 0; ring < kRings; ++ring) {
      const PROJPOINT* const first = pts.data() + static_cast<std::ptrdiff_t>(ring) * pointsPerRing;
      const bool ok = polygon ? ProjLLPreclipPolygon(handle, &delivered, 1, &pointsPerRing, first, TakeFill, nullptr)
                              : ProjLLPreclipPolyline(handle, &delivered, pointsPerRing, first, TakeLine);
      if (!ok) state.SkipWithError("clipping failed");
    }
    benchmark::DoNotOptimize(delivered);
  }
  CountItems(state, pts.size());
  ProjDeleteProjection(handle);
}

}  // namespace

void RegisterPreclip() {
  const struct {
    const char* name;
    ProjType type;
    const char* parameters;
  } maps[] = {{"Orthographic hemisphere", PT_ORTHOGRAPHIC, "R=6371000;Lat0=40;Lon0=-100"},
              {"Mollweide world", PT_MOLLWEIDE, "R=6371000;Lon0=11"}};
  for (const auto& map : maps) {
    for (const bool polygon : {false, true}) {
      for (const int points : {50, 500, 5000}) {
        const std::string name =
            std::string(map.name) + (polygon ? "|polygon|" : "|polyline|") + std::to_string(points);
        benchmark::RegisterBenchmark(
            name.c_str(), [=](benchmark::State& state) { Measure(state, map.parameters, map.type, polygon, points); });
      }
    }
  }
}

}  // namespace orvex::bench
