// Projections whose domain is a band of longitudes: domain and offset rule of each module, through the projection
// table.
#include <gtest/gtest.h>

#include <cmath>

#include "projections/ProjectionTable.h"

namespace orvex::detail {
namespace {

struct Case {
  ProjType type;
  double lon0;       // centre of the domain for a record whose Lon0 is 40 degrees
  double halfWidth;  // of the domain; an object is repeated at 180 degrees whatever it is
};

constexpr Case kCases[] = {{PT_SINUSOIDAL, 40, 180},        {PT_MOLLWEIDE, 40, 180},     {PT_ECKERT4, 40, 180},
                           {PT_ECKERT6, 40, 180},           {PT_ROBINSON, 0, 180},       {PT_BONNE, 40, 180},
                           {PT_ROBINSONSTERLING, 40, 180},  {PT_VANDERGRINTEN, 40, 180}, {PT_ALBERS, 40, 180},
                           {PT_LAMBERT, 40, 180},           {PT_EQUICONIC, 40, 180},     {PT_POLYCONIC, 40, 180},
                           {PT_TRANSVERSEMERCATOR, 40, 45}, {PT_GAUSSKRUGER, 40, 45},    {PT_UTM, 40, 45}};

PROJDATA SphereAt40() {
  PROJDATA rec{};
  rec.Lon0 = 40;
  rec.MajorRadius = 1;
  return rec;
}

TEST(BandModules, DomainIsTheOpenBand) {
  const PROJDATA rec = SphereAt40();
  for (const Case& c : kCases) {
    DomainFunction* const inDomain = FindRow(c.type)->inDomain;
    const double west = c.lon0 - c.halfWidth, east = c.lon0 + c.halfWidth;
    const struct {
      double x, y;
      bool inside;
    } points[] = {
        {west, 10, false},    {std::nextafter(west, 0), 10, true},  {east, 10, false},        {c.lon0, 1e6, true},
        {east + 1, 0, false}, {std::nextafter(east, 0), -90, true}, {DBL_MAX, DBL_MAX, false}};
    for (const auto& p : points) {
      const PROJPOINT point{p.x, p.y};
      EXPECT_EQ(inDomain(&rec, &point), p.inside) << c.type << " " << p.x;
    }
    const PROJPOINT centre{c.lon0, 0};
    EXPECT_FALSE(inDomain(nullptr, &centre) || inDomain(&rec, nullptr)) << c.type;
  }
}

TEST(BandModules, ObjectsAtTheEdgeAreRepeated) {
  const PROJDATA rec = SphereAt40();
  for (const Case& c : kCases) {
    OffsetFunction* const offset = FindRow(c.type)->offsetSplit;
    const struct {
      double x1, x2, dx;  // longitudes from the centre, and the first offset
    } objects[] = {{-180, 20, 360}, {-179.9, 180, -360}, {-190, 190, 360}, {-179.9, 179.9, 0}, {0, DBL_MAX, -360}};
    for (const auto& o : objects) {
      const PROJPOINT pts[] = {{c.lon0 + o.x1, 3}, {o.x2 == DBL_MAX ? DBL_MAX : c.lon0 + o.x2, 4}};
      double dx = 7, dy = 7;
      EXPECT_EQ(offset(&rec, pts, 2, &dx, &dy), o.dx != 0) << c.type << " " << o.x1;
      EXPECT_TRUE(dx == o.dx && dy == 0) << c.type << " " << o.x1;
    }
    const PROJPOINT pts[] = {{c.lon0 - 200, 0}};
    double dx = 7, dy = 7;
    EXPECT_FALSE(offset(nullptr, pts, 1, &dx, &dy) || offset(&rec, nullptr, 1, &dx, &dy) ||
                 offset(&rec, pts, 0, &dx, &dy) || offset(&rec, pts, 1, nullptr, &dy) ||
                 offset(&rec, pts, 1, &dx, nullptr));
    EXPECT_TRUE(dx == 7 && dy == 7) << c.type;
  }
}

}  // namespace
}  // namespace orvex::detail
