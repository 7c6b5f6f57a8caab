// Azimuthal projections: printed and computed values, the property each keeps, and the corners fixed by the interface.
#include "support/Projection.h"

#include <array>

namespace orvex::test {

namespace {

constexpr PROJPOINT kNone{DBL_MAX, DBL_MAX};

enum Direction { kForward, kInverse };

struct Corner {
  const char* why;
  ProjType type;
  const char* parameters;
  Direction direction;
  PROJPOINT in, out;  // kNone: refused
};

void CheckCorners(std::initializer_list<Corner> corners) {
  for (const Corner& corner : corners) {
    SCOPED_TRACE(corner.why);
    PROJDATA rec = Record(corner.type, corner.parameters);
    CProjector projector(&rec);
    const PROJPOINT in = corner.in, expected = corner.out;
    const PROJPOINT p = corner.direction == kForward ? Forward(projector, in.x, in.y) : Inverse(projector, in.x, in.y);
    EXPECT_EQ(Unplottable(p), Unplottable(expected)) << p.x << ", " << p.y;
    EXPECT_EQ(projector.Result(), Unplottable(expected) ? 1 : 0);
    if (Unplottable(expected)) continue;
    EXPECT_NEAR(p.x, expected.x, 1e-12 * std::max(1.0, std::abs(expected.x)));
    EXPECT_NEAR(p.y, expected.y, 1e-12 * std::max(1.0, std::abs(expected.y)));
  }
}

/// Points of the nearer hemisphere of a centre.
constexpr std::array<PROJPOINT, 5> kAround{{{0.5, 0.25}, {-40, 12}, {33, -21}, {61, 35}, {-8, -57}}};

/// Runs check(projector, lon, lat) about centres of every aspect. Points fall where they may on the sphere: refused
/// ones are left out, and enough must remain.
template <class Check>
void AboutEveryCentre(ProjType type, const std::string& parameters, const char* centreField, Check check) {
  for (const PROJPOINT& centre : {PROJPOINT{20, 90}, PROJPOINT{-140, -90}, PROJPOINT{33, 0}, PROJPOINT{-100, 40}}) {
    PROJDATA rec = Record(
        type, parameters + ";" + centreField + "=" + std::to_string(centre.y) + ";Lon0=" + std::to_string(centre.x));
    CProjector projector(&rec);
    int checked = 0;
    for (const PROJPOINT& offset : kAround) {
      const double lat = centre.y == 90    ? 89 - std::abs(offset.y)
                         : centre.y == -90 ? std::abs(offset.y) - 89
                                           : centre.y + offset.y / 2;
      const double lon = centre.x + offset.x;
      SCOPED_TRACE(std::to_string(centre.y) + ": " + std::to_string(lon) + ", " + std::to_string(lat));
      if (Unplottable(Forward(projector, lon, lat))) continue;
      check(projector, lon, lat);
      ++checked;
    }
    EXPECT_EQ(checked, 5);
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

// The inverses that refuse a vanishing denominator of the longitude refuse a pole whose rounded image makes it exactly
// 0, and nothing beside it; the others return every pole. Images of the pole in 89 aspects, each with 20 neighbours on
// the map: at the limb of the orthographic map ten units in the last place of y are 7e-12 degrees.
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

// A quarter turn from the centre the cosine of the arc is 0 in real numbers and never in doubles: the whole circle
// comes back. It limits the stereographic and orthographic maps and runs inside two others. Forward, the rounding of
// the place decides on the rim itself; just inside it every point is plotted, but for what the ellipsoid refuses.
TEST(Azimuthal, QuarterTurnFromTheCentreComesBack) {
  const struct {
    ProjType type;
    const char* figure;
    double toleranceDeg;
  } maps[] = {{PT_STEREOGRAPHIC, "R=6370997;K0=1", 1e-12},
              {PT_STEREOGRAPHIC, "R=1;K0=0.7", 1e-12},
              {PT_STEREOGRAPHIC, "a=6378137;f=0.0033528106647474805;K0=1", 0.4},  // a circle of conformal latitudes
              {PT_ORTHOGRAPHIC, "R=6370997", 2e-6},                               // the arc sine at 1
              {PT_LAMBERTAZIMUTHAL, "R=6370997", 1e-12},
              {PT_AZIMUTHALEQUI, "R=6370997", 1e-12}};
  for (const auto& map : maps) {
    const bool ellipsoid = map.figure[0] == 'a';
    for (const double centreLat : {0.0, 90.0, -90.0, 40.0, -27.5, 0.001, 89.0}) {
      const std::string lat = std::to_string(centreLat);
      PROJDATA rec = Record(map.type, std::string(map.figure) + ";Lat0=" + lat + ";Lat1=" + lat);
      CProjector projector(&rec);
      SCOPED_TRACE(testing::Message() << map.type << " " << map.figure << " about " << lat);
      const PROJPOINT east = Forward(projector, 90, 0);  // on the circle in every aspect
      const double radius = std::hypot(east.x, east.y);
      int lost = 0, refused = 0;
      for (int i = 0; i < 1440; ++i) {
        const double azimuth = i * kRadiansPerDegree / 4;
        PROJPOINT rim{radius * std::sin(azimuth), radius * std::cos(azimuth)};
        if (i % 360 == 0)
          rim = {i % 720 ? std::copysign(radius, rim.x) : 0, i % 720 ? 0 : std::copysign(radius, rim.y)};
        if (map.type == PT_LAMBERTAZIMUTHAL && std::abs(centreLat) == 90 && rim.y == 0) continue;  // refused on purpose
        const PROJPOINT place = Inverse(projector, rim.x, rim.y);
        lost += Unplottable(place);
        EXPECT_NEAR(ArcDegrees(place, {0, centreLat}), 90, map.toleranceDeg) << i;
        const PROJPOINT inside = Inverse(projector, rim.x * (1 - 1e-12), rim.y * (1 - 1e-12));
        const PROJPOINT again = Forward(projector, inside.x, inside.y);
        refused += Unplottable(again);
        if (Unplottable(again)) continue;
        EXPECT_LE(std::hypot(again.x - rim.x, again.y - rim.y), radius * (ellipsoid ? 1e-9 : 4e-12)) << i;
      }
      EXPECT_EQ(lost, 0);
      EXPECT_LE(refused, ellipsoid ? 720 : 0);
    }
  }
}

TEST(Azimuthal, StereographicCorners) {
  const double wgs84 = 6378137;
  CheckCorners({
      {"sphere: the centre comes back", PT_STEREOGRAPHIC, "R=1;Lat0=40;Lon0=-100", kInverse, {0, 0}, {-100, 40}},
      {"its longitude is wrapped", PT_STEREOGRAPHIC, "R=1;Lat0=40;Lon0=200", kInverse, {1e-8, 0}, {-160, 40}},
      {"and at a pole", PT_STEREOGRAPHIC, "R=1;Lat0=90;Lon0=30", kInverse, {0, 0}, {30, 90}},
      {"ellipsoid: the centre is refused", PT_STEREOGRAPHIC, "Lat0=40;Lon0=-100", kInverse, {0, 0}, kNone},
      {"at a pole too", PT_STEREOGRAPHIC, "Lat0=-90", kInverse, {0, 0}, kNone},
      {"the pole as a centre is plotted", PT_STEREOGRAPHIC, "Lat0=-90", kForward, {12, -90}, {0, 0}},
      {"sphere: no antipode", PT_STEREOGRAPHIC, "R=1;Lat0=40;Lon0=-100", kForward, {80, -40}, kNone},
      {"edge of the hemisphere", PT_STEREOGRAPHIC, "R=1;K0=0.5", kForward, {90, 0}, {1, 0}},
      {"just beyond it", PT_STEREOGRAPHIC, "R=1", kForward, {90.0000001, 0}, kNone},
      {"ellipsoid: just beyond it", PT_STEREOGRAPHIC, "Lat0=90", kForward, {20, -0.0000001}, kNone},
      {"the pole on the rim", PT_STEREOGRAPHIC, "R=1;K0=0.5", kForward, {0, 90}, {0, 1}},
      {"and back", PT_STEREOGRAPHIC, "R=1;K0=0.5", kInverse, {0, 1}, {0, 90}},
      {"the rim east of an oblique centre", PT_STEREOGRAPHIC, "R=1;K0=0.5;Lat0=40", kInverse, {1, 0}, {90, 0}},
      {"oblique ellipsoid: no north pole", PT_STEREOGRAPHIC, "Lat0=40", kForward, {0, 90}, kNone},
      {"equatorial ellipsoid: no north pole", PT_STEREOGRAPHIC, "", kForward, {0, 90}, kNone},
      {"but the south pole", PT_STEREOGRAPHIC, "", kForward, {0, -90}, {0, -2 * wgs84}},
      {"forward: a centre 1e-6 degrees off the equator is on it",
       PT_STEREOGRAPHIC,
       "a=1;f=0.003;Lat0=1e-6",
       kForward,
       {0, 0},
       {0, 0}},
  });
}

TEST(Azimuthal, OrthographicCorners) {
  CheckCorners({
      {"the limiting circle is plotted", PT_ORTHOGRAPHIC, "R=2", kForward, {90, 30}, {std::sqrt(3.0), 1}},
      {"just beyond it", PT_ORTHOGRAPHIC, "R=2", kForward, {90.0000001, 30}, kNone},
      {"outside the circle: its nearest point", PT_ORTHOGRAPHIC, "R=2", kInverse, {3, 0}, {90, 0}},
      {"in a polar aspect", PT_ORTHOGRAPHIC, "R=2;Lat0=-90", kInverse, {5, 5}, {45, 0}},
      {"the centre comes back, longitude not wrapped",
       PT_ORTHOGRAPHIC,
       "R=1;Lat0=7;Lon0=200",
       kInverse,
       {0, 0},
       {200, 7}},
      {"nor that of any other point", PT_ORTHOGRAPHIC, "R=1;Lon0=170", kInverse, {0.5, 0}, {200, 0}},
      {"the flattening is not read", PT_ORTHOGRAPHIC, "a=1;f=0.1;Lat0=90", kForward, {90, 60}, {0.5, 0}},
  });
}

TEST(Azimuthal, GnomonicCorners) {
  const double tan89999 = 57295.779507264562;  // tan 89.999 degrees
  CheckCorners({
      {"90 degrees away", PT_GNOMONIC, "R=1;Lat1=90", kForward, {0, 0}, kNone},
      {"equatorial: 90 degrees of longitude", PT_GNOMONIC, "R=1", kForward, {90, 0}, kNone},
      {"and within 0.00001 of cosine", PT_GNOMONIC, "R=1", kForward, {89.9995, 0}, kNone},
      {"not farther", PT_GNOMONIC, "R=1", kForward, {89.999, 0}, {tan89999, 0}},
      {"south polar forward is mirrored", PT_GNOMONIC, "R=1;Lat1=-90", kForward, {0, -45}, {0, -1}},
      {"only north to south", PT_GNOMONIC, "R=1;Lat1=-90", kForward, {90, -45}, {1, 0}},
      {"its inverse is not", PT_GNOMONIC, "R=1;Lat1=-90", kInverse, {0, 1}, {0, -45}},
      {"a centre within 0.0001 degrees of a pole", PT_GNOMONIC, "R=1;Lat1=89.99995", kForward, {0, 90}, {0, 0}},
      {"or of the equator", PT_GNOMONIC, "R=1;Lat1=-0.00005", kForward, {0, 0}, {0, 0}},
      {"the centre comes back wrapped", PT_GNOMONIC, "R=1;Lat1=40;Lon0=200", kInverse, {0, 0.9e-7}, {-160, 40}},
      {"Lat0 is not read", PT_GNOMONIC, "R=1;Lat0=77;Lat1=0", kForward, {45, 0}, {1, 0}},
  });
}

TEST(Azimuthal, LambertCorners) {
  CheckCorners({
      {"the centre is plotted", PT_LAMBERTAZIMUTHAL, "R=1;Lat1=40;Lon0=-100", kForward, {-100, 40}, {0, 0}},
      {"but not inverted", PT_LAMBERTAZIMUTHAL, "R=1;Lat1=40;Lon0=-100", kInverse, {0, 0}, kNone},
      {"nor at a pole", PT_LAMBERTAZIMUTHAL, "R=1;Lat1=90", kInverse, {0, 0}, kNone},
      {"where y = 0 is refused as well", PT_LAMBERTAZIMUTHAL, "R=1;Lat1=-90", kInverse, {1, 0}, kNone},
      {"no antipode: oblique", PT_LAMBERTAZIMUTHAL, "R=1;Lat1=30", kForward, {180, -30}, kNone},
      {"equatorial", PT_LAMBERTAZIMUTHAL, "R=1", kForward, {180, 0}, kNone},
      {"polar", PT_LAMBERTAZIMUTHAL, "R=1;Lat1=90", kForward, {0, -90}, kNone},
      {"outside the circle: the antipode", PT_LAMBERTAZIMUTHAL, "R=1;Lat1=40;Lon0=-100", kInverse, {0, 3}, {80, -40}},
      {"longitudes are wrapped",
       PT_LAMBERTAZIMUTHAL,
       "R=1;Lon0=170",
       kInverse,
       {2 * std::sin(kRadiansPerDegree * 15), 0},
       {-160, 0}},
      {"0.000005 degrees from the pole is oblique",
       PT_LAMBERTAZIMUTHAL,
       "R=1;Lat1=89.999995",
       kForward,
       {0, 90},
       {0, 8.7266462599716e-8}},
  });
}

TEST(Azimuthal, EquidistantCorners) {
  const double pi = 3.14159265358979323846;
  CheckCorners({
      {"oblique: the centre is refused", PT_AZIMUTHALEQUI, "R=1;Lat1=40;Lon0=-100", kForward, {-100, 40}, kNone},
      {"and what is within 1e-9 of cosine", PT_AZIMUTHALEQUI, "R=1;Lat1=40", kForward, {0, 40.002}, kNone},
      {"not farther", PT_AZIMUTHALEQUI, "R=1;Lat1=40", kForward, {0, 40.003}, {0, 5.2359877559829887e-5}},
      {"and the antipode", PT_AZIMUTHALEQUI, "R=1;Lat1=40;Lon0=-100", kForward, {80, -40}, kNone},
      {"equatorial: the centre is plotted", PT_AZIMUTHALEQUI, "R=1", kForward, {0, 0}, {0, 0}},
      {"and the antipode with it", PT_AZIMUTHALEQUI, "R=1", kForward, {180, 0}, {0, 0}},
      {"polar: the pole is plotted", PT_AZIMUTHALEQUI, "R=1;Lat1=-90", kForward, {0, -90}, {0, 0}},
      {"and the other pole as a circle", PT_AZIMUTHALEQUI, "R=1;Lat1=90", kForward, {90, -90}, {pi, 0}},
      {"the centre is not inverted: oblique", PT_AZIMUTHALEQUI, "R=1;Lat1=40", kInverse, {0, 0.9e-8}, kNone},
      {"polar", PT_AZIMUTHALEQUI, "R=1;Lat1=90", kInverse, {0, 0}, kNone},
      {"0.000005 degrees from the pole is polar", PT_AZIMUTHALEQUI, "R=1;Lat1=89.999995", kForward, {0, 90}, {0, 0}},
      {"longitudes are wrapped", PT_AZIMUTHALEQUI, "R=1;Lon0=170", kInverse, {pi / 6, 0}, {-160, 0}},
  });
}

}  // namespace

}  // namespace orvex::test
