// Every projection in every form, both ways, over random points of the area it is used for.
#include <algorithm>
#include <cfloat>

#include "Common.h"
#include "support/Forms.h"

namespace orvex::bench {

namespace {

/// Points that can be plotted, and their images. Very long arrays repeat theirs.
struct Sample {
  std::vector<PROJPOINT> geographic, projected;
};

Sample MakeSample(const test::ProjectionForm& form, void* handle, std::size_t total) {
  const std::size_t count = std::min<std::size_t>(total, 100000);
  Sample sample;
  while (sample.geographic.size() < count) {
    std::vector<PROJPOINT> places = PointsIn<PROJPOINT>(count, form.west, form.east, form.south, form.north);
    std::erase_if(places, [=](const PROJPOINT& p) { return !ProjLLInProjection(handle, &p); });
    std::vector<PROJPOINT> images = places;
    if (!images.empty()) ProjForward(handle, images.data(), static_cast<int>(images.size()));
    for (std::size_t i = 0; i < places.size() && sample.geographic.size() < count; ++i) {
      if (images[i].x == DBL_MAX) continue;
      sample.geographic.push_back(places[i]);
      sample.projected.push_back(images[i]);
    }
  }
  for (std::size_t i = 0; sample.geographic.size() < total; ++i) {
    sample.geographic.push_back(PROJPOINT{sample.geographic[i]});
    sample.projected.push_back(PROJPOINT{sample.projected[i]});
  }
  return sample;
}

void Measure(benchmark::State& state, const test::ProjectionForm& form, bool forward, std::size_t atOnce) {
  PROJDATA rec = form.MakeRecord();
  void* const handle = ProjCreateProjection(&rec);
  const Sample sample = MakeSample(form, handle, TotalPoints(atOnce));
  const auto convert = forward ? ProjForward : ProjInverse;
  MeasureInPlace(state, forward ? sample.geographic : sample.projected, atOnce,
                 [=](PROJPOINT* pts, int n) { convert(handle, pts, n); });
  ProjDeleteProjection(handle);
}

}  // namespace

void RegisterProjections() {
  for (const test::ProjectionForm& form : test::AllProjections()) {
    char projection[64];
    ProjGetProjectionInfo(form.type, projection);
    for (const bool forward : {true, false}) {
      for (const std::size_t size : Sizes()) {
        const std::string name = std::string(projection) + ", " + form.form + (forward ? "|forward|" : "|inverse|");
        benchmark::RegisterBenchmark((name + std::to_string(size)).c_str(),
                                     [=](benchmark::State& state) { Measure(state, form, forward, size); });
      }
    }
  }
}

}  // namespace orvex::bench
