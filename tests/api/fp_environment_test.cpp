// The host's floating-point environment: results do not depend on it, it comes back as it was, and its traps neither
// fire inside the library nor fail a call that plots its points. What is expected is what comes out in the usual
// environment.
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cstring>
#include <iterator>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/HostEnvironment.h"
#include "support/Projection.h"

namespace orvex::test {
namespace {

struct DeleteProjection {
  void operator()(void* handle) const { ProjDeleteProjection(handle); }
};
using ProjectionHandle = std::unique_ptr<void, DeleteProjection>;

/// What a call made of an array.
template <class Point>
struct Outcome {
  std::vector<Point> points;
  bool ok = false, threw = false;
  int result = -1;  // the flag in the handle

  bool operator==(const Outcome& other) const {
    return ok == other.ok && threw == other.threw && result == other.result && points.size() == other.points.size() &&
           std::memcmp(points.data(), other.points.data(), points.size() * sizeof(Point)) == 0;
  }
};

/// Calls under an environment, which must come back. Nothing but the library runs under it.
template <class Point, class Convert, class Result>
Outcome<Point> Call(const HostEnvironment& host, std::vector<Point> points, Convert convert, Result result) {
  Outcome<Point> outcome{std::move(points)};
  Point* const pts = outcome.points.data();
  const int count = static_cast<int>(outcome.points.size());
  const HostEnvironment after = Under(host, [&] {
    try {
      outcome.ok = convert(pts, count);
      outcome.result = result();
    } catch (const shr::Exception&) {
      outcome.threw = true;
    }
  });
  EXPECT_EQ(after, host) << host.name;
  return outcome;
}

using Direction = bool(ORVEX_CALL*)(void*, PROJPOINT*, int);

Outcome<PROJPOINT> Project(const HostEnvironment& host, Direction direction, void* handle,
                           std::vector<PROJPOINT> points) {
  return Call(
      host, std::move(points), [=](PROJPOINT* pts, int count) { return direction(handle, pts, count); },
      [=] { return ProjResult(handle); });
}

bool Plotted(const PROJPOINT& p) {
  return p.x != DBL_MAX && p.y != DBL_MAX;
}

/// Those of the points that are plotted, each by itself.
std::vector<PROJPOINT> Plottable(Direction direction, void* handle, const std::vector<PROJPOINT>& points) {
  std::vector<PROJPOINT> plottable;
  for (const PROJPOINT& p : points) {
    const auto outcome = Project(HostEnvironment::Now(), direction, handle, {p});
    if (outcome.ok && Plotted(outcome.points[0])) plottable.push_back(p);
  }
  return plottable;
}

template <class Record>
std::string Bytes(const Record& record) {
  return {reinterpret_cast<const char*>(&record), sizeof record};
}

constexpr double kInf = std::numeric_limits<double>::infinity(), kTiny = std::numeric_limits<double>::denorm_min();

TEST(HostEnvironment, ChangesNoProjection) {
  const HostEnvironment usual = HostEnvironment::Now();
  const std::vector<PROJPOINT> odd{
      {0, 0},    {90, 90},   {-90, -90},         {180, 1e-310}, {1e300, 12},    {-1e-320, kTiny},   {12, -1e300},
      {kInf, 1}, {1, -kInf}, {DBL_MAX, DBL_MAX}, {5, DBL_MAX},  {1e-160, 1e-9}, {359.9999999, 89.9}};
  for (const ProjectionForm& form : AllProjections()) {
    for (const ProjAccuracy accuracy : {PA_STATED, PA_EXACT}) {
      SCOPED_TRACE(std::string(form.form) + ", " + form.parameters + (accuracy == PA_EXACT ? ", exactly" : ""));
      PROJDATA given = form.MakeRecord(), record = given;
      const ProjectionHandle handle(ProjCreateProjection(&record));
      ASSERT_TRUE(ProjSetAccuracy(handle.get(), accuracy));
      std::vector<PROJPOINT> places(60);
      for (int i = 0; i < 60; ++i) places[static_cast<std::size_t>(i)] = form.Place(i / 59.0, (i * 7 % 60) / 59.0);
      const auto maps = Project(usual, ProjForward, handle.get(), places).points;

      for (const bool trapped : {false, true}) {
        // Points without an image may raise what the host traps, and then fail the call.
        auto forward = trapped ? Plottable(ProjForward, handle.get(), places) : places;
        auto inverse = trapped ? Plottable(ProjInverse, handle.get(), maps) : maps;
        if (!trapped) {
          forward.insert(forward.end(), odd.begin(), odd.end());
          inverse.insert(inverse.end(), odd.begin(), odd.end());
        }
        const auto expectedForward = Project(usual, ProjForward, handle.get(), forward);
        const auto expectedInverse = Project(usual, ProjInverse, handle.get(), inverse);
        for (const HostEnvironment& host : trapped ? TrappingHosts() : UntrappedHosts()) {
          PROJDATA checked = given;
          void* created = nullptr;
          bool inside = false, chosen = false;
          const HostEnvironment after = Under(host, [&] {
            created = ProjCreateProjection(&checked);
            chosen = ProjSetAccuracy(created, accuracy);
            inside = ProjLLInProjection(created, places.data());
          });
          const ProjectionHandle own(created);
          EXPECT_EQ(after, host) << host.name;
          EXPECT_TRUE(chosen) << host.name;
          EXPECT_EQ(Bytes(checked), Bytes(record)) << host.name;
          EXPECT_EQ(inside, ProjLLInProjection(handle.get(), places.data())) << host.name;
          EXPECT_TRUE(Project(host, ProjForward, created, forward) == expectedForward) << host.name << ", forward";
          EXPECT_TRUE(Project(host, ProjInverse, created, inverse) == expectedInverse) << host.name << ", inverse";
        }
      }
    }
  }
}

TEST(HostEnvironment, ChangesNoDatum) {
  const HostEnvironment usual = HostEnvironment::Now();
  std::vector<HostEnvironment> hosts = UntrappedHosts();
  for (const HostEnvironment& host : TrappingHosts()) hosts.push_back(host);
  std::vector<DATUMPOINT> places(12);
  for (int i = 0; i < 12; ++i) places[static_cast<std::size_t>(i)] = {-170 + 31.0 * i, -85 + (i * 5 % 12) * 15.5};
  for (int i = 1; i < DatNumDatums(); ++i) {
    const auto datum = static_cast<DatumType>(i);
    DatumMethod method = DM_NOXFORM;
    DatGetDatumMethod(datum, &method);
    if (method == DM_NADCON || method == DM_NTV2) continue;  // these need files
    for (const int way : {0, 1, 2, 3}) {
      const bool back = way % 2 != 0;
      if (back && !DatReversible(datum)) continue;
      DATUMXFORM record{};
      record.SrcDatum = back ? DT_WORLD_GEODETIC_SYSTEM_1984 : datum;
      record.DestDatum = back ? datum : DT_WORLD_GEODETIC_SYSTEM_1984;
      const auto convert = [&record, way](DATUMPOINT* pts, int count) {
        void* const handle = DatCreateDatum(&record);
        DatSetAccuracy(handle, way < 2 ? PA_STATED : PA_EXACT);
        const bool ok = DatConvertDatum(handle, pts, count);
        DatDeleteDatum(handle);
        return ok;
      };
      const auto noFlag = [] { return 0; };
      const auto expected = Call(usual, places, convert, noFlag);
      for (const HostEnvironment& host : hosts) {
        EXPECT_TRUE(Call(host, places, convert, noFlag) == expected) << "datum " << i << ", " << host.name;
      }
    }
  }
}

/// Fits, zones, texts and cutting: everything that comes out of them as one text of bytes.
std::string TheRest(void* projection, const std::vector<GEOREFPOINT>& from, const std::vector<GEOREFPOINT>& to,
                    const std::vector<PROJPOINT>& line) {
  std::string out;
  const auto add = [&out](const auto& value) { out.append(reinterpret_cast<const char*>(&value), sizeof value); };
  for (int method = RM_HELMERT; method <= RM_INVERSEDISTANCE; ++method) {
    GEOREF record{};
    record.Method = static_cast<TransformMethod>(method);
    RefAllocControls(&record, static_cast<int>(from.size()));
    std::copy(from.begin(), from.end(), record.pSrc);
    std::copy(to.begin(), to.end(), record.pDst);
    if (RefControlsToCoeff(&record)) {
      for (int i = 0; i < 6; ++i) add(record.Coeff[i]);
    }
    record.Method = static_cast<TransformMethod>(method);
    void* const system = RefCreateSystem(&record);
    std::vector<GEOREFPOINT> points = from;
    RefForward(system, points.data(), static_cast<int>(points.size()));
    for (const GEOREFPOINT& p : points) add(p);
    double total = 0;
    RefComputeError(system, &total, nullptr);
    add(total);
    RefDeleteSystem(system);
    RefFreeControls(&record);
  }
  for (const PROJPOINT& p : line) {
    add(ProjUTMLonToZoneNumber(p.x));
    char text[64] = "";
    DegreesToLatLon(text, p.x, 3 | LLF_MINUSSIGN, 'd', '\'', '"');
    out += text;
    double degrees = 0;
    LatLonToDegrees(text, &degrees, 'd');
    add(degrees);
  }
  const auto piece = [](void* user, int count, PROJPOINT* pts) {
    static_cast<std::string*>(user)->append(reinterpret_cast<const char*>(pts),
                                            static_cast<std::size_t>(count) * sizeof *pts);
    return true;
  };
  ProjLLPreclipPolyline(projection, &out, static_cast<int>(line.size()), line.data(), piece);
  return out;
}

TEST(HostEnvironment, ChangesNothingElse) {
  std::vector<GEOREFPOINT> from, to;
  for (int i = 0; i < 14; ++i) {
    const int row = i / 4, column = i % 4;
    const double x = 100.1 * column + 3.3 * i, y = 90.7 * row - 1.1 * i;
    from.push_back({x, y});
    to.push_back({500000 + 0.97 * x - 0.11 * y + 1e-4 * x * y, 4e6 + 0.1 * x + 1.03 * y - 2e-4 * x * x});
  }
  std::vector<PROJPOINT> line(40);
  for (int i = 0; i < 40; ++i) line[static_cast<std::size_t>(i)] = {-179.3 + 8.7 * i, -70.1 + (i * 11 % 40) * 3.7};
  PROJDATA record = Record(PT_ORTHOGRAPHIC, "R=6371000;Lat0=40;Lon0=-100");
  const ProjectionHandle handle(ProjCreateProjection(&record));
  const std::string expected = TheRest(handle.get(), from, to, line);
  EXPECT_GT(expected.size(), 3000u);
  for (const HostEnvironment& host : UntrappedHosts()) {
    std::string out;
    const HostEnvironment after = Under(host, [&] { out = TheRest(handle.get(), from, to, line); });
    EXPECT_EQ(after, host) << host.name;
    EXPECT_EQ(out, expected) << host.name;
  }
}

// A host's callback runs in the host's own environment.
TEST(HostEnvironment, IsBackInCallbacks) {
  PROJDATA record = Record(PT_MERCATOR, "Lon0=0");
  const ProjectionHandle handle(ProjCreateProjection(&record));
  const PROJPOINT line[] = {{0, 0}, {10, 10}};
  const auto look = [](void* user, int, PROJPOINT*) {
    *static_cast<HostEnvironment*>(user) = HostEnvironment::Now();
    return true;
  };
  for (const HostEnvironment& host : UntrappedHosts()) {
    HostEnvironment seen;
    Under(host, [&] { ProjLLPreclipPolyline(handle.get(), &seen, 2, line, look); });
    EXPECT_EQ(seen, host) << host.name;
  }
}

// What a host's traps would have seen inside a module fails the call; the environment is back after that and after
// exceptions. With everything masked the same call succeeds.
TEST(HostEnvironment, ComesBackAfterFailuresAndExceptions) {
  PROJDATA record = Record(PT_EQUICYLINDRICAL, "R=1e308;Scale=10"), nan = record;
  nan.Lat0 = std::numeric_limits<double>::quiet_NaN();
  const ProjectionHandle handle(ProjCreateProjection(&record));
  const std::vector<PROJPOINT> bad{{170, 0}, {1, 2}};  // overflows
  for (const HostEnvironment& host : UntrappedHosts()) {
    const auto outcome = Project(host, ProjForward, handle.get(), bad);
    EXPECT_TRUE(outcome.ok);
    EXPECT_FALSE(Plotted(outcome.points[0]));
    EXPECT_TRUE(Plotted(outcome.points[1]));
    EXPECT_TRUE(Call(
                    host, bad, [&](PROJPOINT*, int) { return ProjForward(handle.get(), nullptr, 1); }, [] { return 0; })
                    .threw);
  }
  for (const HostEnvironment& host : TrappingHosts()) {
    const auto outcome = Project(host, ProjForward, handle.get(), bad);
    EXPECT_EQ(outcome.ok, false) << host.name;
    EXPECT_EQ(outcome.result, 1) << host.name;
    EXPECT_TRUE(Project(host, ProjForward, handle.get(), {{50, 0}}).ok);  // overflows outside the module
    EXPECT_TRUE(Project(host, ProjForward, handle.get(), {{1, 2}, {721, 180}}).ok);
    EXPECT_TRUE(Call(
                    host, bad, [&](PROJPOINT*, int) { return ProjForward(handle.get(), nullptr, 1); }, [] { return 0; })
                    .threw);
    EXPECT_EQ(
        Call(
            host, bad, [](PROJPOINT*, int) { return true; }, [&] { return ProjCheckParams(&nan, nullptr, false); })
            .result,
        0)
        << host.name;  // compares what is no number
  }
}

// ---- traps and plottable points ----

/// Longitudes and latitudes at which formulas have their corners, seen from every angle of the record, and what lies
/// just beside them; a grid over the world in between.
std::vector<PROJPOINT> Corners(const ProjectionForm& form, const PROJDATA& record) {
  std::set<double> lons, lats;
  const double lon0 = record.Lon0, lon1 = record.Lon1, lon2 = record.Lon2;
  for (const double base : {0.0, lon0, lon1, lon2}) {
    for (const double d : {0.0, 1e-12, 1e-7, 1e-3, 45.0, 89.9999999, 90.0, 179.9999999, 180.0, 270.0, 360.0}) {
      lons.insert({base + d, base - d});
    }
  }
  const double lat0 = record.Lat0, lat1 = record.Lat1, lat2 = record.Lat2;
  for (const double base : {0.0, 45.0, 90.0, lat0, lat1, lat2}) {
    for (const double d : {0.0, 1e-12, 1e-7, 1e-3}) lats.insert({base + d, base - d, d - base, -base - d});
  }
  for (int i = 0; i <= 12; ++i) {
    const PROJPOINT p = form.Place(i / 12.0, i / 12.0);
    lons.insert({-180.0 + 30 * i, p.x});
    lats.insert({-90.0 + 15 * i, p.y});
  }
  std::vector<PROJPOINT> points;
  for (const double lon : lons) {
    for (const double lat : lats) points.push_back({lon, lat});
  }
  return points;
}

/// The images of the places, and a grid that reaches beyond them, the axes included.
std::vector<PROJPOINT> MapCorners(void* handle, const std::vector<PROJPOINT>& places) {
  std::vector<PROJPOINT> points;
  double width = 0, height = 0;
  for (const PROJPOINT& place : places) {
    const PROJPOINT p = Project(HostEnvironment::Now(), ProjForward, handle, {place}).points[0];
    if (!Plotted(p)) continue;
    points.push_back(p);
    if (std::fabs(p.x) < 5e7) width = std::max(width, std::fabs(p.x));
    if (std::fabs(p.y) < 5e7) height = std::max(height, std::fabs(p.y));
  }
  for (int i = -24; i <= 24; ++i) {
    for (int j = -24; j <= 24; ++j) points.push_back({width * i / 20, height * j / 20});
  }
  for (const double tiny : {1e-300, 1e-12, 1e-3}) {
    for (const double x : {-tiny, 0.0, tiny}) {
      for (const double y : {-tiny, 0.0, tiny}) points.push_back({x, y});
    }
  }
  return points;
}

/// Every point by itself, and blocks of them beside markers in one or both coordinates.
void ExpectNoFault(const HostEnvironment& host, Direction direction, void* handle,
                   const std::vector<PROJPOINT>& plottable) {
  const HostEnvironment usual = HostEnvironment::Now();
  const auto expectSame = [&](const std::vector<PROJPOINT>& points) {
    if (Project(host, direction, handle, points) == Project(usual, direction, handle, points)) return;
    ADD_FAILURE() << points.size() << " points from " << points[0].x << ", " << points[0].y << ", " << host.name;
  };
  for (const PROJPOINT& p : plottable) expectSame({p});
  std::minstd_rand random(1);
  for (std::size_t begin = 0, size = 1; begin < plottable.size(); begin += size, size = 1 + random() % 300) {
    std::vector<PROJPOINT> block;
    for (std::size_t i = begin; i < std::min(begin + size, plottable.size()); ++i) {
      const PROJPOINT& p = plottable[i];
      switch (random() % 8) {
        case 0:
          block.push_back({DBL_MAX, DBL_MAX});
          break;
        case 1:
          block.push_back({DBL_MAX, p.y});
          break;
        case 2:
          block.push_back({p.x, DBL_MAX});
          break;
        default:
          break;
      }
      block.push_back(p);
    }
    expectSame(block);
  }
}

TEST(Traps, NeverFailPlottablePoints) {
  const std::vector<HostEnvironment> hosts = TrappingHosts();
  if (hosts.empty()) GTEST_SKIP() << "this processor has no traps";
  std::size_t tried = 0;
  for (const ProjectionForm& form : AllProjections()) {
    SCOPED_TRACE(std::string(form.form) + ", " + form.parameters);
    PROJDATA record = form.MakeRecord();
    const ProjectionHandle handle(ProjCreateProjection(&record));
    const auto places = Corners(form, record);
    for (const Direction direction : {Direction{ProjForward}, Direction{ProjInverse}}) {
      const auto plottable =
          Plottable(direction, handle.get(), direction == ProjForward ? places : MapCorners(handle.get(), places));
      EXPECT_GT(plottable.size(), 100u);
      tried += plottable.size();
      for (const HostEnvironment& host : hosts) ExpectNoFault(host, direction, handle.get(), plottable);
    }
  }
  RecordProperty("points", static_cast<int>(tried));
}

/// Refused points whose formula has a place without a value: the arithmetic of the lanes beside them must not go there.
TEST(Traps, AreNotFailedByRefusedNeighbours) {
  const std::vector<HostEnvironment> hosts = TrappingHosts();
  if (hosts.empty()) GTEST_SKIP() << "this processor has no traps";
  const struct {
    ProjType type;
    const char* parameters;
    Direction direction;
    PROJPOINT refused, plottable;
  } rows[] = {
      {PT_LAMBERT, "R=6371000;Lat0=-45;Lat1=-30;Lat2=-60", ProjInverse, {0, -6079845.0534157017}, {1e5, 2e5}},
      {PT_POLYCONIC,
       "a=6371000;f=0.003352;Lat0=20",
       ProjInverse,
       {-47240124.069208778, -76499440.365141854},
       {1e5, 2e5}},
      {PT_VANDERGRINTEN, "R=6371000", ProjInverse, {0.1, 5e7}, {1e6, 1e6}},
      {PT_VANDERGRINTEN, "R=6371000", ProjInverse, {1e100, 1e100}, {1e6, 1e6}},
      {PT_MERCATOR, "a=6371000;f=0.999999999", ProjForward, {10, -90}, {10, 20}},
      {PT_STEREOGRAPHIC, "a=6371000;f=0.999999999;Lat0=-90", ProjForward, {10, -90}, {10, -20}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.type << ", " << row.parameters);
    PROJDATA record = Record(row.type, row.parameters);
    const ProjectionHandle handle(ProjCreateProjection(&record));
    const std::vector<PROJPOINT> points{row.plottable, row.refused, row.plottable};
    const auto expected = Project(HostEnvironment::Now(), row.direction, handle.get(), points);
    EXPECT_FALSE(Plotted(expected.points[1]));
    EXPECT_TRUE(Plotted(expected.points[2]));
    for (const HostEnvironment& host : hosts) {
      EXPECT_TRUE(Project(host, row.direction, handle.get(), points) == expected) << host.name;
    }
  }
}

}  // namespace
}  // namespace orvex::test
