// Every registered system that the tool represents, over sample points of its area of use, against PROJ through its
// public interface. Datums stay apart: both sides convert between the system and the geographic system that it is based
// on.
#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <proj.h>

#include "systems/SystemConverter.h"

namespace orvex::tool {

namespace {

constexpr double kTolerance = 1e-3;  // metres
constexpr int kSteps = 4;            // intervals of the grid of sample points along a side of the area

/// Methods for which the tool's tests have published values instead: PROJ lacks the polar stereographic projection of
/// variant C, and takes no notice of the angle by which the Belgian Lambert of 1972 differs.
const std::set<int> kOtherwiseTested = {9803, 9830};

struct Peer {
  Peer() : context(proj_context_create(), proj_context_destroy) { proj_log_level(context.get(), PJ_LOG_NONE); }

  /// From a base to a system, x before y; null where PROJ knows no way.
  std::unique_ptr<PJ, PJ* (*)(PJ*)> Open(const CoordinateSystem& system) const {
    const std::string base = "EPSG:" + std::to_string(system.base);
    std::unique_ptr<PJ, PJ* (*)(PJ*)> raw(
        proj_create_crs_to_crs(context.get(), base.c_str(), system.Label().c_str(), nullptr), proj_destroy);
    if (!raw) return raw;
    return {proj_normalize_for_visualization(context.get(), raw.get()), proj_destroy};
  }

  std::unique_ptr<PJ_CONTEXT, PJ_CONTEXT* (*)(PJ_CONTEXT*)> context;
};

/// Points over an area in degrees from Greenwich, the poles and the outermost border left out.
std::vector<PROJPOINT> Samples(const Area& area) {
  const double width = area.west <= area.east ? area.east - area.west : area.east - area.west + 360;
  std::vector<PROJPOINT> points;
  for (int i = 0; i < kSteps; ++i) {
    for (int j = 0; j < kSteps; ++j) {
      const double x = (i + 0.37) / kSteps, y = (j + 0.41) / kSteps;
      points.push_back({std::remainder(area.west + x * width, 360), area.south + y * (area.north - area.south)});
    }
  }
  return points;
}

/// The same points as coordinates of the base: its unit, its prime meridian.
std::vector<PROJPOINT> OnBase(const std::vector<PROJPOINT>& points, const CoordinateSystem& base) {
  std::vector<PROJPOINT> result = points;
  SystemConverter(base).FromGeographic(result);
  return result;
}

const CoordinateSystem* ByCode(int code) {
  for (const CoordinateSystem& system : CoordinateSystems()) {
    if (system.code == code) return &system;
  }
  return nullptr;
}

double Distance(const PROJPOINT& a, const PROJPOINT& b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

struct Deviation {
  double forward = 0, inverse = 0;  // metres
};

Deviation Compare(const CoordinateSystem& system, const CoordinateSystem& base, PJ* peer) {
  const std::vector<PROJPOINT> samples = Samples(system.AreaOfUse()), onBase = OnBase(samples, base);
  const double unit = system.UnitOfAxes().factor;
  SystemConverter converter(system);
  std::vector<PROJPOINT> ours = samples;
  converter.FromGeographic(ours);
  Deviation deviation;
  std::vector<PROJPOINT> theirs;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const PJ_COORD there = proj_trans(peer, PJ_FWD, proj_coord(onBase[i].x, onBase[i].y, 0, 0));
    theirs.push_back({there.xy.x, there.xy.y});
    deviation.forward = std::fmax(deviation.forward, Distance(ours[i], theirs.back()) * unit);
  }
  std::vector<PROJPOINT> back = theirs;
  converter.ToGeographic(back);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double radius = system.Datum().radius * 3.141592653589793 / 180;
    const double eastward = std::remainder(back[i].x - samples[i].x, 360) * std::cos(samples[i].y / 57.29577951308232);
    deviation.inverse = std::fmax(deviation.inverse, std::hypot(eastward, back[i].y - samples[i].y) * radius);
  }
  return deviation;
}

}  // namespace

TEST(peer, everyRepresentedSystemAgrees) {
  const Peer peer;
  std::map<std::string, Deviation> largest;  // by method
  int compared = 0, refused = 0, others = 0;
  for (const CoordinateSystem& system : CoordinateSystems()) {
    if (!system.IsProjected()) continue;
    if (!WhyNotRepresented(system).empty()) {
      ++refused;
      continue;
    }
    if (kOtherwiseTested.contains(system.Projection().method)) {
      ++others;
      continue;
    }
    const auto operation = peer.Open(system);
    ASSERT_TRUE(operation) << system.Label();
    ++compared;
    const CoordinateSystem* const base = ByCode(system.base);
    ASSERT_NE(base, nullptr) << system.Label();
    const Deviation deviation = Compare(system, *base, operation.get());
    EXPECT_LE(deviation.forward, kTolerance) << system.Label() << " " << system.name;
    EXPECT_LE(deviation.inverse, kTolerance) << system.Label() << " " << system.name;
    Deviation& all = largest[std::string(MethodName(system.Projection().method))];
    all = {std::fmax(all.forward, deviation.forward), std::fmax(all.inverse, deviation.inverse)};
  }
  for (const auto& [method, deviation] : largest) {
    std::printf("%-45s forward %.2e m, inverse %.2e m\n", method.c_str(), deviation.forward, deviation.inverse);
  }
  std::printf("%d systems compared, %d refused, %d tested otherwise\n", compared, refused, others);
  EXPECT_GT(compared, 5000);
}

}  // namespace orvex::tool
