// World projections: domain, offset rule and argument checks of each module, through the projection table.
#include <gtest/gtest.h>

#include <shr/exception.h>

#include "projections/Module.h"

namespace orvex::detail {
namespace {

struct Case {
  ProjType type;
  const char* source;
  int forwardNull, forwardCount, inverseNull, inverseCount;
  double lon0;  // centre of the domain for a record whose Lon0 is 40 degrees
};

constexpr Case kCases[] = {
    {PT_SINUSOIDAL, "PrjSinus", 220, 222, 403, 405, 40},    {PT_MOLLWEIDE, "PrjMolle", 219, 221, 334, 336, 40},
    {PT_ECKERT4, "PrjEckert4", 220, 222, 327, 329, 40},     {PT_ECKERT6, "PrjEckert6", 220, 222, 324, 326, 40},
    {PT_ROBINSON, "PrjRobin", 273, 275, 343, 345, 0},       {PT_ROBINSONSTERLING, "PrjRobStr", 220, 222, 320, 322, 40},
    {PT_VANDERGRINTEN, "PrjVanDer", 220, 222, 320, 322, 40}};

PROJDATA SphereAt40() {
  PROJDATA rec{};
  rec.Lon0 = 40;
  rec.MajorRadius = 1;
  return rec;
}

TEST(WorldModules, DomainIsTheOpenBand) {
  const PROJDATA rec = SphereAt40();
  for (const Case& c : kCases) {
    const DomainOperation inDomain = FindRow(c.type)->inDomain;
    const double west = c.lon0 - 180, east = c.lon0 + 180;
    const struct {
      double x, y;
      bool inside;
    } points[] = {
        {west, 10, false},    {std::nextafter(west, 0), 10, true},  {east, 10, false},        {c.lon0, 1e6, true},
        {east + 1, 0, false}, {std::nextafter(east, 0), -90, true}, {DBL_MAX, DBL_MAX, false}};
    for (const auto& p : points) {
      const PROJPOINT point{p.x, p.y};
      EXPECT_EQ(inDomain(&rec, &point), p.inside) << c.source << " " << p.x;
    }
    const PROJPOINT centre{c.lon0, 0};
    EXPECT_FALSE(inDomain(nullptr, &centre) || inDomain(&rec, nullptr)) << c.source;
  }
}

TEST(WorldModules, ObjectsAtTheEdgeAreRepeated) {
  const PROJDATA rec = SphereAt40();
  for (const Case& c : kCases) {
    const OffsetOperation offset = FindRow(c.type)->offsetSplit;
    const struct {
      double x1, x2, dx;  // longitudes from the centre, and the first offset
    } objects[] = {{-180, 20, 360}, {-179.9, 180, -360}, {-190, 190, 360}, {-179.9, 179.9, 0}, {0, DBL_MAX, -360}};
    for (const auto& o : objects) {
      const PROJPOINT pts[] = {{c.lon0 + o.x1, 3}, {o.x2 == DBL_MAX ? DBL_MAX : c.lon0 + o.x2, 4}};
      double dx = 7, dy = 7;
      EXPECT_EQ(offset(&rec, pts, 2, &dx, &dy), o.dx != 0) << c.source << " " << o.x1;
      EXPECT_TRUE(dx == o.dx && dy == 0) << c.source << " " << o.x1;
    }
    const PROJPOINT pts[] = {{c.lon0 - 200, 0}};
    double dx = 7, dy = 7;
    EXPECT_FALSE(offset(nullptr, pts, 1, &dx, &dy) || offset(&rec, nullptr, 1, &dx, &dy) ||
                 offset(&rec, pts, 0, &dx, &dy) || offset(&rec, pts, 1, nullptr, &dy) ||
                 offset(&rec, pts, 1, &dx, nullptr));
    EXPECT_TRUE(dx == 7 && dy == 7) << c.source;
  }
}

void ExpectAssertion(ConvertOperation operation, PROJPOINT* pts, int nPts, const char* source, int line) {
  PROJDATA rec = SphereAt40();
  try {
    operation(&rec, pts, nPts);
    ADD_FAILURE() << source << " " << line;
  } catch (const shr::Exception& e) {
    EXPECT_EQ(e.MessageId(), 20200);
    EXPECT_EQ(e.Source(), source);
    EXPECT_EQ(e.Line(), line);
  }
}

TEST(WorldModules, BadArgumentsAreReportedWithTheirPlace) {
  for (const Case& c : kCases) {
    const ProjectionRow& row = *FindRow(c.type);
    PROJPOINT p{0.5, 0.5};
    EXPECT_FALSE(row.forward(nullptr, nullptr, 0) || row.inverse(nullptr, &p, 1)) << c.source;
    ExpectAssertion(row.forward, nullptr, 1, c.source, c.forwardNull);
    ExpectAssertion(row.forward, &p, 0, c.source, c.forwardCount);
    ExpectAssertion(row.inverse, nullptr, 1, c.source, c.inverseNull);
    ExpectAssertion(row.inverse, &p, -1, c.source, c.inverseCount);

    PROJDATA rec = SphereAt40();
    PROJPOINT markers[] = {{DBL_MAX, 0.5}, {0.5, DBL_MAX}};
    EXPECT_TRUE(row.forward(&rec, markers, 2) && row.inverse(&rec, markers, 2)) << c.source;
    EXPECT_TRUE(markers[0].y == 0.5 && markers[1].x == 0.5 && rec.iResult == 0) << c.source;
  }
}

}  // namespace
}  // namespace orvex::detail
