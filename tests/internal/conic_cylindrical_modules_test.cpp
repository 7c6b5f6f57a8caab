// Module operations of the conic and cylindrical projections that records from hosts do not reach: cones that
// validation refuses, domain tests and offsets.
#include <gtest/gtest.h>

#include <functional>

#include "ModuleCall.h"
#include "math/Angles.h"
#include "projections/ProjectionTable.h"
#include "shr/exception.h"
#include "support/Projection.h"

namespace orvex::detail {

namespace {

/// A record as the driver hands it to a module: angles in radians, the ellipsoid filled in.
PROJDATA Work(ProjType type, const char* parameters) {
  PROJDATA rec = test::Record(type, parameters);
  rec.Lat0 = DegToRad(rec.Lat0);
  rec.Lon0 = DegToRad(rec.Lon0);
  rec.Lat1 = DegToRad(rec.Lat1);
  rec.Lat2 = DegToRad(rec.Lat2);
  return rec;
}

/// "source:line" of the assertion that the call raises.
std::string Reported(const std::function<void()>& call) {
  try {
    call();
  } catch (const shr::Exception& e) {
    EXPECT_EQ(e.MessageId(), 20200);
    return e.Source() + ":" + std::to_string(e.Line());
  }
  return "nothing";
}

// Outcomes that the record alone decides: at the first live point, never for an array of markers only.
TEST(ConicCylindricalModules, degenerateRecords) {
  const struct {
    ProjType type;
    const char* parameters;
    const char* forward;  // position of the assertion, "nothing" for points that become unplottable, or "a place"
    const char* inverse;
  } rows[] = {{PT_ALBERS, "R=1;Lat1=30;Lat2=-30", "PrjAlbers:250", "PrjAlbers:476"},
              {PT_ALBERS, "a=1;f=0.003;Lat1=30;Lat2=-30", "PrjAlbers:380", "PrjAlbers:628"},
              {PT_ALBERS, "a=1;f=0.003;Lat1=30;Lat2=30", "nothing", "nothing"},
              // Parallels counted on over a pole: what the rounding of the printed formulas makes of them.
              {PT_ALBERS, "R=1;Lat1=180;Lat2=0", "a place", "a place"},
              {PT_ALBERS, "R=1;Lat1=270;Lat2=90", "PrjAlbers:250", "PrjAlbers:476"},
              {PT_ALBERS, "a=1;f=0.003;Lat1=180;Lat2=0", "PrjAlbers:380", "PrjAlbers:628"},
              {PT_ALBERS, "a=1;f=0.003;Lat1=1;Lat2=-181", "PrjAlbers:380", "PrjAlbers:628"},
              {PT_ALBERS, "a=1;f=0.003;Lat1=270;Lat2=90", "a place", "a place"},
              {PT_LAMBERT, "R=1;Lat1=30;Lat2=30", "nothing", "nothing"},
              {PT_LAMBERT, "a=1;f=0.003;Lat1=30;Lat2=30", "nothing", "nothing"},
              {PT_LAMBERT, "R=1;Lat1=30;Lat2=-30", "nothing", "PrjLambert:564"},
              {PT_EQUICONIC, "R=1;Lat1=30;Lat2=-30", "nothing", "nothing"},
              {PT_EQUICONIC, "R=1;Lat1=0.000001;Lat2=0", "nothing", "nothing"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.parameters);
    for (const bool inverse : {false, true}) {
      const auto direction = inverse ? &ProjectionRow::inverse : &ProjectionRow::forward;
      const ConvertOperation convert = FindRow(row.type)->*direction;
      PROJDATA rec = Work(row.type, row.parameters);
      PROJPOINT markers[] = {{DBL_MAX, DBL_MAX}, {0.5, DBL_MAX}};
      EXPECT_TRUE(convert(test::Call(&rec, markers, 2)));
      EXPECT_EQ(rec.iResult, 0);
      EXPECT_EQ(markers[1].x, 0.5);
      PROJPOINT p{0.25, 0.5};
      const std::string expected = inverse ? row.inverse : row.forward;
      EXPECT_EQ(Reported([&] { convert(test::Call(&rec, &p, 1)); }), expected == "a place" ? "nothing" : expected);
      EXPECT_EQ(rec.iResult, expected == "nothing" ? 1 : 0);
      EXPECT_EQ(test::Unplottable(p), expected == "nothing");
    }
  }
}

// One parallel: a tangent cone, whose parallel at 40 degrees has the radius cot 40 = 1.191753592594210.
TEST(ConicCylindricalModules, equidistantConicOnOneParallel) {
  PROJDATA rec = Work(PT_EQUICONIC, "R=1;Lat0=40;Lat1=40;Lat2=40.00005");
  const double quarterTurn =
      kHalfPi / std::sin(rec.Lat1);  // a difference in longitude that turns by 90 degrees on the map
  PROJPOINT pts[] = {{quarterTurn, rec.Lat1}, {quarterTurn, rec.Lat1 + 0.1}};
  ASSERT_TRUE(FindRow(PT_EQUICONIC)->forward(test::Call(&rec, pts, 2)));
  EXPECT_NEAR(pts[0].x, 1.191753592594210, 1e-15);
  EXPECT_NEAR(pts[0].y, 1.191753592594210, 1e-15);
  EXPECT_NEAR(pts[1].x, 1.091753592594210, 1e-15);
}

TEST(ConicCylindricalModules, domainAndOffset) {
  const struct {
    ProjType type;
    double lon0;
    PROJPOINT point;
    bool inside;
    double dx;  // of the line from the point to (lon0, 0)
  } rows[] = {{PT_MERCATOR, 20, {199.75, 89.75}, true, 0},  {PT_MERCATOR, 20, {200, 89}, false, -360},
              {PT_MERCATOR, 20, {30, 90}, false, 0},        {PT_MERCATOR, 20, {30, -90}, false, 0},
              {PT_MILLER, 20, {-160, 5}, false, 360},       {PT_MILLER, 20, {-159.75, -89.75}, true, 0},
              {PT_MILLER, 20, {-100, -90}, false, 0},       {PT_EQUICYLINDRICAL, 20, {-340, 90}, true, 0},
              {PT_EQUICYLINDRICAL, 20, {360, -90}, true, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "type " << row.type << " at " << row.point.x << ", " << row.point.y);
    PROJDATA rec{};
    rec.Lon0 = row.lon0;
    const ProjectionRow& module = *FindRow(row.type);
    EXPECT_EQ(module.inDomain(&rec, &row.point), row.inside);
    EXPECT_FALSE(module.inDomain(nullptr, &row.point) || module.inDomain(&rec, nullptr));
    const PROJPOINT line[] = {row.point, {row.lon0, 0}};
    double dx = -1, dy = -1;
    EXPECT_FALSE(module.offsetSplit(&rec, line, 0, &dx, &dy) || module.offsetSplit(nullptr, line, 2, &dx, &dy));
    EXPECT_TRUE(dx == -1 && dy == -1);
    EXPECT_EQ(module.offsetSplit(&rec, line, 2, &dx, &dy), row.dx != 0);
    EXPECT_EQ(dx, row.dx);
    EXPECT_EQ(dy, 0);
  }
}

}  // namespace

}  // namespace orvex::detail
