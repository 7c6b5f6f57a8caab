// Azimuthal projections: printed and computed values, the property each keeps, and the corners fixed by the interface.
#include "support/Projection.h"

namespace orvex::test {

namespace {

/// Runs check(projector, lon, lat) at points of the nearer hemisphere about centres of every aspect.
template <class Check>
void AboutEveryCentre(ProjType type, const std::string& parameters, const std::string& centreField, Check check) {
  for (const double lat0 : {90.0, -90.0, 0.0, 40.0, -33.25}) {
    PROJDATA rec = Record(type, parameters + ";Lon0=-100;" + centreField + "=" + std::to_string(lat0));
    CProjector projector(&rec);
    for (const PROJPOINT& d : {PROJPOINT{0.5, 0.25}, {-40, 12}, {33, -21}, {61, 35}, {-8, -57}}) {
      const double lat = std::abs(lat0) == 90 ? std::copysign(89 - std::abs(d.y), lat0) : lat0 + d.y / 2;
      SCOPED_TRACE(std::to_string(lat0) + ": " + std::to_string(d.x - 100) + ", " + std::to_string(lat));
      check(projector, d.x - 100, lat);
    }
  }
}

TEST(Azimuthal, PublishedExamples) {
  CheckGolden("published_azimuthal.csv");
}

TEST(Azimuthal, AgreesWithHighPrecision) {
  CheckGolden("azimuthal.csv");
}

// 4e-10: rounding of coordinates of 1e7 m over a step of 1 km.
TEST(Azimuthal, StereographicIsConformal) {
  for (const char* figure : {"R=6370997;K0=0.97", "a=6378388;f=0.0033670033670033670;K0=0.994"}) {
    AboutEveryCentre(PT_STEREOGRAPHIC, figure, "Lat0", [](CProjector& projector, double lon, double lat) {
      const LocalScale scale = ScaleAt(projector, lon, lat);
      EXPECT_NEAR(scale.h / scale.k, 1, 4e-10);
      EXPECT_NEAR(scale.cosine, 0, 4e-10);
      EXPECT_GT(scale.area, 0);
    });
  }
}

TEST(Azimuthal, LambertKeepsAreas) {
  AboutEveryCentre(PT_LAMBERTAZIMUTHAL, "R=6370997", "Lat1", [](CProjector& projector, double lon, double lat) {
    EXPECT_NEAR(ScaleAt(projector, lon, lat).area, 1, 4e-10);
  });
}

TEST(Azimuthal, EquidistantKeepsDistancesFromTheCentre) {
  AboutEveryCentre(PT_AZIMUTHALEQUI, "R=6370997", "Lat1", [](CProjector& projector, double lon, double lat) {
    PROJDATA rec;
    projector.GetInfo(&rec);
    const PROJPOINT p = Forward(projector, lon, lat);
    const double arc = ArcDegrees({lon, lat}, {rec.Lon0, rec.Lat1}) * kRadiansPerDegree;
    EXPECT_NEAR(std::hypot(p.x, p.y), arc * 6370997, 1e-7);  // the arc is good to 1e-14 radians
  });
}

TEST(Azimuthal, GnomonicGreatCirclesAreStraight) {
  AboutEveryCentre(PT_GNOMONIC, "R=1", "Lat1", [](CProjector& projector, double lon, double lat) {
    // Great circle through the point and 10 degrees east of it on the same parallel: its vertex lies between them.
    const double vertex =
        std::atan(std::tan(lat * kRadiansPerDegree) / std::cos(5 * kRadiansPerDegree)) / kRadiansPerDegree;
    const PROJPOINT a = Forward(projector, lon, lat), b = Forward(projector, lon + 10, lat);
    const PROJPOINT middle = Forward(projector, lon + 5, vertex);
    EXPECT_NEAR((middle.x - a.x) * (b.y - a.y), (middle.y - a.y) * (b.x - a.x), 1e-13);
  });
}

// The inverses that test the denominator of the longitude against zero refuse a pole whose rounded image makes it
// exactly 0, and nothing beside it; the others return every pole. Images of the pole in 89 aspects, each with 20
// neighbours on the map: at the limb of the orthographic map ten units in the last place of y are 7e-12 degrees.
TEST(Azimuthal, SomeInversesMayRefuseThePole) {
  const std::pair<ProjType, bool> modules[] = {{PT_STEREOGRAPHIC, true},
                                               {PT_ORTHOGRAPHIC, true},
                                               {PT_LAMBERTAZIMUTHAL, true},
                                               {PT_GNOMONIC, false},
                                               {PT_AZIMUTHALEQUI, false}};
  for (const auto& [type, mayRefuse] : modules) {
    int refused = 0;
    for (int lat = 1; lat < 90; ++lat) {
      PROJDATA rec = Record(type, "R=1;Lat0=" + std::to_string(lat) + ";Lat1=" + std::to_string(lat));
      CProjector projector(&rec);
      double y = Forward(projector, 0, 90).y * (1 - 10 * DBL_EPSILON);
      for (int i = 0; i <= 20; ++i, y = std::nextafter(y, 1e9)) {
        const PROJPOINT p = Inverse(projector, 0, y);
        if (Unplottable(p)) {
          ++refused;
        } else {
          EXPECT_NEAR(p.y, 90, 1e-11) << type << " " << lat;
        }
      }
    }
    EXPECT_EQ(refused > 0, mayRefuse) << type;
    EXPECT_LT(refused, 200) << type;
  }
}

TEST(Azimuthal, Corners) {
  const CsvFile csv("azimuthal_corners.csv");
  for (std::size_t row = 0; row < csv.Rows(); ++row) {
    PROJDATA rec = Record(TypeOf(csv.Text(row, "projection")), csv.Text(row, "parameters"));
    CProjector projector(&rec);
    const double x = csv.Number(row, "x"), y = csv.Number(row, "y");
    const bool refused = csv.Text(row, "result_x").empty();
    const PROJPOINT p = csv.Text(row, "direction") == "forward" ? Forward(projector, x, y) : Inverse(projector, x, y);
    SCOPED_TRACE(csv.Text(row, "projection") + " " + csv.Text(row, "parameters") + ": " + csv.Text(row, "why"));
    EXPECT_EQ(Unplottable(p), refused) << p.x << ", " << p.y;
    EXPECT_EQ(projector.Result(), refused ? 1 : 0);
    if (refused) continue;
    const double expectedX = csv.Number(row, "result_x"), expectedY = csv.Number(row, "result_y");
    EXPECT_NEAR(p.x, expectedX, 1e-12 * std::max(1.0, std::abs(expectedX)));
    EXPECT_NEAR(p.y, expectedY, 1e-12 * std::max(1.0, std::abs(expectedY)));
  }
}

}  // namespace

}  // namespace orvex::test
