// Exact computation over random records: there and back, and what each projection promises of scale, angle, area and
// symmetry, found by differences on the map and not from formulas.
#include <array>
#include <random>

#include "support/Projection.h"

namespace orvex::test {
namespace {

enum Promise { kNothing, kConformal, kEqualArea };

/// Records by a template: {lo hi} is a random number, {figure} a sphere or one of several ellipsoids. Places lie within
/// `reach` degrees of the central meridian.
struct Family {
  ProjType type;
  const char* parameters;
  Promise promise;
  double reach, south, north;
};
constexpr Family kFamilies[] = {
    {PT_MERCATOR, "{figure};Lat0={-60 60};Lon0={-180 180}", kConformal, 180, -85, 85},
    {PT_MILLER, "R=6371000;Lon0={-180 180}", kNothing, 180, -90, 90},
    {PT_EQUICYLINDRICAL, "R=6371000;Lat1={-70 70};Lon0={-180 180}", kNothing, 180, -90, 90},
    {PT_TRANSVERSEMERCATOR, "Lat0={-80 80};Lon0={-180 180};K0={0.9 1.1}", kConformal, 60, -89, 89},
    {PT_TRANSVERSEMERCATOR, "{figure};Lat0={-80 80};Lon0={-180 180}", kConformal, 12, -89, 89},
    {PT_TRANSVERSEMERCATOR, "R=6371000;Lat0={-80 80};Lon0={-180 180}", kConformal, 80, -85, 85},
    {PT_UTM, "Lon0={-180 180}", kConformal, 20, -80, 84},
    {PT_GAUSSKRUGER, "Ellipsoid=8;Lon0={-180 180};xOrg={-1e6 5e6}", kConformal, 30, -89, 89},
    {PT_CASSINI, "R=6371000;Lat0={-60 60};Lon0={-180 180}", kNothing, 60, -85, 85},
    {PT_LAMBERT, "{figure};Lat0={-10 60};Lon0={-180 180};Lat1={5 30};Lat2={30.5 80}", kConformal, 180, -60, 88},
    {PT_LAMBERT, "{figure};Lat0={-60 10};Lon0={-180 180};Lat1={-45 -30};Lat2={-85 -46}", kConformal, 180, -88, 60},
    {PT_LAMBERT, "{figure};Lat0=45;Lon0={-180 180};Lat1={44 45};Lat2={45.2 45.5}", kConformal, 30, 20, 80},
    {PT_ALBERS, "{figure};Lat0={-10 60};Lon0={-180 180};Lat1={5 30};Lat2={30.5 80}", kEqualArea, 180, -60, 88},
    {PT_ALBERS, "{figure};Lat0={-60 10};Lon0={-180 180};Lat1={-45 -30};Lat2={-85 -46}", kEqualArea, 180, -88, 60},
    {PT_EQUICONIC, "R=6371000;Lat0={-10 60};Lon0={-180 180};Lat1={5 30};Lat2={30.5 80}", kNothing, 180, -60, 88},
    {PT_POLYCONIC, "{figure};Lat0={-60 60};Lon0={-180 180}", kNothing, 60, -85, 85},
    {PT_BONNE, "{figure};Lat1={10 85};Lon0={-180 180}", kEqualArea, 180, -75, 88},
    {PT_BONNE, "{figure};Lat1={-85 -10};Lon0={-180 180}", kEqualArea, 180, -88, 75},
    {PT_STEREOGRAPHIC, "{figure};Lat0={-50 50};Lon0={-180 180};K0={0.9 1.1}", kConformal, 35, -30, 30},
    {PT_STEREOGRAPHIC, "{figure};Lat0=0;Lon0={-180 180}", kConformal, 80, -80, 80},
    {PT_STEREOGRAPHIC, "{figure};Lat0=90;Lon0={-180 180};K0={0.9 1.1}", kConformal, 180, 1, 89},
    {PT_STEREOGRAPHIC, "{figure};Lat0=-90;Lon0={-180 180}", kConformal, 180, -89, -1},
    {PT_ORTHOGRAPHIC, "R=6371000;Lat0={-50 50};Lon0={-180 180}", kNothing, 35, -30, 30},
    {PT_GNOMONIC, "R=6371000;Lat1={-30 30};Lon0={-180 180}", kNothing, 35, -30, 30},
    {PT_GNOMONIC, "R=6371000;Lat1=-90;Lon0={-180 180}", kNothing, 180, -89, -20},
    {PT_LAMBERTAZIMUTHAL, "R=6371000;Lat1={-60 60};Lon0={-180 180}", kEqualArea, 100, -60, 60},
    {PT_LAMBERTAZIMUTHAL, "R=6371000;Lat1=90;Lon0={-180 180}", kEqualArea, 180, -80, 89},
    {PT_AZIMUTHALEQUI, "R=6371000;Lat1={-60 60};Lon0={-180 180}", kNothing, 100, -60, 60},
    {PT_SINUSOIDAL, "{figure};Lon0={-180 180}", kEqualArea, 180, -89, 89},
    {PT_MOLLWEIDE, "R=6371000;Lon0={-180 180}", kEqualArea, 180, -89, 89},
    {PT_ECKERT4, "R=6371000;Lon0={-180 180}", kEqualArea, 180, -89, 89},
    {PT_ECKERT6, "R=6371000;Lon0={-180 180}", kEqualArea, 180, -89, 89},
    {PT_ROBINSON, "R=6371000", kNothing, 180, -90, 90},
    {PT_ROBINSONSTERLING, "R=6371000;Lon0={-180 180}", kNothing, 180, -90, 90},
    {PT_VANDERGRINTEN, "R=6371000;Lon0={-180 180}", kNothing, 180, -85, 85},
    {PT_HOTINE, "bUseAlpha=1;Lat0={10 60};Lon0={-180 180};Alpha={20 70};bRotate=1", kConformal, 10, 5, 65},
    {PT_OBLIQUEMERCATOR, "Lat1={30 40};Lon1=-10;Lat2={41 60};Lon2=30", kConformal, 20, 30, 60},
};

class Random {
 public:
  double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_engine); }

  PROJDATA Record(const Family& family) {
    static constexpr const char* kFigures[] = {"R=6371000", "Ellipsoid=47", "a=6378137;f=1e-10", "a=6378137;f=0.01",
                                               "a=6378137;f=0.02"};
    std::string text = family.parameters;
    for (std::size_t begin; (begin = text.find('{')) != text.npos;) {
      const std::size_t end = text.find('}', begin);
      const std::string hole = text.substr(begin + 1, end - begin - 1);
      std::string value;
      if (hole == "figure") {
        value = kFigures[static_cast<std::size_t>(Between(0, std::size(kFigures)))];
      } else {
        const std::size_t space = hole.find(' ');
        // Sixteenths of a degree, so that a turn is added without rounding.
        value = std::to_string(std::round(16 * Between(std::stod(hole), std::stod(hole.substr(space)))) / 16);
        if (std::stod(hole.substr(space)) < 2)
          value = std::to_string(Between(std::stod(hole), std::stod(hole.substr(space))));
      }
      text.replace(begin, end - begin + 1, value);
    }
    return test::Record(family.type, text);
  }

  /// In 1024ths of a degree, as above.
  PROJPOINT Place(const Family& family, const PROJDATA& record) {
    const auto grid = [](double degrees) { return std::trunc(1024 * degrees) / 1024; };
    return {record.Lon0 + grid(Between(-family.reach, family.reach)), grid(Between(family.south, family.north))};
  }

 private:
  std::mt19937 m_engine{20240229};
};

/// Check(random, family, projector, record, place) over a number of places of each of 8 records of each family.
template <class Check>
void ForEachPlace(int places, Check check) {
  Random random;
  for (const Family& family : kFamilies) {
    for (int i = 0; i < 8; ++i) {
      const PROJDATA record = random.Record(family);
      CProjector projector = ExactProjector(record);
      for (int j = 0; j < places; ++j) {
        const PROJPOINT place = random.Place(family, record);
        char name[64];
        ProjGetProjectionInfo(family.type, name);
        SCOPED_TRACE(testing::Message() << name << " " << family.parameters << ", Lon0 " << double{record.Lon0}
                                        << ", Lat0 " << double{record.Lat0} << ", Lat1 " << double{record.Lat1}
                                        << ", Lat2 " << double{record.Lat2} << ", f " << double{record.Flattening}
                                        << " at " << place.x - record.Lon0 << " of it, " << place.y);
        check(family, projector, record, place);
      }
    }
  }
}

TEST(ExactProperty, ThereAndBack) {
  ForEachPlace(14, [](const Family&, CProjector& projector, const PROJDATA&, const PROJPOINT& place) {
    const PROJPOINT p = Forward(projector, place.x, place.y), back = Inverse(projector, p.x, p.y);
    const PROJPOINT again = Forward(projector, back.x, back.y);
    ASSERT_FALSE(Unplottable(p));
    EXPECT_LE(ArcDegrees(back, place), 1e-11) << back.x << ", " << back.y;
    EXPECT_LE(std::hypot(again.x - p.x, again.y - p.y), 1e-6);
  });
}

// Wherever on the plane an inverse answers, the forward leads back there: nothing is made up outside the map. The
// Stereographic is left out, whose inverse knows the plane and whose forward the hemisphere around the centre.
TEST(ExactProperty, NoInverseMakesPlacesUp) {
  Random random;
  for (const ProjectionForm& form : AllProjections()) {
    if (form.type == PT_STEREOGRAPHIC) continue;
    PROJDATA rec{};
    CProjector projector = ExactProjector(form.MakeRecord());
    projector.GetInfo(&rec);
    int answered = 0;
    for (int i = 0; i < 60; ++i) {
      const double reach = i < 30 ? 5e6 : 2.2e7;
      const double x = rec.xOrg + random.Between(-reach, reach), y = rec.yOrg + random.Between(-reach, reach);
      const PROJPOINT place = Inverse(projector, x, y);
      if (Unplottable(place)) continue;
      ++answered;
      EXPECT_LE(std::fabs(place.y), 90) << form.type << " " << form.form;
      const PROJPOINT again = Forward(projector, place.x, place.y);
      EXPECT_LE(std::hypot(again.x - x, again.y - y), 1e-6)
          << form.type << " " << form.form << " at " << x << ", " << y << " by way of " << place.x << ", " << place.y;
    }
    EXPECT_GT(answered, 0) << form.type << " " << form.form;
  }
}

// Differences over hundredths of a degree have 1e-9 from the fifth derivative where maps bend most; the stretch of
// coordinates far from the centre multiplies roundings.
TEST(ExactProperty, AnglesAndAreasAreKept) {
  ForEachPlace(6, [](const Family& family, CProjector& projector, const PROJDATA& record, const PROJPOINT& place) {
    if (family.promise == kNothing) return;
    // Not across the seam, where the map ends.
    const double within = std::min(family.reach, 179.9) / family.reach;
    const LocalScale s = ScaleAt(projector, record.Lon0 + within * (place.x - record.Lon0), place.y);
    if (family.promise == kConformal) {
      EXPECT_NEAR(s.h / s.k, 1, 2e-8);
      EXPECT_NEAR(s.cosine, 0, 2e-8);
      EXPECT_GT(s.area, 0) << "mirrored";
    } else {
      EXPECT_NEAR(s.area, 1, 2e-8);
    }
  });
}

// The central meridian is an axis; so is the equator, once the record is turned over. Oblique lines have neither.
TEST(ExactProperty, Symmetry) {
  ForEachPlace(6, [](const Family& family, CProjector& projector, const PROJDATA& record, const PROJPOINT& place) {
    if (family.type == PT_HOTINE || family.type == PT_OBLIQUEMERCATOR) return;
    const double x0 = family.type == PT_UTM ? 500000 : double{record.xOrg};
    const PROJPOINT p = Forward(projector, place.x, place.y);
    const double tolerance = 1e-8 + 1e-15 * (std::fabs(p.x) + std::fabs(p.y));
    const PROJPOINT west = Forward(projector, 2 * record.Lon0 - place.x, place.y);
    EXPECT_NEAR(west.x - x0, x0 - p.x, tolerance);
    EXPECT_NEAR(west.y, p.y, tolerance);
    PROJDATA turned = record;
    turned.Lat0 = -turned.Lat0, turned.Lat1 = -turned.Lat1, turned.Lat2 = -turned.Lat2;
    CProjector below = ExactProjector(turned);
    const PROJPOINT q = Forward(below, place.x, -place.y);
    EXPECT_NEAR(q.x, p.x, tolerance);
    EXPECT_NEAR(q.y, -p.y, tolerance);
  });
}

TEST(ExactProperty, AFullTurnChangesNothing) {
  ForEachPlace(6, [](const Family& family, CProjector& projector, const PROJDATA&, const PROJPOINT& place) {
    if (family.reach == 180 && std::fabs(std::remainder(place.x, 180)) < 1e-3) return;
    const PROJPOINT p = Forward(projector, place.x, place.y);
    for (const double turn : {-720.0, -360.0, 360.0}) {
      const PROJPOINT q = Forward(projector, place.x + turn, place.y);
      const double tolerance = 3e-8 + 1e-15 * (std::fabs(p.x) + std::fabs(p.y));
      EXPECT_NEAR(q.x, p.x, tolerance) << turn;
      EXPECT_NEAR(q.y, p.y, tolerance) << turn;
    }
  });
}

// ---- lines and points of true scale ----

TEST(ExactProperty, TrueScale) {
  enum Which { kAlongParallel, kAlongMeridian, kBoth };
  const struct {
    ProjType type;
    const char* parameters;
    double lon, lat;
    Which which;
    double scale;
  } cases[] = {{PT_MERCATOR, "Lat0=-41;Lon0=20", 170, -41, kBoth, 1},
               {PT_MERCATOR, "a=6378137;f=0.02;Lat0=60", -33, 60, kBoth, 1},
               {PT_TRANSVERSEMERCATOR, "Lon0=9;K0=0.9996", 9, 71.5, kBoth, 0.9996},
               {PT_TRANSVERSEMERCATOR, "a=6378137;f=0.02;Lon0=9", 9, -33, kBoth, 1},
               {PT_UTM, "Lon0=-177;bSouth=1", -177, -44, kBoth, 0.9996},
               {PT_LAMBERT, "Lat0=23;Lat1=33;Lat2=45;Lon0=-96", 60, 33, kBoth, 1},
               {PT_LAMBERT, "Lat0=23;Lat1=33;Lat2=45;Lon0=-96", -120, 45, kBoth, 1},
               {PT_LAMBERT, "Lat0=40;Lat1=40;Lat2=40.5", 3, 40.5, kBoth, 1},
               {PT_ALBERS, "Lat0=23;Lat1=29.5;Lat2=45.5;Lon0=-96", 60, 29.5, kBoth, 1},
               {PT_ALBERS, "a=6378137;f=0.02;Lat0=-23;Lat1=-29.5;Lat2=-45.5", -120, -45.5, kBoth, 1},
               {PT_ALBERS, "Lat0=40;Lat1=40;Lat2=40.5", 3, 40.5, kBoth, 1},
               {PT_EQUICONIC, "R=6371000;Lat0=10;Lat1=-20;Lat2=61", 100, 61, kBoth, 1},
               {PT_EQUICONIC, "R=6371000;Lat0=10;Lat1=-20;Lat2=61", 100, 5, kAlongMeridian, 1},
               {PT_POLYCONIC, "Lat0=30;Lon0=-96", -60, 55, kAlongParallel, 1},
               {PT_POLYCONIC, "Lat0=30;Lon0=-96", -96, -70, kAlongMeridian, 1},
               {PT_BONNE, "Lat1=40;Lon0=-75", 60, -30, kAlongParallel, 1},
               {PT_BONNE, "Lat1=40;Lon0=-75", -75, 66, kBoth, 1},
               {PT_BONNE, "Lat1=40;Lon0=-75", 11, 40, kBoth, 1},
               {PT_SINUSOIDAL, "Lon0=11", -100, 61, kAlongParallel, 1},
               {PT_SINUSOIDAL, "Lon0=11", 11, -61, kBoth, 1},
               {PT_CASSINI, "R=6371000;Lat0=30;Lon0=35", 35, -50, kBoth, 1},
               {PT_EQUICYLINDRICAL, "R=6371000;Lat1=-37", 120, -37, kBoth, 1},
               {PT_STEREOGRAPHIC, "Lat0=-40;Lon0=100;K0=0.97", 100, -40, kBoth, 0.97},
               {PT_STEREOGRAPHIC, "Lat0=0;Lon0=100;K0=0.97", 100, 0, kBoth, 0.97},
               {PT_ORTHOGRAPHIC, "R=6371000;Lat0=40;Lon0=-100", -100, 40, kBoth, 1},
               {PT_GNOMONIC, "R=6371000;Lat1=40;Lon0=-100", -100, 40, kBoth, 1},
               {PT_LAMBERTAZIMUTHAL, "R=6371000;Lat1=40;Lon0=-100", -100, 40, kBoth, 1},
               {PT_AZIMUTHALEQUI, "R=6371000;Lat1=40;Lon0=-100", -100, 40, kBoth, 1},
               {PT_AZIMUTHALEQUI, "R=6371000;Lat1=0;Lon0=-100", -100, 0, kBoth, 1}};
  for (const auto& c : cases) {
    CProjector projector = ExactProjector(Record(c.type, c.parameters));
    const LocalScale s = ScaleAt(projector, c.lon, c.lat);
    if (c.which != kAlongMeridian) {
      EXPECT_NEAR(s.k, c.scale, 1e-10) << c.parameters;
    }
    if (c.which != kAlongParallel) {
      EXPECT_NEAR(s.h, c.scale, 1e-10) << c.parameters;
    }
  }
}

// ---- one projection beside another ----

// Centres that run into a pole, or into the equator, arrive at the form that those have: the place on the map
// extrapolated from three centres beside it. The third differences are 1e-16 of the radius; seven roundings remain.
TEST(ExactProperty, AspectsRunIntoEachOther) {
  const struct {
    ProjType type;
    const char* parameters;
  } cases[] = {{PT_STEREOGRAPHIC, "K0=0.97"}, {PT_STEREOGRAPHIC, "R=6371000"},    {PT_ORTHOGRAPHIC, "R=6371000"},
               {PT_GNOMONIC, "R=6371000"},    {PT_LAMBERTAZIMUTHAL, "R=6371000"}, {PT_AZIMUTHALEQUI, "R=6371000"}};
  for (const auto& c : cases) {
    for (const double centre : {90.0, 0.0, -90.0}) {
      const auto at = [&](double lat, const PROJPOINT& place) {
        PROJDATA record = Record(c.type, c.parameters);
        record.Lon0 = -100;
        record.Lat0 = lat, record.Lat1 = lat;
        CProjector projector = ExactProjector(record);
        return Forward(projector, place.x, place.y);
      };
      const double side = centre > 0 ? -1 : 1, step = 1e-4 * side;
      for (const PROJPOINT& offset : {PROJPOINT{33, 30.25}, {-71, 21}, {5, 2.5}}) {
        const PROJPOINT place{-100 + offset.x, centre + side * offset.y};
        const PROJPOINT p = at(centre, place), a = at(centre + step, place), b = at(centre + 2 * step, place),
                        d = at(centre + 3 * step, place);
        EXPECT_NEAR(3 * a.x - 3 * b.x + d.x, p.x, 1e-7) << c.type << " " << centre << " " << place.x << " " << place.y;
        EXPECT_NEAR(3 * a.y - 3 * b.y + d.y, p.y, 1e-7) << c.type << " " << centre << " " << place.x << " " << place.y;
        const PROJPOINT nearby = at(centre + step / 100, place);  // 0.11 m away: not taken for the aspect itself
        EXPECT_GT(std::hypot(nearby.x - p.x, nearby.y - p.y), 0.01) << c.type << " " << centre;
        EXPECT_LT(std::hypot(nearby.x - p.x, nearby.y - p.y), 1) << c.type << " " << centre;
      }
    }
  }
}

// A line along the equator makes the oblique Mercator the Mercator, on every figure: conformal, and the same on a line.
TEST(ExactProperty, HotineAlongTheEquatorIsMercator) {
  for (const char* figure : {"R=6371000", "Ellipsoid=47", "a=6378137;f=0.02"}) {
    CProjector hotine = ExactProjector(
        Record(PT_HOTINE, std::string(figure) + ";bUseAlpha=1;Lat0=0;Lon0=30;Alpha=90;bRotate=1;bUOffset=1"));
    CProjector mercator = ExactProjector(Record(PT_MERCATOR, std::string(figure) + ";Lon0=30"));
    for (const PROJPOINT& place : {PROJPOINT{30, 0}, {41, 52.25}, {-20, -33}, {95, 80}}) {
      const PROJPOINT a = Forward(hotine, place.x, place.y), b = Forward(mercator, place.x, place.y);
      EXPECT_NEAR(a.x, b.x, 1e-7) << figure << " " << place.x;
      EXPECT_NEAR(a.y, b.y, 1e-7) << figure << " " << place.x;
    }
  }
}

// A line along a meridian makes them transverse; on the sphere, since an ellipsoid's meridian is not a line of even
// scale for the oblique forms. Hotine refuses an azimuth of 0: a hundredth of a nanometre on the map is one of 1e-16.
TEST(ExactProperty, ObliqueFormsAlongAMeridianAreTransverse) {
  CProjector transverse = ExactProjector(Record(PT_TRANSVERSEMERCATOR, "R=6371000;Lon0=30"));
  CProjector hotine = ExactProjector(Record(PT_HOTINE, "R=6371000;bUseAlpha=1;Lat0=40;Lon0=30;Alpha=1e-14;bRotate=1"));
  CProjector oblique = ExactProjector(Record(PT_OBLIQUEMERCATOR, "R=6371000;Lat1=20;Lon1=30;Lat2=60;Lon2=30"));
  const auto origin = [](CProjector& projector) { return Forward(projector, 30, 40); };
  const PROJPOINT t0 = origin(transverse), h0 = origin(hotine), o0 = origin(oblique);
  for (const PROJPOINT& place : {PROJPOINT{30, 12}, {41, 52.25}, {-20, 33}, {35, 80}}) {
    const PROJPOINT t = Forward(transverse, place.x, place.y), h = Forward(hotine, place.x, place.y),
                    o = Forward(oblique, place.x, place.y);
    EXPECT_NEAR(h.x - h0.x, t.x - t0.x, 1e-6) << place.x;
    EXPECT_NEAR(h.y - h0.y, t.y - t0.y, 1e-6) << place.x;
    // Counted along the line and across it.
    EXPECT_NEAR(std::fabs(o.x - o0.x), std::fabs(t.y - t0.y), 1e-6) << place.x;
    EXPECT_NEAR(std::fabs(o.y - o0.y), std::fabs(t.x - t0.x), 1e-6) << place.x;
  }
}

}  // namespace
}  // namespace orvex::test
