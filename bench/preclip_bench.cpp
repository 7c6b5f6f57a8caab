// Preclipping and projecting the land of the world, for a map of a hemisphere and one of the world, by number of
// points.
#include <cmath>
#include <fstream>
#include <stdexcept>
#include <string>

#include "Common.h"
#include "support/Forms.h"

namespace orvex::bench {

namespace {

struct Land {
  std::vector<int> counts;
  std::vector<PROJPOINT> points;
};

/// The rings of examples/world/land.txt with every edge divided into `density` pieces; edges take the short way round.
Land LoadLand(int density) {
  std::ifstream file(ORVEX_LAND_FILE);
  Land land;
  std::string word;
  PROJPOINT last{};
  while (file >> word) {
    if (word[0] == '#') {
      std::getline(file, word);
    } else if (word == "ring") {
      int count = 0;
      file >> count;
      land.counts.push_back(0);
    } else {
      PROJPOINT p{std::stod(word), 0};
      file >> p.y;
      const bool first = land.counts.back() == 0;
      if (!first) p.x = last.x + std::remainder(p.x - last.x, 360.0);
      for (int i = first ? density : 1; i <= density; ++i) {
        const double t = static_cast<double>(i) / density;
        land.points.push_back({last.x + (p.x - last.x) * t, last.y + (p.y - last.y) * t});
        ++land.counts.back();
      }
      last = p;
    }
  }
  if (land.points.empty()) throw std::runtime_error("no land in " ORVEX_LAND_FILE);
  return land;
}

bool ProjectFill(void* user, int parts, const int* counts, PROJPOINT* pts) {
  int total = 0;
  for (int i = 0; i < parts; ++i) total += counts[i];
  return ProjForward(user, pts, total);
}

bool ProjectLine(void* user, int count, PROJPOINT* pts) {
  return ProjForward(user, pts, count);
}

void Measure(benchmark::State& state, const char* parameters, ProjType type, bool polygon, int density) {
  PROJDATA rec = test::Record(type, parameters);
  void* const handle = ProjCreateProjection(&rec);
  const Land land = LoadLand(density);
  for (auto _ : state) {
    const PROJPOINT* ring = land.points.data();
    bool ok = true;
    if (polygon) {
      ok = ProjLLPreclipPolygon(handle, handle, static_cast<int>(land.counts.size()), land.counts.data(), ring,
                                ProjectFill, nullptr);
    }
    for (std::size_t i = 0; i < land.counts.size() && !polygon; ring += land.counts[i++]) {
      ok = ok && ProjLLPreclipPolyline(handle, handle, land.counts[i], ring, ProjectLine);
    }
    if (!ok) state.SkipWithError("clipping failed");
  }
  CountItems(state, land.points.size());
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
      for (const int density : {1, 10, 100}) {
        const std::string name =
            std::string(map.name) + (polygon ? "|polygon|" : "|polyline|") + "x" + std::to_string(density);
        benchmark::RegisterBenchmark(
            name.c_str(), [=](benchmark::State& state) { Measure(state, map.parameters, map.type, polygon, density); });
      }
    }
  }
}

}  // namespace orvex::bench
