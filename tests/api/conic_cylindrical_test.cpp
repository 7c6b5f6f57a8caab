// Albers, equidistant conic, Mercator, Miller and equidistant cylindrical: printed and computed values, what each map
// keeps, then the corners.
#include "support/Projection.h"

namespace orvex::test {

namespace {

constexpr const char* kAmerica = "Lat0=23;Lon0=-96;Lat1=29.5;Lat2=45.5";
constexpr const char* kAustralia = "R=6371000;Lat0=-32;Lon0=132;Lat1=-18;Lat2=-36";

TEST(ConicCylindrical, published) {
  CheckGolden("published_conic_cylindrical.csv");
}

TEST(ConicCylindrical, computed) {
  CheckGolden("conic_cylindrical.csv");
}

// What a map promises at a place; parallels and meridians cross at right angles on all of these.
enum Promise : unsigned { TrueParallel = 1, TrueMeridian = 2, EqualArea = 4, Conformal = 8 };

TEST(ConicCylindrical, keepsWhatItPromises) {
  const struct {
    ProjType type;
    const char* parameters;
    double lon, lat;
    unsigned promise;
  } rows[] = {
      {PT_ALBERS, kAmerica, -120, 29.5, TrueParallel | TrueMeridian | EqualArea | Conformal},
      {PT_ALBERS, kAmerica, -71, 45.5, TrueParallel | TrueMeridian | EqualArea | Conformal},
      {PT_ALBERS, kAmerica, 15, -38, EqualArea},
      {PT_ALBERS, kAustralia, 101, -36, TrueParallel | TrueMeridian | EqualArea},
      {PT_ALBERS, kAustralia, 170, 52, EqualArea},
      {PT_EQUICONIC, kAustralia, 150, -18, TrueParallel | TrueMeridian},
      {PT_EQUICONIC, kAustralia, 99, 61, TrueMeridian},
      {PT_EQUICONIC, "R=6371000;Lat0=10;Lon0=7;Lat1=-20;Lat2=61", 88, 61, TrueParallel | TrueMeridian},
      {PT_MERCATOR, "Lon0=20", 31, 0, TrueParallel | Conformal},
      {PT_MERCATOR, "Lon0=20;Lat0=-41", -60, -41, TrueParallel | Conformal},
      {PT_MERCATOR, "Lon0=20", -77, 79, Conformal},
      {PT_MERCATOR, "R=1737400;Lat0=35", -77, -66, Conformal},
      {PT_MILLER, "R=6371000", 40, 0, TrueParallel | TrueMeridian},
      {PT_EQUICYLINDRICAL, "R=6371000;Lat1=-37", 40, 37, TrueParallel | TrueMeridian},
      {PT_EQUICYLINDRICAL, "R=6371000;Lat1=-37", -3, 71, TrueMeridian},
  };
  constexpr double tolerance = 2e-11;  // four roundings of 2e7 m over a step of 1.1 km, as a scale
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "type " << row.type << " at " << row.lon << ", " << row.lat);
    PROJDATA rec = Record(row.type, row.parameters);
    CProjector projector(&rec);
    const LocalScale scale = ScaleAt(projector, row.lon, row.lat);
    EXPECT_NEAR(scale.cosine, 0, tolerance);
    const auto holds = [&](Promise promise, double value) {
      return !(row.promise & promise) || std::fabs(value - 1) <= tolerance;
    };
    EXPECT_TRUE(holds(TrueParallel, scale.k)) << scale.k - 1;
    EXPECT_TRUE(holds(TrueMeridian, scale.h)) << scale.h - 1;
    EXPECT_TRUE(holds(EqualArea, scale.area)) << scale.area - 1;
    EXPECT_TRUE(holds(Conformal, scale.h / scale.k)) << scale.h / scale.k - 1;
  }
}

// The poles lie at infinity, on the ellipsoid already the places whose sine is 1; a refused point leaves its neighbours
// alone.
TEST(ConicCylindrical, mercatorRefusesThePoles) {
  for (const char* parameters : {"R=6371000;Lon0=5", "a=6378137;f=0.00335;Lon0=5"}) {
    const bool sphere = parameters[0] == 'R';
    PROJDATA rec = Record(PT_MERCATOR, parameters);
    CProjector projector(&rec);
    PROJPOINT pts[] = {{10, 90}, {12, 89.5}, {14, -90}, {10, 89.9999999}, {10, -89.9999999}};
    EXPECT_TRUE(projector.Forward(pts, 5));
    EXPECT_EQ(projector.Result(), 1);
    EXPECT_TRUE(Unplottable(pts[0]) && Unplottable(pts[2]));
    EXPECT_TRUE(Unplottable(pts[3]) != sphere && Unplottable(pts[4]) != sphere);
    const PROJPOINT alone = Forward(projector, 12, 89.5);
    EXPECT_EQ(projector.Result(), 0);
    EXPECT_EQ(pts[1].x, alone.x);
    EXPECT_EQ(pts[1].y, alone.y);
  }
}

// The inverse refuses the line through the apex across the central meridian; elsewhere the sphere clamps what lies
// outside the rim and the ellipsoid refuses it. With Lat0 and Lat1 at the pole the apex is the origin exactly.
TEST(ConicCylindrical, albersOutsideTheMap) {
  for (const char* form : {"R=6371000", "a=6378137;f=0.00335"}) {
    const bool sphere = form[0] == 'R';
    for (const double side : {1.0, -1.0}) {
      SCOPED_TRACE(testing::Message() << form << " side " << side);
      PROJDATA rec = Record(PT_ALBERS, form);
      rec.Lat0 = rec.Lat1 = side * 90;
      rec.Lat2 = side * 60;
      CProjector projector(&rec);
      EXPECT_TRUE(Unplottable(Inverse(projector, 5e5, 0)));
      EXPECT_FALSE(Unplottable(Inverse(projector, 5e5, side * -1e5)));
      const PROJPOINT far = Inverse(projector, 0, side * -5e7);
      EXPECT_EQ(far.y, sphere ? side * -90 : DBL_MAX);
      EXPECT_EQ(projector.Result(), sphere ? 0 : 1);
    }
  }
}

// The wrap flag belongs to the equidistant conic's forward; its inverse always folds, Albers never does either.
TEST(ConicCylindrical, longitudeWrapping) {
  const auto xy = [](ProjType type, bool wrap, double lon) {
    PROJDATA rec = Record(type, "R=6371000;Lat0=30;Lon0=100;Lat1=15;Lat2=65");
    rec.bWrapLon = wrap;
    CProjector projector(&rec);
    return Forward(projector, lon, 40);
  };
  EXPECT_NEAR(xy(PT_EQUICONIC, true, -90).x, xy(PT_EQUICONIC, false, 270).x, 1e-8);
  EXPECT_GT(std::fabs(xy(PT_EQUICONIC, false, -90).x - xy(PT_EQUICONIC, false, 270).x), 1e6);
  EXPECT_EQ(xy(PT_ALBERS, true, -90).x, xy(PT_ALBERS, false, -90).x);

  for (const ProjType type : {PT_EQUICONIC, PT_ALBERS}) {
    PROJDATA rec = Record(type, "R=6371000;Lat0=30;Lon0=170;Lat1=15;Lat2=65");
    CProjector projector(&rec);
    const PROJPOINT p = Forward(projector, 195, 40);
    EXPECT_NEAR(Inverse(projector, p.x, p.y).x, type == PT_EQUICONIC ? -165 : 195, 1e-12);
  }
}

TEST(ConicCylindrical, sphereOnlyMapsIgnoreTheFlattening) {
  for (const ProjType type : {PT_EQUICONIC, PT_MILLER, PT_EQUICYLINDRICAL}) {
    PROJDATA flat = Record(type, kAmerica), round = Record(type, "R=6378137;Lat0=23;Lon0=-96;Lat1=29.5;Lat2=45.5");
    CProjector ellipsoid(&flat), sphere(&round);
    const PROJPOINT a = Forward(ellipsoid, -75, 35), b = Forward(sphere, -75, 35);
    EXPECT_EQ(a.x, b.x);
    EXPECT_EQ(a.y, b.y);
  }
}

}  // namespace

}  // namespace orvex::test
