// What holds for every projection: points do not disturb each other, the inverse undoes the forward, and no record or
// point, however wild, leads to anything but coordinates, unplottable points or the library's own exception.
#include <array>
#include <cfenv>
#include <cstring>
#include <ctime>
#include <limits>
#include <random>

#include "support/Projection.h"

namespace orvex::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr PROJPOINT kMarker{DBL_MAX, DBL_MAX};

enum Direction { kForward, kInverse };

bool Convert(CProjector& projector, Direction direction, PROJPOINT* pts, int nPts) {
  return direction == kForward ? projector.Forward(pts, nPts) : projector.Inverse(pts, nPts);
}

bool SameBits(const PROJPOINT& a, const PROJPOINT& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

/// Random numbers that are the same with every standard library.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_engine(seed) {}

  std::size_t Below(std::size_t count) { return static_cast<std::size_t>(m_engine() % count); }
  bool OneIn(std::size_t count) { return Below(count) == 0; }
  double Between(double low, double high) {
    return low + static_cast<double>(m_engine() >> 11) * 0x1p-53 * (high - low);
  }
  template <std::size_t kCount>
  double Of(const double (&values)[kCount]) {
    return values[Below(kCount)];
  }

 private:
  std::mt19937_64 m_engine;
};

std::string Name(const ProjectionForm& form) {
  char name[64];
  ProjGetProjectionInfo(form.type, name);
  return std::string(name) + ", " + form.form + ": " + form.parameters;
}

// Four inverses stop by two estimates that agree and take the northing for the one before the first: on a map as small
// as the numbers of a latitude in radians it is what comes back.
TEST(ProjectionContract, TheFirstEstimateIsComparedWithTheNorthing) {
  const struct {
    ProjType type;
    const char* parameters;
    PROJPOINT map;
  } rows[] = {{PT_ALBERS, "a=1;f=0.003;Lat1=30;Lat2=60", {0, 1e-6}},
              {PT_LAMBERT, "a=1;f=0.003;Lat1=30;Lat2=60", {0, 1e-6}},
              {PT_MERCATOR, "a=1;f=0.003", {0.1, 1e-6}},
              {PT_POLYCONIC, "R=1", {0.5, 0.5}}};  // its first estimate is the northing, anywhere on this map
  for (const auto& row : rows) {
    PROJDATA rec = Record(row.type, row.parameters);
    CProjector projector(&rec);
    const PROJPOINT p = Inverse(projector, row.map.x, row.map.y);
    EXPECT_NEAR(p.y * kRadiansPerDegree, row.map.y, 1e-15) << row.type;
    const PROJPOINT again = Forward(projector, p.x, p.y);
    EXPECT_GT(std::abs(again.y - row.map.y), 1e-13) << row.type;  // which is not where it lies
  }
}

// An array of n equals n arrays of one, and a place that cannot be plotted, or was not even a number, changes only
// itself. A marker is no news: it passes, and the result speaks of other points.
TEST(ProjectionContract, PointsDoNotDisturbEachOther) {
  for (const ProjectionForm& form : AllProjections()) {
    SCOPED_TRACE(Name(form));
    PROJDATA rec = form.MakeRecord();
    CProjector projector(&rec);
    Random random(4);
    std::vector<PROJPOINT> pts(600);  // more than two of the driver's blocks
    for (PROJPOINT& p : pts) p = form.Place(random.Between(-0.3, 1.3), random.Between(-0.3, 1.3));
    for (const Direction direction : {kForward, kInverse}) {
      std::vector<PROJPOINT> marked = pts;
      marked[5] = {kNaN, 1};
      marked[6] = {2, -kInf};
      marked[290] = kMarker;
      std::vector<PROJPOINT> all = marked;
      ASSERT_TRUE(Convert(projector, direction, all.data(), static_cast<int>(all.size())));
      for (std::size_t i = 0; i < pts.size(); ++i) {
        PROJPOINT single = marked[i];
        ASSERT_TRUE(Convert(projector, direction, &single, 1));
        ASSERT_TRUE(SameBits(single, all[i])) << "point " << i << " of direction " << direction;
        const bool news = Unplottable(single) && std::isfinite(marked[i].x + marked[i].y) && !Unplottable(marked[i]);
        const bool notANumber = !std::isfinite(marked[i].x) || !std::isfinite(marked[i].y);
        EXPECT_EQ(projector.Result(), news || (notANumber && direction == kForward) ? 1 : 0) << i;
        EXPECT_FALSE(notANumber && !Unplottable(single));
      }
      EXPECT_TRUE(Unplottable(all[290]));
      pts = all;  // the inverse of what came out
    }
  }
}

TEST(ProjectionContract, InverseUndoesForward) {
  for (const ProjectionForm& form : AllProjections()) {
    SCOPED_TRACE(Name(form));
    PROJDATA rec = form.MakeRecord();
    CProjector projector(&rec);
    Random random(9);
    double worst = 0;
    PROJPOINT where{};
    int checked = 0;
    for (int i = 0; i < 2000; ++i) {
      const PROJPOINT place = form.Place(random.Between(0, 1), random.Between(0, 1));
      if (!projector.LLInProjection(&place)) continue;
      const PROJPOINT p = Forward(projector, place.x, place.y), back = Inverse(projector, p.x, p.y);
      ASSERT_FALSE(Unplottable(p) || Unplottable(back)) << place.x << ", " << place.y;
      ++checked;
      const double miss = ArcDegrees(place, back);
      if (miss > worst) {
        worst = miss;
        where = place;
      }
    }
    EXPECT_GT(checked, 800);
    EXPECT_LE(worst, form.roundTripDeg) << "at " << where.x << ", " << where.y;
  }
}

// ---- wild records and points ----

double WildAngle(Random& random) {
  static constexpr double kCorners[] = {0,   -0.0, 30,    -30,        45,       90,      -90,
                                        180, -180, 270,   -359.99,    89.99999, 1e-9,    90.00000000000001,
                                        360, 1e-6, -1e-4, 89.9999999, 5e-324,   -1e-300, 89.99999999999999};
  return random.OneIn(3) ? random.Of(kCorners) : random.OneIn(8) ? random.Between(-360, 360) : random.Between(-90, 90);
}

double Extreme(Random& random) {
  static constexpr double kExtremes[] = {
      kNaN,    kInf, -kInf, DBL_MAX, -DBL_MAX, 1e300, -1e300, 1e38, -1e-300, 1e-300,   5e-324,
      DBL_MIN, -1,   1e-17, 1e9,     -0.0,     1e154, 1e-154, 0.5,  1,       359.9999, 1.7014117331926443e38};
  return random.Of(kExtremes);
}

PROJDATA WildRecord(Random& random) {
  PROJDATA rec{};
  rec.Type = static_cast<ProjType>(1 + random.Below(28));
  rec.Lat0 = WildAngle(random);
  rec.Lon0 = WildAngle(random);
  rec.Lat1 = WildAngle(random);
  rec.Lon1 = WildAngle(random);
  rec.Lat2 = random.OneIn(6) ? (random.OneIn(2) ? 1 : -1) * rec.Lat1 : WildAngle(random);
  rec.Lon2 = WildAngle(random);
  rec.Alpha = WildAngle(random);
  rec.Scale = random.OneIn(2) ? 1 : random.Of({0.0, 1.0, 0.5, 3.0, 1e-300, 1e300});
  rec.K0 = random.OneIn(2) ? 1 : random.Of({0.0, 0.9996, 2.0, 1e-300, 1e300, 5e-324});
  if (random.OneIn(3)) rec.xOrg = random.Of({500000.0, -1e38, 1e-300, 7.0});
  if (random.OneIn(3)) rec.yOrg = random.Of({10000000.0, 1e38, -1e-300, -7.0});
  rec.bSouth = random.OneIn(2);
  rec.bUseAlpha = random.OneIn(2);
  rec.bRotate = random.OneIn(2);
  rec.bUOffset = random.OneIn(2);
  rec.bWrapLon = random.OneIn(2);
  rec.Zone = static_cast<int>(random.Below(150)) - 3;
  rec.Ellipsoid = static_cast<EllipsoidType>(random.OneIn(2) ? 0 : random.Below(57));
  rec.MajorRadius = random.OneIn(2) ? 6371000 : random.Of({1.0, 1e-3, 1e9, 1e300, 1e-300});
  rec.Flattening = random.OneIn(2) ? 0 : random.Of({1 / 298.257, 0.1, 0.5, 0.99, 0.9999999999999999, 1e-17, 5e-324});
  if (random.OneIn(4)) {
    static constexpr std::size_t kFields[] = {
        offsetof(PROJDATA, Scale), offsetof(PROJDATA, xOrg),        offsetof(PROJDATA, yOrg),
        offsetof(PROJDATA, Lat0),  offsetof(PROJDATA, Lon0),        offsetof(PROJDATA, Lat1),
        offsetof(PROJDATA, Lat2),  offsetof(PROJDATA, Lon1),        offsetof(PROJDATA, Lon2),
        offsetof(PROJDATA, K0),    offsetof(PROJDATA, Alpha),       offsetof(PROJDATA, Lat3),
        offsetof(PROJDATA, Lon3),  offsetof(PROJDATA, MajorRadius), offsetof(PROJDATA, Flattening)};
    const double extreme = Extreme(random);
    std::memcpy(reinterpret_cast<char*>(&rec) + kFields[random.Below(std::size(kFields))], &extreme, sizeof extreme);
  }
  return rec;
}

double WildCoordinate(Random& random, double centre, double unit) {
  switch (random.Below(8)) {
    case 0:
      return centre;
    case 1:
      return centre + unit * random.Of({0.5, -0.5, 1.0, -1.0, 1.5, -2.0});
    case 2:
      return Extreme(random);
    case 3:
      return unit * random.Of({0.5, -0.5, 1.0, -1.0, 2.0, -2.0});
    default:
      return centre + unit * random.Between(-2, 2);
  }
}

std::string Describe(PROJDATA rec) {
  std::ostringstream text;
  text.precision(17);
  text << "Type=" << +rec.Type;
  for (int id = 1; id <= 22; ++id) {
    char name[80];
    ProjDataType type;
    int offset = 0, size = 0;
    ProjParamInfo(id, name, &type, &offset, &size);
    double number = 0;
    std::int32_t integer = 0;
    if (type == PDT_DOUBLE)
      ProjGetParam(&rec, id, &number);
    else
      ProjGetParam(&rec, id, &integer);
    text << "; " << name << '=' << (type == PDT_DOUBLE ? number : integer);
  }
  return text.str();
}

using Points = std::array<PROJPOINT, 8>;

std::string Describe(const Points& in, const Points& out) {
  std::ostringstream text;
  text.precision(17);
  for (std::size_t i = 0; i < in.size(); ++i) {
    text << "\n  " << in[i].x << ", " << in[i].y << " -> " << out[i].x << ", " << out[i].y;
  }
  return text.str();
}

/// What the driver makes of a module's coordinate: the false origin unless both are 0, then the scale.
double Placed(double value, double origin, bool anyOrigin, double scale) {
  if (value != DBL_MAX && anyOrigin) value += origin;
  return value == DBL_MAX || scale == 1 ? value : value * scale;
}

struct Outcome {
  bool ok = false;
  int thrown = 0;  // message id
  int result = 0;
  Points pts{};
};

Outcome Call(void* handle, Direction direction, const Points& pts) {
  Outcome outcome{false, 0, 0, pts};
  try {
    const auto convert = direction == kForward ? ProjForward : ProjInverse;
    outcome.ok = convert(handle, outcome.pts.data(), static_cast<int>(outcome.pts.size()));
    outcome.result = ProjResult(handle);
  } catch (const shr::Exception& e) {
    outcome.thrown = e.MessageId();
  }
  return outcome;
}

/// Holds an outcome against the rules; `completed` is the handle's record.
void CheckOutcome(const Outcome& outcome, Direction direction, const Points& in, const PROJDATA& completed) {
  if (outcome.thrown != 0) {
    EXPECT_EQ(outcome.thrown, 20200);
    return;
  }
  ASSERT_TRUE(outcome.ok);
  const bool zone = completed.Type == PT_STATEPLANE27 || completed.Type == PT_STATEPLANE83;
  const bool placed =
      direction == kForward && (zone || completed.xOrg != 0 || completed.yOrg != 0 || completed.Scale != 1);
  bool news = false, halfMarked = false;
  for (std::size_t i = 0; i < in.size(); ++i) {
    const PROJPOINT &p = outcome.pts[i], &q = in[i];
    const bool finite = std::isfinite(q.x) && std::isfinite(q.y), marker = q.x == DBL_MAX || q.y == DBL_MAX;
    if (!finite) {
      EXPECT_TRUE(Unplottable(p));
      news = news || direction == kForward;
    } else if (marker) {
      EXPECT_TRUE((q.x != DBL_MAX || p.x == DBL_MAX) && (q.y != DBL_MAX || p.y == DBL_MAX));
      halfMarked = halfMarked || q.x != q.y;  // the other coordinate may overflow on its own
    } else {
      news = news || Unplottable(p);
      EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y)) << p.x << ", " << p.y;
      if (direction == kForward) {
        EXPECT_TRUE(placed || (p.x == DBL_MAX) == (p.y == DBL_MAX));  // a scaled coordinate may be DBL_MAX exactly
      } else {
        EXPECT_TRUE(p.x == DBL_MAX || std::abs(p.x) < 360) << p.x;
        EXPECT_TRUE(p.y == DBL_MAX || std::abs(p.y) <= 90) << p.y;
      }
    }
  }
  // Radians that are finite may overflow as degrees, and a quotient may be the marker exactly; only globes and maps
  // smaller than an atom or larger than the universe go so far.
  const bool absurd = completed.MajorRadius > 1e300 || completed.MajorRadius < 1e-100 || completed.K0 < 1e-100 ||
                      completed.Scale < 1e-100;
  if (!placed && !halfMarked && !(direction == kInverse && news && absurd)) {
    EXPECT_EQ(outcome.result == 1, news) << direction;
  }
}

/// The same call without scale and false origin must lead to the same places but for those; what overflows is marked.
void CheckPlacement(const Outcome& outcome, const Points& in, PROJDATA completed) {
  if (outcome.thrown != 0 || completed.Type == PT_UTM || completed.Type == PT_STATEPLANE27 ||
      completed.Type == PT_STATEPLANE83) {
    return;
  }
  const double xOrg = completed.xOrg, yOrg = completed.yOrg, scale = completed.Scale;
  completed.xOrg = completed.yOrg = 0;
  completed.Scale = 1;
  void* const handle = ProjCreateProjection(&completed);
  const Outcome plain = Call(handle, kForward, in);
  ProjDeleteProjection(handle);
  EXPECT_LE(plain.result, outcome.result);
  const bool anyOrigin = xOrg != 0 || yOrg != 0;
  for (std::size_t i = 0; i < in.size(); ++i) {
    PROJPOINT want{Placed(plain.pts[i].x, xOrg, anyOrigin, scale), Placed(plain.pts[i].y, yOrg, anyOrigin, scale)};
    if (!std::isfinite(want.x) || !std::isfinite(want.y)) want = {DBL_MAX, DBL_MAX};
    EXPECT_EQ(+outcome.pts[i].x, +want.x) << i;
    EXPECT_EQ(+outcome.pts[i].y, +want.y) << i;
  }
}

#if defined(__linux__) && defined(__x86_64__)
/// The call with traps unmasked: it may fail, but neither traps nor changes the environment, and a call that succeeds
/// gives what it gives with everything masked.
void CheckTrapped(void* handle, Direction direction, const Points& in, const Outcome& masked, int traps) {
  std::fenv_t before;
  std::feholdexcept(&before);
  feenableexcept(traps);
  const Outcome outcome = Call(handle, direction, in);
  const int trapsAfter = fegetexcept(), statusAfter = std::fetestexcept(FE_ALL_EXCEPT);
  std::fesetenv(&before);
  EXPECT_EQ(trapsAfter, traps);
  EXPECT_EQ(statusAfter, 0);
  EXPECT_EQ(outcome.thrown, masked.thrown);
  if (!outcome.ok) return;
  for (std::size_t i = 0; i < in.size(); ++i) EXPECT_TRUE(SameBits(outcome.pts[i], masked.pts[i])) << i;
}
#endif

#if defined(__SANITIZE_ADDRESS__)
constexpr int kRecords = 100000;
#else
constexpr int kRecords = 200000;
#endif

TEST(ProjectionContract, WildRecordsAndPoints) {
  Random random(20240611);
  int accepted = 0;
  std::clock_t slowest = 0;
  for (int i = 0; i < kRecords && !HasFailure(); ++i) {
    PROJDATA rec = WildRecord(random);
    SCOPED_TRACE("record " + std::to_string(i));
    const bool valid = ProjCheckParams(&rec, nullptr, false) == 0;
    void* handle = nullptr;
    try {
      handle = ProjCreateProjection(&rec);
    } catch (const shr::Exception& e) {
      EXPECT_EQ(valid, e.MessageId() == 20200) << e.what();  // a zone on an ellipsoid without a radius
    }
    if (handle == nullptr) continue;
    ++accepted;
    PROJDATA completed;
    ProjGetHandleInfo(handle, &completed);
    Points geographic, projected;
    for (PROJPOINT& p : geographic) p = {WildCoordinate(random, rec.Lon0, 90), WildCoordinate(random, rec.Lat0, 90)};
    const std::clock_t start = std::clock();
    const Outcome forward = Call(handle, kForward, geographic);
    CheckOutcome(forward, kForward, geographic, completed);
    CheckPlacement(forward, geographic, completed);
    projected = forward.pts;
    for (std::size_t k = 0; k < 4; ++k) {
      projected[k] = {WildCoordinate(random, rec.xOrg, rec.MajorRadius),
                      WildCoordinate(random, rec.yOrg, rec.MajorRadius)};
    }
    const Outcome inverse = Call(handle, kInverse, projected);
    CheckOutcome(inverse, kInverse, projected, completed);
    ProjLLInProjection(handle, geographic.data());
    slowest = std::max(slowest, std::clock() - start);
#if defined(__linux__) && defined(__x86_64__)
    const int traps = random.OneIn(2) ? FE_ALL_EXCEPT : FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW;
    CheckTrapped(handle, kForward, geographic, forward, traps);
    CheckTrapped(handle, kInverse, projected, inverse, traps);
#endif
    ProjDeleteProjection(handle);
    if (HasFailure()) {
      ADD_FAILURE() << Describe(rec) << "\nforward" << Describe(geographic, forward.pts) << "\ninverse"
                    << Describe(projected, inverse.pts);
    }
  }
  EXPECT_GT(accepted, kRecords / 2);
  EXPECT_LT(slowest, CLOCKS_PER_SEC) << "for 24 points";
}

// A marker in one coordinate stays, the formula passes the point by, and the other coordinate goes through what stands
// before and behind the formula. No such point sets the result of a projection, not even the one that is made here.
TEST(HalfMarked, theOtherCoordinateGoesOn) {
  constexpr double kRadians = 0.017453292519943295;
  struct Row {
    bool forward, placed;
    PROJPOINT given, want;
  };
  const Row rows[] = {
      {true, false, {DBL_MAX, 100}, {DBL_MAX, 80 * kRadians}},
      {true, false, {400, DBL_MAX}, {40 * kRadians, DBL_MAX}},
      {true, true, {DBL_MAX, 100}, {DBL_MAX, (80 * kRadians + 20) * 2}},
      {true, true, {-730, DBL_MAX}, {(-10 * kRadians + 10) * 2, DBL_MAX}},
      {false, false, {DBL_MAX, 0.5}, {DBL_MAX, 0.5 / kRadians}},
      {false, true, {DBL_MAX, 42}, {DBL_MAX, 1 / kRadians}},
      {false, true, {40, DBL_MAX}, {10 / kRadians - 360, DBL_MAX}},
      {false, false, {1e307, 0.5}, {DBL_MAX, std::atan(std::sinh(0.5)) / kRadians}},  // too many degrees for a double
  };
  for (const Row& row : rows) {
    PROJDATA record{};
    record.Type = PT_MERCATOR;
    record.MajorRadius = 1;
    if (row.placed) {
      record.xOrg = 10;
      record.yOrg = 20;
      record.Scale = 2;
    }
    CProjector projector(&record);
    PROJPOINT p = row.given;
    EXPECT_TRUE(row.forward ? projector.Forward(&p, 1) : projector.Inverse(&p, 1));
    const double givenX = row.given.x, givenY = row.given.y, x = p.x, y = p.y;  // no references to packed fields
    SCOPED_TRACE(testing::Message() << "forward " << row.forward << ": " << givenX << ", " << givenY);
    EXPECT_NEAR(x, double(row.want.x), 1e-12);
    EXPECT_NEAR(y, double(row.want.y), 1e-12);
    EXPECT_EQ(projector.Result(), 0);
  }
  DATUMXFORM xform{};
  xform.SrcDatum = DT_NORTH_AMERICAN_DATUM_1927;
  xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  CDatumTransform transform(&xform);
  for (const auto& [given, want] : {std::pair(DATUMPOINT{DBL_MAX, 100}, DATUMPOINT{DBL_MAX, 80}),
                                    std::pair(DATUMPOINT{400, DBL_MAX}, DATUMPOINT{40, DBL_MAX})}) {
    DATUMPOINT p = given;
    EXPECT_TRUE(transform.Convert(&p, 1) && transform.HadUnplottables());  // as for a marker
    const double x = p.x, y = p.y;
    EXPECT_TRUE(x == want.x && y == want.y) << x << ", " << y;
  }
}

}  // namespace
}  // namespace orvex::test
