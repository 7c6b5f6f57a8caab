// Preclipping: domain tests, cut ends, pieces, rings and areas, the offset pass, hostile input and callbacks.
#include <algorithm>
#include <cfenv>
#include <limits>
#include <random>
#include <stdexcept>

#include "support/Projection.h"

namespace orvex::test {
namespace {

using Line = std::vector<PROJPOINT>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN(), kInfinity = std::numeric_limits<double>::infinity();

bool Same(const PROJPOINT& a, const PROJPOINT& b) {
  return a.x == b.x && a.y == b.y;
}

bool SameLines(const std::vector<Line>& a, const std::vector<Line>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Line& l, const Line& m) {
    return std::equal(l.begin(), l.end(), m.begin(), m.end(), Same);
  });
}

/// What a host received. The arrays it got are overwritten, as by a host that converts them in place.
struct Received {
  std::vector<Line> lines, rings;
  std::string calls;               // f: fill, l: line
  std::size_t stopAt = 0;          // number of the call that answers false; 0: none
  std::size_t throwAt = 0;         // number of the call that throws
  int exceptions = FE_ALL_EXCEPT;  // floating-point status flags that every call saw

  static void Take(int count, PROJPOINT* pts, std::vector<Line>& to) {
    to.emplace_back(pts, pts + count);
    std::fill_n(pts, count, PROJPOINT{-1e9, 1e9});
  }
  bool Answer(char kind) {
    exceptions &= std::fetestexcept(FE_ALL_EXCEPT);
    calls += kind;
    if (calls.size() == throwAt) throw std::runtime_error("host");
    return calls.size() != stopAt;
  }
  static bool ORVEX_CALL OnLine(void* user, int count, PROJPOINT* pts) {
    auto* const self = static_cast<Received*>(user);
    Take(count, pts, self->lines);
    return self->Answer('l');
  }
  static bool ORVEX_CALL OnFill(void* user, int parts, const int* counts, PROJPOINT* pts) {
    auto* const self = static_cast<Received*>(user);
    for (int i = 0; i < parts; pts += counts[i++]) Take(counts[i], pts, self->rings);
    return self->Answer('f');
  }
};

struct Shape {
  Line pts;
  std::vector<int> counts;
  void Add(const Line& part) {
    pts.insert(pts.end(), part.begin(), part.end());
    counts.push_back(static_cast<int>(part.size()));
  }
};

bool Clip(const CProjector& projector, const Line& line, Received& received) {
  return projector.LLPreclipPolyline(&received, static_cast<int>(line.size()), line.data(), Received::OnLine);
}

bool Clip(const CProjector& projector, const Shape& shape, Received& received) {
  return projector.LLPreclipPolygon(&received, static_cast<int>(shape.counts.size()), shape.counts.data(),
                                    shape.pts.data(), Received::OnFill, Received::OnLine);
}

Line Box(double west, double south, double east, double north) {
  return {{west, south}, {east, south}, {east, north}, {west, north}, {west, south}};
}

CProjector Make(ProjType type, const char* parameters) {
  PROJDATA rec = Record(type, parameters);
  return CProjector(&rec);
}

/// Projections with every kind of domain.
struct Map {
  ProjType type;
  const char* parameters;
  PROJPOINT centre;
};
constexpr Map kMaps[]{
    {PT_ORTHOGRAPHIC, "Lat0=40;Lon0=-100", {-100, 40}},             // hemisphere
    {PT_STEREOGRAPHIC, "Lat0=-60;Lon0=20", {20, -60}},              // hemisphere, ellipsoid
    {PT_CASSINI, "Lat0=20;Lon0=35", {35, 20}},                      // hemisphere
    {PT_GNOMONIC, "Lat1=30;Lon0=15", {15, 30}},                     // 60 degrees of arc
    {PT_AZIMUTHALEQUI, "Lat1=0;Lon0=20", {20, 0}},                  // 170 degrees of arc
    {PT_HOTINE, "Lat0=40;Lon0=10;Alpha=30;bUseAlpha=1", {10, 40}},  // beside an oblique line
    {PT_OBLIQUEMERCATOR, "Lat1=20;Lon1=-30;Lat2=50;Lon2=40", {5, 40}},
    {PT_TRANSVERSEMERCATOR, "Lon0=9", {9, 20}},  // 45 degrees of longitude
    {PT_MERCATOR, "Lon0=30", {30, 0}},           // all around, without the poles
    {PT_SINUSOIDAL, "Lon0=-60", {-60, 5}},       // all around
    {PT_ROBINSON, "", {0, 0}},                   // about 0, whatever Lon0 is
    {PT_STATEPLANE83, "Zone=1", {-86, 32}},      // Alabama: a transverse Mercator
};

/// The line of the exception that a call throws; 0 when it throws none.
template <class Call>
int ThrownLine(int messageId, const char* source, Call call) {
  try {
    call();
  } catch (const shr::Exception& e) {
    EXPECT_TRUE(e.MessageId() == messageId && e.Source() == source) << e.MessageId() << e.Source();
    return e.Line();
  }
  return 0;
}

TEST(DomainTests, FollowTheMapAndRefuseTheRest) {
  PROJDATA ortho = Record(PT_ORTHOGRAPHIC, ""), world = Record(PT_EQUICYLINDRICAL, "");
  PROJDATA alabamaWest = Record(PT_STATEPLANE83, "Zone=1;Lon0=100");  // its own central meridian is -87.5
  const auto inside = [](PROJDATA& rec, double x, double y) {
    const PROJPOINT point{x, y};
    return ProjLLInProjection(&rec, &point);
  };
  EXPECT_TRUE(inside(ortho, -80, 10) && inside(ortho, 350, 10) && !inside(ortho, 100, 10));
  EXPECT_TRUE(inside(world, 360, 90) && inside(world, -360, -90));  // the bounds are included
  EXPECT_TRUE(inside(alabamaWest, -42.6, 0) && !inside(alabamaWest, -42.4, 0) && !inside(alabamaWest, 100, 0));
  for (const PROJPOINT& p : {PROJPOINT{360.5, 0}, {-361, 0}, {0, 90.5}, {0, -91}, {kNaN, 0}, {0, kNaN}}) {
    EXPECT_FALSE(inside(world, p.x, p.y)) << p.x << ", " << p.y;
  }
  const PROJPOINT pts[]{{100, 0}, {170, 0}, {10, 0}};
  EXPECT_FALSE(ProjLLInProjection(nullptr, pts) || ProjLLInProjection(&ortho, nullptr));
  EXPECT_TRUE(ProjLLInProjection(&ortho, 0, pts) && ProjLLInProjection(&ortho, 2, pts));
  EXPECT_FALSE(ProjLLInProjection(&ortho, 3, pts));  // one point inside: not wholly outside
  EXPECT_TRUE(ProjLLInProjection(nullptr, 3, pts) && ProjLLInProjection(&ortho, 3, nullptr));
  double dx = 7, dy = 7;
  const CProjector sinus = Make(PT_SINUSOIDAL, "Lon0=-10");
  EXPECT_TRUE(sinus.LLOffsetSplitObject(pts, 2, &dx, &dy) && dx == -360 && dy == 0);
  EXPECT_FALSE(sinus.LLOffsetSplitObject(pts, 1, &dx, &dy) || sinus.LLOffsetSplitObject(pts, 0, &dx, &dy) ||
               sinus.LLOffsetSplitObject(nullptr, 2, &dx, &dy) || sinus.LLOffsetSplitObject(pts, 2, nullptr, &dy) ||
               sinus.LLOffsetSplitObject(pts, 2, &dx, nullptr));
}

TEST(DomainTests, ReportRecordsWithoutOperations) {
  struct Row {
    ProjType type;
    int inLine, offsetLine;
  };
  const PROJPOINT point{0, 0}, far{400, 0};
  double dx = 0, dy = 0;
  for (const Row& row : {Row{PT_LATLONG, 1392, 1507},
                         {PT_UNDEFINED, 1392, 1507},
                         {PT_STATEPLANE27, 1383, 1498},
                         {PT_STATEPLANE83, 1366, 1481}}) {
    SCOPED_TRACE(row.type);
    PROJDATA rec{};
    rec.Type = row.type;
    rec.Zone = SZ_NONE;  // no zone: the set-up fails
    EXPECT_EQ(ThrownLine(20200, "Orvex", [&] { ProjLLInProjection(&rec, &point); }), row.inLine);
    EXPECT_EQ(ThrownLine(20200, "Orvex", [&] { ProjLLOffsetSplitObject(&rec, &point, 1, &dx, &dy); }), row.offsetLine);
    EXPECT_FALSE(ProjLLInProjection(&rec, &far));  // refused before
  }
}

// From the centre of each map in 16 directions to the far side: the last point inside is within 0.001 degree of the
// edge along the line, and can be projected. The way back is cut at the same point.
TEST(PreclipPolyline, CutsWithinAThousandthOfADegree) {
  for (const Map& map : kMaps) {
    SCOPED_TRACE(map.type);
    CProjector projector = Make(map.type, map.parameters);
    int cuts = 0;
    for (int k = 0; k < 16; ++k) {
      const double angle = (k + 0.1) * 22.5 * kRadiansPerDegree;
      const double height = std::sin(angle) < 0 ? -89 - map.centre.y : 89 - map.centre.y;
      const double length = std::min(195 / std::abs(std::cos(angle)), height / std::sin(angle));
      const PROJPOINT step{length / 40 * std::cos(angle), length / 40 * std::sin(angle)};
      Line way;
      for (int i = 0; i <= 40; ++i) way.push_back({map.centre.x + i * step.x, map.centre.y + i * step.y});
      Received there, back;
      ASSERT_TRUE(Clip(projector, way, there) && Clip(projector, Line(way.rbegin(), way.rend()), back));
      ASSERT_FALSE(there.lines.empty());
      ASSERT_TRUE(Same(there.lines[0].front(), map.centre));
      const PROJPOINT cut = there.lines[0].back();
      EXPECT_TRUE(projector.LLInProjection(&cut));
      EXPECT_FALSE(Unplottable(Forward(projector, cut.x, cut.y))) << cut.x << ", " << cut.y;
      if (Same(cut, way.back())) continue;
      const double part = 0.001 / std::max(std::abs(step.x), std::abs(step.y));
      const PROJPOINT beyond{cut.x + part * step.x, cut.y + part * step.y};
      EXPECT_FALSE(projector.LLInProjection(&beyond)) << cut.x << ", " << cut.y;
      EXPECT_TRUE(std::any_of(back.lines.begin(), back.lines.end(), [&](const Line& l) { return Same(l[0], cut); }));
      ++cuts;
    }
    EXPECT_GE(cuts, 2);
  }
}

TEST(PreclipPolyline, DeliversTheVisibleRuns) {
  struct Row {
    const char* why;
    Line line;
    std::vector<std::size_t> sizes;
  };
  for (const Row& row : {Row{"wholly outside", {{100, 0}, {120, 5}, {170, 0}}, {}},
                         {"outside, and not even a number", {{100, 0}, {kNaN, 5}, {kInfinity, 0}}, {}},
                         {"from a marked point and to one", {{DBL_MAX, DBL_MAX}, {10, 0}, {DBL_MAX, DBL_MAX}}, {3}},
                         {"both ends outside, the middle inside: dropped", {{-100, 0}, {100, 0}}, {}},
                         {"a closed line begins where it begins", {{80, 0}, {100, 0}, {80, 1}, {80, 0}}, {2, 3}},
                         {"one point inside", {{100, 0}, {80, 0}, {100, 0}}, {3}}}) {
    SCOPED_TRACE(row.why);
    Received received;
    EXPECT_TRUE(Clip(Make(PT_ORTHOGRAPHIC, ""), row.line, received));
    ASSERT_EQ(received.lines.size(), row.sizes.size());
    for (std::size_t i = 0; i < row.sizes.size(); ++i) EXPECT_EQ(received.lines[i].size(), row.sizes[i]);
  }
  Received whole, both;
  const Line inside{{0, 0}, {10, 5}, {10, 5}, {20, 7}};
  EXPECT_TRUE(Clip(Make(PT_ORTHOGRAPHIC, ""), inside, whole) && SameLines(whole.lines, {inside}));

  EXPECT_TRUE(Clip(Make(PT_SINUSOIDAL, ""), Line{{170, 10}, {190, 10}}, both));
  ASSERT_EQ(both.lines.size(), 2U);
  const PROJPOINT east = both.lines[0].back(), west = both.lines[1].front();
  EXPECT_TRUE(both.lines[0].front().x == 170 && east.x < 180 && east.x >= 179.999);
  EXPECT_TRUE(both.lines[1].back().x == -170 && west.x > -180 && west.x <= -179.999);
}

/// Area of a ring on the sphere of radius 1, by the equal-area cylinder: x = longitude, y = sine of latitude. Edges are
/// straight in longitude and latitude, so each gives the integral of sin(lat) along it.
double Area(const Line& ring) {
  double area = 0;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const double a = ring[i - 1].y * kRadiansPerDegree, b = ring[i].y * kRadiansPerDegree;
    const double mean = std::abs(b - a) < 1e-7 ? std::sin((a + b) / 2) : (std::cos(a) - std::cos(b)) / (b - a);
    area -= (ring[i].x - ring[i - 1].x) * kRadiansPerDegree * mean;
  }
  return area;
}

double TotalArea(const Received& received) {
  double area = 0;
  for (const Line& ring : received.rings) area += Area(ring);
  return area;
}

// A box in strips of one degree of latitude. On the hemisphere about (lat0, 0) the edge at a latitude has the longitude
// acos(-tan lat0 tan lat); the integral over the latitudes is taken by Simpson's rule, 200 intervals a degree.
TEST(PreclipPolygon, KeepsTheVisibleAreaOfAHemisphere) {
  constexpr double kWest = 20;
  constexpr int kSouth = -30, kNorth = 30;
  for (const int lat0 : {0, 40, -35}) {
    const auto width = [&](double lat) {
      const double cosine = -std::tan(lat0 * kRadiansPerDegree) * std::tan(lat * kRadiansPerDegree);
      return (std::acos(cosine) - kWest * kRadiansPerDegree) * std::cos(lat * kRadiansPerDegree);
    };
    double expected = 0;
    constexpr int kSteps = (kNorth - kSouth) * 200;
    for (int i = 0; i <= kSteps; ++i) {
      const double lat = kSouth + i / 200.0;
      expected += (i == 0 || i == kSteps ? 1 : i % 2 == 1 ? 4 : 2) * width(lat);
    }
    expected *= kRadiansPerDegree / 200 / 3;

    Shape strips;
    for (int lat = kSouth; lat < kNorth; ++lat) strips.Add(Box(kWest, lat, 170, lat + 1));
    Received received;
    ASSERT_TRUE(Clip(Make(PT_ORTHOGRAPHIC, ("Lat0=" + std::to_string(lat0)).c_str()), strips, received));
    // Points on the edge lie up to 0.001 degree inside in either coordinate, which with the edge's slope (at most 1.28
    // here) is 0.0023 degree of longitude. The edge's curvature (at most 2.4 per radian) over chords of one and two
    // sevenths of a degree makes less than 3e-6 in all, of either sign.
    const double cut = 0.0023 * kRadiansPerDegree * (kNorth - kSouth) * kRadiansPerDegree;
    EXPECT_LE(TotalArea(received), expected + 3e-6) << lat0;
    EXPECT_GE(TotalArea(received), expected - cut - 3e-6) << lat0;
  }
}

// Both passes together have the whole box, but for the strip of 0.001 degree on either side of the antimeridian.
TEST(PreclipPolygon, KeepsTheAreaOverBothPasses) {
  Shape box;
  box.Add(Box(100, -20, 250, 50));
  Received received;
  ASSERT_TRUE(Clip(Make(PT_LAMBERT, "Lat1=20;Lat2=50;Lon0=0"), box, received));
  const double height = std::sin(50 * kRadiansPerDegree) + std::sin(20 * kRadiansPerDegree);
  const double expected = 150 * kRadiansPerDegree * height, lost = expected - TotalArea(received);
  EXPECT_GE(lost, 0);
  EXPECT_LE(lost, 0.002 * kRadiansPerDegree * height);
}

TEST(PreclipPolygon, DeliversClosedRingsAndTheOutlineApart) {
  const CProjector ortho = Make(PT_ORTHOGRAPHIC, "");
  struct Row {
    const char* why;
    std::vector<Line> parts;
    std::vector<std::size_t> rings, lines;  // their numbers of points
  };
  const Line inside = Box(0, 0, 10, 10), across = Box(60, -10, 120, 10), outside = Box(100, 0, 120, 10);
  const Row rows[]{
      {"wholly visible: one closed line", {inside}, {5}, {5}},
      {"wholly outside: no callback", {outside}, {}, {}},
      {"an outside part leaves no ring", {outside, inside, outside, across}, {5, 10}, {5, 4}},
      {"through the first vertex: one line", {across}, {10}, {4}},
      {"first vertex outside", {{{120, -10}, {120, 10}, {60, 10}, {60, -10}, {120, -10}}}, {10}, {4}},
      {"given open: closed for the fill only", {{{0, 0}, {10, 0}, {10, 10}}}, {4}, {3}},
      {"given open, cut in two", {{{60, -10}, {120, -10}, {120, 10}, {60, 10}}}, {10}, {2, 2}},
      {"around the whole domain: nothing", {Box(-95, -89.9, 95, 89.9)}, {}, {}},
      {"no area", {{{5, 5}, {5, 5}}, {{80, 0}, {100, 0}, {80, 0}}}, {2, 3}, {2, 3}},
      {"along the pole, all of it visible", {Box(-80, 60, 80, 90)}, {5}, {5}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    Shape shape;
    for (const Line& part : row.parts) shape.Add(part);
    const Shape before = shape;
    Received received;
    EXPECT_TRUE(Clip(ortho, shape, received));
    EXPECT_TRUE(SameLines({before.pts}, {shape.pts}));
    EXPECT_EQ(received.calls, row.rings.empty() ? "" : "f" + std::string(row.lines.size(), 'l'));
    ASSERT_EQ(received.rings.size(), row.rings.size());
    for (std::size_t i = 0; i < row.rings.size(); ++i) {
      EXPECT_EQ(received.rings[i].size(), row.rings[i]);
      EXPECT_TRUE(Same(received.rings[i].front(), received.rings[i].back()));
    }
    ASSERT_EQ(received.lines.size(), row.lines.size());
    for (std::size_t i = 0; i < row.lines.size(); ++i) EXPECT_EQ(received.lines[i].size(), row.lines[i]);
  }
  Received polar;  // a ring around the pole, the pole inside the map
  Shape cap;
  for (int lon = -180; lon <= 180; lon += 10) cap.pts.push_back({static_cast<double>(lon), 60});
  cap.counts.push_back(37);
  EXPECT_TRUE(Clip(Make(PT_ORTHOGRAPHIC, "Lat0=90"), cap, polar));
  EXPECT_EQ(polar.lines.at(0).size(), 37U);
}

/// The definition of clipping, step by step on a list of segments that is edited in place. What the library delivers
/// in one pass must be the same to the last bit.
class Definition {
 public:
  explicit Definition(const CProjector& projector) : m_projector(projector) {}

  void Part(const Line& pts, Received& out) const {
    CSEGLIST list;
    list.AppendMultiple(static_cast<int>(pts.size()), pts.data(), true);
    Cut(list);
    std::vector<Line> runs;
    for (int i = 0; i < list.Count(); ++i) {
      if (!Kept(list[i])) continue;
      if (i == 0 || !Kept(list[i - 1])) runs.push_back({list[i].Start});
      runs.back().push_back(list[i].End);
    }
    if (Same(pts.front(), pts.back()) && runs.size() > 1 && Kept(list[0]) && Kept(list[list.Count() - 1])) {
      runs.back().insert(runs.back().end(), runs[0].begin() + 1, runs[0].end());
      runs.erase(runs.begin());
    }
    out.lines.insert(out.lines.end(), runs.begin(), runs.end());
    for (int i = list.Count() - 1; i >= 0; --i) {
      if (!Kept(list[i])) list.Delete(i);
    }
    if (list.Count() == 0) return;
    const PROJPOINT first = list[0].Start;
    for (int i = list.Count() - 1; i >= 0; --i) {
      const PROJPOINT to = i + 1 < list.Count() ? PROJPOINT(list[i + 1].Start) : first;
      Follow(list, i, to);
    }
    out.rings.push_back({first});
    for (int i = 0; i < list.Count(); ++i) out.rings.back().push_back(list[i].End);
  }

 private:
  enum Result { kNone, kStart, kEnd, kBoth };

  static bool Kept(const SEGMENT& s) { return s.bStart && s.bEnd; }

  Result Search(const PROJPOINT& a, const PROJPOINT& b, PROJPOINT& in) const {
    const bool inA = m_projector.LLInProjection(&a), inB = m_projector.LLInProjection(&b);
    if (inA == inB) return inA ? kBoth : kNone;
    in = inA ? a : b;
    PROJPOINT out = inA ? b : a;
    do {
      const PROJPOINT m{in.x + (out.x - in.x) * 0.5, in.y + (out.y - in.y) * 0.5};
      (m_projector.LLInProjection(&m) ? in : out) = m;
    } while (std::abs(out.x - in.x) > 0.001 || std::abs(out.y - in.y) > 0.001);
    return inA ? kStart : kEnd;
  }

  void Cut(CSEGLIST& list) const {
    for (int i = 0; i < list.Count(); ++i) {
      const PROJPOINT start = list[i].Start, end = list[i].End;
      PROJPOINT cut{};
      const Result result = Search(start, end, cut);
      if (result == kBoth) continue;
      if (result == kNone) {
        list[i].bStart = list[i].bEnd = false;
        continue;
      }
      list.Delete(i);
      list.Insert(i, start, cut, result == kStart, true);
      list.Insert(++i, cut, end, true, result == kEnd);
    }
  }

  void Follow(CSEGLIST& list, int i, const PROJPOINT& to) const {
    const PROJPOINT from = list[i].End, d{to.x - from.x, to.y - from.y};
    if (Same(from, to)) return;
    Line chain{from};
    const bool apart = std::abs(d.x) > 1e-6 || std::abs(d.y) > 1e-6;
    for (int k = 1; apart && k <= 5; ++k) {
      const PROJPOINT p{from.x + k * (d.x / 7), from.y + k * (d.y / 7)};
      PROJPOINT edge{};
      const Result result = Search({p.x + d.y * 0.5, p.y - d.x * 0.5}, {p.x - d.y * 0.5, p.y + d.x * 0.5}, edge);
      if (result == kStart || result == kEnd) chain.push_back(edge);
    }
    chain.push_back(to);
    for (std::size_t k = 1; k < chain.size(); ++k) list.Insert(++i, chain[k - 1], chain[k], false, false);
  }

  const CProjector& m_projector;
};

/// Random walks of every size, often on round numbers, with doubled points, sometimes beyond the globe, now and then
/// with a point that an earlier step marked as unplottable or a number of any size.
Line RandomPart(std::mt19937& random) {
  const auto uniform = [&](double a, double b) { return std::uniform_real_distribution(a, b)(random); };
  const double step = std::pow(10, uniform(-4, 2.3)), grid = uniform(0, 1) < 0.3 ? 10 : 1e-9;
  PROJPOINT p{uniform(-250, 250), uniform(-95, 95)};
  Line part;
  const int count = 2 + static_cast<int>(uniform(0, 14));
  for (int i = 0; i < count; ++i) {
    part.push_back({std::round(p.x / grid) * grid, std::round(p.y / grid) * grid});
    if (uniform(0, 1) < 0.02) part.back() = {DBL_MAX, DBL_MAX};
    if (uniform(0, 1) < 0.02) part.back().x = std::copysign(std::pow(10, uniform(3, 308)), uniform(-1, 1));
    if (uniform(0, 1) > 0.1) p = {p.x + uniform(-step, step), std::clamp(p.y + uniform(-step, step), -95.0, 95.0)};
  }
  if (uniform(0, 1) < 0.7) part.push_back(part[0]);
  return part;
}

TEST(PreclipPolygon, IsTheDefinitionInOnePass) {
  for (const Map& map : kMaps) {
    SCOPED_TRACE(map.type);
    CProjector projector = Make(map.type, map.parameters);
    const Definition definition(projector);
    std::mt19937 random(20260000U + static_cast<unsigned>(map.type));
    std::size_t rings = 0;
    for (int round = 0; round < 60; ++round) {
      Shape shape;
      Received expected, received;
      double dx = 0, dy = 0;
      bool repeat = false;
      std::vector<Line> parts(1 + random() % 4);
      for (Line& part : parts) {
        part = RandomPart(random);
        shape.Add(part);
        definition.Part(part, expected);
        repeat = repeat || projector.LLOffsetSplitObject(part.data(), static_cast<unsigned>(part.size()), &dx, &dy);
      }
      for (Line& part : parts) {
        for (PROJPOINT& p : part) p = {p.x + dx, p.y + dy};
        if (repeat) definition.Part(part, expected);
      }
      ASSERT_TRUE(Clip(projector, shape, received));
      ASSERT_TRUE(SameLines(received.lines, expected.lines) && SameLines(received.rings, expected.rings)) << round;
      rings += received.rings.size();
      for (const Line& ring : received.rings) {
        for (const PROJPOINT& p : ring) {
          ASSERT_TRUE(projector.LLInProjection(&p));
          if (std::abs(p.y) > 89.999999) continue;  // the domain of a Mercator map goes on where its formula ends
          EXPECT_FALSE(Unplottable(Forward(projector, p.x, p.y))) << p.x << ", " << p.y;
        }
      }
    }
    EXPECT_GT(rings, 20U);
  }
}

/// Whether every edge along a line, moved by dx, can be searched for: no step from the domain to a number without end.
bool Searchable(const CProjector& projector, Line line, double dx) {
  for (PROJPOINT& p : line) p.x += dx;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const PROJPOINT &a = line[i - 1], &b = line[i];
    const bool finite = std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(b.x) && std::isfinite(b.y);
    if (!finite && projector.LLInProjection(&a) != projector.LLInProjection(&b)) return false;
  }
  return true;
}

// Every projection, every pair of hostile numbers next to ordinary ones, inside and out: clipped to points of the
// domain, and refused only where a search would not end.
TEST(Preclip, SurvivesHostileCoordinates) {
  const double hostile[]{kNaN, kInfinity, -kInfinity, DBL_MAX,      -DBL_MAX, 1e300,
                         1e17, 5e-324,    360,        -360.0000001, 90,       -0.0};
  for (int type = PT_MERCATOR; type < ProjNumProjections(); ++type) {
    SCOPED_TRACE(type);
    CProjector projector = Make(static_cast<ProjType>(type),
                                "Lat0=12;Lon0=10;Lat1=20;Lon1=-30;Lat2=50;Lon2=40;Alpha=30;bUseAlpha=1;Zone=1");
    for (const double x : hostile) {
      for (const double y : hostile) {
        for (const PROJPOINT& start : {PROJPOINT{10, 20}, {400, 20}}) {
          const Line line{start, {x, 30}, {start.x + 1, y}, {x, y}, {y, x}, start};
          Shape shape;
          shape.Add(line);
          Received received;
          double dx = 0, dy = 0;
          projector.LLOffsetSplitObject(line.data(), static_cast<unsigned>(line.size()), &dx, &dy);
          const bool possible = Searchable(projector, line, 0) && Searchable(projector, line, dx);
          EXPECT_EQ(Clip(projector, line, received), possible) << x << ", " << y;
          EXPECT_EQ(Clip(projector, shape, received), possible) << x << ", " << y;
          for (const std::vector<Line>& lines : {received.lines, received.rings}) {
            for (const Line& piece : lines) {
              for (const PROJPOINT& p : piece) EXPECT_TRUE(projector.LLInProjection(&p)) << x << ", " << y;
            }
          }
        }
      }
    }
  }
}

TEST(Preclip, TakesHalfAMillionCrossings) {  // minutes if a cut moved the rest of the list
  const CProjector world = Make(PT_SINUSOIDAL, "");
  constexpr int kCount = 500000;
  Shape shape;
  for (int i = 0; i < kCount; ++i) shape.pts.push_back({i % 2 == 0 ? 179.5 : 180.5, i * (160.0 / kCount) - 80});
  shape.counts.push_back(kCount);
  Received received;
  ASSERT_TRUE(Clip(world, shape, received));
  EXPECT_EQ(received.rings.size(), 2U);
  EXPECT_EQ(received.lines.size(), static_cast<std::size_t>(kCount));
}

TEST(Preclip, StopsWithTheCallback) {
  const CProjector world = Make(PT_SINUSOIDAL, "");
  Shape shape;
  shape.Add(Box(160, -10, 200, 10));
  shape.Add(Box(0, 0, 10, 10));
  Received all;
  ASSERT_TRUE(Clip(world, shape, all));
  EXPECT_EQ(all.calls, "fllfl");
  for (std::size_t at = 1; at <= all.calls.size(); ++at) {
    Received stopped, thrown;
    stopped.stopAt = thrown.throwAt = at;
    EXPECT_FALSE(Clip(world, shape, stopped));
    EXPECT_THROW(Clip(world, shape, thrown), std::runtime_error);
    EXPECT_EQ(stopped.calls, all.calls.substr(0, at));
    EXPECT_EQ(thrown.calls, all.calls.substr(0, at));
  }
  Received line, fillOnly;
  line.stopAt = 1;
  EXPECT_FALSE(Clip(world, Line{{170, 0}, {190, 0}}, line));
  EXPECT_EQ(line.calls, "l");
  EXPECT_TRUE(world.LLPreclipPolygon(&fillOnly, 2, shape.counts.data(), shape.pts.data(), Received::OnFill, nullptr));
  EXPECT_EQ(fillOnly.calls, "ff");
}

/// A host that does everything from within its callbacks: the call that it is in, calls that fail, handles of its own.
struct Entering {
  const CProjector& projector;
  const Shape& shape;
  const Received& expected;  // of the same call from outside
  int depth = 0;

  bool Enter() {
    if (++depth > 2) return depth-- != 0;
    Received inner;
    EXPECT_TRUE(Clip(projector, shape, inner));
    EXPECT_TRUE(inner.calls == expected.calls && SameLines(inner.lines, expected.lines) &&
                SameLines(inner.rings, expected.rings));
    EXPECT_TRUE(projector.LLPreclipPolygon(this, static_cast<int>(shape.counts.size()), shape.counts.data(),
                                           shape.pts.data(), OnFill, OnLine));
    EXPECT_THROW(Make(PT_LAMBERT, "Lat1=30;Lat2=30"), shr::Exception);
    CProjector own = Make(PT_ALBERS, "Lat1=30;Lat2=50");
    PROJPOINT p{0, 40};
    EXPECT_TRUE(own.SetAccuracy(PA_EXACT) && own.Forward(&p, 1));
    --depth;
    return true;
  }
  static bool ORVEX_CALL OnLine(void* user, int count, PROJPOINT* pts) {
    std::fill_n(pts, count, PROJPOINT{-1e9, 1e9});
    return static_cast<Entering*>(user)->Enter();
  }
  static bool ORVEX_CALL OnFill(void* user, int, const int* counts, PROJPOINT* pts) {
    return OnLine(user, counts[0], pts);
  }
};

TEST(Preclip, IsEnteredFromItsOwnCallbacks) {
  const CProjector world = Make(PT_SINUSOIDAL, "");
  Shape shape;
  shape.Add(Box(160, -10, 200, 10));
  shape.Add(Box(0, 0, 10, 10));
  Received expected;
  ASSERT_TRUE(Clip(world, shape, expected));
  Entering host{world, shape, expected};
  EXPECT_TRUE(
      world.LLPreclipPolygon(&host, 2, shape.counts.data(), shape.pts.data(), Entering::OnFill, Entering::OnLine));
  EXPECT_EQ(host.depth, 0);
}

// The host's floating-point environment is its own while a callback runs, and as it was afterwards.
TEST(Preclip, LeavesTheHostItsFloatingPointEnvironment) {
  Shape shape;
  shape.Add(Box(60, -10, 120, 10));
  Received received;
  std::feclearexcept(FE_ALL_EXCEPT);
  std::feraiseexcept(FE_DIVBYZERO);
  EXPECT_TRUE(Clip(Make(PT_ORTHOGRAPHIC, ""), shape, received));
  EXPECT_EQ(received.calls, "fl");
  EXPECT_TRUE((received.exceptions & FE_DIVBYZERO) != 0 && std::fetestexcept(FE_DIVBYZERO) != 0);
}

TEST(Preclip, RefusesBadParameters) {
  PROJDATA rec = Record(PT_SINUSOIDAL, "");
  const PROJPOINT pts[2]{};
  const int counts[]{2, 1}, negative[]{-1};
  const auto line = [](void* handle, int nPts, const PROJPOINT* p, PROJLINECALLBACK callback = Received::OnLine) {
    EXPECT_EQ(ThrownLine(20205, "OrvexPClip", [=] { ProjLLPreclipPolyline(handle, nullptr, nPts, p, callback); }),
              1068);
  };
  line(nullptr, 2, pts);
  line(&rec, 1, pts);
  line(&rec, 2, nullptr);
  line(&rec, 2, pts, nullptr);
  const auto polygon = [](void* handle, int nParts, const int* n, const PROJPOINT* p,
                          PROJFILLCALLBACK fill = Received::OnFill) {
    EXPECT_EQ(
        ThrownLine(20205, "OrvexPClip", [=] { ProjLLPreclipPolygon(handle, nullptr, nParts, n, p, fill, nullptr); }),
        1172);
  };
  polygon(nullptr, 1, counts, pts);
  polygon(&rec, 0, counts, pts);
  polygon(&rec, 1, nullptr, pts);
  polygon(&rec, 1, counts, nullptr);
  polygon(&rec, 1, counts, pts, nullptr);
  Received received;  // a part below two points fails the call before anything is delivered
  EXPECT_FALSE(ProjLLPreclipPolygon(&rec, &received, 2, counts, pts, Received::OnFill, nullptr));
  EXPECT_FALSE(ProjLLPreclipPolygon(&rec, &received, 1, negative, pts, Received::OnFill, nullptr));
  EXPECT_TRUE(received.calls.empty());
}

}  // namespace
}  // namespace orvex::test
