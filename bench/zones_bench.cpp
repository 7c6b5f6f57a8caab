// State plane zones expanded, and angles to and from text.
#include <array>

#include "Common.h"

namespace orvex::bench {

namespace {

void ExpandZones(benchmark::State& state) {
  std::size_t zones = 0;
  for (auto _ : state) {
    zones = 0;
    for (int zone = 0; zone < SZ_NONE; ++zone, ++zones) {
      PROJDATA rec{};
      rec.Type = PT_STATEPLANE83;
      rec.Zone = zone;
      ProjGetStateZoneParams(&rec);
      benchmark::DoNotOptimize(rec);
    }
  }
  CountItems(state, zones);
}

constexpr std::size_t kTexts = 1000;
constexpr int kFormat = 2 | LLF_MINUSSIGN | LLF_ZEROPAD;  // -85d30'15.25"

void WriteAngles(benchmark::State& state) {
  const auto points = PointsIn<PROJPOINT>(kTexts, -180, 180, -90, 90);
  char text[260];
  for (auto _ : state) {
    for (const PROJPOINT& p : points) {
      DegreesToLatLon(text, p.x, kFormat, 'd', '\'', '"');
      benchmark::DoNotOptimize(text);
    }
  }
  CountItems(state, kTexts);
}

void ReadAngles(benchmark::State& state) {
  const auto points = PointsIn<PROJPOINT>(kTexts, -180, 180, -90, 90);
  std::vector<std::array<char, 260>> texts(kTexts);
  for (std::size_t i = 0; i < kTexts; ++i) DegreesToLatLon(texts[i].data(), points[i].x, kFormat, 'd', '\'', '"');
  for (auto _ : state) {
    for (const auto& text : texts) {
      double degrees = 0;
      LatLonToDegrees(text.data(), &degrees, 0);
      benchmark::DoNotOptimize(degrees);
    }
  }
  CountItems(state, kTexts);
}

}  // namespace

void RegisterZones() {
  benchmark::RegisterBenchmark("State plane zone expanded|each", ExpandZones);
  benchmark::RegisterBenchmark("Degrees, minutes and seconds written|each", WriteAngles);
  benchmark::RegisterBenchmark("Degrees, minutes and seconds read|each", ReadAngles);
}

}  // namespace orvex::bench
