// Transverse Mercator, UTM and Lambert conformal conic: published and independent values, properties, corners.
#include "support/Projection.h"

namespace orvex::test {
namespace {

TEST(TMercLambert, PublishedExamples) {
  CheckGolden("published_tmerc_lambert.csv");
}

TEST(TMercLambert, AgreeWithFortyDigits) {
  CheckGolden("tmerc_lambert.csv");
}

TEST(TMercLambert, AreConformal) {
  const struct {
    ProjType type;
    const char* parameters;
    double lon, lat, tolerance;
  } cases[] = {{PT_TRANSVERSEMERCATOR, "Lon0=15;K0=0.9996", 17.5, 51, 1e-9},
               {PT_UTM, "Lon0=15;bSouth=1", 12.25, -33, 1e-9},
               {PT_TRANSVERSEMERCATOR, "Lon0=15;R=6370997", 65, -20, 1e-9},
               {PT_LAMBERT, "Lat0=23;Lat1=33;Lat2=45;Lon0=-96", -75, 35, 1e-9},
               {PT_LAMBERT, "Lat0=-40;Lat1=-30;Lat2=-50;Lon0=145;R=6370997", 100, -62, 1e-9}};
  for (const auto& c : cases) {
    PROJDATA rec = Record(c.type, c.parameters);
    CProjector projector(&rec);
    const LocalScale s = ScaleAt(projector, c.lon, c.lat);
    EXPECT_NEAR(s.h / s.k, 1, c.tolerance) << c.parameters;
    EXPECT_NEAR(s.cosine, 0, c.tolerance) << c.parameters;
    EXPECT_GT(s.area, 0) << c.parameters;  // not mirrored
  }
}

TEST(TMercLambert, TrueScaleWhereThePrintSaysSo) {
  PROJDATA tm = Record(PT_TRANSVERSEMERCATOR, "Lon0=9;Lat0=30;K0=0.9996");
  CProjector meridian(&tm);
  EXPECT_NEAR(ScaleAt(meridian, 9, 61).h, 0.9996, 1e-9);  // the arc series leaves out the eighth power of e
  PROJDATA lcc = Record(PT_LAMBERT, "Lat0=23;Lat1=33;Lat2=45;Lon0=-96;K0=0.5");  // K0 is not used by the cone
  CProjector cone(&lcc);
  for (const double parallel : {33.0, 45.0}) EXPECT_NEAR(ScaleAt(cone, -80, parallel).k, 1, 1e-10);
}

// The inverse delivers the previous estimate at a tolerance of 1.19e-6 radians: up to 7.6 m, published as 0.51 m at
// most in the state plane zones. The forward of the inverse must stay inside that.
TEST(TMercLambert, LambertRoundTripStaysWithinItsStoppingRule) {
  PROJDATA rec = Record(PT_LAMBERT, "Lat0=23;Lat1=33;Lat2=45;Lon0=-96");
  CProjector cone(&rec);
  double worst = 0;
  for (double lat = -80; lat <= 85; lat += 0.37) {
    const PROJPOINT p = Forward(cone, -75, lat), back = Inverse(cone, p.x, p.y);
    worst = std::max(worst, ArcDegrees(back, {-75, lat}));
  }
  EXPECT_LT(worst, 1.1920928955078125e-06 / kRadiansPerDegree);
  EXPECT_GT(worst, 1e-6);  // the oddity is there
}

TEST(TMercLambert, SphericalCornersOfTheMeridian) {
  PROJDATA rec = Record(PT_TRANSVERSEMERCATOR, "R=1");
  CProjector sphere(&rec);
  PROJPOINT pts[] = {{90, 0}, {10, 20}, {-90, 0}, {90, -30}, {135, 45}, {30, 90}, {135, 90}, {-135, -90}};
  ASSERT_TRUE(sphere.Forward(pts, 8));
  EXPECT_TRUE(Unplottable(pts[0]));  // B is exactly 1
  EXPECT_FALSE(Unplottable(pts[1]));
  EXPECT_TRUE(Unplottable(pts[2]));  // infinite, caught by the driver
  EXPECT_NEAR(pts[3].y, -1.5707963267948966, 1e-15);
  EXPECT_NEAR(pts[4].y, std::atan(std::tan(0.78539816339744831) / std::cos(2.3561944901923448)), 1e-15);  // folded back
  EXPECT_NEAR(pts[5].y, 1.5707963267948966, 1e-15);
  EXPECT_NEAR(pts[6].y, 1.5707963267948966, 1e-15);  // the pole is not folded back
  EXPECT_NEAR(pts[7].y, -1.5707963267948966, 1e-15);
  EXPECT_EQ(sphere.Result(), 1);
}

TEST(TMercLambert, EllipsoidalPolesLieOnTheMeridian) {
  PROJDATA rec = Record(PT_TRANSVERSEMERCATOR, "Lon0=9");
  CProjector projector(&rec);
  const PROJPOINT north = Forward(projector, 44, 90), south = Forward(projector, -20, -90);
  EXPECT_EQ(north.x, 0);
  EXPECT_NEAR(north.y, 10001965.729, 0.001);  // WGS 84 meridian quadrant
  EXPECT_EQ(south.y, -north.y);
}

// The map goes on around the cone: 36 degrees beyond the antimeridian are the chord that 36 degrees are anywhere on the
// parallel.
TEST(TMercLambert, LongitudesPastTheAntimeridianAreNotWrapped) {
  for (const char* figure : {"R=6370997", "Ellipsoid=15"}) {
    PROJDATA rec = Record(PT_LAMBERT, std::string("Lat0=23;Lat1=33;Lat2=45;Lon0=-96;wrap=1;") + figure);
    CProjector cone(&rec);
    const PROJPOINT centre = Forward(cone, -96, 40), east = Forward(cone, -60, 40);
    const PROJPOINT edge = Forward(cone, 84, 40), beyond = Forward(cone, 120, 40);
    const double chord = std::hypot(east.x - centre.x, east.y - centre.y);
    EXPECT_NEAR(std::hypot(beyond.x - edge.x, beyond.y - edge.y), chord, 1e-6);
  }
}

TEST(TMercLambert, DegenerateConesRefusePoints) {
  // Parallels symmetric about the equator pass validation; there is no cone.
  PROJDATA rec = Record(PT_LAMBERT, "Lat1=-30;Lat2=30;R=6370997");
  CProjector sphere(&rec);
  EXPECT_TRUE(Unplottable(Forward(sphere, 10, 20)));
  PROJPOINT p{1000, 2000};
  try {
    sphere.Inverse(&p, 1);
    ADD_FAILURE() << "no assertion";
  } catch (const shr::Exception& e) {
    EXPECT_EQ(e.MessageId(), 20200);
    EXPECT_EQ(e.Line(), 564);
    EXPECT_EQ(e.Source(), "PrjLambert");
  }
  PROJPOINT marker{DBL_MAX, DBL_MAX};  // nothing live: neither assertion nor flag
  EXPECT_TRUE(sphere.Inverse(&marker, 1));
  EXPECT_EQ(sphere.Result(), 0);

  // A parallel at a pole, where the logarithms are of 1e16 and of 0; expected: the equations term by term in doubles.
  PROJDATA pole = Record(PT_LAMBERT, "Lat1=45;Lat2=90;R=6378137"), flat = Record(PT_LAMBERT, "Lat1=45;Lat2=90");
  CProjector polar(&pole), flatPolar(&flat);
  const PROJPOINT beside = Forward(polar, 10, 20);
  EXPECT_NEAR(beside.x, 1333925.1972667181, 1e-6);
  EXPECT_NEAR(beside.y, 3416979.1704188557, 1e-6);
  EXPECT_NEAR(Inverse(polar, beside.x, beside.y).y, 20, 1e-9);
  EXPECT_TRUE(Unplottable(Forward(flatPolar, 10, 20)));

  PROJDATA south = Record(PT_LAMBERT, "Lat0=-40;Lat1=-30;Lat2=-50;Lon0=145");
  CProjector cone(&south);
  const PROJPOINT apexSide = Forward(cone, 100, -90), farPole = Forward(cone, 100, 90);
  EXPECT_NEAR(apexSide.x, 0, 1e-3);    // the tangent of a right angle is 1.6e16, not infinite
  EXPECT_FALSE(Unplottable(farPole));  // radius 0 by the stated rule, not infinite
  EXPECT_EQ(farPole.x, 0);
}

}  // namespace
}  // namespace orvex::test
