// Exact computation: values of the definitions in 50 digits, what is refused, the choice and what it leaves alone.
#include <bit>
#include <cstring>
#include <random>

#include <orvex/orvex_c.h>

#include "support/Projection.h"

namespace orvex::test {
namespace {

// Tolerances stand in the file; make_exact.py derives them.
TEST(ExactGolden, AgreesWithFiftyDigits) {
  CheckGolden("exact.csv", PA_EXACT);
}

// The way back on the map: what counts where a map is flat and rounded coordinates do not tell the latitude.
TEST(ExactGolden, BackOnTheMap) {
  const CsvFile csv("exact.csv");
  for (std::size_t row = 0; row < csv.Rows(); ++row) {
    CProjector projector = ExactProjector(Record(TypeOf(csv.Text(row, "projection")), csv.Text(row, "parameters")));
    const double x = csv.Number(row, "x"), y = csv.Number(row, "y");
    const PROJPOINT place = Inverse(projector, x, y), again = Forward(projector, place.x, place.y);
    EXPECT_LE(std::hypot(again.x - x, again.y - y), csv.Number(row, "tol_map"))
        << csv.Text(row, "projection") << " " << csv.Text(row, "parameters") << " at " << csv.Text(row, "lon") << ", "
        << csv.Text(row, "lat") << " by way of " << place.x << ", " << place.y;
  }
}

// What is exact as stated, to rounding, keeps its published and independent values.
TEST(ExactGolden, FormsThatAreExactAsStated) {
  for (const char* projection : {"Hotine Oblique Mercator", "Oblique Mercator", "Cassini"}) {
    CheckGolden("oblique_polyconic.csv", PA_EXACT, projection);
  }
  for (const char* projection : {"Van Der Grinten", "Robinson-Sterling"}) {
    CheckGolden("world.csv", PA_EXACT, projection);
  }
  for (const char* projection : {"Equidistant Conic", "Miller Cylindrical", "Equidistant Cylindrical"}) {
    CheckGolden("conic_cylindrical.csv", PA_EXACT, projection);
  }
}

// ---- what is refused ----

TEST(ExactRefuses, LatitudesBeyondThePoles) {
  for (const ProjectionForm& form : AllProjections()) {
    CProjector projector = ExactProjector(form.MakeRecord());
    const double lon = form.Place(0.4, 0).x;
    for (const double lat : {std::nextafter(90.0, 91.0), std::nextafter(-90.0, -91.0), 95.0, -100.0, 190.0, -355.0}) {
      EXPECT_TRUE(Unplottable(Forward(projector, lon, lat))) << form.type << " " << form.form << ": " << lat;
      EXPECT_EQ(projector.Result(), 1);
    }
  }
}

TEST(ExactRefuses, TransverseMercatorBeyondEightyDegrees) {
  const struct {
    ProjType type;
    const char* parameters;
    double lon0;
  } cases[] = {{PT_TRANSVERSEMERCATOR, "Lon0=-2;Lat0=49", -2},
               {PT_GAUSSKRUGER, "Lon0=9;xOrg=3500000", 9},
               {PT_UTM, "Lon0=-177", -177}};
  for (const auto& c : cases) {
    CProjector projector = ExactProjector(Record(c.type, c.parameters));
    for (const double lat : {0.0, 45.0, -80.0}) {
      for (const double lon : {79.9, -79.9, 439.9 - 360}) {
        EXPECT_FALSE(Unplottable(Forward(projector, c.lon0 + lon, lat))) << c.parameters << ": " << lon << ", " << lat;
      }
      for (const double lon : {81.0, -81.0, 90.0, -100.0, 179.0, -279.0}) {
        EXPECT_TRUE(Unplottable(Forward(projector, c.lon0 + lon, lat))) << c.parameters << ": " << lon << ", " << lat;
      }
    }
    PROJDATA rec{};
    projector.GetInfo(&rec);
    for (const double x : {2e7, -3e7, 1e9, 1e300}) {  // 80 degrees from the meridian are 15600 km on the equator
      EXPECT_TRUE(Unplottable(Inverse(projector, rec.xOrg + x, rec.yOrg))) << c.parameters << ": " << x;
    }
  }
}

// A place that the domain test accepts can be drawn, and drawn back.
TEST(ExactRefuses, NothingInsideTheDomain) {
  std::mt19937 random(12);
  std::uniform_real_distribution<double> lon(-180, 180), lat(-90, 90);
  for (const ProjectionForm& form : AllProjections()) {
    CProjector projector = ExactProjector(form.MakeRecord());
    for (int i = 0; i < 60; ++i) {
      const PROJPOINT place{lon(random), lat(random)};
      if (!projector.LLInProjection(&place)) continue;
      const PROJPOINT p = Forward(projector, place.x, place.y);
      EXPECT_FALSE(Unplottable(p)) << form.type << " " << form.form << ": " << place.x << ", " << place.y;
      if (!Unplottable(p)) {
        EXPECT_FALSE(Unplottable(Inverse(projector, p.x, p.y)))
            << form.type << " " << form.form << ": " << place.x << ", " << place.y;
      }
    }
  }
}

// Outside the outline in latitude there is nothing to come back to.
TEST(ExactRefuses, MapPlacesOutsideTheOutline) {
  const struct {
    ProjType type;
    const char* parameters;
    double x, y;  // of a sphere of radius 1
  } cases[] = {{PT_ORTHOGRAPHIC, "R=1;Lat0=40", 0.8, 0.7},
               {PT_ORTHOGRAPHIC, "R=1;Lat0=90", -1.1, 0},
               {PT_LAMBERTAZIMUTHAL, "R=1;Lat1=40", 1.5, -1.5},
               {PT_AZIMUTHALEQUI, "R=1;Lat1=-90", 3, 2},
               {PT_MOLLWEIDE, "R=1", 0, 1.5},
               {PT_ECKERT4, "R=1", 0.1, -1.4},
               {PT_ECKERT6, "R=1", 0.1, 1.4},
               {PT_SINUSOIDAL, "R=1", 0, 1.6},
               {PT_SINUSOIDAL, "a=1;f=0.003", 0, -1.6},
               {PT_EQUICYLINDRICAL, "R=1", 1, 1.6},
               {PT_ROBINSON, "R=1", 0.1, 1.36},
               {PT_VANDERGRINTEN, "R=1", 0, 3.2},
               {PT_EQUICONIC, "R=1;Lat0=30;Lat1=20;Lat2=50", 0, 1.2}};
  for (const auto& c : cases) {
    CProjector projector = ExactProjector(Record(c.type, c.parameters));
    EXPECT_TRUE(Unplottable(Inverse(projector, c.x, c.y))) << c.type << " " << c.parameters;
    EXPECT_EQ(projector.Result(), 1) << c.type << " " << c.parameters;
  }
}

// Where the definition has no place for a point, or a place is a pole to rounding; and no number is told of.
TEST(ExactRefuses, HorizonsAxisEndsAntipodesAndFarGarbage) {
  const struct {
    ProjType type;
    const char* parameters;
    bool inverse;
    double x, y;
  } cases[] = {{PT_GNOMONIC, "R=6371000;Lat1=0", false, 90, 0},
               {PT_GNOMONIC, "R=6371000;Lat1=40;Lon0=10", false, 100, 0},
               {PT_TRANSVERSEMERCATOR, "R=6371000", false, 90, 0},
               {PT_CASSINI, "R=6371000", false, -90, 0},
               {PT_AZIMUTHALEQUI, "R=6371000;Lat1=30", false, 180, -30},
               {PT_LAMBERTAZIMUTHAL, "R=6371000;Lat1=30", false, 180, -30},
               {PT_STEREOGRAPHIC, "a=6378137;f=0.003;Lat0=40", true, 0, 3e7},
               {PT_MERCATOR, "a=6378137;f=0.003", true, 0, 1e9},
               {PT_LAMBERT, "Lat1=33;Lat2=45", true, 0, -1e20},
               {PT_HOTINE, "Lat0=40;bUseAlpha=1;Alpha=30", true, 0, 1e12},
               {PT_MERCATOR, "a=6378137;f=0.003", true, std::nan(""), 1}};
  for (const auto& c : cases) {
    CProjector projector = ExactProjector(Record(c.type, c.parameters));
    const PROJPOINT p = c.inverse ? Inverse(projector, c.x, c.y) : Forward(projector, c.x, c.y);
    EXPECT_TRUE(Unplottable(p)) << c.type << " " << c.parameters << ": " << c.x << ", " << c.y;
    EXPECT_EQ(projector.Result(), 1) << c.type << " " << c.parameters;
  }
}

// A cone that touches a pole keeps its digits there.
TEST(ExactMaps, AlbersAtThePoleThatItTouches) {
  for (const char* parameters : {"a=6378137;f=0.00335;Lat0=90;Lat1=90;Lat2=60", "R=6371000;Lat0=40;Lat1=30;Lat2=90"}) {
    CProjector projector = ExactProjector(Record(PT_ALBERS, parameters));
    for (const PROJPOINT place : {PROJPOINT{3, 89.999}, {-100, 89.9999999}, {20, 50}, {0, 90}}) {
      const PROJPOINT p = Forward(projector, place.x, place.y), back = Inverse(projector, p.x, p.y);
      EXPECT_LE(ArcDegrees(back, place), 1e-11) << parameters << " " << place.x << " " << place.y;
    }
  }
}

// The antimeridian as a host computes it is the edge on that side, there and back.
TEST(ExactMaps, EdgesKeepTheirSide) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> centre(-180, 180);
  for (const ProjType type : {PT_MERCATOR, PT_ROBINSONSTERLING, PT_SINUSOIDAL, PT_MOLLWEIDE, PT_VANDERGRINTEN}) {
    for (int i = 0; i < 300; ++i) {
      PROJDATA record = Record(type, "R=6371000");
      const double lon0 = record.Lon0 = centre(random);
      CProjector projector = ExactProjector(record);
      for (const double side : {-180.0, 180.0}) {
        const PROJPOINT edge = Forward(projector, lon0 + side, 40);
        EXPECT_GT(edge.x * side, 0) << type << " " << lon0 << " " << side;
        const PROJPOINT place = Inverse(projector, edge.x, edge.y);
        EXPECT_GT(Forward(projector, place.x, place.y).x * side, 0) << type << " " << lon0 << " " << side;
      }
    }
  }
}

// ---- the choice ----

std::vector<PROJPOINT> Places(const ProjectionForm& form) {
  std::vector<PROJPOINT> places{{10, 95}, {form.Place(0.5, 0.5)}, {400, -12}};
  for (double u = 0; u <= 1; u += 0.2) places.push_back(form.Place(u, std::fmod(0.1 + 3.7 * u, 1)));
  return places;
}

std::vector<std::uint64_t> Bits(const std::vector<PROJPOINT>& points) {
  std::vector<std::uint64_t> bits;
  for (const PROJPOINT& p : points)
    bits.insert(bits.end(), {std::bit_cast<std::uint64_t>(p.x), std::bit_cast<std::uint64_t>(p.y)});
  return bits;
}

/// Both directions: the places, and the map around the origin.
std::vector<std::uint64_t> ResultBits(CProjector& projector, const ProjectionForm& form) {
  std::vector<PROJPOINT> points = Places(form), map;
  for (int i = -3; i <= 3; ++i) map.push_back({1234567.5 * i, -765432.25 * i * i + 1e6});
  EXPECT_TRUE(projector.Forward(points.data(), static_cast<int>(points.size())));
  EXPECT_TRUE(projector.Inverse(map.data(), static_cast<int>(map.size())));
  points.insert(points.end(), map.begin(), map.end());
  return Bits(points);
}

TEST(ExactChoice, StatedIsTheDefaultAndComesBackToTheBit) {
  for (const ProjectionForm& form : AllProjections()) {
    PROJDATA rec = form.MakeRecord(), before{}, after{};
    CProjector projector(&rec), untouched(&rec);
    EXPECT_EQ(projector.Accuracy(), PA_STATED);
    const auto stated = ResultBits(projector, form);
    projector.GetInfo(&before);
    ASSERT_TRUE(projector.SetAccuracy(PA_EXACT)) << form.type << " " << form.form;
    projector.GetInfo(&after);
    EXPECT_EQ(std::memcmp(&before, &after, sizeof before), 0) << "the choice is not part of the record";
    ResultBits(projector, form);
    ASSERT_TRUE(projector.SetAccuracy(PA_STATED));
    EXPECT_EQ(ResultBits(projector, form), stated) << form.type << " " << form.form;
    EXPECT_EQ(ResultBits(untouched, form), stated) << "another handle's choice: " << form.type << " " << form.form;
  }
}

TEST(ExactChoice, BelongsToTheHandle) {
  PROJDATA rec = Record(PT_LAMBERT, "Lat0=23;Lat1=33;Lat2=45;Lon0=-96");
  CProjector exact = ExactProjector(rec), copy(exact), shared, stated(&rec);
  shared = exact;
  const auto back = [](CProjector& projector) { return Inverse(projector, 1234567, 765432).y; };
  const double y = back(exact);
  EXPECT_GT(std::fabs(y - back(stated)), 1e-9);
  for (CProjector* other : {&copy, &shared}) {
    EXPECT_EQ(other->Accuracy(), PA_EXACT);
    EXPECT_EQ(back(*other), y);
  }
  EXPECT_TRUE(copy.SetAccuracy(PA_STATED));
  EXPECT_EQ(exact.Accuracy(), PA_EXACT) << "a copy chooses for itself";
  EXPECT_EQ(back(copy), back(stated));
  exact.Delete();
  EXPECT_EQ(shared.Accuracy(), PA_EXACT);
  EXPECT_FALSE(exact.SetAccuracy(PA_EXACT)) << "no handle";
  EXPECT_EQ(exact.Accuracy(), PA_STATED);
  ASSERT_TRUE(exact.Create(&rec));
  EXPECT_EQ(exact.Accuracy(), PA_STATED) << "a new handle chooses anew";
  EXPECT_EQ(back(exact), back(stated));
}

TEST(ExactChoice, BadCallsAreAnsweredFalse) {
  EXPECT_FALSE(ProjSetAccuracy(nullptr, PA_EXACT));
  EXPECT_FALSE(DatSetAccuracy(nullptr, PA_EXACT));
  EXPECT_EQ(ProjGetAccuracy(nullptr), PA_STATED);
  EXPECT_EQ(DatGetAccuracy(nullptr), PA_STATED);
  PROJDATA rec = Record(PT_MERCATOR, "");
  void* const projection = ProjCreateProjection(&rec);
  DATUMXFORM xform{};
  xform.SrcDatum = DT_NORTH_AMERICAN_DATUM_1927;
  xform.DestDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
  void* const datum = DatCreateDatum(&xform);
  for (const ProjAccuracy choice : {PA_STATED, PA_EXACT}) {
    EXPECT_TRUE(ProjSetAccuracy(projection, choice) && DatSetAccuracy(datum, choice));
    for (const int unknown : {-1, 2, 3, 256, 257}) {
      EXPECT_FALSE(ProjSetAccuracy(projection, static_cast<ProjAccuracy>(unknown))) << unknown;
      EXPECT_FALSE(DatSetAccuracy(datum, static_cast<ProjAccuracy>(unknown))) << unknown;
    }
    EXPECT_EQ(ProjGetAccuracy(projection), choice);
    EXPECT_EQ(DatGetAccuracy(datum), choice);
  }
  ProjDeleteProjection(projection);
  DatDeleteDatum(datum);
}

// An array of n is n arrays of one, whatever stands beside a point; markers pass, what is not finite becomes one.
TEST(ExactChoice, PointsDoNotTouchEachOther) {
  const double nan = std::nan(""), infinity = HUGE_VAL;
  for (const ProjectionForm& form : AllProjections()) {
    CProjector projector = ExactProjector(form.MakeRecord());
    for (const bool forward : {true, false}) {
      const auto convert = [&](PROJPOINT* points, int n) {
        EXPECT_TRUE(forward ? projector.Forward(points, n) : projector.Inverse(points, n));
      };
      std::vector<PROJPOINT> input = Places(form);
      if (!forward) projector.Forward(input.data(), static_cast<int>(input.size()));  // places of the map
      input.insert(input.begin() + 1, {{nan, 10}, {10, infinity}, {DBL_MAX, DBL_MAX}, {1e300, -1e300}});
      input.insert(input.end(), {{DBL_MAX, DBL_MAX}, {-infinity, nan}, {0, 0}, {5, 90}, {-170, -90}});
      std::vector<PROJPOINT> together = input, single = input;
      convert(together.data(), static_cast<int>(together.size()));
      for (PROJPOINT& p : single) convert(&p, 1);
      EXPECT_EQ(Bits(together), Bits(single)) << form.type << " " << form.form << (forward ? " forward" : " inverse");
      for (const std::size_t i : {1u, 2u, 3u}) EXPECT_TRUE(Unplottable(together[i])) << form.type << " " << i;
    }
  }
}

TEST(ExactChoice, ThroughThePlainCInterface) {
  const auto solve = [](int accuracy) {  // latitude back from a place on the map
    orvex_projection record{};
    record.type = PT_LAMBERT;
    record.ellipsoid = ET_WGS_84;
    record.lat0 = 23, record.lat1 = 33, record.lat2 = 45, record.lon0 = -96;
    char message[ORVEX_MESSAGE_SIZE];
    void* handle = nullptr;
    EXPECT_EQ(orvex_create(&record, &handle, message), ORVEX_OK);
    EXPECT_EQ(orvex_set_accuracy(handle, accuracy), ORVEX_OK);
    EXPECT_EQ(orvex_set_accuracy(handle, 2), ORVEX_BAD_ARGUMENT);
    orvex_point p{1234567, 765432};
    EXPECT_EQ(orvex_inverse(handle, &p, 1, message), ORVEX_OK);
    orvex_delete(handle);
    return double{p.y};
  };
  PROJDATA rec = Record(PT_LAMBERT, "Lat0=23;Lat1=33;Lat2=45;Lon0=-96");
  CProjector stated(&rec), exact = ExactProjector(rec);
  EXPECT_EQ(solve(PA_STATED), Inverse(stated, 1234567, 765432).y);
  EXPECT_EQ(solve(PA_EXACT), Inverse(exact, 1234567, 765432).y);
  EXPECT_EQ(orvex_set_accuracy(nullptr, PA_EXACT), ORVEX_BAD_ARGUMENT);

  orvex_projection none{};
  none.type = PT_LAMBERT;
  none.ellipsoid = ET_WGS_84;
  none.lat1 = -30, none.lat2 = 30;
  void *cone = nullptr, *datum = nullptr;
  ASSERT_EQ(orvex_create(&none, &cone, nullptr), ORVEX_OK);
  EXPECT_EQ(orvex_set_accuracy(cone, PA_EXACT), ORVEX_FAILED);
  orvex_delete(cone);

  ASSERT_EQ(orvex_datum_create(3, 220, &datum, nullptr), ORVEX_OK);
  EXPECT_EQ(orvex_datum_set_accuracy(datum, PA_EXACT), ORVEX_OK);
  EXPECT_EQ(orvex_datum_set_accuracy(datum, -1), ORVEX_BAD_ARGUMENT);
  EXPECT_EQ(orvex_datum_set_accuracy(nullptr, PA_STATED), ORVEX_BAD_ARGUMENT);
  EXPECT_EQ(DatGetAccuracy(datum), PA_EXACT);
  orvex_datum_delete(datum);
}

// What has no exact form is refused at the choice, and the handle goes on as before.
TEST(ExactChoice, RecordsWithoutAnExactForm) {
  const struct {
    ProjType type;
    const char* parameters;
  } cases[] = {
      {PT_LAMBERT, "Lat1=-30;Lat2=30"},    {PT_LAMBERT, "Lat1=-30;Lat2=30;R=6371000"}, {PT_MERCATOR, "Lat0=100"},
      {PT_TRANSVERSEMERCATOR, "Lat0=-95"}, {PT_AZIMUTHALEQUI, "R=6371000;Lat1=359"},   {PT_UNDEFINED, ""}};
  for (const auto& c : cases) {
    PROJDATA rec = Record(c.type, c.parameters);
    CProjector projector(&rec);
    EXPECT_FALSE(projector.SetAccuracy(PA_EXACT)) << c.type << " " << c.parameters;
    EXPECT_EQ(projector.Accuracy(), PA_STATED) << c.type << " " << c.parameters;
    EXPECT_TRUE(projector.SetAccuracy(PA_STATED)) << c.type << " " << c.parameters;
  }
}

TEST(ExactChoice, StatePlaneZonesFollowIt) {
  for (const auto& [type, zone, x, y] :
       {std::tuple{PT_STATEPLANE27, 119, 7e5, 1e5}, {PT_STATEPLANE83, 86, 1.7e5, 2e5}}) {
    PROJDATA rec = Record(type, "Zone=" + std::to_string(zone));
    CProjector exact = ExactProjector(rec), stated(&rec);
    const PROJPOINT a = Inverse(exact, x, y), b = Inverse(stated, x, y), again = Forward(exact, a.x, a.y);
    EXPECT_NEAR(again.x, x, 1e-8) << zone;
    EXPECT_NEAR(again.y, y, 1e-8) << zone;
    EXPECT_GT(ArcDegrees(a, b), 1e-10) << zone;
  }
}

// ---- datums ----

DATUMXFORM Xform(int from, int to) {
  DATUMXFORM xform{};
  xform.SrcDatum = static_cast<DatumType>(from);
  xform.DestDatum = static_cast<DatumType>(to);
  return xform;
}

PROJPOINT Convert(const DATUMXFORM& xform, double lon, double lat, ProjAccuracy accuracy = PA_EXACT) {
  CDatumTransform transform(&xform);
  EXPECT_TRUE(transform.SetAccuracy(accuracy));
  DATUMPOINT p{lon, lat};
  EXPECT_TRUE(transform.Convert(&p, 1));
  EXPECT_FALSE(transform.HadUnplottables());
  return {p.x, p.y};
}

// 2e-12 degrees: some roundings of angles of 180 degrees; a fifth of what is promised.
TEST(ExactDatum, AgreesWithFiftyDigits) {
  const CsvFile csv("exact_datum.csv");
  for (std::size_t row = 0; row < csv.Rows(); ++row) {
    const PROJPOINT p = Convert(Xform(std::stoi(csv.Text(row, "from")), std::stoi(csv.Text(row, "to"))),
                                csv.Number(row, "lon"), csv.Number(row, "lat"));
    const PROJPOINT expected{csv.Number(row, "expected_lon"), csv.Number(row, "expected_lat")};
    EXPECT_LE(ArcDegrees(p, expected), 2e-12) << csv.Text(row, "from") << " to " << csv.Text(row, "to") << " at "
                                              << csv.Text(row, "lon") << ", " << csv.Text(row, "lat");
  }
}

TEST(ExactDatum, ThereAndBack) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> lon(-180, 180), lat(-88, 88);
  for (int datum = 1; datum < DatNumDatums(); ++datum) {
    DatumMethod method{};
    if (!DatReversible(static_cast<DatumType>(datum)) || !DatGetDatumMethod(static_cast<DatumType>(datum), &method))
      continue;
    if (method != DM_MOLODENSKY && method != DM_BURSA) continue;
    for (int i = 0; i < 4; ++i) {
      const PROJPOINT place{lon(random), lat(random)};
      const PROJPOINT wgs = Convert(Xform(datum, 3), place.x, place.y), back = Convert(Xform(3, datum), wgs.x, wgs.y);
      EXPECT_LE(ArcDegrees(back, place), 1e-11) << datum << " at " << place.x << ", " << place.y;
    }
  }
}

/// A caller's own step, the largest that are allowed or met.
TEST(ExactDatum, OwnStepsThereAndBack) {
  struct Own {
    DatumMethod method;
    double dx, dy, dz, rx, ry, rz, k, meridian;
  };
  for (const Own& own : {Own{DM_BURSA, 900, -1200, 700, 120, -60, 300, 250, 0},
                         {DM_BURSA, 5, 4, -3, 3600, 0, -3600, -50, 17.5},
                         {DM_MOLODENSKY, 1500, -1900, 1100, 0, 0, 0, 0, -17.6667}}) {
    DATUMXFORM there = Xform(0, 3), back = Xform(3, 0);
    for (DATUM2WGS84* step : {&there.Step1, &back.Step2}) {
      *step = {};
      step->Method = own.method;
      step->Ellipsoid = ET_INTERNATIONAL_1924;
      step->dx = own.dx, step->dy = own.dy, step->dz = own.dz;
      step->rx = own.rx, step->ry = own.ry, step->rz = own.rz, step->k = own.k;
      step->PMShift = own.meridian;
    }
    back.Step2.bInverse = true;
    for (const PROJPOINT& place : {PROJPOINT{10.25, 50.5}, {-170, -33}, {179.9, 5}, {-60, 80}}) {
      const PROJPOINT wgs = Convert(there, place.x, place.y), again = Convert(back, wgs.x, wgs.y);
      EXPECT_LE(ArcDegrees(again, place), 1e-11) << own.method << " at " << place.x << ", " << place.y;
    }
  }
}

TEST(ExactDatum, LatitudesBeyondThePolesAreUnplottable) {
  for (const int datum : {2, 147, 217}) {
    for (const auto& [from, to] : {std::pair{datum, 3}, {3, datum}}) {
      const DATUMXFORM xform = Xform(from, to);
      CDatumTransform transform(&xform);
      ASSERT_TRUE(transform.SetAccuracy(PA_EXACT));
      DATUMPOINT points[] = {{10, 95}, {10, std::nextafter(-90.0, -91.0)}, {10, 85}, {10, 190}};
      ASSERT_TRUE(transform.Convert(points, 4));
      EXPECT_TRUE(transform.HadUnplottables());
      for (const int i : {0, 1, 3}) EXPECT_TRUE(points[i].x == DBL_MAX && points[i].y == DBL_MAX) << from << " " << i;
      EXPECT_NEAR(points[2].y, 85, 0.1) << from;
    }
  }
}

// A step that only changes the ellipsoid has a pole.
TEST(ExactDatum, PolesOfDatumsThatShareTheAxis) {
  for (const auto& [from, to] : {std::pair{1, 3}, {3, 1}, {215, 3}, {3, 215}}) {
    for (const double lat : {90.0, -90.0}) {
      EXPECT_NEAR(Convert(Xform(from, to), 10, lat).y, lat, 0.01) << from << " " << to;
    }
  }
}

TEST(ExactDatum, FatEllipsoidsThereAndBack) {
  for (const double f : {0.01, 0.1, 0.3}) {
    DATUMXFORM there{}, back{};
    there.DestDatum = back.SrcDatum = DT_WORLD_GEODETIC_SYSTEM_1984;
    there.Step1.Method = DM_BURSA;
    there.Step1.MajorRadius = 6378137;
    there.Step1.Flattening = f;
    there.Step1.dx = 100;
    there.Step1.rz = 2;
    back.Step2 = there.Step1;
    back.Step2.bInverse = true;
    for (double lat = -90; lat <= 90; lat += 7.5) {
      const PROJPOINT moved = Convert(there, 20, lat), again = Convert(back, moved.x, moved.y);
      EXPECT_LE(ArcDegrees(again, {20, lat}), 1e-11) << f << " " << lat;
    }
  }
}

TEST(ExactDatum, RegressionStaysAsPublished) {
  const struct {
    int datum;
    double lon, lat;  // in its area: the polynomials run wild elsewhere
  } cases[] = {{224, 140, -30}, {225, 140, -30}, {226, -63, -36}, {227, -47, -12},
               {228, 13, 48},   {229, -91, 41},  {230, -97, 57},  {231, -57, -23}};
  for (const auto& c : cases) {
    const DATUMXFORM xform = Xform(c.datum, 3), back = Xform(3, c.datum);
    const PROJPOINT exact = Convert(xform, c.lon, c.lat), stated = Convert(xform, c.lon, c.lat, PA_STATED);
    EXPECT_LE(ArcDegrees(exact, stated), 2e-12) << c.datum;
    EXPECT_THROW(CDatumTransform{&back}, shr::Exception) << c.datum;
  }
}

TEST(ExactDatum, TheChoiceBelongsToTheHandle) {
  const DATUMXFORM xform = Xform(3, 220);
  CDatumTransform exact(&xform), stated(&xform), shared;
  EXPECT_EQ(exact.Accuracy(), PA_STATED);
  const auto convert = [](CDatumTransform& transform) {
    DATUMPOINT p{102.25, 3.5};
    EXPECT_TRUE(transform.Convert(&p, 1));
    return std::bit_cast<std::uint64_t>(p.x) ^ std::bit_cast<std::uint64_t>(p.y) * 3;
  };
  const auto before = convert(stated);
  DATUMXFORM info{}, after{};
  ASSERT_TRUE(exact.GetInfo(&info) && exact.SetAccuracy(PA_EXACT) && exact.GetInfo(&after));
  EXPECT_EQ(std::memcmp(&info, &after, sizeof info), 0);
  shared = exact;
  CDatumTransform copy(exact);
  const auto chosen = convert(exact);
  EXPECT_NE(chosen, before);
  EXPECT_EQ(convert(shared), chosen);
  EXPECT_EQ(convert(copy), chosen);
  EXPECT_EQ(convert(stated), before);
  ASSERT_TRUE(copy.SetAccuracy(PA_STATED));
  EXPECT_EQ(convert(copy), before);
  EXPECT_EQ(exact.Accuracy(), PA_EXACT);
  ASSERT_TRUE(exact.Create(&xform));
  EXPECT_EQ(exact.Accuracy(), PA_STATED);
}

}  // namespace
}  // namespace orvex::test
