// The engine: catalogue, validation, handles, driver and wrapper.
#include <cstring>
#include <limits>
#include <thread>
#include <vector>

#include "support/Projection.h"

namespace orvex::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(Catalogue, NamesAndMasks) {
  char name[64];
  EXPECT_EQ(ProjNumProjections(), 29);
  const struct {
    int type;
    const char* name;
    unsigned mask;
  } rows[] = {{0, "Unprojected Lat/Long", 0x00},
              {1, "Mercator", 0x2F},
              {2, "Albers Equal Area Conic", 0x2F},
              {3, "Miller Cylindrical", 0x2F},
              {4, "Universal Transverse Mercator (UTM)", 0x1B},
              {5, "Lambert Conformal Conic", 0x2F},
              {6, "Stereographic", 0x1B},
              {7, "Orthographic", 0x1B},
              {8, "Mollweide", 0x3F},
              {9, "State Plane 1927", 0x3B},
              {10, "State Plane 1983", 0x3B},
              {11, "Polyconic", 0x1B},
              {12, "Hotine Oblique Mercator", 0x03},
              {13, "Equidistant Cylindrical", 0x2F},
              {14, "Robinson", 0x3F},
              {15, "Van Der Grinten", 0x3F},
              {16, "Cassini", 0x3B},
              {17, "Transverse Mercator", 0x1B},
              {18, "Gauss-Kruger / Gauss Conformal", 0x1B},
              {19, "Sinusoidal", 0x3F},
              {20, "Lambert Azimuthal Equal Area", 0x3B},
              {21, "Bonne", 0x1B},
              {22, "Robinson-Sterling", 0x3F},
              {23, "Eckert IV", 0x3F},
              {24, "Eckert VI", 0x3F},
              {25, "Oblique Mercator", 0x03},
              {26, "Equidistant Conic", 0x2F},
              {27, "Gnomonic", 0x1B},
              {28, "Azimuthal Equidistant", 0x3F},
              {999, "undefined", 0},
              {29, "", 0},
              {-1, "", 0}};
  for (const auto& row : rows) {
    EXPECT_EQ(ProjGetProjectionInfo(static_cast<ProjType>(row.type), name), row.mask);
    EXPECT_STREQ(name, row.name);
    EXPECT_EQ(ProjGetProjectionInfo(static_cast<ProjType>(row.type), nullptr), row.mask);
  }
}

TEST(Validation, FirstFailedCheckIsReported) {
  const struct {
    ProjType type;
    const char* parameters;
    int id;  // 0: valid
    const char* text;
  } cases[] = {
      {static_cast<ProjType>(29), "", 20230, "Invalid projection type parameter specified"},
      {static_cast<ProjType>(-1), "", 20230, nullptr},
      {PT_UNDEFINED, "Scale=-1;Ellipsoid=99", 0, nullptr},
      {PT_LATLONG, "Scale=-1;Lon0=999", 0, nullptr},
      {PT_MERCATOR, "Scale=-1;K0=-1", 20231, "Scale parameter must be greater than zero"},
      {PT_MERCATOR, "K0=-1;xOrg=1e39", 20232, nullptr},
      {PT_MERCATOR, "xOrg=1.7014117331926443e38;yOrg=-1.7014117331926443e38", 0, nullptr},
      {PT_MERCATOR, "xOrg=1.7014117331926445e38", 20233, nullptr},
      {PT_MERCATOR, "yOrg=-1.7014117331926445e38", 20234, nullptr},
      {PT_UTM, "xOrg=1e300;yOrg=1e300", 0, nullptr},
      {PT_STATEPLANE83, "xOrg=1e300;Zone=61", 20252, "State zone parameter not recognized"},
      {PT_STATEPLANE27, "Zone=61;Ellipsoid=99", 0, nullptr},
      {PT_MERCATOR, "Lon0=360;Lon1=999", 20235, nullptr},
      {PT_MERCATOR, "Lon0=-359.9;Lon1=-360", 20236, nullptr},
      {PT_MERCATOR, "Lon2=360", 20237, nullptr},
      {PT_MERCATOR, "Lon3=360", 20238, nullptr},
      {PT_MERCATOR, "Lat0=360", 20239, "Central latitude (Lat0) parameter was outside the range of -90 to +90"},
      {PT_MERCATOR, "Lat1=-360", 20240, nullptr},
      {PT_MERCATOR, "Lat2=360", 20241, nullptr},
      {PT_MERCATOR, "Lat3=360", 20242, nullptr},
      {PT_MERCATOR, "Lat0=100", 0, nullptr},
      {PT_HOTINE, "Alpha=360;bUseAlpha=1", 20243, nullptr},
      {PT_BONNE, "Lat1=0", 20244, nullptr},
      {PT_ALBERS, "Lat1=30;Lat2=-30", 20245, nullptr},
      {PT_ALBERS, "Lat1=30;Lat2=30.0005", 20245, nullptr},
      {PT_EQUICONIC, "Lat1=30;Lat2=-30.0005", 20256, nullptr},
      {PT_HOTINE, "bUseAlpha=1", 20246, nullptr},
      {PT_HOTINE, "bUseAlpha=0", 0, nullptr},
      {PT_LAMBERT, "Lat1=33;Lat2=33.05", 20247, nullptr},
      {PT_LAMBERT, "Lat1=33;Lat2=33.15", 0, nullptr},
      {PT_MERCATOR, "Lat0=89.995", 20251, nullptr},
      {PT_MERCATOR, "Lat0=-90.005", 20251, nullptr},
      {PT_MERCATOR, "Lat0=89.98", 0, nullptr},
      {PT_OBLIQUEMERCATOR, "Lat1=45;Lat2=45.0005", 20253, nullptr},
      {PT_OBLIQUEMERCATOR, "Lat1=0.0005;Lat2=45", 20254, nullptr},
      {PT_OBLIQUEMERCATOR, "Lat1=89.9995;Lat2=45", 20255,
       "Second standard parallel (Lat2) cannot be 90 degrees for Oblique Mercator projection"},
      {PT_MERCATOR, "Ellipsoid=56", 20248, nullptr},
      {PT_MERCATOR, "Ellipsoid=-1", 20248, nullptr},
      {PT_MERCATOR, "R=0", 20249, nullptr},
      {PT_MERCATOR, "R=1;f=-0.1", 20250, nullptr},
      {PT_MERCATOR, "R=1;f=1", 20250, nullptr},
  };
  for (const auto& c : cases) {
    const PROJDATA rec = Record(c.type, c.parameters);
    char message[256] = "x";
    EXPECT_EQ(ProjCheckParams(&rec, message, false), c.id != 0 ? 1 : 0) << c.type << " " << c.parameters;
    EXPECT_EQ(*message != '\0', c.id != 0) << c.parameters;
    if (c.text != nullptr) {
      EXPECT_STREQ(message, c.text);
    }
    if (c.id == 0) continue;
    try {
      ProjCheckParams(&rec, nullptr, true);
      ADD_FAILURE() << "nothing thrown for " << c.parameters;
    } catch (const shr::Exception& e) {
      EXPECT_EQ(e.MessageId(), c.id) << c.parameters;
      EXPECT_EQ(e.Module() + "/" + e.Source(), "Orvex/Orvex");
      EXPECT_STREQ(e.what(), message);
    }
  }
  char message[256];
  EXPECT_EQ(ProjCheckParams(nullptr, message, true), 998);
  EXPECT_STREQ(message, "NULL pointer to projection parameters");
}

TEST(Handle, CompletesTheRecord) {
  PROJDATA utm = Record(PT_UTM, "Lon0=15;bSouth=1;xOrg=7;yOrg=8;Scale=0");
  CProjector projector(&utm);
  PROJDATA info;
  ASSERT_TRUE(projector.GetInfo(&info));
  EXPECT_EQ(+info.xOrg, 500000.0);
  EXPECT_EQ(+info.yOrg, 10000000.0);
  EXPECT_EQ(+info.K0, 0.9996);
  EXPECT_EQ(+info.Scale, 1.0);
  EXPECT_EQ(+info.MajorRadius, 6378137.0);
  EXPECT_EQ(+utm.yOrg, 10000000.0);  // the caller's record is completed too, but keeps its zero scale
  EXPECT_EQ(+utm.K0, 0.9996);
  EXPECT_EQ(+utm.Scale, 0.0);

  PROJDATA zone = Record(PT_STATEPLANE83, "Zone=0;Ellipsoid=0");  // passes the checks, but there is no radius
  EXPECT_THROW(ProjCreateProjection(&zone), shr::Exception);
  EXPECT_EQ(ProjCreateProjection(nullptr), nullptr);
  EXPECT_FALSE(ProjGetHandleInfo(nullptr, &info));
  EXPECT_EQ(ProjResult(nullptr), 0);
  ProjDeleteProjection(nullptr);
}

// Visual Basic and others store -1 for true.
TEST(Handle, AnyNonZeroByteIsTrue) {
  PROJDATA rec = Record(PT_UTM, "Lon0=15");
  std::memset(&rec.bSouth, 0xFF, 1);
  CProjector south(&rec);
  EXPECT_EQ(+rec.yOrg, 10000000.0);
  PROJDATA world = Record(PT_SINUSOIDAL, "R=1");
  std::memset(&world.bWrapLon, 0xFF, 1);
  CProjector wrapped(&world);
  EXPECT_NEAR(Forward(wrapped, 190, 20).x, Forward(wrapped, -170, 20).x, 1e-15);
}

TEST(Handle, WrapperCopiesAndShares) {
  PROJDATA rec = Record(PT_UTM, "Lon0=15");
  CProjector empty, first(&rec), copy(first), copyOfEmpty(empty);
  EXPECT_FALSE(copyOfEmpty.GetInfo(&rec));
  CProjector shared;
  shared = first;
  PROJPOINT bad{kNaN, 0};
  EXPECT_TRUE(first.Forward(&bad, 1));
  EXPECT_EQ(shared.Result(), 1);  // one handle
  EXPECT_EQ(copy.Result(), 0);    // a handle of its own
  first.Delete();
  EXPECT_FALSE(first.GetInfo(&rec));
  EXPECT_TRUE(shared.GetInfo(&rec));  // lives until the last one lets go
  const CProjector& self = shared;
  shared = self;
  EXPECT_NEAR(Forward(shared, 15, 10).x, 500000, 1e-9);
  EXPECT_FALSE(shared.Create(nullptr));
}

TEST(Driver, RefusesBadCalls) {
  PROJDATA rec = Record(PT_UTM, "Lon0=15"), undefined = Record(PT_UNDEFINED, "");
  CProjector projector(&rec), nowhere(&undefined);
  PROJPOINT p{15, 10};
  EXPECT_FALSE(ProjForward(nullptr, &p, 1));
  EXPECT_FALSE(ProjInverse(nullptr, &p, 1));
  for (const auto convert : {&CProjector::Forward, &CProjector::Inverse}) {
    EXPECT_THROW((projector.*convert)(nullptr, 1), shr::Exception);
    EXPECT_THROW((projector.*convert)(&p, 0), shr::Exception);
    EXPECT_THROW((nowhere.*convert)(&p, 1), shr::Exception);
  }
  EXPECT_EQ(p.x, 15);
}

TEST(Driver, LatLongOnlyScreens) {
  PROJDATA rec = Record(PT_LATLONG, "xOrg=5;Scale=3");
  CProjector projector(&rec);
  PROJPOINT pts[] = {{370, 95}, {kInf, 0}};
  EXPECT_TRUE(projector.Forward(pts, 2));
  EXPECT_EQ(pts[0].x, 370);
  EXPECT_EQ(pts[0].y, 95);
  EXPECT_TRUE(Unplottable(pts[1]));
  EXPECT_EQ(projector.Result(), 1);
}

TEST(Driver, NormalisesGeographicCoordinates) {
  PROJDATA rec = Record(PT_TRANSVERSEMERCATOR, "Lon0=9;R=1000");
  CProjector projector(&rec);
  const PROJPOINT there = Forward(projector, 10, 85);
  for (const auto& same : {PROJPOINT{370, 85}, PROJPOINT{10, 95}, PROJPOINT{730, 445}}) {
    const PROJPOINT p = Forward(projector, same.x, same.y);
    EXPECT_NEAR(p.x, there.x, 1e-9);
    EXPECT_NEAR(p.y, there.y, 1e-9);
  }
  EXPECT_NEAR(Forward(projector, 10, -100).y, Forward(projector, 10, -80).y, 1e-9);
}

TEST(Driver, FalseOriginComesBeforeScale) {
  PROJDATA plain = Record(PT_TRANSVERSEMERCATOR, "Lon0=9"),
           moved = Record(PT_TRANSVERSEMERCATOR, "Lon0=9;xOrg=100;yOrg=-7;Scale=2");
  CProjector a(&plain), b(&moved);
  const PROJPOINT p = Forward(a, 11, 47), q = Forward(b, 11, 47);
  EXPECT_EQ(q.x, (p.x + 100) * 2);
  EXPECT_EQ(q.y, (p.y - 7) * 2);
  const PROJPOINT back = Inverse(b, q.x, q.y);
  EXPECT_NEAR(back.x, 11, 1e-8);
  EXPECT_NEAR(back.y, 47, 1e-8);
  for (const char* absurd : {"Scale=1e305", "Scale=inf", "Scale=nan", "yOrg=nan"}) {
    PROJDATA record = Record(PT_TRANSVERSEMERCATOR, absurd);
    CProjector projector(&record);
    EXPECT_TRUE(Unplottable(Forward(projector, 11, 47))) << absurd;
    EXPECT_EQ(projector.Result(), 1) << absurd;
  }
}

// A bad point changes only itself, an array of n equals n arrays of one, and the two directions count a bad input
// differently.
// Bonne about the pole asserts at its apex. The points before it are converted, it and those behind it stay as given.
TEST(Driver, LeavesTheArrayWholeWhereAPointAsserts) {
  PROJDATA record = Record(PT_BONNE, "R=6371000;Lat1=90");
  CProjector bonne(&record);
  PROJPOINT alone{30, 40};
  ASSERT_TRUE(bonne.Forward(&alone, 1));
  for (const int before : {0, 1, 2, 7, 8, 16, 37}) {
    std::vector<PROJPOINT> points(static_cast<std::size_t>(before), PROJPOINT{30, 40});
    points.push_back({10, 90});
    for (int i = 0; i < 5; ++i) points.push_back({50, 60});
    EXPECT_THROW(bonne.Forward(points.data(), static_cast<int>(points.size())), shr::Exception);
    for (std::size_t i = 0; i < points.size(); ++i) {
      const PROJPOINT expected = i < static_cast<std::size_t>(before)    ? alone
                                 : i == static_cast<std::size_t>(before) ? PROJPOINT{10, 90}
                                                                         : PROJPOINT{50, 60};
      EXPECT_EQ(std::memcmp(&points[i], &expected, sizeof expected), 0) << i << " with " << before << " before";
    }
  }
}

// Modules keep the constants of the record that they saw last: calls that alternate between records, ways to compute
// and threads give what each of them gives alone.
TEST(Driver, HandlesDoNotMixTheirConstants) {
  struct Case {
    CProjector projector;
    PROJPOINT place, forward, inverse;

    void Check() {
      PROJPOINT p = place;
      projector.Forward(&p, 1);
      EXPECT_EQ(std::memcmp(&p, &forward, sizeof p), 0);
      projector.Inverse(&p, 1);
      EXPECT_EQ(std::memcmp(&p, &inverse, sizeof p), 0);
    }
  };
  std::vector<Case> cases;
  for (const ProjectionForm& form : AllProjections()) {
    for (const double radius : {6378137.0, 6371000.0}) {
      for (const ProjAccuracy accuracy : {PA_STATED, PA_EXACT}) {
        PROJDATA record = form.MakeRecord();
        record.Ellipsoid = ET_USER_DEFINED;
        record.MajorRadius = radius;
        record.Flattening = radius > 6371000 ? 0.0034 : 0;
        Case each{CProjector(&record), form.Place(0.6, 0.55), {}, {}};
        EXPECT_TRUE(each.projector.SetAccuracy(accuracy));
        for (int i = 0; i < 2; ++i) {  // made anew, and kept
          each.forward = each.place;
          each.projector.Forward(&each.forward, 1);
          each.inverse = each.forward;
          each.projector.Inverse(&each.inverse, 1);
          if (i == 0) each.Check();
        }
        cases.push_back(each);
      }
    }
  }
  for (Case& each : cases) each.Check();
  std::vector<Case> others = cases;
  for (std::size_t i = 0; i < cases.size(); ++i)
    ASSERT_EQ(others[i].projector.Accuracy(), cases[i].projector.Accuracy());
  std::thread thread([&others] {
    for (int turn = 0; turn < 20; ++turn) {
      for (Case& each : others) each.Check();
    }
  });
  for (int turn = 0; turn < 20; ++turn) {
    for (std::size_t i = cases.size(); i-- > 0;) cases[i].Check();
  }
  thread.join();
}

TEST(Driver, PointsAreIndependent) {
  PROJDATA rec = Record(PT_LAMBERT, "Lat0=23;Lat1=33;Lat2=45;Lon0=-96;xOrg=1e6");
  CProjector projector(&rec);
  std::vector<PROJPOINT> pts(1000);  // more than one block
  for (int i = 0; i < 1000; ++i) pts[static_cast<std::size_t>(i)] = {-150 + 0.1 * i, -60 + 0.13 * i};
  pts[3] = {kNaN, 5};
  pts[300] = {5, -kInf};
  pts[700] = {DBL_MAX, DBL_MAX};
  pts[701] = {DBL_MAX, 12};
  std::vector<PROJPOINT> all = pts;
  ASSERT_TRUE(projector.Forward(all.data(), 1000));
  EXPECT_EQ(projector.Result(), 1);
  for (std::size_t i = 0; i < pts.size(); ++i) {
    ASSERT_TRUE(projector.Forward(&pts[i], 1));
    EXPECT_EQ(std::memcmp(&pts[i], &all[i], sizeof pts[i]), 0) << i;
  }
  EXPECT_TRUE(Unplottable(all[3]) && Unplottable(all[300]) && Unplottable(all[700]));
  EXPECT_EQ(all[701].x, DBL_MAX);

  PROJPOINT mixed[] = {{kNaN, 1}, {1e6, 1e5}};
  ASSERT_TRUE(projector.Inverse(mixed, 2));
  EXPECT_TRUE(Unplottable(mixed[0]));
  EXPECT_EQ(projector.Result(), 0);
}

}  // namespace
}  // namespace orvex::test
